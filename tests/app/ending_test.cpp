// SPDX-License-Identifier: GPL-3.0-or-later
// How the program ends: what is asked, what is saved, and what is never lost on the way.
#include "running_program.h"

namespace corvid {
namespace {

constexpr const char* Leaving =
    "MSGBOX Disconnect Verification |You are currently connected to the Mud. If you disconnect without first exiting "
    "the Mud normally, you may lose your char's equipment or have ...";
constexpr const char* Changes =
    "MSGBOX Corvid|Would you like to save any changes that you have made to bob or other settings?";
constexpr const char* Variables = "MSGBOX Save Variables|Would you like to save your variables again for bob?";
constexpr const char* VariableFile = "/data/Aard/bob-var.set";
constexpr const char* StateFile = "/data/Aard/bob-char.set";

TEST(Quit, AsksForEachConnectionAndANoKeepsTheProgram) {
  RunningProgram run;
  run.StartAndConnect(0);
  run.Do("#MUD amy Aard aard.example 4000 Amy secret");
  run.Do("#CONNECT amy");
  run.memory.effects.Clear();
  run.memory.face.Will("Yes");
  run.memory.face.Will("No");
  run.Do("#QUIT");
  EXPECT_EQ(run.Asked(), Texts({Leaving, Leaving}));
  EXPECT_FALSE(run.Ended());
  EXPECT_TRUE(run.memory.sockets.Connected(1));
  run.memory.face.Will("Yes");
  run.memory.face.Will("Yes");
  run.Do("#QUIT");
  EXPECT_TRUE(run.Ended());
  EXPECT_FALSE(run.memory.sockets.Connected(1));
  EXPECT_FALSE(run.memory.sockets.Connected(2));
}

TEST(Quit, ASecondWishWhileTheFirstIsAskedAboutAsksNothingMore) {
  RunningProgram run;
  run.StartAndConnect(0);
  int questions = 0;
  run.memory.loop.Idle = [&] {
    if (++questions == 1) run.corvid.quit(false);
    run.memory.face.Will("No");
    return run.memory.face.AnswerDialog();
  };
  run.corvid.quit(false);
  EXPECT_EQ(run.Asked(), Texts({Leaving}));
  EXPECT_FALSE(run.Ended());
}

TEST(Quit, MandatoryAsksNothingAboutConnections) {
  RunningProgram run;
  run.StartAndConnect(0);
  run.corvid.quit(true);
  EXPECT_EQ(run.Asked(), Texts());
  EXPECT_TRUE(run.Ended());
}

TEST(Quit, SavesTheStateOfASimpleCharacterOnYesAlone) {
  for (const bool yes : {true, false}) {
    RunningProgram run;
    run.StartAndConnect(charflag::SimpleControl);
    const std::string before = run.Read(StateFile);
    std::string error;
    run.corvid.symbols.AddAlias("k", "kill", run.corvid.scriptState.SocketOwner[1], "", 0, "kill", error);
    run.memory.face.Will(yes ? "Yes" : "No");
    run.corvid.quit(true);
    EXPECT_EQ(run.Asked(), Texts({Changes}));
    EXPECT_TRUE(run.Ended());
    if (yes) {
      EXPECT_TRUE(run.Read(StateFile).starts_with("#Char bob\r\n\r\n"));
      EXPECT_NE(run.Read(StateFile).find("#alias {k} {kill}\r\n"), std::string::npos);
    } else {
      EXPECT_EQ(run.Read(StateFile), before);
    }
  }
}

TEST(Quit, KeepsVariablesWithoutAskingWhereTheCharacterWantsIt) {
  RunningProgram run;
  run.StartAndConnect(charflag::KeepVariables);
  run.Define("gold", "12");
  run.corvid.quit(true);
  EXPECT_EQ(run.Asked(), Texts());
  EXPECT_EQ(run.Read(VariableFile), "#Var gold {12} {}\r\n");
  EXPECT_TRUE(run.memory.files.IsPrivate(VariableFile));
}

TEST(Quit, AsksAboutVariablesThatWereSavedBefore) {
  for (const bool yes : {true, false}) {
    RunningProgram run;
    run.memory.files.Put(VariableFile, "; from the last run\r\n");
    run.StartAndConnect(0);
    run.Define("gold", "12");
    run.memory.face.Will(yes ? "Yes" : "No");
    run.corvid.quit(true);
    EXPECT_EQ(run.Asked(), Texts({Variables}));
    EXPECT_EQ(run.Exists(VariableFile), yes);
    if (!yes) continue;
    EXPECT_EQ(run.Read(VariableFile), "#Var gold {12} {}\r\n");
  }
}

TEST(Quit, AsksNothingAboutVariablesThatWereNeverSaved) {
  RunningProgram run;
  run.StartAndConnect(0);
  run.Define("gold", "12");
  run.corvid.quit(true);
  EXPECT_EQ(run.Asked(), Texts());
  EXPECT_FALSE(run.Exists(VariableFile));
}

TEST(Quit, APlayerWhoseDiskIsFullMayStay) {
  RunningProgram run;
  run.StartAndConnect(charflag::KeepVariables);
  run.Define("gold", "12");
  run.FillDisk();
  run.memory.face.Will("Yes");  // disconnect
  run.memory.face.Will("Ok");   // the file cannot be written
  run.memory.face.Will("No");   // leave all the same
  run.corvid.quit(false);
  EXPECT_EQ(run.Asked(), Texts({Leaving, std::string("MSGBOX Error|Error creating file ") + VariableFile,
                                "MSGBOX Corvid|Not everything could be saved. Would you like to leave all the same?"}));
  EXPECT_FALSE(run.Ended());
  EXPECT_TRUE(run.memory.sockets.Connected(1));
  EXPECT_EQ(run.Variable("gold"), "12");
  run.MakeRoom();
  run.memory.face.Will("Yes");
  run.corvid.quit(false);
  EXPECT_TRUE(run.Ended());
  EXPECT_EQ(run.Read(VariableFile), "#Var gold {12} {}\r\n");
}

TEST(Quit, WritesScriptsThatWereChangedWhereTheyAreSavedByTheWay) {
  for (const bool automatic : {true, false}) {
    RunningProgram run;
    run.memory.files.Put("/data/fight.set", "#alias {k} {kill}\r\n");
    ASSERT_TRUE(run.Start());
    run.Do("#LOAD fight.set");
    run.corvid.optionsState.AutoSave = automatic;
    run.corvid.buffers.MoveBuffers(run.corvid.buffers.GetBufferNumber("/data/fight.set"));
    run.corvid.bufferState.EntryBox.SetText("#alias {k} {kick}\r\n");
    run.corvid.quit(false);
    EXPECT_EQ(run.Asked(), Texts());
    EXPECT_TRUE(run.Ended());
    EXPECT_EQ(run.Read("/data/fight.set"), automatic ? "#alias {k} {kick}\r\n" : "#alias {k} {kill}\r\n");
  }
}

TEST(Quit, AChangedScriptThatTheDiskRefusesMayKeepThePlayerHere) {
  RunningProgram run;
  run.memory.files.Put("/data/fight.set", "#alias {k} {kill}\r\n");
  ASSERT_TRUE(run.Start());
  run.Do("#LOAD fight.set");
  const int16 number = run.ChangeScript("/data/fight.set", "#alias {k} {kick}\r\n");
  run.FillDisk();
  run.memory.face.Will("No");
  run.corvid.quit(false);
  EXPECT_EQ(run.Asked(), Texts({"MSGBOX Corvid|Not everything could be saved. Would you like to leave all the same?"}));
  EXPECT_FALSE(run.Ended());
  EXPECT_TRUE(run.corvid.buffers.IsModified(number));
}

TEST(Quit, EndsAllTheSameWhenItMust) {
  RunningProgram run;
  run.StartAndConnect(charflag::KeepVariables);
  run.FillDisk();
  run.memory.face.Will("Ok");
  run.corvid.quit(true);
  EXPECT_TRUE(run.Ended());
  EXPECT_EQ(run.memory.face.AnswersLeft(), 0U);
}

TEST(Quit, APlayerWhoHasGoneLosesNothing) {
  RunningProgram run;
  run.memory.files.Put(VariableFile, "; from the last run\r\n");
  run.StartAndConnect(charflag::SimpleControl);
  run.Define("gold", "12");
  run.memory.face.Player = false;
  run.corvid.quit(true);
  EXPECT_TRUE(run.Ended());
  EXPECT_EQ(run.Asked(), Texts());
  EXPECT_EQ(run.Read(VariableFile), "#Var gold {12} {}\r\n");
  EXPECT_TRUE(run.Read(StateFile).starts_with("#Char bob\r\n\r\n"));
}

TEST(Quit, APlayerWhoGoesWhileItAsksEndsTheProgram) {
  RunningProgram run;
  run.memory.files.Put(VariableFile, "; from the last run\r\n");
  run.StartAndConnect(0);
  run.memory.loop.Idle = [&] {
    run.memory.face.Player = false;
    run.corvid.quit(true);  // as a face does at the end of its input
    return true;
  };
  run.corvid.quit(false);
  EXPECT_EQ(run.Asked(), Texts({Leaving}));
  EXPECT_TRUE(run.Ended());
  EXPECT_TRUE(run.Exists(VariableFile));
}

TEST(Quit, TellsADisconnectThatFailsAndEnds) {
  RunningProgram run;
  run.StartAndConnect(0);
  run.memory.sockets.DisconnectError = 107;
  run.memory.face.Will("Ok");
  run.corvid.quit(true);
  EXPECT_EQ(run.Asked(), Texts({"MSGBOX Corvid|Unable to disconnect. Error 107"}));  // one blank
  EXPECT_TRUE(run.Ended());
}

TEST(Quit, ClosesTheLogs) {
  RunningProgram run;
  run.StartAndConnect(0);
  EXPECT_EQ(run.corvid.sessionState.LogOpen[1], 1);
  run.corvid.quit(true);
  EXPECT_EQ(run.corvid.sessionState.LogOpen[1], 0);
}

// A program that has something to save in every place: a variable, the state of the character and a changed script.
struct UnsavedProgram : RunningProgram {
  UnsavedProgram() {
    memory.files.Put("/data/fight.set", "#alias {k} {kill}\r\n");
    StartAndConnect(charflag::SimpleControl | charflag::KeepVariables);
    Define("gold", "12");
    Do("#LOAD fight.set");
    ChangeScript("/data/fight.set", "#alias {k} {kick}\r\n");
    memory.effects.Clear();
    memory.face.Player = false;
    memory.loop.BeforePump = [this] { ++pumps; };
  }
  int pumps = 0;  // nothing may wait for the player or the network
};

TEST(SaveAtOnce, WritesAllThatAMandatoryEndWritesAndAsksNothing) {
  UnsavedProgram run;
  run.corvid.start.SaveAtOnce();
  EXPECT_EQ(run.Asked(), Texts());
  EXPECT_EQ(run.pumps, 0);
  EXPECT_EQ(run.Read(VariableFile), "#Var gold {12} {}\r\n");
  EXPECT_TRUE(run.Read(StateFile).starts_with("#Char bob\r\n\r\n"));
  EXPECT_EQ(run.Read("/data/fight.set"), "#alias {k} {kick}\r\n");
  EXPECT_EQ(run.corvid.sessionState.LogOpen[1], 0);
  EXPECT_FALSE(run.memory.sockets.Connected(1));
}

TEST(SaveAtOnce, SavesInTheMidstOfAnEndThatWaitsForAnAnswer) {
  RunningProgram run;
  run.memory.files.Put(VariableFile, "; from the last run\r\n");
  run.StartAndConnect(0);
  run.Define("gold", "12");
  run.memory.loop.Idle = [&] {
    run.memory.face.Player = false;
    run.corvid.start.SaveAtOnce();
    EXPECT_EQ(run.Read(VariableFile), "#Var gold {12} {}\r\n");
    return true;
  };
  run.corvid.quit(false);
  EXPECT_EQ(run.Asked(), Texts({Leaving}));
}

TEST(SaveAtOnce, ADiskThatRefusesKeepsNothingElseFromBeingSaved) {
  UnsavedProgram run;
  run.memory.files.Fail = [](const std::string& operation, const std::string& path) {
    return operation == "write" && path == StateFile ? "Input/output error" : "";
  };
  run.corvid.start.SaveAtOnce();
  EXPECT_EQ(run.pumps, 0);
  EXPECT_EQ(run.Read(VariableFile), "#Var gold {12} {}\r\n");
  EXPECT_EQ(run.Read("/data/fight.set"), "#alias {k} {kick}\r\n");
  EXPECT_EQ(run.corvid.sessionState.LogOpen[1], 0);
}

TEST(CloseOfTheWindow, AsksOnlyWhileTheActiveSessionIsConnected) {
  RunningProgram run;
  run.StartAndConnect(0);
  run.memory.face.Will("No");
  EXPECT_FALSE(run.memory.face.Events->CloseRequested());
  EXPECT_EQ(run.Asked(), Texts({"MSGBOX aard.example|Do you wish to terminate this connection?"}));
  run.memory.face.Will("Yes");
  EXPECT_TRUE(run.memory.face.Events->CloseRequested());
  run.memory.effects.Clear();
  run.Do("#CHARACTER global");  // the connected session is in the background now
  EXPECT_TRUE(run.memory.face.Events->CloseRequested());
  EXPECT_EQ(run.Asked(), Texts());
}

}  // namespace
}  // namespace corvid
