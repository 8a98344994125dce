// SPDX-License-Identifier: GPL-3.0-or-later
// The voices of the channels.
#include <gtest/gtest.h>

#include "core/fault.h"
#include "speech/speech.h"
#include "speech_house.h"

namespace corvid {
namespace {

using testing_speech::SpeechHouse;
using testing_speech::Texts;
using testing_speech::TwoWays;

TEST(Voices, AreSetPerChannelAndClamped) {
  SpeechHouse house;
  house.speech.SetSapiValues(2, 30, 150, 1, 4);
  house.speech.SetSapiValues(1, -40, -1, 2, -1);
  const auto& four = house.mem.speech.Set(4);
  EXPECT_EQ(four.voice, 2);
  EXPECT_EQ(four.rate, 21);
  EXPECT_EQ(four.volume, 100);
  EXPECT_EQ(four.priority, 1);
  const auto& one = house.mem.speech.Set(1);
  EXPECT_EQ(one.voice, 1);
  EXPECT_EQ(one.rate, -10);
  EXPECT_EQ(one.volume, 0);
  EXPECT_EQ(one.priority, 2);
  house.speech.SetSapiValues(0, 0, 0, 0, 9);  // no such channel
}

struct NoSuchVoice : MemorySpeech {
  using MemorySpeech::MemorySpeech;
  void SetVoice(int16, int16) override { throw Fault(FaultKind::Index, "There is no such voice"); }
};

struct CountedStarts : MemorySpeech {
  using MemorySpeech::MemorySpeech;
  bool Start() override {
    ++Starts;
    return MemorySpeech::Start();
  }
  int Starts = 0;
};

TEST(Voices, AndTheReaderAreMadeReadyOnce) {
  SpeechHouse house;
  CountedStarts engine(house.mem.effects);
  CountedStarts reader(house.mem.effects);
  Platform platform{house.mem.clock, house.mem.loop,   house.mem.loop,     house.mem.sockets,
                    house.mem.files, house.mem.places, house.mem.settings, engine,
                    reader,          house.mem.face,   house.mem.sounds};
  Speech speech(house.state, house.keyboard, platform);
  for (const int16 type :
       {speechtype::Engine, speechtype::ScreenReader, speechtype::Engine, speechtype::ScreenReader}) {
    speech.TTSSetup(type);
    speech.Speak("text", -1, 1);
  }
  EXPECT_EQ(engine.Starts, 1);
  EXPECT_EQ(reader.Starts, 1);
}

TEST(Voices, AMissingOneLeavesTheOtherValuesToBeSet) {
  SpeechHouse house;
  NoSuchVoice engine(house.mem.effects);
  TwoWays both(house, engine);
  both.speech.SetSapiValues(99, 5, 40, 2, 3);
  EXPECT_EQ(engine.Set(3).voice, 0);
  EXPECT_EQ(engine.Set(3).rate, 5);
  EXPECT_EQ(engine.Set(3).volume, 40);
  EXPECT_EQ(engine.Set(3).priority, 2);
}

TEST(Voices, OfTheChannelsThatTheEngineSpeaksAreApplied) {
  SpeechHouse house;
  house.AllChannels(3);
  house.state.SpeechType[2] = 1;
  house.state.VoiceRate = {0, 5, 6, 7, 0, 0, 0};
  house.state.VoiceIndex = {0, 1, 1, 2, 0, 0, 0};
  house.speech.TTSSetup(3);
  EXPECT_EQ(house.mem.speech.Set(1).rate, 5);
  EXPECT_EQ(house.mem.speech.Set(2).rate, 0);
  EXPECT_EQ(house.mem.speech.Set(3).voice, 2);
}

TEST(Voices, ALargeJumpLandsOnTheClamp) {
  SpeechHouse house;
  house.AllChannels(3);
  house.speech.TTSSetup(3);
  int16 rate = 0;
  house.speech.AdjustRate2(1, rate);
  EXPECT_EQ(rate, 1);
  house.mem.speech.SetRate(1, 7);
  house.mem.speech.SetRate(2, 15);
  house.speech.AdjustRate2(2, rate);
  EXPECT_EQ(rate, 9) << "counted from what the first voice has, whatever the caller knew";
  EXPECT_EQ(house.mem.speech.Rate(1), 9);
  EXPECT_EQ(house.mem.speech.Rate(2), 15);
  house.speech.AdjustRate2(32767, rate);
  EXPECT_EQ(rate, 21);
  house.speech.AdjustRate2(1, rate);
  EXPECT_EQ(rate, 21);
  house.speech.AdjustRate2(-32768, rate);
  EXPECT_EQ(rate, -10);
  EXPECT_EQ(house.mem.speech.Rate(1), -10);
  EXPECT_EQ(house.Told("speech"), Texts());
}

}  // namespace
}  // namespace corvid
