// SPDX-License-Identifier: GPL-3.0-or-later
// Removing definitions, and what the program itself tells scripts.
#include <gtest/gtest.h>

#include <array>
#include <map>

#include "fakes.h"
#include "script/symbols.h"

namespace corvid {
namespace {

using testing_script::Script;
using testing_script::Texts;

class Triggers : public testing::Test, protected Script {
 protected:
  void Add(const std::string& search, OwnerId owner = 0, const std::string& list = "", int16 buffer = 4) {
    ++state.TriggerCount;
    symbols.resizeCommand(windowtype::Triggers, state.TriggerCount);
    TriggerRecord& trigger = state.Triggers[state.TriggerCount];
    trigger.Pattern = "*";
    trigger.SearchText = search;
    trigger.Owner = owner;
    trigger.Class = list;
    trigger.Buffer = buffer;
    trigger.Parts[10] = search;
    trigger.Names[10] = search;
  }
  Texts Left() {
    Texts left;
    for (int32 row = 1; row <= state.TriggerCount; ++row) {
      left.push_back(state.Triggers[row].SearchText);
      EXPECT_EQ(state.Triggers[row].Parts[10], left.back());
      EXPECT_EQ(state.Triggers[row].Names[10], left.back());
    }
    return left;
  }
  std::string Remove(int16 stype, OwnerId owner, const std::string& text, const std::string& list = "") {
    std::string error;
    symbols.RemoveTrigger(stype, owner, text, list, error);
    return error;
  }
};

TEST_F(Triggers, GoByTextOwnerAndClass) {
  Add("* shouts *");
  Add("b", 5);
  Add("* SHOUTS *", 5);
  Add("* shouts *", 0, "chat");
  EXPECT_EQ(Remove(1, 0, "nothing"), "");
  EXPECT_EQ(runner.Sorts, 0);
  EXPECT_EQ(Remove(1, 0, "* Shouts *", "CHAT"), "");
  EXPECT_EQ(Left(), (Texts{"* shouts *", "b", "* SHOUTS *"}));
  EXPECT_EQ(runner.Sorts, 1);
  EXPECT_EQ(Remove(1, 0, "* shouts *"), "");
  EXPECT_EQ(Left(), (Texts{"b", "* SHOUTS *"}));
  EXPECT_EQ(state.Triggers.UBound(), 2);
}

TEST_F(Triggers, AFreeRowOfTheSameTextIsPackedAway) {
  Add("a");
  Add("b");
  state.Triggers[1].Pattern.clear();
  EXPECT_EQ(Remove(1, 0, "b", "other"), "");
  EXPECT_EQ(state.TriggerCount, 2);
  EXPECT_EQ(Remove(1, 0, "A"), "");
  EXPECT_EQ(Left(), (Texts{"b"}));
}

TEST_F(Triggers, NamesInAngleBracketsStandForThem) {
  Add("<chat>* shouts *");
  Add("<chat>* tells *");
  Add("<other>x");
  Add("chat");
  EXPECT_EQ(Remove(1, 0, "<CHAT>rest is ignored"), "");
  EXPECT_EQ(Left(), (Texts{"<other>x"}));
  EXPECT_EQ(Remove(2, 0, "<other>x"), "Extra characters after the right angle bracket");
  EXPECT_EQ(Remove(2, 0, "<other"), "Missing matching right angle bracket for search string");
  EXPECT_EQ(Remove(1, 0, "<"), "Missing matching right angle bracket for search string");
  EXPECT_EQ(Left(), (Texts{"<other>x"}));
  EXPECT_EQ(Remove(2, 0, "<other>"), "");
  EXPECT_EQ(Left(), Texts{});
}

TEST_F(Triggers, ArePackedInOrderAndSortedOnce) {
  for (int i = 0; i < 6; ++i) Add(std::to_string(i), 0, "", i % 2 == 0 ? int16{4} : int16{5});
  symbols.RemoveCommands(5);
  EXPECT_EQ(state.TriggerCount, 6);
  symbols.CompressCommand(windowtype::Triggers);
  EXPECT_EQ(Left(), (Texts{"0", "2", "4"}));
  EXPECT_EQ(runner.Sorts, 1);
}

TEST(Housekeeping, RemovesByOwnerAndPacksAll) {
  Script script;
  ScriptState& state = script.state;
  state.TabWordCount = 5;
  state.TabWords.Resize(5);
  state.TabOwners.Resize(5);
  const char* words[] = {"ant", "bee", "cat", "dog", "eel"};
  const int16 owners[] = {1, 2, 1, 2, 2};
  for (int32 i = 1; i <= 5; ++i) {
    state.TabWords[i] = words[i - 1];
    state.TabOwners[i] = owners[i - 1];
  }
  state.TabWords[4].clear();  // a free row from before
  script.symbols.RemoveCharacter(1);
  EXPECT_EQ(state.TabWordCount, 2);
  EXPECT_EQ(state.TabWords.UBound(), 2);
  EXPECT_EQ(state.TabWords[1], "bee");
  EXPECT_EQ(state.TabWords[2], "eel");
  EXPECT_EQ(state.TabOwners[2], 2);
}

// One definition of each kind for every pair of buffer 4 or 5 and owner 0, 1 or 2.
void FillAllTables(Script& script) {
  ScriptState& state = script.state;
  std::string error;
  for (int16 n = 1; n <= 6; ++n) {
    const auto buffer = static_cast<int16>(n <= 3 ? 4 : 5);
    const auto owner = static_cast<OwnerId>(n % 3);
    const std::string name(1, static_cast<char>('a' + n));
    script.symbols.AddVariable(name, "v", owner, error);
    script.symbols.AddAlias(name, "v", owner, "", buffer, "v", error);
    script.symbols.Addmacro(static_cast<int16>(64 + n), 0, "v", owner, "", buffer, "v", error);
    script.symbols.resizeCommand(windowtype::Triggers, n);
    script.symbols.resizeCommand(windowtype::Abbreviations, n);
    state.Triggers[n].Pattern = state.Directions[n] = name;
    state.Triggers[n].Buffer = state.AbbreviationBuffers[n] = buffer;
    state.Triggers[n].Owner = state.AbbreviationOwners[n] = owner;
    state.TabWords.Resize(n);
    state.TabOwners.Resize(n);
    state.TabWords[n] = name;
    state.TabOwners[n] = owner;
    state.TriggerCount = state.AbbreviationCount = state.TabWordCount = n;
  }
}

// Rows of variables, aliases, keys, triggers, directions and tab words.
std::vector<int32> Counts(const ScriptState& state) {
  return {state.VariableCount, state.AliasCount,        state.MacroCount,
          state.TriggerCount,  state.AbbreviationCount, state.TabWordCount};
}

TEST(Housekeeping, ABufferTakesItsThreeKindsWithItAndLeavesDirections) {
  Script script;
  FillAllTables(script);
  script.symbols.RemoveCommands(4);
  EXPECT_EQ(Counts(script.state), (std::vector<int32>{6, 6, 6, 6, 6, 6})) << "rows are blanked, not taken out";
  script.symbols.CompressCommand(windowtype::All);
  EXPECT_EQ(Counts(script.state), (std::vector<int32>{6, 3, 3, 3, 6, 6}));
  EXPECT_EQ(script.state.MacroBuffers[1], 5);
  for (int32 row = 1; row <= 6; ++row)
    EXPECT_EQ(script.state.Directions[row], std::string(1, static_cast<char>('a' + row)));
}

TEST(Housekeeping, ACharacterTakesAllKindsWithItButDirections) {
  Script script;
  FillAllTables(script);
  script.symbols.RemoveCharacter(2);
  script.symbols.CompressCommand(windowtype::All);
  EXPECT_EQ(Counts(script.state), (std::vector<int32>{4, 4, 4, 4, 6, 4}));
  for (int32 row = 1; row <= 4; ++row) EXPECT_NE(script.state.AliasOwners[row], 2);
}

TEST(Housekeeping, CompressingTouchesTheNamedTablesOnly) {
  Script script;
  FillAllTables(script);
  script.symbols.RemoveCommands(4);
  script.symbols.CompressCommand(windowtype::Keys | windowtype::Abbreviations);
  EXPECT_EQ(Counts(script.state), (std::vector<int32>{6, 6, 3, 6, 6, 6}));
  EXPECT_EQ(script.runner.Sorts, 0);
}

TEST(SystemVariables, EveryColourNumberHasItsValues) {
  Script script;
  script.symbols.LoadSystemVariables();
  const std::map<std::size_t, int32> display{{0, -1},      {2, -2},        {31, 0xFF},     {32, 0xFF00},
                                             {33, 0xFFFF}, {34, 0xFF0000}, {35, 0xFF00FF}, {36, 0xFFFF00}};
  const std::map<std::size_t, int32> base{{31, 0xFF},     {32, 0xFF00},   {33, 0xFFFF},  {34, 0xFF0000},
                                          {35, 0xFF00FF}, {36, 0xFFFF00}, {37, 0xFFFFFF}};
  const auto in = [](const std::map<std::size_t, int32>& table, std::size_t i) {
    return table.count(i) == 0 ? 0 : table.at(i);
  };
  int names = 0;
  for (std::size_t i = 0; i < 100; ++i) {
    EXPECT_EQ(script.state.ColourValues[i], in(display, i)) << i;
    EXPECT_EQ(script.state.BaseColours[i], in(base, i)) << i;
    if (!script.state.ColourNames[i].empty()) ++names;
  }
  EXPECT_EQ(names, 20);
}

TEST(SystemVariables, NamesFixedValuesAndColours) {
  Script script;
  script.symbols.LoadSystemVariables();
  const ScriptState& state = script.state;
  const std::array<const char*, 24> names{
      "",       "INSTALLFOLDER", "COPYLINE",  "FOUNDLINE",  "REPEATNUM",    "CRLF",      "CR",         "SOCKET",
      "CHAR",   "MUDNAME",       "Reference", "PLAYHANDLE", "MP3LOOP",      "PASSWORD",  "CONNECTED",  "I",
      "VOLUME", "HOMEFOLDER",    "CLIPBOARD", "VERSION",    "SOUNDSFOLDER", "MUDFOLDER", "LOGSFOLDER", "LF"};
  for (std::size_t i = 0; i < names.size(); ++i) EXPECT_EQ(state.SystemNames[i], names[i]);
  EXPECT_EQ(state.SystemValues[sysvar::CRLF], "\r\n");
  EXPECT_EQ(state.SystemValues[sysvar::CR], "\r");
  EXPECT_EQ(state.SystemValues[sysvar::LF], "\n");
  EXPECT_EQ(state.SystemValues[sysvar::MP3LOOP], "0");
  EXPECT_EQ(state.SystemValues[sysvar::VOLUME], "100");
  EXPECT_EQ(state.SystemValues[sysvar::COPYLINE], "");
  EXPECT_GE(state.SystemValues[sysvar::VERSION].size(), 6U);
  EXPECT_EQ(state.ColourNames[0], "NORMAL");
  EXPECT_EQ(state.ColourNames[1], "BRIGHT");
  EXPECT_EQ(state.ColourNames[30], "BLACK");
  EXPECT_EQ(state.ColourNames[37], "WHITE");
  EXPECT_EQ(state.ColourNames[38], "");
  EXPECT_EQ(state.ColourNames[39], "DEFAULT");
  EXPECT_EQ(state.ColourNames[40], "BLACK BACKGROUND");
  EXPECT_EQ(state.ColourNames[45], "MAGENTA BACKGROUND");
  EXPECT_EQ(state.ColourNames[49], "DEFAULT BACKGROUND");
  EXPECT_EQ(state.ColourValues[0], -1);
  EXPECT_EQ(state.ColourValues[1], 0);
  EXPECT_EQ(state.ColourValues[2], -2);
  EXPECT_EQ(state.ColourValues[30], 0);
  EXPECT_EQ(state.ColourValues[31], 0xFF);
  EXPECT_EQ(state.ColourValues[34], 0xFF0000);
  EXPECT_EQ(state.ColourValues[36], 0xFFFF00);
  EXPECT_EQ(state.ColourValues[37], 0);
  EXPECT_EQ(state.BaseColours[33], 0xFFFF);
  EXPECT_EQ(state.BaseColours[35], 0xFF00FF);
  EXPECT_EQ(state.BaseColours[37], 0xFFFFFF);
  EXPECT_EQ(state.BaseColours[30], 0);
}

}  // namespace
}  // namespace corvid
