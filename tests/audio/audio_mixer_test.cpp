// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <random>
#include <thread>
#include <vector>

#include "platform/openal/mixer.h"

namespace corvid {
namespace {

// A test machine has no sound card: the library's own clocked device stands in for one.
class NoSoundCard : public ::testing::Environment {
 public:
  void SetUp() override { setenv("ALSOFT_DRIVERS", "null", 0); }
};
const auto* const noSoundCard = ::testing::AddGlobalTestEnvironment(new NoSoundCard);

constexpr std::size_t Period = 256;

std::vector<int16> Sine(double hertz, double amplitude, std::size_t count) {
  std::vector<int16> samples(count);
  for (std::size_t i = 0; i < count; ++i) {
    const double angle = 2 * 3.14159265358979 * hertz * static_cast<double>(i) / VoiceSampleRate;
    samples[i] = static_cast<int16>(std::lround(32767 * amplitude * std::sin(angle)));
  }
  return samples;
}

// Never zero, and no two neighbours alike, so that a lost, doubled or silent sample shows.
std::vector<int16> Ramp(std::size_t count) {
  std::vector<int16> samples(count);
  for (std::size_t i = 0; i < count; ++i) samples[i] = static_cast<int16>(1 + i % 30011);
  return samples;
}

double Peak(const std::vector<float>& samples) {
  double peak = 0;
  for (const float sample : samples) peak = std::max(peak, std::abs(static_cast<double>(sample)));
  return peak;
}

int16 Code(float sample) {
  return static_cast<int16>(std::lround(sample * 32768.0F));
}

class Mixer : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(mixer.Open()) << mixer.Problem(); }
  std::vector<float> RenderAll(PcmStream& stream) {
    std::vector<float> heard;
    while (stream.Waiting() > 0) {
      const std::vector<float> part = mixer.Render(Period);
      heard.insert(heard.end(), part.begin(), part.end());
    }
    return heard;
  }
  OpenAlMixer mixer{MixerSettings{.loopback = true}};
};

TEST_F(Mixer, IsSilentWithoutStreamsAndWithAnEmptyOne) {
  EXPECT_EQ(Peak(mixer.Render(4 * Period)), 0);
  const auto stream = mixer.CreateStream();
  EXPECT_EQ(Peak(mixer.Render(4 * Period)), 0);
  EXPECT_EQ(stream->Waiting(), 0U);
}

