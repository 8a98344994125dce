// SPDX-License-Identifier: GPL-3.0-or-later
#include "sessions/receive.h"

#include "receive_fixture.h"

namespace corvid {
namespace {

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

}  // namespace
}  // namespace corvid
