// SPDX-License-Identifier: GPL-3.0-or-later
// The six voices as they are heard: everything is listened to on the rendered samples.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "platform/espeak/espeak_engine.h"
#include "platform/openal/mixer.h"
#include "platform/silent_speech.h"

namespace corvid {
namespace {

constexpr std::size_t Period = 256;
const std::string Sentence = "The orc hits you with a mighty blow.";
const std::string Paragraph = Sentence + " " + Sentence + " " + Sentence + " " + Sentence;

double Peak(const std::vector<float>& samples) {
  double peak = 0;
  for (const float sample : samples) peak = std::max(peak, std::abs(static_cast<double>(sample)));
  return peak;
}

// Hands everything on to the mixer and remembers who is heard.
struct Ear {
  struct Stream : PcmStream {
    explicit Stream(std::unique_ptr<PcmStream> inner_) : inner(std::move(inner_)) {}
    void Queue(const int16* samples, std::size_t count) override { inner->Queue(samples, count); }
    void Purge() override { inner->Purge(); }
    void SetPaused(bool value) override {
      paused = value;
      inner->SetPaused(value);
    }
    void SetVolume(double volume) override { inner->SetVolume(volume); }
    std::size_t Waiting() override { return inner->Waiting(); }
    std::unique_ptr<PcmStream> inner;
    std::atomic<bool> paused = false;
  };
};

class ListenedAudio : public AudioOutput {
 public:
  bool Open() override { return mixer.Open(); }
  std::string Problem() const override { return mixer.Problem(); }
  std::unique_ptr<PcmStream> CreateStream() override {
    auto stream = std::make_unique<Ear::Stream>(mixer.CreateStream());
    voices.push_back(stream.get());  // the engine makes them in the order of its voices
    return stream;
  }
  std::set<int> Heard() {
    std::set<int> heard;
    for (std::size_t i = 0; i < voices.size(); ++i) {
      if (!voices[i]->paused && voices[i]->Waiting() > 0) heard.insert(static_cast<int>(i) + 1);
    }
    return heard;
  }
  OpenAlMixer mixer{MixerSettings{.loopback = true}};
  std::vector<Ear::Stream*> voices;
};

class Espeak : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(engine.Start()) << engine.Problem(); }

  // Renders one period, noting who is heard and how loud it is.
  void Step() {
    const std::set<int> now = audio.Heard();
    const std::vector<float> part = audio.mixer.Render(Period);
    samples.insert(samples.end(), part.begin(), part.end());
    if (!now.empty() && (turns.empty() || turns.back() != now)) turns.push_back(now);
    periods[now]++;
    std::this_thread::sleep_for(std::chrono::microseconds(500));  // the voices' thread works meanwhile
  }
  // Renders until the condition holds; false when it does not come true.
  bool Until(const std::function<bool()>& condition) {
    const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    while (!condition()) {
      if (std::chrono::steady_clock::now() > limit) return false;
      Step();
    }
    return true;
  }
  bool UntilHeard(int voice) {
    return Until([&] { return audio.Heard().contains(voice); });
  }
  void UntilSilent() {
    ASSERT_TRUE(Until([&] { return engine.Idle(); }));
  }
  // The audible samples of one text said alone.
  std::vector<float> Said(int16 voice, const std::string& text) {
    samples.clear();
    engine.Speak(voice, text);
    UntilSilent();
    const auto loud = [](float sample) { return std::abs(sample) > 0.003F; };
    const auto first = std::find_if(samples.begin(), samples.end(), loud);
    const auto last = std::find_if(samples.rbegin(), samples.rend(), loud).base();
    return first < last ? std::vector<float>(first, last) : std::vector<float>{};
  }
  // How many samples have sound. On a busy machine, voices that are rendered faster than real time leave gaps; they do
  // not count.
  static double Audible(const std::vector<float>& heard) {
    return static_cast<double>(std::count_if(heard.begin(), heard.end(), [](float sample) { return sample != 0; }));
  }
  static double Level(const std::vector<float>& heard) {
    double sum = 0;
    for (const float sample : heard) sum += static_cast<double>(sample) * static_cast<double>(sample);
    return heard.empty() ? 0 : std::sqrt(sum / static_cast<double>(heard.size()));
  }
  std::string Turns() const {
    std::string text;
    for (const std::set<int>& turn : turns) {
      text += text.empty() ? "" : " ";
      std::string together;
      for (const int voice : turn) together += (together.empty() ? "" : "+") + std::to_string(voice);
      text += together;
    }
    return text;
  }

  ListenedAudio audio;
  EspeakEngine engine{audio};
  std::vector<float> samples;        // all that was rendered
  std::vector<std::set<int>> turns;  // who was heard, one entry for each change
  std::map<std::set<int>, int> periods;
};

