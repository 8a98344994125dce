// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/pattern_matcher.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "core/fault.h"
#include "core/pattern.h"

namespace corvid {
namespace {

using Texts = std::vector<std::string>;

// The slow and obvious reference: what the pattern language says, by trying everything.
bool Naive(std::string_view text, std::string_view pattern) {
  if (pattern.empty()) return text.empty();
  if (pattern[0] == '*') return Naive(text, pattern.substr(1)) || (!text.empty() && Naive(text.substr(1), pattern));
  if (pattern[0] == '[') {
    const std::size_t close = pattern.find(']', 1);
    if (close == std::string_view::npos) return false;
    std::string_view members = pattern.substr(1, close - 1);
    const std::string_view rest = pattern.substr(close + 1);
    if (members.empty()) return Naive(text, rest);
    const bool inverted = members.size() > 1 && members[0] == '!';
    if (inverted) members.remove_prefix(1);
    bool in = false;
    for (std::size_t i = 0; i < members.size(); ++i) {
      const auto low = static_cast<unsigned char>(members[i]);
      auto high = low;
      if (i + 2 < members.size() && members[i + 1] == '-') {
        high = static_cast<unsigned char>(members[i + 2]);
        if (high < low) return false;
        i += 2;
      }
      if (!text.empty() && static_cast<unsigned char>(text[0]) >= low && static_cast<unsigned char>(text[0]) <= high)
        in = true;
    }
    return !text.empty() && in != inverted && Naive(text.substr(1), rest);
  }
  if (text.empty()) return false;
  const bool takes =
      pattern[0] == '?' || (pattern[0] == '#' ? text[0] >= '0' && text[0] <= '9' : pattern[0] == text[0]);
  return takes && Naive(text.substr(1), pattern.substr(1));
}

bool LikeOrNot(std::string_view text, std::string_view pattern) {
  try {
    return Like(text, pattern);
  } catch (const Fault&) {
    return false;
  }
}

TEST(PatternMatcher, AnswersAsAnObviousOneDoes) {
  std::mt19937 random(7);
  const auto pick = [&](std::string_view from) { return from[random() % from.size()]; };
  int matched = 0;
  for (int round = 0; round < 200000; ++round) {
    std::string pattern;
    std::string text;
    for (std::size_t i = random() % 9; i > 0; --i) pattern += pick("aaabb1**?#[]!-");
    for (std::size_t i = random() % 9; i > 0; --i) text += pick("aaabb1!-[]");
    const bool expected = Naive(text, pattern);
    matched += expected ? 1 : 0;
    ASSERT_EQ(PatternMatcher(pattern).Matches(text), expected) << text << " like " << pattern;
    ASSERT_EQ(LikeOrNot(text, pattern), expected) << text << " like " << pattern;
  }
  EXPECT_GT(matched, 5000);
}

TEST(PatternMatcher, EveryMatchHoldsTheLiterals) {
  std::mt19937 random(8);
  const auto pick = [&](std::string_view from) { return from[random() % from.size()]; };
  for (int round = 0; round < 50000; ++round) {
    std::string pattern;
    std::string text;
    for (std::size_t i = random() % 9; i > 0; --i) pattern += pick("aab1*?#[]!");
    for (std::size_t i = random() % 9; i > 0; --i) text += pick("aab1");
    const PatternMatcher matcher(pattern);
    if (!matcher.Matches(text)) continue;
    for (const std::string& literal : matcher.Literals())
      ASSERT_NE(text.find(literal), std::string::npos) << text << " like " << pattern;
  }
}

TEST(PatternMatcher, LiteralsAreAsLongAsTheyGo) {
  EXPECT_EQ(PatternMatcher("* says 'hello' to #*").Literals(), (Texts{" says 'hello' to "}));
  EXPECT_EQ(PatternMatcher("a[*]b[]c*[xy]d").Literals(), (Texts{"a*bc", "d"}));
  EXPECT_EQ(PatternMatcher("***").Literals(), Texts{});
  EXPECT_EQ(PatternMatcher("").Literals(), Texts{});
}

TEST(PatternMatcher, AMalformedPatternMatchesNothing) {
  for (const char* pattern : {"[", "a[", "*[z-a]*", "[a", "x*["}) {
    const PatternMatcher matcher(pattern);
    for (const char* text : {"", "a", "a[", "[", "x["}) EXPECT_FALSE(matcher.Matches(text)) << pattern << " " << text;
  }
}

// With naive backtracking this would not end within a lifetime.
TEST(PatternMatcher, ThirtyStarsStayCheap) {
  std::string pattern;
  for (int i = 0; i < 30; ++i) pattern += "*a?";
  const std::string text(4000, 'a');
  EXPECT_TRUE(PatternMatcher(pattern).Matches(text));
  EXPECT_FALSE(PatternMatcher(pattern + "b").Matches(text));
  EXPECT_FALSE(PatternMatcher(pattern + "*b*").Matches(text));
  EXPECT_FALSE(PatternMatcher(pattern + "*[b]?#*").Matches(text));
}

}  // namespace
}  // namespace corvid
