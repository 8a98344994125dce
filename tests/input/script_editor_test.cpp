// SPDX-License-Identifier: GPL-3.0-or-later
#include "script/script_editor.h"

#include "sessions/fixture.h"

namespace corvid {
namespace {

class ScriptEditorTest : public SessionTest {
 protected:
  void Show(const std::string& text, int32 caret) {
    buffers.EntryBox.SetText(text);
    buffers.EntryBox.SetSelStart(caret);
    memory.effects.Clear();
  }
  std::string CommandAt(int32 caret) {
    buffers.EntryBox.SetSelStart(caret);
    return editor.GetCommand();
  }
  ScriptEditor editor{script, options, buffers, scanner, memory.face, upcalls};
};

const std::string Block =
    "#var x 1\r\n#alias fight {\r\n\tkill rat // the usual\r\n; a note }\r\n  smile ~}\r\n}\r\n#bell";

TEST_F(ScriptEditorTest, ALineWithoutBracesIsTheCommand) {
  Show(Block, 0);
  EXPECT_EQ(CommandAt(4), "#var x 1");
  EXPECT_EQ(CommandAt(static_cast<int32>(Block.size())), "#bell");
}

TEST_F(ScriptEditorTest, ABlockIsTakenFromItsFirstOrItsLastLine) {
  Show(Block, 0);
  const std::string whole = "#alias fight {\r\n kill rat \r\n\r\n  smile ~}\r\n}";
  EXPECT_EQ(CommandAt(static_cast<int32>(Block.find("#alias"))), whole);
  EXPECT_EQ(CommandAt(static_cast<int32>(Block.find("}\r\n#bell"))), whole);
  EXPECT_EQ(Of("showerror"), Texts{});
}

TEST_F(ScriptEditorTest, WhatDoesNotBalanceIsToldAndNotRun) {
  const std::string told =
      "Unbalanced braces in command, or you did not execute the command from the first or last line.";
  Show("#alias x {\r\n#bell", 0);
  EXPECT_EQ(editor.GetCommand(), "");
  EXPECT_EQ(Of("showerror"), Texts{told});
  Show("#bell\r\n}", 8);
  EXPECT_EQ(editor.GetCommand(), "");
  Show("#alias x {\r\n}}\r\n#bell", 0);  // the count changes its sign
  editor.ExecuteLine();
  EXPECT_EQ(Of("showerror"), Texts{told});
  EXPECT_EQ(Of("command"), Texts{});
  EXPECT_EQ(Spoken(), Texts{});
}

TEST_F(ScriptEditorTest, ABraceInTheFirstColumnCountsAndAnEscapedOneDoesNot) {
  Show("{say ~{\r\n}", 0);
  EXPECT_EQ(editor.GetCommand(), "{say ~{\r\n}");
}

TEST_F(ScriptEditorTest, ASelectionIsTheCommandAsItStands) {
  Show(Block, 0);
  buffers.EntryBox.Select(10, 24);
  EXPECT_EQ(editor.GetCommand(), "#alias fight {");
}

TEST_F(ScriptEditorTest, TheCommandRunsForTheBufferThatIsShown) {
  Show(Block, 0);
  buffers.CurrentBuffer = 3;
  script.CommandDepth = 9;
  int16 bits = 0;
  runner.OnCommand = [&](const std::string&, int16& flags, std::string&, Parameters&, int16&) {
    bits = flags;
    EXPECT_EQ(script.DefiningBuffer, 3);
    EXPECT_EQ(script.CommandDepth, 0);
  };
  editor.ExecuteLine();
  EXPECT_EQ(Of("command"), Texts{"-2 #var x 1"});
  EXPECT_EQ(bits, option::Interactive);
  EXPECT_EQ(Spoken(), Texts{"1 OK"});
}

TEST_F(ScriptEditorTest, ACommandThatFailsIsNotOk) {
  Show("#nonsense", 0);
  runner.OnCommand = [](const std::string&, int16&, std::string& error, Parameters&, int16&) { error = "Bad"; };
  editor.ExecuteLine();
  EXPECT_EQ(Spoken(), Texts{});
}

TEST_F(ScriptEditorTest, NothingRunsFromAnEmptyLineOrAComment) {
  Show("; say {\r\n\r\n#bell", 0);
  editor.ExecuteLine();
  buffers.EntryBox.SetSelStart(9);
  editor.ExecuteLine();
  EXPECT_EQ(Of("command"), Texts{});
  EXPECT_EQ(Spoken(), Texts{});
}

TEST_F(ScriptEditorTest, BracesFindTheirPartners) {
  Show("#if {a} {b ~} {c}\r\n}", 0);
  struct Row {
    int32 from, to;
  };
  for (const Row& row : {Row{4, 6}, Row{6, 4}, Row{8, 19}, Row{19, 8}, Row{14, 16}}) {
    buffers.EntryBox.SetSelStart(row.from);
    editor.FindOpposingBrace(buffers.EntryBox);
    EXPECT_EQ(buffers.EntryBox.SelStart(), row.to) << row.from;
  }
  EXPECT_EQ(Of("beep").size(), 0u);
}

TEST_F(ScriptEditorTest, ABraceAloneOrNoBraceBeeps) {
  Show("a}b{", 0);
  for (const int32 place : {0, 1, 2, 3, 4}) {
    buffers.EntryBox.SetSelStart(place);
    editor.FindOpposingBrace(buffers.EntryBox);
    EXPECT_EQ(buffers.EntryBox.SelStart(), place);
  }
  EXPECT_EQ(Of("beep").size(), 5u);
}

}  // namespace
}  // namespace corvid