TEST_F(Espeak, IsSilentUntilSomebodySpeaks) {
  for (int i = 0; i < 40; ++i) Step();
  EXPECT_EQ(Peak(samples), 0);
}

TEST_F(Espeak, SpeaksAndEnds) {
  const std::vector<float> heard = Said(1, Sentence);
  EXPECT_GT(Level(heard), 0.02);
  EXPECT_NEAR(static_cast<double>(heard.size()) / VoiceSampleRate, 1.7, 0.5);
  samples.clear();
  Step();
  EXPECT_EQ(Peak(samples), 0);
}

TEST_F(Espeak, PurgeIsSilentWithinAPeriod) {
  engine.Speak(1, Paragraph);
  ASSERT_TRUE(Until([&] { return Peak(samples) > 0.1; }));
  engine.Purge(1);
  EXPECT_EQ(Peak(audio.mixer.Render(Period)), 0);
  samples.clear();
  for (int i = 0; i < 40; ++i) Step();
  EXPECT_EQ(Peak(samples), 0) << "samples made before the purge came after it";
}

TEST_F(Espeak, QueuedVoicesFollowEachOtherInOrder) {
  engine.Speak(3, "First.");
  engine.Speak(1, "Second.");
  engine.Speak(2, "Third.");
  engine.Speak(1, "Fourth.");
  UntilSilent();
  EXPECT_EQ(Turns(), "3 1 2 1");
}

TEST_F(Espeak, SpeakingOverIsMixed) {
  engine.SetPriority(2, 2);
  engine.Speak(1, Sentence);
  ASSERT_TRUE(UntilHeard(1));
  engine.Speak(2, Sentence);
  UntilSilent();
  EXPECT_GT((periods[{1, 2}]), 30);
  EXPECT_EQ(turns.front(), std::set<int>{1});
  EXPECT_GT(Peak(samples), 0.1);
}

TEST_F(Espeak, SpeakingAheadInterruptsAndTheRestFollows) {
  const double alone = Audible(Said(1, Sentence)) + Audible(Said(2, "Third.")) + Audible(Said(5, "Ahead."));
  samples.clear();
  turns.clear();
  periods.clear();
  engine.SetPriority(5, 1);
  engine.Speak(1, Sentence);
  engine.Speak(2, "Third.");
  ASSERT_TRUE(Until([&] { return !turns.empty() && Peak(samples) > 0.05; }));
  engine.Speak(5, "Ahead.");
  UntilSilent();
  EXPECT_EQ(Turns(), "1 5 1 2");
  EXPECT_EQ((periods[{1, 5}]), 0);
  // What was interrupted is heard to its end, and none of it twice.
  EXPECT_NEAR(Audible(samples), alone, alone / 20);
}

TEST_F(Espeak, PriorityIsThatOfTheMomentOfSpeaking) {
  engine.SetPriority(2, 2);
  engine.Speak(1, Sentence);
  engine.Speak(2, Sentence);
  engine.SetPriority(2, 0);
  engine.Speak(2, "Queued.");
  UntilSilent();
  EXPECT_GT((periods[{1, 2}]), 30);
  EXPECT_EQ(turns.back(), std::set<int>{2});
}

TEST_F(Espeak, PurgeOfOneVoiceLeavesTheOthers) {
  engine.SetPriority(3, 2);
  engine.Speak(1, Paragraph);
  engine.Speak(2, "Next.");
  engine.Speak(3, Sentence);
  ASSERT_TRUE(Until([&] { return audio.Heard() == std::set<int>{1, 3}; }));
  engine.Purge(1);
  EXPECT_FALSE(audio.Heard().contains(1));
  EXPECT_TRUE(audio.Heard().contains(3));
  EXPECT_TRUE(UntilHeard(2));
  UntilSilent();
}

TEST_F(Espeak, AThousandLinesArePurgedAtOnce) {
  for (int i = 0; i < 1000; ++i) engine.Speak(1, "Line number " + std::to_string(i) + " of a flood.");
  ASSERT_TRUE(UntilHeard(1));
  engine.Purge(1);
  EXPECT_EQ(Peak(audio.mixer.Render(Period)), 0);
  turns.clear();
  engine.Speak(2, "After the flood.");
  UntilSilent();
  EXPECT_EQ(Turns(), "2");
}

TEST_F(Espeak, AnEndlessLineHoldsUpNothing) {
  std::string line;
  while (line.size() < 1'000'000) line += "words without any end ";
  engine.SetPriority(2, 2);
  engine.Speak(1, line);
  engine.Speak(1, std::string(1'000'000, 'x'));
  ASSERT_TRUE(UntilHeard(1));
  engine.Speak(2, "Over it.");
  EXPECT_TRUE(UntilHeard(2));
  engine.Purge(1);
  engine.Purge(2);
  EXPECT_EQ(Peak(audio.mixer.Render(Period)), 0);
  turns.clear();
  engine.Speak(3, "Free again.");
  UntilSilent();
  EXPECT_EQ(Turns(), "3");
}

