// SPDX-License-Identifier: GPL-3.0-or-later
#include "commands/fixture.h"

namespace corvid::test {

class ErrorsTest : public CommandTest {};

TEST_F(ErrorsTest, AReportIsSpokenAndLogged) {
  errors.ErrorReport("Bad command #x", "#x", 0, 0);
  EXPECT_EQ(Effects(), (Lines{"speech 1 error", "beep"}));
  EXPECT_EQ(ErrorLog(), "\r\nBad command #x in command: #x");
  EXPECT_NE(buffers.BufferFlags[buffer::ErrorLog] & buffer::News, 0);
}

TEST_F(ErrorsTest, AnInteractiveReportIsABoxAndLoggedToo) {
  errors.ErrorReport("Bad", "#x", 9, option::Interactive);
  EXPECT_EQ(Effects(), (Lines{"box Error! |Bad in command: #x- Error 9"}));
  EXPECT_EQ(ErrorLog(), "\r\nBad in command: #x- Error 9");
}

TEST_F(ErrorsTest, AVoiceThatFailsDoesNotLoseTheReport) {
  speaker.Fails = true;
  errors.ErrorReport("Bad", "#x", 0, 0);
  EXPECT_EQ(Effects(), (Lines{"beep"}));
  EXPECT_EQ(ErrorLog(), "\r\nBad in command: #x");
}

TEST_F(ErrorsTest, TheFileOfADefinitionIsNamed) {
  scriptFiles.ResizeBuffers(4);
  buffers.BufferFile[4] = "/data/a.set";
  errors.DisplayErrorFile("Bad", 4);
  EXPECT_EQ(ErrorLog(), "-- Error found in file /data/a.set\r\n===============");
  ClearErrorLog();
  errors.DisplayErrorFile(" ", 4);
  errors.DisplayErrorFile("", 4);
  EXPECT_EQ(ErrorLog(), "");
}

TEST_F(ErrorsTest, AFileNumberOutOfRangeGoesToTheErrorFile) {
  errors.DisplayErrorFile("Bad", 99);
  EXPECT_EQ(Effects(), (Lines{"speech 1 Error logged.", "beep"}));
  const std::string file = memory.files.ReadWhole("/data/error.log");
  EXPECT_NE(file.find("Procedure: displayErrorFile\r\nParameter 1: Bad\r\nParameter 2: 99\r\n"), std::string::npos);
}

TEST_F(ErrorsTest, BoxesHaveTheirTitles) {
  errors.ShowError("one");
  errors.writeError("two");
  errors.ErrorDisplay("three");
  EXPECT_EQ(Effects(), (Lines{"box Corvid|one", "box Error! |two", "box Error!|three"}));
  EXPECT_EQ(prompter.LastFlags, box::Exclamation);
}

TEST_F(ErrorsTest, AnUnknownErrorIsAppendedToTheErrorFile) {
  errors.UnknownError("disk on fire", "loadset", {"a", "b", "c", "d", "e", "f"});
  errors.UnknownError("again", "closemud", {});
  EXPECT_EQ(Effects(), (Lines{"speech 1 Error logged.", "beep", "speech 1 Error logged.", "beep"}));
  EXPECT_EQ(memory.files.ReadWhole("/data/error.log"),
            "==============\r\nG Error =0\r\nError: disk on fire\r\nProcedure: loadset\r\nParameter 1: a\r\n"
            "Parameter 2: b\r\nParameter 3: c\r\nParameter 4: d\r\nParameter 5: e\r\n"
            "==============\r\nG Error =0\r\nError: again\r\nProcedure: closemud\r\nParameter 1: \r\n"
            "Parameter 2: \r\nParameter 3: \r\nParameter 4: \r\nParameter 5: \r\n");
  EXPECT_TRUE(memory.files.IsPrivate("/data/error.log"));
}

TEST_F(ErrorsTest, AnErrorFileThatCannotBeWrittenLeavesTheErrorInTheWindow) {
  memory.files.Fail = [](const std::string&, const std::string&) { return "disk full"; };
  errors.UnknownError("boom", "quit", {});
  EXPECT_EQ(Effects(), (Lines{"speech 1 Error logged.", "beep"}));
  EXPECT_NE(ErrorLog().find("boom in quit"), std::string::npos);
}

TEST_F(ErrorsTest, TheErrorLogIsTrimmedBeforeItGrowsBeyondItsLimit) {
  buffers.BufferText[buffer::ErrorLog] = std::string(30001, 'x');
  errors.ErrorReport("Bad", "#x", 0, 0);
  EXPECT_EQ(ErrorLog().size(), 20000 + std::string("\r\nBad in command: #x").size());
  EXPECT_EQ(buffers.BufferCaret[buffer::ErrorLog], 20000);
}

}  // namespace corvid::test
