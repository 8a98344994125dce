// SPDX-License-Identifier: GPL-3.0-or-later
// The menu of recorded walks.
#include "menu_fixture.h"

namespace corvid {

TEST_F(MenuTest, EveryItemOfTheWalkMenuRunsItsCommandAndSaysIt) {
  struct Row {
    const char* item;
    const char* command;
    const char* said;
  };
  for (const Row& row : {Row{"BE", "-2 #record", "1 Recording."}, Row{"ST", "-2 #STOP", "1 stopped."},
                         Row{"PA", "-2 #Pause", "1 Paused."}, Row{"UN", "-2 #UnPause", "1 Unpaused."},
                         Row{"IG", "-2 #ERASE", "1 last command was ignored."}}) {
    OpenWalkMenu();
    script.CommandDepth = 9;
    runner.OnCommand = [&](const std::string&, int16& flags, std::string&, Parameters&, int16&) {
      EXPECT_EQ(script.CommandDepth, 0);
      EXPECT_EQ(flags, option::Interactive);
      EXPECT_FALSE(menu.ListOpen);
    };
    menus.MenuRoutine(std::string("AUTOWALK//") + row.item);
    EXPECT_EQ(Of("command"), Texts{row.command});
    EXPECT_EQ(Spoken().back(), row.said);
    memory.effects.Clear();
  }
}

TEST_F(MenuTest, TheSlowWalkOptionIsToggledAndTheMenuStays) {
  OpenWalkMenu();
  Key(keycode::End);
  Key(keycode::Enter, "\r");
  EXPECT_TRUE(options.SlowWalk);
  EXPECT_EQ(Item(), "Slow Walk Option    On");
  EXPECT_EQ(Spoken().back(), "1w Slow Walk Option    On");
  Key(keycode::Enter, "\r");
  EXPECT_FALSE(options.SlowWalk);
}

TEST_F(MenuTest, FinishingWithoutARecordingIsRefused) {
  OpenWalkMenu();
  for (const auto walkState : std::initializer_list<int16>{0, 1, 6}) {
    state.WalkState[0] = walkState;
    memory.effects.Clear();
    menus.MenuRoutine("AUTOWALK//FI");
    EXPECT_EQ(Spoken(), Texts{"1 No record in progress"});
    EXPECT_EQ(Of("beep").size(), 1u);
  }
}

TEST_F(MenuTest, FinishingAnEmptyRecordingAsksForNothing) {
  state.WalkState[0] = 2;
  menus.MenuRoutine("AUTOWALK//FI");
  EXPECT_EQ(Spoken(), Texts{"1 Nothing is recorded yet"});
  EXPECT_EQ(Of("beep").size(), 1u);
  EXPECT_EQ(Of("dialog"), Texts{});
  EXPECT_EQ(state.WalkState[0], 2) << "the recording goes on";
}

TEST_F(MenuTest, FinishingAsksForTheNameAndWhatIsLeftOut) {
  Record();
  memory.face.Will({"OK", {{1, " home "}}, {}, {{2, 1}, {3, 1}}});
  script.DefiningBuffer = 9;
  std::vector<int16> definingBuffers;
  runner.OnCommand = [&](const std::string&, int16&, std::string&, Parameters&, int16&) {
    definingBuffers.push_back(script.DefiningBuffer);
  };
  OpenWalkMenu();
  menus.MenuRoutine("AUTOWALK//FI");
  EXPECT_EQ(Of("dialog"), Texts{"AUTOWALK Finish Recording|Name|Add Script line to..."});
  EXPECT_EQ(Of("command"), (Texts{"-2 #EndRecord home Direction|Compress", "-2 #EndRecord home Direction|Compress"}))
      << "checked, then done";
  EXPECT_EQ(definingBuffers, (std::vector<int16>{0, 0})) << "New Lines";
  EXPECT_EQ(script.DefiningBuffer, 9) << "a script that is being loaded goes on as before";
  EXPECT_FALSE(menu.ListOpen);
}

TEST_F(MenuTest, FinishingIntoAScript) {
  Edit("");
  scriptFiles.MoveBuffers(buffer::EntryLine);
  Record();
  memory.face.Will({"OK", {{1, "mill"}}, {{5, 1}}, {}});
  int16 defining = 0;
  std::vector<int16> flags;
  runner.OnCommand = [&](const std::string&, int16& given, std::string&, Parameters&, int16&) {
    defining = script.DefiningBuffer;
    flags.push_back(given);
  };
  menus.MenuRoutine("AUTOWALK//FI");
  EXPECT_EQ(Of("command").front(), "-2 #EndRecord mill Save");
  EXPECT_EQ(defining, 4);
  EXPECT_EQ(flags, (std::vector<int16>{12, 8}));
}

TEST_F(MenuTest, ACheckThatFailsIsNotFollowedByTheCommand) {
  Record();
  memory.face.Will({"OK", {{1, "x}"}}, {}, {}});
  runner.OnCommand = [](const std::string&, int16&, std::string& problem, Parameters&, int16&) { problem = "bad"; };
  menus.MenuRoutine("AUTOWALK//FI");
  EXPECT_EQ(Of("command").size(), 1u);
}

TEST_F(MenuTest, ARecordingIsFinishedWithANameOrNotAtAll) {
  Record();
  memory.face.Will("OK");
  memory.face.Will({"OK", {{1, "old mill"}}, {}, {}});
  memory.face.Will("Cancel");
  menus.MenuRoutine("AUTOWALK//FI");
  EXPECT_NE(std::find(Spoken().begin(), Spoken().end(), "5 The walk needs a name."), Spoken().end());
  EXPECT_NE(std::find(Spoken().begin(), Spoken().end(), "5 The name of a walk is one word."), Spoken().end())
      << "nothing that is typed would call it";
  EXPECT_EQ(Of("command"), Texts{});
  EXPECT_EQ(memory.face.AnswersLeft(), 0u);
}

}  // namespace corvid
