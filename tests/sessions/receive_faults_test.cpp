// SPDX-License-Identifier: GPL-3.0-or-later
// Reads and answers that fail, and streams that are cut or hostile.
#include <random>

#include "receive_fixture.h"

namespace corvid {
namespace {

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
