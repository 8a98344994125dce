// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/control_text.h"

#include <algorithm>

#include "core/keys.h"
#include "core/utf8.h"

namespace corvid {

std::string ShownText(const DialogControl& control) {
  if (!control.Masked) return control.Text;
  std::string stars;
  for (std::size_t at = 0; at < control.Text.size(); at += CharLength(control.Text, at)) stars += '*';
  return stars;
}

void ControlText::Clamp() {
  const auto length = static_cast<int32>(control_.Text.size());
  control_.SelStart = std::clamp(control_.SelStart, 0, length);
  control_.SelLength = std::clamp(control_.SelLength, 0, length - control_.SelStart);
  if (control_.SelLength == 0) caretAtStart_ = false;
}

std::size_t ControlText::Caret() const {
  return static_cast<std::size_t>(caretAtStart_ ? control_.SelStart : control_.SelStart + control_.SelLength);
}

std::string ControlText::Selected() const {
  return control_.Text.substr(static_cast<std::size_t>(control_.SelStart),
                              static_cast<std::size_t>(control_.SelLength));
}

void ControlText::Place(std::size_t caret, bool select) {
  const auto to = static_cast<int32>(caret);
  if (!select) {
    control_.SelStart = to;
    control_.SelLength = 0;
    caretAtStart_ = false;
    return;
  }
  const int32 anchor = caretAtStart_ ? control_.SelStart + control_.SelLength : control_.SelStart;
  control_.SelStart = std::min(anchor, to);
  control_.SelLength = std::max(anchor, to) - control_.SelStart;
  caretAtStart_ = to < anchor;
}

void ControlText::Insert(std::string_view text) {
  const auto start = static_cast<std::size_t>(control_.SelStart);
  control_.Text.replace(start, static_cast<std::size_t>(control_.SelLength), text);
  Place(start + text.size(), false);
}

bool ControlText::Erase(std::size_t from, std::size_t to) {
  if (from == to) return false;
  control_.Text.erase(from, to - from);
  Place(from, false);
  return true;
}

bool ControlText::DeleteBack() {
  const auto start = static_cast<std::size_t>(control_.SelStart);
  if (control_.SelLength > 0) return Erase(start, start + static_cast<std::size_t>(control_.SelLength));
  return Erase(Before(start), start);
}

bool ControlText::DeleteForward() {
  const auto start = static_cast<std::size_t>(control_.SelStart);
  if (control_.SelLength > 0) return Erase(start, start + static_cast<std::size_t>(control_.SelLength));
  return Erase(start, Behind(start));
}

void ControlText::SelectAll() {
  control_.SelStart = 0;
  control_.SelLength = static_cast<int32>(control_.Text.size());
  caretAtStart_ = false;
}

// A line break is one step, as every other character is.
std::size_t ControlText::Before(std::size_t position) const {
  if (position == 0) return 0;
  const std::string& text = control_.Text;
  if (position > 1 && text[position - 1] == '\n' && text[position - 2] == '\r') return position - 2;
  return PreviousChar(text, position);
}

std::size_t ControlText::Behind(std::size_t position) const {
  const std::string& text = control_.Text;
  if (position >= text.size()) return text.size();
  if (text.compare(position, 2, "\r\n") == 0) return position + 2;
  return position + CharLength(text, position);
}

std::size_t ControlText::WordBefore(std::size_t position) const {
  const std::string& text = control_.Text;
  while (position > 0 && text[position - 1] == ' ') --position;
  while (position > 0 && text[position - 1] != ' ') position = Before(position);
  return position;
}

std::size_t ControlText::WordBehind(std::size_t position) const {
  const std::string& text = control_.Text;
  while (position < text.size() && text[position] != ' ') position = Behind(position);
  while (position < text.size() && text[position] == ' ') ++position;
  return position;
}

std::size_t ControlText::LineStart(std::size_t position) const {
  if (position == 0) return 0;
  const std::size_t lineFeed = control_.Text.rfind('\n', position - 1);
  return lineFeed == std::string::npos ? 0 : lineFeed + 1;
}

std::size_t ControlText::LineEnd(std::size_t position) const {
  const std::size_t end = control_.Text.find_first_of("\r\n", position);
  return end == std::string::npos ? control_.Text.size() : end;
}

std::size_t ControlText::OtherLine(std::size_t position, bool up) const {
  const std::size_t start = LineStart(position);
  const std::size_t column = position - start;
  std::size_t other = 0;
  if (up) {
    if (start == 0) return position;
    other = LineStart(Before(start));
  } else {
    const std::size_t end = LineEnd(position);
    if (end == control_.Text.size()) return position;
    other = Behind(end);
  }
  return std::min(other + column, LineEnd(other));
}

bool ControlText::MoveKey(int16 KeyCode, int16 Shift) {
  const bool word = (Shift & ControlBit) != 0;
  const bool select = (Shift & ShiftBit) != 0;
  const std::size_t caret = Caret();
  const bool box = control_.Kind == ControlKind::Box;
  switch (KeyCode) {
    case keycode::Left:
      Place(word ? WordBefore(caret) : Before(caret), select);
      return true;
    case keycode::Right:
      Place(word ? WordBehind(caret) : Behind(caret), select);
      return true;
    case keycode::Home:
      Place(word ? 0 : LineStart(caret), select);
      return true;
    case keycode::End:
      Place(word ? control_.Text.size() : LineEnd(caret), select);
      return true;
    case keycode::Up:
    case keycode::Down:
      if (box) Place(OtherLine(caret, KeyCode == keycode::Up), select);
      return box;
    default:
      return false;
  }
}

}  // namespace corvid
