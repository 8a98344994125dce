// SPDX-License-Identifier: GPL-3.0-or-later
#include "sessions/timers.h"

#include "fixture.h"
#include "sessions/word_echo.h"

namespace corvid {
namespace {

class TimersTest : public SessionTest {
 protected:
  void Enter(const std::string& line, int milliseconds = 1) {
    keyboard.EntryLine = line;
    timers.StartTimer1(timeraction::RunEntryLine, milliseconds);
  }
};

TEST_F(TimersTest, RunsTheEnteredLineAtItsTick) {
  script.CommandDepth = 9;
  script.DefiningBuffer = 7;
  runner.OnCommand = [&](const std::string&, int16& given, std::string&, Parameters&, int16& outchannel) {
    EXPECT_EQ(given, option::Interactive);
    EXPECT_EQ(outchannel, CurrentSession);
    EXPECT_EQ(script.CommandDepth, 0);
    EXPECT_EQ(script.DefiningBuffer, 0);
    EXPECT_EQ(keyboard.TimerAction, 0);
  };
  Enter("look");
  EXPECT_EQ(keyboard.TimerAction, 5);
  EXPECT_TRUE(timers.JobDue());
  EXPECT_TRUE(Of("command").empty());
  Pass(1);
  EXPECT_EQ(Of("command"), (Texts{"-2 look"}));
  EXPECT_FALSE(timers.JobDue());
  Pass(1000);
  EXPECT_EQ(Of("command").size(), 1U) << "one-shot";
}

TEST_F(TimersTest, KeepsEnteredCommandsInNewLines) {
  Enter("  #alias x y");
  Pass(1);
  Enter("say hello");
  Pass(1);
  runner.OnCommand = [](const std::string&, int16&, std::string& error, Parameters&, int16&) { error = "Bad command"; };
  Enter("#nonsense");
  Pass(1);
  EXPECT_EQ(buffers.BufferText[buffer::NewLines], "  #alias x y\r\n");
  EXPECT_NE(buffers.BufferFlags[buffer::NewLines] & buffer::Modified, 0);
}

TEST_F(TimersTest, ShowsNewLinesWhereTheyAreShown) {
  buffers.CurrentBuffer = buffer::NewLines;
  Enter("#x");
  Pass(1);
  EXPECT_EQ(buffers.EntryBox.Text(), "#x\r\n");
}

TEST_F(TimersTest, DoesNotLoseALineToALaterKey) {
  Enter("first");
  Enter("second");
  timers.StartTimer1(timeraction::SpeakLine, 50);
  timers.StartTimer1(timeraction::SpeakWord, 50);
  Pass(200);
  EXPECT_EQ(Of("command"), (Texts{"-2 first", "-2 second"}));
  EXPECT_FALSE(timers.JobDue());
}

TEST_F(TimersTest, GivesALaterEchoTheSlotOfAnEarlierOne) {
  buffers.EntryBox.SetText("one two");
  timers.StartTimer1(timeraction::SpeakLine, 50);
  timers.StartTimer1(timeraction::SpeakWord, 50);
  Pass(50);
  EXPECT_EQ(Spoken(), (Texts{"2w one"}));
}

TEST_F(TimersTest, OpensTheCharactersOnceTheWindowIsThere) {
  MemoryFace hidden{memory.effects};
  Platform others{memory.clock,    memory.loop,   memory.loop,   memory.sockets, memory.files, memory.places,
                  memory.settings, memory.speech, memory.speech, hidden,         memory.sounds};
  TimerRoutines early{script, options, state, buffers, keyboard, others, upcalls};
  early.StartTimer1(timeraction::OpenCharacters, 500);
  keyboard.EntryLine = "typed early";
  early.StartTimer1(timeraction::RunEntryLine, 1);
  Pass(2000);
  EXPECT_TRUE(Of("screen").empty());
  EXPECT_TRUE(early.JobDue());
  hidden.ShowMain();
  Pass(60);
  EXPECT_EQ(Of("screen"), (Texts{"characters"}));
  EXPECT_EQ(Of("command"), (Texts{"-2 typed early"}));
}

TEST_F(TimersTest, RunsALineThatComesWhileOneRuns) {
  runner.OnCommand = [&](const std::string& line, int16&, std::string&, Parameters&, int16&) {
    if (line != "outer") return;
    Enter("inner");
    Pass(5);
    memory.effects.Add("command", "outer ends");
  };
  Enter("outer");
  Pass(1);
  EXPECT_EQ(Of("command"), (Texts{"-2 outer", "-2 inner", "outer ends"}));
}

TEST_F(TimersTest, LogsAFaultOfAJob) {
  runner.OnCommand = [](const std::string&, int16&, std::string&, Parameters&, int16&) {
    throw Fault(FaultKind::Index, "out of range");
  };
  Enter("x");
  Pass(1);
  EXPECT_EQ(Of("unknownerror"), (Texts{"Timer1: out of range"}));
}

TEST_F(TimersTest, IgnoresAnUnknownAction) {
  for (const int16 action : {int16{0}, int16{7}, int16{9}, int16{-3}, int16{1011}}) {
    timers.StartTimer1(action, 1);
    Pass(1);
  }
  EXPECT_TRUE(memory.effects.All().empty());
}

TEST_F(TimersTest, HandsDialogJobsOver) {
  class Fields : public DialogJobs {
   public:
    void SpeakField(bool textControl, int16 index, int16 job) override {
      All.push_back((textControl ? "text " : "box ") + std::to_string(index) + " " + std::to_string(job));
    }
    std::vector<std::string> All;
  } fields;
  timers.SetDialogJobs(&fields);
  for (const int16 action : {int16{1011}, int16{2032}, int16{1124}, int16{25}, int16{1009}}) {
    timers.StartTimer1(action, 1);
    Pass(1);
  }
  EXPECT_EQ(fields.All, (Texts{"text 1 1", "box 3 2", "text 12 4"})) << "only the jobs 1 to 4";
  timers.SetDialogJobs(nullptr);
}

TEST_F(TimersTest, SpeaksTheLineWithItsIndent) {
  buffers.EntryBox.SetText("first\r\n   second");
  buffers.EntryBox.SetSelStart(9);
  timers.StartTimer1(timeraction::SpeakLine, 50);
  Pass(50);
  EXPECT_EQ(Spoken(), (Texts{"2w Indent 3", "2w    second"}));
  memory.effects.Clear();
  options.SpeakIndent = false;
  buffers.CurrentBuffer = buffer::NewLines;
  timers.StartTimer1(timeraction::SpeakLine, 50);
  Pass(50);
  EXPECT_EQ(Spoken(), (Texts{"4w    second"})) << "a script buffer has its own channel";
  memory.effects.Clear();
  state.ReadPosition = true;
  state.OutputWindow(0).SetText("from the game\r\n");
  timers.StartTimer1(timeraction::SpeakLine, 50);
  Pass(50);
  EXPECT_EQ(Spoken(), (Texts{"3w from the game"}));
}

TEST_F(TimersTest, SpeaksWordsAndWholeNewLines) {
  buffers.EntryBox.SetText("get the (big) sword\r\nwield it");
  const std::pair<int32, const char*> steps[] = {{0, "2w get"},       {4, "2w the"}, {9, "2w big"}, {14, "2w sword"},
                                                 {21, "2w wield it"}, {27, "2w it"}, {29, "2w it"}};
  for (const auto& [caret, heard] : steps) {
    memory.effects.Clear();
    buffers.EntryBox.SetSelStart(caret);
    timers.StartTimer1(timeraction::SpeakWord, 50);
    Pass(50);
    EXPECT_EQ(Spoken(), (Texts{heard})) << caret;
  }
}

TEST_F(TimersTest, SpeaksWhatWasSelectedLast) {
  buffers.EntryBox.SetText("one two");
  const std::pair<int32, Texts> steps[] = {{1, {"2w o"}}, {3, {"2w ne"}}, {7, {"2w  two"}}, {3, {}}};
  for (const auto& [caret, heard] : steps) {
    memory.effects.Clear();
    buffers.EntryBox.Select(0, caret);
    timers.StartTimer1(timeraction::SpeakSelection, 50);
    Pass(50);
    EXPECT_EQ(Spoken(), heard) << caret;
  }
}

TEST_F(TimersTest, PlacesTheCaretAfterAPaste) {
  buffers.EntryBox.SetText("#alias {x");
  timers.SetCaretAfterPaste(7);
  timers.StartTimer1(timeraction::PlaceCaret, 50);
  Pass(50);
  EXPECT_EQ(buffers.EntryBox.SelStart(), 7);
}

TEST(WordEcho, FindsTheWordAtTheCaret) {
  EXPECT_EQ(EchoWord("", 0).Word, "");
  EXPECT_EQ(EchoWord("  ", 1).Word, "");
  EXPECT_EQ(EchoWord("a b", 1).Word, "a");
  EXPECT_TRUE(EchoWord("a b", 1).PassedWordEnd);
  EXPECT_FALSE(EchoWord("a b", 2).PassedWordEnd);
  EXPECT_EQ(EchoWord("x\r\nab cd", 6).Line, "ab cd");
  EXPECT_EQ(EchoWord("x\r\nab cd", 6).Column, 3);
  EXPECT_EQ(EchoWord("abc", 99).Word, "abc");
  EXPECT_EQ(EchoWord("abc", -5).Word, "abc");
}

TEST(WordEcho, FindsWhatIsNewInASelection) {
  EXPECT_EQ(NewlySelected("", "a"), "a");
  EXPECT_EQ(NewlySelected("ab", "abc"), "c");
  EXPECT_EQ(NewlySelected("bc", "abc"), "a");
  EXPECT_EQ(NewlySelected("abc", "ab"), "");
  EXPECT_EQ(NewlySelected("abc", "abc"), "");
  EXPECT_EQ(NewlySelected("abc", "x"), "x");
  EXPECT_EQ(NewlySelected("a", "bcd"), "bcd");
}

}  // namespace
}  // namespace corvid
