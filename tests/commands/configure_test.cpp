// SPDX-License-Identifier: GPL-3.0-or-later
#include "commands/fixture.h"

namespace corvid::test {

class ConfigureTest : public CommandTest {
 protected:
  std::string Set(const std::string& words) { return Run("#CONFIGURE " + words); }
};

TEST_F(ConfigureTest, TextsAreStoredAsTheyExpand) {
  EXPECT_EQ(Set("LineTerminator %lf"), "");
  EXPECT_EQ(options.LineTerminator, "\n");
  EXPECT_EQ(Set("SwitchSession =>"), "");
  EXPECT_EQ(options.SwitchSession, "=>");
  EXPECT_EQ(Set("Editor {vi }"), "");
  EXPECT_EQ(options.Editor, "vi ");
  EXPECT_EQ(Set("CommandSeparator |"), "");
  EXPECT_EQ(options.CommandSeparator, "|");
}

TEST_F(ConfigureTest, ASavedOddTerminatorIsReadBeforeExpansion) {
  EXPECT_EQ(Set("LineTerminator  %char(10)"), "");
  EXPECT_EQ(options.LineTerminator, "\n");
}

// No file with a line end for one of its signs could be read again.
TEST_F(ConfigureTest, ALineEndIsNoSignOfTheLanguage) {
  for (const char* keyword : {"CommandChar", "EscapeChar", "VariableChar", "CommentChar", "PassThruChar"}) {
    for (const char* sign : {"\r", "\n", "\r\n"}) {
      EXPECT_EQ(Set(std::string(keyword) + " {" + sign + "}"), "A line end can not be used as this character");
    }
    EXPECT_EQ(Set(std::string(keyword) + " %cr"), "A line end can not be used as this character");
  }
  EXPECT_EQ(options.CommandChar, '#');
  EXPECT_EQ(options.EscapeChar, '~');
  EXPECT_EQ(options.VariableChar, '@');
  EXPECT_EQ(options.CommentChar, ';');
  EXPECT_EQ(options.PassThruChar, '>');
}

TEST_F(ConfigureTest, TruthsTakeTheirWordsAndTheNumbersOfSavedFiles) {
  const std::pair<const char*, bool> words[] = {{"yes", true},  {"OFF", false},   {"On", true}, {"no", false},
                                                {"TRUE", true}, {"false", false}, {"-1", true}, {"0", false}};
  for (const auto& [word, value] : words) {
    EXPECT_EQ(Set(std::string("Explicit ") + word), "") << word;
    EXPECT_EQ(options.Explicit, value) << word;
  }
  EXPECT_EQ(Set("Explicit maybe"), "Parameter 2 must be either of the keywords True or False");
  EXPECT_EQ(Set("Explicit 1"), "Parameter 2 must be either of the keywords True or False");
}

TEST_F(ConfigureTest, EveryTruthReachesItsOwnField) {
  const std::pair<const char*, bool OptionsState::*> rows[] = {
      {"COLOURTEXTTAGS", &OptionsState::ColourTextTags},
      {"SLOWWALK", &OptionsState::SlowWalk},
      {"SPEAKINDENT", &OptionsState::SpeakIndent},
      {"EXPLICIT", &OptionsState::Explicit},
      {"AUTOSAVE", &OptionsState::AutoSave},
      {"EXPANDCOMMANDLINEVARS", &OptionsState::ExpandCommandLineVars},
      {"SCRIPTREADONLY", &OptionsState::ScriptReadOnly},
      {"AUTOLOGIN", &OptionsState::AutoLogin},
      {"OUTPUTLOG", &OptionsState::OutputLog},
      {"COMPRESSOUTPUT", &OptionsState::CompressOutput},
      {"PLAYSOUNDSOUTSIDECORVID", &OptionsState::PlaySoundsOutsideCorvid},
      {"DISPLAYCOMMANDSINOUTPUT", &OptionsState::DisplayCommandsInOutput},
      {"LOGBYSESSION", &OptionsState::LogBySession},
      {"ECHOMOVEBYWORD", &OptionsState::EchoMoveByWord},
      {"ENTRYBYLINE", &OptionsState::EntryByLine},
      {"BATCHSPEECH", &OptionsState::BatchSpeech},
      {"COLOURDISPLAY", &OptionsState::ColourDisplay},
  };
  for (const auto& [keyword, field] : rows) {
    const bool before = options.*field;
    EXPECT_EQ(Set(std::string(keyword) + (before ? " off" : " on")), "") << keyword;
    EXPECT_NE(options.*field, before) << keyword;
  }
}

TEST_F(ConfigureTest, TheKeywordIsWholeAndInAnyCase) {
  EXPECT_EQ(Run("#CONF explicit yes"), "");
  EXPECT_TRUE(options.Explicit);
  EXPECT_EQ(Set("EXPL no"), "Bad configuration parameter");
  EXPECT_EQ(Effects(), (Lines{"speech 1 error", "beep"}));
}

TEST_F(ConfigureTest, KeywordAndValueAreExpanded) {
  AddVariable("k", "Explicit");
  AddVariable("v", "on");
  EXPECT_EQ(Set("@k @v"), "");
  EXPECT_TRUE(options.Explicit);
}

TEST_F(ConfigureTest, NumbersHaveTheirLimits) {
  EXPECT_EQ(Set("OutputWindowPercent 90"), "");
  EXPECT_EQ(memory.effects.Of("resize"), (Lines{"90"}));
  EXPECT_EQ(Set("OutputWindowPercent 91"), "OutputHeightPercent must be greater than 9 and less than 89");
  EXPECT_EQ(Set("OutputWindowPercent 9"), "OutputHeightPercent must be greater than 9 and less than 89");
  EXPECT_EQ(Set("OutputWindowPercent x"), "OutputHeightPercent must be numeric");
  EXPECT_EQ(options.OutputWindowPercent, 90);
  EXPECT_EQ(Set("LogRetentionDays x"), "LogRetentionDays must be numeric");
  EXPECT_EQ(Set("LogRetentionDays 7"), "");
  EXPECT_EQ(options.LogRetentionDays, 7);
  EXPECT_EQ(Set("MarginBell x"), "MarginBell must be numeric");
  EXPECT_EQ(Set("MarginBell 60"), "");
  EXPECT_EQ(options.MarginBell, 60);
  EXPECT_TRUE(Set("MarginBell 70000").starts_with("Bad parsing error - "));
  EXPECT_EQ(options.MarginBell, 60);
}

TEST_F(ConfigureTest, TheWindowSizeIsThirtyWithoutColours) {
  EXPECT_EQ(Set("OutputWindowSize 500"), "");
  EXPECT_EQ(options.OutputWindowSize, 30);
  EXPECT_EQ(Set("ColourDisplay on"), "");
  EXPECT_EQ(Set("OutputWindowSize 500"), "");
  EXPECT_EQ(options.OutputWindowSize, 500);
  EXPECT_EQ(Set("OutputWindowSize 4"), "OutputWindowSize must be greater than 4 and less than 2000000");
  EXPECT_EQ(Set("OutputWindowSize 2000001"), "OutputWindowSize must be greater than 4 and less than 2000000");
  EXPECT_EQ(Set("OutputWindowSize x"), "OutputWindowSize must be numeric");
}

TEST_F(ConfigureTest, ColourDisplayChangesTheFamilyWithItsText) {
  MakeSession(0, "bob", true);
  Run("look");
  EXPECT_EQ(Set("ColourDisplay on"), "");
  EXPECT_TRUE(sessions.RichFamily);
  EXPECT_EQ(sessions.OutputWindow(0).Text(), "look\r\n");
  EXPECT_EQ(Set("ColourDisplay off"), "");
  EXPECT_FALSE(sessions.RichFamily);
}

TEST_F(ConfigureTest, ADisplayThatStaysIsNotTouched) {
  options.OutputWindowSize = 500;
  EXPECT_EQ(Set("ColourDisplay off"), "");
  EXPECT_EQ(options.OutputWindowSize, 500);
}

TEST_F(ConfigureTest, ColoursHaveNames) {
  EXPECT_EQ(Set("BackgroundColour blue"), "");
  EXPECT_EQ(options.BackgroundColour, "BLUE");
  EXPECT_EQ(sessions.OutputWindow(0).BackColor(), 0xFF0000);
  EXPECT_EQ(buffers.EntryBox.BackColor(), 0xFF0000);
  EXPECT_EQ(script.ColourValues[30], 0xFF0000);
  EXPECT_EQ(Set("ForegroundColour { Yellow }"), "");
  EXPECT_EQ(options.ForegroundColour, "YELLOW");
  EXPECT_EQ(sessions.OutputWindow(0).ForeColor(), 0xFFFF);
  EXPECT_EQ(buffers.EntryBox.ForeColor(), 0xFFFF);
  EXPECT_EQ(script.ColourValues[37], 0xFFFF);
  EXPECT_EQ(script.ColourValues[39], 0xFFFF);
  EXPECT_EQ(Set("ForegroundColour standard"), "");
  EXPECT_EQ(sessions.OutputWindow(0).ForeColor(), -1);
  for (const char* keyword : {"BackgroundColour", "ForegroundColour"}) {
    EXPECT_EQ(Set(std::string(keyword) + " pink"),
              "Valid colour names are: Standard, Black, White, Blue, Red, green, yellow, cyan, magenta");
  }
  EXPECT_EQ(options.BackgroundColour, "BLUE");
}

TEST_F(ConfigureTest, ColoursHoldForEverySessionAndBothKindsOfWindow) {
  MakeSession(1, "bob", false);
  Set("BackgroundColour blue");
  Set("ForegroundColour cyan");
  sessionRoutines.ResizeConnections(2);  // opened afterwards
  for (int16 i = 0; i <= 2; ++i) {
    SCOPED_TRACE(i);
    EXPECT_EQ(sessions.editViewportT[i]->BackColor(), 0xFF0000);
    EXPECT_EQ(sessions.EditViewPortR[i]->BackColor(), 0xFF0000);
    EXPECT_EQ(sessions.editViewportT[i]->ForeColor(), 0xFFFF00);
    EXPECT_EQ(sessions.EditViewPortR[i]->SelColor(), 0xFFFF00);
  }
  EXPECT_EQ(script.BaseColours[39], 0xFFFF00);
}

TEST_F(ConfigureTest, AFailedColourOrFolderChangesNothing) {
  Set("BackgroundColour blue");
  Set("BackgroundColour pink");
  EXPECT_EQ(sessions.OutputWindow(0).BackColor(), 0xFF0000);
  Set("UserPath /none");
  EXPECT_EQ(options.UserDataFolder, "/data/");
  Set("RemoveAsciiArt 3");
  EXPECT_EQ(options.RemoveAsciiArt, 1);
}

TEST_F(ConfigureTest, ColourNamesAreTrimmedForTheForegroundAlone) {
  EXPECT_EQ(Set("BackgroundColour { Yellow }"),
            "Valid colour names are: Standard, Black, White, Blue, Red, green, yellow, cyan, magenta");
  for (const char* name : {"black", "red", "Green", "YELLOW", "blue", "Magenta", "cyan", "white", "Standard"})
    EXPECT_EQ(Set(std::string("BackgroundColour ") + name), "") << name;
}

TEST_F(ConfigureTest, InColourModeTheForegroundIsTheColourOfNewText) {
  Set("ColourDisplay on");
  EXPECT_EQ(Set("ForegroundColour cyan"), "");
  EXPECT_EQ(sessions.OutputWindow(0).SelColor(), 0xFFFF00);
}

TEST_F(ConfigureTest, FoldersMustExist) {
  memory.files.CreateFolder("/new");
  EXPECT_EQ(Set("UserPath /none"), "The folder \"/none\" does not exist. User Data folder remains \"/data/");
  EXPECT_EQ(Set("SoundPath /none"), "The folder \"/none\" does not exist. Sound path folder remains \"/data/Sounds/");
  EXPECT_EQ(Set("LogsPath /none"), "The folder \"/none\" does not exist. Log file path folder remains \"/data/logs/");
  EXPECT_EQ(Set("UserPath /new"), "");
  EXPECT_EQ(Set("SoundPath /new"), "");
  EXPECT_EQ(Set("LogsPath /new/"), "");
  EXPECT_EQ(options.UserDataFolder, "/new/");
  EXPECT_EQ(options.SoundsFolder, "/new/");
  EXPECT_EQ(options.LogsFolder, "/new/");
  EXPECT_EQ(script.SystemValues[sysvar::HOMEFOLDER], "/new/");
  EXPECT_EQ(script.SystemValues[sysvar::SOUNDSFOLDER], "/new/");
  EXPECT_EQ(script.SystemValues[sysvar::LOGSFOLDER], "/new/");
}

TEST_F(ConfigureTest, AnOptionsFileCannotMoveTheFolders) {
  memory.files.CreateFolder("/new");
  options.LoadingOptions = true;
  EXPECT_EQ(Set("UserPath /new"), "");
  EXPECT_EQ(options.UserDataFolder, "/data/");
  EXPECT_TRUE(options.FolderChangeAttempted);
}

TEST_F(ConfigureTest, AsciiArtHasThreeLevels) {
  EXPECT_EQ(Set("RemoveAsciiArt 2"), "");
  EXPECT_EQ(options.RemoveAsciiArt, 2);
  EXPECT_EQ(Set("RemoveAsciiGraphics true"), "");
  EXPECT_EQ(options.RemoveAsciiArt, 1);
  EXPECT_EQ(Set("RemoveAsciiArt False"), "");
  EXPECT_EQ(options.RemoveAsciiArt, 0);
  EXPECT_EQ(Set("RemoveAsciiArt 3"), "Remove Ascii Art must be 0, 1, or 2");
}

TEST_F(ConfigureTest, SpecialCharactersWorkAtOnce) {
  EXPECT_EQ(Run("#CONFIGURE CommandChar !;!CONFIGURE PassThruChar ="), "");
  EXPECT_EQ(options.CommandChar, '!');
  EXPECT_EQ(options.PassThruChar, '=');
  EXPECT_EQ(Run("!CONFIGURE EscapeChar ^"), "");
  EXPECT_EQ(options.EscapeChar, '^');
  EXPECT_EQ(Run("!CONFIGURE VariableChar &"), "");
  EXPECT_EQ(options.VariableChar, '&');
  EXPECT_EQ(Run("!CONFIGURE CommentChar *x"), "");
  EXPECT_EQ(options.CommentChar, '*');
  EXPECT_EQ(Run("!CONFIGURE EndOfLineCommentChar abc"), "");
  EXPECT_EQ(options.EndOfLineCommentChar, "ab");
  EXPECT_EQ(Run("!CONFIGURE EndOfLineCommentChar a"), "");
  EXPECT_EQ(options.EndOfLineCommentChar, "a ");
}

TEST_F(ConfigureTest, AnEmptyCharacterIsABlank) {
  EXPECT_EQ(Set("CommentChar &nothing"), "");
  AddVariable("none", "");
  EXPECT_EQ(Set("CommentChar @none"), "");
  EXPECT_EQ(options.CommentChar, ' ');
}

TEST_F(ConfigureTest, CheckModeSetsNothing) {
  EXPECT_EQ(Run("#CONFIGURE nonsense x", option::CheckOnly), "");
  EXPECT_EQ(Run("#CONFIGURE Explicit on", option::CheckOnly), "");
  EXPECT_FALSE(options.Explicit);
}

}  // namespace corvid::test
