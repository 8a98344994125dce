// SPDX-License-Identifier: GPL-3.0-or-later
// The console face over pipes: what is typed and what is read.
#include "platform/qt/console_face.h"

#include <gtest/gtest.h>

#include "core/keys.h"
#include "core/text.h"
#include "platform/qt/clock.h"
#include "qt_program.h"

namespace corvid {
namespace {

// "ask" opens the dialog that the test has made, any other line comes back.
class EchoProgram : public FaceEvents, public DialogEvents {
 public:
  EchoProgram(QtEventLoop& eventLoop, ConsoleFace& consoleFace, DialogModel dialog)
      : loop(eventLoop), face(consoleFace), model(std::move(dialog)) {
    face.SetEvents(this);
    face.AttachEntry(entry);
    hidden.SetVisible(false);
    face.AttachViewport(0, true, shown);
    face.AttachViewport(1, true, hidden);
    face.ShowMain();
    face.SetTitle("Corvid");
  }
  void KeyDown(int16 KeyCode, int16 Shift) override {
    if (KeyCode == keycode::Tab) {
      if (++tabs == 3) entry.SetText("");
      face.SetEntryLabel(tabs < 3 ? "Script " + std::to_string(tabs) : "Entry");
      return;
    }
    if (KeyCode == keycode::F1) return shown.Append("By what name?");
    if (row >= 0 && KeyCode != 13) face.SelectListRow(1);
    if (KeyCode == 27 || KeyCode == 46) {
      face.CloseListMenu();
      row = -1;
    }
    if (KeyCode != 13 || row >= 0)
      shown.Append("key " + std::to_string(KeyCode) + "/" + std::to_string(Shift) + "\r\n");
  }
  void KeyTyped(const std::string& character) override {
    if (entry.Locked()) {
      loop.DoEvents();
      entry.SetLocked(false);
      entry.SetText(character);
      entry.SetSelStart(1);
    }
    if (character != "\r" || row >= 0) return;
    const std::string line = entry.Text();
    entry.SetText("");
    if (line == "ask") {
      Ask();
    } else if (line == "ask twice") {
      Ask();
      Ask();
      result += "!";
    } else if (line == "close") {
      shown.Append("50hp>");
      hidden.Append("60hp>");
      face.NoteSession(0, "closed");
      face.NoteSession(1, "closed");
      shown.Append("Connection to Mud was closed.");
      hidden.Append("Connection to Mud was closed.");
      shown.Append("Bob");
      shown.Append(" waves\r\n");
      hidden.Append("Ann waves\r\n");
    } else if (line == "empty menu") {
      face.ShowListMenu({"ONETIME", "Tab words", {}, -1});
    } else if (line == "words") {
      face.ShowListMenu({"ONETIME", "Tab words", rows, 0});
    } else if (line == "ask and tell") {
      Ask();
      face.Notice("Really?");
      shown.Append("Bob waves\r\n");
      face.Notice("Really?");
    } else if (line == "answer") {
      shown.Append("A crow caws.");  // no line end yet
      face.NoteAnswer(" Recording\r\n");
    } else if (line == "menu") {
      face.ShowListMenu({"MAIN", "Main menu", rows, 0});
    } else if (line == "switch") {
      hidden.Append("missed\r\n");
      shown.SetVisible(false);
      hidden.SetVisible(true);
    } else if (line.starts_with("window ")) {
      entry.SetText(line.substr(7) == "Entry" ? "" : "\r\nfirst error\r\nsecond error");
      face.SetEntryLabel(line.substr(7));
    } else if (line == "word") {
      entry.SetText("crow");
    } else if (line == "long window") {
      for (int i = 0; i < 400; ++i) entry.Append("line " + std::to_string(i) + "\r\n");
      face.SetEntryLabel("Script long.set");
    } else {
      shown.Append("You say: " + line + "\x07\x1b[31m\r\n");
    }
  }
  void MenuClicked(int32 clicked) override {
    row = clicked;
    shown.Append("row " + std::to_string(clicked) + "\r\n");
    face.SelectListRow(clicked);
  }
  void KeyUp(int16, int16) override {}
  void FocusChanged(MainFocus) override {}
  bool CloseRequested() override { return true; }

