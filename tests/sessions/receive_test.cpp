// SPDX-License-Identifier: GPL-3.0-or-later
#include "sessions/receive.h"

#include <random>

#include "fixture.h"

namespace corvid {
namespace {

class ReceiveTest : public SessionTest {
 protected:
  ReceiveTest() {
    Slot = Online("bob");
    options.OutputLog = true;
  }
  std::string LogText() {
    std::string all;
    for (const std::string& name : memory.files.FileNames("/data/logs"))
      if (name.starts_with("bob")) all += memory.files.ReadWhole("/data/logs/" + name);
    return all;
  }
  int16 Slot = 0;
};

TEST_F(ReceiveTest, ShowsSpeaksAndLogsALine) {
  Receives(Slot, "Bob shouts hello\r\n");
  EXPECT_EQ(Screen(Slot), "Bob shouts hello\r\n");
  EXPECT_EQ(Spoken(), (Texts{"1 Bob shouts hello"}));
  EXPECT_EQ(LogText(), "Bob shouts hello\r\n");
  EXPECT_EQ(state.HistoryPos[Slot], 1);
  EXPECT_EQ(state.HistoryLines[Slot][1], "Bob shouts hello");
}

TEST_F(ReceiveTest, HoldsAnUnfinishedLineForATenthOfASecond) {
  Receives(Slot, "abc\r\n>");
  EXPECT_EQ(Screen(Slot), "abc\r\n");
  EXPECT_EQ(state.PartialLine[Slot], "\n>");
  EXPECT_EQ(state.ReadTimerLoaded[Slot], 1);
  Pass(99);
  EXPECT_EQ(Screen(Slot), "abc\r\n");
  Pass(1);
  EXPECT_EQ(Screen(Slot), "abc\r\n>\r\n");
  EXPECT_EQ(Spoken(), (Texts{"1 abc", "1 >"}));
  EXPECT_EQ(state.PartialLine[Slot], "");
}

TEST_F(ReceiveTest, JoinsAHeldLineToWhatComesInTime) {
  Receives(Slot, "abc\r\n>");
  Pass(60);
  Receives(Slot, " more\r\nnext");
  EXPECT_EQ(Screen(Slot), "abc\r\n> more\r\n");
  Pass(60);
  EXPECT_EQ(Screen(Slot), "abc\r\n> more\r\n") << "the second tail has started the time anew";
  Pass(40);
  EXPECT_EQ(Screen(Slot), "abc\r\n> more\r\nnext\r\n");
}

TEST_F(ReceiveTest, ShowsTextWithoutAnyBreakAtOnce) {
  Receives(Slot, "> ");
  EXPECT_EQ(Screen(Slot), "> \r\n");
  EXPECT_EQ(Spoken(), (Texts{"1 > "}));
}

TEST_F(ReceiveTest, AHeldLineThatFoundItsEndLeavesTheTimerRunning) {
  options.CompressOutput = false;
  Receives(Slot, "abc\r\n>");
  Receives(Slot, " more\r\n");
  EXPECT_EQ(Screen(Slot), "abc\r\n\r\n> more\r\n\r\n");
  Pass(100);
  EXPECT_EQ(Screen(Slot), "abc\r\n\r\n> more\r\n\r\n\r\n") << "its block is empty, and has one empty line";
  Pass(1000);
  EXPECT_EQ(Screen(Slot), "abc\r\n\r\n> more\r\n\r\n\r\n") << "it fires once";
}

TEST_F(ReceiveTest, TheFirstSlotHasItsTimerFromTheStart) {
  memory.sockets.Create(0);
  memory.sockets.Connect(0, "host", "4000", 1000);
  Pass(1);
  Receives(0, "abc\r\n>");
  EXPECT_EQ(state.ReadTimerLoaded[0], 0);
  Pass(100);
  EXPECT_EQ(Screen(0), "abc\r\n>\r\n");
}

TEST_F(ReceiveTest, AHeldLineIsShownThoughTheServerHasGone) {
  Receives(Slot, "bye\r\n> ");
  memory.sockets.CloseByPeer(Slot);
  Pass(100);
  EXPECT_NE(Screen(Slot).find("> \r\n"), std::string::npos);
  EXPECT_TRUE(Of("showerror").empty());
}

TEST_F(ReceiveTest, ScansAHeldIacAgain) {
  Receives(Slot, "a\r\nb\xff\xff");
  EXPECT_EQ(state.PartialLine[Slot], "\nb\xff");
  Receives(Slot,
           "\xfb\x01"
           "c\r\n");
  EXPECT_EQ(memory.sockets.TakeWritten(Slot), "\xff\xfd\x01");
  EXPECT_EQ(Screen(Slot), "a\r\nbc\r\n");
}

TEST_F(ReceiveTest, NeverHoldsMoreThanTheCap) {
  Receives(Slot, "x\r\n");
  std::string sent;
  for (int i = 0; i < 40; ++i) {
    const std::string piece(4000, static_cast<char>('a' + i % 26));
    sent += piece;
    Receives(Slot, (i == 0 ? "\n" : "") + piece);
    EXPECT_LE(state.PartialLine[Slot].size(), Receive::LongestHeldLine);
  }
  Pass(100);
  std::string heard;
  for (const std::string& text : Spoken()) heard += text.substr(2);
  EXPECT_EQ(heard, "x" + sent) << "nothing is lost";
}

TEST_F(ReceiveTest, DropsEmptyLinesWhenCompressing) {
  Receives(Slot, "a\r\n\r\n   \r\nb\n\nc\r\n");
  EXPECT_EQ(Screen(Slot), "a\r\nb\r\nc\r\n");
  EXPECT_EQ(LogText(), "a\r\nb\r\nc\r\n");
  EXPECT_EQ(Spoken().size(), 3U);
}

TEST_F(ReceiveTest, ShowsOneMoreEmptyLineForEachBlockWithoutCompressing) {
  options.CompressOutput = false;
  Receives(Slot, "a\r\n\r\nb\r\n");
  EXPECT_EQ(Screen(Slot), "a\r\n\r\nb\r\n\r\n");
  EXPECT_EQ(LogText(), "a\r\n\r\nb\r\n\r\n");
  EXPECT_EQ(state.HistoryPos[Slot], 2) << "an empty line is no history";
}

TEST_F(ReceiveTest, KeepsALineOfEscapesFromAddingAnEmptyLine) {
  Receives(Slot, "a\r\n\x1b[0m\r\nb\r\n");
  EXPECT_EQ(Screen(Slot), "a\r\nb\r\n");
  EXPECT_EQ(LogText(), "a\r\n\r\nb\r\n") << "it is not blank before the escapes go";
}

TEST_F(ReceiveTest, ReadsSingleLineFeedsInPairs) {
  options.CompressOutput = false;
  Receives(Slot, "a\n\nb\n");
  EXPECT_EQ(Screen(Slot), "a\r\n\r\nb\r\n\r\n");
}

TEST_F(ReceiveTest, SwallowsSoundLines) {
  Receives(Slot, "!!SOUND(x.wav V=50)\r\n!!sound(x.wav)\r\n!!MUSIC(Off)\r\n!!music(x.mid)\r\n!!Soun\r\n");
  EXPECT_EQ(Screen(Slot), "!!music(x.mid)\r\n!!Soun\r\n");
  EXPECT_EQ(LogText(), "!!music(x.mid)\r\n!!Soun\r\n");
}

TEST_F(ReceiveTest, LogsBeforeTriggersAndLetsThemFinishALine) {
  triggers.OnLine = [](int16, LineVersions& line) {
    if (line.PlainLine == "gag me") return LineFate::IsFinished;
    line = {"new", "<RED>new", "NEW"};
    return LineFate::GoesOn;
  };
  Receives(Slot, "gag me\r\nold\r\n");
  EXPECT_EQ(LogText(), "gag me\r\nold\r\n");
  EXPECT_EQ(Screen(Slot), "new\r\n");
  EXPECT_EQ(Spoken(), (Texts{"1 NEW"}));
  EXPECT_EQ(state.HistoryLines[Slot][1], "new");
}

TEST_F(ReceiveTest, RunsNoTriggersWhereTheyAreSwitchedOff) {
  triggers.OnLine = [](int16, LineVersions&) { return LineFate::IsFinished; };
  state.TriggerEnabled[Slot] = 0;
  Receives(Slot, "a\r\n");
  EXPECT_EQ(Screen(Slot), "a\r\n");
}

TEST_F(ReceiveTest, GoesOnAfterAFaultInATrigger) {
  triggers.OnLine = [](int16, LineVersions& line) -> LineFate {
    if (line.PlainLine == "a") throw Fault(FaultKind::BadPattern, "Invalid pattern");
    throw Fault(FaultKind::Index, "out of range");
  };
  Receives(Slot, "a\r\nb\r\n");
  EXPECT_EQ(Screen(Slot), "a\r\nb\r\n");
  EXPECT_EQ(Of("unknownerror"), (Texts{"SockTelnet_OnRead: out of range"})) << "a bad pattern counts as no match";
}

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

TEST_F(ReceiveTest, RemembersWhatTheServerOffers) {
  EXPECT_EQ(state.MspOn[Slot], 0);
  Receives(Slot, "\xff\xfb\x5a\xff\xfb\x01");
  EXPECT_EQ(state.MspOn[Slot], 1);
  EXPECT_EQ(memory.sockets.TakeWritten(Slot), "\xff\xfd\x5a\xff\xfd\x01");
  EXPECT_EQ(Of("wire").size(), 2U) << "one write for each answer";
  Receives(Slot, "\x07\x07");
  EXPECT_EQ(Of("beep").size(), 2U);
}

TEST_F(ReceiveTest, NoticesUtf8) {
  Receives(Slot, "caf\xe9 na\xc3\xafve\r\n");
  EXPECT_EQ(state.Utf8Seen[Slot], 0) << "an ill-formed byte among it";
  Receives(Slot, "plain\r\n");
  EXPECT_EQ(state.Utf8Seen[Slot], 0);
  Receives(Slot, "na\xc3\xafve\r\n");
  EXPECT_EQ(state.Utf8Seen[Slot], 1);
  EXPECT_EQ(Spoken().back(), "1 na\xc3\xafve") << "the bytes pass as they came";
}

TEST_F(ReceiveTest, SetsTextArrivedForDataOnly) {
  state.TextArrived[Slot] = 0;
  state.InjectedText = "fed in";
  receive.sockTelnet_OnRead(Slot);
  EXPECT_EQ(state.TextArrived[Slot], 0);
  EXPECT_EQ(Screen(Slot), "fed in\r\n");
  EXPECT_EQ(state.InjectedText, "");
  Receives(Slot, "\xff\xf1");
  EXPECT_EQ(state.TextArrived[Slot], 1);
}

TEST_F(ReceiveTest, ATimerPassIsNoArrival) {
  Receives(Slot, "one\r\n> ");
  state.TextArrived[Slot] = 0;
  Pass(150);
  EXPECT_EQ(Screen(Slot), "one\r\n> \r\n");
  EXPECT_EQ(state.TextArrived[Slot], 0);
}

TEST_F(ReceiveTest, TellsAReadThatFails) {
  receive.sockTelnet_OnRead(Slot);
  EXPECT_EQ(Of("showerror"), (Texts{"Error receiving data from Mudbob Namebob"}));
  EXPECT_EQ(Screen(Slot), "");
}

TEST_F(ReceiveTest, ATimerPassWithoutDataIsNoError) {
  state.ReadTimerFired = true;
  receive.sockTelnet_OnRead(Slot);
  EXPECT_TRUE(Of("showerror").empty());
  EXPECT_FALSE(state.ReadTimerFired);
}

TEST_F(ReceiveTest, EndsTheConnectionWhenAnAnswerFails) {
  memory.sockets.FailWrites = true;
  Receives(Slot,
           "lost\r\n\xff\xfb\x01"
           "lost too\r\n");
  EXPECT_EQ(Of("showerror"), (Texts{"An error occurred during the write.  Error 32"}));
  const std::string told = memory.effects.Transcript();
  EXPECT_LT(told.find("showerror"), told.find("closed")) << told;
  EXPECT_FALSE(memory.sockets.Connected(Slot));
  EXPECT_EQ(Screen(Slot), "");
  EXPECT_EQ(script.SystemValues[sysvar::CONNECTED], "0");
}

TEST_F(ReceiveTest, DoesNotPileUpMessagesWhileOneIsRead) {
  memory.sockets.FailWrites = true;
  int depth = 0;
  class Sink : public RecordingErrors {
   public:
    using RecordingErrors::RecordingErrors;
    void ShowError(const std::string& text) override {
      RecordingErrors::ShowError(text);
      if (OnShow) OnShow();
    }
    std::function<void()> OnShow;
  } sink{memory.effects};
  Upcalls others{runner, sink, speaker, prompter, screens, jobs};
  Receive second{script, options, state, output, logs, triggers, soundLines, platform, others};
  sink.OnShow = [&] {
    ++depth;
    second.sockTelnet_OnRead(Slot);  // more of the same comes in while the box stands
  };
  memory.sockets.SetEvents(nullptr);
  memory.sockets.Receive(Slot, std::string(10000, '\xff') + "\xfb\x01\xff\xfb\x01");
  memory.sockets.SetEvents(&sessions);
  second.sockTelnet_OnRead(Slot);
  second.sockTelnet_OnRead(Slot);
  second.sockTelnet_OnRead(Slot);
  EXPECT_LE(depth, 2);
  EXPECT_FALSE(memory.sockets.Connected(Slot));
}

TEST_F(ReceiveTest, MayBeEnteredAgainFromATrigger) {
  const int16 other = Online("amy");
  int depth = 0;
  triggers.OnLine = [&](int16 Index, LineVersions& line) {
    if (Index == Slot && line.PlainLine == "one" && depth++ == 0) {
      Receives(other, "inner other\r\n");
      Receives(Slot, "inner same\r\n");
    }
    return LineFate::GoesOn;
  };
  Receives(Slot, "one\r\ntwo\r\n");
  EXPECT_EQ(Screen(Slot), "inner same\r\none\r\ntwo\r\n");
  EXPECT_EQ(Screen(other), "inner other\r\n");
}

TEST_F(ReceiveTest, ReportsALogThatFailsForEachLineAndGoesOn) {
  memory.files.Fail = [](const std::string& operation, const std::string&) {
    return operation == "append" ? std::string("No space left on device") : std::string();
  };
  Receives(Slot, "a\r\nb\r\n");
  EXPECT_EQ(Screen(Slot), "a\r\nb\r\n");
  EXPECT_GE(Of("unknownerror").size(), 1U);
  EXPECT_EQ(state.LogOpen[Slot], 1);
  memory.files.Fail = nullptr;
  Receives(Slot, "c\r\n");
  EXPECT_NE(LogText().find("c\r\n"), std::string::npos) << "the next line tries again";
}

TEST_F(ReceiveTest, WritesNoLogWhileItIsOff) {
  options.OutputLog = false;
  Receives(Slot, "a\r\n");
  EXPECT_EQ(LogText(), "");
}

// --- hostile and cut streams ---

TEST_F(ReceiveTest, HearsTheSameTextHoweverTheStreamIsCut) {
  std::string stream;
  for (int i = 0; i < 200; ++i)
    stream += "\x1b[1;3" + std::to_string(i % 8) + "mline " + std::to_string(i) + "\x1b[0m\r\n";
  Receives(Slot, stream);
  const std::string whole = Screen(Slot);
  std::mt19937 random(7);
  for (int round = 0; round < 50; ++round) {
    state.OutputWindow(Slot).SetText("");
    std::size_t place = 0;
    while (place < stream.size()) {
      std::size_t end = std::min(place + 1 + random() % 97, stream.size());
      // A read that begins a line and has no break in it is taken as a whole line: that cut is not made here.
      if (place == 0 || stream[place - 1] == '\n') end = std::max(end, stream.find('\n', place) + 1);
      Receives(Slot, stream.substr(place, end - place));
      place = end;
    }
    Pass(100);
    EXPECT_EQ(Screen(Slot), whole);
  }
}

TEST_F(ReceiveTest, SurvivesAnyBytes) {
  options.ColourTextTags = true;
  std::mt19937 random(11);
  const std::string spice = "\xff\xfb\xfd\xfa\xf0\x1b[;m\r\n\x07<>!0123";
  for (int round = 0; round < 300; ++round) {
    std::string bytes(1 + random() % 5000, ' ');
    for (char& c : bytes) c = random() % 3 != 0 ? spice[random() % spice.size()] : static_cast<char>(random() % 256);
    options.CompressOutput = random() % 2 == 0;
    options.RemoveAsciiArt = static_cast<int16>(random() % 3);
    options.BatchSpeech = random() % 2 == 0;
    Receives(Slot, bytes);
    if (random() % 4 == 0) Pass(100);
    EXPECT_LE(state.PartialLine[Slot].size(), Receive::LongestHeldLine);
    EXPECT_LE(Screen(Slot).size(), 30000U);
  }
  Receives(Slot, std::string(100000, '\xff'));
  Receives(Slot, std::string(100000, '\0'));
  Receives(Slot, "\r\n" + std::string(300000, '\x1b'));
  Pass(100);
  Receives(Slot, "m\r\nstill here\r\n");
  EXPECT_NE(Screen(Slot).find("still here"), std::string::npos);
}

}  // namespace
}  // namespace corvid
