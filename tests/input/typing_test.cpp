// SPDX-License-Identifier: GPL-3.0-or-later
#include "input/fixture.h"

namespace corvid {
namespace {

// ---- Enter in the entry line ----

TEST_F(KeyboardTest, EnterLeavesTheLineToTheNextTick) {
  Enter("look");
  EXPECT_EQ(Entry().Text(), "look\r\n");
  EXPECT_EQ(Entry().SelStart(), 6);
  EXPECT_EQ(keyboard.EntryLine, "look");
  EXPECT_EQ(Of("job"), Texts{"5 in 1"});
  EXPECT_EQ(Of("command"), Texts{}) << "not before the key is done";
}

TEST_F(KeyboardTest, EnterTwiceBeforeTheTickRunsBothLinesInOrder) {
  Upcalls live{runner, errors, speaker, prompter, screens, timers};
  Keyboard typist({script, options, buffers, state, speech, keyboard}, symbols, scanner, scriptFiles, saving, timers,
                  menus, platform, live);
  for (const char* character : {"n", "\r", "s", "\r"}) typist.KeyTyped(character);
  Pass(10);
  EXPECT_EQ(Of("command"), (Texts{"-2 n", "-2 s"}));
}

TEST_F(KeyboardTest, EnterOnAnOldLineSendsItOnceMoreAndKeepsIt) {
  Enter("north");
  Enter("south");
  Entry().SetSelStart(2);
  Stroke("\r");
  EXPECT_EQ(keyboard.EntryLine, "north");
  EXPECT_EQ(Entry().Text(), "north\r\nsouth\r\nnorth\r\n");
  EXPECT_EQ(Entry().SelStart(), Entry().Length());
}

TEST_F(KeyboardTest, AnOldLineIsPartedFromALineBegunBelow) {
  Enter("north");
  Type("sou");
  Entry().SetSelStart(0);
  Stroke("\r");
  EXPECT_EQ(keyboard.EntryLine, "north");
  EXPECT_EQ(Entry().Text(), "north\r\nsou\r\nnorth\r\n");
}

TEST_F(KeyboardTest, EnterWithinTheLastLineTakesTheWholeLine) {
  Type("look");
  Entry().SetSelStart(1);
  Stroke("\r");
  EXPECT_EQ(keyboard.EntryLine, "look");
  EXPECT_EQ(Entry().Text(), "look\r\n") << "its copy is the repeat that the history drops";
}

TEST_F(KeyboardTest, EnterOnSelectedLinesTakesTheFirst) {
  Enter("north");
  Enter("south");
  Entry().Select(0, Entry().Length());
  Stroke("\r");
  EXPECT_EQ(keyboard.EntryLine, "north");
  EXPECT_EQ(Entry().Text(), "north\r\nsouth\r\nnorth\r\n");
}

TEST_F(KeyboardTest, AnEmptyLineIsEnteredToo) {
  Enter("");
  EXPECT_EQ(keyboard.EntryLine, "");
  EXPECT_EQ(Of("job"), Texts{"5 in 1"});
  Enter("");
  EXPECT_EQ(Entry().Text(), "\r\n");
}

TEST_F(KeyboardTest, TheHistoryHoldsNoDirectRepeats) {
  Enter("kill orc");
  Enter("kill orc");
  EXPECT_EQ(Entry().Text(), "kill orc\r\n");
  EXPECT_EQ(Of("job").size(), 2u) << "it runs all the same";
  Enter("orc");
  Enter("kill orc");
  EXPECT_EQ(Entry().Text(), "kill orc\r\norc\r\nkill orc\r\n");
}

TEST_F(KeyboardTest, TwoAnglesSendAllThatFollowsUnchanged) {
  Enter(">>say #not a command");
  EXPECT_EQ(keyboard.EntryLine, ">say #not a command");
  Enter("smile");
  EXPECT_EQ(keyboard.EntryLine, ">smile");
  options.PassThruChar = '!';
  Enter("wave");
  EXPECT_EQ(keyboard.EntryLine, "!wave");
  Enter("<<bow");
  EXPECT_EQ(keyboard.EntryLine, "bow");
  EXPECT_FALSE(keyboard.EchoPrefix);
  Enter(" >>nod");
  EXPECT_EQ(keyboard.EntryLine, " >>nod") << "only at the start of the line";
}

TEST_F(KeyboardTest, TheSessionsCharactersPartALineWhenTheOptionSaysSo) {
  state.PassThruPattern[0] = "/.";
  Enter("n/n.look");
  EXPECT_EQ(keyboard.EntryLine, "n/n.look");
  options.ExpandCommandLineVars = true;
  Enter("n/n.look");
  EXPECT_EQ(keyboard.EntryLine, "n;n;look");
  EXPECT_TRUE(Entry().Text().ends_with("n/n.look\r\n")) << "the history keeps what was typed";
  Enter(">n/n");
  EXPECT_EQ(keyboard.EntryLine, ">n/n");
  Enter("  #alias a/b c");
  EXPECT_EQ(keyboard.EntryLine, "  #alias a/b c");
  options.CommandSeparator = "&&";
  Enter("n/n");
  EXPECT_EQ(keyboard.EntryLine, "n&&n");
}

TEST_F(KeyboardTest, AHistoryAbove30000LosesItsFirst5000) {
  const std::string start(24999, 'a');
  Entry().SetText(start + "\r\n" + std::string(4995, 'b'));
  Entry().SetSelStart(Entry().Length());
  Type("xy");
  Stroke("\r");
  ASSERT_EQ(Entry().Length(), 30000) << "30,000 is not too long";
  Entry().SetText("c" + Entry().Text().substr(0, 29998));
  Entry().SetSelStart(Entry().Length());
  const std::string tail = Entry().Text().substr(5000);
  Stroke("\r");
  EXPECT_EQ(Entry().Length(), 25001);
  EXPECT_EQ(Entry().Text(), tail + "\r\n");
  EXPECT_EQ(Entry().SelStart(), 25001);
}

TEST_F(KeyboardTest, EnterInAScriptIsALineBreak) {
  Edit("#alias a b");
  Entry().SetSelStart(6);
  Stroke("\r");
  EXPECT_EQ(Entry().Text(), "#alias\r\n a b");
  EXPECT_EQ(Of("job"), Texts{});
}

TEST_F(KeyboardTest, AScriptOf32760TakesNothingMore) {
  Edit(std::string(32759, 'x'));
  Entry().SetSelStart(5);
  Stroke("y");
  EXPECT_EQ(Entry().Length(), 32760);
  EXPECT_EQ(Spoken(), Texts{});
  Stroke("y");
  EXPECT_EQ(Entry().Length(), 32760);
  EXPECT_EQ(Spoken(), Texts{"5 Buffer full."});
  EXPECT_EQ(Of("beep").size(), 1u);
}

// ---- typed characters ----

TEST_F(KeyboardTest, TypedCharactersAreEchoedOnTheWindowsOwnChannel) {
  speech.TypingEcho[Channel::Entry] = 1;
  Stroke("\xC3\xA9");
  EXPECT_EQ(Of("spelled"), Texts{"2 \xC3\xA9"});
  EXPECT_EQ(Entry().Text(), "\xC3\xA9");
  Edit("");
  Stroke("a");
  EXPECT_EQ(Of("spelled").size(), 1u) << "the echo of scripts is off";
  speech.TypingEcho[Channel::Edit] = 1;
  Stroke("b");
  EXPECT_EQ(Of("spelled").back(), "4 b");
}

TEST_F(KeyboardTest, TheMarginBellRingsTwiceOneColumnAhead) {
  options.MarginBell = 5;
  Type("abcd");
  EXPECT_EQ(Of("beep").size(), 0u);
  Type("e");
  EXPECT_EQ(Of("beep").size(), 1u);
  Pass(29);
  EXPECT_EQ(Of("beep").size(), 1u);
  Pass(2);
  EXPECT_EQ(Of("beep").size(), 2u);
  Type("fgh");
  Pass(500);
  EXPECT_EQ(Of("beep").size(), 2u);
}

TEST_F(KeyboardTest, TheMarginBellCountsFromTheLastLineEndAndHearsNoBlank) {
  options.MarginBell = 3;
  Entry().SetText("a long line\r\nxx");
  Entry().SetSelStart(Entry().Length());
  Type(" ");
  EXPECT_EQ(Of("beep").size(), 0u);
  Entry().SetText("a long line\r\nxx");
  Entry().SetSelStart(Entry().Length());
  Type("x");
  EXPECT_EQ(Of("beep").size(), 1u);
  options.MarginBell = 0;
  Entry().SetText("");
  Type("abcdef");
  Pass(100);
  EXPECT_EQ(Of("beep").size(), 2u) << "0 is no bell";
}

TEST_F(KeyboardTest, TypingInTheOutputGoesOnInTheEntry) {
  Entry().SetText("sa");
  Press(keycode::Tab);
  ASSERT_TRUE(keyboard.OutputFocused);
  EXPECT_EQ(Spoken(), Texts{"3 Output"});
  memory.effects.Clear();
  Stroke("y");
  EXPECT_EQ(Entry().Text(), "say") << "at the end, wherever the caret was";
  EXPECT_FALSE(keyboard.OutputFocused);
  EXPECT_EQ(memory.face.Focus(), MainFocus::Entry);
  EXPECT_EQ(Spoken().front(), "2  Entry");
  Press(keycode::Tab);
  Stroke("\r");
  EXPECT_EQ(keyboard.EntryLine, "say");
  EXPECT_EQ(Entry().Text(), "say\r\n");
}

TEST_F(KeyboardTest, TypingInTheOutputLeavesAScriptForTheEntryLine) {
  Edit("#alias a b");
  Press(keycode::Tab);
  Stroke("y");
  EXPECT_EQ(buffers.CurrentBuffer, buffer::EntryLine);
  EXPECT_EQ(Entry().Text(), "y");
  EXPECT_EQ(buffers.BufferText[4], "#alias a b");
}

TEST_F(KeyboardTest, AScriptThatCannotBeChangedGivesTheKeyToTheEntryLine) {
  Edit("#alias a b", true);
  Stroke("n");
  EXPECT_EQ(buffers.CurrentBuffer, buffer::EntryLine);
  EXPECT_EQ(Entry().Text(), "n");
  EXPECT_EQ(buffers.BufferText[4], "#alias a b");
}

TEST_F(KeyboardTest, BackspaceSaysWhatItTakesAway) {
  speech.TypingEcho[Channel::Entry] = 1;
  struct Row {
    const char* text;
    int32 start, length;
    Texts spelled;
  };
  for (const Row& row : std::vector<Row>{{"look", 4, 0, {"2 k"}},
                                         {"look", 1, 0, {"2 l"}},
                                         {"caf\xC3\xA9", 5, 0, {"2 \xC3\xA9"}},
                                         {"n\r\ns", 3, 0, {"2 \r\n"}},
                                         {"look", 1, 2, {"2 o"}},
                                         {"look", 0, 0, {}},
                                         {"", 0, 0, {}}}) {
    Entry().SetText(row.text);
    Entry().Select(row.start, row.start + row.length);
    memory.effects.Clear();
    Stroke("\b");
    EXPECT_EQ(Of("spelled"), row.spelled) << row.text << " at " << row.start;
  }
  Entry().SetText("look");
  Entry().SetSelStart(4);
  speech.TypingEcho[Channel::Entry] = 0;
  memory.effects.Clear();
  Stroke("\b");
  EXPECT_EQ(Of("spelled"), Texts{});
  EXPECT_EQ(Entry().Text(), "loo");
}

TEST_F(KeyboardTest, TheOutputIsReadNotChanged) {
  state.OutputWindow(0).Append("Bob waves.\r\n");
  speech.TypingEcho[Channel::Output] = 1;
  Press(keycode::Tab);
  Stroke("\b");
  EXPECT_EQ(Of("spelled"), Texts{});
  Press(keycode::Home, ControlBit);
  Press(keycode::Delete);
  EXPECT_EQ(Screen(0), "Bob waves.\r\n");
}

}  // namespace
}  // namespace corvid