TEST_F(Mixer, PlaysEverySampleExactly) {
  const auto stream = mixer.CreateStream();
  const std::vector<int16> ramp = Ramp(50'000);
  stream->Queue(ramp.data(), ramp.size());
  EXPECT_EQ(stream->Waiting(), ramp.size());
  std::vector<float> heard;
  for (std::size_t i = 0; i < ramp.size(); i += Period) {
    stream->Waiting();  // what the feeding thread does in time
    const std::vector<float> part = mixer.Render(std::min(Period, ramp.size() - i));
    heard.insert(heard.end(), part.begin(), part.end());
  }
  for (std::size_t i = 0; i < ramp.size(); ++i) ASSERT_EQ(Code(heard[i]), ramp[i]) << "at " << i;
  EXPECT_EQ(Peak(mixer.Render(Period)), 0);
  EXPECT_EQ(stream->Waiting(), 0U);
}

TEST_F(Mixer, AddsStreamsUp) {
  const auto low = mixer.CreateStream();
  const auto high = mixer.CreateStream();
  const std::vector<int16> lowSine = Sine(220, 0.4, 4000);
  const std::vector<int16> highSine = Sine(1000, 0.3, 4000);
  low->Queue(lowSine.data(), lowSine.size());
  high->Queue(highSine.data(), highSine.size());
  const std::vector<float> heard = mixer.Render(4000);
  for (std::size_t i = 0; i < heard.size(); ++i) {
    const double sum = (lowSine[i] + highSine[i]) / 32768.0;
    ASSERT_NEAR(heard[i], sum, 2.0 / 32768) << "at " << i;
  }
}

TEST_F(Mixer, PurgeIsSilentAtTheNextSampleAndLeavesOthersAlone) {
  const auto purged = mixer.CreateStream();
  const auto other = mixer.CreateStream();
  const std::vector<int16> sine = Sine(440, 0.4, 100'000);
  purged->Queue(sine.data(), sine.size());
  EXPECT_GT(Peak(mixer.Render(Period)), 0.3);
  purged->Purge();
  EXPECT_EQ(Peak(mixer.Render(Period)), 0);
  EXPECT_EQ(purged->Waiting(), 0U);

  purged->Queue(sine.data(), sine.size());
  other->Queue(sine.data(), sine.size());
  mixer.Render(Period);
  purged->Purge();
  EXPECT_NEAR(Peak(mixer.Render(Period)), 0.4, 0.01);
}

TEST_F(Mixer, APauseGoesOnAtItsSample) {
  const auto stream = mixer.CreateStream();
  const std::vector<int16> ramp = Ramp(3000);
  stream->Queue(ramp.data(), ramp.size());
  EXPECT_EQ(Code(mixer.Render(1000)[999]), ramp[999]);
  stream->SetPaused(true);
  EXPECT_EQ(Peak(mixer.Render(1000)), 0);
  EXPECT_EQ(stream->Waiting(), 2000U);
  stream->SetPaused(false);
  const std::vector<float> rest = mixer.Render(2000);
  for (std::size_t i = 0; i < rest.size(); ++i) ASSERT_EQ(Code(rest[i]), ramp[1000 + i]) << "at " << i;
}

TEST_F(Mixer, WhatIsQueuedDuringAPauseWaitsForItsEnd) {
  const auto stream = mixer.CreateStream();
  const std::vector<int16> ramp = Ramp(3000);
  stream->Queue(ramp.data(), 500);
  RenderAll(*stream);
  stream->SetPaused(true);
  stream->Queue(ramp.data(), 1000);
  stream->Queue(ramp.data() + 1000, 2000);
  EXPECT_EQ(Peak(mixer.Render(Period)), 0);
  EXPECT_EQ(stream->Waiting(), 3000U);
  stream->SetPaused(false);
  const std::vector<float> heard = mixer.Render(3000);
  for (std::size_t i = 0; i < heard.size(); ++i) ASSERT_EQ(Code(heard[i]), ramp[i]) << "at " << i;
}

TEST_F(Mixer, VolumeIsAFactor) {
  const auto stream = mixer.CreateStream();
  const std::vector<int16> sine = Sine(440, 0.8, 4000);
  stream->SetVolume(0.5);
  stream->Queue(sine.data(), sine.size());
  EXPECT_NEAR(Peak(mixer.Render(2000)), 0.4, 0.004);
  stream->SetVolume(0);
  mixer.Render(Period);  // a change during play is faded
  EXPECT_EQ(Peak(mixer.Render(Period)), 0);
}

TEST_F(Mixer, ADestroyedStreamIsSilent) {
  auto stream = mixer.CreateStream();
  const std::vector<int16> sine = Sine(440, 0.4, 100'000);
  stream->Queue(sine.data(), sine.size());
  mixer.Render(Period);
  stream.reset();
  EXPECT_EQ(Peak(mixer.Render(Period)), 0);
}

TEST_F(Mixer, HasRoomForThreeHundred) {
  std::vector<std::unique_ptr<PcmStream>> streams;
  const std::vector<int16> sine = Sine(440, 0.003, 1000);
  for (int i = 0; i < 300; ++i) {
    streams.push_back(mixer.CreateStream());
    ASSERT_NE(streams.back(), nullptr) << "stream " << i;
    streams.back()->Queue(sine.data(), sine.size());
  }
  EXPECT_NEAR(Peak(mixer.Render(Period)), 300 * std::round(0.003 * 32767) / 32768, 0.01);
  // One source too many is an answer, not a crash.
  while (streams.back() != nullptr && streams.size() < 1000) streams.push_back(mixer.CreateStream());
  EXPECT_EQ(streams.back(), nullptr);
}

// A stream that runs dry again and again between small blocks must neither repeat nor lose any, though the device mixes
// whenever it likes: many of these blocks are handed over in the very moment in which the stream comes to its end.
TEST_F(Mixer, RunningDryNeitherLosesNorRepeats) {
  const auto stream = mixer.CreateStream();
  const std::vector<int16> ramp = Ramp(200'000);
  std::atomic<bool> done = false;
  std::atomic<int> calls = 0;  // odd while one is under way
  std::vector<int16> heard;
  std::thread listener([&] {
    // The device may still hold what the stream has given away, so it is heard out for a while after the end.
    constexpr int Rounds = 500;
    int inCall = 0;
    int lastCall = 0;
    for (int after = 0; after < Rounds; after += done ? 1 : 0) {
      // This one runs much faster than a sound card, but within a call no further than a card does in 45 ms.
      const int call = calls;
      inCall = call == lastCall && call % 2 == 1 ? inCall + 1 : 0;
      lastCall = call;
      if (inCall < 16) {
        for (const float sample : mixer.Render(61)) {
          if (sample != 0) heard.push_back(Code(sample));
        }
      }
      std::this_thread::yield();
    }
  });
  const auto waiting = [&] {
    ++calls;
    const bool some = stream->Waiting() > 0;
    ++calls;
    return some;
  };
  std::mt19937 random(7);
  for (std::size_t at = 0; at < ramp.size();) {
    const std::size_t count = std::min<std::size_t>(1 + random() % 900, ramp.size() - at);
    ++calls;
    stream->Queue(ramp.data() + at, count);
    ++calls;
    at += count;
    if (random() % 8 == 0) {
      while (waiting()) std::this_thread::yield();
    }
  }
  while (waiting()) std::this_thread::yield();
  done = true;
  listener.join();
  ASSERT_EQ(heard.size(), ramp.size());
  EXPECT_TRUE(heard == ramp);
}

// The moment itself, again and again: a block is handed over while the device mixes the end of the one before it.
TEST_F(Mixer, ABlockThatComesAtTheEndOfTheOneBeforeIsHeard) {
  constexpr std::size_t First = 256;
  constexpr std::size_t Second = 64;
  constexpr std::size_t Whole = First + Second;
  const auto stream = mixer.CreateStream();
  const std::vector<int16> ramp = Ramp(Whole);
  std::atomic<int> turn = 0;  // odd: the device mixes the end
  std::vector<int16> heard;
  const auto hear = [&](std::size_t frames) {
    for (const float sample : mixer.Render(frames)) {
      if (sample != 0) heard.push_back(Code(sample));
    }
  };
  std::thread device([&] {
    for (;;) {
      const int now = turn;
      if (now < 0) return;
      if (now % 2 == 0) continue;
      hear(First + 32);
      ++turn;
    }
  });
  std::mt19937 random(7);
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(2);
  int lost = 0;
  for (int round = 0; round < 30'000 && lost == 0 && std::chrono::steady_clock::now() < end; ++round) {
    heard.clear();
    stream->Queue(ramp.data(), First);
    ++turn;
    for (std::atomic<std::size_t> wait = random() % 600; wait > 0; --wait) {
    }
    stream->Queue(ramp.data() + First, Second);
    while (turn % 2 == 1) std::this_thread::yield();
    for (int more = 0; more < 20 && (heard.size() < Whole || stream->Waiting() > 0); ++more) hear(Whole);
    if (heard != ramp) ++lost;
  }
  turn = -2;
  device.join();
  EXPECT_EQ(lost, 0);
  EXPECT_EQ(heard, ramp);
}

// Hours of sound lie in the stream's own memory and reach the device bit by bit, by the mixer's own thread.
TEST_F(Mixer, FeedsALongStreamByItself) {
  const auto stream = mixer.CreateStream();
  const std::vector<int16> ramp = Ramp(300'000);
  stream->Queue(ramp.data(), ramp.size());
  std::size_t heard = 0;
  const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(20);
  while (heard < ramp.size() && std::chrono::steady_clock::now() < limit) {
    for (const float sample : mixer.Render(Period)) {
      if (sample == 0) continue;  // rendered faster than it was fed
      ASSERT_EQ(Code(sample), ramp[heard]);
      ++heard;
    }
    std::this_thread::sleep_for(std::chrono::microseconds(200));
  }
  EXPECT_EQ(heard, ramp.size());
}

TEST(MixerDevice, AMissingDeviceIsToldAndAVoiceIsHeardToItsEndInSilence) {
  OpenAlMixer mixer(MixerSettings{.device = "no such device"});
  EXPECT_FALSE(mixer.Open());
  EXPECT_NE(mixer.Problem().find("no such device"), std::string::npos);
  EXPECT_FALSE(mixer.Open());
  EXPECT_FALSE(mixer.Problem().empty());
  const auto stream = mixer.CreateStream();
  ASSERT_NE(stream, nullptr);
  const std::vector<int16> samples(2000, 8000);
  stream->Queue(samples.data(), samples.size());
  const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  while (stream->Waiting() > 0 && std::chrono::steady_clock::now() < limit) {
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
  }
  EXPECT_EQ(stream->Waiting(), 0U);
}

TEST(MixerDevice, AStreamEndsByItselfOnARunningDevice) {
  OpenAlMixer mixer;
  if (!mixer.Open()) GTEST_SKIP() << "no device, not even the null one: " << mixer.Problem();
  const auto stream = mixer.CreateStream();
  ASSERT_NE(stream, nullptr);
  const std::vector<int16> sine = Sine(440, 0.1, 2000);
  stream->SetVolume(0);  // a developer's machine may have speakers
  stream->Queue(sine.data(), sine.size());
  EXPECT_GT(stream->Waiting(), 0U);
  const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  while (stream->Waiting() > 0 && std::chrono::steady_clock::now() < limit) {
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
  }
  EXPECT_EQ(stream->Waiting(), 0U);
}

}  // namespace
}  // namespace corvid
