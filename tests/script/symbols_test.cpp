// SPDX-License-Identifier: GPL-3.0-or-later
#include "script/symbols.h"

#include <gtest/gtest.h>

#include "fakes.h"

namespace corvid {
namespace {

using testing_script::Script;
using testing_script::Texts;

class Variables : public testing::Test, protected Script {
 protected:
  Texts Rows() {
    Texts rows;
    for (int32 row = 1; row <= state.VariableCount; ++row)
      rows.push_back(state.VariableNames[row] + "/" + std::to_string(state.VariableOwners[row]) + "=" +
                     state.VariableValues[row]);
    return rows;
  }
};

TEST_F(Variables, StandSortedWithTheSpellingTheyCameWith) {
  for (const char* name : {"pear", "Apple", "zoo", "fig", "B2", "b"}) Set(name, "1");
  EXPECT_EQ(Rows(), (Texts{"Apple/0=1", "b/0=1", "B2/0=1", "fig/0=1", "pear/0=1", "zoo/0=1"}));
  EXPECT_EQ(state.VariableNames.UBound(), state.VariableCount + 1);
  EXPECT_EQ(state.VariableOwners.UBound(), state.VariableCount + 1);
}

TEST_F(Variables, AreFoundInAnyCase) {
  Set("HitPoints", "12");
  EXPECT_EQ(Get("hitpoints"), "12");
  EXPECT_EQ(Get("HITPOINTS"), "12");
  EXPECT_EQ(Get("hit"), "(none)");
}

TEST_F(Variables, BlanksAroundANameDoNotHideIt) {
  Set(" hp ", "5");
  EXPECT_EQ(state.VariableNames[1], " hp ");
  EXPECT_EQ(Get("hp"), "5");
  Set("hp", "6");
  EXPECT_EQ(Rows(), (Texts{" hp /0=6"}));
}

TEST_F(Variables, BadNamesAreDroppedWithoutAWord) {
  for (const char* name : {"", "  ", "1a", "a_b", "a-b", "a b", "_", "\xE9", "a\xE9", "a."}) {
    std::string error;
    symbols.AddVariable(name, "x", 0, error);
    EXPECT_EQ(error, "") << name;
  }
  EXPECT_EQ(state.VariableCount, 0);
  Set("a1b2", "x");
  EXPECT_EQ(state.VariableCount, 1);
}

TEST_F(Variables, DefaultIsTheValueUnlessGiven) {
  std::string error;
  Set("a", "1");
  symbols.AddVariable("b", "1", 0, error, "9");
  symbols.AddVariable("c", "1", 0, error, "");
  Set("a", "2");
  symbols.AddVariable("b", "2", 0, error, "7");
  EXPECT_EQ(state.VariableDefaults[1], "1");
  EXPECT_EQ(state.VariableValues[1], "2");
  EXPECT_EQ(state.VariableDefaults[2], "9");
  EXPECT_EQ(state.VariableDefaults[3], "");
}

TEST_F(Variables, OwnedRowShadowsTheGlobalOne) {
  Set("x", "mine", 5);
  Set("x", "all", 0);
  EXPECT_EQ(Rows(), (Texts{"x/5=mine", "x/0=all"}));
  EXPECT_EQ(Get("x", 5), "mine");
  EXPECT_EQ(Get("x", 0), "all");
  EXPECT_EQ(Get("x", 6), "all");
}

TEST_F(Variables, AssigningToAGlobalNameChangesTheGlobalRow) {
  Set("x", "all", 0);
  Set("x", "changed", 5);
  EXPECT_EQ(Rows(), (Texts{"x/0=changed"}));
}

TEST_F(Variables, OwnRowIsFoundAmongManyOwners) {
  for (OwnerId owner = 40; owner >= 1; --owner) Set("x", std::to_string(owner), owner);
  Set("w", "w");
  Set("y", "y");
  for (OwnerId owner = 1; owner <= 40; ++owner) EXPECT_EQ(Get("x", owner), std::to_string(owner));
  EXPECT_EQ(Get("x", 41), "(none)");
  EXPECT_EQ(Get("x", 0), "(none)");
}

TEST_F(Variables, ValueIsEmptiedFirstUnlessTheTableIsEmpty) {
  std::string value = "before";
  EXPECT_EQ(symbols.FindVariable("x", value, 0), 0);
  EXPECT_EQ(value, "before");
  Set("y", "1");
  EXPECT_EQ(symbols.FindVariable("x", value, 0), 0);
  EXPECT_EQ(value, "");
}

// Every name of every table size is found, and nothing else.
TEST_F(Variables, SearchFindsEachRowOfAnySize) {
  for (int size = 1; size <= 40; ++size) {
    const std::string name(1, static_cast<char>('A' + (size * 7) % 26));
    Set(name + std::to_string(size), std::to_string(size));
    for (int i = 1; i <= 40; ++i) {
      const std::string wanted(1, static_cast<char>('A' + (i * 7) % 26));
      EXPECT_EQ(Get(wanted + std::to_string(i)), i <= size ? std::to_string(i) : "(none)");
    }
    EXPECT_EQ(Get("A"), "(none)");
    EXPECT_EQ(Get("ZZ"), "(none)");
  }
}

TEST_F(Variables, BlankedRowsMisleadNoSearch) {
  for (char c = 'a'; c <= 'z'; ++c) Set(std::string(1, c), std::string(1, c), c % 3 == 0 ? OwnerId{7} : OwnerId{0});
  symbols.RemoveCharacter(7);
  for (char c = 'a'; c <= 'z'; ++c) {
    const std::string name(1, c);
    EXPECT_EQ(Get(name, 7), c % 3 == 0 ? "(none)" : name) << name;
  }
  Set("m5", "new");
  EXPECT_EQ(Get("m5"), "new");
  symbols.CompressCommand(windowtype::Variables);
  EXPECT_EQ(state.VariableCount, 18 + 1);
  EXPECT_EQ(state.VariableNames.UBound(), 20);
  EXPECT_EQ(Get("m5"), "new");
  EXPECT_EQ(Get("a"), "a");
}

class Aliases : public testing::Test, protected Script {
 protected:
  void Add(const std::string& name, const std::string& value, OwnerId owner = 0, const std::string& list = "",
           int16 buffer = 4) {
    std::string error;
    symbols.AddAlias(name, value, owner, list, buffer, "orig " + value, error);
    EXPECT_EQ(error, "");
  }
  std::string Value(int16 row) { return row == 0 ? "(none)" : state.AliasValues[row]; }
};

TEST_F(Aliases, KeepTheirCaseAndStandSorted) {
  Add("west", "go w");
  Add("Bank", "go bank");
  Add("attack", "kill");
  EXPECT_EQ(state.AliasCount, 3);
  EXPECT_EQ(state.AliasNames.UBound(), 3);
  EXPECT_EQ(state.AliasOriginals.UBound(), 3);
  EXPECT_EQ(state.AliasNames[1], "attack");
  EXPECT_EQ(state.AliasNames[2], "Bank");
  EXPECT_EQ(state.AliasOriginals[3], "orig go w");
  EXPECT_EQ(Value(symbols.FindAlias("BANK", 0, true)), "go bank");
}

TEST_F(Aliases, WithoutANameThereIsOneForEachOwner) {
  Add("west", "go w");
  for (const char* name : {"", "  ", ""}) {
    Add(name, "first", 5);
    Add(name, "second", 5);
    Add(name, "other", 6);
  }
  EXPECT_EQ(state.AliasCount, 3);
  Add("", "everybody's", 0);
  EXPECT_EQ(state.AliasCount, 4);
  EXPECT_EQ(symbols.FindAlias("", 5, false), 0) << "it cannot be called";
  EXPECT_EQ(Value(symbols.FindAlias("west", 5, false)), "go w");
  symbols.CompressCommand(windowtype::Aliases);
  EXPECT_EQ(state.AliasCount, 1);
}

TEST_F(Aliases, BlanksAroundANameDoNotHideIt) {
  Add(" hail ", "one");
  EXPECT_EQ(state.AliasNames[1], " hail ");
  Add("Hail", "two");
  EXPECT_EQ(state.AliasCount, 1);
  EXPECT_EQ(Value(symbols.FindAlias("hail", 0, true)), "two");
  Add("bow", "three");
  Add("  BOW ", "four");
  EXPECT_EQ(state.AliasCount, 2);
  EXPECT_EQ(Value(symbols.FindAlias("bow", 0, true)), "four");
}

// Rows are asked from the middle one up and then down; of rows that are everybody's the last one asked counts.
TEST_F(Aliases, TheLastOfSeveralGlobalRowsCountsAndAnOwnRowEndsTheSearch) {
  for (const char* name : {"a", "b", "c"}) Add(name, name);
  for (int32 row = 1; row <= 3; ++row) state.AliasNames[row] = "same";
  EXPECT_EQ(symbols.FindAlias("SAME", 5, true), 1);
  state.AliasOwners[3] = 5;
  EXPECT_EQ(symbols.FindAlias("SAME", 5, true), 3);
}

TEST_F(Aliases, ReplacingKeepsTheOwnerAndTheFlags) {
  Add("x", "one", 0, "fight", 4);
  state.AliasFlags[1] = BreakpointFlag;
  Add("X", "two", 5, "", 6);
  EXPECT_EQ(state.AliasCount, 1);
  EXPECT_EQ(state.AliasValues[1], "two");
  EXPECT_EQ(state.AliasOriginals[1], "orig two");
  EXPECT_EQ(state.AliasClasses[1], "");
  EXPECT_EQ(state.AliasBuffers[1], 6);
  EXPECT_EQ(state.AliasOwners[1], 0);
  EXPECT_EQ(state.AliasFlags[1], BreakpointFlag);
}

TEST_F(Aliases, FlagsMoveWithTheirRow) {
  Add("m", "1");
  state.AliasFlags[1] = BreakpointFlag;
  Add("a", "2");
  EXPECT_EQ(state.AliasFlags[1], 0);
  EXPECT_EQ(state.AliasFlags[2], BreakpointFlag);
}

TEST_F(Aliases, ClassDecidesOnlyWhenAskedFor) {
  Add("x", "mine", 5, "fight");
  Add("x", "all", 0);
  EXPECT_EQ(Value(symbols.FindAlias("x", 5, false)), "mine");
  EXPECT_EQ(Value(symbols.FindAlias("x", 5, true)), "all");
  symbols.CheckAndAddClass("fight", 5);
  EXPECT_EQ(Value(symbols.FindAlias("x", 5, true)), "mine");
}

TEST_F(Aliases, GlobalRowCanBeTiedToACharactersClass) {
  Add("x", "all", 0, "fight");
  symbols.CheckAndAddClass("fight", 5);
  EXPECT_EQ(Value(symbols.FindAlias("x", 5, true)), "all");
  EXPECT_EQ(Value(symbols.FindAlias("x", 6, true)), "(none)");
}

TEST_F(Aliases, BlankedRowsArePassedOverAndThenPacked) {
  for (char c = 'a'; c <= 'j'; ++c) Add(std::string(1, c), std::string(1, c), 0, "", c < 'f' ? int16{4} : int16{5});
  state.AliasFlags[10] = BreakpointFlag;
  symbols.RemoveCommands(4);
  EXPECT_EQ(state.AliasCount, 10);
  for (char c = 'a'; c <= 'j'; ++c) {
    const std::string name(1, c);
    EXPECT_EQ(Value(symbols.FindAlias(name, 0, true)), c < 'f' ? "(none)" : name);
  }
  EXPECT_EQ(symbols.FindAlias("", 0, false), 0);
  symbols.CompressCommand(windowtype::Aliases);
  EXPECT_EQ(state.AliasCount, 5);
  EXPECT_EQ(state.AliasNames.UBound(), 5);
  EXPECT_EQ(state.AliasNames[1], "f");
  EXPECT_EQ(state.AliasFlags[5], BreakpointFlag);
  EXPECT_EQ(runner.Sorts, 0);
}

TEST_F(Aliases, ATableOfBlankedRowsFindsNothingAndGrowsOn) {
  Add("a", "1");
  Add("b", "2");
  symbols.RemoveCommands(4);
  EXPECT_EQ(symbols.FindAlias("a", 0, false), 0);
  Add("a", "3");
  EXPECT_EQ(Value(symbols.FindAlias("a", 0, false)), "3");
}

TEST_F(Aliases, MoreThan16BitsCountAreAFault) {
  state.AliasCount = 32767;
  symbols.resizeCommand(windowtype::Aliases, 32767);
  EXPECT_THROW(Add("a", "1"), Fault);
  EXPECT_EQ(state.AliasCount, 32767);
}

class Keys : public testing::Test, protected Script {
 protected:
  void Add(int16 code, int16 shift, const std::string& value, OwnerId owner = 0, const std::string& list = "",
           int16 buffer = 4) {
    std::string error;
    symbols.Addmacro(code, shift, value, owner, list, buffer, "orig " + value, error);
  }
  std::string Value(int16 code, int16 shift, OwnerId owner = 0, bool checkclass = true) {
    const int16 row = symbols.FindMacro(code, shift, owner, checkclass);
    return row == 0 ? "(none)" : state.MacroValues[row];
  }
};

TEST_F(Keys, AreSortedByCodeAndShift) {
  Add(116, 0, "F5");
  Add(65, 2, "ctrl a");
  Add(116, 7, "all F5");
  Add(65, 0, "a");
  EXPECT_EQ(state.MacroCount, 4);
  EXPECT_EQ(state.MacroValues[1], "a");
  EXPECT_EQ(state.MacroValues[2], "ctrl a");
  EXPECT_EQ(state.MacroValues[4], "all F5");
  EXPECT_EQ(state.MacroFlags.UBound(), 4);
  EXPECT_EQ(Value(116, 7), "all F5");
  EXPECT_EQ(Value(116, 1), "(none)");
}

TEST_F(Keys, ReplaceAndShadowAsAliasesDo) {
  Add(65, 0, "one", 0, "fight", 4);
  Add(65, 0, "two", 5, "", 6);
  EXPECT_EQ(state.MacroCount, 1);
  EXPECT_EQ(state.MacroOwners[1], 0);
  EXPECT_EQ(state.MacroValues[1], "two");
  EXPECT_EQ(state.MacroOriginals[1], "orig two");
  EXPECT_EQ(state.MacroBuffers[1], 6);
  Add(66, 0, "own", 5, "off");
  Add(66, 0, "all", 0);
  EXPECT_EQ(Value(66, 0, 5), "all");
  EXPECT_EQ(Value(66, 0, 5, false), "own");
}

TEST_F(Keys, BlankedRowsArePassedOverAndThenPacked) {
  for (int16 code = 65; code < 75; ++code) Add(code, 0, std::to_string(code), code % 2 == 0 ? OwnerId{3} : OwnerId{0});
  symbols.RemoveCharacter(3);
  for (int16 code = 65; code < 75; ++code)
    EXPECT_EQ(Value(code, 0, 3), code % 2 == 0 ? "(none)" : std::to_string(code));
  symbols.CompressCommand(windowtype::Keys);
  EXPECT_EQ(state.MacroCount, 5);
  EXPECT_EQ(state.MacroKeyCodes.UBound(), 5);
  EXPECT_EQ(Value(73, 0), "73");
}

TEST_F(Keys, ACodeThatDoesNotFitIsAFault) {
  EXPECT_THROW(Add(4000, 0, "x"), Fault);
}

class Classes : public testing::Test, protected Script {};

TEST_F(Classes, AreOnWhenTheyStandInTheTable) {
  EXPECT_TRUE(symbols.InClass("", 5));
  EXPECT_FALSE(symbols.InClass("a", 5));
  symbols.CheckAndAddClass("a", 5);
  symbols.CheckAndAddClass("A", 5);
  EXPECT_EQ(state.ClassCount, 1);
  EXPECT_EQ(state.ClassNames[1], "A");
  EXPECT_TRUE(symbols.InClass("a", 5));
  EXPECT_FALSE(symbols.InClass("a", 6));
  EXPECT_FALSE(symbols.InClass("a", 0));
  symbols.CheckAndAddClass("a", 0);
  EXPECT_EQ(state.ClassCount, 2);
  EXPECT_TRUE(symbols.InClass("a", 6));
}

TEST_F(Classes, AListNeedsThemAll) {
  symbols.CheckAndAddClass("a", 5);
  EXPECT_FALSE(symbols.InClass("A|B", 5));
  symbols.CheckAndAddClass("b", 0);
  EXPECT_TRUE(symbols.InClass("A|b", 5));
  EXPECT_FALSE(symbols.InClass("A|", 5));
  EXPECT_FALSE(symbols.InClass("|A", 5));
  EXPECT_TRUE(symbols.InClass("a|a|a|a|a|a|a|a|a|a|a", 5));
  EXPECT_THROW(symbols.InClass("a|a|a|a|a|a|a|a|a|a|a|a", 5), Fault);
}

TEST_F(Classes, NothingAndZeroAreNoClasses) {
  symbols.CheckAndAddClass("0", 5);
  symbols.CheckAndAddClass("", 5);
  EXPECT_EQ(state.ClassCount, 0);
}

TEST_F(Classes, SwitchingOffNeedsTheVeryOwner) {
  symbols.DeleteClass("a", 0);
  symbols.CheckAndAddClass("a", 0);
  symbols.CheckAndAddClass("b", 0);
  symbols.CheckAndAddClass("a", 5);
  symbols.DeleteClass("", 0);
  symbols.DeleteClass("b", 5);
  EXPECT_EQ(state.ClassCount, 3);
  symbols.DeleteClass("A", 5);
  EXPECT_EQ(state.ClassCount, 2);
  EXPECT_TRUE(symbols.InClass("a", 5));
  symbols.DeleteClass("a", 0);
  EXPECT_EQ(state.ClassCount, 1);
  EXPECT_EQ(state.ClassNames[1], "B");
  EXPECT_EQ(state.ClassNames.UBound(), 3);
  symbols.CheckAndAddClass("c", 0);
  EXPECT_EQ(state.ClassNames[2], "C");
  EXPECT_TRUE(symbols.InClass("b|c", 0));
}

}  // namespace
}  // namespace corvid
