// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/text.h"

#include <gtest/gtest.h>

#include "core/fault.h"

namespace corvid {
namespace {

using Pieces = std::vector<std::string>;

TEST(Text, OnlyAToZHaveACase) {
  EXPECT_EQ(Upper("abz{ 09\xE9\xFF"), "ABZ{ 09\xE9\xFF");
  EXPECT_EQ(Lower("ABZ[ 09\xC9"), "abz[ 09\xC9");
  EXPECT_EQ(UpperChar('q'), 'Q');
  EXPECT_EQ(UpperChar('`'), '`');
}

TEST(Text, ComparesAfterUpperCasing) {
  EXPECT_TRUE(SameText("aBc", "AbC"));
  EXPECT_FALSE(SameText("abc", "abcd"));
  EXPECT_TRUE(StartsWithText("Connected", "CON"));
  EXPECT_FALSE(StartsWithText("co", "CON"));
  EXPECT_TRUE(EndsWithText("walk.SET", ".set"));
  EXPECT_FALSE(EndsWithText("t", ".set"));
  EXPECT_TRUE(EndsWithText("x", ""));
}

TEST(Text, OrderIsByCode) {
  struct Row {
    std::string_view a, b;
    int sign;
  };
  for (const Row& row : {Row{"a", "A", 0}, Row{"a", "B", -1}, Row{"b", "A", 1}, Row{"a", "ab", -1}, Row{"ab", "a", 1},
                         Row{"", "", 0}, Row{"z", "\xE9", -1}, Row{"a_", "ab", 1}, Row{"a9", "aa", -1}}) {
    const int found = CompareText(row.a, row.b);
    EXPECT_EQ((found > 0) - (found < 0), row.sign) << row.a << " and " << row.b;
  }
}

TEST(Text, TrimsBlanksOnly) {
  EXPECT_EQ(Trim("  a b \t "), "a b \t");
  EXPECT_EQ(LTrim("  a "), "a ");
  EXPECT_EQ(RTrim("  a "), "  a");
  EXPECT_EQ(Trim("   "), "");
  EXPECT_EQ(RTrim("   "), "");
  EXPECT_TRUE(IsBlank(""));
  EXPECT_TRUE(IsBlank("  "));
  EXPECT_FALSE(IsBlank(" \t"));
}

TEST(Text, ReplacesInOnePass) {
  EXPECT_EQ(Replace("aaa", "a", "aa"), "aaaaaa");
  EXPECT_EQ(Replace("aaa", "aa", "b"), "ba");
  EXPECT_EQ(Replace("abc", "", "x"), "abc");
  EXPECT_EQ(Replace("a|b|", "|", ""), "ab");
  EXPECT_EQ(Replace("", "a", "b"), "");
}

TEST(Text, SplitsAtEverySeparator) {
  EXPECT_EQ(Split("", "|"), Pieces{});
  EXPECT_EQ(Split("a", "|"), Pieces{"a"});
  EXPECT_EQ(Split("a||b", "|"), (Pieces{"a", "", "b"}));
  EXPECT_EQ(Split("|", "|"), (Pieces{"", ""}));
  EXPECT_EQ(Split("a\r\nb\r\n", "\r\n"), (Pieces{"a", "b", ""}));
  EXPECT_THROW(Split("a", ""), Fault);
}

TEST(Text, LettersAndDigitsAreAscii) {
  EXPECT_TRUE(IsLetter('a') && IsLetter('Z') && IsDigit('0') && IsDigit('9'));
  EXPECT_FALSE(IsLetter('_') || IsLetter('\xE9') || IsDigit('a') || IsDigit('\xB2'));
}

}  // namespace
}  // namespace corvid
