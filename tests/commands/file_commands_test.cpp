// SPDX-License-Identifier: GPL-3.0-or-later
#include "commands/fixture.h"

namespace corvid::test {

constexpr const char* BadHandle = "Parameter 2 must be a numeric file handle between 1 and 10.";
constexpr const char* NoSuchHandle = "File handle must be numeric and be 1 through 10";
constexpr const char* NotAssigned = "File not defined or not assigned a filename.";
constexpr const char* Directories = "Directory and wildcard characters are not allowed.";

class FileTest : public CommandTest {
 protected:
  void Put(const std::string& name, const std::string& bytes) { memory.files.Put("/data/" + name, bytes); }
  std::string Disk(const std::string& name) const { return memory.files.ReadWhole("/data/" + name); }
  bool Exists(const std::string& name) const { return memory.files.FileExists("/data/" + name); }
  // What a line leaves in the variable x.
  std::string X(const std::string& line) {
    EXPECT_EQ(Run(line), "") << line;
    return Variable("x");
  }
  std::string AtEnd(int handle) { return X("#VAR x %ENDOFFILE(" + std::to_string(handle) + ")"); }
  void FillDisk() {
    memory.files.Fail = [](const std::string&, const std::string&) { return "No space left on device"; };
  }
  void MakeRoom() { memory.files.Fail = nullptr; }
  static std::string Record(const std::string& text) {
    std::string bytes{static_cast<char>(text.size()), '\0'};
    bytes += text;
    bytes.resize(DataFiles::RecordSize);
    return bytes;
  }
};

struct Refusal {
  const char* Line;
  const char* Error;
};

TEST_F(FileTest, FileJudgesHandleThenNameThenRange) {
  for (const Refusal& row : {
           Refusal{"#FILE x a.txt", BadHandle},
           Refusal{"#FILE x a.ini", BadHandle},
           Refusal{"#FILE {} a.txt", BadHandle},
           Refusal{"#FILE 11 a.txt", BadHandle},
           Refusal{"#FILE 0 a.txt", BadHandle},
           Refusal{"#FILE -1 a.txt", BadHandle},
           Refusal{"#FILE 10.4 a.txt", BadHandle},
           Refusal{"#FILE 11 a.ini", "Illegal filetype"},
           Refusal{"#FILE 3 a\\b.txt", Directories},
           Refusal{"#FILE 3 a/b.txt", Directories},
           Refusal{"#FILE 3 *.txt", Directories},
           Refusal{"#FILE 3 ../Character.mud", Directories},
           Refusal{"#FILE 3 a", "Missing file type"},
           Refusal{"#FILE 6 {} 10", "Missing file type"},
           Refusal{"#FILE 3 a\\b", "Missing file type"},
           Refusal{"#FILE 3 a\\b.ini", "Illegal filetype"},
           Refusal{"#FILE 3 a.INI", "Illegal filetype"},
           Refusal{"#FILE 3 a.hlp", "Illegal filetype"},
           Refusal{"#FILE 3 a.Exe", "Illegal filetype"},
           Refusal{"#FILE 3 a.dll", "Illegal filetype"},
           Refusal{"#FILE 3 a.cfg", "Illegal filetype"},
           Refusal{"#FILE 3 a.ini-.cfg", "Illegal filetype"},
           Refusal{"#FILE 7 a.txt long", "Parameter 3 must be numeric if included."},
           Refusal{"#FILE 3", "Wrong number of parameters"},
           Refusal{"#FILE 3 a.txt 1 2", "Wrong number of parameters"},
       }) {
    EXPECT_EQ(Run(row.Line), row.Error) << row.Line;
    EXPECT_EQ(scriptFileState.ScriptFileName[3], "") << row.Line;
  }
}

TEST_F(FileTest, FileAssignsAHandle) {
  AddVariable("n", "shop");
  EXPECT_EQ(Run("#FILE 3 @n.txt 50"), "");
  EXPECT_EQ(scriptFileState.ScriptFileName[3], "shop.txt");
  EXPECT_EQ(scriptFileState.ScriptFileLength[3], 0) << "a length means nothing for lines";
  EXPECT_EQ(Run("#FILE 6 r.dat"), "");
  EXPECT_EQ(scriptFileState.ScriptFileLength[6], 120);
  EXPECT_EQ(Run("#FILE 10 r.dat 64"), "");
  EXPECT_EQ(scriptFileState.ScriptFileLength[10], 64);
  EXPECT_EQ(Run("#FILE { 4} a.b.ini"), "") << "the type begins at the first point";
  EXPECT_EQ(scriptFileState.ScriptFileName[4], "a.b.ini");
  EXPECT_TRUE(Run("#FILE 7 a.txt 99999").starts_with("Bad parsing error - "));
  EXPECT_EQ(scriptFileState.ScriptFileName[7], "");
  EXPECT_FALSE(Exists("shop.txt")) << "nothing is opened yet";
}

TEST_F(FileTest, CheckModeTouchesNothing) {
  Put("a.txt", "one\r\n");
  for (const char* line : {"#FILE 1 a.ini", "#READ 1 x", "#WRITE 99 x", "#CLOSE zork", "#DELFILE a.txt"})
    EXPECT_EQ(Run(line, option::CheckOnly), "") << line;
  EXPECT_EQ(Run("#READ 1", option::CheckOnly), "Wrong number of parameters");
  EXPECT_TRUE(Exists("a.txt"));
}

TEST_F(FileTest, ReadGivesLinesAndThenTheEnd) {
  Put("Data.txt", "first\r\nsecond line\n\r\n@x %1;#QUIT\r\nlast");
  EXPECT_EQ(Run("#FILE 1 data.TXT"), "");
  EXPECT_EQ(X("#READ 1 x"), "first");
  EXPECT_EQ(scriptFileState.ScriptFileLength[1], -2);
  EXPECT_NE(scriptFileState.ScriptFileNumber[1], 0);
  EXPECT_EQ(X("#READ 1 x"), "second line");
  EXPECT_EQ(X("#READ 1 x"), "");
  EXPECT_EQ(X("#READ 1 x"), "@x %1;#QUIT") << "what is read is data, not script";
  EXPECT_EQ(X("#READ 1 x"), "last");
  EXPECT_EQ(X("#READ 1 x"), "[EOF]");
  EXPECT_EQ(X("#READ 1 x"), "[EOF]");
  EXPECT_EQ(Of("quit"), Lines{});
}

TEST_F(FileTest, ReadStoresForTheCharacterAndWithThePrefixForEverybody) {
  MakeSession(0, "bob", true);
  const OwnerId owner = script.SocketOwner[0];
  Put("a.txt", "one\r\ntwo\r\n");
  Run("#FILE 1 a.txt;#READ 1 mine;#GREAD 1 ours");
  EXPECT_EQ(script.VariableOwners[symbols.FindVariable("mine", *std::make_unique<std::string>(), owner)], owner);
  EXPECT_EQ(Variable("ours"), "two");
  EXPECT_EQ(script.VariableDefaults[1], "one") << "the first value is the default";
}

TEST_F(FileTest, WhatStandsForAHandleANameOrARecordIsWorkedOut) {
  for (const auto& [name, value] : {std::pair{"h", "1"}, {"r", "6"}, {"v", "x"}, {"n", "2"}}) AddVariable(name, value);
  Put("a.txt", "one\r\ntwo\r\n");
  EXPECT_EQ(X("#FILE @h a.txt;#READ @h @v"), "one");
  EXPECT_EQ(X("#FILE @r r.dat;#WRITE @r second @n;#READ @r @v {@n}"), "second");
  EXPECT_EQ(Disk("r.dat"), std::string(128, '\0') + Record("second"));
  EXPECT_EQ(Run("#CLOSE @h"), "");
  EXPECT_EQ(scriptFileState.ScriptFileName[1], "");
  EXPECT_EQ(Run("#DELFILE {@nothing|a.txt}"), "Bad parsing error - /data/|a.txt: no such file");
  AddVariable("file", "a.txt");
  EXPECT_EQ(Run("#DELFILE @file"), "");
  EXPECT_FALSE(Exists("a.txt"));
}

TEST_F(FileTest, AValueForABadNameIsDroppedWithoutAWord) {
  Put("a.txt", "one\r\ntwo\r\n");
  Run("#FILE 1 a.txt;#FILE 6 r.dat;#WRITE 6 a 1");
  const int32 before = script.VariableCount;
  Effects();
  EXPECT_EQ(Run("#READ 1 {bad name};#READ 6 bad_name 1"), "");
  EXPECT_EQ(Run("#READ 1 {} {}"), "");
  EXPECT_EQ(script.VariableCount, before);
  EXPECT_EQ(X("#READ 1 x"), "[EOF]") << "the lines have been read all the same";
}

TEST_F(FileTest, ANameThatHidesItsTypeIsRefused) {
  Put("a.ini", "kept");
  for (const char* line : {"#FILE 1 a.ini%CHAR(0).txt;#READ 1 x", "#FILE 2 a.ini%CHAR(0).txt;#WRITE 2 x",
                           "#FILE 6 a.ini%CHAR(0).txt;#WRITE 6 x 1", "#DELFILE a.ini%CHAR(0).txt"})
    EXPECT_NE(Run(line), "") << line;
  EXPECT_EQ(Disk("a.ini"), "kept");
  EXPECT_EQ(Variable("x"), "(none)");
}

TEST_F(FileTest, ReadRefuses) {
  Put("a.txt", "one\r\n");
  EXPECT_EQ(Run("#READ 1 x"), NotAssigned);
  EXPECT_EQ(Run("#READ { 1} x"), NotAssigned);
  EXPECT_EQ(Run("#READ 7 x 1"), NotAssigned);
  EXPECT_EQ(Run("#FILE 1 a.txt;#FILE 6 r.dat"), "");
  for (const Refusal& row : {
           Refusal{"#READ { 1} x", NoSuchHandle},
           Refusal{"#READ 01 x", NoSuchHandle},
           Refusal{"#READ 1.0 x", NoSuchHandle},
           Refusal{"#READ 11 x", NoSuchHandle},
           Refusal{"#READ 0 x", NoSuchHandle},
           Refusal{"#READ one x", NoSuchHandle},
           Refusal{"#READ 1 x 5", "Too many parameters for this type of read - no record number allowed"},
           Refusal{"#READ 6 x", "Record number missing for read, or value not numeric"},
           Refusal{"#READ 6 x first", "Record number missing for read, or value not numeric"},
           Refusal{"#READ 1", "Wrong number of parameters"},
           Refusal{"#READ 1 x 2 3", "Wrong number of parameters"},
       })
    EXPECT_EQ(Run(row.Line), row.Error) << row.Line;
  EXPECT_EQ(X("#VAR x old;#READ 1 x @nothing"), "one") << "an empty record number is none";
  EXPECT_EQ(Run("#WRITE 1 {no}"), "Trying to write to a file already open for read");
  EXPECT_EQ(Disk("a.txt"), "one\r\n");
}

TEST_F(FileTest, WriteAddsLines) {
  Put("log.txt", "old\r\n");
  AddVariable("n", "5");
  EXPECT_EQ(Run("#FILE 2 log.txt;#WRITE 2 {new @n}"), "");
  EXPECT_EQ(scriptFileState.ScriptFileLength[2], -1);
  EXPECT_EQ(Run("#WRITE 2 {x} {NoReturn};#WRITE 2 {y} @nothing;#WRITE 2 {} {}"), "");
  EXPECT_EQ(Run("#WRITE 2 {}"), "Wrong number of parameters") << "a last empty part is none";
  EXPECT_EQ(Run("#CLOSE 2"), "");
  EXPECT_EQ(Disk("log.txt"), "old\r\nnew 5\r\nxy\r\n\r\n");
}

TEST_F(FileTest, WriteRefuses) {
  EXPECT_EQ(Run("#WRITE 2 {x}"), NotAssigned);
  EXPECT_EQ(Run("#FILE 2 log.txt;#FILE 6 r.dat"), "");
  for (const Refusal& row : {
           Refusal{"#WRITE { 2} x", NoSuchHandle},
           Refusal{"#WRITE 02 x", NoSuchHandle},
           Refusal{"#WRITE 11 x", NoSuchHandle},
           Refusal{"#WRITE two x", NoSuchHandle},
           Refusal{"#WRITE 2 x 5", "Too many parameters for this type of write - no record number allowed"},
           Refusal{"#WRITE 6 x", "Record number missing for Write, or value not numeric"},
           Refusal{"#WRITE 6 x NoReturn", "Record number missing for Write, or value not numeric"},
       })
    EXPECT_EQ(Run(row.Line), row.Error) << row.Line;
  EXPECT_FALSE(Exists("log.txt"));
  EXPECT_EQ(Run("#WRITE 2 a"), "");
  EXPECT_EQ(Run("#READ 2 x"), "Trying to read from a file already open for write");
}

TEST_F(FileTest, ALineIsOnTheDiskWhenWriteIsDone) {
  Run("#FILE 2 log.txt;#WRITE 2 one");
  EXPECT_EQ(Disk("log.txt"), "one\r\n");
  EXPECT_EQ(Run("#FILE 1 log.txt"), "");
  EXPECT_EQ(X("#READ 1 x"), "one");
  EXPECT_EQ(X("#READ 1 x"), "[EOF]");
  EXPECT_EQ(X("#WRITE 2 two;#READ 1 x"), "two") << "a reader goes on when the file has grown";
}

TEST_F(FileTest, CloseTurnsAFileRound) {
  Run("#FILE 2 log.txt;#WRITE 2 one");
  EXPECT_EQ(Run("#CLOSE 2"), "");
  EXPECT_EQ(scriptFileState.ScriptFileName[2], "");
  EXPECT_EQ(scriptFileState.ScriptFileLength[2], 0);
  EXPECT_EQ(scriptFileState.ScriptFileNumber[2], 0);
  EXPECT_EQ(Run("#READ 2 x"), NotAssigned);
  EXPECT_EQ(X("#FILE 2 log.txt;#READ 2 x"), "one");
  Run("#FILE 6 r.dat 50;#WRITE 6 a 1;#CLOSE 6");
  EXPECT_EQ(scriptFileState.ScriptFileLength[6], 0);
  EXPECT_EQ(scriptFileState.ScriptFileName[6], "");
}

TEST_F(FileTest, CloseForgetsTheNameOnlyOfAnOpenFile) {
  Run("#FILE 2 log.txt");
  EXPECT_EQ(Run("#CLOSE 2"), "");
  EXPECT_EQ(scriptFileState.ScriptFileName[2], "log.txt");
  EXPECT_EQ(Run("#CLOSE x"), BadHandle);
  EXPECT_EQ(Run("#CLOSE 11"), BadHandle);
  EXPECT_EQ(Run("#CLOSE 0"), BadHandle);
  EXPECT_EQ(Run("#CL 2"), "") << "that is CLASS";
  EXPECT_EQ(scriptFileState.ScriptFileName[2], "log.txt");
}

TEST_F(FileTest, FileOnAnOpenHandleBeginsAnew) {
  Put("a.txt", "one\r\ntwo\r\n");
  Run("#FILE 1 a.txt");
  EXPECT_EQ(X("#READ 1 x"), "one");
  EXPECT_EQ(X("#FILE 1 a.txt;#READ 1 x"), "one");
  EXPECT_EQ(Run("#FILE 1 a.txt;#WRITE 1 three"), "");
  EXPECT_EQ(Run("#FILE 1 a.ini"), "Illegal filetype");
  EXPECT_NE(scriptFileState.ScriptFileNumber[1], 0) << "a refused name changes nothing";
  EXPECT_EQ(Run("#FILE 6 r.dat;#WRITE 6 a 1;#FILE 6 s.dat long"), "Parameter 3 must be numeric if included.");
  EXPECT_EQ(scriptFileState.ScriptFileNumber[6], 0);
  EXPECT_EQ(scriptFileState.ScriptFileLength[6], 0) << "the open file is closed before the length is judged";
  EXPECT_EQ(scriptFileState.ScriptFileName[6], "r.dat");
}

TEST_F(FileTest, KillAllLeavesFilesOpen) {
  Put("a.txt", "one\r\ntwo\r\n");
  Run("#FILE 1 a.txt;#READ 1 x;#KILLALL");
  EXPECT_EQ(X("#READ 1 x"), "two");
}

TEST_F(FileTest, RecordsStand128Apart) {
  Run("#FILE 6 r.dat 20");
  EXPECT_EQ(Run("#WRITE 6 {a longer text than twenty} 1"), "") << "the length that FILE was given means nothing";
  EXPECT_EQ(scriptFileState.ScriptFileLength[6], 20);
  EXPECT_EQ(Run("#WRITE 6 third 3"), "");
  EXPECT_EQ(Disk("r.dat"), Record("a longer text than twenty") + std::string(128, '\0') + Record("third"));
  EXPECT_EQ(X("#READ 6 x 1"), "a longer text than twenty");
  EXPECT_EQ(X("#READ 6 x 2"), "");
  EXPECT_EQ(X("#READ 6 x 3"), "third");
  EXPECT_EQ(X("#READ 6 x 4"), "") << "behind the end";
  EXPECT_EQ(X("#READ 6 x 2000000000"), "");
  EXPECT_EQ(X("#WRITE 6 short 1;#READ 6 x 1"), "short");
  EXPECT_EQ(Disk("r.dat").substr(0, 128), Record("short")) << "nothing of the longer text stays";
  EXPECT_EQ(X("#READ 6 x 2.5"), "") << "halves go to the even number";
}

TEST_F(FileTest, ARecordHolds126Characters) {
  const std::string longest(126, 'a');
  Run("#FILE 6 r.dat");
  EXPECT_EQ(X("#WRITE 6 " + longest + " 1;#READ 6 x 1"), longest);
  EXPECT_EQ(Run("#WRITE 6 " + longest + "a 1"), "Bad parsing error - Bad record length");
  EXPECT_EQ(Disk("r.dat"), Record(longest));
  EXPECT_EQ(Run("#WRITE 6 a 0"), "Bad parsing error - Bad record number");
  EXPECT_EQ(Run("#READ 6 x -1"), "Bad parsing error - Bad record number");
  EXPECT_EQ(Run("#WRITE 6 a 16777216"), "Bad parsing error - Bad record number") << "no file of two gigabytes";
  EXPECT_TRUE(Run("#READ 6 x 1E20").starts_with("Bad parsing error - "));
}

TEST_F(FileTest, RecordsOfADamagedFileAreToldOrShort) {
  Put("r.dat", std::string("\xff\xff", 2) + std::string(126, 'x') + std::string("\x05\0ab", 4));
  Run("#FILE 6 r.dat");
  EXPECT_EQ(Run("#READ 6 x 1"), "Bad parsing error - Bad record length");
  EXPECT_EQ(X("#READ 6 x 2"), "ab");
  Put("s.dat", "\x05");
  EXPECT_EQ(X("#FILE 7 s.dat;#READ 7 x 1"), "");
}

TEST_F(FileTest, EndOfFileLooksAtTheHandle) {
  Put("a.txt", "one\r\ntwo\r\n");
  EXPECT_EQ(AtEnd(1), "1") << "not assigned";
  Run("#FILE 1 a.txt");
  EXPECT_EQ(AtEnd(1), "1") << "not open yet";
  Run("#READ 1 y");
  EXPECT_EQ(AtEnd(1), "0");
  Run("#READ 1 y");
  EXPECT_EQ(AtEnd(1), "1");
  Run("#FILE 2 b.txt;#WRITE 2 x");
  EXPECT_EQ(AtEnd(2), "1") << "behind what is written there is nothing";
  EXPECT_EQ(Run("#VAR x %ENDOFFILE(0)"), "Error in one of the arguments in function ENDOFFILE");
  EXPECT_EQ(Run("#VAR x %ENDOFFILE(11)"), "Error in one of the arguments in function ENDOFFILE");
  EXPECT_EQ(Run("#VAR x %ENDOFFILE(70000)"), "Error in one of the arguments in function ENDOFFILE");
}

TEST_F(FileTest, EndOfFileEndsALoopOverRecords) {
  Run("#FILE 6 r.dat;#WRITE 6 a 1;#WRITE 6 b 2;#WRITE 6 c 3;#CLOSE 6;#FILE 6 r.dat");
  AddVariable("n", "0");
  Run("#UNTIL {%ENDOFFILE(6)=1} {#MATH n {@n+1};#READ 6 t @n;#VAR all @all@t}");
  EXPECT_EQ(Variable("all"), "abc");
}

TEST_F(FileTest, AShopListIsReadByALoop) {
  Put("shop.txt", "sword:50\r\nshield:40\r\n");
  Run("#FILE 1 shop.txt;#READ 1 line;#WHILE {@line<>\"[EOF]\"} {#ADDITEM shop @line;#READ 1 line}");
  EXPECT_EQ(Variable("shop"), "sword:50|shield:40");
}

TEST_F(FileTest, WhatTheSystemRefusesIsAParsingError) {
  EXPECT_EQ(Run("#FILE 1 none.txt;#READ 1 x"), "Bad parsing error - /data/none.txt: no such file");
  EXPECT_EQ(scriptFileState.ScriptFileLength[1], 0) << "it stays closed";
  EXPECT_EQ(scriptFileState.ScriptFileNumber[1], 0);
  Effects();
  EXPECT_EQ(Run("#FILE 2 ..;#WRITE 2 x"), "Bad parsing error - /: is a folder");
  EXPECT_EQ(Effects(), (Lines{"speech 1 error", "beep"}));
  EXPECT_EQ(Run("#FILE 1 ..;#READ 1 x"), "Bad parsing error - /: is a folder");
  EXPECT_EQ(Run("#FILE 6 .;#READ 6 x 1"), "Bad parsing error - /data: is a folder");
  EXPECT_TRUE(Run("#DELFILE ..").starts_with("Bad parsing error - "));
  EXPECT_TRUE(ErrorLog().find("Bad parsing error - /: is a folder in command: #DELFILE") == std::string::npos);
}

TEST_F(FileTest, ADriveLetterDoesNotLeaveTheFolder) {
  EXPECT_EQ(Run("#FILE 2 C:a.txt;#WRITE 2 x;#CLOSE 2"), "");
  EXPECT_EQ(memory.files.FileNames("/data/"), Lines{"C:a.txt"});
}

TEST_F(FileTest, AFullDiskIsToldAndTakesNothingAway) {
  Run("#FILE 2 log.txt;#WRITE 2 one;#FILE 6 r.dat;#WRITE 6 one 1");
  FillDisk();
  EXPECT_EQ(Run("#WRITE 2 two"), "Bad parsing error - /data/log.txt: No space left on device");
  EXPECT_EQ(Run("#WRITE 6 two 1"), "Bad parsing error - /data/r.dat: No space left on device");
  EXPECT_EQ(scriptFileState.ScriptFileLength[2], -1) << "it stays open";
  MakeRoom();
  EXPECT_EQ(Run("#WRITE 2 three;#CLOSE 2;#CLOSE 6"), "");
  EXPECT_EQ(Disk("log.txt"), "one\r\nthree\r\n");
  EXPECT_EQ(Disk("r.dat"), Record("one"));
}

TEST_F(FileTest, DelFileTakesAFileAway) {
  Put("a.txt", "x");
  Put("b.txt", "x");
  EXPECT_EQ(Run("#DELFILE A.TXT"), "");
  EXPECT_FALSE(Exists("a.txt"));
  EXPECT_EQ(Run("#DELFILE b.txt anything"), "");
  EXPECT_FALSE(Exists("b.txt"));
  EXPECT_EQ(Run("#DELFILE b.txt"), "Bad parsing error - /data/b.txt: no such file");
  Put("c.ini", "x");
  for (const Refusal& row : {
           Refusal{"#DELFILE c.ini", "Illegal filetype"},
           Refusal{"#DELFILE a.exe", "Illegal filetype"},
           Refusal{"#DELFILE c", "Missing file type"},
           Refusal{"#DELFILE sub\\c.txt", Directories},
           Refusal{"#DELFILE sub/c.txt", Directories},
           Refusal{"#DELFILE c.*", Directories},
       })
    EXPECT_EQ(Run(row.Line), row.Error) << row.Line;
  EXPECT_TRUE(Exists("c.ini"));
}

TEST_F(FileTest, ALineMayHoldAnything) {
  const std::string million(1000000, 'x');
  Put("big.txt", million + "\r\n" + std::string("a\0b\xff", 4) + "\r\n");
  Run("#FILE 1 big.txt");
  EXPECT_EQ(X("#READ 1 x"), million);
  EXPECT_EQ(X("#READ 1 x"), std::string("a\0b\xff", 4));
  EXPECT_EQ(Run("#FILE 2 out.txt;#WRITE 2 @x;#CLOSE 2"), "");
  EXPECT_EQ(Disk("out.txt"), std::string("a\0b\xff\r\n", 6));
}

}  // namespace corvid::test
