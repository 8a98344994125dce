// SPDX-License-Identifier: GPL-3.0-or-later
#include "commands/walk_steps.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace corvid {

namespace {

AbbreviationTable Directions(const std::vector<std::pair<std::string, std::string>>& pairs) {
  AbbreviationTable table;
  table.AbbreviationCount = static_cast<int16>(pairs.size());
  table.Directions.Resize(table.AbbreviationCount);
  table.OppositeDirections.Resize(table.AbbreviationCount);
  for (int16 row = 1; row <= table.AbbreviationCount; ++row) {
    table.Directions[row] = pairs[static_cast<std::size_t>(row - 1)].first;
    table.OppositeDirections[row] = pairs[static_cast<std::size_t>(row - 1)].second;
  }
  return table;
}

const AbbreviationTable& Compass() {
  static const AbbreviationTable table = Directions({{"N", "S"}, {"S", "N"}, {"E", "W"}, {"W", "E"}});
  return table;
}

constexpr RecordingWishes Plain{};
constexpr RecordingWishes DirectionsOnly{.DirectionsOnly = true};
constexpr RecordingWishes Compress{.Compress = true};
constexpr RecordingWishes Both{true, true};

}  // namespace

TEST(WalkSteps, ARecordingIsTidied) {
  struct Row {
    const char* recorded;
    RecordingWishes wishes;
    const char* steps;
  };
  const std::vector<Row> rows{
      {"", Plain, ""},
      {";", Plain, ""},
      {"n;", Plain, "N"},
      {"n;look;get all;", Plain, "N;look;get all"},
      {";n;s;", Plain, "N;S"},
      {"n;;;s;", Plain, "N;S"},
      {"get all;n;", DirectionsOnly, "N"},
      {"get all;look;", DirectionsOnly, ""},
      {"n;get all;;e;", DirectionsOnly, "N;E"},
      {"n;s;e;", Compress, "E"},
      {"n;e;w;s;e;", Compress, "E"},
      {"n;e;w;s;", Compress, ""},
      {"look;n;e;s;n;w;s;", Compress, "look"},
      {"n;s;n;s;", Compress, ""},
      {"n;look;s;", Compress, "N;look;S"},
      {"n;look;s;", Both, ""},
      {"nn;s;n;ss;", Compress, "nn;ss"},
      {"N;sOuTh;", Plain, "N;sOuTh"},
  };
  for (const Row& row : rows)
    EXPECT_EQ(RecordedSteps(Compass(), row.recorded, ";", row.wishes), row.steps) << row.recorded;
}

TEST(WalkSteps, StepsUndoEachOtherOnlyInTheOrderOfTheTable) {
  const AbbreviationTable oneWay = Directions({{"N", "S"}});
  EXPECT_EQ(RecordedSteps(oneWay, "n;s;e;", ";", Compress), "N;s;e") << "only directions are written in upper case";
  EXPECT_EQ(RecordedSteps(Directions({{"N", "S"}, {"S", ""}}), "s;n;e;n;s;", ";", Compress), "S;N;e");
}

TEST(WalkSteps, OfADirectionWithoutAnOppositeOnlyTheLastStepIsTakenAway) {
  const AbbreviationTable lonely = Directions({{"ENTER", ""}});
  struct Row {
    const char* recorded;
    const char* steps;
  };
  for (const Row& row : {Row{"enter;", ""}, Row{"n;enter;", "n"}, Row{"enter;n;", "ENTER;n"},
                         Row{"enter;enter;", "ENTER"}, Row{"enter;n;enter;", "ENTER;n"}, Row{"enter", "ENTER"}})
    EXPECT_EQ(RecordedSteps(lonely, row.recorded, ";", Compress), row.steps) << row.recorded;
  EXPECT_EQ(RecordedSteps(lonely, "n;enter;", ";", Plain), "n;ENTER") << "only where detours are taken out";
}

TEST(WalkSteps, BackwardsIsTheLastStepFirstEachTurnedRound) {
  struct Row {
    const char* there;
    const char* back;
  };
  for (const Row& row : {Row{"N;E", "W;S"}, Row{"n;e", "W;S"}, Row{"N;open gate;E", "W;open gate;S"},
                         Row{"look", "look"}, Row{"", ""}, Row{"N", "S"}})
    EXPECT_EQ(WalkBackwards(Compass(), row.there, ";"), row.back) << row.there;
  const AbbreviationTable twice = Directions({{"IN", "OUT"}, {"IN", "LEAVE"}});
  EXPECT_EQ(WalkBackwards(twice, "IN", ";"), "OUT") << "the first row counts";
}

TEST(WalkSteps, ASeparatorMayBeAnythingOrNothing) {
  EXPECT_EQ(RecordedSteps(Compass(), "n//e//", "//", Plain), "N//E");
  EXPECT_EQ(WalkBackwards(Compass(), "N//E", "//"), "W//S");
  EXPECT_EQ(RecordedSteps(Compass(), "ne", "", Compress), "ne");
  EXPECT_EQ(WalkBackwards(Compass(), "ne", ""), "ne");
  std::string steps = "ne";
  bool more = true;
  EXPECT_EQ(TakeStep(steps, "", more), "ne");
  EXPECT_FALSE(more);
}

TEST(WalkSteps, StepsAreTakenOffTheFront) {
  std::string steps = "n;;e";
  bool more = false;
  EXPECT_EQ(TakeStep(steps, ";", more), "n");
  EXPECT_TRUE(more);
  EXPECT_EQ(TakeStep(steps, ";", more), "");
  EXPECT_TRUE(more);
  EXPECT_EQ(TakeStep(steps, ";", more), "e");
  EXPECT_FALSE(more);
  EXPECT_EQ(steps, "");
}

TEST(WalkSteps, ALongRecordingIsTidiedWithoutHaste) {
  std::string there;
  for (int i = 0; i < 20000; ++i) there += i % 2 == 0 ? "n;" : "s;";
  EXPECT_EQ(RecordedSteps(Compass(), there, ";", Compress), "");
  std::string nested;
  for (int i = 0; i < 1000; ++i) nested += i < 500 ? "n;" : "s;";
  EXPECT_EQ(RecordedSteps(Compass(), nested, ";", Compress), "");
}

}  // namespace corvid
