// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/buffers.h"

#include <gtest/gtest.h>

#include "files_house.h"

namespace corvid {
namespace {

using testing_files::FilesHouse;
using testing_files::Texts;

constexpr const char* Question =
    "Modified Buffer|The Script  belonging to file a.set has been modified. Would you like to save this file?";

void Put(FilesHouse& house, const std::string& text, const std::string& name = "/data/a.set") {
  house.mem.files.Put(name, text);
}

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

// --- loading ---

TEST(LoadSet, RunsEachStatementAndKeepsTheText) {
  FilesHouse house;
  Put(house, "#alias {a} {\n  look\n}\n; a comment\n\n#alias {b} {c} // why");
  house.Load("/data/a.set");
  EXPECT_EQ(house.runner.Lines, Texts({"#alias {a} {\r\n  look\r\n}", "#alias {b} {c}"}));
  EXPECT_EQ(house.state.BufferText[4], "#alias {a} {\r\n  look\r\n}\r\n; a comment\r\n\r\n#alias {b} {c} // why\r\n");
  EXPECT_EQ(house.state.BufferFile[4], "/data/a.set");
  EXPECT_EQ(house.state.BufferFlags[4], buffer::Script);
  EXPECT_EQ(house.script.DefiningBuffer, 4);
  EXPECT_EQ(house.script.AliasBuffers[1], 4);
  EXPECT_FALSE(house.buffers.IsModified(4));
  EXPECT_EQ(house.state.CurrentBuffer, 1);
}

TEST(LoadSet, ReadsEveryKindOfLineEnd) {
  FilesHouse house;
  Put(house, "#alias {a} {1}\r\n#alias {b} {2}\r#alias {c} {3}\n");
  house.Load("/data/a.set");
  EXPECT_EQ(house.state.BufferText[4], "#alias {a} {1}\r\n#alias {b} {2}\r\n#alias {c} {3}\r\n");
  EXPECT_EQ(house.script.AliasCount, 3);
}

TEST(LoadSet, TakesARelativeNameFromTheUserDataFolderInAnyCase) {
  FilesHouse house;
  Put(house, "#alias {a} {b}\n", "/data/sub/Start.SET");
  house.Load("sub\\start.set");
  EXPECT_EQ(house.state.BufferFile[4], "/data/sub/Start.SET");
  house.Load("");
  EXPECT_EQ(house.state.BufferCount, 4);
}

TEST(LoadSet, OnlyChecksWithNoExecution) {
  FilesHouse house;
  Put(house, "#alias {a} {b}\n#VAR x 1\n");
  house.Load("/data/a.set", load::NoExecution);
  EXPECT_EQ(house.runner.Lines, Texts({"#alias {a} {b}"}));
  EXPECT_EQ(house.script.AliasCount, 0);
}

TEST(LoadSet, RunsForTheForegroundSessionAndRemembersItsOwner) {
  FilesHouse house;
  house.script.CurrentSocket = 2;
  house.script.SocketOwner[2] = 7;
  int16 seen = -5;
  house.runner.OnLine = [&](const std::string&, int16& channel) {
    seen = channel;
    return true;
  };
  Put(house, "#x\n");
  house.Load("/data/a.set");
  EXPECT_EQ(seen, 2);
  EXPECT_EQ(house.state.BufferOwners[4], 7);
}

TEST(LoadSet, AFailureShowsTheFileAtThePlaceAndSaysItsName) {
  FilesHouse house;
  Put(house, "#alias {a} {b}\r\n#FAIL\r\n#alias {c} {d}\r\n");
  house.state.EntryBox.SetText("half typed");
  house.Load("/data/a.set");
  EXPECT_EQ(house.script.AliasCount, 1);  // what worked stays
  EXPECT_EQ(house.state.BufferText[2], "\r\n-- Error found in file /data/a.set\r\n===============\r\n");
  EXPECT_EQ(house.state.BufferFlags[4], buffer::Script | buffer::News);
  EXPECT_EQ(house.state.CurrentBuffer, 4);
  EXPECT_EQ(house.state.BufferText[1], "half typed");
  EXPECT_EQ(house.Told("spoken"), Texts({"5 Script  a.set"}));
  const std::string& text = house.state.EntryBox.Text();
  EXPECT_EQ(text.substr(static_cast<std::size_t>(house.state.EntryBox.SelStart()), 5), "#FAIL");
  // Mended and loaded again, the mark goes.
  Put(house, "#alias {a} {b}\r\n");
  house.Load("/data/a.set");
  EXPECT_EQ(house.state.BufferFlags[4], buffer::Script);
  EXPECT_EQ(house.state.EntryBox.Text(), "#alias {a} {b}\r\n");
}

TEST(LoadSet, ReportsUnbalancedBracesAndForeignText) {
  FilesHouse house;
  Put(house, "#alias {a} {b\r\n");
  Put(house, "kill the dragon\r\n", "/data/b.set");
  house.Load("/data/a.set");
  house.Load("/data/b.set");
  EXPECT_EQ(house.Told("error"), Texts({"Unbalanced braces. in command: #alias {a} {b",
                                        "Invalid text found on line. in command: kill the dragon"}));
  EXPECT_EQ(house.state.CurrentBuffer, 5);
}

TEST(LoadSet, AFailedOptionsFileStaysInactiveAndReadOnly) {
  FilesHouse house;
  house.options.ScriptReadOnly = true;
  Put(house, "#FAIL\r\n");
  house.Load("/data/a.set", load::OptionsOnly);
  EXPECT_EQ(house.state.BufferFlags[4], buffer::Script | buffer::News | buffer::Inactive | buffer::ReadOnly);
  EXPECT_TRUE(house.state.EntryBox.Locked());
  EXPECT_EQ(house.script.DefiningBuffer, 0);
}

TEST(LoadSet, AFileThatCannotBeReadDoesNotStopTheNextOne) {
  FilesHouse house;
  Put(house, "#alias {b} {c}\n", "/data/b.set");
  house.Load("/data/a.set");
  house.Load("/data/b.set");
  EXPECT_EQ(house.Told("unknownerror"), Texts({"Loadset: /data/a.set: no such file"}));
  EXPECT_EQ(house.state.BufferFile[4], "/data/b.set");
  EXPECT_EQ(house.script.AliasCount, 1);
}

TEST(LoadSet, AReloadThatCannotBeReadKeepsTheText) {
  FilesHouse house;
  Put(house, "#alias {a} {b}\r\n");
  house.Load("/data/a.set");
  house.mem.files.Fail = [](const std::string& operation, const std::string&) {
    return operation == "read" ? "bad sector" : "";
  };
  house.Load("/data/a.set");
  EXPECT_EQ(house.state.BufferText[4], "#alias {a} {b}\r\n");
  EXPECT_EQ(house.state.BufferFile[4], "/data/a.set");
}

TEST(LoadSet, AReloadUsesTheSameBufferAndAsksFirst) {
  FilesHouse house;
  Put(house, "#alias {a} {b}\r\n");
  house.Load("/data/a.set");
  house.buffers.SetBufferText(4, "#alias {a} {mine}\r\n");
  house.prompter.Will(box::ResultCancel);
  house.Load("/DATA/A.set");
  EXPECT_EQ(house.Told("box"), Texts({Question}));
  EXPECT_EQ(house.state.BufferText[4], "#alias {a} {mine}\r\n");
  house.prompter.Will(box::ResultNo);
  house.Load("/data/a.set");
  EXPECT_EQ(house.state.BufferText[4], "#alias {a} {b}\r\n");
  EXPECT_EQ(house.state.BufferCount, 4);
  house.buffers.SetBufferText(4, "#alias {a} {mine}\r\n");
  house.prompter.Will(box::ResultYes);
  house.Load("/data/a.set");
  EXPECT_EQ(house.File("/data/a.set"), "#alias {a} {mine}\r\n");
  EXPECT_EQ(house.state.BufferText[4], "#alias {a} {mine}\r\n");
}

TEST(LoadSet, SetsReadOnlyByTheOption) {
  FilesHouse house;
  Put(house, "#alias {a} {b}\r\n");
  house.options.ScriptReadOnly = true;
  house.Load("/data/a.set");
  EXPECT_EQ(house.state.BufferFlags[4], buffer::Script | buffer::ReadOnly);
  house.buffers.MoveBuffers(4);
  EXPECT_TRUE(house.state.EntryBox.Locked());
  house.options.ScriptReadOnly = false;
  house.Load("/data/a.set");
  EXPECT_EQ(house.state.BufferFlags[4], buffer::Script);
  EXPECT_FALSE(house.state.EntryBox.Locked());
}

TEST(LoadSet, StopsFilesThatLoadEachOtherWithoutEnd) {
  FilesHouse house;
  Put(house, "#again\r\n#again\r\n");
  house.runner.OnLine = [&](const std::string&, int16& channel) {
    house.buffers.LoadSet("/data/a.set", 0, channel);
    return true;
  };
  house.Load("/data/a.set");
  EXPECT_EQ(house.Told("error"), Texts({"recursive check - probable infinite loop detected in command: /data/a.set"}));
  house.runner.OnLine = nullptr;
  Put(house, "#alias {a} {b}\r\n");
  house.Load("/data/a.set");
  EXPECT_EQ(house.script.AliasCount, 1);
}

TEST(LoadSet, AScriptMayUnloadItself) {
  FilesHouse house;
  Put(house, "#unload\r\n#FAIL\r\n");
  house.runner.OnLine = [&](const std::string& line, int16&) {
    if (line == "#unload") house.buffers.CloseBuffer(4);
    return line == "#unload";
  };
  house.Load("/data/a.set");
  EXPECT_EQ(house.state.BufferFlags[4], 0);
  EXPECT_EQ(house.state.BufferText[2], "\r\n-- Error found in file /data/a.set\r\n===============\r\n");
  EXPECT_EQ(house.state.CurrentBuffer, 1);
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
  Put(house, "#alias {a} {b}\r\n");
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
  Put(house, "#alias {a} {b}\r\n");
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
  Put(house, "#alias {a} {b}\r\n");
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

TEST(SaveBuffer, WritesTheTextAsItIs) {
  FilesHouse house;
  Put(house, "#alias {a} {b}\n");
  house.Load("/data/a.set");
  house.buffers.SetBufferText(4, "no line end");
  EXPECT_TRUE(house.buffers.SaveBuffer(4));
  EXPECT_EQ(house.File("/data/a.set"), "no line end");
  EXPECT_EQ(house.state.BufferFlags[4], buffer::Script);
  EXPECT_TRUE(house.buffers.SaveBuffer(1));  // nothing to save
}

TEST(SaveBuffer, ARefusalIsToldAndTheTextStaysModified) {
  FilesHouse house;
  Put(house, "#alias {a} {b}\r\n");
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
  Put(house, "#alias {a} {b}\r\n");
  Put(house, "#alias {c} {d}\r\n", "/data/b.set");
  house.Load("/data/a.set");
  house.Load("/data/b.set");
  house.buffers.MoveBuffers(4);
  EXPECT_TRUE(house.buffers.CloseBuffer(4));
  EXPECT_EQ(house.script.AliasCount, 1);
  EXPECT_EQ(house.state.CurrentBuffer, 5);
  EXPECT_EQ(house.state.BufferFlags[4], 0);
  EXPECT_EQ(house.state.BufferFile[4], "");
  EXPECT_EQ(house.script.DefiningBuffer, 5);
  Put(house, "", "/data/c.set");
  house.Load("/data/c.set");
  EXPECT_EQ(house.state.BufferFile[4], "/data/c.set");  // the free slot is used again
}

TEST(CloseBuffer, RefusesTheFirstThreeAndWhatIsNotOpen) {
  FilesHouse house;
  for (const int number : {-1, 0, 1, 2, 3, 4, 99}) EXPECT_FALSE(house.buffers.CloseBuffer(static_cast<int16>(number)));
  EXPECT_EQ(house.state.BufferCount, 3);
}

TEST(CloseBuffer, StaysOnCancelAndForgetsOnNo) {
  FilesHouse house;
  Put(house, "#alias {a} {b}\r\n");
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
  Put(house, "#alias {a} {b}\r\n");
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

// --- changing a definition ---

struct Update {
  const char* About;
  const char* Text;
  UpdateAction Action;
  OldDefinition Old;
  const char* NewLine;
  const char* Result;
};

const Update Updates[] = {
    {"replaces the line",
     "#alias {a} {b}\r\n#alias {c} {d}\r\n",
     UpdateAction::Write,
     {"Alias", "a", "b", ""},
     "#alias {a} {new}",
     "#alias {a} {new}\r\n#alias {c} {d}\r\n"},
    {"finds any case and short forms",
     "#ALI A b\r\n",
     UpdateAction::Write,
     {"#alias", "a", "b", ""},
     "#alias {a} {x}",
     "#alias {a} {x}\r\n"},
    {"keeps apart what is tested before",
     "#al a b\r\n",
     UpdateAction::Write,
     {"alias", "a", "b", ""},
     "#alias {a} {x}",
     "#al a b\r\n#alias {a} {x}\r\n"},
    {"keeps apart everybody's and one's own",
     "#galias {a} {b}\r\n#alias {a} {b}\r\n",
     UpdateAction::Delete,
     {"alias", "a", "b", ""},
     "",
     "#galias {a} {b}\r\n"},
    {"finds everybody's",
     "#alias {a} {b}\r\n#GTr {a} {b}\r\n",
     UpdateAction::Delete,
     {"GTrigger", "a", "b", ""},
     "",
     "#alias {a} {b}\r\n"},
    {"needs the same commands",
     "#alias {a} {other}\r\n",
     UpdateAction::Delete,
     {"alias", "a", "b", ""},
     "",
     "#alias {a} {other}\r\n"},
    {"takes any commands when none are given",
     "#alias {a} {other}\r\n",
     UpdateAction::Delete,
     {"alias", "a", "", ""},
     "",
     ""},
    {"needs a class of the list",
     "#alias {a} {b} {c1}\r\n#alias {a} {b} {c2}\r\n",
     UpdateAction::Delete,
     {"alias", "a", "b", "x|C2"},
     "",
     "#alias {a} {b} {c1}\r\n"},
    {"finds keys by what they are",
     "#key control-shift-f1 {look}\r\n",
     UpdateAction::Delete,
     {"Key", "Shift-Control-F1", "look", ""},
     "",
     ""},
    {"replaces all lines of a statement",
     "; top\r\n#trigger {hi} {\r\n  wave // friendly\r\n}\r\n#key F1 x\r\n",
     UpdateAction::Write,
     {"Trigger", "hi", "\r\n  wave\r\n", ""},
     "#Trigger {hi} {bow}",
     "; top\r\n#Trigger {hi} {bow}\r\n#key F1 x\r\n"},
    {"leaves the other commands of the line",
     "#alias a b;#alias c d;#alias e f\r\n",
     UpdateAction::Write,
     {"alias", "c", "d", ""},
     "#alias {c} {x}",
     "#alias a b;#alias {c} {x};#alias e f\r\n"},
    {"takes a command out of a line",
     "#alias a b;#alias c d\r\n",
     UpdateAction::Delete,
     {"alias", "c", "d", ""},
     "",
     "#alias a b\r\n"},
    {"takes the first command out of a line",
     "#alias a b;#alias c d\r\n",
     UpdateAction::Delete,
     {"alias", "a", "b", ""},
     "",
     "#alias c d\r\n"},
    {"keeps the comment",
     "#alias {a} {b} // mine\r\n",
     UpdateAction::Write,
     {"alias", "a", "b", ""},
     "#alias {a} {x}",
     "#alias {a} {x} // mine\r\n"},
    {"finds nothing in comments",
     "; #alias {a} {b}\r\n// #alias {a} {b}\r\n",
     UpdateAction::Delete,
     {"alias", "a", "b", ""},
     "",
     "; #alias {a} {b}\r\n// #alias {a} {b}\r\n"},
    {"appends behind a text without line end",
     "#alias c d",
     UpdateAction::Write,
     {"alias", "a", "b", ""},
     "#alias {a} {x}",
     "#alias c d\r\n#alias {a} {x}\r\n"},
    {"appends to an empty text",
     "",
     UpdateAction::Write,
     {"alias", "a", "b", ""},
     "#alias {a} {x}",
     "#alias {a} {x}\r\n"},
    {"appends whatever is there",
     "#alias {a} {b}\r\n",
     UpdateAction::Append,
     {"alias", "a", "b", ""},
     "#alias {a} {x}",
     "#alias {a} {b}\r\n#alias {a} {x}\r\n"},
    {"deletes nothing that is not there",
     "#alias {c} {d}\r\n",
     UpdateAction::Delete,
     {"alias", "a", "b", ""},
     "",
     "#alias {c} {d}\r\n"},
    {"passes unbalanced text",
     "#alias {a} {b\r\n#alias {c} {d}\r\n",
     UpdateAction::Write,
     {"alias", "z", "", ""},
     "#alias {z} {x}",
     "#alias {a} {b\r\n#alias {c} {d}\r\n#alias {z} {x}\r\n"},
};

TEST(UpdateBuffer, ChangesTheLineOfADefinition) {
  for (const Update& update : Updates) {
    SCOPED_TRACE(update.About);
    FilesHouse house;
    house.buffers.OpenBuffers("/data/a.set", buffer::Script);
    house.state.BufferLoaded[4] = update.Text;
    house.buffers.SetBufferText(4, update.Text);
    const bool changed = house.buffers.UpdateBuffer(4, update.Action, update.NewLine, "", update.Old);
    EXPECT_EQ(house.state.BufferText[4], update.Result);
    EXPECT_EQ(changed, std::string(update.Text) != update.Result);
    EXPECT_EQ((house.state.BufferFlags[4] & buffer::Modified) != 0, changed);
  }
}

TEST(UpdateBuffer, ChangesWhatTheEntryBoxShows) {
  FilesHouse house;
  Put(house, "#alias {a} {b}\r\n");
  house.Load("/data/a.set");
  house.buffers.MoveBuffers(4);
  house.state.EntryBox.SetText("#alias {a} {b}\r\n#alias {n} {typed}\r\n");
  house.buffers.UpdateBuffer(0, UpdateAction::Write, "#alias {a} {x}", "/data/a.set", {"alias", "a", "b", ""});
  EXPECT_EQ(house.state.EntryBox.Text(), "#alias {a} {x}\r\n#alias {n} {typed}\r\n");
  EXPECT_EQ(house.state.BufferText[4], house.state.EntryBox.Text());
}

TEST(UpdateBuffer, NeedsABufferInUse) {
  FilesHouse house;
  EXPECT_FALSE(house.buffers.UpdateBuffer(0, UpdateAction::Write, "x", "/data/none.set", {}));
  EXPECT_FALSE(house.buffers.UpdateBuffer(9, UpdateAction::Write, "x", "", {}));
  EXPECT_TRUE(house.buffers.UpdateBuffer(3, UpdateAction::Append, "#alias {a} {b}", "", {}));
  EXPECT_EQ(house.state.BufferText[3], "#alias {a} {b}\r\n");
}

}  // namespace
}  // namespace corvid
