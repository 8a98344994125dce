// SPDX-License-Identifier: GPL-3.0-or-later
// The script buffers: loaded files, the entry line, the error log and New Lines, by number.
#pragma once

#include <string>

#include "core/table.h"
#include "core/text_model.h"
#include "core/types.h"

namespace corvid {

namespace buffer {
inline constexpr int16 EntryLine = 1, ErrorLog = 2, NewLines = 3, FirstScript = 4;
// Flags: the low eight bits are the type.
inline constexpr int16 EntryType = 1, Script = 0x20, ErrorLogType = 0x40, NewLinesType = 0x80, Modified = 0x100,
                       Inactive = 0x400, News = 0x800, ReadOnly = 0x4000;
}  // namespace buffer

struct BufferState {
  int16 BufferCount = 0;
  Table<std::string> BufferText;
  Table<int32> BufferCaret;
  Table<std::string> BufferFile;  // absolute path; empty when the slot is free
  Table<int16> BufferFlags;
  Table<int16> BufferOwners;        // character that was current when the file was loaded
  Table<std::string> BufferLoaded;  // text as loaded or saved last: what differs from it is a change
  int16 CurrentBuffer = 1;          // shown in the entry box
  TextModel EntryBox;               // the entry line, or the script buffer shown in its place
};

// Makes Buffer the highest number. Buffers 1 to 3 get their types when they come into being.
void ResizeBuffers(BufferState& buffers, int16 Buffer);
// Adds text to the error log. A log over 30,000 characters keeps its last 20,000 first; the caret marks where the new
// text begins and the buffer is marked as holding news.
void AppendErrorLog(BufferState& buffers, const std::string& text);
// Adds a line to New Lines, where a player finds what was defined by hand and takes it into a script.
void AppendNewLine(BufferState& buffers, const std::string& line);

}  // namespace corvid
