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
  run.Do("#CHAR bob");
  Forget();
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
  run.Do("#CHAR bob");
  Forget();
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
  run.Do("#CHAR bob");
  Forget();
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

TEST_F(TwoGames, ASlowServerIsHeardWhole) {
  run.Do("#CHAR bob");
  Forget();
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
