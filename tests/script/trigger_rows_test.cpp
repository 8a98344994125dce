// SPDX-License-Identifier: GPL-3.0-or-later
// The trigger table: its order, and what it tells the matcher about its changes.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "core/fault.h"
#include "fakes.h"

namespace corvid {
namespace {

using testing_script::Script;
using testing_script::Texts;

Texts Keys(const TriggerRows& rows) {
  Texts keys;
  for (int32 row = 1; row <= rows.UBound(); ++row) keys.push_back(rows.Read(row).SortKey + rows.Read(row).SearchText);
  return keys;
}

TEST(TriggerRows, SortByKeyAndKeepTheOrderOfEqualOnes) {
  std::mt19937 random(5);
  for (int round = 0; round < 200; ++round) {
    TriggerRows rows;
    Texts expected;
    const int steps = static_cast<int>(random() % 6);
    for (int step = 0; step <= steps; ++step) {
      const int added = step == 0 ? 12 : static_cast<int>(random() % 3);
      for (int i = 0; i < added; ++i) {
        rows.Resize(rows.UBound() + 1);
        TriggerRecord& record = rows[rows.UBound()];
        record.SortKey = std::string(1, static_cast<char>('0' + random() % 4));
        record.SearchText = std::to_string(rows.UBound());
        expected.push_back(record.SortKey + record.SearchText);
      }
      if (random() % 3 == 0 && rows.UBound() > 2) {
        rows[2].SortKey = expected[1][0] = '9';
      }
      std::stable_sort(expected.begin(), expected.end(),
                       [](const std::string& a, const std::string& b) { return a[0] < b[0]; });
      rows.Sort(rows.UBound());
      ASSERT_EQ(Keys(rows), expected);
    }
  }
}

TEST(TriggerRows, FewerRowsThanWereSortedCanBeSorted) {
  TriggerRows rows;
  rows.Resize(6);
  for (int32 row = 1; row <= 6; ++row) rows[row].SortKey = std::to_string(row);
  rows.Sort(6);
  rows.Sort(2);
  rows.Sort(0);
  rows[1].SortKey = "9";
  rows.Sort(6);
  EXPECT_EQ(Keys(rows), (Texts{"2", "3", "4", "5", "6", "9"}));
}

TEST(TriggerRows, RowsOutsideAreFaults) {
  TriggerRows rows;
  rows.Resize(2);
  EXPECT_THROW(rows[3].Buffer = 1, Fault);
  EXPECT_THROW(static_cast<void>(rows.Read(-1)), Fault);
  EXPECT_THROW(rows.Resize(-1), Fault);
}

TEST(TriggerRows, TellWhatWasHandedOutForWriting) {
  TriggerRows rows;
  rows.Resize(3);
  for (int32 row = 1; row <= 3; ++row) rows.SetMark(row, 10 * row);
  const std::uint64_t version = rows.Version();
  static_cast<void>(rows.Read(2));
  EXPECT_EQ(rows.Version(), version);
  rows.Swap(1, 3);
  EXPECT_GT(rows.Version(), version);
  EXPECT_EQ(rows.Mark(1), 30);
  rows[1].Pattern = "x";
  EXPECT_EQ(rows.Mark(1), 0);
  EXPECT_EQ(rows.Mark(2), 20);
  const TriggerRows copy(rows);
  EXPECT_EQ(copy.Mark(2), 0);
  EXPECT_EQ(copy.Read(1).Pattern, "x");
}

TEST(TriggerRows, NumberANameWithoutRegardToCase) {
  TriggerRows rows;
  rows.Resize(2);
  rows[1].SearchText = "<Chat>rest";
  rows[2].SearchText = "other";
  EXPECT_EQ(rows.NameNumber(1), TriggerRows::NumberOfName("CHAT"));
  EXPECT_NE(rows.NameNumber(1), rows.NameNumber(2));
  rows[1].SearchText = "OTHER";
  EXPECT_EQ(rows.NameNumber(1), rows.NameNumber(2));
}

// Only ten pieces of a trigger move down with it.
TEST(CompressTriggers, LeavesPiecesBehindTheTenthInTheirRow) {
  Script script;
  ScriptState& state = script.state;
  state.TriggerCount = 3;
  state.Triggers.Resize(3);
  for (int32 row = 1; row <= 3; ++row) {
    TriggerRecord& record = state.Triggers[row];
    record.Pattern = "*";
    for (int32 slot = 1; slot <= 12; ++slot)
      record.Parts[slot] = record.Names[slot] = std::to_string(row) + "." + std::to_string(slot);
  }
  state.Triggers[1].Pattern.clear();
  script.symbols.CompressCommand(windowtype::Triggers);
  ASSERT_EQ(state.TriggerCount, 2);
  EXPECT_EQ(state.Triggers.Read(1).Parts[10], "2.10");
  EXPECT_EQ(state.Triggers.Read(1).Parts[11], "1.11");
  EXPECT_EQ(state.Triggers.Read(1).Names[12], "1.12");
  EXPECT_EQ(state.Triggers.Read(2).Names[10], "3.10");
  EXPECT_EQ(state.Triggers.Read(2).Parts[11], "2.11");
}

}  // namespace
}  // namespace corvid
