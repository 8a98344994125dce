// SPDX-License-Identifier: GPL-3.0-or-later
// FIND and WINDOW: going to a text, and to a window.
#include "output_fixture.h"

namespace corvid::test {

// ---- FIND ----

constexpr const char* Window = "One x here\r\nTwo\r\nthree X there\r\nfour x";
//                              position 5               24             38

struct FindStep {
  const char* Keywords;
  int32 Caret;
  const char* Line;  // where it stands then
};

TEST_F(OutputCommandTest, FindInTheOutputGoesPlaceByPlace) {
  Viewport().SetText(Window);
  Effects();
  const FindStep steps[] = {
      {"Output", 5, "One x here"},                   // first and forward by default
      {"Next|Output", 24, "three X there"},          // case does not count
      {"Output|Next|Forward", 38, "four x"},         //
      {"First|Output|Reverse", 38, "four x"},        // from the end
      {"Reverse|Next|Output", 24, "three X there"},  //
      {"Next|Reverse|Output", 5, "One x here"},      //
      {"|First|Forward|Output|", 5, "One x here"},   // empty words count for nothing
  };
  for (const FindStep& step : steps) {
    EXPECT_EQ(Said("#FIND x {" + std::string(step.Keywords) + "}"), Lines()) << step.Keywords;
    EXPECT_EQ(Viewport().SelStart(), step.Caret) << step.Keywords;
    EXPECT_EQ(FoundLine(), step.Line) << step.Keywords;
  }
}

TEST_F(OutputCommandTest, FindTellsWhenThereIsNothing) {
  Viewport().SetText(Window);
  Entry().SetText("look x");
  Effects();
  const std::pair<const char*, const char*> cases[] = {
      {"zz {First|Output}", "Not found"},
      {"zz {Next|Output}", "No more found."},
      {"zz {Next|Reverse|Output}", "No more found."},
      {"zz {First|Input}", "Not found"},
      {"zz {Next|Input}", "Not found"},
      {"zz {Reverse|Input}", "Not found"},
      {"zz", "Not found"},
  };
  for (const auto& [parameters, words] : cases) {
    script.SystemValues[sysvar::FOUNDLINE] = "old";
    Viewport().SetSelStart(20);
    Entry().SetSelStart(3);
    EXPECT_EQ(Said("#FIND " + std::string(parameters)), Lines{"speech 1 " + std::string(words)}) << parameters;
    EXPECT_EQ(FoundLine(), "") << parameters;
    EXPECT_EQ(Viewport().SelStart(), 20);
    EXPECT_EQ(Entry().SelStart(), 3);
  }
}

TEST_F(OutputCommandTest, FindNextPassesOverWhatIsNearerThanSix) {
  Viewport().SetText(" x 3 x 7 x 1 x");  // at 2, 6, 10 and 14
  Run("#FIND x Output");
  Run("#FIND x {Next|Output}");
  EXPECT_EQ(Viewport().SelStart(), 10) << "6 is nearer than six";
  Run("#FIND x {Next|Output}");
  EXPECT_EQ(Of("speech"), Lines{"1 No more found."}) << "and so is 14";
  Run("#FIND x {First|Reverse|Output}");
  Run("#FIND x {Next|Reverse|Output}");
  EXPECT_EQ(Viewport().SelStart(), 6);
  Run("#FIND x {Next|Reverse|Output}");
  EXPECT_EQ(Of("speech"), Lines{"1 No more found."});
  EXPECT_EQ(Viewport().SelStart(), 6);
}

TEST_F(OutputCommandTest, FindNextStepsBySixFromTheCaretExactly) {
  const struct {
    const char* Text;
    const char* Keywords;
    int32 First, Next;  // where the caret stands after the first search and after the next one
  } cases[] = {
      {"x....xx", "Forward|Output", 1, 7},  // 6 is passed over
      {"xx....x", "Reverse|Output", 7, 1},  // and so is 2
      {"x....x", "Forward|Output", 1, 1},   // nothing left
      {"x....x", "Reverse|Output", 6, 6},   // six back is no place of the text
      {"x...xx", "Forward|Input", 0, 5},    // the caret stands before the hit, and is where the step begins
      {"xx.....x", "Reverse|Input", 7, 0},  //
      {"x...x", "Forward|Input", 0, 0},     //
      {"x.....x", "Reverse|Input", 6, 6},   //
  };
  for (const auto& at : cases) {
    const std::string keywords = at.Keywords;
    const bool output = keywords.ends_with("Output");
    (output ? Viewport() : Entry()).SetText(at.Text);
    Effects();
    EXPECT_EQ(Said("#FIND x {First|" + keywords + "}"), Lines()) << at.Text << keywords;
    EXPECT_EQ((output ? Viewport() : Entry()).SelStart(), at.First) << at.Text << keywords;
    const Lines told{output ? "speech 1 No more found." : "speech 1 Not found"};
    EXPECT_EQ(Said("#FIND x {Next|" + keywords + "}"), at.First == at.Next ? told : Lines()) << at.Text << keywords;
    EXPECT_EQ((output ? Viewport() : Entry()).SelStart(), at.Next) << at.Text << keywords;
  }
}

TEST_F(OutputCommandTest, FindNextBackwardsFromTheFifthPlaceBeginsAgainAtTheEnd) {
  const struct {
    int32 Caret, Found;  // 0: nothing
  } cases[] = {{0, 0}, {4, 0}, {5, 11}, {6, 0}, {7, 1}, {11, 5}};
  for (const auto& at : cases) {
    Viewport().SetText("x...x.....x");
    Viewport().SetSelStart(at.Caret);
    Effects();
    EXPECT_EQ(Said("#FIND x {Next|Reverse|Output}"), at.Found == 0 ? Lines{"speech 1 No more found."} : Lines());
    EXPECT_EQ(Viewport().SelStart(), at.Found == 0 ? at.Caret : at.Found) << at.Caret;
    // In the entry a start before the text finds nothing.
    Entry().SetText("x...x.....x");
    Entry().SetSelStart(5);
    EXPECT_EQ(Said("#FIND x {Next|Reverse|Input}"), Lines{"speech 1 Not found"});
  }
}

TEST_F(OutputCommandTest, FindInTheEntryPutsTheCaretBeforeTheHit) {
  Entry().SetText("get x\r\nlook at X\r\nsay x");
  const FindStep steps[] = {
      {"", 4, "get x"},  // the entry has the focus
      {"Next|Input", 15, "look at X"},
      {"Next", 22, "say x"},
      {"First|Reverse", 22, "say x"},
      {"Next|Reverse", 15, "look at X"},
      {"Reverse|Next", 4, "get x"},
  };
  for (const FindStep& step : steps) {
    EXPECT_EQ(Said("#FIND x {" + std::string(step.Keywords) + "}"), Lines()) << step.Keywords;
    EXPECT_EQ(Entry().SelStart(), step.Caret) << step.Keywords;
    EXPECT_EQ(FoundLine(), step.Line) << step.Keywords;
  }
  EXPECT_EQ(Said("#FIND x {Reverse|Next}"), Lines{"speech 1 Not found"}) << "six before the start of the text";
}

TEST_F(OutputCommandTest, FindOfALineEndInTheEntryGivesTheLineBeforeIt) {
  for (const bool output : {false, true}) {
    (output ? Viewport() : Entry()).SetText("a\r\n\r\nb");
    AddVariable("end", "\r\nb");
    EXPECT_EQ(Run(std::string("#FIND @end ") + (output ? "Output" : "Input")), "");
    EXPECT_EQ(FoundLine(), output ? "" : "a");
  }
}

TEST_F(OutputCommandTest, FindLooksInTheWindowThatHasTheFocus) {
  Viewport().SetText("a cat");
  Entry().SetText("the cat");
  keyboard.OutputFocused = true;
  Run("#FIND cat");
  EXPECT_EQ(Viewport().SelStart(), 3);
  EXPECT_EQ(Entry().SelStart(), 0);
  AddVariable("what", "CAT");
  Run("#FIND @what Input");
  EXPECT_EQ(Entry().SelStart(), 4);
  EXPECT_EQ(FoundLine(), "the cat");
  EXPECT_EQ(Run("#FIND cat Output|Up"),
            "The second parameter must include only the following: First, Next, Forward, Reverse, Output, or Input");
  // Empty windows have nothing.
  Viewport().SetText("");
  Entry().SetText("");
  for (const char* keywords :
       {"Output", "Output|Reverse", "Input", "Input|Reverse", "Output|Next", "Input|Next|Reverse"}) {
    Effects();
    Run("#FIND {} " + std::string(keywords));
    EXPECT_EQ(Of("speech").size(), 1u) << keywords;
  }
}

// ---- WINDOW ----

TEST_F(OutputCommandTest, WindowGoesToTheNamedBuffer) {
  Loaded(4, "/data/newer/old.set");
  Loaded(5, "/data/my-new-one.set");
  Loaded(6, "/data/new.set");
  const struct {
    const char* Name;
    int16 Buffer;
  } cases[] = {{"errorlog", 2}, {"NewLines", 3}, {"new", 5}, {"NEW.SET", 6}, {"Entry", 1}, {"old", 4}};
  for (const auto& at : cases) {
    buffers.CurrentBuffer = at.Buffer == 2 ? 1 : 2;
    EXPECT_EQ(Run("#WINDOW {" + std::string(at.Name) + "}"), "") << at.Name;
    EXPECT_EQ(buffers.CurrentBuffer, at.Buffer) << at.Name;
    EXPECT_EQ(Of("speech"), Lines{"5 " + scriptFiles.GetBufferName(at.Buffer) + " " +
                                  Buffers::ShortName(buffers.BufferFile[at.Buffer])})
        << at.Name;
  }
  EXPECT_EQ(Run("#WINDOW newer"), "Window newer not found") << "the folder does not count";
  buffers.BufferFlags[5] = 0;
  buffers.BufferFile[5].clear();
  Run("#WINDOW new");
  EXPECT_EQ(buffers.CurrentBuffer, 6) << "a free slot is no window";
}

TEST_F(OutputCommandTest, WindowMovesTheFocusOnlyWhereTold) {
  memory.face.SetFocus(MainFocus::Output);
  keyboard.OutputFocused = true;
  memory.effects.Clear();
  EXPECT_EQ(Run("#WINDOW errorlog"), "");
  EXPECT_EQ(memory.face.Focus(), MainFocus::Output) << "another buffer is shown; the focus stays";
  EXPECT_EQ(Run("#WINDOW errorlog"), "");
  EXPECT_EQ(memory.face.Focus(), MainFocus::Entry) << "the one that is shown gets the focus";
  keyboard.OutputFocused = false;
  Effects();
  EXPECT_EQ(Run("#WINDOW errorlog"), "");
  EXPECT_EQ(Effects(), Lines());
  EXPECT_EQ(Run("#WINDOW Output;#BELL"), "");
  EXPECT_EQ(memory.face.Focus(), MainFocus::Output);
  EXPECT_EQ(Of("beep"), Lines()) << "the line ends there";
}

}  // namespace corvid::test