TEST_F(Espeak, ALongLineIsSaidToItsEndWithoutRepeating) {
  engine.SetRate(1, 21);
  const double one = Audible(Said(1, Sentence));
  std::string line;
  for (int i = 0; i < 20; ++i) line += Sentence + " ";
  EXPECT_NEAR(Audible(Said(1, line)), 20 * one, 2 * one);
}

TEST_F(Espeak, RateChangesTheLength) {
  const auto normal = static_cast<double>(Said(1, Sentence).size());
  engine.SetRate(1, 10);
  const auto fast = static_cast<double>(Said(1, Sentence).size());
  engine.SetRate(1, -10);
  const auto slow = static_cast<double>(Said(1, Sentence).size());
  EXPECT_NEAR(normal / fast, 2.16, 0.5);
  EXPECT_NEAR(slow / normal, 2.16, 0.5);
  EXPECT_EQ(WordsPerMinute(0), 175);
  EXPECT_EQ(WordsPerMinute(-10), 81);
  EXPECT_EQ(WordsPerMinute(21), 881);
}

TEST_F(Espeak, VolumeIsAFactorOfTheLevel) {
  const double full = Level(Said(1, Sentence));
  engine.SetVolume(1, 50);
  EXPECT_NEAR(Level(Said(1, Sentence)) / full, 0.5, 0.05);
  engine.SetVolume(1, 0);
  EXPECT_EQ(Level(Said(1, Sentence)), 0);
}

TEST_F(Espeak, SettingsAreClampedAndKept) {
  engine.SetRate(2, 99);
  engine.SetVolume(2, -5);
  EXPECT_EQ(engine.Rate(2), 21);
  EXPECT_EQ(engine.Volume(2), 0);
  engine.SetRate(2, -99);
  engine.SetVolume(2, 400);
  EXPECT_EQ(engine.Rate(2), -10);
  EXPECT_EQ(engine.Volume(2), 100);
  EXPECT_EQ(engine.Rate(3), 0);
  EXPECT_EQ(engine.Volume(3), 100);
}

TEST_F(Espeak, VoicesAreListedEnglishFirstAndSoundDifferent) {
  const std::vector<std::string> voices = engine.Voices();
  ASSERT_GT(voices.size(), 20U);
  EXPECT_EQ(voices, engine.Voices());
  EXPECT_EQ(voices[0].substr(0, 7), "English");
  EXPECT_EQ(std::set<std::string>(voices.begin(), voices.end()).size(), voices.size());

  const std::vector<float> first = Said(1, Sentence);
  const auto other = std::find_if(voices.begin(), voices.end(),
                                  [](const std::string& name) { return name.find("female1") != std::string::npos; });
  ASSERT_NE(other, voices.end());
  engine.SetVoice(2, static_cast<int16>(other - voices.begin()));
  const std::vector<float> second = Said(2, Sentence);
  EXPECT_GT(std::abs(Level(first) - Level(second)) / Level(first), 0.05);
  const auto german = std::find(voices.begin(), voices.end(), "German");
  ASSERT_NE(german, voices.end());
  engine.SetVoice(2, static_cast<int16>(german - voices.begin()));
  EXPECT_GT(Level(Said(2, "Guten Tag")), 0.02);
}

TEST_F(Espeak, NumbersOutOfRangeAreIgnored) {
  engine.SetVoice(1, -1);
  engine.SetVoice(1, 32000);
  engine.SetRate(0, 5);
  engine.SetVolume(7, 5);
  engine.SetPriority(-3, 2);
  engine.Speak(0, Sentence);
  engine.Speak(7, Sentence);
  engine.Purge(0);
  engine.Purge(7);
  EXPECT_GT(Level(Said(1, "Still the first voice.")), 0.02);
  EXPECT_EQ(Turns(), "1");
}

TEST_F(Espeak, ACharacterAloneIsNamed) {
  EXPECT_GT(Level(Said(1, ">")), 0.02);
  EXPECT_GT(Level(Said(1, "_")), 0.02);
  EXPECT_TRUE(Said(1, "> ").empty());  // a prompt of a game
}

TEST(SynthesizerPieces, EveryCharacterHasAName) {
  Synthesizer synthesizer;
  ASSERT_EQ(synthesizer.Open(), "");
  for (char code = 33; code < 127; ++code) {
    int peak = 0;
    synthesizer.Say({.text = std::string(1, code), .rate = 21, .character = true},
                    [&](const int16* samples, std::size_t count) {
                      for (std::size_t i = 0; i < count; ++i) peak = std::max(peak, std::abs(samples[i]));
                      return true;
                    });
    EXPECT_GT(peak, 500) << "character " << code;
  }
}

