// SPDX-License-Identifier: GPL-3.0-or-later
// A session whose game is the test: triggers are typed, and the lines of the game told.
#pragma once

#include "commands/fixture.h"

namespace corvid::test {

class TriggerTest : public CommandTest {
 protected:
  TriggerTest() { MakeSession(1, "bob", true); }

  // A line as typed in bob's session: definitions are sorted at once.
  std::string Do(const std::string& line, int16 flags = option::Interactive) {
    std::string problem;
    int16 channel = 1;
    Parameters rvar;
    script.CommandDepth = 0;
    dispatcher.ProcessCommand(line, flags, problem, rvar, channel);
    return problem;
  }
  // One line of the game; the effects of before are forgotten.
  void Mud(const std::string& text, int16 session = 1) {
    memory.effects.Clear();
    memory.sockets.TakeWritten(session);
    memory.sockets.Receive(session, text + "\r\n");
  }
  std::string Sent(int16 session = 1) {
    std::string sent = Replace(memory.sockets.TakeWritten(session), "\r\n", ";");
    if (!sent.empty()) sent.pop_back();
    return sent;
  }
  // What bob's game is sent for one line of it.
  std::string Answer(const std::string& text) {
    Mud(text);
    return Sent();
  }
  std::string Screen(int16 session = 1) { return sessions.OutputWindow(session).Text(); }
  OwnerId Bob() const { return script.SocketOwner[1]; }
  std::string Get(const std::string& name) { return Variable(name, Bob()); }
  const TriggerRecord& Row(int32 row) const { return script.Triggers.Read(row); }
  Lines Searches() const {
    Lines texts;
    for (int32 row = 1; row <= script.TriggerCount; ++row)
      if (!Row(row).Pattern.empty()) texts.push_back(Row(row).SearchText);
    return texts;
  }
  std::string ErrorFile() {
    return memory.files.FileExists("/data/error.log") ? memory.files.ReadWhole("/data/error.log") : "";
  }
};

}  // namespace corvid::test
