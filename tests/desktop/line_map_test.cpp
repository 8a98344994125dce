// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/desktop/line_map.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace corvid {
namespace {

std::vector<std::int64_t> Starts(const LineMap& map) {
  std::vector<std::int64_t> starts;
  for (std::size_t line = 0; line < map.Lines(); ++line) starts.push_back(map.StartOf(line));
  return starts;
}

LineMap MapOf(std::string_view text) {
  LineMap map;
  map.Append(text);
  return map;
}

TEST(DisplayText, ShowsEachLineBreakAsOne) {
  EXPECT_EQ(u"a\nb\nc\nd", DisplayText("a\r\nb\nc\rd"));
}

TEST(DisplayText, ReadsUtf8AndElseWindows1252) {
  EXPECT_EQ(u"caf\u00E9 \u20AC", DisplayText("caf\xC3\xA9 \x80"));
}

TEST(DisplayText, ShowsAForeignDocumentsMarksAsOneSignEach) {
  EXPECT_EQ(u"a\uFFFDb\u2407\u2400\uFFFD",
            DisplayText(std::string("a\xE2\x80\xA9") + "b\a" + std::string(1, '\0') + "\xEF\xB7\x90"));
}

TEST(UnitsBefore, CountsABreakAsOneAndAFarCharacterAsTwo) {
  const std::string text = "a\r\n\xF0\x9F\x90\xA6z";  // a bird
  EXPECT_EQ(0, UnitsBefore(text, 0));
  EXPECT_EQ(1, UnitsBefore(text, 1));
  EXPECT_EQ(1, UnitsBefore(text, 2)) << "between CR and LF";
  EXPECT_EQ(2, UnitsBefore(text, 3));
  EXPECT_EQ(2, UnitsBefore(text, 5)) << "inside the bird";
  EXPECT_EQ(4, UnitsBefore(text, 7));
  EXPECT_EQ(5, UnitsBefore(text, 99));
}

TEST(CodesBefore, IsTheOtherWay) {
  const std::string text = "a\r\n\xF0\x9F\x90\xA6z\xE9";
  for (const std::size_t code : {0U, 1U, 3U, 7U, 8U, 9U}) EXPECT_EQ(code, CodesBefore(text, UnitsBefore(text, code)));
  EXPECT_EQ(7U, CodesBefore(text, 3)) << "the middle of the bird is behind it";
  EXPECT_EQ(9U, CodesBefore(text, 50));
}

TEST(WholePlace, NeverCutsACharacterOrABreak) {
  const std::string text = "a\r\n\xC3\xA9z";
  EXPECT_EQ(3U, WholePlace(text, 2));
  EXPECT_EQ(3U, WholePlace(text, 3));
  EXPECT_EQ(5U, WholePlace(text, 4));
  EXPECT_EQ(6U, WholePlace(text, 100));
}

TEST(LineMap, KnowsWhereLinesBegin) {
  const LineMap map = MapOf("one\r\ntwo\nthree\rfour");
  EXPECT_EQ((std::vector<std::int64_t>{0, 5, 9, 15}), Starts(map));
  EXPECT_EQ(0U, map.LineOf(4));
  EXPECT_EQ(1U, map.LineOf(5));
  EXPECT_EQ(3U, map.LineOf(1000));
  EXPECT_EQ(19, map.StartOf(4));
}

TEST(LineMap, EmptyTextIsOneLine) {
  const LineMap map;
  EXPECT_EQ(1U, map.Lines());
  EXPECT_EQ(0, map.Length());
  EXPECT_EQ(0U, map.LineOf(0));
}

TEST(LineMap, DropsInFrontInTheMiddleOfALineToo) {
  LineMap map = MapOf("one\r\ntwo\r\nthree");
  map.DropFront(7);
  EXPECT_EQ((std::vector<std::int64_t>{0, 3}), Starts(map));
  map.DropFront(3);
  EXPECT_EQ((std::vector<std::int64_t>{0}), Starts(map));
  EXPECT_EQ(5, map.Length());
  map.DropFront(50);
  EXPECT_EQ(0, map.Length());
  EXPECT_EQ(1U, map.Lines());
}

TEST(LineMap, ReplacesLines) {
  LineMap map = MapOf("one\r\ntwo\r\nthree\r\n");
  map.Replace(1, 1, "x\r\nlonger\r\n");
  EXPECT_EQ((std::vector<std::int64_t>{0, 5, 8, 16, 23}), Starts(map));
  map.Replace(3, 4, "end");
  EXPECT_EQ((std::vector<std::int64_t>{0, 5, 8, 16}), Starts(map));
  EXPECT_EQ(19, map.Length());
}

// Replaced in any way, the map is that of the new text.
TEST(LineMap, RandomReplacementsAgree) {
  std::mt19937 random(7);
  const auto below = [&](std::size_t limit) { return static_cast<std::size_t>(random() % limit); };
  const std::vector<std::string> pieces{"a", "\r\n", "\n", "b\r", "word\r\nmore", ""};
  std::string text = "one\r\ntwo\rthree\n";
  LineMap map = MapOf(text);
  for (int step = 0; step < 2000; ++step) {
    const std::size_t first = below(map.Lines());
    const std::size_t last = first + below(map.Lines() - first);
    std::string fresh;
    for (std::size_t i = below(4); i > 0; --i) fresh += pieces[below(pieces.size())];
    const bool atEnd = last + 1 == map.Lines();
    if (!atEnd) fresh += "\r\n";
    if (first > 0 && fresh.starts_with('\n')) fresh.insert(0, "x");
    const auto from = static_cast<std::size_t>(map.StartOf(first));
    text.replace(from, static_cast<std::size_t>(map.StartOf(last + 1)) - from, fresh);
    map.Replace(first, last, fresh);
    ASSERT_EQ(Starts(MapOf(text)), Starts(map)) << "step " << step;
    if (text.size() > 200) {
      text.erase(0, 100);
      map.DropFront(100);
      ASSERT_EQ(Starts(MapOf(text)), Starts(map)) << "step " << step << " dropped";
    }
  }
}

}  // namespace
}  // namespace corvid
