// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/buffers.h"

#include <gtest/gtest.h>

#include "files_house.h"

namespace corvid {
namespace {

using testing_files::FilesHouse;
using testing_files::Question;
using testing_files::Texts;

TEST(LoadSet, RunsEachStatementAndKeepsTheText) {
  FilesHouse house;
  house.Put("#alias {a} {\n  look\n}\n; a comment\n\n#alias {b} {c} // why");
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
  house.Put("#alias {a} {1}\r\n#alias {b} {2}\r#alias {c} {3}\n");
  house.Load("/data/a.set");
  EXPECT_EQ(house.state.BufferText[4], "#alias {a} {1}\r\n#alias {b} {2}\r\n#alias {c} {3}\r\n");
  EXPECT_EQ(house.script.AliasCount, 3);
}

TEST(LoadSet, TakesARelativeNameFromTheUserDataFolderInAnyCase) {
  FilesHouse house;
  house.Put("#alias {a} {b}\n", "/data/sub/Start.SET");
  house.Load("sub\\start.set");
  EXPECT_EQ(house.state.BufferFile[4], "/data/sub/Start.SET");
  house.Load("");
  EXPECT_EQ(house.state.BufferCount, 4);
}

TEST(LoadSet, OnlyChecksWithNoExecution) {
  FilesHouse house;
  house.Put("#alias {a} {b}\n#VAR x 1\n");
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
  house.Put("#x\n");
  house.Load("/data/a.set");
  EXPECT_EQ(seen, 2);
  EXPECT_EQ(house.state.BufferOwners[4], 7);
}

TEST(LoadSet, AFailureShowsTheFileAtThePlaceAndSaysItsName) {
  FilesHouse house;
  house.Put("#alias {a} {b}\r\n#FAIL\r\n#alias {c} {d}\r\n");
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
  house.Put("#alias {a} {b}\r\n");
  house.Load("/data/a.set");
  EXPECT_EQ(house.state.BufferFlags[4], buffer::Script);
  EXPECT_EQ(house.state.EntryBox.Text(), "#alias {a} {b}\r\n");
}

TEST(LoadSet, FindsAFailureFarBehindTheStart) {
  FilesHouse house;
  std::string text;
  while (text.size() < 100000) text += "; a comment that fills the file\r\n";
  house.Put(text + "#FAIL\r\n");
  house.Load("/data/a.set");
  EXPECT_EQ(house.state.EntryBox.SelStart(), static_cast<int32>(text.size()));
  house.buffers.MoveBuffers(1);
  house.buffers.MoveBuffers(4);
  EXPECT_EQ(house.state.EntryBox.SelStart(), static_cast<int32>(text.size()));
}

TEST(LoadSet, ReportsUnbalancedBracesAndForeignText) {
  FilesHouse house;
  house.Put("#alias {a} {b\r\n");
  house.Put("kill the dragon\r\n", "/data/b.set");
  house.Load("/data/a.set");
  house.Load("/data/b.set");
  EXPECT_EQ(house.Told("error"), Texts({"Unbalanced braces. in command: #alias {a} {b",
                                        "Invalid text found on line. in command: kill the dragon"}));
  EXPECT_EQ(house.state.CurrentBuffer, 5);
}

TEST(LoadSet, AFailedOptionsFileStaysInactiveAndReadOnly) {
  FilesHouse house;
  house.options.ScriptReadOnly = true;
  house.Put("#FAIL\r\n");
  house.Load("/data/a.set", load::OptionsOnly);
  EXPECT_EQ(house.state.BufferFlags[4], buffer::Script | buffer::News | buffer::Inactive | buffer::ReadOnly);
  EXPECT_TRUE(house.state.EntryBox.Locked());
  EXPECT_EQ(house.script.DefiningBuffer, 0);
  // Mended and loaded as an ordinary script it only loses the mark of the error.
  house.options.ScriptReadOnly = false;
  house.Put("#alias {a} {b}\r\n");
  house.Load("/data/a.set");
  EXPECT_EQ(house.state.BufferFlags[4], buffer::Script | buffer::Inactive);
  EXPECT_FALSE(house.state.EntryBox.Locked());
}

TEST(LoadSet, AFileThatCannotBeReadDoesNotStopTheNextOne) {
  FilesHouse house;
  house.Put("#alias {b} {c}\n", "/data/b.set");
  house.Load("/data/a.set");
  house.Load("/data/b.set");
  EXPECT_EQ(house.Told("unknownerror"), Texts({"Loadset: /data/a.set: no such file"}));
  EXPECT_EQ(house.state.BufferFile[4], "/data/b.set");
  EXPECT_EQ(house.script.AliasCount, 1);
}

TEST(LoadSet, AReloadThatCannotBeReadKeepsTheText) {
  FilesHouse house;
  house.Put("#alias {a} {b}\r\n");
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
  house.Put("#alias {a} {b}\r\n");
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
  house.Put("#alias {a} {b}\r\n");
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
  house.Put("#again\r\n#again\r\n");
  house.runner.OnLine = [&](const std::string&, int16& channel) {
    house.buffers.LoadSet("/data/a.set", 0, channel);
    return true;
  };
  house.Load("/data/a.set");
  EXPECT_EQ(house.Told("error"), Texts({"recursive check - probable infinite loop detected in command: /data/a.set"}));
  house.runner.OnLine = nullptr;
  house.Put("#alias {a} {b}\r\n");
  house.Load("/data/a.set");
  EXPECT_EQ(house.script.AliasCount, 1);
}

TEST(LoadSet, AScriptMayUnloadItself) {
  FilesHouse house;
  house.Put("#unload\r\n#FAIL\r\n");
  house.runner.OnLine = [&](const std::string& line, int16&) {
    if (line == "#unload") house.buffers.CloseBuffer(4);
    return line == "#unload";
  };
  house.Load("/data/a.set");
  EXPECT_EQ(house.state.BufferFlags[4], 0);
  EXPECT_EQ(house.state.BufferText[2], "\r\n-- Error found in file /data/a.set\r\n===============\r\n");
  EXPECT_EQ(house.state.CurrentBuffer, 1);
}

}  // namespace
}  // namespace corvid
