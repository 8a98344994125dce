// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

namespace corvid {

// The words of the command that opens file with program, which is a command line with quoted parts as a player writes
// it. "Notepad.exe", the editor until the player names another, is the one of the system: $VISUAL, $EDITOR, or what the
// desktop opens such a file with; an editor of the text console gets a terminal window. empty: nothing to start.
std::vector<std::string> ProgramCommand(const std::string& program, const std::string& file);

// Starts it as a program of its own that outlives this one. No shell reads the text. Fault when it cannot be started.
void StartDetached(const std::string& program, const std::string& file);

}  // namespace corvid
