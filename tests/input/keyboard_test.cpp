// SPDX-License-Identifier: GPL-3.0-or-later
#include "input/fixture.h"

namespace corvid {
namespace {

TEST_F(KeyboardTest, AMacroComesBeforeTheProgramsOwnKey) {
  Macro('A', ControlBit, "  kill orc ");
  Down('A', ControlBit);
  keys.KeyTyped("a");
  EXPECT_EQ(Of("command"), Texts{"-2 kill orc"});
  EXPECT_EQ(Spoken(), Texts{}) << "nothing was selected";
  EXPECT_EQ(Entry().Text(), "") << "the key types nothing";
  keys.KeyTyped("b");
  EXPECT_EQ(Entry().Text(), "b") << "the one behind it does";
}

TEST_F(KeyboardTest, AMacroRunsFromDepthZeroAndTellsWhoseErrorItIs) {
  Macro(keycode::F1, 0, "#bad");
  script.CommandDepth = 9;
  int16 depth = -1;
  int16 bits = 0;
  runner.OnCommand = [&](const std::string&, int16& optionBits, std::string& ErrorDescription, Parameters&, int16&) {
    depth = script.CommandDepth;
    bits = optionBits;
    ErrorDescription = "Bad command #bad";
  };
  Down(keycode::F1);
  EXPECT_EQ(depth, 0);
  EXPECT_EQ(bits, option::Interactive);
  EXPECT_EQ(Of("errorfile"), Texts{"7"});
}

TEST_F(KeyboardTest, MacrosAreOffWithTheSessionsSwitchOrTheirClass) {
  Macro(keycode::F1, 0, "kick");
  state.KeyEnabled[0] = 0;
  Down(keycode::F1);
  EXPECT_EQ(Of("command"), Texts{});
  state.KeyEnabled[0] = 1;
  Down(keycode::F1, ShiftBit);
  EXPECT_EQ(Of("command"), Texts{}) << "another shift state is another key";
  Macro(keycode::F12, 0, "flee", "fight");
  Down(keycode::F12);
  EXPECT_EQ(Of("command"), Texts{});
  symbols.CheckAndAddClass("fight", 0);
  Down(keycode::F12);
  EXPECT_EQ(Of("command"), Texts{"-2 flee"});
}

TEST_F(KeyboardTest, ControlTappedAloneStopsAllSpeech) {
  Press(keycode::Control, ControlBit);
  EXPECT_EQ(Of("stop"), Texts{"control"});
  Down(keycode::Control, ControlBit);
  Down(keycode::Home, ControlBit);
  keys.KeyUp(keycode::Home, ControlBit);
  memory.effects.Clear();
  keys.KeyUp(keycode::Control, 0);
  EXPECT_EQ(Of("stop"), Texts{}) << "it was held for another key";
}

TEST_F(KeyboardTest, ControlWithShiftIsNoTap) {
  Down(keycode::Control, ControlBit | ShiftBit);
  keys.KeyUp(keycode::Control, ShiftBit);
  EXPECT_EQ(Of("stop"), Texts{});
}

TEST_F(KeyboardTest, KeysInterruptAsTheWindowsChannelSays) {
  speech.InterruptOwn[Channel::Entry] = 1;
  Down(keycode::F1);
  EXPECT_EQ(Of("stop"), Texts{"2"});
  memory.effects.Clear();
  speech.InterruptOwn[Channel::Entry] = 0;
  speech.InterruptOthers[Channel::Entry] = 1;
  speech.NotInterruptedByOthers[Channel::System] = 1;
  Down(keycode::F1);
  EXPECT_EQ(Of("stop"), (Texts{"1", "2", "3", "4", "6"}));
}

TEST_F(KeyboardTest, AltTapsAnswerButAltTabDoesNot) {
  Press(keycode::Alt, AltBit);
  EXPECT_EQ(Spoken().size(), 1u);
  Press(keycode::Alt, AltBit);
  memory.effects.Clear();
  Down(keycode::Alt, AltBit);
  Down(keycode::Tab, AltBit);
  keys.KeyUp(keycode::Tab, AltBit);
  EXPECT_TRUE(keyboard.AltTabbed);
  keys.KeyUp(keycode::Alt, 0);
  EXPECT_FALSE(keyboard.AltTabbed);
  EXPECT_EQ(Spoken(), Texts{});
}

TEST_F(KeyboardTest, AltF4AsksToLeave) {
  Down(keycode::F4, AltBit);
  EXPECT_EQ(Of("quit"), Texts{"asked"});
}

// Whoever answered that he stays is where he was: no menu takes his next keys.
TEST_F(KeyboardTest, AltF4IsNoTapOfAlt) {
  Down(keycode::Alt, AltBit);
  Press(keycode::F4, AltBit);
  memory.effects.Clear();
  keys.KeyUp(keycode::Alt, 0);
  EXPECT_EQ(Spoken(), Texts{});
  EXPECT_FALSE(menus.ListOpen());
}

TEST_F(KeyboardTest, ScriptsAreSavedByTheWayEveryFiveMinutes) {
  Edit("#alias a b");
  buffers.BufferLoaded[4] = "";
  const auto saved = [&] { return memory.files.FileExists("/data/hunt.set"); };
  memory.clock.SetNow({2026, 1, 15, 12, 0, 0});
  keyboard.LastAutoSave = 12 * 3600;
  options.AutoSave = true;
  Pass(300'000);
  EXPECT_FALSE(saved()) << "never while nobody is there";
  Down(keycode::F1);
  EXPECT_FALSE(saved()) << "300 seconds are not more than 300";
  Pass(1000);
  options.AutoSave = false;
  Down(keycode::F1);
  EXPECT_FALSE(saved());
  options.AutoSave = true;
  Down(keycode::F1);
  EXPECT_TRUE(saved());
  EXPECT_EQ(keyboard.LastAutoSave, 12 * 3600 + 301);
}

TEST_F(KeyboardTest, MidnightDoesNotStopTheSaving) {
  memory.clock.SetNow({2026, 1, 15, 0, 10, 0});
  keyboard.LastAutoSave = 86'000;
  options.AutoSave = true;
  Down(keycode::F1);
  EXPECT_EQ(keyboard.LastAutoSave, 600);
}

// ---- moving and speaking ----

TEST_F(KeyboardTest, ArrowsSpeakTheCharacterThatTheCaretMovesOnto) {
  speech.TypingEcho[Channel::Entry] = 1;
  Entry().SetText(
      "a\xC3\xA9"
      "c");
  Press(keycode::Right);
  Press(keycode::Right);
  Press(keycode::Left);
  EXPECT_EQ(Of("spelled"), (Texts{"2 \xC3\xA9", "2 c", "2 \xC3\xA9"}));
  Press(keycode::Delete);
  EXPECT_EQ(Entry().Text(), "ac");
  EXPECT_EQ(Of("spelled").back(), "2 c") << "what is under the caret now";
  speech.TypingEcho[Channel::Entry] = 0;
  Press(keycode::Left);
  EXPECT_EQ(Of("spelled").size(), 4u);
}

TEST_F(KeyboardTest, HomeAndEndAreNamedWithInterrupt) {
  Entry().SetText("one\r\ntwo");
  Press(keycode::End);
  Press(keycode::Home);
  EXPECT_EQ(memory.effects.Transcript(), "stop 2\nspoken 2 End\nstop 2\nspoken 2 Home\n");
  memory.effects.Clear();
  Press(keycode::End, ControlBit);
  Press(keycode::Home, ControlBit);
  EXPECT_EQ(Spoken(), (Texts{"2 Bottom", "2 two", "2 Top", "2 one"}));
}

TEST_F(KeyboardTest, TopIsSaidOfAnEmptyWindowToo) {
  Press(keycode::Home, ControlBit);
  EXPECT_EQ(Spoken(), Texts{"2 Top"});
}

TEST_F(KeyboardTest, LinesWordsAndSelectionsAreSpokenAtTheNextTick) {
  Entry().SetText("go north\r\nlook");
  Press(keycode::Down);
  Press(keycode::Up);
  Press(keycode::Right, ControlBit);
  Press(keycode::Right, ShiftBit);
  Press(keycode::Left, ShiftBit | ControlBit);
  EXPECT_EQ(Of("job"), (Texts{"2 in 50", "2 in 50", "1 in 50", "3 in 50", "3 in 50"}));
}

TEST_F(KeyboardTest, WordsOfTheEntryAreSpokenUnlessTheOptionSaysOtherwise) {
  Entry().SetText("go north");
  state.OutputWindow(0).Append("Bob waves.");
  options.EchoMoveByWord = false;
  Press(keycode::Right, ControlBit);
  EXPECT_EQ(Entry().SelStart(), 3) << "the caret moves all the same";
  EXPECT_EQ(Of("job"), Texts{});
  Press(keycode::Tab);
  Press(keycode::Left, ControlBit);
  EXPECT_EQ(Of("job"), Texts{"1 in 50"}) << "it is about the entry line alone";
}

TEST_F(KeyboardTest, ALineOfTheOtherWindowIsNotTheOneBefore) {
  Entry().SetText("say hello");
  for (const char* line : {"What is your name?", "say hello"}) {
    keyboard.PendingFilter = line;
    Press(keycode::Tab);
    EXPECT_EQ(keyboard.PendingFilter, "") << "or the first word that is read here would be its whole line";
  }
}

TEST_F(KeyboardTest, TheOutputIsReadOnItsOwnChannel) {
  state.OutputWindow(0).Append("Bob waves.\r\nAnn nods.");
  Press(keycode::Tab);
  EXPECT_EQ(state.OutputWindow(0).SelStart(), state.OutputWindow(0).Length());
  EXPECT_TRUE(state.ReadPosition);
  memory.effects.Clear();
  Press(keycode::Home, ControlBit);
  EXPECT_EQ(Spoken(), (Texts{"3 Top", "3 Bob waves."}));
  Press(keycode::Tab);
  EXPECT_FALSE(state.ReadPosition);
  EXPECT_EQ(Spoken().back(), "5 Entry ") << "the window that has the focus is named";
}

// ---- selection and clipboard ----

TEST_F(KeyboardTest, SelectAllIsSaidAsItAlwaysWas) {
  Entry().SetText("look");
  Press('A', ControlBit);
  EXPECT_EQ(Entry().SelText(), "look");
  EXPECT_EQ(Spoken(), Texts{"2 Slect all"});
}

TEST_F(KeyboardTest, CopyAndCut) {
  Entry().SetText("go north");
  memory.face.Clipboard = "before";
  Press('C', ControlBit);
  EXPECT_EQ(Spoken(), Texts{"1 Nothing Copied"});
  EXPECT_EQ(memory.face.Clipboard, "before");
  Press('X', ControlBit);
  EXPECT_EQ(Spoken().size(), 1u) << "cutting says nothing";
  Entry().Select(3, 8);
  Press('C', ControlBit);
  EXPECT_EQ(memory.face.Clipboard, "north");
  EXPECT_EQ(Spoken().back(), "1 Copied");
  EXPECT_EQ(Entry().Text(), "go north");
  Entry().Select(0, 3);
  Press('X', ControlBit);
  EXPECT_EQ(memory.face.Clipboard, "go ");
  EXPECT_EQ(Entry().Text(), "north");
  EXPECT_EQ(Spoken().size(), 2u);
}

TEST_F(KeyboardTest, NothingIsCutOutOfTheOutput) {
  state.OutputWindow(0).Append("Bob waves.");
  Press(keycode::Tab);
  Press('A', ControlBit);
  Press('X', ControlBit);
  EXPECT_EQ(memory.face.Clipboard, "Bob waves.");
  EXPECT_EQ(Screen(0), "Bob waves.");
}

TEST_F(KeyboardTest, AWordIsPastedButLinesRunAsAScript) {
  Entry().SetText("say ");
  Entry().SetSelStart(4);
  memory.face.Clipboard = "hello";
  Press('V', ControlBit);
  EXPECT_EQ(Entry().Text(), "say hello");
  EXPECT_EQ(Of("command"), Texts{});
  memory.face.Clipboard = "#alias a {\nb\n}\nlook\n";
  Press('V', ControlBit);
  EXPECT_EQ(Entry().Text(), "say hello");
  EXPECT_EQ(Of("command"), (Texts{"-2 #alias a {\r\nb\r\n}", "-2 look"}));
  EXPECT_EQ(Spoken(), Texts{"1 OK"});
  EXPECT_EQ(Of("job"), Texts{"4 in 50"});
}

TEST_F(KeyboardTest, ControlTabPagesThroughTheBuffers) {
  Edit("#alias a b");
  Entry().SetText("#alias a c");
  Press(keycode::Tab, ControlBit);
  EXPECT_EQ(buffers.CurrentBuffer, buffer::EntryLine);
  EXPECT_EQ(buffers.BufferText[4], "#alias a c");
  EXPECT_EQ(Spoken(), Texts{"5 Entry "});
  Press(keycode::Tab);
  Press(keycode::Tab, ControlBit);
  EXPECT_FALSE(keyboard.OutputFocused);
}

// ---- faults and closing ----

TEST_F(KeyboardTest, AFaultCostsThatKeyOnly) {
  Macro(keycode::F1, 0, "boom");
  runner.OnCommand = [](const std::string&, int16&, std::string&, Parameters&, int16&) {
    throw Fault(FaultKind::Index, "Subscript out of range");
  };
  Down(keycode::F1);
  EXPECT_EQ(Of("unknownerror"), Texts{"form_keydown: Subscript out of range"});
  Enter("look");
  EXPECT_EQ(keyboard.EntryLine, "look");
}

TEST_F(KeyboardTest, KeysThatAreTakenDoNothingElse) {
  Macro(keycode::F1, 0, "boom");
  speech.TypingEcho[Channel::Entry] = 1;
  Entry().SetText("one\r\ntwo");
  keyboard.KeysTaken = true;
  Press(keycode::F1);
  Press(keycode::Down);
  Stroke("x");
  Stroke("\r");
  Press(keycode::Alt, AltBit);
  EXPECT_EQ(Of("command"), Texts{});
  EXPECT_EQ(Of("spelled"), Texts{});
  EXPECT_EQ(Of("spoken"), Texts{});
  EXPECT_EQ(Entry().Text(), "one\r\ntwo");
  EXPECT_EQ(Entry().SelStart(), 0);
  std::vector<int16> codes;
  for (const KeyPress& key : keyboard.TakenKeys) codes.push_back(key.KeyCode);
  EXPECT_EQ(codes, (std::vector<int16>{keycode::F1, keycode::Down, 'Z', keycode::Enter, keycode::Alt}));
  EXPECT_EQ(keyboard.LastKeyCode, keycode::Alt);
  Press(keycode::Control, ControlBit);
  EXPECT_EQ(Of("stop"), Texts{"control"}) << "Control is silence here too";
  Down(keycode::F4, AltBit);
  EXPECT_EQ(Of("quit"), Texts{"asked"});
}

TEST_F(KeyboardTest, ClosingTheWindowAsksWhileTheGameIsConnected) {
  EXPECT_TRUE(keys.CloseRequested());
  Online("bob");
  EXPECT_FALSE(keys.CloseRequested());
  prompter.answers = {box::ResultYes};
  EXPECT_TRUE(keys.CloseRequested());
}

}  // namespace
}  // namespace corvid
