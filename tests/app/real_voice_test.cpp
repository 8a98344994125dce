// SPDX-License-Identifier: GPL-3.0-or-later
// The program with the voices that its players hear: what a script sets is listened to on the rendered samples.
#include <algorithm>
#include <chrono>
#include <cmath>
#include <thread>

#include "platform/espeak/espeak_engine.h"
#include "platform/openal/mixer.h"
#include "running_program.h"

namespace corvid {
namespace {

class RealVoiceTest : public testing::Test {
 protected:
  RealVoiceTest() { PutStartFiles(memory.files, OwnVoices()); }
  void SetUp() override { ASSERT_TRUE(corvid.Start({.DataFolder = "/data", .Connect = {}, .PracticePort = {}})); }

  void Do(const std::string& line) { TypeLine(corvid, line); }
  // What a line makes the player hear: its audible samples.
  std::vector<float> Heard(const std::string& line) {
    Do(line);
    std::vector<float> heard;
    const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    while (!engine.Idle() && std::chrono::steady_clock::now() < limit) {
      for (const float sample : mixer.Render(Period))
        if (sample != 0) heard.push_back(sample);
      std::this_thread::sleep_for(std::chrono::microseconds(500));  // the voices' thread works meanwhile
    }
    EXPECT_TRUE(engine.Idle()) << line;
    return heard;
  }
  static double Level(const std::vector<float>& heard) {
    double sum = 0;
    for (const float sample : heard) sum += static_cast<double>(sample) * static_cast<double>(sample);
    return heard.empty() ? 0 : std::sqrt(sum / static_cast<double>(heard.size()));
  }

  static constexpr std::size_t Period = 256;
  MemoryPlatform memory;
  OpenAlMixer mixer{MixerSettings{.loopback = true}};
  EspeakEngine engine{mixer};
  Platform inMemory = memory.All();
  Corvid corvid{{inMemory.clock, inMemory.events, inMemory.timers, inMemory.sockets, inMemory.files, inMemory.places,
                 inMemory.settings, engine, inMemory.screenReader, inMemory.face, inMemory.sounds}};
};

TEST_F(RealVoiceTest, SetSpeechIsHeard) {
  const std::string say = "#SAY {The orc hits you with a mighty blow.} {VoiceOnly|NoDisplay}";
  Do("#SETSPEECH VoiceOnly Sapi 0 100 36");
  EXPECT_EQ(engine.Rate(6), 1);
  const std::vector<float> full = Heard(say);
  ASSERT_GT(Level(full), 0.02);
  Do("#SETSPEECH VoiceOnly Sapi 0 50 36");
  EXPECT_EQ(engine.Volume(6), 50);
  EXPECT_NEAR(Level(Heard(say)) / Level(full), 0.5, 0.05);
  Do("#SETSPEECH VoiceOnly Sapi 0 100 70");
  EXPECT_EQ(engine.Rate(6), 11);
  EXPECT_NEAR(static_cast<double>(full.size()) / static_cast<double>(Heard(say).size()), 2.16, 0.5);
  Do("#SETSPEECH VoiceOnly Off");
  EXPECT_EQ(Heard(say).size(), 0U);
  Do("#SETSPEECH VoiceOnly On");
  EXPECT_GT(Heard(say).size(), 0U);
  EXPECT_EQ(engine.Volume(1), 100) << "the others are left alone";
}

TEST_F(RealVoiceTest, StopEndsWhatIsBeingSaid) {
  Do("#SAY {A very long line that would take a good while to be said to its end, if nobody stopped it.} {Output}");
  for (int i = 0; i < 20; ++i) mixer.Render(Period);
  Do("#SETSPEECH Output Off");
  const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(20);
  while (!engine.Idle() && std::chrono::steady_clock::now() < limit) mixer.Render(Period);
  std::vector<float> rest;
  for (int i = 0; i < 20; ++i) {
    const std::vector<float> part = mixer.Render(Period);
    rest.insert(rest.end(), part.begin(), part.end());
  }
  EXPECT_EQ(std::count_if(rest.begin(), rest.end(), [](float sample) { return sample != 0; }), 0);
}

}  // namespace
}  // namespace corvid
