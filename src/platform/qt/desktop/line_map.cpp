// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/desktop/line_map.h"

#include <algorithm>
#include <vector>

#include "core/utf8.h"

namespace corvid {

namespace {

// What a text document takes for a mark of its own.
bool IsDocumentMark(char16_t unit) {
  return unit == 0x2029 || unit == 0xFDD0 || unit == 0xFDD1 || unit == 0xFFFC;
}

char16_t Showable(char16_t unit) {
  constexpr char16_t ControlPictures = 0x2400;
  constexpr char16_t DeletePicture = 0x2421;
  if (unit < 0x20) return unit == u'\n' || unit == u'\t' ? unit : static_cast<char16_t>(ControlPictures + unit);
  if (unit == 0x7F) return DeletePicture;
  if ((unit >= 0x80 && unit < 0xA0) || IsDocumentMark(unit)) return 0xFFFD;
  return unit;
}

// Length in codes of the character or line break at place.
std::size_t StepAt(std::string_view text, std::size_t place) {
  const char c = text[place];
  if (c == '\r') return place + 1 < text.size() && text[place + 1] == '\n' ? 2 : 1;
  return static_cast<unsigned char>(c) < 0x80 ? 1 : CharLength(text, place);
}

// Only a character of four bytes lies beyond the first plane.
int32 UnitsOf(std::size_t step) {
  return step == 4 ? 2 : 1;
}

template <typename Found>
void EachLineEnd(std::string_view text, Found found) {
  for (std::size_t at = text.find_first_of("\r\n"); at != std::string_view::npos;) {
    at += StepAt(text, at);
    found(at);
    at = text.find_first_of("\r\n", at);
  }
}

}  // namespace

std::u16string DisplayText(std::string_view text) {
  std::u16string shown = ToUtf16(text);
  std::size_t to = 0;
  for (std::size_t from = 0; from < shown.size(); ++from) {
    char16_t unit = shown[from];
    if (unit == u'\r') {
      if (from + 1 < shown.size() && shown[from + 1] == u'\n') continue;
      unit = u'\n';
    }
    shown[to++] = unit >= 0x20 && unit < 0x7F ? unit : Showable(unit);
  }
  shown.resize(to);
  return shown;
}

int32 UnitsBefore(std::string_view text, std::size_t code) {
  int32 units = 0;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t step = StepAt(text, at);
    if (at + step > code) break;
    at += step;
    units += UnitsOf(step);
  }
  return units;
}

std::size_t CodesBefore(std::string_view text, int32 units) {
  std::size_t at = 0;
  while (at < text.size() && units > 0) {
    const std::size_t step = StepAt(text, at);
    at += step;
    units -= UnitsOf(step);
  }
  return at;
}

std::size_t WholePlace(std::string_view text, std::size_t code) {
  if (code == 0 || code >= text.size()) return std::min(code, text.size());
  if (text[code] == '\n' && text[code - 1] == '\r') return code + 1;
  const auto continues = [&](std::size_t at) { return (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80; };
  constexpr std::size_t MostTails = 3;
  for (std::size_t tails = 0; tails < MostTails && code < text.size() && continues(code); ++tails) ++code;
  return code;
}

void LineMap::Clear() {
  base_ = end_ = 0;
  starts_.assign(1, 0);
}

std::size_t LineMap::LineOf(std::int64_t code) const {
  const auto behind = std::upper_bound(starts_.begin(), starts_.end(), base_ + code);
  return behind == starts_.begin() ? 0 : static_cast<std::size_t>(behind - starts_.begin()) - 1;
}

std::int64_t LineMap::StartOf(std::size_t line) const {
  return line < starts_.size() ? starts_[line] - base_ : Length();
}

void LineMap::Append(std::string_view text) {
  EachLineEnd(text, [&](std::size_t at) { starts_.push_back(end_ + static_cast<std::int64_t>(at)); });
  end_ += static_cast<std::int64_t>(text.size());
}

void LineMap::DropFront(std::int64_t count) {
  base_ += std::clamp<std::int64_t>(count, 0, Length());
  while (starts_.size() > 1 && starts_[1] <= base_) starts_.pop_front();
  starts_.front() = base_;
}

void LineMap::Replace(std::size_t first, std::size_t last, std::string_view text) {
  const std::int64_t from = StartOf(first);
  const std::int64_t grown = static_cast<std::int64_t>(text.size()) - (StartOf(last + 1) - from);
  const bool atEnd = last + 1 >= starts_.size();
  std::vector<std::int64_t> fresh;
  EachLineEnd(text, [&](std::size_t at) { fresh.push_back(base_ + from + static_cast<std::int64_t>(at)); });
  if (!atEnd && !fresh.empty()) fresh.pop_back();  // the line behind stands in the map already
  const auto place = [&](std::size_t line) {
    return starts_.begin() + static_cast<std::ptrdiff_t>(std::min(line, starts_.size()));
  };
  std::for_each(place(last + 1), starts_.end(), [&](std::int64_t& start) { start += grown; });
  const auto gone = starts_.erase(place(first + 1), place(last + 1));
  starts_.insert(gone, fresh.begin(), fresh.end());
  end_ += grown;
}

}  // namespace corvid
