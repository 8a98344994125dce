// SPDX-License-Identifier: GPL-3.0-or-later
// Places in a text as the program counts them (8-bit codes, a line break being CR LF) and as a window does (UTF-16
// units, a line break being one). CR LF, a lone CR and a lone LF all end a line.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>

#include "core/types.h"

namespace corvid {

// The text as a window shows it: decoded, each line break as LF. What a window could not show one for one (control
// codes, its own paragraph marks) becomes a sign of the same length.
std::u16string DisplayText(std::string_view text);
// Units of DisplayText that stand before code. A place inside a character or a line break counts as its start.
int32 UnitsBefore(std::string_view text, std::size_t code);
// The other way; more units than there are give the end of the text. A place inside a character counts as its end.
std::size_t CodesBefore(std::string_view text, int32 units);
// The least place not before code at which the text can be cut so that both parts are shown as the whole is.
std::size_t WholePlace(std::string_view text, std::size_t code);

// Where each line of a mirrored text begins, in codes. Adding behind and dropping in front take time of that part
// alone.
class LineMap {
 public:
  LineMap() { Clear(); }
  void Clear();
  std::int64_t Length() const { return end_ - base_; }
  std::size_t Lines() const { return starts_.size(); }  // at least one
  std::size_t LineOf(std::int64_t code) const;          // line from 0 that holds the place; brought into the text
  std::int64_t StartOf(std::size_t line) const;         // Length() for lines that do not exist
  // What goes behind may not continue a character or line break of what is there.
  void Append(std::string_view text);
  void DropFront(std::int64_t count);
  // Lines first to last become the lines of text, which ends as they did: in a line break unless last is the last line.
  void Replace(std::size_t first, std::size_t last, std::string_view text);

 private:
  // Both count from the beginning of time, so that nothing moves when lines are dropped in front.
  std::int64_t base_ = 0;
  std::int64_t end_ = 0;
  std::deque<std::int64_t> starts_;  // ascending; the first is base_
};

}  // namespace corvid
