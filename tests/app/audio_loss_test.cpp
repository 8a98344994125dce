// SPDX-License-Identifier: GPL-3.0-or-later
// The sound device goes while a game is played, and comes back: with it every voice and every sound.
#include <algorithm>

#include "running_program.h"

namespace corvid {
namespace {

const Texts Gone{"The sound device is gone. Voices and sounds are heard again as soon as there is one."};

class AudioLoss : public testing::Test {
 protected:
  void SetUp() override {
    run.memory.PutSound("/data/Sounds/hit.wav", 400);
    run.memory.PutSound("/data/Sounds/theme.mp3", 10000);
    run.StartAndConnect(0);
    run.memory.loop.Pass(600);  // the job of the start
    run.memory.effects.Clear();
  }
  void Unplug() {
    run.memory.effects.Clear();
    run.memory.PlugAudio(false);
    run.memory.loop.Pass(10);
  }
  Texts Played() {
    Texts played = run.memory.effects.Of("sound");
    std::erase_if(played, [](const std::string& line) { return !line.starts_with("play "); });
    return played;
  }

  RunningProgram run;
};

TEST_F(AudioLoss, IsToldOnTheScreenOnceAndNoErrorFollows) {
  run.Do("#PLAYLOOP theme.mp3");
  Unplug();
  for (int i = 0; i < 50; ++i) {
    run.Do("#PLAY hit.wav");
    run.memory.sockets.Receive(1, "!!SOUND(hit.wav V=50)\r\n");
    run.memory.loop.Pass(100);
  }
  EXPECT_EQ(run.memory.effects.Of("notice"), Gone);
  EXPECT_EQ(run.memory.effects.Of("sound"), Texts());
  EXPECT_EQ(run.Asked(), Texts());
  EXPECT_EQ(run.ErrorLog(), "");
  // The next loss is told again.
  run.memory.PlugAudio(true);
  Unplug();
  EXPECT_EQ(run.memory.effects.Of("notice"), Gone);
}

TEST_F(AudioLoss, LeavesTheWindowTheLogAndTheGameAsTheyAre) {
  run.Do("#TRIGGER {*hits you*} {#PLAY hit.wav;flee}");
  Unplug();
  run.memory.sockets.Receive(1, "Bob hits you.\r\nYou are hurt.\r\n");
  EXPECT_EQ(run.memory.effects.Of("speech"), Texts());
  EXPECT_EQ(run.memory.sockets.TakeWritten(1), "flee\r\n");
  EXPECT_NE(run.corvid.sessionState.OutputWindow(1).Text().find("flee\r\nBob hits you.\r\nYou are hurt."),
            std::string::npos)
      << run.corvid.sessionState.OutputWindow(1).Text();
  const Texts logs = run.memory.files.FileNames("/data/logs");
  ASSERT_EQ(logs.size(), 1U);
  EXPECT_NE(run.Read("/data/logs/" + logs[0]).find("Bob hits you.\r\nflee\r\nYou are hurt.\r\n"), std::string::npos);
  run.Do("#SAVE");
  EXPECT_EQ(run.ErrorLog(), "");
}

TEST_F(AudioLoss, ComesBackWithTheSoundsAndWordsOfThenOn) {
  Unplug();
  run.Do("#PLAY hit.wav");
  run.memory.sockets.Receive(1, "one\r\n");
  run.memory.loop.Pass(5000);  // what nobody has heard has come to its end
  run.memory.PlugAudio(true);
  run.memory.effects.Clear();
  run.memory.loop.Pass(1000);
  EXPECT_EQ(Played(), Texts());
  run.Do("#PLAY hit.wav");
  run.memory.sockets.Receive(1, "two\r\n");
  EXPECT_EQ(Played().size(), 1U);
  EXPECT_EQ(run.memory.effects.Of("speech"), Texts({"1 two"}));
}

TEST_F(AudioLoss, LoopingMusicIsKeptGoingThroughIt) {
  run.Do("#PLAYLOOP theme.mp3");
  EXPECT_EQ(Played().size(), 1U);
  Unplug();
  run.memory.loop.Pass(65000);  // six ends of the tune
  run.memory.PlugAudio(true);
  run.memory.effects.Clear();
  run.memory.loop.Pass(25000);
  EXPECT_GE(Played().size(), 1U) << run.memory.effects.Transcript();
  run.Do("#PC 0 STOP");
  run.memory.effects.Clear();
  run.memory.loop.Pass(25000);
  EXPECT_EQ(Played(), Texts());
}

}  // namespace
}  // namespace corvid
