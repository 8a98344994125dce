// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/scramble.h"

#include <gtest/gtest.h>

namespace corvid {
namespace {

TEST(Scramble, ShiftsEachCodeAndKeepsLineEnds) {
  EXPECT_EQ(Scramble("Ab\r\nc"), "\xC1\xE2\r\n\xE3");
  EXPECT_EQ(Scramble("\r\n\r\n"), "\r\n\r\n");
  EXPECT_EQ(Scramble(""), "");
}

TEST(Scramble, LoneHalvesOfALineEndAreShifted) {
  EXPECT_EQ(Scramble("a\rb\nc"), "\xE1\x8D\xE2\x8A\xE3");
  EXPECT_EQ(Scramble("\n\r"), "\x8A\x8D");
  EXPECT_EQ(Scramble("\r\r\n\n"), "\x8D\r\n\x8A");
}

// Every text of four codes out of those that matter, and every single code.
TEST(Scramble, IsItsOwnInverse) {
  const std::string codes =
      "\r\n\x8D\x8A"
      "a";
  for (std::size_t n = 0; n < 625; ++n) {
    std::string text;
    for (std::size_t rest = n, i = 0; i < 4; ++i, rest /= 5) text += codes[rest % 5];
    EXPECT_EQ(Scramble(Scramble(text)), text) << testing::PrintToString(text);
  }
  for (int code = 0; code < 256; ++code) {
    const std::string text(1, static_cast<char>(code));
    EXPECT_EQ(Scramble(Scramble(text)), text);
  }
}

TEST(Scramble, NoLineEndComesIntoBeing) {
  EXPECT_EQ(Scramble("x\x8D\x8Ay").find("\r\n"), std::string::npos);
}

}  // namespace
}  // namespace corvid
