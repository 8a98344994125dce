// SPDX-License-Identifier: GPL-3.0-or-later
// A line that is no command: the name of an alias, or text for the game.
#pragma once

#include <exception>
#include <string>

#include "commands/command_call.h"

namespace corvid {

class GameText {
 public:
  explicit GameText(CommandHouse& house) : house_(house) {}

  // Carries out the parsed text of call: a character reference in front, an alias, text for the game. What it leads to
  // stands in call.next. May pump events.
  void Run(CommandCall& call);
  // Logs, shows and sends text as it stands to the call's session. May pump events.
  void SendVerbatim(CommandCall& call, const std::string& text);

 private:
  // Sessions that the text goes to.
  struct Target {
    int16 First = 0;
    int16 Last = 0;
    bool All = false;  // "*": connected or not, nobody is asked
  };

  void TellVerbatim();
  bool TakeSessionPrefix(CommandCall& call, Target& target);
  bool SwitchSession(CommandCall& call, const std::string& reference, bool stay, Target& target);
  int16 FindConnected(const std::string& reference) const;
  bool RunAlias(CommandCall& call);
  bool AliasArguments(CommandCall& call, Parameters& arguments);
  bool JoinText(CommandCall& call, std::string& text);
  bool PlaceInEntry(CommandCall& call, const std::string& text);
  void Send(CommandCall& call, const std::string& text, const Target& target);
  bool Deliver(CommandCall& call, int16 session, const std::string& text, const Target& target);
  bool IsLogged(int16 session) const;
  void WriteLog(CommandCall& call, int16 session, const std::string& text);
  void FlushLog(CommandCall& call, int16 session);
  void LogFailed(CommandCall& call, const std::exception& fault);
  void Display(int16 session, const std::string& text);
  bool NotConnected(CommandCall& call, int16 session, const std::string& text);
  void Record(int16 session, const std::string& text);
  void Write(int16 session, const std::string& text);

  CommandHouse& house_;
};

}  // namespace corvid
