// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/reading.h"

#include <gtest/gtest.h>

namespace corvid {
namespace {

const std::string Lines = "one\r\ntwo\r\n\r\nfour";  // lines start at 0, 5, 10, 12

TEST(Reading, CurrentLineByAPositionFromOne) {
  struct Row {
    int32 position;
    const char* line;
  };
  for (const Row& row :
       {Row{-1, ""}, Row{0, "one"}, Row{1, "one"}, Row{3, "one"}, Row{4, "one"}, Row{6, "two"}, Row{8, "two"},
        Row{9, "two"}, Row{11, ""}, Row{13, "four"}, Row{16, "four"}, Row{17, "four"}, Row{900, "four"}})
    EXPECT_EQ(CurrentLine(Lines, row.position), row.line) << row.position;
}

TEST(Reading, CurrentLineAtTheEdges) {
  EXPECT_EQ(CurrentLine("", 1), "");
  EXPECT_EQ(CurrentLine("\r\nlook", 1), "");
  EXPECT_EQ(CurrentLine("look\r\n", 7), "") << "behind the last line end stands an empty line";
  EXPECT_EQ(CurrentLine("look\nwait", 6), "wait") << "a bare line feed ends a line too";
}

TEST(Reading, CurrentLine2StepsLeftOffALineEnd) {
  EXPECT_EQ(CurrentLine2(Lines, 4), "one");
  EXPECT_EQ(CurrentLine2(Lines, 5), "one");
  EXPECT_EQ(CurrentLine2(Lines, 12), "two") << "an empty line counts as the end of the one before";
  EXPECT_EQ(CurrentLine2("look\r\n", 99), "look");
  EXPECT_EQ(CurrentLine2("\r\n", 2), "");
  EXPECT_EQ(CurrentLine2("", 1), "");
  EXPECT_EQ(CurrentLine2(Lines, -1), "");
}

TEST(Reading, FindNextLineForwardAndBack) {
  EXPECT_EQ(FindNextLine(Lines, 1, 1, 1), 5);
  EXPECT_EQ(FindNextLine(Lines, 1, 3, 1), 12);
  EXPECT_EQ(FindNextLine(Lines, 14, 1, -1), 10);
  EXPECT_EQ(FindNextLine(Lines, 14, 3, -1), 0);
}

TEST(Reading, FindNextLineEndsAtTheBoundaries) {
  EXPECT_EQ(FindNextLine("", 0, 1, 1), -1);
  EXPECT_EQ(FindNextLine("", 0, 1, -1), -1);
  EXPECT_EQ(FindNextLine(Lines, 13, 1, 1), -1) << "below the last line there is none";
  EXPECT_EQ(FindNextLine(Lines, 16, 1, 1), -1);
  EXPECT_EQ(FindNextLine(Lines, 500, 1, 1), -1);
  EXPECT_EQ(FindNextLine(Lines, 2, 1, -1), -1);
  EXPECT_EQ(FindNextLine(Lines, 2, 22, 1), -1);
}

TEST(Reading, StartAndEndOfTheLine) {
  EXPECT_EQ(LineStart(Lines, 7), 5);
  EXPECT_EQ(LineEnd(Lines, 5), 8);
  EXPECT_EQ(LineStart(Lines, 10), 10);
  EXPECT_EQ(LineEnd(Lines, 10), 10);
  EXPECT_EQ(LineStart(Lines, 999), 12);
  EXPECT_EQ(LineEnd(Lines, 999), 16);
  EXPECT_EQ(LineStart(Lines, -2), 0);
}

TEST(Reading, ACharacterIsAWholeOne) {
  const std::string text = "a\xC3\xA9\xE2\x82\xAC\xFF\r\nb";  // a, two bytes, three bytes, a stray byte, break, b
  int32 caret = 0;
  for (const int32 next : {1, 3, 6, 7, 9, 10, 10}) {
    caret = NextCharacter(text, caret);
    EXPECT_EQ(caret, next);
  }
  for (const int32 before : {9, 7, 6, 3, 1, 0, 0}) {
    caret = PreviousCharacter(text, caret);
    EXPECT_EQ(caret, before);
  }
}

TEST(Reading, WordsArePartedByBlanksAndBreaks) {
  const std::string text = "go  north\r\nnow ";
  int32 caret = 0;
  for (const int32 next : {4, 11, 15, 15}) {
    caret = NextWord(text, caret);
    EXPECT_EQ(caret, next);
  }
  for (const int32 before : {11, 4, 0, 0}) {
    caret = PreviousWord(text, caret);
    EXPECT_EQ(caret, before);
  }
}

}  // namespace
}  // namespace corvid
