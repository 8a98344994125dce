// SPDX-License-Identifier: GPL-3.0-or-later
// The ten handles by which scripts know their data files.
#pragma once

#include <string>

#include "core/table.h"
#include "core/types.h"

namespace corvid {

namespace scriptfile {
inline constexpr int16 Handles = 10;
inline constexpr int16 LastSequential = 5;  // 1 to 5 are read and written line by line, 6 to 10 by record
// ScriptFileLength of handles 1 to 5.
inline constexpr int16 Closed = 0, Writing = -1, Reading = -2;
}  // namespace scriptfile

struct ScriptFileState {
  Table<std::string> ScriptFileName{scriptfile::Handles};  // below the user data folder; empty: not assigned
  // Handles 1 to 5: how the file is open. 6 to 10: the record length that FILE was given.
  Table<int16> ScriptFileLength{scriptfile::Handles};
  Table<int16> ScriptFileNumber{scriptfile::Handles};  // number of the open file, 0 while closed
};

}  // namespace corvid
