// SPDX-License-Identifier: GPL-3.0-or-later
#include "sessions/line_maker.h"

#include <gtest/gtest.h>

#include "script/symbols.h"
#include "support_upcalls.h"

namespace corvid {
namespace {

class LineMakerTest : public ::testing::Test {
 protected:
  LineMakerTest() { symbols.LoadSystemVariables(); }
  LineVersions Make(std::string_view text) {
    LineVersions line{"old", "old", "old"};
    faults.clear();
    maker.Make(text, line, faults);
    return line;
  }
  EffectLog effects;
  RecordingRunner runner{effects};
  ScriptState script;
  OptionsState options;
  Symbols symbols{script, runner};
  LineMaker maker{script, options};
  std::vector<std::string> faults;
};

TEST_F(LineMakerTest, TagsColoursWhenSomebodyWantsThem) {
  EXPECT_EQ(Make("\x1b[1;31mred").TaggedLine, "red") << "nobody asked for tags";
  for (bool OptionsState::*wish :
       {&OptionsState::ColourTextTags, &OptionsState::ColourDisplay, &OptionsState::TriggerColourNeeded}) {
    options.*wish = true;
    const LineVersions line = Make("\x1b[1;31mred\x1b[0m.");
    EXPECT_EQ(line.TaggedLine, "<BRIGHT><RED>red<NORMAL>.");
    EXPECT_EQ(line.PlainLine, "red.");
    EXPECT_EQ(line.SpokenLine, "red.");
    options.*wish = false;
  }
}

TEST_F(LineMakerTest, KnowsEveryColourName) {
  options.ColourTextTags = true;
  const std::pair<int, const char*> names[] = {{0, "NORMAL"},
                                               {1, "BRIGHT"},
                                               {30, "BLACK"},
                                               {31, "RED"},
                                               {32, "GREEN"},
                                               {33, "YELLOW"},
                                               {34, "BLUE"},
                                               {35, "MAGENTA"},
                                               {36, "CYAN"},
                                               {37, "WHITE"},
                                               {39, "DEFAULT"},
                                               {40, "BLACK BACKGROUND"},
                                               {41, "RED BACKGROUND"},
                                               {42, "GREEN BACKGROUND"},
                                               {43, "YELLOW BACKGROUND"},
                                               {44, "BLUE BACKGROUND"},
                                               {45, "MAGENTA BACKGROUND"},
                                               {46, "CYAN BACKGROUND"},
                                               {47, "WHITE BACKGROUND"},
                                               {49, "DEFAULT BACKGROUND"}};
  std::size_t next = 0;
  for (int number = 0; number < 100; ++number) {
    std::string expected;
    if (next < std::size(names) && names[next].first == number)
      expected = "<" + std::string(names[next++].second) + ">";
    EXPECT_EQ(Make("\x1b[" + std::to_string(number) + "mx").TaggedLine, expected + "x");
  }
  EXPECT_TRUE(faults.empty());
}

struct Tagged {
  const char* Line;
  const char* Expected;
  std::size_t Faults;
};

TEST_F(LineMakerTest, ReadsColourSequencesAsTheyCome) {
  options.ColourTextTags = true;
  const Tagged cases[] = {
      {"\x1b[mx", "x", 0},         // no number, no tag
      {"\x1b[31Mx", "<RED>x", 0},  // the letter in either case
      {"\x1b[31Kx", "x", 0},       // another command of the terminal
      {"\x1b"
       "31mx",
       "<RED>x", 0},                                  // the bracket may be missing
      {"\x1b[031;;32mx", "<RED><GREEN>x", 0},         // a leading zero, an empty piece
      {"\x1b[?31mx", "x", 0},                         // no number
      {"\x1b[ 31 mx", "<RED>x", 0},                   // blanks around a number
      {"\x1b[1\x1b[31mx", "x", 0},                    // an escape inside one does not begin anew
      {"\x1b[38;5;196mx", "x", 1},                    // 38 and 5 have no name, 196 is out of range
      {"\x1b[100;-1;99999999999;31mx", "<RED>x", 3},  // each bad number is skipped
      {"\x1b[31", "", 0},                             // cut off
      {"a\x1b[2;37;1H b", "a b", 0},                  // a place on the screen
      {"\x1b]0;title\x07x", "itle\x07x", 0},          // any letter ends a sequence
  };
  for (const Tagged& c : cases) {
    EXPECT_EQ(Make(c.Line).TaggedLine, c.Expected) << c.Line;
    EXPECT_EQ(faults.size(), c.Faults) << c.Line;
  }
}

TEST_F(LineMakerTest, LimitsTheFaultsOfALine) {
  options.ColourTextTags = true;
  std::string line = "\x1b[";
  for (int i = 0; i < 20000; ++i) line += "100;";
  EXPECT_EQ(Make(line + "mx").TaggedLine, "x");
  EXPECT_EQ(faults.size(), LineMaker::MostFaultsOfALine);
}

TEST_F(LineMakerTest, SpeaksSymbolsByMode) {
  const std::pair<int16, const char*> cases[] = {
      {0, "a*b (c) d-e, $5 -x! \xe9"},
      {1, "a*b (c) d-e, $5 -x! \xe9"},
      {2, "ab c d-e, 5  x! "},
  };
  for (const auto& [mode, spoken] : cases) {
    options.RemoveAsciiArt = mode;
    const LineVersions line = Make("a*b (c) d-e, $5 -x! \xe9");
    EXPECT_EQ(line.SpokenLine, spoken) << mode;
    EXPECT_EQ(line.PlainLine, "a*b (c) d-e, $5 -x! \xe9");
  }
}

TEST_F(LineMakerTest, WritesMarksOnlyBehindALetterInModeTwo) {
  options.RemoveAsciiArt = 2;
  EXPECT_EQ(Make("It's 5% -- ok?!").SpokenLine, "It's 5     ok? ");
  EXPECT_EQ(Make("a*-b").SpokenLine, "a-b") << "a symbol that is left out keeps the letter in mind";
  EXPECT_EQ(Make("a\x1b[0m-b").SpokenLine, "a b") << "an escape forgets it";
  EXPECT_EQ(Make("$5 $ $x").SpokenLine, "5  x") << "the test for money never passes";
}

TEST_F(LineMakerTest, DoublesSymbolsWithQuietCharacters) {
  options.QuietChars = {'*'};
  for (const int16 mode : {int16{0}, int16{1}}) {
    options.RemoveAsciiArt = mode;
    const LineVersions line = Make("a*b! c");
    EXPECT_EQ(line.SpokenLine, "a  b!! c");
    EXPECT_EQ(line.PlainLine, "a*b! c");
    EXPECT_EQ(line.TaggedLine, "a*b! c");
  }
  options.RemoveAsciiArt = 2;
  EXPECT_EQ(Make("a*b! c").SpokenLine, "a b!! c");
}

TEST_F(LineMakerTest, KeepsCharactersOfSeveralBytesWholeBesideQuietOnes) {
  options.QuietChars = {'*', 0x2022, 0x20AC, static_cast<int16>(0xD83D), static_cast<int16>(0xDE00)};
  for (const int16 mode : {int16{0}, int16{1}}) {
    options.RemoveAsciiArt = mode;
    EXPECT_EQ(Make("caf\xC3\xA9").SpokenLine, "caf\xC3\xA9\xC3\xA9");
    EXPECT_EQ(Make("a\xE2\x80\xA2").SpokenLine, "a  ");
    EXPECT_EQ(Make("a\xE2\x80\x94").SpokenLine, "a\xE2\x80\x94\xE2\x80\x94")
        << "it shares two bytes with the quiet one";
    EXPECT_EQ(Make("a\x80").SpokenLine, "a  ") << "the same character from a server that does not speak UTF-8";
    EXPECT_EQ(Make("a\xF0\x9F\x98\x80").SpokenLine, "a  ");
    EXPECT_EQ(Make("a\xF0\x9F\x98\x81").SpokenLine, "a\xF0\x9F\x98\x81\xF0\x9F\x98\x81");
  }
  EXPECT_EQ(Make("caf\xC3\xA9").PlainLine, "caf\xC3\xA9");
  options.RemoveAsciiArt = 1;
  options.AsciiPercent = 40;
  std::string drawn;
  for (int i = 0; i < 12; ++i) drawn += "\xE2\x94\x80";
  EXPECT_EQ(Make(drawn).SpokenLine, "") << "each of its bytes counts as a sign";
}

TEST_F(LineMakerTest, DoesNotSpeakWhatIsDrawn) {
  const std::string drawn = "abcde" + std::string(25, '#');
  EXPECT_EQ(Make(drawn).SpokenLine, "");
  EXPECT_EQ(Make(drawn).PlainLine, drawn);
  EXPECT_EQ(Make(std::string(19, '#')).SpokenLine, std::string(19, '#')) << "too short to judge";
  EXPECT_EQ(Make(std::string(20, '#')).SpokenLine, "");
  options.RemoveAsciiArt = 0;
  EXPECT_EQ(Make(drawn).SpokenLine, drawn);
  options.RemoveAsciiArt = 2;
  EXPECT_EQ(Make("abcde" + std::string(25, '-')).SpokenLine.size(), 30U) << "mode 2 counts no symbols";
}

TEST_F(LineMakerTest, BlanksDoNotMakeArtIntoText) {
  std::string drawn;
  for (int i = 0; i < 20; ++i) drawn += "# ";
  EXPECT_EQ(Make(drawn).SpokenLine, "") << "20 of 21 without the blanks";
  EXPECT_EQ(Make("abcdefgh" + drawn).SpokenLine, "abcdefgh" + drawn) << "20 of 29";
  options.QuietChars = {'~'};
  options.AsciiPercent = 40;
  EXPECT_EQ(Make(drawn).SpokenLine, "") << "20 of 41 without the blanks";
  EXPECT_NE(Make("abcdefghijklmno" + drawn).SpokenLine, "") << "20 of 56";
}

TEST_F(LineMakerTest, JudgesArtByMoreThanThePercentage) {
  EXPECT_FALSE(IsArt(29, 21, 0, 20, 70)) << "21 of 30 are exactly 70 percent";
  EXPECT_TRUE(IsArt(29, 22, 0, 20, 70));
  EXPECT_TRUE(IsArt(39, 22, 10, 20, 70)) << "blanks do not count";
  EXPECT_FALSE(IsArt(19, 19, 0, 20, 70));
}

TEST_F(LineMakerTest, LeavesAnEmptyLineEmpty) {
  const LineVersions line = Make("");
  EXPECT_EQ(line.PlainLine + line.TaggedLine + line.SpokenLine, "");
}

}  // namespace
}  // namespace corvid
