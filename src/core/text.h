// SPDX-License-Identifier: GPL-3.0-or-later
// Rules for text as the language has them. A text is a run of 8-bit codes; only A to Z and a to z have a case, and
// only the blank (code 32) is trimmed. Positions are counted from 0 here unless a comment says otherwise.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/types.h"

namespace corvid {

constexpr char UpperChar(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}
std::string Upper(std::string_view text);
std::string Lower(std::string_view text);
bool SameText(std::string_view a, std::string_view b);               // equal after upper-casing
bool StartsWithText(std::string_view text, std::string_view start);  // the same for the beginning
bool EndsWithText(std::string_view text, std::string_view end);      // and the end
int CompareText(std::string_view a, std::string_view b);             // <0, 0, >0 by code after upper-casing
std::string_view TrimView(std::string_view text);
std::string Trim(std::string_view text);
std::string LTrim(std::string_view text);
std::string RTrim(std::string_view text);
bool IsBlank(std::string_view text);  // nothing but blanks, or nothing at all
// Every occurrence of from becomes to, left to right, in one pass; an empty from changes nothing.
std::string Replace(std::string text, std::string_view from, std::string_view to);
// The pieces between separators; empty text gives no piece, "a||b" gives three. separator must not be empty.
std::vector<std::string> Split(std::string_view text, std::string_view separator);
// A text as part of a file name: what could lead out of the folder (separators, control codes, "..") becomes "_".
std::string FileStem(std::string_view text);
constexpr bool IsLetter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}
constexpr bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

}  // namespace corvid
