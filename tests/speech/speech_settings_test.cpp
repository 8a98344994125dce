// SPDX-License-Identifier: GPL-3.0-or-later
#include "speech/speech_settings.h"

#include <gtest/gtest.h>

#include "core/scramble.h"
#include "speech_house.h"

namespace corvid {
namespace {

using testing_speech::SpeechHouse;
using testing_speech::Texts;

const std::string DefaultText =
    "11\r\n"
    "0,0,0,100,0,1,0,0,1,0,0\r\n0,0,0,100,0,1,0,0,1,0,0\r\n0,0,0,100,0,1,0,0,1,0,0\r\n"
    "0,0,0,100,0,1,0,0,1,0,0\r\n0,0,0,100,0,1,0,0,1,0,0\r\n0,0,0,100,0,1,0,0,1,0,0\r\n";

SpeechState Unlike() {  // every field of every channel has its own value
  SpeechState state;
  SpeechState::Channels* const all[] = {&state.SpeechType,      &state.VoiceIndex,
                                        &state.VoiceRate,       &state.VoiceVolume,
                                        &state.VoicePriority,   &state.InterruptOwn,
                                        &state.InterruptOthers, &state.NotInterruptedByOthers,
                                        &state.TypingEcho,      &state.NotInterruptedByControl,
                                        &state.SpeakLabels};
  int16 value = 0;
  for (std::size_t channel = 1; channel <= 6; ++channel)
    for (SpeechState::Channels* field : all) (*field)[channel] = ++value;
  return state;
}

TEST(SpeechFile, HasACountAndARowForEachChannel) {
  EXPECT_EQ(SpeechSettings::FileText(SpeechState{}), DefaultText);
  const std::string text = SpeechSettings::FileText(Unlike());
  EXPECT_TRUE(text.starts_with("11\r\n1,2,3,4,5,6,7,8,9,10,11\r\n12,13,")) << text;
  SpeechState back;
  ASSERT_TRUE(SpeechSettings::FromFileText(text, back));
  EXPECT_EQ(SpeechSettings::FileText(back), text);
  EXPECT_EQ(back.NotInterruptedByControl[1], 10);
  EXPECT_EQ(back.TypingEcho[6], 64);
}

TEST(SpeechFile, OfAnotherLayoutIsRefusedWhole) {
  const Texts others = {"",
                        "9\r\n" + DefaultText,
                        "12" + DefaultText.substr(2),
                        "11\r\n0,0,0,100,0,1,0,0,1,0,0\r\n",
                        DefaultText + "0,0,0,100,0,1,0,0,1,0,0\r\n",
                        "11\r\n0,0,0,100,0,1,0,0,1,0\r\n" + DefaultText.substr(29),
                        "11\r\nx" + DefaultText.substr(5),
                        "11\r\n99999" + DefaultText.substr(5),
                        "11\r\n3e999" + DefaultText.substr(5),
                        "1e999" + DefaultText.substr(2),
                        std::string(500, '\0'),
                        "1\r\n2\r\n3\r\n"};
  for (const std::string& other : others) {
    SpeechState state = Unlike();
    EXPECT_FALSE(SpeechSettings::FromFileText(other, state)) << other;
    EXPECT_EQ(SpeechSettings::FileText(state), SpeechSettings::FileText(Unlike()));
  }
}

TEST(SpeechFile, IsScrambledPrivateAndReadsBack) {
  SpeechHouse house;
  house.state = Unlike();
  ASSERT_TRUE(house.settings.SaveSpeech());
  const std::string bytes = house.mem.files.ReadWhole("/data/speech.ini");
  EXPECT_EQ(bytes.substr(0, 4), "\xB1\xB1\r\n");
  EXPECT_EQ(Scramble(bytes), SpeechSettings::FileText(Unlike()));
  EXPECT_TRUE(house.mem.files.IsPrivate("/data/speech.ini"));
  EXPECT_FALSE(house.mem.files.FileExists("/tmp/temp.tmp"));
  SpeechSettings::SetDefaults(house.state);
  EXPECT_EQ(SpeechSettings::FileText(house.state), DefaultText);
  EXPECT_EQ(house.settings.ReadSpeech(), SpeechSettings::Reading::Done);
  EXPECT_EQ(SpeechSettings::FileText(house.state), SpeechSettings::FileText(Unlike()));
  ASSERT_TRUE(house.settings.SaveSpeech());
  EXPECT_EQ(house.mem.files.ReadWhole("/data/speech.ini"), bytes);
}

TEST(SpeechFile, ARefusingDiskIsToldAndKeepsTheOldFile) {
  SpeechHouse house;
  house.settings.SaveSpeech();
  const std::string bytes = house.mem.files.ReadWhole("/data/speech.ini");
  house.mem.files.Fail = [](const std::string& operation, const std::string&) {
    return operation == "write" ? "No space left on device" : "";
  };
  house.state = Unlike();
  house.mem.face.Will("Ok");
  EXPECT_FALSE(house.settings.SaveSpeech());
  EXPECT_EQ(house.mem.files.ReadWhole("/data/speech.ini"), bytes);
  ASSERT_EQ(house.Told("dialog").size(), 1u);
  EXPECT_NE(house.Told("dialog")[0].find("Error creating file /data/speech.ini"), std::string::npos);
}

// --- the start ---

TEST(StartSpeech, UsesWhatWasSaved) {
  SpeechHouse house;
  house.AllChannels(3);
  house.state.VoiceRate[2] = 4;
  house.settings.SaveSpeech();
  SpeechSettings::SetDefaults(house.state);
  EXPECT_TRUE(house.settings.StartSpeech());
  EXPECT_EQ(house.mem.speech.Rate(2), 4);
  house.speech.Speak("text", -1, -1);
  EXPECT_EQ(house.Told("speech"), Texts({"1 text"}));
  EXPECT_EQ(house.Told("dialog"), Texts());
}

TEST(StartSpeech, SetsTheVoicesOfAnEngineThatHasSpokenAlready) {
  SpeechHouse house;
  house.AllChannels(3);
  house.state.VoiceRate[2] = 4;
  house.settings.SaveSpeech();
  SpeechSettings::SetDefaults(house.state);
  house.speech.SpeakWhateverWorks(true);
  house.speech.SpeakOut("before", 5, 0);
  EXPECT_EQ(house.mem.speech.Rate(2), 0);
  EXPECT_TRUE(house.settings.StartSpeech());
  EXPECT_EQ(house.mem.speech.Rate(2), 4);
}

TEST(StartSpeech, SavedSpeechCountsFromTheBeginning) {
  SpeechHouse house;
  house.settings.UseSavedSpeech();
  house.speech.SpeakOut("nothing saved", 5, 0);
  EXPECT_EQ(house.Told("speech"), Texts({"5 nothing saved"}));
  house.state.SpeechType[1] = 1;
  house.settings.SaveSpeech();
  house.settings.UseSavedSpeech();
  house.speech.SpeakOut("by the reader", 1, 0);
  house.speech.SpeakOut("silent by choice", 5, 0);
  EXPECT_EQ(house.Told("say"), Texts({"1 by the reader"}));
  EXPECT_EQ(house.Told("speech").size(), 1u);
}

TEST(StartSpeech, AsksOnTheFirstRunAndSaves) {
  SpeechHouse house;
  house.mem.face.Will("Ok");
  house.mem.face.Will({"OK", {}, {{1, 2}}, {}});  // third row of the list
  house.mem.face.Will("Ok");
  EXPECT_TRUE(house.settings.StartSpeech());
  ASSERT_EQ(house.Told("dialog").size(), 3u);
  EXPECT_NE(house.Told("dialog")[0].find("Interim Speech"), std::string::npos);
  EXPECT_NE(house.Told("dialog")[0].find("From the following screen, please select your default screen reader or "
                                         "select MS Sapi or \"None\" if you do not have one."),
            std::string::npos);
  EXPECT_EQ(house.Told("dialog")[1], "INITIALSPEECH Initial Speech Setting|Initial Speech Type");
  EXPECT_NE(house.Told("dialog")[2].find("Next Step"), std::string::npos);
  EXPECT_NE(house.Told("dialog")[2].find("Now you may want to go into the Tools and Preferences Menu, select Speech, "
                                         "and then fine tune and save your screen reading method."),
            std::string::npos);
  // The questions before the choice were spoken too.
  const Texts spoken = house.Told("speech");
  EXPECT_TRUE(std::any_of(spoken.begin(), spoken.end(),
                          [](const std::string& text) { return text.find("Interim") != std::string::npos; }));
  for (std::size_t channel = 1; channel <= 6; ++channel) EXPECT_EQ(house.state.SpeechType[channel], 3);
  EXPECT_TRUE(house.settings.HasSpeechFile());
  EXPECT_EQ(house.mem.face.AnswersLeft(), 0u);
}

TEST(StartSpeech, CountsAnotherLayoutAsMissing) {
  SpeechHouse house;
  house.mem.files.Put("/data/speech.ini", Scramble("6\r\n1,2,3\r\n"));
  house.mem.face.Will("Ok");
  house.mem.face.Will({"OK", {}, {{1, 1}}, {}});
  house.mem.face.Will("Ok");
  EXPECT_TRUE(house.settings.StartSpeech());
  EXPECT_EQ(house.state.SpeechType[5], 1);
  EXPECT_EQ(Scramble(house.mem.files.ReadWhole("/data/speech.ini")), SpeechSettings::FileText(house.state));
}

TEST(StartSpeech, DoesNotReplaceAFileThatCannotBeRead) {
  SpeechHouse house;
  house.mem.files.Put("/data/speech.ini", "precious");
  house.mem.files.Fail = [](const std::string& operation, const std::string&) {
    return operation == "read" ? "Permission denied" : "";
  };
  house.settings.UseSavedSpeech();
  EXPECT_EQ(house.Told("unknownerror"), Texts{}) << "what is not heard yet is told by the step that follows";
  EXPECT_TRUE(house.settings.StartSpeech());
  EXPECT_EQ(house.Told("unknownerror"), Texts({"ReadSpeech: /data/speech.ini: Permission denied"}));
  house.mem.files.Fail = nullptr;
  EXPECT_EQ(house.mem.files.ReadWhole("/data/speech.ini"), "precious");
  house.speech.SpeakOut("still heard", 1, 0);
  EXPECT_EQ(house.Told("speech"), Texts({"1 still heard"}));
}

TEST(SelectScreenReader, GivesTheTypeOfEachRow) {
  const std::pair<int32, int16> rows[] = {{0, 0}, {1, 1}, {2, 3}};
  for (const auto& [row, type] : rows) {
    SpeechHouse house;
    house.mem.face.Will({"OK", {}, {{1, row}}, {}});
    EXPECT_EQ(house.settings.SelectScreenReader(), type);
  }
  SpeechHouse house;
  house.mem.face.Will("OK");
  EXPECT_EQ(house.settings.SelectScreenReader(3), 3);  // the row of the value passed is selected
}

TEST(SelectScreenReader, CancelEndsTheProgram) {
  SpeechHouse house;
  house.mem.face.Will("Cancel");
  EXPECT_EQ(house.settings.SelectScreenReader(), 0);
  EXPECT_EQ(house.Told("quit"), Texts({"mandatory"}));
}

TEST(SelectScreenReader, BeepsWhileADialogIsOpen) {
  SpeechHouse house;
  house.dialog.GDOpen = true;
  EXPECT_EQ(house.settings.SelectScreenReader(), 0);
  EXPECT_EQ(house.Told("beep").size(), 1u);
}

}  // namespace
}  // namespace corvid
