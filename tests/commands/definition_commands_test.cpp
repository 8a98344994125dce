// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/keys.h"
#include "definition_fixture.h"

namespace corvid::test {

TEST_F(DefinitionTest, AliasKeepsBodyOriginalBufferAndOwner) {
  MakeSession(0, "bob", true);
  const OwnerId owner = script.SocketOwner[0];
  script.DefiningBuffer = 3;
  EXPECT_EQ(Run("#ALIAS k {kill %1;say @x} war"), "");
  const int16 row = AliasRow("K", owner);
  ASSERT_NE(row, 0);
  EXPECT_EQ(script.AliasNames[row], "k");
  EXPECT_EQ(script.AliasValues[row], "kill %1;say @x");
  EXPECT_EQ(script.AliasOriginals[row], "kill %1;say @x");
  EXPECT_EQ(script.AliasClasses[row], "war");
  EXPECT_EQ(script.AliasBuffers[row], 3);
  EXPECT_EQ(script.AliasOwners[row], owner);
  EXPECT_TRUE(sessions.ScriptChanged[0]);
}

TEST_F(DefinitionTest, ThePrefixMakesADefinitionForEverybody) {
  MakeSession(0, "bob", true);
  EXPECT_EQ(Run("#GALIAS k kill"), "");
  EXPECT_EQ(script.AliasOwners[AliasRow("k")], 0);
  EXPECT_EQ(Run("#GKEY F5 look;#GVAR x 5"), "");
  EXPECT_EQ(KeyBody(keycode::F1 + 4, 0), "look");
  EXPECT_EQ(Variable("x"), "5");
  EXPECT_EQ(script.VariableOwners[1], 0);
}

TEST_F(DefinitionTest, AnAliasReplacesWhateverHadItsName) {
  Run("#ALIAS k one a");
  Run("#ALIAS K two b");
  EXPECT_EQ(script.AliasCount, 1);
  EXPECT_EQ(AliasBody("k"), "two");
  EXPECT_EQ(AliasClass("k"), "b");
}

TEST_F(DefinitionTest, TheNameIsExpandedAndTheBodyOnlyOnRequest) {
  AddVariable("n", "kk");
  AddVariable("y", "5");
  EXPECT_EQ(Run("#ALIAS @n {say @y}"), "");
  EXPECT_EQ(AliasBody("kk"), "say @y");
  Run("#ALIAS e {%EXPAND(say @y)}");
  EXPECT_EQ(AliasBody("e"), "say 5");
  EXPECT_EQ(script.AliasOriginals[AliasRow("e")], "%EXPAND(say @y)");
  Run("#ALIAS e {%expand @y}");
  EXPECT_EQ(AliasBody("e"), "%expand 5");
  Run("#ALIAS e {  %expand @y}");
  EXPECT_EQ(AliasBody("e"), "  %expand 5");
  Run("#ALIAS e {   %expand @y}");
  EXPECT_EQ(AliasBody("e"), "   %expand @y");
  Run("#ALIAS e {say %expand @y}");
  EXPECT_EQ(AliasBody("e"), "say %expand @y");
}

TEST_F(DefinitionTest, DefinitionsJoinTheCurrentClass) {
  script.CurrentClass[0] = "B";
  Run("#ALIAS x {#say y} {a}");
  EXPECT_EQ(AliasClass("x"), "B|a");
  Run("#ALIAS x {#say y}");
  EXPECT_EQ(AliasClass("x"), "B");
  Run("#ALIAS x {#say y} {c|b|a}");
  EXPECT_EQ(AliasClass("x"), "c|b|a");
  script.CurrentClass[0] = "";
  Run("#ALIAS x {#say y} {a}");
  EXPECT_EQ(AliasClass("x"), "a");
}

TEST_F(DefinitionTest, TheClassOfAnAliasIsTakenAsItStands) {
  AddVariable("c", "war");
  Run("#ALIAS a x @c");
  EXPECT_EQ(AliasClass("a"), "@c");
}

TEST_F(DefinitionTest, WhatCannotBeExpandedDefinesNothing) {
  for (const char* line : {"#ALIAS %NOFUN(1) x", "#ALIAS a {%EXPAND(~%NOFUN~(1~))}", "#KEY F5 {%EXPAND(~%NOFUN~(1~))}",
                           "#KEY F5 x %NOFUN(1)", "#VAR x %NOFUN(1)", "#ADDITEM x %NOFUN(1)", "#TAB %NOFUN(1)"})
    EXPECT_EQ(Run(line), "Unknown function NOFUN") << line;
  EXPECT_EQ(script.AliasCount + script.MacroCount + script.VariableCount + script.TabWordCount, 0);
  EXPECT_FALSE(sessions.ScriptChanged[0]);
}

TEST_F(DefinitionTest, KeysAndTabWordsAreSomethingToSave) {
  EXPECT_EQ(Run("#KEY F5 x"), "");
  EXPECT_TRUE(sessions.ScriptChanged[0]);
  sessions.ScriptChanged[0] = false;
  EXPECT_EQ(Run("#TAB rat"), "");
  EXPECT_TRUE(sessions.ScriptChanged[0]);
  sessions.ScriptChanged[0] = false;
  EXPECT_EQ(Run("#TAB RAT"), "");
  EXPECT_FALSE(sessions.ScriptChanged[0]) << "the word was there";
}

TEST_F(DefinitionTest, CheckModeLooksAtTheBodyOnly) {
  EXPECT_EQ(Run("#ALIAS x {#xyz}", option::CheckOnly), "Bad command #xyz");
  EXPECT_EQ(Run("#KEY nokey {#xyz}", option::CheckOnly), "Bad command #xyz");
  EXPECT_EQ(Run("#ALIAS x {#quit;look}", option::CheckOnly), "");
  EXPECT_EQ(script.AliasCount + script.MacroCount, 0);
  EXPECT_EQ(Of("quit"), Lines{});
}

TEST_F(DefinitionTest, CheckedBodiesOfOneLineAddUp) {
  std::string line = "#ALIAS a {x}";
  for (int i = 1; i < 11; ++i) line += ";#ALIAS a {x}";
  EXPECT_EQ(Run(line, option::CheckOnly), "");
  EXPECT_EQ(Run(line + ";#ALIAS a {x}", option::CheckOnly), "recursive check - probable infinite loop detected");
}

TEST_F(DefinitionTest, AnAliasMayRedefineAndRemoveItself) {
  MakeSession(0, "bob", true);
  Run("#ALIAS once {#ALIAS once {say second};say first}");
  EXPECT_EQ(Run("once"), "");
  EXPECT_EQ(Run("once"), "");
  EXPECT_EQ(memory.sockets.TakeWritten(0), "say first\r\nsay second\r\n");
  Run("#ALIAS gone {#UNALIAS gone;say bye}");
  EXPECT_EQ(Run("gone"), "");
  EXPECT_EQ(Run("gone"), "");
  EXPECT_EQ(memory.sockets.TakeWritten(0), "say bye\r\ngone\r\n");
}

TEST_F(DefinitionTest, KeyTakesKeystrokes) {
  AddVariable("k", "Control-F5");
  EXPECT_EQ(Run("#KEY @k {say @x} {@k}"), "");
  EXPECT_EQ(KeyBody(keycode::F1 + 4, ControlBit), "say @x");
  EXPECT_EQ(script.MacroClasses[1], "Control-F5");
  EXPECT_EQ(script.MacroOriginals[1], "say @x");
  EXPECT_EQ(Run("#KEY nosuchkey look"), "");
  EXPECT_EQ(script.MacroCount, 1);
  EXPECT_EQ(Effects(), Lines{});
}

TEST_F(DefinitionTest, VariablesHaveDefaults) {
  EXPECT_EQ(Run("#VAR x 5"), "");
  EXPECT_EQ(script.VariableDefaults[1], "5");
  EXPECT_EQ(Run("#VARIABLE x 6 7"), "");
  EXPECT_EQ(Variable("x"), "6");
  EXPECT_EQ(script.VariableDefaults[1], "5");
  EXPECT_EQ(Run("#VAR y 6 7"), "");
  EXPECT_EQ(script.VariableDefaults[2], "7");
  EXPECT_EQ(Run("#VAR z"), "");
  EXPECT_EQ(Variable("z"), "");
  EXPECT_EQ(Run("#VAR 9x 1;#VAR a_b 1"), "");
  EXPECT_EQ(script.VariableCount, 3);
}

TEST_F(DefinitionTest, VariableAloneOpensTheListOfVariables) {
  AddVariable("x", "1");
  for (const char* command : {"#VAR", "#GVARIABLE"}) {
    memory.face.Will("Done");
    EXPECT_EQ(Run(command), "");
    EXPECT_EQ(memory.effects.Of("dialog").back(), "DEBUGVAR View & Set Variables|Variables");
    EXPECT_EQ(memory.face.AnswersLeft(), 0U);
  }
}

TEST_F(DefinitionTest, AnAssignmentOfACharacterChangesTheVariableOfEverybody) {
  MakeSession(0, "bob", true);
  AddVariable("x", "1");
  Run("#VAR x 2");
  EXPECT_EQ(script.VariableCount, 1);
  EXPECT_EQ(Variable("x"), "2");
}

TEST_F(DefinitionTest, AddItemMakesAList) {
  EXPECT_EQ(Run("#ADDITEM l a"), "");
  EXPECT_EQ(Run("#ADDITEM l {b c}"), "");
  EXPECT_EQ(Run("#ADDITEM l a"), "");
  EXPECT_EQ(Variable("l"), "a|b c|a");
  EXPECT_EQ(Run("#ADDITEM l {B C} noduplicates"), "");
  EXPECT_EQ(Variable("l"), "a|b c|a");
  EXPECT_EQ(Run("#ADDITEM l d NoDuplicates"), "");
  EXPECT_EQ(Variable("l"), "a|b c|a|d");
  EXPECT_EQ(Run("#ADDITEM l d twice"), "If included, parameter 3 must be NoDuplicates");
}

TEST_F(DefinitionTest, AddItemIsForTheSessionEvenWithThePrefix) {
  MakeSession(0, "bob", true);
  Run("#GADDITEM l a");
  EXPECT_EQ(script.VariableOwners[1], script.SocketOwner[0]);
}

TEST_F(DefinitionTest, OwnAndGlobalVariablesOfOneNameAreTwo) {
  MakeSession(0, "bob", true);
  const OwnerId owner = script.SocketOwner[0];
  AddVariable("l", "own", owner);
  AddVariable("l", "all");
  EXPECT_EQ(Run("#GADDITEM l a"), "");
  EXPECT_EQ(Variable("l", owner), "own|a");
  EXPECT_EQ(Variable("l"), "all");
  EXPECT_EQ(Run("#GUNVAR l"), "");
  EXPECT_EQ(Variable("l", owner), "own|a");
  EXPECT_EQ(Variable("l"), "(none)");
}

TEST_F(DefinitionTest, UnAliasTakesOwnerAndClassIntoAccount) {
  MakeSession(0, "bob", true);
  const OwnerId owner = script.SocketOwner[0];
  AddAlias("all", "x");
  Run("#ALIAS mine x war;#ALIAS too x");
  EXPECT_EQ(Run("#UNALIAS all;#UNALIAS mine peace;#UNALIAS nosuch"), "");
  EXPECT_NE(AliasRow("mine", owner), 0);
  EXPECT_NE(AliasRow("all"), 0);
  EXPECT_EQ(Run("#UNALIAS MINE WAR;#UNALI TOO;#GUNALIAS all"), "");
  EXPECT_EQ(script.AliasCount, 0);
  EXPECT_EQ(Effects(), Lines{});
}

TEST_F(DefinitionTest, BlanksAroundANameDoNotKeepAnAlias) {
  Run("#ALIAS { a } x;#ALIAS { b } x;#ALIAS c x");
  EXPECT_EQ(Run("#UNALIAS { A };#UNALIAS b;#UNALIAS { c}"), "");
  EXPECT_EQ(script.AliasCount, 0);
}

TEST_F(DefinitionTest, UnKeyTakesTheKeyAway) {
  Run("#KEY F5 a;#KEY Shift-F5 b war;#KEY F6 c");
  EXPECT_EQ(Run("#UNKEY Shift-F5 peace;#UNKEY F5"), "");
  EXPECT_EQ(KeyBody(keycode::F1 + 4, 0), "(none)");
  EXPECT_EQ(KeyBody(keycode::F1 + 4, ShiftBit), "b");
  EXPECT_EQ(KeyBody(keycode::F1 + 5, 0), "c");
  EXPECT_EQ(Run("#UNKEY Shift-F5 WAR;#UNKEY bogus"), "");
  EXPECT_EQ(script.MacroCount, 1);
}

TEST_F(DefinitionTest, UnKeyAndUnClassKnowWhoseTheDefinitionsAre) {
  MakeSession(0, "bob", true);
  Run("#GKEY F5 a;#KEY F6 b;#GKEY F7 c war;#GALIAS d x war");
  EXPECT_EQ(Run("#UNKEY F5;#GUNKEY F6;#UNCLASS war"), "");
  EXPECT_EQ(Defined(), "d F5|F6|F7 ");
  EXPECT_EQ(Run("#GUNKEY F5;#UNKEY F6;#GUNCLASS war"), "");
  EXPECT_EQ(Defined(), "  ");
}

TEST_F(DefinitionTest, UnVariableLeavesWhatIsForEverybody) {
  MakeSession(0, "bob", true);
  AddVariable("x", "1");
  Run("#UNVAR x");
  EXPECT_EQ(Variable("x"), "1");
  Run("#GUNVAR x;#UNVAR nosuch");
  EXPECT_EQ(Variable("x"), "(none)");
  EXPECT_EQ(script.VariableCount, 0);
}

TEST_F(DefinitionTest, LocalTakesTheLastNameThatFits) {
  AddRow("bob");
  AddRow("bert");
  AddRow("anna");
  EXPECT_EQ(Run("#LOCAL b"), "");
  EXPECT_EQ(script.CurrentOwner, 2);
  EXPECT_EQ(Run("#LOCAL BO"), "");
  EXPECT_EQ(script.CurrentOwner, 1);
  EXPECT_EQ(Run("#LOCAL zork"), "");
  EXPECT_EQ(script.CurrentOwner, 1);
  EXPECT_EQ(Run("#LOCAL"), "");
  EXPECT_EQ(script.CurrentOwner, 3);
}

TEST_F(DefinitionTest, TabWordsAreKeptInTheirFile) {
  MakeSession(0, "bob", true);
  sessions.MudFolder[0] = "/data/Avalon/";
  memory.files.CreateFolder("/data/Avalon");
  script.CurrentOwner = script.SocketOwner[0];
  EXPECT_EQ(Run("#TAB {rat|Dragon king|RAT}"), "");
  EXPECT_EQ(memory.files.ReadWhole("/data/Avalon/bob.Tab"), "rat\r\nDragon king\r\n");
  EXPECT_EQ(Run("#TAB rat"), "");
  EXPECT_EQ(script.TabWordCount, 2);
  EXPECT_EQ(Run("#UNTAB DRAGON~ KING|nosuch"), "");
  EXPECT_EQ(memory.files.ReadWhole("/data/Avalon/bob.Tab"), "rat\r\n");
  EXPECT_EQ(Run("#UNTAB allclear"), "");
  EXPECT_EQ(memory.files.ReadWhole("/data/Avalon/bob.Tab"), "");
  EXPECT_EQ(script.TabWordCount, 0);
  EXPECT_EQ(Run("#TAB"), "");
  EXPECT_EQ(menu.ListItems, Lines{}) << "there is no word to show";
}

TEST_F(DefinitionTest, TabWordsAreTheSessionsEvenWithThePrefix) {
  MakeSession(0, "bob", true);
  const OwnerId owner = script.SocketOwner[0];
  EXPECT_EQ(Run("#GTAB rat"), "");
  EXPECT_EQ(script.TabOwners[1], owner);
  script.TabOwners[1] = 77;
  EXPECT_EQ(Run("#TAB rat;#UNTAB rat"), "");
  EXPECT_EQ(script.TabWords[1], "rat") << "another character's";
  EXPECT_EQ(script.TabWords[2], "");
  EXPECT_EQ(Run("#TAB cat;#UNTAB AllClear"), "");
  EXPECT_EQ(script.TabWordCount, 1);
}

TEST_F(DefinitionTest, TheTabFileListsTheWordsOfTheCharacterInFront) {
  MakeSession(0, "bob", true);
  EXPECT_EQ(Run("#TAB rat"), "") << "without a folder there is no file";
  sessions.MudFolder[0] = "/data/Avalon/";
  memory.files.CreateFolder("/data/Avalon");
  script.CurrentOwner = static_cast<int16>(script.SocketOwner[0] + 1);
  EXPECT_EQ(Run("#TAB rat"), "") << "nothing new, and written all the same";
  EXPECT_EQ(memory.files.ReadWhole("/data/Avalon/bob.Tab"), "");
  script.CurrentOwner = script.SocketOwner[0];
  EXPECT_EQ(Run("#UNTAB"), "");
  EXPECT_EQ(memory.files.ReadWhole("/data/Avalon/bob.Tab"), "rat\r\n");
}

TEST_F(DefinitionTest, ATabFileThatCannotBeWrittenIsTold) {
  MakeSession(0, "bob", true);
  sessions.MudFolder[0] = "/data/Avalon/";
  memory.files.CreateFolder("/data/Avalon");
  memory.files.Fail = [](const std::string&, const std::string&) { return "disk full"; };
  EXPECT_TRUE(Run("#TAB rat").starts_with("Bad parsing error - "));
  EXPECT_EQ(script.TabWords[1], "rat");
}

TEST_F(DefinitionTest, GagLineCountsLines) {
  EXPECT_EQ(Run("#GAGLINE"), "");
  EXPECT_EQ(sessions.GagLines[0], 1);
  EXPECT_EQ(sessions.GagFlags[0], gag::LineSpeech | gag::LineDisplay);
  EXPECT_EQ(Run("#UNGAGLINE"), "");
  EXPECT_EQ(sessions.GagFlags[0], 0);
  EXPECT_EQ(Run("#GAGLINE 3 VOICE"), "");
  EXPECT_EQ(sessions.GagLines[0], 3);
  EXPECT_EQ(sessions.GagFlags[0], gag::LineSpeech);
  Run("#UNGAGLINE");
  EXPECT_EQ(Run("#GAGLINE display"), "");
  EXPECT_EQ(sessions.GagLines[0], 1);
  EXPECT_EQ(sessions.GagFlags[0], gag::LineDisplay);
  EXPECT_EQ(Run("#GAGLINE 2 all"), "");
  EXPECT_EQ(sessions.GagFlags[0], gag::LineSpeech | gag::LineDisplay);
  EXPECT_EQ(Run("#GAGLINE bogus"), "Bad GagLine parameter");
  EXPECT_EQ(Run("#GAGLINE many voice"), "non-numeric number of lines to gag");
  EXPECT_EQ(Run("#GAGLINE 2 bogus"), "Bad GagLine parameter");
  EXPECT_TRUE(Run("#GAGLINE 40000").starts_with("Bad parsing error - "));
}

TEST_F(DefinitionTest, GagOnLastsUntilUnGagOn) {
  EXPECT_EQ(Run("#GAGON voice"), "");
  EXPECT_EQ(sessions.GagFlags[0], gag::OnSpeech);
  EXPECT_EQ(sessions.GagNotice[0], static_cast<float>(memory.clock.SecondsSinceMidnight()));
  EXPECT_EQ(Run("#GAGON Display"), "");
  EXPECT_EQ(sessions.GagFlags[0], gag::OnSpeech | gag::OnDisplay);
  EXPECT_EQ(Run("#UNGAGON"), "");
  EXPECT_EQ(sessions.GagFlags[0], 0);
  EXPECT_EQ(sessions.GagNotice[0], 0.0F);
  for (const auto& [word, flags] : {std::pair{"", gag::OnSpeech | gag::OnDisplay},
                                    {" ALL", gag::OnSpeech | gag::OnDisplay},
                                    {" display", int{gag::OnDisplay}},
                                    {" Voice", int{gag::OnSpeech}}}) {
    Run("#UNGAGON");
    EXPECT_EQ(Run("#GAGON" + std::string(word)), "");
    EXPECT_EQ(sessions.GagFlags[0], flags) << word;
    EXPECT_EQ(sessions.GagNotice[0], static_cast<float>(memory.clock.SecondsSinceMidnight())) << word;
  }
  Run("#UNGAGON;#GAGLINE");
  EXPECT_EQ(Run("#GAGON bogus"), "Bad GagOn parameter");
  EXPECT_EQ(sessions.GagNotice[0], 0.0F);
  Run("#UNGAGON");
  EXPECT_EQ(sessions.GagFlags[0], gag::LineSpeech | gag::LineDisplay) << "the gag of lines is another";
}

TEST_F(DefinitionTest, IgnoreSwitchesOff) {
  MakeSession(0, "bob", true);
  EXPECT_EQ(Run("#IGNORE trigger On;#IGNORE ALIAS on;#IGNORE key on;#IGNORE LogEntries on;#IGNORE dictionary on"), "");
  EXPECT_EQ(sessions.TriggerEnabled[0] + sessions.AliasEnabled[0] + sessions.KeyEnabled[0], 0);
  EXPECT_EQ(sessions.LogEntriesEnabled[0], 0);
  EXPECT_FALSE(options.DictionaryEnabled);
  EXPECT_EQ(Run("#IGNORE trigger Off;#IGNORE alias off"), "");
  EXPECT_EQ(sessions.TriggerEnabled[0] + sessions.AliasEnabled[0], 2);
  EXPECT_EQ(sessions.KeyEnabled[0] + sessions.LogEntriesEnabled[0], 0);
  EXPECT_EQ(Run("#IGNORE Key off;#IGNORE logentries OFF;#IGNORE Dictionary Off"), "");
  EXPECT_EQ(sessions.KeyEnabled[0] + sessions.LogEntriesEnabled[0], 2);
  EXPECT_TRUE(options.DictionaryEnabled);
  EXPECT_EQ(Run("#IGNORE trigger maybe"), "The second parameter must be either On or Off");
  EXPECT_EQ(Run("#IGNORE cats on"), "First parameter must be Trigger, Key, or alias");
}

TEST_F(DefinitionTest, PassThruKeepsItsTextRaw) {
  EXPECT_EQ(Run("#PASSTHRU {@x %1}"), "");
  EXPECT_EQ(sessions.PassThruPattern[0], "@x %1");
}

}  // namespace corvid::test