  void Ask() {
    open = true;
    face.Dialogs().OpenDialog(model, *this);
    while (open && !loop.Ending()) loop.WaitEvents(-1);
  }
  void DialogHappened(int32 control, DialogEvent event, int16& key, int16&) override {
    if (event == DialogEvent::KeyDown) return OpenRow(model.Controls[static_cast<std::size_t>(control)], key);
    if (event != DialogEvent::Click) return;
    const DialogControl& met = model.Controls[static_cast<std::size_t>(control)];
    if (met.Kind != ControlKind::Button || met.Text == "Repeat") return;
    for (const DialogControl& each : model.Controls) {
      if (each.Kind == ControlKind::TextBox || each.Kind == ControlKind::Box) result += "[" + each.Text + "]";
      if (each.Kind == ControlKind::List) result += "[" + std::to_string(each.ListIndex) + "]";
      if (each.Kind == ControlKind::Check || each.Kind == ControlKind::Option || each.Kind == ControlKind::Scroll)
        result += "[" + std::to_string(each.Value) + "]";
      for (const bool mark : each.Selected) result += mark ? "+" : "-";
    }
    result += met.Text;
    DialogCloseRequested();
  }
  // A folder shows its files, and a file "last" ends the dialog.
  void OpenRow(DialogControl& list, int16& key) {
    if (list.Kind != ControlKind::List || key != keycode::Enter) return;
    const std::string met = list.Items.at(static_cast<std::size_t>(list.ListIndex));
    if (!met.ends_with(" [folder]") && met != "last") return;
    key = 0;
    if (met == "last") {
      result = "last";
      return DialogCloseRequested();
    }
    list.Items = {"plain", "last"};
    list.ListIndex = 0;
  }
  void DialogCloseRequested() override {
    open = false;
    face.Dialogs().CloseDialog();
  }

