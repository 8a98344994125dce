// SPDX-License-Identifier: GPL-3.0-or-later
#include "sessions/word_echo.h"

#include <algorithm>

#include "core/reading.h"
#include "core/text.h"

namespace corvid {

namespace {

bool EndsWord(char c) {
  return std::string_view("?! =)(;:").find(c) != std::string_view::npos;
}

bool BelongsToWord(char c) {
  return static_cast<unsigned char>(c) >= 32 && !EndsWord(c);
}

}  // namespace

WordEcho EchoWord(std::string_view text, int32 caret) {
  WordEcho echo;
  if (text.empty()) return echo;
  const auto size = static_cast<int32>(text.size());
  caret = std::clamp(caret, 0, size);
  const int32 lineStart = LineStart(text, caret);
  echo.Line = std::string(
      text.substr(static_cast<std::size_t>(lineStart), static_cast<std::size_t>(LineEnd(text, caret) - lineStart)));
  echo.Column = caret - lineStart;
  auto place = static_cast<std::size_t>(std::min(caret, size - 1));
  echo.PassedWordEnd = EndsWord(text[place]);
  while (place > 0 && !BelongsToWord(text[place])) --place;
  if (!BelongsToWord(text[place])) return echo;
  std::size_t start = place;
  while (start > 0 && BelongsToWord(text[start - 1])) --start;
  while (place < text.size() && BelongsToWord(text[place])) ++place;
  echo.Word = std::string(text.substr(start, place - start));
  return echo;
}

std::string NewlySelected(std::string_view before, std::string_view now) {
  if (now.size() <= before.size())
    return now == before || before.find(now) != std::string_view::npos ? "" : std::string(now);
  if (now.substr(0, before.size()) == before) return std::string(now.substr(before.size()));
  if (now.substr(now.size() - before.size()) == before) return std::string(now.substr(0, now.size() - before.size()));
  return std::string(now);
}

}  // namespace corvid
