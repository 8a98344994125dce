// SPDX-License-Identifier: GPL-3.0-or-later
// A device that goes away while the program runs, and comes back.
#include <atomic>
#include <chrono>
#include <future>
#include <memory>
#include <mutex>
#include <thread>

#include "platform/openal/device.h"
#include "sound_rig.h"

namespace corvid {
namespace {

class DeviceLoss : public SoundRig {
 protected:
  DeviceLoss()
      : SoundRig({.loopback = true, .loopbackRate = Rate, .loopbackChannels = 2, .notice = [this](std::string text) {
                    const std::lock_guard lock(mutex_);
                    told_.push_back(std::move(text));
                  }}) {}
  std::vector<std::string> Told() {
    const std::lock_guard lock(mutex_);
    return told_;
  }

 private:
  std::mutex mutex_;
  std::vector<std::string> told_;
};

const std::vector<std::string> Gone{
    "The sound device is gone. Voices and sounds are heard again as soon as there is one."};

TEST_F(DeviceLoss, IsToldOnceEachTime) {
  EXPECT_EQ(Told(), std::vector<std::string>{});
  mixer.SetPlugged(false);
  EXPECT_EQ(Told(), Gone);
  mixer.SetPlugged(false);
  EXPECT_EQ(Told(), Gone);
  mixer.SetPlugged(true);
  EXPECT_EQ(Told(), Gone);
  mixer.SetPlugged(false);
  EXPECT_EQ(Told().size(), 2U);
}

TEST_F(DeviceLoss, SoundsEndInTimeWhileThereIsNone) {
  const auto data = LoadFrames(RampFrames(20'000));
  const auto loaded = Player(data);
  const auto looping = Player(data);
  const auto streamed = Streamed(folder.Path("test.wav"));
  const auto standing = Player(data);
  loaded->Play(false);
  looping->Play(true);
  streamed->Play(false);
  Render(5000);
  mixer.SetPlugged(false);
  for (SoundPlayer* player : {loaded.get(), looping.get(), streamed.get()}) EXPECT_TRUE(player->IsPlaying());
  EXPECT_FALSE(standing->IsPlaying());
  EXPECT_EQ(Render(5000), Frames(5000)) << "silence";
  EXPECT_TRUE(loaded->IsPlaying());
  EXPECT_TRUE(WaitFor([&] {
    Render(512);
    return !loaded->IsPlaying() && !streamed->IsPlaying();
  }));
  EXPECT_TRUE(looping->IsPlaying());
}

TEST_F(DeviceLoss, WhatPlaysIsHeardAgainWhereItIsByThen) {
  const Frames ramp = RampFrames(29'000);
  const auto player = Player(LoadFrames(ramp));
  player->SetVolume(-600);
  player->SetPan(-10'000);
  player->SetFrequency(Rate / 2);
  player->Play(true);
  Render(5000);
  mixer.SetPlugged(false);
  Render(20'000);
  mixer.SetPlugged(true);
  EXPECT_TRUE(player->IsPlaying());
  EXPECT_EQ(player->Frequency(), Rate / 2);
  Render(1024);
  const Frames heard = Render(100);
  EXPECT_GT(heard[0][0], 0.4 * 10'000) << "10,000 frames have passed in silence at half the pitch";
  EXPECT_EQ(heard[0][1], 0) << "level, balance and pitch are as they were";
  for (std::size_t i = 2; i < heard.size(); i += 2) {
    EXPECT_NEAR(heard[i][0] - heard[i - 2][0], std::pow(10, -0.3), 1.0);
  }
  EXPECT_EQ(Told().size(), 1U);
}

TEST_F(DeviceLoss, StoppedSoundsAndSettingsSurvive) {
  const Frames ramp = RampFrames(20'000);
  const auto player = Player(LoadFrames(ramp));
  player->SetPosition(4 * 2000);
  mixer.SetPlugged(false);
  player->SetPan(10'000);
  mixer.SetPlugged(true);
  player->Play(false);
  Render(1024);
  const Frames heard = Render(100);
  for (std::size_t i = 0; i < heard.size(); ++i) {
    ASSERT_EQ(heard[i][0], 0);
    ASSERT_EQ(heard[i][1], ramp[2000 + 1024 + i][1]);
  }
}

TEST_F(DeviceLoss, WhatIsStartedMeanwhileRunsInSilence) {
  mixer.SetPlugged(false);
  const Frames ramp = RampFrames(29'000);
  const auto player = Player(LoadFrames(ramp));
  ASSERT_NE(player, nullptr);
  player->Play(false);
  EXPECT_EQ(Render(4000), Frames(4000));
  EXPECT_TRUE(player->IsPlaying());
  mixer.SetPlugged(true);
  Render(1024);
  EXPECT_EQ(Render(1)[0], ramp[5024]) << "it is heard where it is by now";
}

TEST_F(DeviceLoss, VoicesGoOnWithTheSampleWhereTheyAre) {
  const auto voice = mixer.CreateStream();
  const std::vector<int16> words(60'000, 8000);
  voice->Queue(words.data(), words.size());
  Render(2000);
  mixer.SetPlugged(false);
  EXPECT_GT(voice->Waiting(), 50'000U) << "nothing is taken as heard because its device is gone";
  Render(20'000);  // half as many samples of a voice
  const std::size_t waiting = voice->Waiting();
  EXPECT_LT(waiting, 51'000U);
  EXPECT_GT(waiting, 30'000U);
  mixer.SetPlugged(true);
  EXPECT_NEAR(static_cast<double>(voice->Waiting()), static_cast<double>(waiting), 10);
  Render(1024);
  EXPECT_GT(Render(100)[99][0], 4000);
  EXPECT_TRUE(WaitFor([&] {
    Render(4096);
    return voice->Waiting() == 0;
  }));
}

TEST_F(DeviceLoss, APausedVoiceStaysPaused) {
  const auto voice = mixer.CreateStream();
  const std::vector<int16> words(20'000, 8000);
  voice->SetVolume(0.5);
  voice->Queue(words.data(), words.size());
  Render(2000);
  voice->SetPaused(true);
  const std::size_t waiting = voice->Waiting();
  mixer.SetPlugged(false);
  Render(2000);
  mixer.SetPlugged(true);
  EXPECT_EQ(Render(1000), Frames(1000));
  EXPECT_NEAR(static_cast<double>(voice->Waiting()), static_cast<double>(waiting), 4096);
  voice->SetPaused(false);
  Render(1024);
  EXPECT_NEAR(Render(100)[99][0], 8000 * 0.5, 8000 * 0.25) << "in the middle of two speakers, at half its volume";
}

TEST_F(DeviceLoss, ComesAndGoesUnderEverything) {
  const auto data = LoadFrames(RampFrames(3000));
  const std::string path = folder.Path("test.wav");
  const auto voice = mixer.CreateStream();
  std::atomic<bool> ending = false;
  std::thread device([&] {
    while (!ending) {
      mixer.Render(256);
      std::this_thread::yield();
    }
  });
  const std::vector<int16> words(500, 8000);
  std::vector<std::unique_ptr<SoundPlayer>> players;
  for (int round = 0; round < 100; ++round) {
    players.push_back(round % 3 == 0 ? Streamed(path) : Player(data));
    ASSERT_NE(players.back(), nullptr);
    players.back()->Play(round % 2 == 0);
    mixer.SetPlugged(round % 2 == 1);
    voice->Queue(words.data(), words.size());
    players[players.size() / 2]->SetPosition(round * 40);
    players[players.size() / 3]->Stop();
    if (players.size() > 20) players.erase(players.begin());
  }
  mixer.SetPlugged(true);
  EXPECT_TRUE(WaitFor([&] { return voice->Waiting() == 0; }));
  players.clear();
  ending = true;
  device.join();
}

// --- none is there when the program starts ---

class LateDevice : public DeviceLoss {
 protected:
  void SetUp() override {
    mixer.SetPlugged(false);
    EXPECT_FALSE(mixer.OpenSounds());
    EXPECT_FALSE(mixer.OpenSounds()) << "asked again, it is not waited for";
    EXPECT_FALSE(mixer.Problem().empty());
  }
};

TEST_F(LateDevice, WhatWasStartedInSilenceIsHeardWhenItComes) {
  const Frames ramp = RampFrames(29'000);
  const auto player = Player(LoadFrames(ramp));
  const auto streamed = Streamed(folder.Path("test.wav"));
  ASSERT_NE(player, nullptr);
  ASSERT_NE(streamed, nullptr);
  player->Play(false);
  EXPECT_EQ(Render(4000), Frames(4000));
  mixer.SetPlugged(true);
  EXPECT_TRUE(mixer.OpenSounds());
  EXPECT_EQ(mixer.Problem(), "");
  EXPECT_TRUE(player->IsPlaying());
  Render(1024);
  EXPECT_EQ(Render(1)[0], ramp[5024]) << "where it is by now";
  EXPECT_EQ(Told(), std::vector<std::string>{}) << "who opened it has told that there was none";
}

TEST_F(LateDevice, SoundsEndInTimeUntilThen) {
  const auto player = Player(LoadFrames(RampFrames(2000)));
  player->Play(false);
  Render(2500);
  EXPECT_FALSE(player->IsPlaying());
}

TEST_F(LateDevice, AVoiceSpeaksWhenItComes) {
  const auto voice = mixer.CreateStream();
  ASSERT_NE(voice, nullptr);
  mixer.SetPlugged(true);
  const std::vector<int16> words(60'000, 8000);
  voice->Queue(words.data(), words.size());
  Render(1024);
  EXPECT_GT(Render(100)[99][0], 4000);
}

TEST_F(LateDevice, ItsLossIsToldLikeAnyOther) {
  mixer.SetPlugged(true);
  mixer.SetPlugged(false);
  EXPECT_EQ(Told(), Gone);
  EXPECT_TRUE(mixer.OpenSounds()) << "it has been there";
}

// --- what may hang, and the end ---

TEST(SideThreads, AreWaitedForAtTheEnd) {
  SideThreads threads;
  std::atomic<int> ended = 0;
  for (int i = 0; i < 20; ++i)
    threads.Run([&ended] {
      std::this_thread::yield();
      ++ended;
    });
  threads.Wait(std::chrono::milliseconds(20'000));
  EXPECT_EQ(ended, 20);
}

TEST(SideThreads, ThatHangAreLeftBehind) {
  auto gate = std::make_shared<std::promise<void>>();
  {
    SideThreads threads;
    threads.Run([open = gate->get_future().share(), gate] { open.wait(); });
    threads.Wait(std::chrono::milliseconds(1));
  }
  gate->set_value();
}

}  // namespace
}  // namespace corvid
