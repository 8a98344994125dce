// SPDX-License-Identifier: GPL-3.0-or-later
// Three connected sessions to write to.
#pragma once

#include <string>

#include "commands/fixture.h"

namespace corvid::test {

class GameTextTest : public CommandTest {
 protected:
  // Sessions 0 "anna", 1 "bob", 2 "bert", all connected; anna is in the foreground.
  void ThreeSessions() {
    MakeSession(0, "anna", true);
    MakeSession(1, "bob", true);
    MakeSession(2, "bert", true);
  }
  std::string Written(int16 session) { return memory.sockets.TakeWritten(session); }
};

}  // namespace corvid::test
