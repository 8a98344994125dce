// SPDX-License-Identifier: GPL-3.0-or-later
// The program behind each of its faces, from start to end. Each returns the exit code.
#pragma once

#include "app/command_line.h"

namespace corvid {

int RunJson(const CommandLine& line, int argc, char** argv);
int RunConsole(const CommandLine& line, int argc, char** argv);
int RunDesktop(const CommandLine& line, int argc, char** argv);

}  // namespace corvid
