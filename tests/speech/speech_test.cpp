// SPDX-License-Identifier: GPL-3.0-or-later
#include "speech/speech.h"

#include <gtest/gtest.h>

#include <set>

#include "core/fault.h"
#include "speech/punctuation.h"
#include "speech_house.h"

namespace corvid {
namespace {

using testing_speech::SpeechHouse;
using testing_speech::Texts;

// --- channels ---

TEST(SpeakOut, GoesTheWayOfTheChannel) {
  SpeechHouse house;
  house.AllChannels(3);
  house.state.SpeechType[2] = 1;
  house.state.SpeechType[4] = 0;
  house.speech.SpeakOut("game", 1, 0);
  house.speech.SpeakOut("typed", 2, 0);
  house.speech.SpeakOut("edited", 4, 0);
  EXPECT_EQ(house.Told("speech"), Texts({"1 game"}));
  EXPECT_EQ(house.Told("say"), Texts({"2 typed"}));
  EXPECT_EQ(house.state.LastSpoken, "edited");
}

TEST(SpeakOut, LeavesTheWindowToTheScreenReader) {
  // type, spoken by the window, spoken by us (by the engine or the reader)
  const std::tuple<int16, int16, bool> cases[] = {{1, 0, true},  {1, 1, false}, {3, 0, true},  {3, 1, true},
                                                  {2, 1, false}, {4, 1, false}, {2, 0, false}, {4, 0, false}};
  for (const auto& [type, byWindow, spoken] : cases) {
    SpeechHouse house;
    house.AllChannels(type);
    house.speech.SpeakOut("text", 3, byWindow);
    EXPECT_EQ(house.Told("speech").size() + house.Told("say").size(), spoken ? 1u : 0u) << type << byWindow;
    // Types 2 and 4 reach Speak without the window, and say nothing there.
    EXPECT_EQ(house.state.LastSpoken, spoken || byWindow == 0 ? "text" : "");
  }
}

TEST(SpeakOut, IsSilentWhenMutedOrEmptyOrNoChannel) {
  SpeechHouse house;
  house.AllChannels(3);
  house.state.ChannelMuted[1] = 1;
  house.speech.SpeakOut("muted", 1, 0);
  house.speech.SpeakOut("", 2, 0);
  for (const int window : {-1, 0, 7, 99}) house.speech.SpeakOut("nowhere", static_cast<int16>(window), 0);
  EXPECT_EQ(house.mem.effects.All().size(), 0u);
  EXPECT_EQ(house.state.LastSpoken, "");
}

TEST(Speak, BlanksOnlyLeaveWhatWasSpokenLast) {
  SpeechHouse house;
  house.AllChannels(3);
  house.speech.Speak("words", 3, 2);
  house.speech.Speak("   ", 3, 2);
  EXPECT_EQ(house.Told("speech"), Texts({"2 words"}));
  EXPECT_EQ(house.state.LastSpoken, "words");
  house.speech.Speak("", 3, 2);
  EXPECT_EQ(house.state.LastSpoken, "words");
  house.speech.Speak("\r\n", 3, 2);  // a line end is no blank
  EXPECT_EQ(house.state.LastSpoken, "\r\n");
}

TEST(Speak, NegativeArgumentsMeanTheChosenTypeAndChannelOne) {
  SpeechHouse house;
  house.speech.TTSSetup(1);
  house.speech.Speak("a", -1, -1);
  house.speech.TTSSetup(3);
  house.speech.Speak("b", -1, 4);
  house.speech.TTSSetup(0);
  house.speech.Speak("c", -1, 4);
  house.speech.Speak(house.state.LastSpoken, 3, -1);
  EXPECT_EQ(house.Told("say"), Texts({"1 a"}));
  EXPECT_EQ(house.Told("speech"), Texts({"4 b", "1 c"}));
}

TEST(Stop, StopsByTheChosenType) {
  SpeechHouse house;
  house.speech.TTSSetup(1);
  house.ReadyBoth();
  house.speech.StopSpeech();
  EXPECT_EQ(house.Told("silence"), Texts({"1", "2", "3", "4", "5", "6"}));
  EXPECT_EQ(house.Told("speech").size(), 0u);
  house.speech.TTSSetup(3);
  house.mem.effects.Clear();
  house.speech.StopSpeech();
  EXPECT_EQ(house.Told("silence"), Texts({"1", "2", "3", "4", "5", "6"}));
}

// The engine and the screen reader apart, so that a test sees which of them was meant.
struct TwoWays {
  explicit TwoWays(SpeechHouse& house, MemorySpeech& engine)
      : platform{house.mem.clock,  house.mem.loop,   house.mem.loop,     house.mem.sockets,
                 house.mem.files,  house.mem.places, house.mem.settings, engine,
                 house.mem.speech, house.mem.face,   house.mem.sounds},
        speech(house.state, house.keyboard, platform) {
    speech.SpeakWhateverWorks(false);
  }
  Platform platform;
  Speech speech;
};

TEST(Stop, ReachesTheReaderOrTheEngineAndNotBoth) {
  const struct {
    int16 Type;
    std::size_t Reader, Engine;
  } cases[] = {{1, 6, 0}, {3, 0, 6}, {0, 0, 6}};
  for (const auto& at : cases) {
    SpeechHouse house;
    EffectLog engineLog;
    MemorySpeech engine(engineLog);
    TwoWays both(house, engine);
    both.speech.Speak("x", 1, 1);
    both.speech.Speak("x", 3, 1);
    both.speech.TTSSetup(at.Type);
    both.speech.StopSpeech();
    EXPECT_EQ(house.Told("silence").size(), at.Reader) << at.Type;
    EXPECT_EQ(engineLog.Of("silence").size(), at.Engine) << at.Type;

    house.state.SpeechType[4] = at.Type;
    house.mem.effects.Clear();
    engineLog.Clear();
    both.speech.StopSpeaking(4);
    EXPECT_EQ(house.Told("silence"), at.Type == 1 ? Texts({"4"}) : Texts()) << at.Type;
    EXPECT_EQ(engineLog.Of("silence"), at.Type == 3 ? Texts({"4"}) : Texts()) << at.Type;
  }
}

TEST(Stop, OneChannelByItsOwnType) {
  SpeechHouse house;
  house.AllChannels(3);
  house.state.SpeechType[2] = 1;
  house.state.SpeechType[3] = 0;
  house.ReadyBoth();
  for (const int window : {1, 2, 3, 0, 7}) house.speech.StopSpeaking(static_cast<int16>(window));
  EXPECT_EQ(house.Told("silence"), Texts({"1", "2"}));
}

TEST(Stop, ControlSparesTheChannelsThatAskForIt) {
  SpeechHouse house;
  house.AllChannels(3);
  house.state.NotInterruptedByControl[1] = 1;
  house.state.NotInterruptedByControl[6] = 1;
  house.ReadyBoth();
  house.speech.StopSpeakingAll();
  EXPECT_EQ(house.Told("silence"), Texts({"2", "3", "4", "5"}));
}

TEST(Stop, NeedsNothingThatHasNotSpoken) {
  SpeechHouse house;
  house.AllChannels(3);
  house.speech.StopSpeech();
  house.speech.StopSpeaking(1);
  house.speech.StopSpeakingAll();
  EXPECT_EQ(house.mem.effects.All().size(), 0u);
}

// --- what does not work ---

TEST(NoVoice, IsToldOnceOnTheScreenAndTheProgramGoesOn) {
  SpeechHouse house;
  house.AllChannels(3);
  house.mem.speech.Works = false;
  house.speech.TTSSetup(3);
  for (int i = 0; i < 3; ++i) house.speech.SpeakOut("text", 1, 0);
  house.speech.StopSpeech();
  EXPECT_EQ(house.Told("notice"),
            Texts({"Error! Error initializing screen reader or MS SAPI. There is no voice in this test"}));
  EXPECT_EQ(house.Told("speech"), Texts());
  EXPECT_EQ(house.state.LastSpoken, "text");
  // Chosen again, it is tried again.
  house.mem.speech.Works = true;
  house.speech.TTSSetup(3);
  house.speech.SpeakOut("now", 1, 0);
  EXPECT_EQ(house.Told("speech"), Texts({"1 now"}));
}

TEST(NoVoice, IsToldOnceWhileTheScriptsOfTheStartChooseTheSpeechAgain) {
  SpeechHouse house;
  house.AllChannels(3);
  house.mem.speech.Works = false;
  house.speech.TTSSetup(3);
  house.speech.TTSSetup(3);
  EXPECT_EQ(house.Told("notice").size(), 1u);
  house.mem.clock.Advance(2000);
  house.speech.TTSSetup(3);
  EXPECT_EQ(house.Told("notice").size(), 2u) << "whoever chooses it later hears why it stays silent";
}

TEST(NoVoice, TheTypeThatFailedIsNotUsed) {
  for (const int16 type : {speechtype::ScreenReader, speechtype::Engine}) {
    SpeechHouse house;
    house.mem.speech.Works = false;
    house.speech.TTSSetup(type);
    EXPECT_EQ(house.Told("notice").size(), 1u) << type;
    EXPECT_EQ(house.speech.ChosenType(), speechtype::None) << type;
    house.speech.Speak("text", -1, 1);
    EXPECT_EQ(house.Told("speech").size() + house.Told("say").size(), 0u) << type;
    house.mem.speech.Works = true;
    house.speech.TTSSetup(type);
    EXPECT_EQ(house.speech.ChosenType(), type);
  }
}

TEST(NoVoice, AnEngineThatComesLaterIsFoundWithoutAWord) {
  SpeechHouse house;
  house.AllChannels(3);
  house.state.VoiceRate[2] = 5;
  house.mem.speech.Works = false;
  house.speech.TTSSetup(3);
  house.mem.effects.Clear();
  house.mem.speech.Works = true;  // headphones are plugged in
  house.speech.SpeakOut("too early", 1, 0);
  EXPECT_EQ(house.Told("speech"), Texts()) << "it is not looked for all the time";
  house.mem.loop.Pass(2000);
  house.speech.SpeakOut("text", 1, 0);
  house.speech.Speak("more", -1, 1);
  EXPECT_EQ(house.Told("speech"), Texts({"1 text", "1 more"}));
  EXPECT_EQ(house.speech.ChosenType(), speechtype::Engine);
  EXPECT_EQ(house.mem.speech.Set(2).rate, 5) << "with the voices that were set";
  EXPECT_EQ(house.Told("notice"), Texts());
}

TEST(NoVoice, AReaderThatComesLaterIsFoundWithoutAWord) {
  SpeechHouse house;
  house.AllChannels(1);
  house.mem.speech.Works = false;
  house.speech.TTSSetup(1);
  house.mem.effects.Clear();
  house.speech.SpeakOut("too early", 1, 0);
  EXPECT_EQ(house.Told("say"), Texts());
  EXPECT_EQ(house.speech.ChosenType(), speechtype::None);
  house.mem.speech.Works = true;  // the speech service is there now
  house.speech.SpeakOut("text", 1, 0);
  house.speech.Speak("more", -1, 1);
  EXPECT_EQ(house.Told("say"), Texts({"1 text", "1 more"}));
  EXPECT_EQ(house.speech.ChosenType(), speechtype::ScreenReader);
  EXPECT_EQ(house.Told("notice"), Texts());
}

TEST(NoVoice, ATextThatALateReaderHasBegunCanBeStopped) {
  SpeechHouse house;
  house.AllChannels(1);
  house.mem.speech.Works = false;
  house.speech.TTSSetup(1);
  house.speech.SpeakOut("text", 1, 0);
  house.mem.speech.Works = true;
  house.speech.StopSpeaking(1);
  EXPECT_EQ(house.Told("silence"), Texts({"1"}));
}

TEST(NoVoice, AnEngineThatComesLaterIsNotChosenForAReader) {
  SpeechHouse house;
  house.AllChannels(3);
  house.speech.TTSSetup(1);
  house.mem.speech.Works = false;
  house.speech.SpeakOut("text", 2, 0);
  house.mem.speech.Works = true;
  house.mem.loop.Pass(2000);
  house.speech.SpeakOut("text", 2, 0);
  EXPECT_EQ(house.Told("speech"), Texts({"2 text"}));
  EXPECT_EQ(house.speech.ChosenType(), speechtype::ScreenReader);
}

TEST(NoVoice, EachWayIsMadeReadyWhenAChannelFirstNeedsIt) {
  SpeechHouse house;
  house.AllChannels(3);
  house.state.SpeechType[2] = 1;
  house.mem.speech.Works = false;
  house.speech.SpeakOut("a", 2, 0);
  EXPECT_EQ(house.Told("notice").size(), 1u);
  house.speech.SpeakOut("b", 1, 0);
  EXPECT_EQ(house.Told("notice").size(), 2u);
  house.speech.SpeakOut("b", 1, 0);
  house.speech.SpeakOut("b", 2, 0);
  EXPECT_EQ(house.Told("notice").size(), 2u);
}

TEST(WhateverWorks, SpeaksBeforeATypeIsChosen) {
  SpeechHouse house;
  house.speech.SpeakOut("first question", 5, 0);
  house.speech.StopSpeaking(5);
  EXPECT_EQ(house.Told("speech"), Texts({"5 first question"}));
  EXPECT_EQ(house.Told("silence"), Texts({"5"}));
  house.speech.TTSSetup(0);
  house.speech.SpeakOut("silent now", 5, 0);
  EXPECT_EQ(house.Told("speech").size(), 1u);
}

TEST(WhateverWorks, TellsOnceThatNothingDoes) {
  SpeechHouse house;
  house.mem.speech.Works = false;
  for (int i = 0; i < 3; ++i) house.speech.SpeakOut("text", 5, 0);
  EXPECT_EQ(house.Told("notice").size(), 1u);
}

// --- voices ---

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

// --- characters ---

TEST(Punctuation, HasItsSpokenNames) {
  const std::pair<const char*, const char*> names[] = {
      {" ", "space"},        {"!", "exclaim"},       {"\"", "quote"},     {"'", "apostrophe"},   {"(", "left parren"},
      {")", "right parren"}, {",", "comma"},         {"-", "dash"},       {".", "period"},       {":", "colan"},
      {";", "semi colan"},   {"<", "less"},          {">", "greater"},    {"?", "question"},     {"[", "left bracket"},
      {"\\", "back slash"},  {"]", "right bracket"}, {"{", "left brace"}, {"|", "vertical bar"}, {"}", "right brace"}};
  std::set<std::string> named;
  for (const auto& [character, name] : names) {
    EXPECT_EQ(SpokenCharacter(character), name);
    named.insert(character);
  }
  for (char c = 33; c < 127; ++c) {
    const std::string character(1, c);
    if (named.contains(character)) continue;
    EXPECT_EQ(SpokenCharacter(character), character);
  }
  EXPECT_EQ(SpokenCharacter("\xC3\xA9"), "\xC3\xA9");
}

TEST(Punctuation, HasARowForEachKeyAndAtMostNinetySeven) {
  EXPECT_LE(PunctuationTable().size(), 97u);
  std::set<int16> keys;
  std::set<std::string_view> characters;
  for (const PunctuationRow& row : PunctuationTable()) {
    EXPECT_TRUE(keys.insert(row.KeyCode).second) << row.KeyCode;
    EXPECT_TRUE(characters.insert(row.Text).second) << row.Text;
  }
  EXPECT_EQ(characters.size(), 95u);  // all that a US keyboard types
}

TEST(SayCharacter, TellsWhatAKeyTypes) {
  EXPECT_EQ(SayCharacter('A', 0), "a");
  EXPECT_EQ(SayCharacter('A', 1), "A");
  EXPECT_EQ(SayCharacter('7', 0), "7");
  EXPECT_EQ(SayCharacter('7', 1), "&");
  EXPECT_EQ(SayCharacter('0', 1), "right parren");
  EXPECT_EQ(SayCharacter(32, 0), "space");
  EXPECT_EQ(SayCharacter(186, 1), "colan");
  EXPECT_EQ(SayCharacter(222, 0), "apostrophe");
  EXPECT_EQ(SayCharacter('A', 2), "");
  EXPECT_EQ(SayCharacter(112, 0), "");
}

TEST(SpellWord, SpeaksEachCharacterWithAPauseBetween) {
  SpeechHouse house;
  house.AllChannels(3);
  house.ReadyBoth();
  house.state.LastSpoken = "kept";
  house.speech.SpellWord("a b\xC3\xA9", 2);
  EXPECT_EQ(house.Told("speech"), Texts({"2 a", "2 space", "2 b", "2 \xC3\xA9"}));
  EXPECT_EQ(house.Told("silence"), Texts({"2", "2", "2", "2"}));
  EXPECT_EQ(house.mem.clock.MonotonicMilliseconds(), 1200);  // none behind the last
  EXPECT_EQ(house.state.LastSpoken, "kept");
}

TEST(SpellWord, EndsAtAKey) {
  SpeechHouse house;
  house.AllChannels(3);
  house.keyboard.LastKeyCode = 65;  // the key before does not count
  auto timer = house.mem.loop.Create([&] { house.keyboard.LastKeyCode = 27; });
  timer->SetInterval(500);
  timer->SetEnabled(true);
  house.speech.SpellWord("abcdef", 2);
  EXPECT_EQ(house.Told("speech"), Texts({"2 a", "2 b"}));
}

TEST(SpellWord, LeavesTheLastKeyAsItWas) {
  SpeechHouse house;
  house.keyboard.LastKeyCode = 65;
  house.speech.SpellWord("ab", 2);
  EXPECT_EQ(house.keyboard.LastKeyCode, 65);
}

}  // namespace
}  // namespace corvid
