// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/saving.h"

#include <gtest/gtest.h>

#include "files_house.h"

namespace corvid {
namespace {

using testing_files::FilesHouse;
using testing_files::Texts;

constexpr const char* DefaultOptions =
    "#Configure CommandChar {~#}\r\n"
    "#Configure EscapeChar {~~}\r\n"
    "#Configure CommandSeparator {~;}\r\n"
    "#Configure SwitchSession {~:}\r\n"
    "#Configure PassThruChar {~>}\r\n"
    "#Configure CommentChar {~;}\r\n"
    "#Configure VariableChar {~@}\r\n"
    "#Configure EndOfLineCommentChar {~//}\r\n"
    "#Configure LineTerminator   %crlf\r\n"
    "#Configure OutputWindowPercent 90\r\n"
    "#Configure SlowWalk False\r\n"
    "#Configure PlaySoundsOutsideCorvid True\r\n"
    "#Configure SpeakIndent True\r\n"
    "#Configure ExpandCommandLineVars False\r\n"
    "#Configure Explicit False\r\n"
    "#Configure ScriptReadOnly  0 \r\n"
    "#Configure AutoLogin True\r\n"
    "#Configure OutputLog  True\r\n"
    "#Configure LogRetentionDays 30\r\n"
    "#Configure MarginBell 74\r\n"
    "#Configure LogBySession True\r\n"
    "#Configure Editor {Notepad.exe }\r\n"
    "#Configure AutoSave True\r\n"
    "#Configure ColourDisplay False\r\n"
    "#Configure ColourTextTags False\r\n"
    "#Configure BackgroundColour STANDARD\r\n"
    "#Configure Foregroundcolour STANDARD\r\n"
    "#Configure CompressOutput True\r\n"
    "#Configure RemoveAsciiArt  1 \r\n"
    "#Configure DisplayCommandsInOutput True\r\n"
    "#Configure OutputWindowSize  32\r\n"
    "#Configure EntryByLine -1 \r\n"
    "#Configure BatchSpeech  0 \r\n";

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

// --- definitions ---

void DefineThings(FilesHouse& house, OwnerId owner) {
  std::string error;
  Symbols& symbols = house.symbols;
  symbols.AddVariable("gold", "12", owner, error, "0");
  symbols.AddVariable("name", "Bob", owner, error, "");
  symbols.AddAlias("gs", "expanded", owner, "", 4, "get all;sac all", error);
  symbols.AddAlias("kk", "kick", owner, "fight|pk", 4, "kick", error);
  symbols.Addmacro(keycode::F1, ControlBit | ShiftBit, "look", owner, "", 4, "look", error);
  symbols.Addmacro(keycode::F4, 0, "flee", owner, "fight", 4, "flee", error);
  symbols.CheckAndAddClass("fight", owner);
  const auto add = [&](const std::string& pattern, const std::string& action, const std::string& group, int16 flags) {
    const auto row = static_cast<int16>(house.script.TriggerCount + 1);
    house.script.Triggers.Resize(row);
    house.script.TriggerCount = row;
    TriggerRecord& trigger = house.script.Triggers[row];
    trigger.Pattern = "x";
    trigger.SearchText = pattern;
    trigger.ActionText = action;
    trigger.Action = "not this";
    trigger.Class = group;
    trigger.Flags = flags;
    trigger.Owner = owner;
  };
  add("* hits you", "#SAY ouch", "", 0);
  add("hello*", "wave", "chat", 0x2000);
  add("red", "#BELL", "", 0x1000);
  house.script.TabWords.Resize(house.script.TabWordCount + 1);
  house.script.TabOwners.Resize(house.script.TabWordCount + 1);
  ++house.script.TabWordCount;
  house.script.TabWords[house.script.TabWordCount] = "Gandalf";
  house.script.TabOwners[house.script.TabWordCount] = owner;
  const auto row = static_cast<int16>(house.script.AbbreviationCount + 1);
  symbols.resizeCommand(windowtype::Abbreviations, row);
  house.script.AbbreviationCount = row;
  house.script.Directions[row] = "n";
  house.script.OppositeDirections[row] = "s";
  house.script.AbbreviationOwners[row] = owner;
}

std::string Saved(FilesHouse& house, int16 kind, OwnerId owner) {
  std::string text;
  house.saving.Save(kind, owner, text);
  return text;
}

TEST(Save, WritesEachTableByItsBit) {
  FilesHouse house;
  DefineThings(house, 0);
  EXPECT_EQ(Saved(house, save::Variables, 0), "#GVar gold {12} {0}\r\n#GVar name {Bob} {}\r\n");
  EXPECT_EQ(Saved(house, save::Defaults, 0), "#GVar gold {0} {0}\r\n");
  EXPECT_EQ(Saved(house, save::Aliases, 0), "#Galias {gs} {get all;sac all}\r\n#Galias {kk} {kick} {fight|pk}\r\n");
  EXPECT_EQ(Saved(house, save::Keys, 0), "#Gkey Shift-Control-F1 {look}\r\n#Gkey F4 {flee} {fight}\r\n");
  EXPECT_EQ(Saved(house, save::Triggers, 0),
            "#GTrigger {* hits you} {#SAY ouch}\r\n#GTrigger {hello*} {wave} {chat} AnyCase\r\n"
            "#GTrigger {red} {#BELL} COLOR\r\n");
  EXPECT_EQ(Saved(house, save::TabWords, 0), "#Gtab {Gandalf}\r\n");
  EXPECT_EQ(Saved(house, save::Directions, 0), "#GDirection {n} {s}\r\n");
  EXPECT_EQ(Saved(house, save::Classes, 0), "#Gclass {FIGHT} enable\r\n");
  EXPECT_EQ(Saved(house, save::Keys | save::Classes, 0), Saved(house, save::Keys, 0) + Saved(house, save::Classes, 0));
}

TEST(Save, WritesTheRowsOfOneOwnerOnly) {
  FilesHouse house;
  DefineThings(house, 3);
  house.options.CommandChar = '!';
  const int16 everything = 0xFF;
  EXPECT_EQ(Saved(house, everything, 0), "");
  EXPECT_EQ(Saved(house, everything, 4), "");
  EXPECT_EQ(Saved(house, save::Aliases, 3), "!alias {gs} {get all;sac all}\r\n!alias {kk} {kick} {fight|pk}\r\n");
  EXPECT_EQ(Saved(house, save::TabWords, 3), "!tab {Gandalf}\r\n");
}

TEST(Save, AnyValueReadsBackAsItWasAndRunsNothing) {
  const Texts values = {
      "plain", "100%", "x};#FAIL {", "{a {b} c}",   "http://host/x",  "~tilde", "@gold",    "%crlf and %1",
      "}",     "{",    "a // b } c", "one\r\n;two", "one\r\n// two}", "a;b",    "100% @ %", "caf\xC3\xA9",
      ""};
  for (const std::string& value : values) {
    SCOPED_TRACE(value);
    FilesHouse house;
    house.OpenSession(1, 3, "bob");
    std::string error;
    house.symbols.AddVariable("V", value, 3, error, value);
    ASSERT_TRUE(house.saving.SaveVariables(3));
    const std::string saved = house.File("/data/mud/bob-var.set");
    house.script.VariableValues[1] = "lost";
    house.script.CurrentOwner = 3;
    house.Load("/data/mud/bob-var.set");
    EXPECT_EQ(house.script.VariableValues[1], value);
    EXPECT_EQ(house.script.VariableDefaults[1], value);
    EXPECT_EQ(house.runner.Lines.size(), 1u);
    house.saving.SaveVariables(3);
    EXPECT_EQ(house.File("/data/mud/bob-var.set"), saved);
  }
}

TEST(Save, LeavesOrdinaryValuesAsTheyAre) {
  FilesHouse house;
  std::string error;
  house.symbols.AddVariable("A", "100% of {this}; that", 0, error, "");
  EXPECT_EQ(Saved(house, save::Variables, 0), "#GVar A {100% of {this}; that} {}\r\n");
}

// --- whole files ---

TEST(WriteAltMethod, WritesACharacterInItsOrder) {
  FilesHouse house;
  house.OpenSession(1, 3, "bob");
  DefineThings(house, 0);
  DefineThings(house, 3);
  ASSERT_TRUE(house.saving.WriteAltMethod(3, "/data/mud/bob-char.set", true));
  std::string expected = "#Char bob\r\n\r\n";
  for (const auto& [kind, owner] : std::initializer_list<std::pair<int16, OwnerId>>{{save::Variables, 0},
                                                                                    {save::Variables, 3},
                                                                                    {save::Defaults, 0},
                                                                                    {save::Defaults, 3},
                                                                                    {save::Classes, 0},
                                                                                    {save::Keys, 0},
                                                                                    {save::Aliases, 0},
                                                                                    {save::Triggers, 0},
                                                                                    {save::Keys, 3},
                                                                                    {save::Aliases, 3},
                                                                                    {save::Triggers, 3},
                                                                                    {save::TabWords, 3},
                                                                                    {save::Directions, 3}})
    expected += Saved(house, kind, owner);
  EXPECT_EQ(house.File("/data/mud/bob-char.set"), expected);
  ASSERT_TRUE(house.saving.WriteAltMethod(3, "/data/mud/bob-char.set", false));
  EXPECT_EQ(house.File("/data/mud/bob-char.set").find("Var "), std::string::npos);
}

TEST(WriteImage, WritesEverythingAndOnlySessionsWithACharacter) {
  FilesHouse house;
  house.OpenSession(2, 3, "bob");
  DefineThings(house, 0);
  DefineThings(house, 3);
  ASSERT_TRUE(house.saving.WriteImage("/data/full.set"));
  std::string expected = "#KillAll\r\n" + std::string(DefaultOptions);
  for (const int16 kind : {save::Directions, save::Variables, save::Aliases, save::Keys, save::Triggers, save::Classes})
    expected += Saved(house, kind, 0);
  expected += "#OffLine bob NoLoad\r\n\r\n";
  for (const int16 kind : {save::Variables, save::Keys, save::Aliases, save::Triggers, save::TabWords})
    expected += Saved(house, kind, 3);
  EXPECT_EQ(house.File("/data/full.set"), expected);
}

TEST(SaveVariables, NeedsASessionOfTheOwner) {
  FilesHouse house;
  house.OpenSession(1, 3, "bob");
  DefineThings(house, 3);
  EXPECT_FALSE(house.saving.SaveVariables(4));
  EXPECT_FALSE(house.saving.SaveVariables(0));
  EXPECT_TRUE(house.saving.SaveVariables(3));
  EXPECT_EQ(house.File("/data/mud/bob-var.set"), "#Var gold {12} {0}\r\n#Var name {Bob} {}\r\n");
  EXPECT_EQ(house.saving.FindChannel(3), 1);
  EXPECT_EQ(house.saving.FindChannel(4), -1);
}

TEST(SaveVariables, CannotLeaveTheFolder) {
  FilesHouse house;
  house.OpenSession(1, 3, "../../bob");
  EXPECT_TRUE(house.saving.SaveVariables(3));
  EXPECT_EQ(house.File("/data/mud/.._.._bob-var.set"), "");
}

TEST(Saving, ARefusingDiskIsToldAndLosesNothing) {
  FilesHouse house;
  house.OpenSession(1, 3, "bob");
  house.mem.files.Put("/data/mud/bob-var.set", "old");
  house.mem.files.Fail = [](const std::string& operation, const std::string&) {
    return operation == "write" ? "No space left on device" : "";
  };
  EXPECT_FALSE(house.saving.SaveVariables(3));
  EXPECT_FALSE(house.saving.WriteImage("/data/full.set"));
  EXPECT_FALSE(house.saving.WriteAltMethod(3, "/data/mud/x.set", true));
  EXPECT_FALSE(house.saving.SaveOptionsFile());
  EXPECT_EQ(house.Told("box"),
            Texts({"Error|Error creating file /data/mud/bob-var.set", "Error|Error creating file /data/full.set",
                   "Error|Error creating file /data/mud/x.set", "Error|Error creating file /data/corvid.set"}));
  EXPECT_EQ(house.File("/data/mud/bob-var.set"), "old");
}

TEST(AutoSave, SavesSimpleCharactersAndChangedScripts) {
  FilesHouse house;
  house.OpenSession(1, 3, "bob");
  house.OpenSession(2, 4, "eve");
  house.sessions.CharFlags[3] = charflag::SimpleControl;
  DefineThings(house, 3);
  house.mem.files.Put("/data/a.set", "#alias {a} {b}\r\n");
  house.mem.files.Put("/data/b.set", "#alias {c} {d}\r\n");
  house.Load("/data/a.set");
  house.Load("/data/b.set");
  house.buffers.MoveBuffers(4);
  house.state.EntryBox.SetText("#alias {a} {changed}\r\n");
  house.mem.files.Put("/data/b.set", "changed elsewhere");
  house.saving.AutoSave();
  EXPECT_TRUE(house.mem.files.FileExists("/data/mud/bob-char.set"));
  EXPECT_FALSE(house.mem.files.FileExists("/data/mud/eve-char.set"));
  EXPECT_EQ(house.File("/data/a.set"), "#alias {a} {changed}\r\n");
  EXPECT_EQ(house.File("/data/b.set"), "changed elsewhere");
  EXPECT_FALSE(house.buffers.IsModified(4));
}

TEST(AutoSave, DoesNothingWhenSwitchedOff) {
  FilesHouse house;
  house.OpenSession(1, 3, "bob");
  house.sessions.CharFlags[3] = charflag::SimpleControl;
  house.options.AutoSave = false;
  house.saving.AutoSave();
  EXPECT_FALSE(house.mem.files.FileExists("/data/mud/bob-char.set"));
}

TEST(AutoSave, LogsARefusalWithoutABoxAndGoesOn) {
  FilesHouse house;
  house.mem.files.Put("/data/a.set", "a\r\n");
  house.mem.files.Put("/data/b.set", "b\r\n");
  for (const char* name : {"/data/a.set", "/data/b.set"}) house.buffers.OpenBuffers(name, buffer::Script);
  house.buffers.SetBufferText(4, "new a");
  house.buffers.SetBufferText(5, "new b");
  house.mem.files.Fail = [](const std::string& operation, const std::string& path) {
    return operation == "write" && path == "/data/a.set" ? "read-only" : "";
  };
  house.saving.AutoSave();
  EXPECT_EQ(house.Told("unknownerror"), Texts({"AutoSave: /data/a.set: read-only"}));
  EXPECT_EQ(house.Told("box"), Texts());
  EXPECT_EQ(house.File("/data/a.set"), "a\r\n");
  EXPECT_EQ(house.File("/data/b.set"), "new b");
  EXPECT_TRUE(house.buffers.IsModified(4));
}

}  // namespace
}  // namespace corvid
