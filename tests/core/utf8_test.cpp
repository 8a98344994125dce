// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/utf8.h"

#include <gtest/gtest.h>

namespace corvid {
namespace {

TEST(Utf8, LengthOfACharacter) {
  struct Row {
    std::string text;
    std::size_t length;
  };
  for (const Row& row : {Row{"a", 1},
                         Row{"\xC3\xA9", 2},
                         Row{"\xE2\x82\xAC", 3},
                         Row{"\xF0\x9F\x98\x80", 4},
                         Row{"\xC3", 1},
                         Row{"\xC3x", 1},
                         Row{"\xC0\x80", 1},
                         Row{"\xC1\xBF", 1},
                         Row{"\xE0\x80\x80", 1},
                         Row{"\xE0\xA0\x80", 3},
                         Row{"\xED\xA0\x80", 1},
                         Row{"\xED\x9F\xBF", 3},
                         Row{"\xF0\x80\x80\x80", 1},
                         Row{"\xF4\x8F\xBF\xBF", 4},
                         Row{"\xF4\x90\x80\x80", 1},
                         Row{"\xF5\x80\x80\x80", 1},
                         Row{"\xE2\x82", 1},
                         Row{"\xE2\x82x", 1},
                         Row{"\x80", 1},
                         Row{"\xFF", 1}})
    EXPECT_EQ(CharLength(row.text, 0), row.length) << testing::PrintToString(row.text);
  EXPECT_EQ(CharLength("a", 1), 1U);
}

TEST(Utf8, StepsBackOverWholeCharacters) {
  const std::string text = "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80\x80";
  EXPECT_EQ(PreviousChar(text, 11), 10U);  // the stray byte at the end
  EXPECT_EQ(PreviousChar(text, 10), 6U);
  EXPECT_EQ(PreviousChar(text, 6), 3U);
  EXPECT_EQ(PreviousChar(text, 3), 1U);
  EXPECT_EQ(PreviousChar(text, 1), 0U);
  EXPECT_EQ(PreviousChar(text, 0), 0U);
  EXPECT_EQ(PreviousChar("\xC3\xA9", 9), 0U);
}

TEST(Utf8, OtherBytesAreWindows1252) {
  EXPECT_EQ(ToUtf8("caf\xE9"), "caf\xC3\xA9");
  EXPECT_EQ(ToUtf8("caf\xC3\xA9"), "caf\xC3\xA9");
  EXPECT_EQ(ToUtf8("\x80"), "\xE2\x82\xAC");
  EXPECT_EQ(ToUtf8("\x93x\x94"), "\xE2\x80\x9Cx\xE2\x80\x9D");
  EXPECT_EQ(ToUtf8("\x81"), "\xC2\x81");
  EXPECT_EQ(ToUtf8("\xED\xA0\x80"), "\xC3\xAD\xC2\xA0\xE2\x82\xAC");
  EXPECT_EQ(ToUtf8(std::string("a\0\r\n\x07", 5)), std::string("a\0\r\n\x07", 5));
}

TEST(Utf8, AsUtf16) {
  EXPECT_EQ(ToUtf16("a\xC3\xA9\xE2\x82\xAC"), u"a\u00E9\u20AC");
  EXPECT_EQ(ToUtf16("\xF0\x9F\x98\x80"), u"\U0001F600");
  EXPECT_EQ(ToUtf16("\xE9\x80"), u"\u00E9\u20AC");
}

TEST(Utf8, TellsAUtf8Server) {
  EXPECT_TRUE(IsMultiByteUtf8("caf\xC3\xA9"));
  EXPECT_FALSE(IsMultiByteUtf8("cafe"));
  EXPECT_FALSE(IsMultiByteUtf8("caf\xE9"));
  EXPECT_FALSE(IsMultiByteUtf8("\xC3\xA9 \xE9"));
  EXPECT_FALSE(IsMultiByteUtf8(""));
}

TEST(Utf8, TypedTextGoesOutAsOneByteWhereItCan) {
  EXPECT_EQ(ToWire("caf\xC3\xA9"), "caf\xE9");
  EXPECT_EQ(ToWire("\xC3\xBF\xC2\x80"), "\xFF\x80");
  EXPECT_EQ(ToWire("\xE2\x82\xAC\xC4\x80"), "\xE2\x82\xAC\xC4\x80");
  EXPECT_EQ(ToWire("\xE9"), "\xE9");
  EXPECT_EQ(ToWire(""), "");
}

}  // namespace
}  // namespace corvid