TEST(SynthesizerPieces, ASinkThatSaysNoEndsThePiece) {
  Synthesizer synthesizer;
  ASSERT_EQ(synthesizer.Open(), "");
  int calls = 0;
  synthesizer.Say({.text = Paragraph}, [&](const int16*, std::size_t) { return ++calls < 3; });
  EXPECT_EQ(calls, 3);
}

TEST_F(Espeak, ControlCodesAreNotSpoken) {
  EXPECT_TRUE(Said(1, std::string("\x01\x02\x07\x1B\0", 5)).empty());
  const auto plain = static_cast<double>(Said(1, "hello there").size());
  const auto coded = static_cast<double>(Said(1, std::string("hello\x07\x1B there\0\x7F", 15)).size());
  EXPECT_NEAR(coded / plain, 1, 0.1);
}

TEST_F(Espeak, BytesThatAreNoUtf8AreReadAsTheirCharacters) {
  engine.SetRate(1, 5);
  const auto utf8 = static_cast<double>(Said(1, "caf\xC3\xA9 cr\xC3\xA8me").size());
  const auto bytes = static_cast<double>(Said(1, "caf\xE9 cr\xE8me").size());
  EXPECT_NEAR(bytes / utf8, 1, 0.03);
}

TEST_F(Espeak, EndsInTheMiddleOfAWord) {
  for (int16 voice = 1; voice <= 6; ++voice) engine.Speak(voice, Paragraph);
  ASSERT_TRUE(UntilHeard(1));
}

TEST(EspeakProblem, NoSoundDeviceIsToldAndTheProgramGoesOn) {
  OpenAlMixer mixer(MixerSettings{.device = "no such device"});
  EspeakEngine engine(mixer);
  EXPECT_FALSE(engine.Start());
  EXPECT_EQ(engine.Problem(), mixer.Problem());
  EXPECT_FALSE(engine.Problem().empty());
  engine.Speak(1, "Nobody hears this.");
  engine.Purge(1);
  engine.SetRate(1, 4);
  EXPECT_EQ(engine.Rate(1), 4);
}

TEST(EspeakProblem, ADeviceThatComesLaterIsSpokenThrough) {
  OpenAlMixer mixer(MixerSettings{.loopback = true});
  mixer.SetPlugged(false);
  EspeakEngine engine(mixer);
  EXPECT_FALSE(engine.Start());
  mixer.SetPlugged(true);
  ASSERT_TRUE(engine.Start());
  EXPECT_EQ(engine.Problem(), "");
  engine.Speak(1, "Hello.");
  bool heard = false;
  for (int i = 0; i < 2000 && !heard; ++i) {
    const std::vector<float> samples = mixer.Render(220);
    heard = std::any_of(samples.begin(), samples.end(), [](float sample) { return sample > 0.01F; });
    std::this_thread::sleep_for(std::chrono::milliseconds(1));  // the voice is made meanwhile
  }
  EXPECT_TRUE(heard);
}

// In a process of its own: the library keeps data that it has once found.
TEST(EspeakProblemDeathTest, MissingVoiceDataIsToldAndMayBeTriedAgain) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  const std::filesystem::path folder = std::filesystem::path(testing::TempDir()) / "corvid-no-voices";
  std::filesystem::create_directories(folder / "espeak-ng-data");
  const auto startTwice = [&folder] {
    ListenedAudio audio;
    EspeakEngine engine(audio);
    setenv("ESPEAK_DATA_PATH", folder.c_str(), 1);
    const bool without = engine.Start();
    const std::string problem = engine.Problem();
    unsetenv("ESPEAK_DATA_PATH");
    const bool with = engine.Start();
    std::fprintf(stderr, "%d, %s, %d", without, problem.c_str(), with);
  };
  EXPECT_EXIT((startTwice(), std::exit(0)), testing::ExitedWithCode(0), "0, The speech engine.*voice data.*, 1");
  std::filesystem::remove_all(folder);
}

TEST(EspeakProblem, SilentSpeechSaysWhy) {
  SilentEngine engine("Built without voices.");
  SilentReader reader("Built without a screen reader.");
  EXPECT_FALSE(engine.Start());
  EXPECT_EQ(engine.Problem(), "Built without voices.");
  engine.SetRate(2, 7);
  engine.SetVolume(2, 30);
  EXPECT_EQ(engine.Rate(2), 7);
  EXPECT_EQ(engine.Volume(2), 30);
  EXPECT_EQ(engine.Volume(1), 100);
  EXPECT_TRUE(engine.Voices().empty());
  EXPECT_FALSE(reader.Start());
  EXPECT_EQ(reader.Problem(), "Built without a screen reader.");
}

}  // namespace
}  // namespace corvid
