// SPDX-License-Identifier: GPL-3.0-or-later
// The build that moves tables must change nothing that a player can tell.
#include "app/moving_tables.h"

#include <gtest/gtest.h>

#include "app/corvid.h"
#include "platform/memory/memory_platform.h"

namespace corvid {
namespace {

TEST(MovingTables, EveryLookupStaysRightHoweverOftenTheTablesMove) {
  MemoryPlatform memory;
  Corvid corvid(memory.All());
  Symbols& symbols = corvid.symbols;
  std::string error;
  for (const char* name : {"hi", "bye", "zap"}) {
    symbols.AddAlias(name, std::string("say ") + name, 0, "", 0, name, error);
    symbols.AddVariable(name, name, 0, error);
  }
  symbols.Addmacro(112, 0, "look", 0, "", 0, "look", error);
  for (int moves = 0; moves < 5; ++moves) {
    const int16 before = symbols.FindAlias("HI", 0, true);
    MoveByARow(corvid.scriptState);
    const int16 row = symbols.FindAlias("HI", 0, true);
    ASSERT_NE(row, 0);
    EXPECT_NE(row, before) << "a row number from before the move must be wrong";
    EXPECT_EQ(corvid.scriptState.AliasValues[row], "say hi");
    std::string value;
    EXPECT_NE(symbols.FindVariable("zap", value, 0), 0);
    EXPECT_EQ(value, "zap");
    EXPECT_EQ(corvid.scriptState.MacroValues[symbols.FindMacro(112, 0, 0, true)], "look");
  }
  symbols.CompressCommand(0xFFFF);
  EXPECT_EQ(corvid.scriptState.AliasCount, 3);
  EXPECT_EQ(corvid.scriptState.MacroCount, 1);
}

}  // namespace
}  // namespace corvid
