// SPDX-License-Identifier: GPL-3.0-or-later
// Which line a position is on. Lines end in CR LF; a viewport may also hold a bare LF.
#pragma once

#include <string>
#include <string_view>

#include "core/types.h"

namespace corvid {

// Line that holds a position, without its end. CursorPosition counts from 1; behind the end it means the last line, and
// is empty when the text ends in a line end.
std::string CurrentLine(std::string_view text, int32 CursorPosition);
// The same for a control's own caret, which may rest on a line end: it then steps left to the line before.
std::string CurrentLine2(std::string_view text, int32 CursorPosition2);
// Offset of the start of the line that is Lines lines away (direction 1 forward, -1 back) from caret; -1 at a boundary.
int32 FindNextLine(std::string_view text, int32 caret, int32 Lines, int32 LineDirection);
// Offsets of the start of the line that holds caret, and of its end (before the line break).
int32 LineStart(std::string_view text, int32 caret);
int32 LineEnd(std::string_view text, int32 caret);
// Caret one whole character on or back; a line break is one step.
int32 NextCharacter(std::string_view text, int32 caret);
int32 PreviousCharacter(std::string_view text, int32 caret);
// Caret at the start of the next or previous word; words are parted by blanks and line breaks.
int32 NextWord(std::string_view text, int32 caret);
int32 PreviousWord(std::string_view text, int32 caret);

}  // namespace corvid
