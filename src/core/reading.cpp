// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/reading.h"

#include <algorithm>

#include "core/utf8.h"

namespace corvid {

namespace {

bool IsLineEnd(char c) {
  return c == '\r' || c == '\n';
}
bool IsGap(char c) {
  return c == ' ' || IsLineEnd(c);
}
std::size_t Offset(int32 caret) {
  return static_cast<std::size_t>(std::max<int32>(0, caret));
}
int32 Size(std::string_view text) {
  return static_cast<int32>(text.size());
}

// The line around position (from 1), once the caller has brought the position into the text.
std::string LineAround(std::string_view text, int32 position) {
  std::size_t start = Offset(position - 1);
  while (start > 0 && text[start - 1] != '\n') --start;
  std::size_t end = start;
  while (end < text.size() && !IsLineEnd(text[end])) ++end;
  return std::string(text.substr(start, end - start));
}

}  // namespace

std::string CurrentLine(std::string_view text, int32 CursorPosition) {
  if (CursorPosition < 0 || text.empty()) return {};
  int32 position = std::max<int32>(1, CursorPosition);
  if (position > Size(text)) {
    position = Size(text);
    if (IsLineEnd(text.back())) return {};
  }
  return LineAround(text, position);
}

std::string CurrentLine2(std::string_view text, int32 CursorPosition2) {
  if (CursorPosition2 < 0 || text.empty()) return {};
  int32 position = std::clamp<int32>(CursorPosition2, 1, Size(text));
  while (IsLineEnd(text[Offset(position - 1)])) {
    if (--position < 1) return {};
  }
  return LineAround(text, position);
}

int32 LineStart(std::string_view text, int32 caret) {
  std::size_t start = std::min(Offset(caret), text.size());
  while (start > 0 && text[start - 1] != '\n') --start;
  return static_cast<int32>(start);
}

int32 LineEnd(std::string_view text, int32 caret) {
  std::size_t end = std::min(Offset(caret), text.size());
  while (end < text.size() && !IsLineEnd(text[end])) ++end;
  return static_cast<int32>(end);
}

int32 FindNextLine(std::string_view text, int32 caret, int32 Lines, int32 LineDirection) {
  if (text.empty()) return -1;
  if (LineDirection > 0) {
    std::size_t at = Offset(caret);
    for (int32 passed = 0; passed < Lines; ++passed) {
      at = at < text.size() ? text.find('\n', at) : std::string_view::npos;
      if (at == std::string_view::npos || at + 1 >= text.size()) return -1;
      ++at;
    }
    return static_cast<int32>(at);
  }
  int32 start = LineStart(text, caret);
  for (int32 passed = 0; passed < Lines; ++passed) {
    if (start == 0) return -1;
    start = LineStart(text, start - 1);
  }
  return start;
}

int32 NextCharacter(std::string_view text, int32 caret) {
  const std::size_t at = Offset(caret);
  if (at >= text.size()) return Size(text);
  if (text[at] == '\r' && at + 1 < text.size() && text[at + 1] == '\n') return caret + 2;
  return caret + static_cast<int32>(CharLength(text, at));
}

int32 PreviousCharacter(std::string_view text, int32 caret) {
  const std::size_t at = std::min(Offset(caret), text.size());
  if (at == 0) return 0;
  if (at >= 2 && text[at - 1] == '\n' && text[at - 2] == '\r') return static_cast<int32>(at - 2);
  return static_cast<int32>(PreviousChar(text, at));
}

int32 NextWord(std::string_view text, int32 caret) {
  std::size_t at = std::min(Offset(caret), text.size());
  while (at < text.size() && !IsGap(text[at])) ++at;
  while (at < text.size() && IsGap(text[at])) ++at;
  return static_cast<int32>(at);
}

int32 PreviousWord(std::string_view text, int32 caret) {
  std::size_t at = std::min(Offset(caret), text.size());
  while (at > 0 && IsGap(text[at - 1])) --at;
  while (at > 0 && !IsGap(text[at - 1])) --at;
  return static_cast<int32>(at);
}

}  // namespace corvid
