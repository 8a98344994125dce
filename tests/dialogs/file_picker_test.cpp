// SPDX-License-Identifier: GPL-3.0-or-later
// The list of files and folders from which a player picks.
#include "core/keys.h"
#include "prompts_fixture.h"

namespace corvid {
namespace {

TEST_F(PromptsTest, FilePickerWalksIntoFoldersAndTakesAFile) {
  memory.files.Put("/data/scripts/fight.set", "x");
  memory.files.Put("/data/scripts/notes.txt", "x");
  int step = 0;
  std::vector<std::string> inside;
  memory.loop.Idle = [&] {
    DialogModel& model = *memory.face.OpenModel();
    if (step++ == 0) {
      EXPECT_EQ(model.Controls[2].Items, (std::vector<std::string>{".. [folder]", "scripts [folder]"}));
      model.Controls[2].ListIndex = 1;
      Tell(2, DialogEvent::DoubleClick);
    } else {
      inside = model.Controls[2].Items;
      model.Controls[2].ListIndex = 1;
      Tell(2, DialogEvent::DoubleClick);
    }
    return true;
  };
  std::string error;
  std::string name;
  prompts.FolderDialog2("", "*.set", 0, "Select", error, name, "/data");
  EXPECT_EQ(name, "/data/scripts/fight.set");
  EXPECT_EQ(inside, (std::vector<std::string>{".. [folder]", "fight.set"}));
  EXPECT_EQ(error, "");
}

TEST_F(PromptsTest, FilePickerDescendsAndAcceptsWithEnter) {
  memory.files.Put("/data/scripts/fight.set", "x");
  int16 left = -1;
  memory.loop.Idle = [&] {
    memory.face.OpenModel()->Controls[2].ListIndex = 1;
    left = Tell(2, DialogEvent::KeyDown, keycode::Enter);
    EXPECT_EQ(left, 0) << "or the default button would be pressed as well";
    return true;
  };
  std::string error;
  std::string name;
  prompts.FolderDialog2("", "*.set", 0, "Select", error, name, "/data");
  EXPECT_EQ(name, "/data/scripts/fight.set");
}

TEST_F(PromptsTest, FilePickerTakesTheRowUnderTheHandsWithOk) {
  memory.files.Put("/data/fight.set", "x");
  memory.files.CreateFolder("/data/more");
  const auto meet = [&](int32 row) {
    memory.face.OpenModel()->Controls[2].ListIndex = row;
    Tell(2, DialogEvent::Click);
    return memory.face.OpenModel()->Controls[1].Text;
  };
  memory.loop.Idle = [&] {
    EXPECT_EQ(meet(1), "start.set") << "what was there stays at a folder";
    EXPECT_EQ(meet(2), "fight.set");
    EXPECT_EQ(meet(1), "");
    EXPECT_EQ(meet(2), "fight.set");
    Tell(PlaceOfButton("OK"), DialogEvent::Click);
    return true;
  };
  std::string error;
  std::string name;
  prompts.FolderDialog2("start.set", "*.set", 0, "Select", error, name, "/data");
  EXPECT_EQ(name, "/data/fight.set");
}

TEST_F(PromptsTest, FilePickerOfThePlayersFilesHasACodeOfItsOwn) {
  memory.files.Put("/data/scripts/fight.set", "x");
  memory.face.Will("Cancel");
  memory.face.Will("Cancel");
  std::string error;
  std::string name;
  prompts.FolderDialog("scripts/fight.set", "*.set", 0, "Select", error, name, "/data/");
  prompts.FolderDialog2("", "*.set", 0, "Select", error, name, "/data/");
  EXPECT_EQ(memory.effects.Of("dialog"),
            (std::vector<std::string>{"FOLDER Select|File name", "FOLDER2 Select|File name"}));
  EXPECT_EQ(name, "");
}

TEST_F(PromptsTest, FilePickerRefusesAFileThatIsNotThere) {
  memory.files.Put("/data/a.set", "x");
  int step = 0;
  memory.loop.Idle = [&] {
    memory.face.OpenModel()->Controls[1].Text = "none.set";
    Tell(PlaceOfButton(step++ == 0 ? "OK" : "Cancel"), DialogEvent::Click);
    return true;
  };
  std::string error;
  std::string name;
  prompts.FolderDialog2("", "*.set", 0, "Select", error, name, "/data");
  EXPECT_EQ(name, "");
  EXPECT_EQ(step, 2) << "the dialog must stay open after the refusal";
}

}  // namespace
}  // namespace corvid
