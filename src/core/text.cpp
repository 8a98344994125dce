// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/text.h"

#include <algorithm>

#include "core/fault.h"

namespace corvid {

namespace {

char LowerChar(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

std::string_view LeftTrimmed(std::string_view text) {
  const std::size_t start = text.find_first_not_of(' ');
  return start == std::string_view::npos ? std::string_view() : text.substr(start);
}

std::string_view RightTrimmed(std::string_view text) {
  return text.substr(0, text.find_last_not_of(' ') + 1);  // none found is -1, which leaves nothing
}

}  // namespace

std::string Upper(std::string_view text) {
  std::string result(text);
  for (char& c : result) c = UpperChar(c);
  return result;
}

std::string Lower(std::string_view text) {
  std::string result(text);
  for (char& c : result) c = LowerChar(c);
  return result;
}

bool SameText(std::string_view a, std::string_view b) {
  return a.size() == b.size() &&
         std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) { return UpperChar(x) == UpperChar(y); });
}

bool StartsWithText(std::string_view text, std::string_view start) {
  return text.size() >= start.size() && SameText(text.substr(0, start.size()), start);
}

bool EndsWithText(std::string_view text, std::string_view end) {
  return text.size() >= end.size() && SameText(text.substr(text.size() - end.size()), end);
}

int CompareText(std::string_view a, std::string_view b) {
  const std::size_t common = std::min(a.size(), b.size());
  for (std::size_t i = 0; i < common; ++i) {
    const auto x = static_cast<unsigned char>(UpperChar(a[i]));
    const auto y = static_cast<unsigned char>(UpperChar(b[i]));
    if (x != y) return x < y ? -1 : 1;
  }
  if (a.size() == b.size()) return 0;
  return a.size() < b.size() ? -1 : 1;
}

std::string_view TrimView(std::string_view text) {
  return RightTrimmed(LeftTrimmed(text));
}
std::string Trim(std::string_view text) {
  return std::string(TrimView(text));
}
std::string LTrim(std::string_view text) {
  return std::string(LeftTrimmed(text));
}
std::string RTrim(std::string_view text) {
  return std::string(RightTrimmed(text));
}
bool IsBlank(std::string_view text) {
  return text.find_first_not_of(' ') == std::string_view::npos;
}

std::string Replace(std::string text, std::string_view from, std::string_view to) {
  if (from.empty()) return text;
  std::size_t found = text.find(from);
  if (found == std::string::npos) return text;
  std::string result;
  result.reserve(text.size());
  std::size_t position = 0;
  for (; found != std::string::npos; found = text.find(from, position)) {
    result.append(text, position, found - position).append(to);
    position = found + from.size();
  }
  return result.append(text, position);
}

std::vector<std::string> Split(std::string_view text, std::string_view separator) {
  if (separator.empty()) throw Fault(FaultKind::Internal, "A text cannot be split at nothing");
  std::vector<std::string> pieces;
  if (text.empty()) return pieces;
  std::size_t position = 0;
  for (std::size_t found = text.find(separator); found != std::string_view::npos;
       found = text.find(separator, position)) {
    pieces.emplace_back(text.substr(position, found - position));
    position = found + separator.size();
  }
  pieces.emplace_back(text.substr(position));
  return pieces;
}

std::string FileStem(std::string_view text) {
  std::string stem(text);
  for (char& c : stem)
    if (c == '/' || c == '\\' || static_cast<unsigned char>(c) < 32) c = '_';
  if (stem == "." || stem == "..") stem.assign(stem.size(), '_');
  return stem;
}

}  // namespace corvid
