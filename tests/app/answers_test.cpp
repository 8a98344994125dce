// SPDX-License-Identifier: GPL-3.0-or-later
// Short answers in the whole program: what is only spoken must reach a player who reads with the fingers too.
#include "running_program.h"

namespace corvid {
namespace {

TEST(ShortAnswers, AreWrittenForWhoReadsWithTheFingersAndNothingElseIs) {
  RunningProgram run;
  ASSERT_TRUE(run.Start());
  run.Do("#MUD bob Aard aard.example 4000 Bob secret");
  run.Do("#CONNECT bob");
  EXPECT_EQ(run.memory.face.Answers, Texts()) << "a name is in the title";
  struct Row {
    const char* line;
    Texts answers;
  };
  const std::vector<Row> rows{
      {"#RECORD", {"Recording"}},
      {"look;n", {}},
      {"#ERASE", {"erasing n"}},
      {"#ENDRECORD walk", {}},  // shown in the window
      {"#FIND nosuch Output", {"Not found"}},
      {"#FIND nosuch {Output|Next}", {"No more found."}},
      {"#SAY hello", {}},
      {"#ALIAS hi hello", {}},
  };
  for (const Row& row : rows) {
    run.memory.face.Answers.clear();
    run.Do(row.line);
    EXPECT_EQ(run.memory.face.Answers, row.answers) << row.line;
  }
  run.memory.face.Answers.clear();
  run.memory.sockets.Receive(1, "A crow caws.\r\n");
  EXPECT_EQ(run.memory.face.Answers, Texts()) << "it stands in the window";
}

}  // namespace
}  // namespace corvid
