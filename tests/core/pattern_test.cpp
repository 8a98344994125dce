// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/pattern.h"

#include <gtest/gtest.h>

#include <string>

#include "core/fault.h"

namespace corvid {
namespace {

struct Row {
  std::string_view text, pattern;
  bool matches;
};

TEST(Like, Table) {
  for (const Row& row : {
           Row{"", "", true},
           Row{"", "*", true},
           Row{"", "?", false},
           Row{"abc", "abc", true},
           Row{"abc", "ABC", false},
           Row{"abc", "ab", false},
           Row{"ab", "abc", false},
           Row{"abc", "a?c", true},
           Row{"ac", "a?c", false},
           Row{"abc", "*", true},
           Row{"abc", "a*", true},
           Row{"abc", "*c", true},
           Row{"abc", "*b*", true},
           Row{"abc", "*d*", false},
           Row{"aXbXc", "a*X*c", true},
           Row{"abab", "*ab", true},
           Row{"ababa", "*ab", false},
           Row{"abc", "a**c", true},
           Row{"7", "#", true},
           Row{"x", "#", false},
           Row{"12a", "##a", true},
           Row{"hp 120", "hp #*", true},
           Row{"b", "[abc]", true},
           Row{"d", "[abc]", false},
           Row{"m", "[a-z]", true},
           Row{"M", "[a-z]", false},
           Row{"M", "[a-zA-Z]", true},
           Row{"b", "[!abc]", false},
           Row{"d", "[!abc]", true},
           Row{"", "[!abc]", false},
           Row{"!", "[!]", true},
           Row{"a", "[!]", false},
           Row{"!", "[a!]", true},
           Row{"-", "[-a]", true},
           Row{"-", "[a-]", true},
           Row{"a", "[a-]", true},
           Row{"-", "[!a-]", false},
           Row{"*", "[*]", true},
           Row{"x", "[*]", false},
           Row{"?", "[?]", true},
           Row{"#", "[#]", true},
           Row{"[", "[[]", true},
           Row{"]", "]", true},
           Row{"a]", "a]", true},
           Row{"abc", "a[]bc", true},
           Row{"", "[]", true},
           Row{"a*b", "a[*]b", true},
           Row{"axb", "a[*]b", false},
           Row{"abc", "*[]", true},
           Row{"abc", "[]*[]c[]", true},
           Row{"xx[yy", "*[[]*", true},
           Row{"\xE9", "[\xE0-\xFF]", true},
           Row{"\xFF", "?", true},
           Row{"a1b22", "a#b##", true},
           Row{"you have 5 coins", "you have # coins", true},
           Row{"aab", "*[a]b", true},
           Row{"b", "*[a]b", false},
       })
    EXPECT_EQ(Like(row.text, row.pattern), row.matches) << row.text << " like " << row.pattern;
}

int Number(std::string_view text, std::string_view pattern) {
  try {
    Like(text, pattern);
  } catch (const Fault& fault) {
    return fault.Number();
  }
  return 0;
}

TEST(Like, MalformedSetIsAFaultWhereItIsMet) {
  EXPECT_EQ(Number("a", "[a"), 93);
  EXPECT_EQ(Number("a", "["), 93);
  EXPECT_EQ(Number("", "[a"), 93);
  EXPECT_EQ(Number("ab", "a[z-a]"), 93);
  EXPECT_EQ(Number("abc", "*[z-a]"), 93);
  EXPECT_EQ(Number("xb", "a[z-a]"), 0);
  EXPECT_FALSE(Like("xb", "a[b"));
}

TEST(Like, NulAndLineEndsAreCodesLikeAnyOther) {
  EXPECT_TRUE(Like(std::string_view("\0\r\n", 3), "???"));
  EXPECT_FALSE(Like("", "[!a]"));
}

// With naive backtracking this would not end within a lifetime.
TEST(Like, ManyStarsStayCheap) {
  const std::string text(20000, 'a');
  std::string pattern;
  for (int i = 0; i < 50; ++i) pattern += "*a";
  EXPECT_TRUE(Like(text, pattern));
  EXPECT_FALSE(Like(text, pattern + "b"));
  EXPECT_FALSE(Like(text, pattern + "[b]"));
}

}  // namespace
}  // namespace corvid
