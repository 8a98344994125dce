// SPDX-License-Identifier: GPL-3.0-or-later
// The file of the options: what is written, and what is read from it.
#include <gtest/gtest.h>

#include "default_options.h"
#include "files/saving.h"
#include "files_house.h"

namespace corvid {
namespace {

using testing_files::DefaultOptions;
using testing_files::FilesHouse;
using testing_files::Texts;

std::string Options(FilesHouse& house) {
  std::string text;
  house.saving.SaveOptions(text);
  return text;
}

TEST(SaveOptions, WritesEveryLineInItsOrder) {
  FilesHouse house;
  EXPECT_EQ(Options(house), DefaultOptions);
}

TEST(SaveOptions, WritesEachTerminatorByItsName) {
  FilesHouse house;
  const std::pair<std::string, std::string> forms[] = {{"\r", "%cr"},          {"\r\n", "%crlf"},
                                                       {"\n", "%lf"},          {"!", "%char(33)"},
                                                       {"\xFF", "%char(255)"}, {"!@", "%char(33)%char(64)"},
                                                       {"", "%char()"}};
  for (const auto& [terminator, words] : forms) {
    house.options.LineTerminator = terminator;
    EXPECT_NE(Options(house).find("#Configure LineTerminator   " + words + "\r\n"), std::string::npos) << words;
  }
}

// Every option away from its default, with characters that change how the file itself is read.
void ChangeEverything(OptionsState& options) {
  options.CommandChar = '!';
  options.EscapeChar = '^';
  options.CommandSeparator = "&&";
  options.SwitchSession = "->";
  options.PassThruChar = '<';
  options.CommentChar = '\'';
  options.VariableChar = '$';
  options.EndOfLineCommentChar = "--";
  options.LineTerminator = "\x01";
  options.OutputWindowPercent = 50;
  options.SlowWalk = true;
  options.PlaySoundsOutsideCorvid = false;
  options.SpeakIndent = false;
  options.ExpandCommandLineVars = true;
  options.Explicit = true;
  options.ScriptReadOnly = true;
  options.AutoLogin = false;
  options.OutputLog = false;
  options.LogRetentionDays = -3;
  options.MarginBell = 0;
  options.LogBySession = false;
  options.Editor = "/usr/bin/my editor --wait $HOME {x";
  options.AutoSave = false;
  options.ColourDisplay = true;
  options.ColourTextTags = true;
  options.BackgroundColour = "BLUE";
  options.ForegroundColour = "WHITE";
  options.CompressOutput = false;
  options.RemoveAsciiArt = 2;
  options.DisplayCommandsInOutput = false;
  options.OutputWindowSize = 500;
  options.EntryByLine = false;
  options.BatchSpeech = true;
}

TEST(SaveOptions, RoundTripGivesTheSameBytes) {
  FilesHouse house;
  ChangeEverything(house.options);
  const std::string saved = Options(house);
  ASSERT_TRUE(house.saving.SaveOptionsFile());
  EXPECT_EQ(house.File("/data/corvid.set"), saved);
  house.saving.InitializeConfigs();
  EXPECT_EQ(Options(house), saved);
  EXPECT_EQ(house.options.LineTerminator, "\x01");
  EXPECT_EQ(house.options.Editor, "/usr/bin/my editor --wait $HOME {x");
  EXPECT_EQ(house.options.CommandSeparator, "&&");
  EXPECT_EQ(house.Told("error"), Texts());
}

TEST(SaveOptions, ACommandCharacterThatWasTheCommentCharacterReadsBack) {
  FilesHouse house;
  house.options.CommandChar = ';';
  house.options.CommentChar = '*';
  house.options.CommandSeparator = "&";
  const std::string saved = Options(house);
  house.saving.SaveOptionsFile();
  house.saving.InitializeConfigs();
  // The plain windows hold thirty, so that size is what a load with colours off leaves.
  EXPECT_EQ(Options(house), Replace(saved, "OutputWindowSize  32", "OutputWindowSize  30"));
  EXPECT_EQ(house.options.CommandChar, ';');
}

TEST(InitializeConfigs, SetsDefaultsWithoutAFile) {
  FilesHouse house;
  ChangeEverything(house.options);
  house.options.TriggerColourNeeded = true;
  house.options.AsciiMinLength = 1;
  house.options.AsciiPercent = 1;
  house.saving.InitializeConfigs();
  EXPECT_EQ(Options(house), DefaultOptions);
  EXPECT_FALSE(house.options.TriggerColourNeeded);
  EXPECT_EQ(house.options.AsciiMinLength, 20);
  EXPECT_EQ(house.options.AsciiPercent, 70);
}

TEST(InitializeConfigs, KeepsNoBufferAndBelongsToNone) {
  FilesHouse house;
  house.mem.files.Put("/data/corvid.set", "#Configure MarginBell 60\r\n");
  house.script.DefiningBuffer = 3;
  house.saving.InitializeConfigs();
  EXPECT_EQ(house.options.MarginBell, 60);
  EXPECT_EQ(house.buffers.GetBufferNumber("/data/corvid.set"), 0);
  EXPECT_EQ(house.state.BufferFlags[4], 0);
  EXPECT_EQ(house.script.DefiningBuffer, 3);
  EXPECT_FALSE(house.options.LoadingOptions);
}

TEST(InitializeConfigs, TellsFolderChangesAndRewritesTheFile) {
  FilesHouse house;
  house.mem.files.Put("/data/corvid.set", "#Configure UserPath {/elsewhere/}\r\n#Configure MarginBell 60\r\n");
  house.saving.InitializeConfigs();
  EXPECT_EQ(house.Told("box"),
            Texts({"Note|Attempt to change the UserPath, SoundsPath, or LogsPath values in CORVID.SET.  These commands "
                   "have been removed from the Set file. "}));
  EXPECT_EQ(house.options.UserDataFolder, "/data/");
  const std::string file = house.File("/data/corvid.set");
  EXPECT_EQ(file, Replace(DefaultOptions, "MarginBell 74", "MarginBell 60"));
  EXPECT_FALSE(house.options.FolderChangeAttempted);
}

TEST(InitializeConfigs, GoesOnWhenTheFileCannotBeRead) {
  FilesHouse house;
  house.mem.files.Put("/data/corvid.set", "#Configure MarginBell 60\r\n");
  house.mem.files.Fail = [](const std::string& operation, const std::string&) {
    return operation == "read" ? "bad sector" : "";
  };
  house.saving.InitializeConfigs();
  EXPECT_EQ(house.options.MarginBell, 74);
  EXPECT_EQ(house.Told("unknownerror"), Texts({"Loadset: /data/corvid.set: bad sector"}));
  EXPECT_FALSE(house.options.LoadingOptions);
}

}  // namespace
}  // namespace corvid
