// SPDX-License-Identifier: GPL-3.0-or-later
// What a listener hears of sounds that are decoded while they play.
#include <atomic>

#include "sound_rig.h"

namespace corvid {
namespace {

// Renders as a device does that is asked for more only when somebody had time to decode, and gathers what is heard.
class SoundStreams : public SoundRig {
 protected:
  // Up to count frames, without the silence of moments in which nothing was decoded yet.
  Frames Hear(SoundPlayer& player, std::size_t count) {
    Frames heard;
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (heard.size() < count && std::chrono::steady_clock::now() < end) {
      const bool playing = player.IsPlaying();
      for (const auto& frame : Render(std::min<std::size_t>(512, count - heard.size()))) {
        if (frame != std::array<int16, 2>{}) heard.push_back(frame);
      }
      if (!playing) break;
      std::this_thread::sleep_for(std::chrono::microseconds(300));
    }
    return heard;
  }
};

TEST_F(SoundStreams, AreHeardExactlyAndEnd) {
  const Frames ramp = RampFrames(100'000);
  const auto player = Streamed(folder.Write("a.wav", ramp, 2, Rate));
  EXPECT_FALSE(player->IsPlaying());
  EXPECT_EQ(Render(100), Frames(100));
  player->Play(false);
  EXPECT_TRUE(player->IsPlaying());
  EXPECT_TRUE(Hear(*player, 200'000) == ramp);
  EXPECT_FALSE(player->IsPlaying());
  player->Play(false);
  EXPECT_TRUE(Hear(*player, 200'000) == ramp) << "and again from the start";
}

TEST_F(SoundStreams, StartAtTheVeryNextSample) {
  const Frames ramp = RampFrames(30'000);
  const auto player = Streamed(folder.Write("a.flac", ramp, 2, Rate, SF_FORMAT_FLAC | SF_FORMAT_PCM_16));
  player->Play(true);
  EXPECT_EQ(Render(2000), Frames(ramp.begin(), ramp.begin() + 2000)) << "nobody had to wait for the decoding";
}

TEST_F(SoundStreams, ALoopHasNoSeam) {
  for (const std::size_t length : {30'001U, 4096U, 1000U, 7U}) {
    const Frames ramp = RampFrames(length);
    const auto player = Streamed(folder.Write("a.wav", ramp, 2, Rate));
    player->Play(true);
    const Frames heard = Hear(*player, 100'000);
    ASSERT_EQ(heard.size(), 100'000U);
    for (std::size_t i = 0; i < heard.size(); ++i) ASSERT_EQ(heard[i], ramp[i % length]) << length << " at " << i;
  }
}

TEST_F(SoundStreams, TheLoopMayBeginAndEndDuringPlay) {
  const Frames ramp = RampFrames(30'000);
  const auto player = Streamed(folder.Write("a.wav", ramp, 2, Rate));
  player->Play(false);
  Frames heard = Hear(*player, 20'000);
  player->Play(true);
  const Frames more = Hear(*player, 60'000);
  heard.insert(heard.end(), more.begin(), more.end());
  ASSERT_EQ(heard.size(), 80'000U);
  for (std::size_t i = 0; i < heard.size(); ++i) ASSERT_EQ(heard[i], ramp[i % 30'000]) << "at " << i;
  player->Play(false);  // in the middle of the third round, with the fourth decoded already
  heard = Hear(*player, 60'000);
  EXPECT_EQ(heard.size(), 10'000U);
  EXPECT_EQ(heard.back(), ramp.back());
  EXPECT_FALSE(player->IsPlaying());
}

TEST_F(SoundStreams, StopKeepsThePosition) {
  const Frames ramp = RampFrames(60'000);
  const auto player = Streamed(folder.Write("a.wav", ramp, 2, Rate));
  player->Play(false);
  const Frames before = Hear(*player, 25'000);
  player->Stop();
  EXPECT_FALSE(player->IsPlaying());
  EXPECT_EQ(Render(2000), Frames(2000));
  player->Play(false);
  Frames heard = Hear(*player, 100'000);
  heard.insert(heard.begin(), before.begin(), before.end());
  EXPECT_TRUE(heard == ramp);
}

TEST_F(SoundStreams, PositionsCountBytes) {
  struct Case {
    int channels;
    int64 byte;
    std::size_t frame;
  };
  const Case cases[] = {{2, 80'000, 20'000}, {1, 80'000, 40'000}, {2, 3, 0}, {2, 400'000, 0}, {2, -9, 0}};
  const Frames ramp = RampFrames(100'000);
  for (const Case& c : cases) {
    for (const bool during : {false, true}) {
      const auto player = Streamed(folder.Write("a.wav", ramp, c.channels, Rate));
      if (during) {
        player->Play(false);
        Hear(*player, 9000);
      }
      player->SetPosition(c.byte);
      if (!during) player->Play(false);
      Frames heard = Hear(*player, 200'000);
      ASSERT_EQ(heard.size(), 100'000 - c.frame) << c.byte << " during " << during;
      ASSERT_EQ(heard[0][0], ramp[c.frame][0]);
      ASSERT_EQ(heard.back()[0], ramp.back()[0]);
    }
  }
}

// Level of one side around its mean, full scale being 1, and how often the mean is crossed upwards.
struct Swing {
  double level = 0;
  int crossings = 0;
};
Swing SwingOf(const Frames& frames, std::size_t side) {
  double mean = 0;
  for (const auto& frame : frames) mean += frame[side];
  mean /= static_cast<double>(frames.size());
  Swing swing;
  for (std::size_t i = 0; i < frames.size(); ++i) {
    swing.level += (frames[i][side] - mean) * (frames[i][side] - mean);
    if (i > 0 && frames[i - 1][side] < mean && frames[i][side] >= mean) ++swing.crossings;
  }
  swing.level = std::sqrt(swing.level / static_cast<double>(frames.size())) / 32768;
  return swing;
}

TEST_F(SoundStreams, PanVolumeAndPitchAsForLoadedOnes) {
  Frames sine = SineFrames(441, 22050, 441'000, 0.25);
  for (auto& frame : sine) frame = {static_cast<int16>(frame[0] + 16384), static_cast<int16>(frame[1] + 16384)};
  const auto player = Streamed(folder.Write("a.wav", sine, 1, 22050));
  EXPECT_EQ(player->Frequency(), 22050);
  player->SetPan(600);
  player->SetVolume(-1000);
  player->SetFrequency(44100);
  player->Play(true);
  Hear(*player, 2000);
  const Frames heard = Hear(*player, 22'050);
  const Swing left = SwingOf(heard, 0);
  const Swing right = SwingOf(heard, 1);
  EXPECT_NEAR(right.crossings, 441, 2) << "half a second of 882 hertz";
  EXPECT_NEAR(20 * std::log10(right.level / (0.25 / std::sqrt(2))), -10, 0.1);
  EXPECT_NEAR(20 * std::log10(left.level / right.level), -6, 0.1);
}

TEST_F(SoundStreams, MusicOfEveryKindPlaysToItsEnd) {
  const Frames sine = SineFrames(441, Rate, 60'000);
  struct Case {
    const char* name;
    int format;
  };
  const Case cases[] = {{"a.ogg", SF_FORMAT_OGG | SF_FORMAT_VORBIS},
                        {"a.flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_16},
                        {"a.mp3", SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III}};
  for (const Case& c : cases) {
    const auto player = Streamed(folder.Write(c.name, sine, 2, Rate, c.format));
    player->Play(false);
    std::size_t rendered = 0;
    double energy = 0;
    while (player->IsPlaying() && rendered < 2'000'000) {
      for (const auto& frame : Render(512)) energy += frame[0] * frame[0];
      rendered += 512;
      std::this_thread::sleep_for(std::chrono::microseconds(300));
    }
    EXPECT_FALSE(player->IsPlaying());
    EXPECT_NEAR(energy / 60'000 / (0.125 * 32767 * 32767), 1, 0.03) << c.name;
  }
}

TEST_F(SoundStreams, ManyAtOnceAndEndedInEveryMoment) {
  const std::string path =
      folder.Write("a.mp3", SineFrames(441, Rate, 200'000), 2, Rate, SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III);
  std::atomic<bool> ending = false;
  std::thread device([&] {
    while (!ending) {
      mixer.Render(256);
      std::this_thread::sleep_for(std::chrono::microseconds(200));
    }
  });
  std::vector<std::unique_ptr<SoundPlayer>> players;
  for (int round = 0; round < 200; ++round) {
    players.push_back(Streamed(path));
    players.back()->Play(true);
    players[static_cast<std::size_t>(round) / 2 % players.size()]->SetPosition(round * 4000);
    if (players.size() > 20) players.erase(players.begin());
  }
  EXPECT_TRUE(players.back()->IsPlaying());
  players.clear();
  ending = true;
  device.join();
}

TEST_F(SoundStreams, AFileThatShrinksUnderItEnds) {
  const std::string path = folder.Write("a.wav", RampFrames(400'000), 2, Rate);
  const auto player = Streamed(path);
  player->Play(true);
  Hear(*player, 1000);
  std::filesystem::resize_file(path, 44);
  EXPECT_TRUE(WaitFor([&] {
    Render(4096);
    return !player->IsPlaying();
  }));
}

TEST_F(SoundStreams, WithoutFocusMusicRunsOnInSilence) {
  const Frames ramp = RampFrames(60'000);
  const auto player = Streamed(folder.Write("a.wav", ramp, 2, Rate));
  player->Play(false);
  mixer.SetFocused(false);
  Render(1024);
  EXPECT_EQ(Render(5000), Frames(5000));
  EXPECT_TRUE(player->IsPlaying());
}

}  // namespace
}  // namespace corvid
