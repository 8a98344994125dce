// SPDX-License-Identifier: GPL-3.0-or-later
// A disk that is full or read-only: the player is told, nothing in memory is lost, the program goes on.
#include "core/text.h"
#include "running_program.h"

namespace corvid {
namespace {

bool Holds(const std::string& text, const std::string& wanted) {
  return text.find(wanted) != std::string::npos;
}

TEST(RefusingDisk, StartsOnAFolderThatTakesNothing) {
  RunningProgram run;
  run.memory.files.Put("/data/corvid.set", "#Configure MarginBell 60\r\n");
  run.FillDisk();
  run.memory.face.Will("Ok");  // the sounds folder
  run.memory.face.Will("Ok");  // the logs folder
  ASSERT_TRUE(run.Start());
  EXPECT_EQ(run.Asked().size(), 2U) << run.memory.effects.Transcript();
  EXPECT_EQ(run.corvid.optionsState.MarginBell, 60);
  EXPECT_TRUE(run.memory.face.MainShown());
}

TEST(RefusingDisk, ConnectsWithoutScriptsTableAndLog) {
  RunningProgram run;
  ASSERT_TRUE(run.Start());
  run.FillDisk();
  run.Do("#MUD bob Aard aard.example 4000 Bob secret");
  for (int i = 0; i < 2; ++i) run.memory.face.Will("Ok");
  run.memory.effects.Clear();
  run.Do("#CONNECT bob");
  EXPECT_EQ(run.Asked(), Texts({"MSGBOX Corvid|Error opening Character.mud file in /data/"}));
  EXPECT_TRUE(Holds(run.memory.effects.Transcript(), "speech 1 Error logged.\n"));
  EXPECT_TRUE(Holds(run.ErrorLog(), "The file error.log could not be written. Error: /data/Aard: No space left"));
  EXPECT_EQ(run.corvid.sessionState.LogOpen[1], 0);
  EXPECT_EQ(run.corvid.sessionState.CharacterRef[2], "bob");
  // The game is played all the same.
  run.memory.sockets.Receive(1, "Welcome!\r\n");
  EXPECT_TRUE(Holds(run.memory.effects.Transcript(), "speech 1 Welcome!\n"));
  run.Do("look");
  EXPECT_EQ(run.memory.sockets.TakeWritten(1), "look\r\n");
  // With room again the next connection writes everything.
  run.MakeRoom();
  run.memory.sockets.CloseByPeer(1);
  run.Do("#CONNECT bob");
  EXPECT_TRUE(run.Exists("/data/Character.mud"));
  EXPECT_EQ(run.Read("/data/Aard/bob-Char.set"), "#Char bob\r\n");
  EXPECT_EQ(run.corvid.sessionState.LogOpen[1], 1);
}

TEST(RefusingDisk, ALogThatFailsWhileTheGameTalksIsToldAndTriedAgain) {
  RunningProgram run;
  run.StartAndConnect(0);
  run.FillDisk();
  run.memory.sockets.Receive(1, "one\r\n");
  EXPECT_TRUE(Holds(run.memory.effects.Transcript(), "speech 1 Error logged.\n"));
  EXPECT_TRUE(Holds(run.memory.effects.Transcript(), "speech 1 one\n"));
  EXPECT_TRUE(Holds(run.corvid.sessionState.OutputWindow(1).Text(), "one"));
  EXPECT_TRUE(run.corvid.optionsState.OutputLog);
  run.MakeRoom();
  run.memory.sockets.Receive(1, "two\r\n");
  bool found = false;
  for (const std::string& name : run.memory.files.FileNames("/data/logs"))
    found = found || Holds(run.Read("/data/logs/" + name), "two\r\n");
  EXPECT_TRUE(found);
}

TEST(RefusingDisk, ALogThatFailsWhileThePlayerTypesGoesOffAndTheLineGoesOn) {
  RunningProgram run;
  run.StartAndConnect(0);
  run.FillDisk();
  run.Do("look");
  EXPECT_FALSE(run.corvid.optionsState.OutputLog);
  EXPECT_TRUE(Holds(run.ErrorLog(), "Error opening the Output Log "));
  EXPECT_EQ(run.memory.sockets.TakeWritten(1), "look\r\n");
}

TEST(RefusingDisk, ATypedLineIsOnItsWayBeforeASlowDiskIsAsked) {
  RunningProgram run;
  run.StartAndConnect(0);
  std::string sent;
  int flushes = 0;
  run.memory.files.Fail = [&](const std::string& operation, const std::string&) {
    if (operation == "flush" && ++flushes == 1) sent = run.memory.sockets.TakeWritten(1);
    return std::string();
  };
  run.Do("look");
  EXPECT_EQ(flushes, 1);
  EXPECT_EQ(sent, "look\r\n");
}

TEST(RefusingDisk, AChangedScriptStaysChanged) {
  RunningProgram run;
  run.StartAndConnect(0);
  const int16 number = run.ChangeScript("/data/Aard/bob.set", "#alias {k} {kill}\r\n");
  run.FillDisk();
  run.memory.face.Will("Ok");
  run.Do("#SAVE");
  EXPECT_EQ(run.Asked(), Texts({"MSGBOX Error|Error creating file /data/Aard/bob.set"}));
  EXPECT_TRUE(run.corvid.buffers.IsModified(number));
  run.MakeRoom();
  run.Do("#SAVE");
  EXPECT_EQ(run.Read("/data/Aard/bob.set"), "#alias {k} {kill}\r\n");
}

TEST(RefusingDisk, OptionsAreToldAndStayInForce) {
  RunningProgram run;
  ASSERT_TRUE(run.Start());
  run.Do("#CONFIGURE MarginBell 50");
  run.FillDisk();
  run.memory.face.Will("Ok");
  run.memory.effects.Clear();
  EXPECT_FALSE(run.corvid.saving.SaveOptionsFile());
  EXPECT_EQ(run.Asked(), Texts({"MSGBOX Error|Error creating file /data/corvid.set"}));
  EXPECT_EQ(run.corvid.optionsState.MarginBell, 50);
}

TEST(RefusingDisk, AFirstStartGoesOnWithTheChosenSpeech) {
  RunningProgram run;
  run.memory.files.Remove("/data/speech.ini");
  run.memory.files.Fail = [](const std::string& operation, const std::string& path) {
    return operation == "write" && EndsWithText(path, "speech.ini") ? "read-only" : "";
  };
  run.memory.face.Will("Ok");                      // interim speech
  run.memory.face.Will({"OK", {}, {{1, 2}}, {}});  // the engine
  run.memory.face.Will("Ok");                      // next step
  run.memory.face.Will("Ok");                      // the file cannot be written
  ASSERT_TRUE(run.Start());
  EXPECT_EQ(run.memory.face.AnswersLeft(), 0U);
  EXPECT_EQ(run.Asked().back(), "MSGBOX Error|Error creating file /data/speech.ini");
  EXPECT_EQ(run.corvid.speechState.SpeechType[1], 3);
}

TEST(RefusingDisk, ACharacterWhoseVariablesCannotBeKeptStaysLoaded) {
  RunningProgram run;
  run.StartAndConnect(charflag::KeepVariables);
  run.Define("gold", "12");
  run.FillDisk();
  run.memory.face.Will("Ok");
  run.Do("#RELOAD");
  EXPECT_EQ(run.Asked(), Texts({"MSGBOX Error|Error creating file /data/Aard/bob-var.set"}));
  EXPECT_EQ(run.Variable("gold"), "12");
  // Nor does another character take its slot.
  run.memory.sockets.CloseByPeer(1);
  run.Do("#MUD amy Aard aard.example 4000 Amy secret");
  for (int i = 0; i < 3; ++i) run.memory.face.Will("Ok");
  run.Do("#CONNECT amy");
  EXPECT_EQ(run.Variable("gold"), "12");
  EXPECT_EQ(run.corvid.sessionState.SessionRef[1], "bob");
}

TEST(Start, ReadsOptionsAndCharactersBeforeItsScript) {
  RunningProgram run;
  run.memory.files.Put("/data/corvid.set", "!Configure CommandChar {~!}\r\n!Configure EscapeChar {~~}\r\n");
  run.memory.files.Put("/data/Character.mud",
                       Scramble("\"Aard\",\"host\",\"\",\"4000\",\"Bob\",\"bob\",\"\",0,\"\"\r\n"));
  run.memory.files.Put("/data/start.set", "!OFFLINE bob NOLOAD\r\n");
  ASSERT_TRUE(run.Start());
  EXPECT_EQ(run.ErrorLog(), "");
  EXPECT_EQ(run.corvid.sessionState.SessionRef[0], "bob");
  EXPECT_EQ(run.memory.effects.Of("resize"), Texts({"90"}));
}

TEST(Start, ShowsTheWindowAsTheOptionsSay) {
  RunningProgram run;
  run.memory.files.Put("/data/corvid.set", "#Configure OutputWindowPercent 60\r\n#Configure ColourDisplay on\r\n");
  ASSERT_TRUE(run.Start());
  ASSERT_FALSE(run.memory.effects.Of("resize").empty());
  EXPECT_EQ(run.memory.effects.Of("resize").back(), "60");
  EXPECT_TRUE(run.corvid.sessionState.RichFamily);
  EXPECT_EQ(run.memory.face.Title, "Corvid  [Not connected]");
}

TEST(Start, GoesOnWithoutTheFirstSocket) {
  RunningProgram run;
  run.memory.sockets.FailCreate = true;
  run.memory.face.Will("Ok");
  ASSERT_TRUE(run.Start());
  EXPECT_EQ(run.Asked(), Texts({"MSGBOX Corvid|Error initializing Socket Control, err = 51"}));
  EXPECT_TRUE(run.memory.face.MainShown());
}

TEST(Start, WhatIsTypedAfterItBelongsToNoScript) {
  RunningProgram run;
  run.memory.files.Put("/data/full.set", "#CONFIGURE MarginBell 33\r\n");
  run.memory.face.Will("Yes");
  ASSERT_TRUE(run.Start());
  EXPECT_EQ(run.corvid.optionsState.MarginBell, 33);
  EXPECT_EQ(run.corvid.scriptState.DefiningBuffer, 0);
}

TEST(Start, GoesOnBehindAStartScriptThatFails) {
  RunningProgram run;
  run.memory.files.Put("/data/start.set", "#CONFIGURE MarginBell 33\r\nno command\r\n");
  run.memory.face.Will("Ok");  // the error
  ASSERT_TRUE(run.Start());
  EXPECT_EQ(run.corvid.optionsState.MarginBell, 33);
  EXPECT_TRUE(Holds(run.ErrorLog(), "-- Error found in file /data/start.set"));
  EXPECT_EQ(run.corvid.bufferState.EntryBox.Text(), "#CONFIGURE MarginBell 33\r\nno command\r\n");
  EXPECT_TRUE(run.memory.face.MainShown());
}

TEST(Start, ErrorsBeforeTheFolderIsSettledLeaveNoFileAnywhere) {
  RunningProgram run;
  run.corvid.upcalls.errors.UnknownError("too early", "Form_Load", {});
  EXPECT_FALSE(run.Exists("error.log"));
  EXPECT_FALSE(run.Exists("/error.log"));
  EXPECT_TRUE(Holds(run.ErrorLog(), "Error: too early in Form_Load"));
}

TEST(FullImage, BringsItsOptionsAndItsCharactersWithoutConnectingThem) {
  RunningProgram first;
  first.StartAndConnect(0);
  first.corvid.quit(true);

  RunningProgram second;
  second.memory.files = first.memory.files;
  second.memory.files.Put("/data/full.set", "#KillAll\r\n#Configure MarginBell 44\r\n#OffLine bob NoLoad\r\n\r\n");
  second.memory.face.Will("Yes");
  ASSERT_TRUE(second.Start());
  EXPECT_EQ(second.ErrorLog(), "");
  EXPECT_EQ(second.corvid.optionsState.MarginBell, 44);
  EXPECT_EQ(second.corvid.sessionState.SessionRef[0], "bob");
  EXPECT_FALSE(second.memory.sockets.Connected(0));
}

}  // namespace
}  // namespace corvid
