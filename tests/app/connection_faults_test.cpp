// SPDX-License-Identifier: GPL-3.0-or-later
// Connections that break in every way that they can, with another game played beside them.
#include "core/text.h"
#include "running_program.h"

namespace corvid {
namespace {

class TwoGames : public testing::Test {
 protected:
  void SetUp() override {
    run.StartAndConnect(0);
    run.Do("#MUD amy Aard amy.example 4000 Amy secret");
    run.Do("#CONNECT amy");
    ASSERT_TRUE(run.memory.sockets.Connected(2));
    run.memory.loop.Pass(600);  // the job of the start
    Forget();
  }
  void Forget() {
    run.memory.effects.Clear();
    run.memory.sockets.TakeWritten(1);
    run.memory.sockets.TakeWritten(2);
  }
  Texts Heard() { return run.memory.effects.Of("speech"); }
  void PlayBob() {
    run.Do("#CHAR bob");
    Forget();
  }
  // Amy's game goes on whatever has happened to Bob's.
  void AmyPlays() {
    run.Do("#CHAR amy");
    Forget();
    run.memory.sockets.Receive(2, "All is well.\r\n");
    EXPECT_EQ(Heard(), Texts({"1 All is well."}));
    run.Do("look");
    EXPECT_EQ(run.memory.sockets.TakeWritten(2), "look\r\n");
  }
  std::string LogOf(const std::string& reference) {
    std::string text;
    for (const std::string& name : run.memory.files.FileNames("/data/logs"))
      if (name.starts_with(reference)) text += run.Read("/data/logs/" + name);
    return text;
  }
  void Reconnect() {
    run.memory.clock.Advance(5000);
    run.Do("#CONNECT bob");
    EXPECT_TRUE(run.memory.sockets.Connected(1));
    Forget();
    run.memory.sockets.Receive(1, "Welcome back.\r\n");
    EXPECT_EQ(Heard(), Texts({"1 Welcome back."}));
  }

