// SPDX-License-Identifier: GPL-3.0-or-later
#include "game/text.h"

#include <algorithm>

namespace corvid::practice {

namespace {

char LowerChar(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

// Where a line of at most width shown codes ends: at a blank, or at the end of the text.
std::size_t LineEnd(std::string_view text, std::size_t width) {
  std::size_t shown = 0;
  std::size_t blank = std::string_view::npos;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] == '\x1b') {
      at = std::min(text.find('m', at), text.size());
      continue;
    }
    if (text[at] == ' ') blank = at;
    if (++shown > width && blank != std::string_view::npos) return blank;
  }
  return text.size();
}

void WrapParagraph(std::string_view text, std::size_t width, std::vector<std::string>& lines) {
  std::size_t end = LineEnd(text, width);
  for (; end < text.size(); end = LineEnd(text, width)) {
    lines.emplace_back(text.substr(0, end));
    text.remove_prefix(end + 1);
  }
  lines.emplace_back(text);
}

}  // namespace

std::string Paint(std::string_view colour, std::string_view text) {
  std::string painted = "\x1b[";
  painted.append(colour).append("m").append(text).append("\x1b[0m");
  return painted;
}

std::string StripColours(std::string_view text) {
  std::string plain;
  plain.reserve(text.size());
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] != '\x1b') {
      plain += text[at];
      continue;
    }
    while (at < text.size() && text[at] != 'm') ++at;
  }
  return plain;
}

std::vector<std::string> Wrap(std::string_view text, std::size_t width) {
  std::vector<std::string> lines;
  while (true) {
    const std::size_t end = text.find('\n');
    WrapParagraph(text.substr(0, end), width, lines);
    if (end == std::string_view::npos) return lines;
    text.remove_prefix(end + 1);
  }
}

std::string Lower(std::string_view text) {
  std::string lower(text);
  std::transform(lower.begin(), lower.end(), lower.begin(), LowerChar);
  return lower;
}

std::string Capitalised(std::string_view text) {
  std::string name = Lower(text);
  if (!name.empty() && name[0] >= 'a' && name[0] <= 'z') name[0] = static_cast<char>(name[0] - ('a' - 'A'));
  return name;
}

std::string Trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

std::string TakeWord(std::string& text) {
  text = Trimmed(text);
  const std::size_t end = text.find(' ');
  std::string word = text.substr(0, end);
  text = end == std::string::npos ? std::string() : Trimmed(std::string_view(text).substr(end));
  return word;
}

bool StartsWith(std::string_view text, std::string_view start) {
  if (start.empty() || start.size() > text.size()) return false;
  return std::equal(start.begin(), start.end(), text.begin(),
                    [](char a, char b) { return LowerChar(a) == LowerChar(b); });
}

std::string Joined(const std::vector<std::string>& parts) {
  std::string text;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    if (i > 0) text += i + 1 == parts.size() ? " and " : ", ";
    text += parts[i];
  }
  return text;
}

std::string Counted(int count, std::string_view noun) {
  return std::to_string(count) + " " + std::string(noun) + (count == 1 ? "" : "s");
}

int ParseCount(std::string_view text, int limit) {
  if (text.empty()) return -1;
  int value = 0;
  for (char c : text) {
    if (c < '0' || c > '9') return -1;
    const int digit = c - '0';
    if (value > (limit - digit) / 10) return -1;
    value = value * 10 + digit;
  }
  return value;
}

}  // namespace corvid::practice
