// SPDX-License-Identifier: GPL-3.0-or-later
// Classes: what belongs to one is switched and removed with it.
#include "definition_fixture.h"

namespace corvid::test {

TEST_F(DefinitionTest, ClassEnablesDisablesAndSelects) {
  EXPECT_EQ(Run("#CLASS war enable"), "");
  EXPECT_TRUE(symbols.InClass("WAR", 0));
  EXPECT_EQ(script.CurrentClass[0], "");
  EXPECT_EQ(Run("#CLASS peace"), "");
  EXPECT_TRUE(symbols.InClass("peace", 0));
  EXPECT_EQ(script.CurrentClass[0], "PEACE");
  EXPECT_EQ(Run("#CLASS Peace DISABLE"), "");
  EXPECT_FALSE(symbols.InClass("peace", 0));
  EXPECT_EQ(script.CurrentClass[0], "");
  Run("#CLASS peace");
  EXPECT_EQ(Run("#CLASS 0"), "");
  EXPECT_EQ(script.CurrentClass[0], "");
  EXPECT_EQ(script.ClassCount, 2);
  EXPECT_EQ(Run("#CLASS a|b"), "Only one class may be specified in the  first parameter.");
  EXPECT_EQ(Run("#CLASS a sometimes"), "Bad Class parameter 2");
}

TEST_F(DefinitionTest, ThePrefixSwitchesClassesForEverybody) {
  MakeSession(0, "bob", true);
  const OwnerId other = 77;
  EXPECT_EQ(Run("#CLASS own enable;#CLASS mine"), "");
  EXPECT_FALSE(symbols.InClass("own", other));
  EXPECT_FALSE(symbols.InClass("mine", other));
  EXPECT_EQ(Run("#GCLASS war enable;#GCLASS peace"), "");
  EXPECT_TRUE(symbols.InClass("war|peace", other));
  EXPECT_EQ(Run("#CLASS war disable"), "");
  EXPECT_TRUE(symbols.InClass("war", other)) << "the character has none of that name";
  EXPECT_EQ(Run("#GCLASS war disable"), "");
  EXPECT_FALSE(symbols.InClass("war", script.SocketOwner[0]));
}

TEST_F(DefinitionTest, FullTablesAreGoneThroughAndSaved) {
  Run("#ALIAS greet {wave} war");
  script.TriggerCount = script.MacroCount = script.AliasCount = script.TabWordCount = INT16_MAX;
  symbols.resizeCommand(windowtype::Triggers, INT16_MAX);
  symbols.resizeCommand(windowtype::Keys, INT16_MAX);
  symbols.resizeCommand(windowtype::Aliases, INT16_MAX);
  script.TabWords.Resize(INT16_MAX);
  script.TabOwners.Resize(INT16_MAX);
  EXPECT_EQ(Run("#UNTAB word"), "");
  EXPECT_TRUE(saving.WriteImage("/data/all.set"));
  EXPECT_NE(memory.files.ReadWhole("/data/all.set").find("alias {greet}"), std::string::npos);
  EXPECT_EQ(Run("#DELCLASS war"), "");
  EXPECT_EQ(script.AliasCount, 0);
}

TEST_F(DefinitionTest, DisablingAnotherClassLeavesTheCurrentOne) {
  Run("#CLASS peace;#CLASS war enable");
  EXPECT_EQ(Run("#CLASS war disable"), "");
  EXPECT_EQ(script.CurrentClass[0], "PEACE");
  EXPECT_EQ(Run("#DELCLASS war"), "");
  EXPECT_EQ(script.CurrentClass[0], "PEACE");
  EXPECT_EQ(Run("#DELCLASS peace"), "");
  EXPECT_EQ(script.CurrentClass[0], "");
}

TEST_F(DefinitionTest, AnEmptyNameMeansWhatHasNoClass) {
  MakeSession(0, "bob", true);
  const char* definitions =
      "#ALIAS a x;#GALIAS b x;#ALIAS c x war;#KEY F5 x;#GKEY F6 x;#KEY F7 x war;#TRIGGER t x;#GTRIGGER u x;"
      "#TRIGGER v x war;#CLASS war enable";
  Run(definitions);
  EXPECT_EQ(Run("#UNCLASS @nothing"), "");
  EXPECT_EQ(Defined(), "b|c F6|F7 u|v");
  Run(definitions);
  EXPECT_EQ(Run("#DELCLASS @nothing"), "");
  EXPECT_EQ(Defined(), "c F7 v");
  EXPECT_TRUE(symbols.InClass("war", script.SocketOwner[0]));
}

TEST_F(DefinitionTest, ClassesTakeTriggersAlong) {
  MakeSession(0, "bob", true);
  const OwnerId owner = script.SocketOwner[0];
  script.TriggerCount = 3;
  symbols.resizeCommand(windowtype::Triggers, 3);
  const char* classes[] = {"", "war", "war|peace", "war"};
  for (int16 i = 1; i <= 3; ++i) {
    script.Triggers[i].Pattern = script.Triggers[i].SearchText = "t" + std::to_string(i);
    script.Triggers[i].Class = classes[i];
    script.Triggers[i].Owner = owner;
  }
  script.Triggers[3].Owner = 0;
  EXPECT_EQ(Run("#UNCLASS WAR"), "");
  EXPECT_EQ(Defined(), "  t2|t3") << "the last is another owner's";
  EXPECT_EQ(script.Triggers[2].Class, "peace");
  EXPECT_EQ(Run("#DELCLASS war"), "");
  EXPECT_EQ(Defined(), "  t2");
}

TEST_F(DefinitionTest, TheListOfClassesBeepsWhenEmpty) {
  EXPECT_EQ(Run("#CLASS"), "");
  EXPECT_EQ(Effects(), (Lines{"beep"}));
  Run("#CLASS war enable");
  EXPECT_EQ(Run("#CLASS"), "");
  EXPECT_TRUE(menu.ListOpen);
}

TEST_F(DefinitionTest, DelClassRemovesEveryMemberOfEveryOwner) {
  MakeSession(0, "bob", true);
  Run("#CLASS war");
  Run("#CLASS 0");
  Run("#ALIAS a x war;#GALIAS b x {peace|WAR};#ALIAS c x peace;#GKEY F5 x war;#KEY F6 x peace");
  EXPECT_EQ(Run("#DELCLASS War"), "");
  EXPECT_EQ(script.AliasCount, 1);
  EXPECT_EQ(script.MacroCount, 1);
  EXPECT_FALSE(symbols.InClass("war", script.SocketOwner[0]));
  EXPECT_EQ(Run("#DELCLASS a|b"), "Only one class may be specified in the  first parameter.");
}

TEST_F(DefinitionTest, UnClassKeepsMembersWithOtherClassesAndOtherOwners) {
  MakeSession(0, "bob", true);
  const OwnerId owner = script.SocketOwner[0];
  Run("#ALIAS a x war;#ALIAS b x {peace|WAR};#GALIAS c x war;#KEY F6 x {war|peace}");
  Run("#CLASS war");
  EXPECT_EQ(Run("#UNCLASS war"), "");
  EXPECT_EQ(AliasRow("a", owner), 0);
  EXPECT_EQ(script.AliasClasses[AliasRow("b", owner)], "peace");
  EXPECT_NE(AliasRow("c"), 0);
  EXPECT_EQ(script.MacroClasses[1], "peace");
  EXPECT_EQ(script.CurrentClass[0], "");
}

}  // namespace corvid::test
