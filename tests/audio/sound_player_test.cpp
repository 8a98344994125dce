// SPDX-License-Identifier: GPL-3.0-or-later
// What a listener hears of loaded sounds, on the rendered samples.
#include <atomic>

#include "sound_rig.h"

namespace corvid {
namespace {

constexpr std::size_t Settle = 1024;  // a change during play is faded over the next period

class SoundPlayers : public SoundRig {};

double Decibels(double level, double reference) {
  return 20 * std::log10(level / reference);
}

TEST_F(SoundPlayers, AreHeardExactlyAndEnd) {
  const Frames ramp = RampFrames(5000);
  const auto player = Player(LoadFrames(ramp));
  EXPECT_FALSE(player->IsPlaying());
  EXPECT_EQ(Render(100), Frames(100)) << "silent before Play";
  player->Play(false);
  EXPECT_TRUE(player->IsPlaying());
  EXPECT_EQ(Render(4000), Frames(ramp.begin(), ramp.begin() + 4000));
  EXPECT_TRUE(player->IsPlaying());
  EXPECT_EQ(Render(1000), Frames(ramp.begin() + 4000, ramp.end()));
  EXPECT_EQ(Render(100), Frames(100));
  EXPECT_FALSE(player->IsPlaying());
  player->Play(false);
  EXPECT_EQ(Render(5000), ramp) << "and again from the start";
}

TEST_F(SoundPlayers, AMonoFileIsHeardOnBothSides) {
  Frames ramp = RampFrames(3000);
  const auto player = Player(LoadFrames(ramp, 1));
  player->Play(false);
  for (auto& frame : ramp) frame[1] = frame[0];
  EXPECT_EQ(Render(3000), ramp);
}

TEST_F(SoundPlayers, VolumeIsExactOverTheWholeRange) {
  for (const int channels : {1, 2}) {
    const auto player = Player(LoadFrames(SineFrames(441, Rate, 44100), channels));
    player->Play(true);
    Render(Settle);
    const double full = Level(4400)[0];
    for (int32 volume = 0; volume > -10'000; volume -= 487) {
      player->SetVolume(volume);
      Render(Settle);
      for (const double level : Level(4400)) {
        EXPECT_NEAR(Decibels(level, full), volume / 100.0, 0.1) << "at " << volume << ", channels " << channels;
      }
    }
    for (const int32 volume : {-10'000, -10'001, -2'000'000'000}) {
      player->SetVolume(volume);
      Render(Settle);
      EXPECT_EQ(Level(4400), (std::array<double, 2>{0, 0})) << volume;
    }
    player->SetVolume(2'000'000'000);
    Render(Settle);
    EXPECT_NEAR(Decibels(Level(4400)[0], full), 0, 0.001) << "above full is full";
  }
}

TEST_F(SoundPlayers, PanSoftensTheFarSideAndLeavesTheNearOneAlone) {
  struct Case {
    int32 volume;
    int32 pan;
    double left;  // decibels; below -100 silence
    double right;
  };
  const Case cases[] = {
      {0, 0, 0, 0},
      {0, 600, -6, 0},
      {0, -600, 0, -6},
      {0, 3000, -30, 0},
      {0, -9500, 0, -95},
      {0, 10'000, -200, 0},
      {0, -10'000, 0, -200},
      {-1000, 2000, -30, -10},
      {-1000, -2000, -10, -30},
      {-6000, 6000, -200, -60},
      {0, 99'999, -200, 0},
      {-10'000, 500, -200, -200},
  };
  for (const int channels : {1, 2}) {
    const auto player = Player(LoadFrames(SineFrames(441, Rate, 44100), channels));
    player->Play(true);
    Render(Settle);
    const std::array<double, 2> full = Level(4400);
    for (const Case& c : cases) {
      player->SetVolume(c.volume);
      player->SetPan(c.pan);
      Render(Settle);
      const std::array<double, 2> level = Level(4400);
      const std::array<double, 2> wanted{c.left, c.right};
      for (std::size_t side = 0; side < 2; ++side) {
        const std::string what = std::to_string(c.volume) + " pan " + std::to_string(c.pan);
        if (wanted[side] < -100) {
          EXPECT_EQ(level[side], 0) << what;
        } else {
          EXPECT_NEAR(Decibels(level[side], full[side]), wanted[side], wanted[side] == 0 ? 1e-9 : 0.1) << what;
        }
      }
    }
  }
}

TEST_F(SoundPlayers, AtFullPanTheNearSideIsUnchangedToTheSample) {
  const Frames ramp = RampFrames(3000);
  for (const std::size_t far : {0U, 1U}) {
    const auto player = Player(LoadFrames(ramp));
    player->SetPan(far == 0 ? 10'000 : -10'000);
    player->Play(false);
    const Frames heard = Render(3000);
    for (std::size_t i = 0; i < heard.size(); ++i) {
      ASSERT_EQ(heard[i][far], 0);
      ASSERT_EQ(heard[i][1 - far], ramp[i][1 - far]) << "at " << i;
    }
  }
}

// Rising zero crossings of the left side in a second of sound.
int Hertz(const Frames& frames) {
  int crossings = 0;
  for (std::size_t i = 1; i < frames.size(); ++i) crossings += frames[i - 1][0] < 0 && frames[i][0] >= 0 ? 1 : 0;
  return crossings;
}

TEST_F(SoundPlayers, FrequencyIsPitch) {
  struct Case {
    int file;
    int32 frequency;
    int hertz;
  };
  const Case cases[] = {{44100, 0, 441}, {44100, -1, 441},    {44100, 88200, 882}, {44100, 22050, 220},
                        {22050, 0, 441}, {22050, 44100, 882}, {22050, 30000, 600}, {11025, 0, 441},
                        {48000, 0, 441}, {8000, 4000, 220}};
  for (const Case& c : cases) {
    const auto data = LoadFrames(SineFrames(441, c.file, static_cast<std::size_t>(c.file)), 1, c.file);
    EXPECT_EQ(data->Frequency(), c.file);
    const auto player = Player(data);
    EXPECT_EQ(player->Frequency(), c.file);
    player->SetFrequency(c.frequency);
    EXPECT_EQ(player->Frequency(), c.frequency > 0 ? c.frequency : c.file);
    player->Play(true);
    Render(Settle);
    EXPECT_NEAR(Hertz(Render(Rate)), c.hertz, 2) << c.file << " at " << c.frequency;
  }
}

TEST_F(SoundPlayers, ResamplingKeepsTheLevel) {
  for (const int hertz : {100, 1000, 4000, 6000}) {
    const auto player = Player(LoadFrames(SineFrames(hertz, 22050, 22050), 1, 22050));
    player->Play(true);
    Render(Settle);
    EXPECT_NEAR(Decibels(Level(Rate)[0], 0.5 / std::sqrt(2)), 0, 0.1) << hertz;
  }
}

// The sides stay in step whatever changes while the device mixes.
TEST_F(SoundPlayers, TheSidesNeverDrift) {
  Frames both = SineFrames(300, Rate, 44100);
  const auto player = Player(LoadFrames(both));
  player->Play(true);
  std::atomic<bool> ending = false;
  std::atomic<bool> apart = false;
  std::thread device([&] {
    while (!ending) {
      const std::vector<float> samples = mixer.Render(64);
      for (std::size_t i = 0; i < samples.size(); i += 2) {
        if (std::abs(samples[i] - samples[i + 1]) > 1e-4F) apart = true;
      }
    }
  });
  for (int i = 0; i < 2000 && !apart; ++i) {
    player->SetFrequency(30'000 + 37 * (i % 500));
    if (i % 5 == 0) player->SetPosition(i * 4);
    if (i % 7 == 0) player->Play(i % 2 == 0);
    if (i % 11 == 0) player->SetVolume(-i % 300);
  }
  ending = true;
  device.join();
  EXPECT_FALSE(apart);
}

TEST_F(SoundPlayers, ALoopHasNoSeam) {
  const Frames ramp = RampFrames(1777);
  const auto player = Player(LoadFrames(ramp));
  player->Play(true);
  const Frames heard = Render(10'000);
  for (std::size_t i = 0; i < heard.size(); ++i) ASSERT_EQ(heard[i], ramp[i % ramp.size()]) << "at " << i;
  EXPECT_TRUE(player->IsPlaying());
}

TEST_F(SoundPlayers, ALoopAtAnotherPitchHasNoClick) {
  // Whole periods of a sine, so that any seam would stand out of the smooth curve.
  const auto player = Player(LoadFrames(SineFrames(441, Rate, 4400, 0.5), 1));
  player->SetFrequency(31'234);
  player->Play(true);
  Render(Settle);
  const std::vector<float> heard = mixer.Render(40'000);
  const double steepest = 0.5 * 2 * Pi * 441 * 31'234 / Rate / Rate;
  for (std::size_t i = 2; i < heard.size(); i += 2) {
    ASSERT_LT(std::abs(heard[i] - heard[i - 2]), 1.05 * steepest) << "at " << i / 2;
  }
}

TEST_F(SoundPlayers, TheLoopMayBeginAndEndDuringPlay) {
  const Frames ramp = RampFrames(3000);
  const auto player = Player(LoadFrames(ramp));
  player->Play(false);
  Render(1000);
  player->Play(true);
  Frames heard = Render(4000);
  for (std::size_t i = 0; i < heard.size(); ++i) ASSERT_EQ(heard[i], ramp[(1000 + i) % 3000]) << "at " << i;
  player->Play(false);
  heard = Render(2000);
  for (std::size_t i = 0; i < 1000; ++i) ASSERT_EQ(heard[i], ramp[2000 + i]) << "at " << i;
  EXPECT_EQ(heard[1500], (std::array<int16, 2>{}));
  EXPECT_FALSE(player->IsPlaying());
}

TEST_F(SoundPlayers, StopKeepsThePosition) {
  const Frames ramp = RampFrames(20'000);
  const auto player = Player(LoadFrames(ramp));
  player->Stop();
  player->Play(false);
  Render(7000);
  player->Stop();
  EXPECT_FALSE(player->IsPlaying());
  EXPECT_EQ(Render(2000), Frames(2000));
  player->Play(false);
  Render(Settle);  // begins softly where it begins in the middle
  EXPECT_EQ(Render(1000), Frames(ramp.begin() + 7000 + Settle, ramp.begin() + 8000 + Settle));
}

TEST_F(SoundPlayers, PositionsCountBytes) {
  struct Case {
    int channels;
    int64 byte;
    std::size_t frame;
  };
  const Case cases[] = {
      {2, 0, 0},           {2, 4, 1},      {2, 40'000, 10'000}, {2, 40'003, 10'000}, {1, 20'000, 10'000},
      {1, 39'998, 19'999}, {1, 40'000, 0}, {2, 80'000, 0},      {2, -5, 0},          {2, 1'000'000'000'000, 0}};
  const Frames ramp = RampFrames(20'000);
  for (const Case& c : cases) {
    const auto data = LoadFrames(ramp, c.channels);
    EXPECT_EQ(data->Bytes(), 40'000 * c.channels);
    for (const bool during : {false, true}) {
      const auto player = Player(data);
      if (!during) player->SetPosition(c.byte);
      player->Play(true);
      if (during) {
        Render(333);
        player->SetPosition(c.byte);
        EXPECT_TRUE(player->IsPlaying());
      }
      Render(Settle);
      const Frames heard = Render(100);
      for (std::size_t i = 0; i < heard.size(); ++i) {
        ASSERT_EQ(heard[i][0], ramp[(c.frame + Settle + i) % 20'000][0]) << c.byte << " during " << during;
      }
    }
  }
}

TEST_F(SoundPlayers, ADuplicatePlaysTheSameDataByItself) {
  const Frames ramp = RampFrames(4000);
  const auto data = LoadFrames(ramp);
  const auto first = Player(data);
  const auto second = Player(data);
  EXPECT_EQ(data.use_count(), 3) << "both share what was decoded";
  first->Play(false);
  Render(1000);
  second->SetPan(-10'000);
  second->Play(false);
  const Frames heard = Render(1000);
  for (std::size_t i = 0; i < heard.size(); ++i) {
    ASSERT_EQ(heard[i][0], ramp[1000 + i][0] + ramp[i][0]) << "at " << i;
    ASSERT_EQ(heard[i][1], ramp[1000 + i][1]) << "at " << i;
  }
  first->Stop();
  EXPECT_TRUE(second->IsPlaying());
}

TEST_F(SoundPlayers, ADestroyedOneIsSilentAndItsDataLivesOn) {
  const Frames ramp = RampFrames(4000);
  const auto data = LoadFrames(ramp);
  auto player = Player(data);
  player->Play(true);
  Render(100);
  player = nullptr;
  EXPECT_EQ(Render(100), Frames(100));
  player = Player(data);
  player->Play(false);
  EXPECT_EQ(Render(4000), ramp);
}

TEST_F(SoundPlayers, AHundredAtOnceWithTheVoices) {
  std::vector<std::unique_ptr<PcmStream>> voices;
  for (int i = 0; i < 6; ++i) voices.push_back(mixer.CreateStream());
  const auto data = LoadFrames(SineFrames(441, Rate, 44100, 0.005));
  std::vector<std::unique_ptr<SoundPlayer>> players;
  for (int i = 0; i < 120; ++i) {
    players.push_back(Player(data));
    ASSERT_NE(players.back(), nullptr);
  }
  players[0]->Play(true);
  Render(Settle);
  const double one = Level(4400)[0];
  for (std::size_t i = 1; i < 100; ++i) {
    players[i]->SetPosition(0);
    players[i]->Play(true);
  }
  players[0]->SetPosition(0);
  Render(Settle);
  EXPECT_NEAR(Level(4400)[0] / one, 100, 0.5);
  const std::vector<int16> silence(100'000, 0);
  for (const auto& voice : voices) {
    ASSERT_NE(voice, nullptr);
    voice->Queue(silence.data(), silence.size());
    EXPECT_GT(voice->Waiting(), 0U);
  }
}

TEST_F(SoundPlayers, OneTooManyIsAnAnswer) {
  const auto data = LoadFrames(RampFrames(100));
  std::vector<std::unique_ptr<SoundPlayer>> players;
  do {
    players.push_back(mixer.CreatePlayer(data, false, {}));
  } while (players.back() != nullptr && players.size() < 1000);
  EXPECT_EQ(players.back(), nullptr);
  EXPECT_GT(players.size(), 140U);
  std::string error;
  EXPECT_EQ(mixer.CreateStreamed(folder.Path("test.wav"), false, {}, error), nullptr);
  EXPECT_EQ(error, "Too many sounds play at once.");
  players.resize(10);
  EXPECT_NE(mixer.CreatePlayer(data, false, {}), nullptr);
}

TEST_F(SoundPlayers, SoundIsHeardOverSpeech) {
  const auto voice = mixer.CreateStream();
  const std::vector<int16> words(4410, 1000);
  voice->Queue(words.data(), words.size());
  const int alone = Render(100)[99][0];
  EXPECT_GT(alone, 500);
  const Frames ramp = RampFrames(3000);
  const auto player = Player(LoadFrames(ramp));
  player->Play(false);
  EXPECT_NEAR(Render(2000)[1999][0], alone + ramp[1999][0], 1);
}

TEST_F(SoundPlayers, WithoutFocusOnlyBackgroundSoundsAreHeardAndAllRunOn) {
  const Frames ramp = RampFrames(30'000);
  const auto data = LoadFrames(ramp);
  const auto foreground = Player(data);
  const auto background = Player(data, true);
  foreground->SetPan(10'000);   // right only
  background->SetPan(-10'000);  // left only
  foreground->Play(false);
  background->Play(false);
  Render(1000);
  mixer.SetFocused(false);
  Render(Settle);
  Frames heard = Render(1000);
  for (std::size_t i = 0; i < heard.size(); ++i) {
    ASSERT_EQ(heard[i][0], ramp[1000 + Settle + i][0]);
    ASSERT_EQ(heard[i][1], 0);
  }
  EXPECT_TRUE(foreground->IsPlaying());
  foreground->SetVolume(0);  // does not make it heard
  const auto late = Player(data);
  late->Play(false);
  Render(Settle);
  for (const auto& frame : Render(100)) ASSERT_EQ(frame[1], 0);
  late->Stop();
  mixer.SetFocused(true);
  Render(Settle);
  heard = Render(100);
  const std::size_t at = 1000 + Settle + 1000 + Settle + 100 + Settle;
  for (std::size_t i = 0; i < heard.size(); ++i) ASSERT_EQ(heard[i][1], ramp[at + i][1]) << "it ran on in silence";
  mixer.SetFocused(false);
  Render(30'000);
  EXPECT_FALSE(foreground->IsPlaying()) << "and ends in silence";
}

TEST_F(SoundPlayers, FocusIsKnownToADeviceThatIsOpenedLater) {
  OpenAlMixer other(MixerSettings{.loopback = true, .loopbackRate = Rate, .loopbackChannels = 2});
  other.SetFocused(false);
  ASSERT_TRUE(other.OpenSounds());
  const auto player = other.CreatePlayer(LoadFrames(RampFrames(3000)), false, {});
  player->Play(false);
  for (const float sample : other.Render(1000)) ASSERT_EQ(sample, 0);
}

TEST(SoundDevice, NoDeviceIsToldAndSoundsEndInTimeUnheard) {
  OpenAlMixer mixer(MixerSettings{.device = "no such device"});
  EXPECT_FALSE(mixer.OpenSounds());
  EXPECT_EQ(mixer.Problem(), "The sound device \"no such device\" was not found.");
  const SoundFolder folder;
  std::string error;
  const std::string path = folder.Write("a.wav", RampFrames(100), 2, 44100);
  const auto data = mixer.Load(path, error);
  ASSERT_NE(data, nullptr) << error;
  const auto loaded = mixer.CreatePlayer(data, false, {});
  const auto streamed = mixer.CreateStreamed(path, false, {}, error);
  ASSERT_NE(loaded, nullptr);
  ASSERT_NE(streamed, nullptr) << error;
  mixer.SetFocused(false);
  loaded->Play(false);
  streamed->Play(false);
  EXPECT_TRUE(WaitFor([&] { return !loaded->IsPlaying() && !streamed->IsPlaying(); }));
}

// On a clocked device an end is reported neither before it was heard nor much after it.
TEST(SoundDevice, TheEndIsReportedWhenItWasHeard) {
  OpenAlMixer mixer;
  if (!mixer.OpenSounds()) GTEST_SKIP() << "no device, not even the null one: " << mixer.Problem();
  const SoundFolder folder;
  std::string error;
  const std::string path = folder.Write("a.wav", Frames(4410), 1, 44100);  // 0.1 s of silence
  const auto loaded = mixer.CreatePlayer(mixer.Load(path, error), false, {});
  const auto streamed = mixer.CreateStreamed(path, false, {}, error);
  for (SoundPlayer* player : {loaded.get(), streamed.get()}) {
    ASSERT_NE(player, nullptr);
    const auto start = std::chrono::steady_clock::now();
    player->Play(false);
    EXPECT_TRUE(player->IsPlaying());
    EXPECT_TRUE(WaitFor([&] { return !player->IsPlaying(); }));
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(95));
  }
}

}  // namespace
}  // namespace corvid
