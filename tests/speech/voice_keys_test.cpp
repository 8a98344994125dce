// SPDX-License-Identifier: GPL-3.0-or-later
#include "speech/voice_keys.h"

#include <gtest/gtest.h>

#include "core/keys.h"
#include "speech_house.h"

namespace corvid {
namespace {

using testing_speech::SpeechHouse;
using testing_speech::Texts;

struct VoiceKeysHouse : SpeechHouse {
  explicit VoiceKeysHouse(int16 type = speechtype::Engine) {
    AllChannels(type);
    speech.TTSSetup(type);
    mem.effects.Clear();
  }
  // The player presses these, one after the other.
  void Will(const std::vector<KeyPress>& presses) {
    for (const KeyPress& press : presses) {
      mem.loop.Post([this, press] {
        EXPECT_TRUE(keyboard.KeysTaken);
        keyboard.TakenKeys.push_back(press);
      });
    }
  }
  void WillAndEnter(const std::vector<int16>& codes) {
    std::vector<KeyPress> presses;
    for (const int16 code : codes) presses.push_back({code, 0});
    presses.push_back({keycode::Enter, 0});
    Will(presses);
  }
};

constexpr int16 F5 = keycode::F1 + 4;

TEST(VoiceKeys, RateAndVolumeRiseWithUpAndRight) {
  const struct {
    int16 Key;
    int Way;
  } cases[] = {{keycode::Up, 1},
               {keycode::Right, 1},
               {'I', 1},
               {'L', 1},
               {keycode::Down, -1},
               {keycode::Left, -1},
               {'K', -1},
               {'J', -1},
               {'A', 0},
               {keycode::Home, 0},
               {F5, 0},
               {keycode::Control, 0},
               {keycode::Tab, 0},
               {keycode::Shift, 0}};
  for (const auto& at : cases) {
    VoiceKeysHouse house;
    int16 rate = 3;
    house.WillAndEnter({at.Key});
    house.voiceKeys.AdjustRate(rate);
    EXPECT_EQ(rate, 3 + at.Way) << at.Key;
    Texts said{"1 Use the arrows to adjust rate. Press Enter when done."};
    if (at.Way != 0) said.emplace_back("1 Here is the new rate.");
    EXPECT_EQ(house.Told("speech"), said) << at.Key;

    int16 volume = 50;
    house.mem.effects.Clear();
    house.WillAndEnter({at.Key});
    house.voiceKeys.AdjustVolume(volume);
    EXPECT_EQ(volume, 50 + 5 * at.Way) << at.Key;
    said = {"1 Use the arrows to adjust volume. Press Enter when done."};
    if (at.Way != 0) said.emplace_back("1 Here is the new volume.");
    EXPECT_EQ(house.Told("speech"), said) << at.Key;
    EXPECT_FALSE(house.keyboard.KeysTaken);
  }
}

TEST(VoiceKeys, VoicesGoTheOtherWay) {
  const struct {
    int16 Key;
    int Way;
  } cases[] = {{keycode::Down, 1}, {keycode::Left, 1},   {'K', 1},  {'J', 1},
               {keycode::Up, -1},  {keycode::Right, -1}, {'I', -1}, {'L', -1}};
  for (const auto& at : cases) {
    VoiceKeysHouse house;
    int16 voice = 1;
    house.WillAndEnter({at.Key});
    house.voiceKeys.AdjustVoice(voice);
    EXPECT_EQ(voice, 1 + at.Way) << at.Key;
    EXPECT_EQ(house.mem.speech.Set(1).voice, voice);
    EXPECT_EQ(house.Told("speech"),
              Texts({"1 Use the arrows  to select voice. Press Enter when done.", "1 Here is the current voice"}));
  }
}

TEST(VoiceKeys, TheSettingIsHeardBeforeTheSampleAndOtherSpeechStops) {
  VoiceKeysHouse house;
  int16 rate = 0;
  house.WillAndEnter({keycode::Up, keycode::Up});
  house.voiceKeys.AdjustRate(rate);
  EXPECT_EQ(house.mem.speech.Rate(1), 2);
  EXPECT_EQ(house.mem.speech.Rate(2), 0);
  Texts order;
  for (const Effect& effect : house.mem.effects.All()) order.push_back(effect.Kind);
  EXPECT_EQ(order, Texts({"speech", "silence", "silence", "silence", "silence", "silence", "silence", "speech",
                          "silence", "silence", "silence", "silence", "silence", "silence", "speech"}));
}

TEST(VoiceKeys, StopAtTheirLimits) {
  VoiceKeysHouse house;
  int16 volume = 93;
  house.WillAndEnter({keycode::Up, keycode::Up, keycode::Up});
  house.voiceKeys.AdjustVolume(volume);
  EXPECT_EQ(volume, 100);
  EXPECT_EQ(house.mem.speech.Volume(1), 100);
  volume = 7;
  house.WillAndEnter({keycode::Down, keycode::Down, keycode::Down});
  house.voiceKeys.AdjustVolume(volume);
  EXPECT_EQ(volume, 0);
  int16 rate = 20;
  house.WillAndEnter({'L', 'L', 'L'});
  house.voiceKeys.AdjustRate(rate);
  EXPECT_EQ(rate, 21);
  rate = -9;
  house.WillAndEnter({'J', 'J', 'J'});
  house.voiceKeys.AdjustRate(rate);
  EXPECT_EQ(rate, -10);
  int16 voice = 0;
  house.WillAndEnter({keycode::Up, keycode::Down, keycode::Down, keycode::Down, keycode::Down});
  house.voiceKeys.AdjustVoice(voice);
  EXPECT_EQ(voice, 2) << "three voices";
}

TEST(VoiceKeys, TheSampleFollowsAChangeAlone) {
  const struct {
    void (VoiceKeys::*Adjust)(int16&);
    int16 Limit;
    int16 Out, In;  // keys that lead beyond the limit, and away from it
    const char* Sample;
  } cases[] = {
      {&VoiceKeys::AdjustVolume, 100, keycode::Up, keycode::Down, "1 Here is the new volume."},
      {&VoiceKeys::AdjustVolume, 0, keycode::Down, keycode::Up, "1 Here is the new volume."},
      {&VoiceKeys::AdjustRate, 21, keycode::Right, keycode::Left, "1 Here is the new rate."},
      {&VoiceKeys::AdjustRate, -10, keycode::Left, keycode::Right, "1 Here is the new rate."},
      {&VoiceKeys::AdjustVoice, 2, keycode::Down, keycode::Up, "1 Here is the current voice"},
      {&VoiceKeys::AdjustVoice, 0, keycode::Up, keycode::Down, "1 Here is the current voice"},
  };
  for (const auto& at : cases) {
    VoiceKeysHouse house;
    int16 value = at.Limit;
    house.WillAndEnter({at.Out, at.Out});
    (house.voiceKeys.*at.Adjust)(value);
    EXPECT_EQ(value, at.Limit) << at.Sample;
    EXPECT_EQ(house.Told("speech").size(), 1u) << "the question alone, " << at.Sample << at.Limit;
    EXPECT_EQ(house.Told("silence").size(), 0u) << "nothing is said, so nothing is stopped";
    house.mem.effects.Clear();
    house.WillAndEnter({at.Out, at.In, at.Out, at.Out});
    (house.voiceKeys.*at.Adjust)(value);
    EXPECT_EQ(value, at.Limit) << at.Sample;
    const Texts said = house.Told("speech");
    ASSERT_EQ(said.size(), 3u) << "there and back, " << at.Sample << at.Limit;
    EXPECT_EQ(said[1], at.Sample);
    EXPECT_EQ(said[2], at.Sample);
  }
}

TEST(VoiceKeys, AValueBeyondItsLimitsComesBackAtTheFirstKey) {
  VoiceKeysHouse house;
  int16 volume = 120;
  house.WillAndEnter({keycode::Up, keycode::Up});
  house.voiceKeys.AdjustVolume(volume);
  EXPECT_EQ(volume, 100);
  EXPECT_EQ(house.Told("speech").size(), 2u) << "one sample";
}

TEST(VoiceKeys, EscapeEndsAnAdjusterToo) {
  VoiceKeysHouse house;
  int16 rate = 0;
  house.Will({{keycode::Up, 0}, {keycode::Escape, 0}, {keycode::Up, 0}});
  house.voiceKeys.AdjustRate(rate);
  EXPECT_EQ(rate, 1);
}

TEST(VoiceKeys, AdjustersDoNothingWithoutTheEngine) {
  for (const int16 type : {speechtype::None, speechtype::ScreenReader}) {
    VoiceKeysHouse house(type);
    int16 value = 5;
    house.voiceKeys.AdjustVoice(value);
    house.voiceKeys.AdjustRate(value);
    house.voiceKeys.AdjustVolume(value);
    EXPECT_EQ(value, 5);
    EXPECT_EQ(house.mem.effects.All().size(), 0u);
  }
}

TEST(VoiceKeys, NoVoiceIsTold) {
  VoiceKeysHouse house;
  house.mem.speech.VoiceNames.clear();
  house.mem.face.Will("Ok");
  int16 voice = 4;
  house.voiceKeys.AdjustVoice(voice);
  EXPECT_EQ(voice, 4);
  EXPECT_EQ(house.Told("dialog"), Texts{"MSGBOX Error! |No MS SAPI Voices were found."});
}

TEST(VoiceKeys, EndWithTheProgramOrItsPlayer) {
  VoiceKeysHouse house;
  house.mem.loop.Post([&] { house.mem.loop.End(0); });
  int16 rate = 4;
  house.voiceKeys.AdjustRate(rate);
  EXPECT_EQ(rate, 4);
  EXPECT_FALSE(house.keyboard.KeysTaken);
  VoiceKeysHouse lonely;
  lonely.mem.face.Player = false;
  EXPECT_EQ(lonely.voiceKeys.EditBox("Name?"), "");
}

TEST(EditBox, CollectsWhatIsTypedAndSpeaksIt) {
  VoiceKeysHouse house;
  house.Will({{'B', ShiftBit},
              {keycode::Shift, ShiftBit},
              {'O', 0},
              {keycode::Left, 0},
              {32, 0},
              {'1', 0},
              {'1', ShiftBit},
              {186, ShiftBit},
              {F5, 0},
              {'C', ControlBit},
              {'X', AltBit},
              {keycode::Enter, 0}});
  EXPECT_EQ(house.voiceKeys.EditBox("Name?"), "Bo 1!:");
  EXPECT_EQ(house.Told("speech"), Texts({"1 Name?", "1 B", "1 o", "1 space", "1 1", "1 exclaim", "1 colan"}));
}

TEST(EditBox, BackspaceSpeaksAndRemovesTheLastCharacter) {
  VoiceKeysHouse house;
  house.Will({{keycode::Backspace, 0},
              {'A', 0},
              {190, 0},
              {keycode::Backspace, 0},
              {'B', 0},
              {keycode::Backspace, 0},
              {keycode::Backspace, 0},
              {keycode::Backspace, 0},
              {'C', 0},
              {keycode::Enter, 0}});
  EXPECT_EQ(house.voiceKeys.EditBox("Name?"), "c");
  EXPECT_EQ(house.Told("speech"), Texts({"1 Name?", "1 a", "1 period", "1 period", "1 b", "1 b", "1 a", "1 c"}));
}

TEST(EditBox, KeysFromBeforeTheQuestionAnswerNothing) {
  VoiceKeysHouse house;
  house.keyboard.TakenKeys = {{'X', 0}, {keycode::Enter, 0}};
  house.Will({{'A', 0}, {keycode::Enter, 0}, {'B', 0}});
  EXPECT_EQ(house.voiceKeys.EditBox("Name?"), "a");
  EXPECT_TRUE(house.keyboard.TakenKeys.empty());
}

TEST(EditBox, EscapeGivesNothing) {
  VoiceKeysHouse house(speechtype::ScreenReader);
  house.Will({{'A', 0}, {keycode::Escape, 0}});
  EXPECT_EQ(house.voiceKeys.EditBox("Name?"), "");
  EXPECT_EQ(house.Told("say"), Texts({"1 Name?", "1 a"}));
}

// --- the last thing again ---

TEST(LastThing, IsRepeatedOnTheFirstChannelInTheWayChosen) {
  VoiceKeysHouse house;
  house.state.SpeechType[1] = 1;
  house.speech.SpeakOut("You are hungry.\r\n", 6, 0);
  house.mem.effects.Clear();
  house.speech.RepeatLastThingSpoken();
  house.speech.RepeatLastThingSpoken();
  EXPECT_EQ(house.Told("speech"), Texts({"1 You are hungry.\r\n", "1 You are hungry.\r\n"}));
  EXPECT_EQ(house.state.LastSpoken, "You are hungry.\r\n");
  VoiceKeysHouse silent;
  silent.speech.RepeatLastThingSpoken();
  EXPECT_EQ(silent.mem.effects.All().size(), 0u);
}

TEST(LastThing, IsSpelledWithAPauseBehindEachCharacter) {
  VoiceKeysHouse house;
  house.state.LastSpoken = "a b";
  house.speech.SpellLastThingSpoken();
  EXPECT_EQ(house.Told("speech"), Texts({"1 a", "1 space", "1 b"}));
  EXPECT_EQ(house.Told("silence").size(), 18u) << "all six voices, before each";
  EXPECT_EQ(house.mem.clock.MonotonicMilliseconds(), 1200);
  EXPECT_EQ(house.state.LastSpoken, "a b");
  house.mem.effects.Clear();
  house.state.LastSpoken = "\xC3\xA9\r\n!\r\n";
  house.speech.SpellLastThingSpoken();
  EXPECT_EQ(house.Told("speech"), Texts({"1 \xC3\xA9", "1 \r", "1 \n", "1 exclaim", "1 \r", "1 \n"}))
      << "each character, and what has no name as itself";
  EXPECT_EQ(house.mem.clock.MonotonicMilliseconds(), 1200 + 6 * 400);
  EXPECT_EQ(house.state.LastSpoken, "\xC3\xA9\r\n!\r\n");
}

TEST(LastThing, SpellingEndsAtAKey) {
  VoiceKeysHouse house;
  house.state.LastSpoken = "abcdef";
  auto timer = house.mem.loop.Create([&] { house.keyboard.LastKeyCode = 27; });
  timer->SetInterval(500);
  timer->SetEnabled(true);
  house.speech.SpellLastThingSpoken();
  EXPECT_EQ(house.Told("speech"), Texts({"1 a", "1 b"}));
  EXPECT_EQ(house.state.LastSpoken, "abcdef");
}

TEST(SpellWord, SaysALineBreakAsOne) {
  VoiceKeysHouse house;
  house.speech.SpellWord("\r\n", 2);
  house.speech.SpellWord("\n", 3);
  EXPECT_EQ(house.Told("speech"), Texts({"2 new line", "3 new line"}));
  EXPECT_EQ(house.mem.clock.MonotonicMilliseconds(), 0);
}

// --- waiting ---

TEST(Waiter2, LetsTimePassOverMidnightWhileTheRestGoesOn) {
  VoiceKeysHouse house;
  house.mem.clock.SetNow({2026, 1, 15, 23, 59, 58});
  int ticks = 0;
  auto timer = house.mem.loop.Create([&] { ++ticks; });
  timer->SetInterval(1000);
  timer->SetEnabled(true);
  house.speech.Waiter2(4.5);
  EXPECT_EQ(house.mem.clock.MonotonicMilliseconds(), 4500);
  EXPECT_EQ(ticks, 4);
  house.speech.Waiter2(0);
  house.speech.Waiter2(-3);
  EXPECT_EQ(house.mem.clock.MonotonicMilliseconds(), 4500);
  auto end = house.mem.loop.Create([&] { house.mem.loop.End(0); });
  end->SetInterval(2000);
  end->SetEnabled(true);
  house.speech.Waiter2(1e300);
  EXPECT_EQ(house.mem.clock.MonotonicMilliseconds(), 6500) << "it ends with the program";
}

}  // namespace
}  // namespace corvid
