// SPDX-License-Identifier: GPL-3.0-or-later
// A session that walks in four directions.
#pragma once

#include <string>

#include "fixture.h"

namespace corvid::test {

class WalkTest : public CommandTest {
 protected:
  WalkTest() {
    MakeSession(1, "bob", true);
    script.CurrentSocket = 1;
    script.CurrentOwner = script.SocketOwner[1];
    options.DisplayCommandsInOutput = false;
    for (const char* pair : {"n s", "s n", "e w", "w e"}) EXPECT_EQ(Run(std::string("#DIRECTION ") + pair), "");
    Effects();
  }
  OwnerId Owner() const { return script.SocketOwner[1]; }
  std::string Sent() {
    std::string all;
    for (const std::string& line : memory.effects.Of("wire")) all += line.substr(line.find(' ') + 1);
    return all;
  }
  // Lines that went to the game since the last call, joined by blanks.
  std::string Steps() {
    std::string all;
    for (const std::string& line : memory.effects.Of("send")) all += (all.empty() ? "" : " ") + line.substr(2);
    memory.effects.Clear();
    return all;
  }
  std::string Walk(const std::string& name) {
    const int16 row = symbols.FindAlias(name, Owner(), false);
    return row == 0 ? "(none)" : script.AliasValues[row];
  }
  bool ClassOn(const std::string& name) { return symbols.InClass(name, Owner()); }
  std::string NewLines() const { return buffers.BufferText[buffer::NewLines]; }
  int16& State() { return sessions.WalkState[1]; }
  std::string& Buffer() { return sessions.WalkBuffer[1]; }
  void Define(const std::string& name, const std::string& body) { AddAlias(name, body, Owner()); }
  // A loaded script that definitions belong to.
  void WorkIn(const std::string& path, const std::string& text) {
    scriptFiles.ResizeBuffers(4);
    buffers.BufferFile[4] = path;
    buffers.BufferFlags[4] = buffer::Script;
    buffers.BufferText[4] = text;
    script.DefiningBuffer = 4;
  }
};

}  // namespace corvid::test
