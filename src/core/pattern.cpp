// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/pattern.h"

#include "core/fault.h"
#include "core/text.h"

namespace corvid {

namespace {

struct SetTest {
  bool Matches = false;
  bool Empty = false;    // "[]" stands for no code at all
  std::size_t Next = 0;  // position in the pattern behind the "]"
};

[[noreturn]] void BadPattern() {
  throw Fault(FaultKind::BadPattern, "Invalid pattern");
}

// Tests one code against the set whose "[" is at position. A "-" that is first or last stands for itself; so does "!"
// anywhere but first, and alone.
SetTest TestSet(std::string_view pattern, std::size_t position, char code) {
  const std::size_t close = pattern.find(']', position + 1);
  if (close == std::string_view::npos) BadPattern();
  std::string_view members = pattern.substr(position + 1, close - position - 1);
  SetTest test;
  test.Next = close + 1;
  test.Empty = members.empty();
  const bool inverted = members.size() > 1 && members.front() == '!';
  if (inverted) members.remove_prefix(1);
  const auto wanted = static_cast<unsigned char>(code);
  for (std::size_t i = 0; i < members.size(); ++i) {
    const auto low = static_cast<unsigned char>(members[i]);
    auto high = low;
    if (i + 2 < members.size() && members[i + 1] == '-') {
      high = static_cast<unsigned char>(members[i + 2]);
      if (high < low) BadPattern();
      i += 2;
    }
    if (wanted >= low && wanted <= high) test.Matches = true;
  }
  if (inverted) test.Matches = !test.Matches;
  return test;
}

// Length of the run of sets "[]" at position: they match nothing and take nothing.
std::size_t SkipEmptySets(std::string_view pattern, std::size_t position) {
  while (pattern.substr(position, 2) == "[]") position += 2;
  return position;
}

bool IsLiteral(char c) {
  return c != '*' && c != '?' && c != '#' && c != '[';
}

}  // namespace

// Only the last "*" met is ever taken back: whatever an earlier one could gain, the last one can as well. This keeps
// the time within pattern times text.
bool Like(std::string_view text, std::string_view pattern) {
  constexpr std::size_t none = std::string_view::npos;
  std::size_t t = 0;
  std::size_t p = SkipEmptySets(pattern, 0);
  std::size_t starPattern = none;  // position behind the last "*"
  std::size_t starText = 0;        // where its run ends at present
  while (true) {
    if (p < pattern.size() && pattern[p] == '*') {
      p = SkipEmptySets(pattern, p + 1);
      if (p == pattern.size()) return true;
      starPattern = p;
      starText = t;
    }
    bool matched = false;
    if (p < pattern.size() && pattern[p] == '[') {
      const SetTest test = TestSet(pattern, p, t < text.size() ? text[t] : '\0');
      if (t < text.size() && test.Matches) {
        matched = true;
        p = test.Next;
      }
    } else if (p < pattern.size() && pattern[p] == '*') {
      continue;
    } else if (p < pattern.size() && t < text.size()) {
      matched = pattern[p] == '?' || (pattern[p] == '#' ? IsDigit(text[t]) : pattern[p] == text[t]);
      if (matched) ++p;
    } else if (t == text.size() && p == pattern.size()) {
      return true;
    }
    if (matched) {
      ++t;
      p = SkipEmptySets(pattern, p);
      continue;
    }
    if (starPattern == none || t >= text.size()) return false;
    p = starPattern;
    t = ++starText;
    if (IsLiteral(pattern[p])) {  // jump to the next place where the rest can begin at all
      t = text.find(pattern[p], t);
      if (t == none) return false;
      starText = t;
    }
  }
}

}  // namespace corvid
