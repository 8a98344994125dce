// SPDX-License-Identifier: GPL-3.0-or-later
// Slots that change hands while somebody waits: for an answer of the player, for a script that is loaded.
#include <utility>

#include "fixture.h"

namespace corvid {
namespace {

class SlotReuseTest : public SessionTest {
 protected:
  // A slot whose character is asked about before it goes.
  int16 ClosedWithAQuestion(const std::string& reference) {
    const int16 slot = Online(reference);
    memory.files.Put("/data/Mud" + reference + "/" + reference + "-var.set", "#old\r\n");
    memory.sockets.CloseByPeer(slot);
    memory.effects.Clear();
    return slot;
  }
  // Runs work at the first box alone.
  void AtTheFirstBox(std::function<void()> work) {
    atFirstBox_ = std::move(work);
    prompter.OnBox = [this] {
      if (auto once = std::exchange(atFirstBox_, nullptr)) once();
    };
  }

 private:
  std::function<void()> atFirstBox_;
};

TEST_F(SlotReuseTest, ConnectsToItsOwnHostWhateverIsOpenedMeanwhile) {
  const int16 slot = ClosedWithAQuestion("bob");
  const int16 amy = Character("Aard", "Amy", "amy");
  const int16 cem = Character("Zork", "Cem", "cem");
  AtTheFirstBox([&] { EXPECT_EQ(sessions.OpenMud(cem, 0), 0); });
  EXPECT_EQ(sessions.OpenMud(amy, 0), 0);
  EXPECT_EQ(state.SessionRef[slot], "cem");
  EXPECT_EQ(memory.sockets.Host(slot), "Zork.example");
  EXPECT_EQ(state.SessionRef[2], "amy");
  EXPECT_EQ(memory.sockets.Host(2), "Aard.example") << "a password must not reach the other game";
}

TEST_F(SlotReuseTest, LeavesACharacterThatComesBackItsSlot) {
  const int16 slot = ClosedWithAQuestion("bob");
  AtTheFirstBox([&] { EXPECT_EQ(sessions.OpenMud(1, 0), 0); });
  EXPECT_EQ(sessions.OpenMud(Character("Aard", "Amy", "amy"), 0), 0);
  EXPECT_EQ(state.SessionRef[slot], "bob");
  EXPECT_TRUE(memory.sockets.Connecting(slot));
  EXPECT_EQ(state.SessionRef[2], "amy");
}

TEST_F(SlotReuseTest, RefusesACharacterThatWasConnectedMeanwhile) {
  ClosedWithAQuestion("bob");
  const int16 amy = Character("Aard", "Amy", "amy");
  AtTheFirstBox([&] {
    sessions.OpenMud(amy, 0);
    Pass(1);
  });
  EXPECT_EQ(sessions.OpenMud(amy, 0), -1);
  EXPECT_EQ(state.SessionHigh, 1);
  EXPECT_EQ(Of("box").back(), "Connect Character|Character Aard Amy already connected. |yesno");
}

TEST_F(SlotReuseTest, LogsInOnlyTheCharacterOfTheConnection) {
  Alias("OnConnect", "hello");
  Alias("login", "log me in");
  const int16 bob = Character("Aard", "Bob", "bob", charflag::AutoLogin);
  const int16 cem = Character("Zork", "Cem", "cem");
  memory.files.Put("/data/Aard/bob.set", "#slow\r\n");
  runner.OnCommand = [&](const std::string& line, int16&, std::string&, Parameters&, int16&) {
    if (line != "#slow") return;
    memory.sockets.CloseByPeer(1);
    EXPECT_EQ(sessions.OpenMud(cem, 0), 0);
    EXPECT_EQ(state.SessionRef[1], "cem");
  };
  sessions.OpenMud(bob, 0);
  Pass(0);
  Pass(1);
  Texts greetings;
  for (const std::string& line : Of("command"))
    if (line.find('#') == std::string::npos) greetings.push_back(line);
  EXPECT_EQ(greetings, (Texts{"1 hello"})) << "cem's alone, and cem does not log in";
  EXPECT_TRUE(memory.sockets.Connected(1));
}

TEST_F(SlotReuseTest, TellsOfflineWorkToItsOwnWindow) {
  const int16 bob = Character("Aard", "Bob", "bob");
  const int16 cem = Character("Zork", "Cem", "cem");
  memory.files.Put("/data/Aard/bob.set", "#slow\r\n");
  runner.OnCommand = [&](const std::string& line, int16&, std::string&, Parameters&, int16&) {
    if (line == "#slow") sessions.OpenMud(cem, opening::Offline);
  };
  sessions.OpenMud(bob, opening::Offline);
  EXPECT_EQ(state.SessionRef[0], "cem");
  EXPECT_EQ(Screen(0), "Working Offline.");
}

TEST_F(SlotReuseTest, ClosesOnlyTheConnectionThatWasAskedAbout) {
  const int16 slot = Online("bob");
  AtTheFirstBox([&] {
    memory.sockets.CloseByPeer(slot);
    sessions.OpenMud(Character("Zork", "Cem", "cem"), 0);
    Pass(1);
  });
  prompter.answers = {box::ResultYes};
  sessions.CloseMud(slot);
  EXPECT_EQ(state.SessionRef[slot], "cem");
  EXPECT_TRUE(memory.sockets.Connected(slot));
}

// What a slot keeps when another game begins in it, and what it does not.
TEST_F(SlotReuseTest, ClearsWhatBelongsToTheOldGame) {
  const int16 slot = Online("bob");
  Receives(slot, "old text\r\nheld");
  state.OutputBuffer[slot] = "waiting";
  for (Table<char>* enabled : {&state.TriggerEnabled, &state.AliasEnabled, &state.KeyEnabled, &state.LogEntriesEnabled})
    (*enabled)[slot] = 0;
  state.GagFlags[slot] = gag::OnSpeech;
  state.PassThruPattern[slot] = "x";
  state.WalkBuffer[slot] = "n;";
  memory.sockets.CloseByPeer(slot);
  const std::string oldLog = "/data/logs/bob 2026-01-15 12.0.txt";
  ASSERT_TRUE(memory.files.FileExists(oldLog));
  const std::string logged = memory.files.ReadWhole(oldLog);
  EXPECT_EQ(sessions.OpenMud(Character("Zork", "Cem", "cem"), 0), 0);
  Pass(1);
  EXPECT_EQ(Screen(slot), "");
  EXPECT_EQ(state.EditViewPortR[slot]->Text(), "");
  EXPECT_EQ(state.OutputBuffer[slot] + state.PartialLine[slot], "");
  for (Table<char>* enabled : {&state.TriggerEnabled, &state.AliasEnabled, &state.KeyEnabled, &state.LogEntriesEnabled})
    EXPECT_EQ((*enabled)[slot], 1);
  EXPECT_EQ(state.GagFlags[slot], gag::OnSpeech) << "a gag ends by its commands alone";
  EXPECT_EQ(state.PassThruPattern[slot] + state.WalkBuffer[slot], "xn;");
  Receives(slot, "new\r\n");
  EXPECT_EQ(memory.files.ReadWhole(oldLog), logged) << "the new game has a log of its own";
  EXPECT_EQ(memory.files.ReadWhole("/data/logs/cem 2026-01-15 12.0.txt"), "new\r\n");
}

TEST_F(SlotReuseTest, SwitchesTheClassAlsoOfASessionThatWasJustOpened) {
  std::string error;
  Parameters rvar;
  int16 flags = 0;
  int16 channel = 0;
  Online("bob");
  sessions.SetCharacter("bob", flags, error, rvar, channel);
  EXPECT_TRUE(symbols.InClass("bob", 0));
  Online("amy");
  sessions.SetCharacter("amy", flags, error, rvar, channel);
  EXPECT_TRUE(symbols.InClass("amy", 0));
  EXPECT_FALSE(symbols.InClass("bob", 0)) << "keys of bob's class are not amy's";
}

}  // namespace
}  // namespace corvid
