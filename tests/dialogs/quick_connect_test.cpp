// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/quick_connect.h"

#include <gtest/gtest.h>

#include "core/keys.h"
#include "core/scramble.h"
#include "dialogs/prompts.h"
#include "platform/memory/memory_platform.h"
#include "support_upcalls.h"

namespace corvid {
namespace {

class QuickConnectTest : public testing::Test {
 protected:
  MemoryPlatform memory;
  Platform platform = memory.All();
  RecordingFloors floors{memory.effects};
  SpeechState speech;
  RelayedBoxes questions;  // a question of the dialog is a dialog too
  Upcalls upcalls = floors.With(questions);
  OptionsState options;
  SessionState sessions;
  GenDialog dialog{platform, upcalls, speech};
  Prompts prompts{dialog, speech, platform, upcalls};
  CharacterFile characters{sessions, options, platform, upcalls};
  std::vector<int16> opened;
  int16 inUse = 0;
  QuickConnect quick{sessions,
                     characters,
                     dialog,
                     upcalls,
                     [this](int16 row) { opened.push_back(row); },
                     [this](int16 row) { return row == inUse; }};

  void SetUp() override {
    questions.Real = &prompts;
    options.UserDataFolder = "/data/";
    memory.files.CreateFolder("/data");
    AddRow("Dale", "dale.example", "4000", "Bob", "bob");
    AddRow("Dale", "dale.example", "4000", "Ann", "ann");
    AddRow("Moor", "moor.example", "23", "Cid", "cid");
  }
  void AddRow(const char* mud, const char* host, const char* port, const char* name, const char* ref) {
    const int16 row = AddCharacter(sessions);
    sessions.MudName[row] = mud;
    sessions.HostName[row] = host;
    sessions.Port[row] = port;
    sessions.CharacterName[row] = name;
    sessions.CharacterRef[row] = ref;
  }
  const std::vector<std::string>& Items() { return memory.face.OpenModel()->Controls[1].Items; }
};

TEST_F(QuickConnectTest, ListsEachHostAndPortOnce) {
  std::vector<std::string> items;
  memory.loop.Idle = [&] {
    items = Items();
    memory.face.Will("Cancel    Esc");
    return memory.face.AnswerDialog();
  };
  quick.Show();
  EXPECT_EQ(items, (std::vector<std::string>{"Dale dale.example Port 4000", "Moor moor.example Port 23"}));
  EXPECT_TRUE(opened.empty());
}

TEST_F(QuickConnectTest, TypedHostAndPortGetOneRowHoweverOftenTheyAreUsed) {
  for (int round = 0; round < 2; ++round) {
    memory.face.Will({"Connect", {{3, "new.example"}, {5, "5000"}}, {}, {}});
    quick.Show();
  }
  EXPECT_EQ(opened, (std::vector<int16>{4, 4}));
  EXPECT_EQ(sessions.CharacterCount, 4);
  EXPECT_EQ(sessions.MudName[4], "MUD");
  EXPECT_EQ(sessions.CharacterName[4], "QUICKCONNECT");
  EXPECT_EQ(sessions.HostName[4], "new.example");
  EXPECT_EQ(sessions.Port[4], "5000");
  EXPECT_EQ(sessions.CharacterRef[4], "");
}

TEST_F(QuickConnectTest, ARowOfTheListConnectsWithoutTyping) {
  memory.face.Will({"Connect", {}, {{1, 1}}, {}});
  quick.Show();
  ASSERT_EQ(opened.size(), 1U);
  EXPECT_EQ(sessions.HostName[opened[0]], "moor.example");
  EXPECT_EQ(sessions.Port[opened[0]], "23");
}

TEST_F(QuickConnectTest, WhatIsMissingIsToldAndOpensNothing) {
  memory.face.Will({"Connect", {{3, "new.example"}}, {}, {}});
  quick.Show();
  memory.face.Will({"Connect", {{5, "5000"}}, {}, {}});  // a port is no wish for the game that the list begins with
  quick.Show();
  EXPECT_EQ(memory.effects.Of("showerror"),
            (std::vector<std::string>{"A port number is needed to connect.", "A host name is needed to connect."}));
  EXPECT_TRUE(opened.empty());
  EXPECT_EQ(sessions.CharacterCount, 3) << "no row is left behind";
}

TEST_F(QuickConnectTest, DeleteAsksAndBlanksEveryCharacterOfTheMud) {
  sessions.CharFlags[1] = charflag::AutoLogin;
  sessions.Password[1] = "secret";
  sessions.LastConnected[1] = "2026-01-15 12:00:00";
  int step = 0;
  std::vector<std::string> after;
  memory.loop.Idle = [&] {
    DialogModel& model = *memory.face.OpenModel();
    ++step;
    if (step == 1) {
      int16 key = keycode::Delete;
      int16 shift = 0;
      memory.face.OpenEvents()->DialogHappened(1, DialogEvent::KeyDown, key, shift);
      return true;
    }
    if (model.Code == "MSGBOX") {
      EXPECT_EQ(model.Title, "Delete Character");
      EXPECT_EQ(model.Controls[0].Text,
                "Are you sure you want to delete Dale dale.example and all characters used in this Mud?");
      memory.face.Will("Yes");
    } else {
      after = Items();
      memory.face.Will("Cancel    Esc");
    }
    return memory.face.AnswerDialog();
  };
  quick.Show();
  EXPECT_EQ(after, (std::vector<std::string>{"Moor moor.example Port 23"}));
  const std::string blank = R"("","","","","","","",0,"")"
                            "\r\n";
  const std::string left = R"("Moor","moor.example","","23","Cid","cid","",0,"")"
                           "\r\n";
  EXPECT_EQ(Scramble(memory.files.ReadWhole("/data/Character.mud")), blank + blank + left);
}

TEST_F(QuickConnectTest, AMudThatIsPlayedIsNotDeleted) {
  inUse = 2;
  int step = 0;
  std::string told;
  memory.loop.Idle = [&] {
    if (++step == 1) {
      int16 key = keycode::Delete;
      int16 shift = 0;
      memory.face.OpenEvents()->DialogHappened(1, DialogEvent::KeyDown, key, shift);
      return true;
    }
    const DialogModel& model = *memory.face.OpenModel();
    if (model.Code == "MSGBOX") told = model.Title + ": " + model.Controls[0].Text;
    memory.face.Will(model.Code == "MSGBOX" ? "Ok" : "Cancel    Esc");
    return memory.face.AnswerDialog();
  };
  quick.Show();
  EXPECT_EQ(told, "Delete Character: ann is in use. Disconnect and unload the character before you delete it.");
  EXPECT_EQ(sessions.CharacterRef[1] + sessions.CharacterRef[2], "bobann");
  EXPECT_FALSE(memory.files.FileExists("/data/Character.mud"));
}

TEST_F(QuickConnectTest, NoDeletesNothing) {
  int step = 0;
  memory.loop.Idle = [&] {
    if (++step == 1) {
      int16 key = keycode::Delete;
      int16 shift = 0;
      memory.face.OpenEvents()->DialogHappened(1, DialogEvent::KeyDown, key, shift);
      return true;
    }
    memory.face.Will(memory.face.OpenModel()->Code == "MSGBOX" ? "No" : "Cancel    Esc");
    return memory.face.AnswerDialog();
  };
  quick.Show();
  EXPECT_EQ(sessions.CharacterRef[1] + sessions.CharacterRef[2], "bobann");
  EXPECT_FALSE(memory.files.FileExists("/data/Character.mud"));
}

}  // namespace
}  // namespace corvid
