// SPDX-License-Identifier: GPL-3.0-or-later
// Lines that call an alias.
#include "game_text_fixture.h"

namespace corvid::test {

TEST_F(GameTextTest, AliasesOfTheOtherSessionAreTakenAfterASwitch) {
  ThreeSessions();
  AddAlias("hi", "say I am Bob", script.SocketOwner[1]);
  Run("bob::hi");
  EXPECT_EQ(Written(1), "say I am Bob\r\n");
}

TEST_F(GameTextTest, AnAliasGetsItsArguments) {
  MakeSession(0, "bob", true);
  AddVariable("x", "5");
  AddAlias("k", "kill %1 with %2;say [%0]");
  Run("k rat {a @x} c");
  EXPECT_EQ(Written(0), "kill rat with a 5\r\nsay [rat a 5 c ]\r\n");
}

TEST_F(GameTextTest, ArgumentsOfTheOuterAliasAreExpandedInTheCall) {
  MakeSession(0, "bob", true);
  AddAlias("outer", "inner %1 ~%1");
  AddAlias("inner", "say %1 %2");
  Run("outer x");
  EXPECT_EQ(Written(0), "say x %1\r\n");
}

TEST_F(GameTextTest, AnAliasWithoutArgumentsHasEmptyOnes) {
  MakeSession(0, "bob", true);
  AddAlias("k", "say %0,%1");
  Run("k");
  EXPECT_EQ(Written(0), "say ,\r\n");
}

TEST_F(GameTextTest, CapturedTextIsNotLookedAtAgain) {
  MakeSession(0, "bob", true);
  AddVariable("seen", ";#quit{}@x%1");
  AddAlias("tell", "say %1");
  Run("tell @seen");
  EXPECT_EQ(Written(0), "say ;#quit{}@x%1\r\n");
  EXPECT_EQ(Of("quit"), Lines{});
}

TEST_F(GameTextTest, AnArgumentIsExpandedForItsAtOrPercentSignAlone) {
  MakeSession(0, "bob", true);
  AddVariable("x", "5");
  AddAlias("k", "say %1 %2 %3");
  options.VariableChar = '$';
  Run("k $x $x%1 a~b");
  EXPECT_EQ(Written(0), "say $x 5 a~b\r\n") << "a variable character of the player's own is not looked for";
}

TEST_F(GameTextTest, NinetyNineArgumentsReachTheAlias) {
  MakeSession(0, "bob", true);
  AddAlias("many", "say %99");
  std::string line = "many";
  for (int i = 1; i <= 99; ++i) line += " y" + std::to_string(i);
  Run(line);
  EXPECT_EQ(Written(0), "say y99\r\n");
}

TEST_F(GameTextTest, AHundredthArgumentIsAParsingError) {
  AddAlias("many", "x");
  std::string line = "many";
  for (int i = 0; i < 100; ++i) line += " y";
  EXPECT_TRUE(Run(line).starts_with("Bad parsing error - "));
}

TEST_F(GameTextTest, AliasesCanBeSwitchedOff) {
  MakeSession(0, "bob", true);
  AddAlias("k", "kill");
  sessions.AliasEnabled[0] = 0;
  Run("k");
  EXPECT_EQ(Written(0), "k\r\n");
}

TEST_F(GameTextTest, AnAliasOfAClassThatIsOffIsText) {
  MakeSession(0, "bob", true);
  std::string problem;
  symbols.AddAlias("k", "kill", 0, "war", 0, "kill", problem);
  Run("k");
  EXPECT_EQ(Written(0), "k\r\n");
  symbols.CheckAndAddClass("war", 0);
  Run("k");
  EXPECT_EQ(Written(0), "kill\r\n");
}

TEST_F(GameTextTest, DotsThatAreNoWalkAreSentAsTyped) {
  MakeSession(0, "bob", true);
  Run("...");
  EXPECT_EQ(Written(0), "...\r\n");
}

TEST_F(GameTextTest, AnAliasKeepsTheCallersOptionsAndSession) {
  ThreeSessions();
  AddAlias("hi", "say hi", script.SocketOwner[1]);
  EXPECT_EQ(Run("bob::hi", option::DoNotSend | option::PlaceInEntry), "");
  EXPECT_EQ(buffers.EntryBox.Text(), "say hi");
  EXPECT_EQ(Written(1), "");
  EXPECT_EQ(LastChannel, 1);
}

}  // namespace corvid::test