  RunningProgram run;
};

TEST_F(TwoGames, RefusedIsToldByTheHostsName) {
  run.memory.sockets.CloseByPeer(1);
  Forget();
  run.memory.sockets.OnConnectAnswer = MemorySockets::Answer::Refuse;
  run.memory.face.Will("Ok");
  run.Do("#CONNECT bob");
  run.memory.loop.Pass(10);
  EXPECT_EQ(run.Asked(), Texts({"MSGBOX Corvid|Unable to connect to aard.example"}));
  EXPECT_EQ(run.memory.face.Title, "Corvid bob [Not connected]");
  run.memory.sockets.OnConnectAnswer = MemorySockets::Answer::Accept;
  AmyPlays();
  Reconnect();
}

TEST_F(TwoGames, AServerThatNeverAnswersIsToldAndMeanwhileTheOtherIsPlayed) {
  run.memory.sockets.CloseByPeer(1);
  Forget();
  run.memory.sockets.OnConnectAnswer = MemorySockets::Answer::Never;
  run.memory.face.Will("Ok");
  run.Do("#CONNECT bob");
  run.memory.loop.Pass(1000);
  AmyPlays();
  run.memory.loop.Pass(600000);
  EXPECT_EQ(run.Asked(), Texts({"MSGBOX Corvid|Unable to connect to aard.example"}));
  run.memory.sockets.OnConnectAnswer = MemorySockets::Answer::Accept;
  Reconnect();
}

TEST_F(TwoGames, ResetInTheMiddleOfALineKeepsWhatHasCome) {
  PlayBob();
  run.memory.sockets.Receive(1, "The dragon breathes\r\nfire at y");
  run.memory.sockets.Reset(1);
  run.memory.loop.Pass(200);
  const Texts heard = Heard();
  EXPECT_NE(std::find(heard.begin(), heard.end(), "1 The dragon breathes"), heard.end());
  EXPECT_NE(std::find(heard.begin(), heard.end(), "1 fire at y"), heard.end());
  EXPECT_NE(std::find(heard.begin(), heard.end(), "5 Connection closed"), heard.end());
  EXPECT_NE(LogOf("bob").find("The dragon breathes\r\nfire at y"), std::string::npos) << LogOf("bob");
  EXPECT_EQ(run.Asked(), Texts());
  AmyPlays();
  Reconnect();
}

TEST_F(TwoGames, AHalfOpenConnectionCanBeLeft) {
  run.memory.sockets.HalfOpen = true;
  PlayBob();
  for (int i = 0; i < 100; ++i) run.Do("look");
  run.memory.loop.Pass(60000);
  EXPECT_EQ(Heard(), Texts());
  EXPECT_TRUE(run.memory.sockets.Connected(1));
  run.memory.face.Will("Yes");
  run.corvid.sessions.CloseMud(1);
  EXPECT_FALSE(run.memory.sockets.Connected(1));
  run.memory.sockets.HalfOpen = false;
  AmyPlays();
  Reconnect();
}

TEST_F(TwoGames, AServerThatReadsNothingCostsItsConnectionAlone) {
  run.memory.sockets.WriteRoom = 10;
  PlayBob();
  run.Do("look");
  EXPECT_EQ(run.memory.sockets.TakeWritten(1), "look\r\n");
  run.memory.face.Will("Ok");
  run.Do("north");
  EXPECT_EQ(run.Asked(), Texts({"MSGBOX Corvid|An error occurred during the transmission to the Mud.  Error = 105"}));
  EXPECT_FALSE(run.memory.sockets.Connected(1));
  run.memory.sockets.WriteRoom = std::string::npos;
  AmyPlays();
  Reconnect();
}

TEST_F(TwoGames, AFailingAnswerToTheServerCostsItsConnectionAlone) {
  run.memory.sockets.FailWrites = true;
  run.memory.face.Will("Ok");
  run.memory.sockets.Receive(1, "\xFF\xFD\x18");  // DO terminal type
  EXPECT_EQ(run.Asked(), Texts({"MSGBOX Corvid|An error occurred during the write.  Error 32"}));
  EXPECT_FALSE(run.memory.sockets.Connected(1));
  run.memory.sockets.FailWrites = false;
  AmyPlays();
  Reconnect();
}

TEST_F(TwoGames, AConnectionThatBeginsWhileAFailureIsToldIsReadAndStays) {
  run.memory.sockets.FailWrites = true;
  const int16 bob = run.corvid.scriptState.SocketOwner[1];
  run.memory.loop.Post([&] {
    run.memory.sockets.FailWrites = false;
    run.memory.sockets.CloseByPeer(1);
    EXPECT_EQ(run.corvid.sessions.OpenMud(bob, 0), 0);
    run.memory.loop.Pass(1);
    Forget();
    run.memory.sockets.Receive(1, "Welcome back.\r\n");
  });
  run.memory.face.Will("Ok");
  run.memory.sockets.Receive(1, "\xFF\xFD\x18");  // DO terminal type
  const Texts heard = Heard();
  EXPECT_NE(std::find(heard.begin(), heard.end(), "1 Welcome back."), heard.end());
  EXPECT_TRUE(run.memory.sockets.Connected(1)) << "the message was about the connection before";
  AmyPlays();
}

TEST_F(TwoGames, WhatTheNetworkTakesInPiecesArrivesWholeAndInOrder) {
  PlayBob();
  MemorySockets& sockets = run.memory.sockets;
  sockets.Congest(1, 3);
  run.Do("look");
  run.Do("north");
  sockets.Receive(1, "\xFF\xFD\x18");  // DO terminal type is answered behind what waits
  EXPECT_EQ(sockets.TakeWritten(1), "loo");
  run.memory.loop.Pass(60000);
  EXPECT_EQ(sockets.TakeWritten(1), "");
  sockets.Drain(1, 4);
  EXPECT_EQ(sockets.TakeWritten(1), "k\r\nn");
  run.Do("#CHAR amy");
  run.Do("sing");
  EXPECT_EQ(sockets.TakeWritten(2), "sing\r\n");
  sockets.Drain(1);
  EXPECT_EQ(sockets.TakeWritten(1), "orth\r\n\xFF\xFB\x18");
  EXPECT_EQ(run.Asked(), Texts());
  AmyPlays();
}

TEST_F(TwoGames, HalfALineThatWasTakenIsNeitherEndedNorSentAgain) {
  PlayBob();
  MemorySockets& sockets = run.memory.sockets;
  sockets.Congest(1, 3);
  run.Do("look");
  run.Do("north");
  sockets.Reset(1);
  EXPECT_EQ(sockets.TakeWritten(1), "loo");
  EXPECT_EQ(Heard(), Texts({"5 Connection closed"}));
  EXPECT_EQ(run.Asked(), Texts());
  const std::string log = LogOf("bob");
  EXPECT_NE(log.find("look\r\n"), std::string::npos) << log;
  EXPECT_NE(log.find("north\r\n"), std::string::npos) << log;
  AmyPlays();
  Reconnect();
  EXPECT_EQ(sockets.TakeWritten(1), "");
  run.Do("#CHAR bob");
  run.Do("look");
  EXPECT_EQ(sockets.TakeWritten(1), "look\r\n");
}

TEST_F(TwoGames, AConnectionThatWasHalfOpenEndsAsALostOne) {
  run.memory.sockets.HalfOpen = true;
  PlayBob();
  run.Do("look");
  run.memory.loop.Pass(900000);
  run.memory.sockets.Reset(1, 110);
  EXPECT_EQ(Heard(), Texts({"5 Connection closed"}));
  EXPECT_EQ(run.memory.face.Title, "Corvid bob [Not connected]");
  run.memory.sockets.HalfOpen = false;
  run.memory.face.Will("No");
  run.Do("look");
  EXPECT_EQ(run.Asked(), Texts({"MSGBOX Connect|Would you like to connect bob?"}));
  AmyPlays();
  Reconnect();
}

// A trigger that waits is entered again by the next line, and the one after. A game that goes on talking fills no stack
// by that: from some depth on the trigger fails, which is told, and every line is heard and logged.
TEST_F(TwoGames, LinesThatComeWhileEachTriggerWaitsDoNotPileUpWithoutEnd) {
  run.Do("#CHAR bob");
  run.Do("#VARIABLE seen 0");
  run.Do("#TRIGGER {line *} {#MATH seen @seen+1;#WAIT 30}");
  Forget();
  constexpr int lines = 3000;
  int sent = 0;
  const auto talk = run.corvid.platform.timers.Create([&] {
    if (sent == lines) return;
    run.memory.sockets.Receive(1, "line " + std::to_string(++sent) + "\r\n");
  });
  talk->SetInterval(5);
  talk->SetEnabled(true);
  run.memory.loop.Pass(60000);
  EXPECT_EQ(sent, lines);
  EXPECT_EQ(run.Variable("seen"), std::to_string(Dispatcher::FrameLimit));
  EXPECT_NE(run.ErrorLog().find("recursive check - probable infinite loop detected in command: #MATH seen @seen+1"),
            std::string::npos);
  std::string log;
  for (int number = 1; number <= lines; ++number) log += "line " + std::to_string(number) + "\r\n";
  EXPECT_NE(LogOf("bob").find(log), std::string::npos);
  AmyPlays();
}

TEST_F(TwoGames, ASlowServerIsHeardWhole) {
  PlayBob();
  for (const char c : std::string("You wake up.\r\nIt is dark.\r\n")) {
    run.memory.sockets.Receive(1, std::string(1, c));
    run.memory.loop.Pass(30);
  }
  run.memory.loop.Pass(200);
  // What comes so slowly is said as it comes; blanks say nothing, but the window has them.
  std::string all;
  for (const std::string& words : Heard()) all += words.substr(2);
  EXPECT_EQ(all, "Youwakeup.Itisdark.");
  AmyPlays();
}

TEST_F(TwoGames, ConnectionsThatComeAndGoLeaveNothingBehind) {
  for (int i = 0; i < 200; ++i) {
    run.memory.sockets.CloseByPeer(1);
    run.Do("#CONNECT bob");
  }
  EXPECT_EQ(run.corvid.sessionState.SessionHigh, 2);
  EXPECT_TRUE(run.memory.sockets.Connected(1));
  EXPECT_EQ(run.Asked(), Texts());
  AmyPlays();
}

}  // namespace
}  // namespace corvid
