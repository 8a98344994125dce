// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/buffers.h"

#include <gtest/gtest.h>

#include "files_house.h"

namespace corvid {
namespace {

using testing_files::FilesHouse;
using testing_files::Question;
using testing_files::Texts;

// --- the error log ---

TEST(ErrorLog, GrowsWithTheCaretAtTheNewTextAndIsMarked) {
  BufferState buffers;
  AppendErrorLog(buffers, "\r\nfirst");
  AppendErrorLog(buffers, "\r\nsecond");
  EXPECT_EQ(buffers.BufferText[buffer::ErrorLog], "\r\nfirst\r\nsecond");
  EXPECT_EQ(buffers.BufferCaret[buffer::ErrorLog], 7);
  EXPECT_EQ(buffers.BufferFlags[buffer::ErrorLog], buffer::ErrorLogType | buffer::News);
}

TEST(ErrorLog, KeepsItsLastTwentyThousandWhenOverThirty) {
  BufferState buffers;
  AppendErrorLog(buffers, std::string(10000, 'a') + std::string(20000, 'b'));
  AppendErrorLog(buffers, "c");  // 30,000 are not over
  EXPECT_EQ(buffers.BufferText[buffer::ErrorLog].size(), 30001u);
  AppendErrorLog(buffers, "d");
  EXPECT_EQ(buffers.BufferText[buffer::ErrorLog], std::string(19999, 'b') + "cd");
  EXPECT_EQ(buffers.BufferCaret[buffer::ErrorLog], 20000);
}

TEST(ErrorLog, GrowsInTheEntryBoxWhileItIsShown) {
  FilesHouse house;
  AppendErrorLog(house.state, "old");
  house.buffers.MoveBuffers(buffer::ErrorLog);
  AppendErrorLog(house.state, " new");
  EXPECT_EQ(house.state.EntryBox.Text(), "old new");
  house.buffers.MoveBuffers(buffer::EntryLine);
  EXPECT_EQ(house.state.BufferText[buffer::ErrorLog], "old new");
}

// --- paging ---

TEST(Buffers, HaveTheirNames) {
  FilesHouse house;
  const Texts names = {"Entry", "Keys", "Aliases", "Triggers", "Dictionary", "Script ", "Error Log", "New Lines"};
  for (std::size_t i = 0; i < names.size(); ++i) {
    house.state.BufferFlags[3] = static_cast<int16>((1 << i) | buffer::News);
    EXPECT_EQ(house.buffers.GetBufferName(3), names[i]);
  }
  house.state.BufferFlags[3] = 0;
  EXPECT_EQ(house.buffers.GetBufferName(3), "");
  EXPECT_EQ(Buffers::ShortName("/a/b.set"), "b.set");
  EXPECT_EQ(Buffers::ShortName("c:\\x\\b.set"), "b.set");
  EXPECT_EQ(Buffers::ShortName("b.set"), "b.set");
  EXPECT_EQ(Buffers::ShortName(""), "");
}

TEST(Buffers, TheFirstThreeExistFromTheStart) {
  FilesHouse house;
  EXPECT_EQ(house.state.BufferCount, 3);
  EXPECT_EQ(house.buffers.GetBufferName(1), "Entry");
  EXPECT_EQ(house.buffers.GetBufferName(2), "Error Log");
  EXPECT_EQ(house.buffers.GetBufferName(3), "New Lines");
  EXPECT_EQ(house.buffers.GetBufferNumber(""), 0);
}

TEST(Buffers, PageRoundWithTextAndCaret) {
  FilesHouse house;
  house.Put("#alias {a} {b}\r\n");
  house.Load("/data/a.set");
  house.state.EntryBox.SetText("typed");
  house.state.EntryBox.SetSelStart(3);
  for (const int expected : {2, 3, 4, 1}) {
    EXPECT_TRUE(house.buffers.FindNextBuffer());
    EXPECT_EQ(house.state.CurrentBuffer, expected);
  }
  EXPECT_EQ(house.Told("spoken"), Texts({"5 Error Log ", "5 New Lines ", "5 Script  a.set", "5 Entry "}));
  EXPECT_EQ(house.state.EntryBox.Text(), "typed");
  EXPECT_EQ(house.state.EntryBox.SelStart(), 3);
  EXPECT_EQ(house.mem.face.EntryLabel, "Entry");
  house.buffers.MoveBuffers(4);
  EXPECT_EQ(house.mem.face.EntryLabel, "Script a.set");
}

TEST(Buffers, WhatTheEntryBoxHoldsBecomesAChange) {
  FilesHouse house;
  house.Put("#alias {a} {b}\r\n");
  house.Load("/data/a.set");
  house.buffers.MoveBuffers(4);
  house.state.EntryBox.SetText("#alias {a} {c}\r\n");
  house.buffers.SaveCurrentBuffer();
  EXPECT_EQ(house.state.BufferFlags[4], buffer::Script | buffer::Modified);
  house.state.EntryBox.SetText("#alias {a} {b}\r\n");
  house.buffers.SaveCurrentBuffer();
  EXPECT_EQ(house.state.BufferFlags[4], buffer::Script);
}

TEST(Buffers, AReadOnlyScriptTakesNothingFromTheEntryBox) {
  FilesHouse house;
  house.options.ScriptReadOnly = true;
  house.Put("#alias {a} {b}\r\n");
  house.Load("/data/a.set");
  house.buffers.MoveBuffers(4);
  house.state.EntryBox.SetText("changed all the same");
  house.buffers.SaveCurrentBuffer();
  EXPECT_TRUE(house.buffers.SaveBuffer(4));
  EXPECT_EQ(house.File("/data/a.set"), "#alias {a} {b}\r\n");
}

TEST(Buffers, MoveToANumberThatIsNotThereIsAFaultAndChangesNothing) {
  FilesHouse house;
  house.state.EntryBox.SetText("typed");
  EXPECT_THROW(house.buffers.MoveBuffers(9), Fault);
  EXPECT_EQ(house.state.CurrentBuffer, 1);
  EXPECT_EQ(house.state.EntryBox.Text(), "typed");
}

// --- saving and closing ---

TEST(SaveIfBufModified, KnowsWhatIsTypedInTheEntryBox) {
  FilesHouse house;
  house.Put("#alias {a} {b}\r\n");
  house.Load("/data/a.set");
  house.buffers.MoveBuffers(4);
  house.state.EntryBox.SetText("#alias {a} {typed}\r\n");
  house.prompter.Will(box::ResultYes);
  EXPECT_TRUE(house.buffers.SaveIfBufModified(4));
  EXPECT_EQ(house.Told("box"), Texts({Question}));
  EXPECT_EQ(house.File("/data/a.set"), "#alias {a} {typed}\r\n");
}

TEST(SaveBuffer, WritesTheTextAsItIs) {
  FilesHouse house;
  house.Put("#alias {a} {b}\n");
  house.Load("/data/a.set");
  house.buffers.SetBufferText(4, "no line end");
  EXPECT_TRUE(house.buffers.SaveBuffer(4));
  EXPECT_EQ(house.File("/data/a.set"), "no line end");
  EXPECT_EQ(house.state.BufferFlags[4], buffer::Script);
  EXPECT_TRUE(house.buffers.SaveBuffer(1));  // nothing to save
}

TEST(SaveBuffer, ARefusalIsToldAndTheTextStaysModified) {
  FilesHouse house;
  house.Put("#alias {a} {b}\r\n");
  house.Load("/data/a.set");
  house.buffers.SetBufferText(4, "changed");
  house.mem.files.Fail = [](const std::string& operation, const std::string&) {
    return operation == "write" ? "read-only" : "";
  };
  EXPECT_FALSE(house.buffers.SaveBuffer(4));
  EXPECT_EQ(house.Told("unknownerror"), Texts({"SaveBuffer: /data/a.set: read-only"}));
  EXPECT_EQ(house.Told("box"), Texts({"Error|Error creating file /data/a.set"}));
  EXPECT_EQ(house.File("/data/a.set"), "#alias {a} {b}\r\n");
  EXPECT_EQ(house.state.BufferText[4], "changed");
  EXPECT_EQ(house.state.BufferFlags[4], buffer::Script | buffer::Modified);
  // A close that would lose the text is refused too.
  house.prompter.Will(box::ResultYes);
  EXPECT_FALSE(house.buffers.CloseBuffer(4));
  EXPECT_EQ(house.state.BufferText[4], "changed");
}

TEST(CloseBuffer, TakesTheDefinitionsAwayAndFreesTheSlot) {
  FilesHouse house;
  house.Put("#alias {a} {b}\r\n");
  house.Put("#alias {c} {d}\r\n", "/data/b.set");
  house.Load("/data/a.set");
  house.Load("/data/b.set");
  house.buffers.MoveBuffers(4);
  EXPECT_TRUE(house.buffers.CloseBuffer(4));
  EXPECT_EQ(house.script.AliasCount, 1);
  EXPECT_EQ(house.state.CurrentBuffer, 5);
  EXPECT_EQ(house.state.BufferFlags[4], 0);
  EXPECT_EQ(house.state.BufferFile[4], "");
  EXPECT_EQ(house.script.DefiningBuffer, 5);
  house.Put("", "/data/c.set");
  house.Load("/data/c.set");
  EXPECT_EQ(house.state.BufferFile[4], "/data/c.set");  // the free slot is used again
}

TEST(CloseBuffer, NothingIsDefinedForAFileThatIsGone) {
  FilesHouse house;
  house.Put("#alias {a} {b}\r\n");
  house.Load("/data/a.set");
  house.script.DefiningBuffer = 4;
  EXPECT_TRUE(house.buffers.CloseBuffer(4));
  EXPECT_EQ(house.script.DefiningBuffer, 0);
}

TEST(CloseBuffer, BeepsWhenNoOtherWindowCanBeShown) {
  FilesHouse house;
  house.Put("#alias {a} {b}\r\n");
  house.Load("/data/a.set");
  house.buffers.MoveBuffers(4);
  for (int16 n = 1; n < 4; ++n) house.state.BufferFlags[n] = 0;
  EXPECT_TRUE(house.buffers.CloseBuffer(4));
  EXPECT_EQ(house.Told("beep").size(), 1u);
  house.Load("/data/a.set");
  house.state.BufferFlags[1] = buffer::EntryType;
  house.buffers.MoveBuffers(4);
  EXPECT_TRUE(house.buffers.CloseBuffer(4));
  EXPECT_EQ(house.Told("beep").size(), 1u);
}

TEST(CloseBuffer, RefusesTheFirstThreeAndWhatIsNotOpen) {
  FilesHouse house;
  for (const int number : {-1, 0, 1, 2, 3, 4, 99}) EXPECT_FALSE(house.buffers.CloseBuffer(static_cast<int16>(number)));
  EXPECT_EQ(house.state.BufferCount, 3);
}

TEST(CloseBuffer, StaysOnCancelAndForgetsOnNo) {
  FilesHouse house;
  house.Put("#alias {a} {b}\r\n");
  house.Load("/data/a.set");
  house.buffers.SetBufferText(4, "changed");
  house.prompter.Will(box::ResultCancel);
  EXPECT_FALSE(house.buffers.CloseBuffer(4));
  EXPECT_EQ(house.state.BufferText[4], "changed");
  EXPECT_EQ(house.script.AliasCount, 1);
  house.prompter.Will(box::ResultNo);
  EXPECT_TRUE(house.buffers.CloseBuffer(4));
  EXPECT_EQ(house.File("/data/a.set"), "#alias {a} {b}\r\n");
  EXPECT_EQ(house.Told("box"), Texts({Question, Question}));
}

TEST(CloseBuffer, SurvivesAnotherCloseWhileItAsks) {
  FilesHouse house;
  house.Put("#alias {a} {b}\r\n");
  house.Load("/data/a.set");
  house.buffers.SetBufferText(4, "changed");
  house.prompter.OnBox = [&](const std::string&) {
    house.prompter.OnBox = nullptr;
    house.prompter.Will(box::ResultNo);
    EXPECT_TRUE(house.buffers.CloseBuffer(4));
    house.prompter.Will(box::ResultYes);
  };
  EXPECT_TRUE(house.buffers.CloseBuffer(4));
  EXPECT_EQ(house.File("/data/a.set"), "#alias {a} {b}\r\n");
}

TEST(OpenBuffers, MakesAnEmptyBufferForANewName) {
  FilesHouse house;
  EXPECT_EQ(house.buffers.OpenBuffers("/data/new.set", buffer::Script), 4);
  EXPECT_EQ(house.buffers.OpenBuffers("/data/new.set", buffer::Script), 4);
  EXPECT_EQ(house.buffers.OpenBuffers("/data/other.set", buffer::Script), 5);
  EXPECT_EQ(house.state.BufferText[4], "");
  EXPECT_FALSE(house.mem.files.FileExists("/data/new.set"));
}

}  // namespace
}  // namespace corvid
