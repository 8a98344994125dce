// SPDX-License-Identifier: GPL-3.0-or-later
#include "speech/speech.h"

#include <gtest/gtest.h>

#include "speech_house.h"

namespace corvid {
namespace {

using testing_speech::SpeechHouse;
using testing_speech::Texts;
using testing_speech::TwoWays;

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

}  // namespace
}  // namespace corvid
