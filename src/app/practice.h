// SPDX-License-Identifier: GPL-3.0-or-later
// The practice game as a part of this run: started on a free port, ended with the program.
#pragma once

#include <string>

#include "platform/qt/child_program.h"

namespace corvid {

class PracticeGame {
 public:
  // Empty on success, else why there is no game, for the player. Looks for the game's program beside this one, as it is
  // built, and where it is installed.
  std::string Start(const std::string& ownProgram);
  const std::string& Port() const { return port_; }

 private:
  ChildProgram child_;
  std::string port_;
};

}  // namespace corvid