  QtEventLoop& loop;
  ConsoleFace& face;
  TextModel entry, shown, hidden;
  DialogModel model;
  std::string result;
  std::vector<std::string> rows{"File", "Edit", "Find"};
  int32 row = -1;
  bool open = false;
  int tabs = 0;
};

class ConsoleFaceTest : public testing::Test {
 protected:
  DialogControl& Add(ControlKind kind, const std::string& caption = "") {
    DialogControl& control = model.Controls.emplace_back();
    control.Kind = kind;
    control.Caption = caption;
    if (kind == ControlKind::Button || kind == ControlKind::Label) control.Text = caption;
    return control;
  }
  void AddButtons() {
    Add(ControlKind::Button, "OK").Default = true;
    Add(ControlKind::Button, "Cancel").Cancel = true;
  }
  std::string Run(const std::string& input) {
    Pipes pipes(input);
    pipes.EndInput();
    {
      QtProgram qt;
      const SystemClock clock;
      ConsoleFace face(qt.loop, clock, pipes.In(), pipes.Out());
      EchoProgram program(qt.loop, face, model);
      program.entry.SetLocked(locked);
      face.Start({{}, [&] { qt.loop.End(0); }});
      qt.loop.Run();
      face.Finish();
      result = program.result;
    }
    return pipes.Written();
  }
  DialogModel model;
  std::string result;
  bool locked = false;  // the entry shows a script that cannot be changed at first
};

TEST_F(ConsoleFaceTest, LinesGoInAndWindowTextComesOutPlain) {
  EXPECT_EQ(Run("hello\n"), "=== Corvid\nYou say: hello[31m\n");
}

TEST_F(ConsoleFaceTest, ALineForAScriptThatCannotBeChangedGoesToTheEntryLine) {
  locked = true;
  EXPECT_EQ(Run("caf\xC3\xA9\n"), "=== Corvid\nYou say: caf\xC3\xA9[31m\n");
  EXPECT_EQ(Run("one\ntwo\n"), "=== Corvid\nYou say: one[31m\nYou say: two[31m\n") << "one after the other";
}

TEST_F(ConsoleFaceTest, KeysArePressedByName) {
  EXPECT_EQ(Run("/key Control-F5\n/key Nonsense\n//key F1\n"),
            "=== Corvid\nkey 17/2\nkey 116/2\n\"Nonsense\" is no key name.\nYou say: /key F1[31m\n");
}

TEST_F(ConsoleFaceTest, WhatWasPutIntoTheEntryLineIsShownOnce) {
  const std::string told = "=== Corvid\nIn the entry line: crow\n(What you type comes behind it.)\n";
  EXPECT_EQ(Run("word\n feather\n"), told + "You say: crow feather[31m\n");
  EXPECT_EQ(Run("word\n\nword\n/key F5\n"), told + "You say: crow[31m\n" + told.substr(11) + "key 116/0\n");
}

TEST_F(ConsoleFaceTest, AListMenuIsNumberedAndARowIsNamed) {
  const std::string list =
      "=== Corvid\n--- Main menu ---\n1 File (chosen)\n2 Edit\n3 Find\n"
      "(A number or the beginning of the words chooses. /b goes back, /c closes.)\n";
  EXPECT_EQ(Run("menu\n2\n"), list + "row 1\nkey 13/0\n");
  EXPECT_EQ(Run("menu\nfin\n"), list + "row 2\nkey 13/0\n");
  EXPECT_EQ(Run("menu\n/c\nhello\n"), list + "key 27/0\nYou say: hello[31m\n");
  EXPECT_EQ(Run("menu\n/b\n"), list + "key 37/0\n");
  EXPECT_EQ(Run("menu\n/d 1\nhello\n"), list + "row 0\n2 Edit\nkey 46/0\nYou say: hello[31m\n");
  for (const char* none : {"f", "9", "", "/d 9", "/x", "look"})
    EXPECT_EQ(Run("menu\n" + std::string(none) + "\n"),
              list + "A list is open: type the number of a row, or /c to close the list.\n")
        << none;
  EXPECT_EQ(Run("menu\n/?\n"), list + "--- Main menu ---\n1 File (chosen)\n2 Edit\n3 Find\n");
}

TEST_F(ConsoleFaceTest, DroppingARowIsOfferedWhereARowCanBeDropped) {
  const std::string list = "--- Tab words ---\n1 File (chosen)\n2 Edit\n3 Find\n";
  const std::string drop = "(/d and a number drops the word from the list.)\n";
  EXPECT_EQ(Run("words\n/c\nwords\n"), "=== Corvid\n" + list +
                                           "(A number or the beginning of the words chooses. /b goes back, "
                                           "/c closes.)\n" +
                                           drop + "key 27/0\n" + list)
      << "once";
  const std::string behind = Run("menu\n/c\nwords\n");
  EXPECT_TRUE(behind.ends_with("key 27/0\n" + list + drop)) << behind;
}

TEST_F(ConsoleFaceTest, AnEmptyListSaysSoAndGivesWayToTheNextLine) {
  const std::string empty = "(The list is empty. /c or the next line closes it.)\n";
  const std::string list = "=== Corvid\n--- Tab words ---\n" + empty;
  EXPECT_EQ(Run("empty menu\n"), list);
  EXPECT_EQ(Run("empty menu\nhello\n7\n"), list + "key 27/0\nYou say: hello[31m\nYou say: 7[31m\n");
  EXPECT_EQ(Run("empty menu\n7\n"), list + "key 27/0\nYou say: 7[31m\n");
  EXPECT_EQ(Run("empty menu\n//key F1\n"), list + "key 27/0\nYou say: /key F1[31m\n");
  EXPECT_EQ(Run("empty menu\n/c\nhello\n"), list + "key 27/0\nYou say: hello[31m\n");
  EXPECT_EQ(Run("empty menu\n/?\n"), list + "--- Tab words ---\n" + empty);
  for (const char* command : {"/d 1", "/x"}) EXPECT_EQ(Run("empty menu\n" + std::string(command) + "\n"), list + empty);
  const std::string later = Run("empty menu\nhello\nmenu\n");
  EXPECT_NE(later.find("(A number or the beginning of the words chooses."), std::string::npos) << later;
}

TEST_F(ConsoleFaceTest, AWindowShownAnewTellsWhatWasMissed) {
  EXPECT_EQ(Run("switch\n"), "=== Corvid\nmissed\n");
}

TEST_F(ConsoleFaceTest, AScriptWindowIsWrittenOutWithTheWayBack) {
  const std::string back = "What you type goes into this window. /entry leads back to the entry line.\n";
  EXPECT_EQ(Run("window Error Log\n"), "=== Corvid\nTyping into: Error Log\n\nfirst error\nsecond error\n" + back);
  EXPECT_EQ(Run("window Entry\n"), "=== Corvid\n") << "it is there from the start";
  EXPECT_EQ(Run("/entry\n//entry\n"), "=== Corvid\nTyping into: Entry\nYou say: /entry[31m\n");
  const std::string there = Run("window Error Log\n/entry\nhello\n");
  EXPECT_NE(there.find("\nTyping into: Entry\nYou say: "), std::string::npos) << there;
  EXPECT_EQ(there.find("Typing into: Script"), std::string::npos) << "windows on the way are passed in silence";
  const std::string text = Run("long window\n");
  EXPECT_NE(text.find("...\nline "), std::string::npos) << text;
  EXPECT_NE(text.find("line 399\n" + back), std::string::npos);
  EXPECT_LT(text.size(), 2200U);
}

TEST_F(ConsoleFaceTest, NobodyTypesIntoAScriptUnawares) {
  const std::string shown =
      "=== Corvid\nTyping into: Script a.set\n\nfirst error\nsecond error\n"
      "What you type goes into this window. /entry leads back to the entry line.\n";
  const std::string went = "That line went into Script a.set. /entry leads back to the entry line.\n";
  const std::string typing = "You are typing into Script a.set. /entry leads back to the entry line.\n";
  EXPECT_EQ(Run("window Script a.set\nBob\nAnn\n"),
            shown + "You say: \nfirst error\nsecond errorBob[31m\n" + went + "You say: Ann[31m\n" + went);
  EXPECT_EQ(Replace(Run("window Script a.set\n/key F5\n/key F5\n/entry\n"), "key 17/2\n", ""),
            shown + "key 116/0\n" + typing + "key 116/0\nTyping into: Entry\n")
      << "once for what the game tells";
  EXPECT_EQ(Replace(Run("window Script a.set\n/key F1\n/key F1\n/entry\n"), "key 17/2\n", ""),
            shown + "By what name?\n" + typing + "By what name?\n" + typing + "Typing into: Entry\n")
      << "and behind each prompt";
}

TEST_F(ConsoleFaceTest, TheEndOfAConnectionStandsOnALineOfItsOwn) {
  EXPECT_EQ(Run("close\nswitch\n"),
            "=== Corvid\n50hp>\nConnection to Mud was closed.\nBob waves\n"
            "60hp>\nConnection to Mud was closed.\nAnn waves\nmissed\n");
}

TEST_F(ConsoleFaceTest, OneQuestionIsAnsweredByOneLine) {
  model.Title = "Key";
  Add(ControlKind::Label, "Name?");
  Add(ControlKind::TextBox, "Name?").Text = "old";
  AddButtons();
  EXPECT_EQ(Run("ask\nF5\nnext\n"),
            "=== Corvid\n--- Key ---\n(Enter keeps what is there, /c cancels, /? tells all again and how to answer.)\n"
            "1. Name? (old)\nYou say: next[31m\n");
  EXPECT_EQ(result, "[F5]OK");
  Run("ask\n\n");
  EXPECT_EQ(result, "[old]OK");
  Run("ask\n/c\n");
  EXPECT_EQ(result, "[old]Cancel");
  Run("ask\n//c\n");
  EXPECT_EQ(result, "[/c]OK");
}

TEST_F(ConsoleFaceTest, APasswordThatIsThereStandsAsStars) {
  DialogControl& box = Add(ControlKind::TextBox, "Password");
  box.Text = "caf\xC3\xA9";
  box.Masked = true;
  AddButtons();
  const std::string text = Run("ask\n\n");
  EXPECT_NE(text.find("1. Password? (****)\n"), std::string::npos) << text;
  EXPECT_EQ(result, "[caf\xC3\xA9]OK");
}

TEST_F(ConsoleFaceTest, ARowWithMoreToDoThanToTakeItIsFollowedByTheButtons) {
  Add(ControlKind::List, "Row").Items = {"apple", "banana"};
  AddButtons();
  Add(ControlKind::Button, "Delete");
  const std::string text = Run("ask\n2\nd\n");
  EXPECT_NE(text.find("Row?\n1 OK (Enter), 2 Cancel, 3 Delete?\n"), std::string::npos) << text;
  EXPECT_EQ(result, "[1]Delete");
  Run("ask\n2\n\n");
  EXPECT_EQ(result, "[1]OK");
}

TEST_F(ConsoleFaceTest, KeysArePressedByNameInADialogToo) {
  Add(ControlKind::List, "Row").Items = {"apple", "banana"};
  Add(ControlKind::Box, "Notes");
  AddButtons();
  const std::string text = Run("ask\n/key Down\n/key Tab\nfirst\n/key F5\n.\n\n");
  EXPECT_NE(text.find("2. Notes: "), std::string::npos) << text;
  EXPECT_EQ(result, "[0][first\r\n/key F5]OK") << "among lines of a text it is a line";
  Run("ask\n/key Escape\n");
  EXPECT_EQ(result, "[-1][]Cancel");
}

TEST_F(ConsoleFaceTest, AnswersThatAreTypedAheadMeetOneQuestionAfterTheOther) {
  Add(ControlKind::TextBox, "Name");
  AddButtons();
  const std::string text = Run("ask twice\nAnn\nBob\nlook\n");
  EXPECT_EQ(result, "[Ann]OK[Bob]OK!");
  EXPECT_TRUE(text.ends_with("You say: look[31m\n")) << text;
}

TEST_F(ConsoleFaceTest, AMessageAsksForAButton) {
  model.Title = "Quit";
  Add(ControlKind::Label, "Really?");
  Add(ControlKind::Button, "Yes");
  Add(ControlKind::Button, "No").Default = true;
  Add(ControlKind::Button, "Repeat");
  const std::string text = Run("ask\nr\nx\n1\n");
  EXPECT_NE(text.find("--- Quit ---\nReally?\n"), std::string::npos) << text;
  EXPECT_NE(text.find("1 Yes, 2 No (Enter), 3 Repeat?\n--- Quit ---\nReally?\n1 Yes, 2 No (Enter), 3 Repeat?\n"
                      "Which button?\n"),
            std::string::npos)
      << text;
  EXPECT_EQ(result, "Yes");
  Run("ask\n\n");
  EXPECT_EQ(result, "No");
  Run("ask\n/c\ny\n");
  EXPECT_EQ(result, "Yes");
}

TEST_F(ConsoleFaceTest, EveryKindOfControlCanBeAnswered) {
  model.Title = "All";
  Add(ControlKind::TextBox, "Name");
  Add(ControlKind::List, "Row").Items = {"apple", "banana", "berry"};
  DialogControl& marks = Add(ControlKind::List, "Marks");
  marks.Items = {"a", "b", "c"};
  marks.MultiSelect = true;
  Add(ControlKind::Check, "Echo");
  Add(ControlKind::Option, "One").Value = 1;
  Add(ControlKind::Option, "Two");
  DialogControl& bar = Add(ControlKind::Scroll, "Rate");
  bar.Min = -10;
  bar.Max = 21;
  Add(ControlKind::Box, "Notes");
  AddButtons();
  const std::string text = Run("ask\nBob\nb\nban\n1 3\ny\n2\n22\n21\nfirst\nsecond\n.\n\n");
  EXPECT_EQ(result, "[Bob][1][2]+-+[1][0][1][21][first\r\nsecond]OK") << text;
  EXPECT_NE(text.find("\"b\" is no answer here."), std::string::npos) << text;
  EXPECT_NE(text.find("\"22\" is no answer here."), std::string::npos) << text;
  Run("ask\n/4\nyes\n/b\ncancel\n");
  EXPECT_EQ(result, "[][-1][-1][1][1][0][0][]Cancel");
}

TEST_F(ConsoleFaceTest, RowsThatAreMarkedAreToldBeforeTheyAreTaken) {
  DialogControl& marks = Add(ControlKind::List, "Marks");
  marks.Items = {"a", "b", "c"};
  marks.MultiSelect = true;
  AddButtons();
  std::string text = Run("ask\n3 1\n");
  EXPECT_TRUE(text.ends_with("Rows to mark or unmark?\nMarked: 1, 3\n1 OK (Enter), 2 Cancel?\n")) << text;
  text = Run("ask\n2\n/1\n2\n\n");
  EXPECT_NE(text.find("No row is marked.\n"), std::string::npos) << text;
}

TEST_F(ConsoleFaceTest, LongListsComeInPieces) {
  model.Title = "Pick";
  DialogControl& list = Add(ControlKind::List, "Row");
  for (int i = 1; i <= 45; ++i) list.Items.push_back("item " + std::to_string(i));
  AddButtons();
  const std::string text = Run("ask\n/m\n33\n");
  EXPECT_EQ(result, "[32]OK");
  EXPECT_NE(text.find("20 item 20\n/m shows more.\nRow?\n21 item 21\n"), std::string::npos) << text;
  EXPECT_EQ(text.find("item 41"), std::string::npos);
}

TEST_F(ConsoleFaceTest, ARowThatTheDialogOpensShowsWhatIsInIt) {
  model.Title = "File";
  Add(ControlKind::List, "Row").Items = {"scripts [folder]"};
  Add(ControlKind::TextBox, "Name");
  AddButtons();
  const std::string text = Run("ask\n1\nlast\nnext\n");
  EXPECT_EQ(result, "last");
  EXPECT_NE(text.find("1 plain (chosen)\n2 last\nRow?\nYou say: next"), std::string::npos) << text;
  Run("ask\n1\n1\nBob\n\n");
  EXPECT_EQ(result, "[0][Bob]OK") << "a row that is not opened is chosen";
}

TEST_F(ConsoleFaceTest, AWrongAnswerToALongListLeavesTheRowsToBeAskedFor) {
  DialogControl& list = Add(ControlKind::List, "Row");
  for (int i = 1; i <= 5; ++i) list.Items.push_back("item " + std::to_string(i));
  AddButtons();
  std::string text = Run("ask\nx\n");
  EXPECT_TRUE(
      text.ends_with("\"x\" is no answer here.\n1. Row (5 rows)\n1 item 1\n2 item 2\n3 item 3\n4 item 4\n"
                     "5 item 5\nRow?\n"))
      << text;
  for (int i = 6; i <= 45; ++i) model.Controls.front().Items.push_back("item " + std::to_string(i));
  const std::string wrong = "\"x\" is no answer here.\n1. Row (45 rows, /? shows them)\nRow?\n";
  text = Run("ask\nx\n");
  EXPECT_TRUE(text.ends_with("20 item 20\n/m shows more.\nRow?\n" + wrong)) << text;
  text = Run("ask\n/m\nx\n/m\n41\n");
  EXPECT_NE(text.find(wrong + "41 item 41\n"), std::string::npos) << text << "it goes on where it was";
  EXPECT_EQ(result, "[40]OK");
  model.Controls.front().MultiSelect = true;
  text = Run("ask\nx\n");
  EXPECT_TRUE(text.ends_with("1. Row (45 rows, /? shows them)\nRows to mark or unmark?\n")) << text;
}

TEST_F(ConsoleFaceTest, AListOfOneRowSaysSo) {
  Add(ControlKind::List, "Row").Items = {"apple"};
  AddButtons();
  const std::string text = Run("ask\n");
  EXPECT_NE(text.find("1. Row (1 row)\n1 apple\nRow?\n"), std::string::npos) << text;
}

TEST_F(ConsoleFaceTest, AListWithoutRowsIsPassedOver) {
  Add(ControlKind::List, "Row");
  AddButtons();
  std::string text = Run("ask\n");
  EXPECT_TRUE(text.ends_with("how to answer.)\nRow: no rows.\n1 OK (Enter), 2 Cancel?\n")) << text;
  text = Run("ask\n/1\n");
  EXPECT_TRUE(text.ends_with("Cancel?\nRow: no rows.\n1 OK (Enter), 2 Cancel?\n")) << text;
  Run("ask\n\n");
  EXPECT_EQ(result, "[-1]OK");
  DialogControl name;
  name.Caption = "Name";
  name.Kind = ControlKind::TextBox;
  model.Controls.insert(model.Controls.begin(), name);
  text = Run("ask\nBob\n\n");
  EXPECT_NE(text.find("1. Name?\nRow: no rows.\n1 OK (Enter), 2 Cancel?\n"), std::string::npos) << text;
  EXPECT_EQ(result, "[Bob][-1]OK");
  model.Controls.resize(2);
  model.Controls.erase(model.Controls.begin());
  text = Run("ask\n\nnext\n");
  EXPECT_NE(text.find("Row: no rows.\nYou say: next"), std::string::npos) << text << "any line closes it";
}

TEST_F(ConsoleFaceTest, ADialogBeginsAtTheQuestionThatHasTheFocus) {
  model.Title = "Debugger";
  Add(ControlKind::Check, "Debug Mode");
  Add(ControlKind::List, "History").Items = {"one", "two"};
  Add(ControlKind::TextBox, "Line").Text = "look";
  AddButtons();
  Add(ControlKind::Button, "Step");
  model.FirstFocus = 2;
  std::string text = Run("ask\n\n/1\ny\n2\nkill\nstep\n");
  EXPECT_NE(text.find("how to answer.)\n3. Line? (look)\n1 OK (Enter), 2 Cancel, 3 Step?\n"
                      "1. Debug Mode: yes or no? (no)\n2. History (2 rows)\n"),
            std::string::npos)
      << text;
  EXPECT_EQ(result, "[1][1][kill]Step");
  model.FirstFocus = 5;
  text = Run("ask\n");
  EXPECT_TRUE(text.ends_with("how to answer.)\n1 OK (Enter), 2 Cancel, 3 Step?\n")) << text << "a button, too";
}

TEST_F(ConsoleFaceTest, EverythingIsToldOnceAgainWithTheOpenQuestionLast) {
  model.Title = "All";
  Add(ControlKind::TextBox, "Name").Text = "Bob";
  Add(ControlKind::List, "Row").Items = {"apple", "banana"};
  Add(ControlKind::List, "None");
  AddButtons();
  const std::string help =
      "Type the answer and Enter. Enter alone keeps what is there.\n"
      "/c cancels, /b goes to the buttons, /1 goes to question 1, /e empties a text, /m shows more rows,\n"
      "// at the start of a text is a / of the text.\n--- All ---\n";
  const std::string name = "1. Name? (Bob)\n", row = "2. Row (2 rows)\n1 apple\n2 banana\nRow?\n";
  const std::string none = "None: no rows.\n", buttons = "1 OK (Enter), 2 Cancel?\n";
  std::string text = Run("ask\n/?\n");
  EXPECT_TRUE(text.ends_with(help + row + none + buttons + name)) << text;
  text = Run("ask\n\n/?\n2\n\n");
  EXPECT_NE(text.find(help + name + none + buttons + row), std::string::npos) << text;
  EXPECT_EQ(result, "[Bob][1][-1]OK") << "it stays where it was";
  model.Controls.erase(model.Controls.begin(), model.Controls.begin() + 3);
  text = Run("ask\n/?\n");
  EXPECT_TRUE(text.ends_with(help + buttons)) << text;
}

TEST_F(ConsoleFaceTest, ANoticeThatABoxHasJustToldIsNotToldAgain) {
  Add(ControlKind::Label, "Really?");
  Add(ControlKind::Button, "OK").Default = true;
  const std::string text = Run("ask and tell\n\n");
  EXPECT_TRUE(text.ends_with(
      "---  ---\nReally?\n(Enter keeps what is there, /c cancels, /? tells all again and how to answer.)\n"
      "1 OK (Enter)?\nBob waves\nReally?\n"))
      << text;
}

TEST_F(ConsoleFaceTest, AShortAnswerHasALineOfItsOwn) {
  EXPECT_EQ(Run("answer\n"), "=== Corvid\nA crow caws.\nRecording\n");
}

TEST_F(ConsoleFaceTest, ADialogWithNothingToAnswerIsClosedByAnyLine) {
  Add(ControlKind::Label, "Words");
  EXPECT_NE(Run("ask\n\nnext\n").find("You say: next"), std::string::npos);
}

TEST_F(ConsoleFaceTest, TheInputMayEndInADialog) {
  Add(ControlKind::TextBox, "Name");
  AddButtons();
  Run("ask\n/?\n");
  EXPECT_EQ(result, "");
}

}  // namespace
}  // namespace corvid
