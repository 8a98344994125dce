// SPDX-License-Identifier: GPL-3.0-or-later
#include "script/statement_text.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "core/text.h"

namespace corvid {

namespace {

constexpr char EscapeCode = 127;  // in front of an escaped character of a search string
constexpr unsigned char EscapeBit = 0x80;

bool IsLineEnd(char c) {
  return c == '\r' || c == '\n';
}

// The first line end at position or behind it; the text's size if there is none. Eight codes are looked at in one:
// nearly all of a text is above the codes of line ends.
std::size_t FindLineEnd(std::string_view text, std::size_t position) {
  constexpr std::uint64_t ones = 0x0101010101010101;
  constexpr std::uint64_t firstAbove = '\r' + 1;
  std::uint64_t eight = 0;
  const auto clear = [&] { return ((eight - ones * firstAbove) & ~eight & (ones << 7U)) == 0; };
  while (position < text.size()) {
    const std::size_t left = text.size() - position;
    if (left >= sizeof eight) {
      std::memcpy(&eight, text.data() + position, sizeof eight);
      if (clear()) {
        position += sizeof eight;
        continue;
      }
    }
    for (const std::size_t stop = position + std::min(left, sizeof eight); position < stop; ++position)
      if (IsLineEnd(text[position])) return position;
  }
  return position;
}

}  // namespace

std::string_view ReadNextLine(std::string_view text, int32& pointer) {
  auto position = static_cast<std::size_t>(pointer < 0 ? 0 : pointer);
  if (position >= text.size()) {
    pointer = -1;
    return {};
  }
  bool carriageReturn = false;
  while (position < text.size() && IsLineEnd(text[position])) {
    if (text[position] == '\r') {
      if (carriageReturn) {  // an empty line; the pointer rests on this CR, which begins the next one
        pointer = static_cast<int32>(position + 1);
        return {};
      }
      carriageReturn = true;
    }
    ++position;
  }
  const std::size_t end = FindLineEnd(text, position);
  pointer = end < text.size() ? static_cast<int32>(end) : -1;
  return text.substr(position, end - position);
}

std::vector<std::string> SplitLine(std::string_view inlineText) {
  std::string text;
  text.reserve(inlineText.size());
  for (const char c : inlineText)
    if (c != ' ' || text.empty() || text.back() != ' ') text += c;
  std::vector<std::string> words = Split(text, " ");
  for (std::string& word : words)
    if (!word.empty() && std::string_view(",!?.:;\"").find(word.back()) != std::string_view::npos) word.pop_back();
  return words;
}

std::string AddBraces(std::string_view instring) {
  if (!instring.empty() && instring.front() == '{' && instring.back() == '}') return std::string(instring);
  return "{" + std::string(instring) + "}";
}

std::string RemoveQuotes(std::string_view instring) {
  const std::string_view text = TrimView(instring);
  if (text.size() > 1 && text.front() == '"' && text.back() == '"') return std::string(text.substr(1, text.size() - 2));
  return std::string(instring);
}

std::string RemoveEscapeCoding(std::string_view instring2) {
  std::string text(instring2);
  std::string result;
  result.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != EscapeCode) {
      result += text[i];
    } else if (i + 1 < text.size()) {
      // Looked at again in the next round: a cleared code can be the escape code itself, and then counts as one.
      text[i + 1] = static_cast<char>(static_cast<unsigned char>(text[i + 1]) & ~EscapeBit);
    }
  }
  return result;
}

bool IsWhiteSpace(std::string_view text) {
  for (const char c : text)
    if (static_cast<unsigned char>(c) > ' ') return false;
  return true;
}

}  // namespace corvid
