// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/option_rows.h"

#include <gtest/gtest.h>

#include "core/fault.h"

namespace corvid {
namespace {

struct Expected {
  const char* Keyword;
  OptionType Type;
  const char* Default;  // as text; truths as -1 and 0
};

using enum OptionType;
constexpr Expected AllOptions[] = {
    {"LINETERMINATOR", Text, "\r\n"},
    {"COMMANDSEPARATOR", Text, ";"},
    {"SWITCHSESSION", Text, ":"},
    {"COLOURDISPLAY", Truth, "0"},
    {"COLOURTEXTTAGS", Truth, "0"},
    {"BACKGROUNDCOLOUR", Colour, "STANDARD"},
    {"FOREGROUNDCOLOUR", Colour, "STANDARD"},
    {"SLOWWALK", Truth, "0"},
    {"SPEAKINDENT", Truth, "-1"},
    {"EXPLICIT", Truth, "0"},
    {"AUTOSAVE", Truth, "-1"},
    {"EXPANDCOMMANDLINEVARS", Truth, "0"},
    {"SCRIPTREADONLY", Truth, "0"},
    {"AUTOLOGIN", Truth, "-1"},
    {"OUTPUTLOG", Truth, "-1"},
    {"LOGRETENTIONDAYS", Number, "30"},
    {"OUTPUTWINDOWPERCENT", Number, "90"},
    {"OUTPUTWINDOWSIZE", Number, "32"},
    {"MARGINBELL", Number, "74"},
    {"EDITOR", Text, "Notepad.exe "},
    {"USERPATH", Folder, ""},
    {"SOUNDPATH", Folder, ""},
    {"LOGSPATH", Folder, ""},
    {"COMPRESSOUTPUT", Truth, "-1"},
    {"PLAYSOUNDSOUTSIDECORVID", Truth, "-1"},
    {"REMOVEASCIIGRAPHICS", ArtLevel, "1"},
    {"REMOVEASCIIART", ArtLevel, "1"},
    {"DISPLAYCOMMANDSINOUTPUT", Truth, "-1"},
    {"LOGBYSESSION", Truth, "-1"},
    {"ECHOMOVEBYWORD", Truth, "-1"},
    {"ENTRYBYLINE", Truth, "-1"},
    {"BATCHSPEECH", Truth, "0"},
    {"COMMANDCHAR", Character, "#"},
    {"PASSTHRUCHAR", Character, ">"},
    {"COMMENTCHAR", Character, ";"},
    {"VARIABLECHAR", Character, "@"},
    {"ENDOFLINECOMMENTCHAR", CharacterPair, "//"},
    {"ESCAPECHAR", Character, "~"},
};

std::string AsText(const OptionRow& row, const OptionsState& options) {
  const OptionValue value = OptionTable::Read(row, options);
  const bool number = row.Type == Truth || row.Type == Number || row.Type == ArtLevel;
  return number ? std::to_string(value.Number) : value.Text;
}

TEST(OptionRows, StandInTheOrderOfTheTestsWithTheirDefaults) {
  const auto rows = OptionTable::Rows();
  ASSERT_EQ(rows.size(), std::size(AllOptions));
  const OptionsState fresh;
  OptionsState reset;
  reset.LineTerminator = "x";
  reset.EchoMoveByWord = false;
  reset.MarginBell = 1;
  OptionTable::SetDefaults(reset);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    SCOPED_TRACE(AllOptions[i].Keyword);
    EXPECT_EQ(rows[i].Keyword, AllOptions[i].Keyword);
    EXPECT_EQ(rows[i].Type, AllOptions[i].Type);
    EXPECT_EQ(AsText(rows[i], fresh), AllOptions[i].Default);
    EXPECT_EQ(AsText(rows[i], reset), AllOptions[i].Default);
  }
}

TEST(OptionRows, AreFoundInAnyCaseButOnlyInFull) {
  EXPECT_NE(OptionTable::Find("explicit"), nullptr);
  EXPECT_EQ(OptionTable::Find("EXPL"), nullptr);
  EXPECT_EQ(OptionTable::Find("EXPLICITLY"), nullptr);
  EXPECT_EQ(OptionTable::Find(""), nullptr);
}

struct Case {
  const char* Keyword;
  std::string Given;
  std::string Outcome;  // stored value as text, or the message behind "!! "
};

const std::string NoTruth = "!! Parameter 2 must be either of the keywords True or False";
const std::string NoPercent = "!! OutputHeightPercent must be greater than 9 and less than 89";
const std::string NoSize = "!! OutputWindowSize must be greater than 4 and less than 2000000";
const std::string NoArt = "!! Remove Ascii Art must be 0, 1, or 2";

const Case Values[] = {
    {"SLOWWALK", "true", "-1"},
    {"SLOWWALK", "On", "-1"},
    {"SLOWWALK", "YES", "-1"},
    {"SLOWWALK", "-1", "-1"},
    {"SPEAKINDENT", "false", "0"},
    {"SPEAKINDENT", "Off", "0"},
    {"SPEAKINDENT", "no", "0"},
    {"SPEAKINDENT", "0", "0"},
    {"SPEAKINDENT", "1", NoTruth},
    {"SPEAKINDENT", "", NoTruth},
    {"SPEAKINDENT", "tru", NoTruth},
    {"LOGRETENTIONDAYS", "-5", "-5"},
    {"LOGRETENTIONDAYS", "100000", "100000"},
    {"LOGRETENTIONDAYS", "x", "!! LogRetentionDays must be numeric"},
    {"OUTPUTWINDOWPERCENT", "90", "90"},
    {"OUTPUTWINDOWPERCENT", "10", "10"},
    {"OUTPUTWINDOWPERCENT", "89.5", "90"},  // halves are rounded to even
    {"OUTPUTWINDOWPERCENT", "91", NoPercent},
    {"OUTPUTWINDOWPERCENT", "9", NoPercent},
    {"OUTPUTWINDOWPERCENT", "90.1", NoPercent},
    {"OUTPUTWINDOWPERCENT", "ten", "!! OutputHeightPercent must be numeric"},
    {"OUTPUTWINDOWSIZE", "4", NoSize},
    {"OUTPUTWINDOWSIZE", "2000001", NoSize},
    {"OUTPUTWINDOWSIZE", "big", "!! OutputWindowSize must be numeric"},
    {"MARGINBELL", "0", "0"},
    {"MARGINBELL", "-1", "-1"},
    {"MARGINBELL", "far", "!! MarginBell must be numeric"},
    {"REMOVEASCIIART", "true", "1"},
    {"REMOVEASCIIART", "False", "0"},
    {"REMOVEASCIIART", " 2 ", "2"},
    {"REMOVEASCIIGRAPHICS", "0", "0"},
    {"REMOVEASCIIART", "12", "12"},  // kept: a piece of "012"
    {"REMOVEASCIIART", "3", NoArt},
    {"REMOVEASCIIART", "21", NoArt},
    {"REMOVEASCIIGRAPHICS", "on", NoArt},
    {"COMMANDCHAR", "!?", "!"},
    {"COMMANDCHAR", "", " "},
    {"ENDOFLINECOMMENTCHAR", "-", "- "},
    {"ENDOFLINECOMMENTCHAR", "", "  "},
    {"ENDOFLINECOMMENTCHAR", "--->", "--"},
    {"COMMANDSEPARATOR", "&&", "&&"},
    {"LINETERMINATOR", "\n", "\n"},
    {"EDITOR", "nano ", "nano "},
    {"FOREGROUNDCOLOUR", " red ", "RED"},
    {"BACKGROUNDCOLOUR", " red", " RED"},  // only the foreground is trimmed
};

TEST(OptionRows, TestAndStoreEachKindOfValue) {
  for (const Case& c : Values) {
    SCOPED_TRACE(std::string(c.Keyword) + " " + c.Given);
    const OptionRow* row = OptionTable::Find(c.Keyword);
    ASSERT_NE(row, nullptr);
    OptionsState options;
    OptionValue value;
    const std::string error = OptionTable::Test(*row, c.Given, value);
    if (error.empty()) {
      OptionTable::Store(*row, value, options);
      EXPECT_EQ(AsText(*row, options), c.Outcome);
    } else {
      EXPECT_EQ("!! " + error, c.Outcome);
    }
  }
}

TEST(OptionRows, RefuseANumberTooLargeForItsOption) {
  OptionValue value;
  EXPECT_THROW(OptionTable::Test(*OptionTable::Find("MARGINBELL"), "40000", value), Fault);
  EXPECT_THROW(OptionTable::Test(*OptionTable::Find("LOGRETENTIONDAYS"), "3000000000", value), Fault);
}

TEST(OptionRows, StoreThirtyForThePlainWindowsSize) {
  const OptionRow& row = *OptionTable::Find("OutputWindowSize");
  OptionsState options;
  OptionValue value;
  ASSERT_EQ(OptionTable::Test(row, "500", value), "");
  OptionTable::Store(row, value, options);
  EXPECT_EQ(options.OutputWindowSize, 30);
  options.ColourDisplay = true;
  OptionTable::Store(row, value, options);
  EXPECT_EQ(options.OutputWindowSize, 500);
}

TEST(OptionRows, TellWhichFolderIsMissing) {
  EXPECT_EQ(OptionTable::Find("USERPATH")->BadType, "\" does not exist. User Data folder remains \"");
  EXPECT_EQ(OptionTable::Find("SOUNDPATH")->BadType, "\" does not exist. Sound path folder remains \"");
  EXPECT_EQ(OptionTable::Find("LOGSPATH")->BadType, "\" does not exist. Log file path folder remains \"");
  EXPECT_EQ(OptionTable::Find("BACKGROUNDCOLOUR")->BadType,
            "Valid colour names are: Standard, Black, White, Blue, Red, green, yellow, cyan, magenta");
}

TEST(OptionRows, ReadARawTerminator) {
  struct Raw {
    const char* Given;
    bool Taken;
    std::string Terminator;
  };
  const Raw raws[] = {{"%char(10)", true, "\n"},
                      {" %CHAR(255) ", true, "\xFF"},
                      {"%char(0)", true, std::string(1, '\0')},
                      {"%char(33)%char(64)", true, "!@"},
                      {"%char()", true, ""},
                      {"%char(256)", false, ""},
                      {"%char(1", false, ""},
                      {"%char(x)", false, ""},
                      {"%char(10)x", false, ""},
                      {"%crlf", true, "\r\n"},
                      {" %CR", true, "\r"},
                      {"%lf ", true, "\n"},
                      {"%crlfx", false, ""},
                      {"", false, ""}};
  for (const Raw& raw : raws) {
    SCOPED_TRACE(raw.Given);
    std::string terminator = "untouched";
    EXPECT_EQ(OptionTable::ReadRawTerminator(raw.Given, terminator), raw.Taken);
    EXPECT_EQ(terminator, raw.Taken ? raw.Terminator : "untouched");
  }
}

}  // namespace
}  // namespace corvid
