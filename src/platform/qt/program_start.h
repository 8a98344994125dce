// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace corvid {

enum class Terminal { None, Own };  // Own: a window of its own can be opened for a program that runs in a terminal

// The words of the command that opens file with program, which may have arguments of its own. The program's default
// text "Notepad.exe " stands for $VISUAL, else $EDITOR, else xdg-open. An editor that needs a terminal is given one of
// its own, or is passed over where there is none. Empty when nothing fits. environment("NAME") and exists("program")
// ask the system; tests answer themselves.
std::vector<std::string> ProgramCommand(const std::string& program, const std::string& file, Terminal terminal,
                                        const std::function<std::string(const std::string&)>& environment,
                                        const std::function<bool(const std::string&)>& exists);

// Starts it and goes on. Fault when there is no such program or it cannot be started.
void StartDetachedProgram(const std::string& program, const std::string& file, Terminal terminal);

}  // namespace corvid
