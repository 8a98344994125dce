// SPDX-License-Identifier: GPL-3.0-or-later
// Shipped files in a folder of the player's: what came with the program is kept as new as the program, and what the
// player has changed is the player's own.
#pragma once

#include <string>

namespace corvid {

class Files;

// Brings the files of source (scripts of the folder itself, and all of its subfolders) to target. A file that is not
// there is copied; one that is as it was shipped before is replaced by the new one; one that the player has changed
// stays, as does one of which is not known how it was shipped. What was shipped is remembered in the file "shipped.txt"
// of target. A file that fails does not keep the others; the first failure is thrown as a Fault at the end.
void RefreshShippedFiles(Files& files, const std::string& source, const std::string& target);

}  // namespace corvid
