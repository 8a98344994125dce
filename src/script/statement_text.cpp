// SPDX-License-Identifier: GPL-3.0-or-later
#include "script/statement_text.h"

#include "core/text.h"

namespace corvid {

namespace {

constexpr char EscapeCode = 127;  // in front of an escaped character of a search string
constexpr unsigned char EscapeBit = 0x80;

bool IsLineEnd(char c) {
  return c == '\r' || c == '\n';
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
  std::size_t end = position;
  while (end < text.size() && !IsLineEnd(text[end])) ++end;
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
