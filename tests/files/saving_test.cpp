// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/saving.h"

#include <gtest/gtest.h>

#include "default_options.h"
#include "files_house.h"

namespace corvid {
namespace {

using testing_files::DefaultOptions;
using testing_files::FilesHouse;
using testing_files::Texts;

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
