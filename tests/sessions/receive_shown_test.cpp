// SPDX-License-Identifier: GPL-3.0-or-later
// What of the lines of the game is seen and heard: gags, the session in front, wrapped lines, the window.
#include "receive_fixture.h"

namespace corvid {
namespace {

TEST_F(ReceiveTest, GagsForANumberOfLines) {
  state.GagFlags[Slot] = gag::LineSpeech | gag::LineDisplay;
  state.GagLines[Slot] = 2;
  Receives(Slot, "one\r\ntwo\r\nthree\r\n");
  EXPECT_EQ(Screen(Slot), "three\r\n");
  EXPECT_EQ(Spoken(), (Texts{"1 three"}));
  EXPECT_EQ(LogText(), "one\r\ntwo\r\nthree\r\n");
  EXPECT_EQ(state.GagFlags[Slot], 0);
  EXPECT_EQ(state.HistoryPos[Slot], 1);
}

TEST_F(ReceiveTest, TellsNowAndThenThatGaggingIsInEffect) {
  state.GagFlags[Slot] = gag::OnSpeech;
  Receives(Slot, "a\r\n");
  EXPECT_TRUE(Spoken().empty()) << "never armed";
  state.GagNotice[Slot] = static_cast<float>(memory.clock.SecondsSinceMidnight());
  Pass(5000);
  Receives(Slot, "b\r\n");
  EXPECT_TRUE(Spoken().empty()) << "not more than five seconds";
  Pass(1000);
  Receives(Slot, "c\r\nd\r\n");
  EXPECT_EQ(Spoken(), (Texts{"1 Gagging is in effect."}));
  EXPECT_EQ(Screen(Slot), "a\r\nb\r\nc\r\nd\r\n") << "only speech is gagged";
  EXPECT_EQ(state.GagFlags[Slot], gag::OnSpeech);
}

TEST_F(ReceiveTest, TellsThatABackgroundSessionIsGagged) {
  Online("amy");
  state.GagFlags[Slot] = gag::OnDisplay;
  state.GagNotice[Slot] = static_cast<float>(memory.clock.SecondsSinceMidnight());
  Pass(6000);
  Receives(Slot, "a\r\n");
  EXPECT_EQ(Spoken(), (Texts{"1 Gagging is in effect."}));
  EXPECT_EQ(Screen(Slot), "");
  EXPECT_EQ(state.HistoryLines[Slot][1], "a") << "it would have been spoken";
}

TEST_F(ReceiveTest, EachGagEndsForItself) {
  state.GagFlags[Slot] = gag::LineSpeech | gag::OnDisplay;
  state.GagLines[Slot] = 1;
  Receives(Slot, "one\r\ntwo\r\n");
  EXPECT_EQ(Spoken(), (Texts{"1 two"}));
  EXPECT_EQ(state.GagFlags[Slot], gag::OnDisplay) << "only its own command ends it";
  EXPECT_EQ(Screen(Slot), "");
  state.GagFlags[Slot] = gag::LineDisplay | gag::OnSpeech;
  state.GagLines[Slot] = 1;
  Receives(Slot, "three\r\nfour\r\n");
  EXPECT_EQ(Screen(Slot), "four\r\n");
  EXPECT_EQ(state.GagFlags[Slot], gag::OnSpeech);
  EXPECT_EQ(state.GagLines[Slot], -1) << "it is not counted further down";
}

TEST_F(ReceiveTest, CountsTheSecondsOfANoticeOverMidnight) {
  memory.clock.SetNow({2026, 1, 15, 23, 59, 58});
  state.GagFlags[Slot] = gag::OnSpeech;
  state.GagNotice[Slot] = static_cast<float>(memory.clock.SecondsSinceMidnight());
  Pass(4000);
  Receives(Slot, "a\r\n");
  EXPECT_TRUE(Spoken().empty());
  Pass(4000);
  Receives(Slot, "b\r\n");
  EXPECT_EQ(Spoken(), (Texts{"1 Gagging is in effect."}));
}

TEST_F(ReceiveTest, SpeaksOnlyTheActiveSession) {
  const int16 other = Online("amy");
  Receives(Slot, "behind\r\n");
  EXPECT_TRUE(Spoken().empty());
  EXPECT_EQ(Screen(Slot), "behind\r\n");
  EXPECT_EQ(LogText(), "behind\r\n");
  EXPECT_EQ(state.HistoryLines[Slot][1], "behind");
  Receives(other, "front\r\n");
  EXPECT_EQ(Spoken(), (Texts{"1 front"}));
}

TEST_F(ReceiveTest, BatchesWrappedLines) {
  options.BatchSpeech = true;
  const std::string longLine(65, 'x');
  Receives(Slot, longLine + "\r\n" + longLine + "\r\nend.\r\nshort\r\n" + longLine + "\r\n\r\n" + longLine + "\r\n");
  EXPECT_EQ(Spoken(),
            (Texts{"1  " + longLine + " " + longLine + " end.", "1  short", "1  " + longLine, "1  " + longLine}))
      << "a blank line and the block's end flush too";
}

TEST_F(ReceiveTest, ALineOfSixtyFiveCharactersCountsAsWrapped) {
  options.BatchSpeech = true;
  const std::string whole(64, 'x');
  const std::string wrapped(65, 'y');
  Receives(Slot, whole + "\r\n" + wrapped + "\r\nz\r\n");
  EXPECT_EQ(Spoken(), (Texts{"1  " + whole, "1  " + wrapped + " z"}));
}

TEST_F(ReceiveTest, DropsABatchThatASwitchOfTheOptionCutsOff) {
  options.BatchSpeech = true;
  triggers.OnLine = [&](int16, LineVersions& line) {
    if (line.PlainLine == "end.") options.BatchSpeech = false;
    return LineFate::GoesOn;
  };
  Receives(Slot, std::string(65, 'x') + "\r\nend.\r\n");
  EXPECT_EQ(Spoken(), (Texts{"1 end."}));
}

TEST_F(ReceiveTest, WrapsTheHistory) {
  for (int i = 1; i <= 12; ++i) Receives(Slot, "line " + std::to_string(i) + "\r\n");
  EXPECT_EQ(state.HistoryPos[Slot], 2);
  EXPECT_EQ(state.HistoryLines[Slot][0], "line 10");
  EXPECT_EQ(state.HistoryLines[Slot][2], "line 12");
  EXPECT_EQ(state.HistoryLines[Slot][10], "");
}

TEST_F(ReceiveTest, KeepsTextBackWhileTheViewportHasASelection) {
  Receives(Slot, "one\r\n");
  state.OutputWindow(Slot).Select(0, 3);
  Receives(Slot, "two\r\n");
  EXPECT_EQ(Screen(Slot), "one\r\n");
  EXPECT_EQ(state.OutputWindow(Slot).SelText(), "one");
  state.OutputWindow(Slot).SetSelLength(0);
  EXPECT_EQ(Screen(Slot), "one\r\n") << "only the next data brings it";
  Receives(Slot, "three\r\n");
  EXPECT_EQ(Screen(Slot), "one\r\ntwo\r\nthree\r\n");
}

TEST_F(ReceiveTest, WritesColoursAtOnceAndRestoresTheCaret) {
  options.ColourDisplay = true;
  output.SelectOutputWindow(true);
  Receives(Slot, "\x1b[31mred\r\n");
  EXPECT_EQ(Screen(Slot), "red\r\n");
  EXPECT_EQ(state.OutputWindow(Slot).SelStart(), 0);
  EXPECT_EQ(state.OutputWindow(Slot).SelColor(), 0xFF);
  state.OutputWindow(Slot).Select(0, 3);
  Receives(Slot, "more\r\n");
  EXPECT_EQ(Screen(Slot), "red\r\n");
  EXPECT_EQ(state.OutputBuffer[Slot], "more\r\n");
}

TEST_F(ReceiveTest, WhatWaitedForAColourSelectionComesBehindWhatIsWrittenAtOnce) {
  options.ColourDisplay = true;
  output.SelectOutputWindow(true);
  Receives(Slot, "one\r\n");
  state.OutputWindow(Slot).Select(0, 3);
  Receives(Slot, "two\r\n");
  state.OutputWindow(Slot).SetSelLength(0);
  Receives(Slot, "three\r\n");
  EXPECT_EQ(Screen(Slot), "one\r\nthree\r\ntwo\r\n");
}

TEST_F(ReceiveTest, ASelectionThatStaysIsNotLostToALineThatIsNotShown) {
  options.ColourDisplay = true;
  output.SelectOutputWindow(true);
  Receives(Slot, "one\r\n");
  state.OutputWindow(Slot).Select(0, 3);
  Receives(Slot, "!!SOUND(x.wav)\r\n");
  EXPECT_EQ(state.OutputWindow(Slot).SelText(), "one");
}

TEST_F(ReceiveTest, KeepsTheColourViewportToSize) {
  options.ColourDisplay = true;
  options.OutputWindowSize = 5;
  output.SelectOutputWindow(true);
  for (int i = 0; i < 400; ++i) Receives(Slot, "twenty characters !!\r\n");
  EXPECT_LE(Screen(Slot).size(), 5000U);
}

TEST_F(ReceiveTest, ShowsTagsWhenAskedTo) {
  options.ColourTextTags = true;
  Receives(Slot, "\x1b[1;31mred\x1b[0m\r\n");
  EXPECT_EQ(Screen(Slot), "<BRIGHT><RED>red<NORMAL>\r\n");
  EXPECT_EQ(Spoken(), (Texts{"1 red"}));
  EXPECT_EQ(LogText(), "red\r\n");
}

TEST_F(ReceiveTest, ReportsEachColourOutOfRange) {
  options.ColourTextTags = true;
  Receives(Slot, "\x1b[38;5;196mx\x1b[48;5;200my\r\n");
  EXPECT_EQ(Of("unknownerror").size(), 2U);
  EXPECT_EQ(Screen(Slot), "xy\r\n");
}

}  // namespace
}  // namespace corvid
