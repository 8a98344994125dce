// SPDX-License-Identifier: GPL-3.0-or-later
// A question that is asked and answered by voice and keys alone.
#include "core/keys.h"
#include "running_program.h"

namespace corvid {
namespace {

class SpokenQuestion : public testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(run.Start()); }
  // The answer to InputBox2 of a player who presses these keys, one whenever the program waits.
  std::string Answer(std::vector<int16> keys) {
    std::size_t next = 0;
    run.memory.loop.Idle = [&] {
      if (next >= keys.size()) return run.memory.face.AnswerDialog();
      run.corvid.keyboard.KeyDown(keys[next++], 0);
      return true;
    };
    run.memory.effects.Clear();
    return run.corvid.upcalls.prompter.InputBox2("Name?", "Title", "start");
  }
  RunningProgram run;
};

TEST_F(SpokenQuestion, IsAnsweredWithoutAWindow) {
  EXPECT_EQ(Answer({'B', 'O', keycode::Backspace, 'I', keycode::Enter}), "bi");
  EXPECT_EQ(run.memory.effects.Of("speech"), (Texts{"1 Name?", "1 b", "1 o", "1 o", "1 i"}));
  EXPECT_TRUE(run.Asked().empty());
  EXPECT_EQ(Answer({'B', keycode::Escape}), "");
}

TEST_F(SpokenQuestion, IsADialogForWhoUsesAScreenReader) {
  run.corvid.speech.TTSSetup(1);
  run.memory.face.Will("Cancel");
  EXPECT_EQ(Answer({}), "");
  ASSERT_EQ(run.Asked().size(), 1u);
  EXPECT_NE(run.Asked()[0].find("Name?"), std::string::npos);
}

}  // namespace
}  // namespace corvid
