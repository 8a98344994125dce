// SPDX-License-Identifier: GPL-3.0-or-later
// Twenty games at once: each has its own slot, scripts, log, window and alarms, whatever the others do.
#include <algorithm>

#include "core/text.h"
#include "running_program.h"

namespace corvid {
namespace {

constexpr int16 Most = 20;

class TwentyGames : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(run.Start());
    run.Do("#GALIAS OnConnect {hello from %Reference}");
    run.Do("#GTRIGGER {Say who*} {I am @me}");
    for (int16 i = 1; i <= Most + 1; ++i) {
      const std::string ref = Ref(i);
      run.Do("#MUD " + ref + " Mud" + ref + " " + ref + ".example 4000 Name" + ref + " secret");
      run.memory.files.Put("/data/Mud" + ref + "/" + ref + ".set", "#VARIABLE me " + ref + "\r\n");
    }
  }
  static std::string Ref(int16 i) { return (i < 10 ? "c0" : "c") + std::to_string(i); }
  std::string Written(int16 slot) { return run.memory.sockets.TakeWritten(slot); }
  std::string LogOf(int16 i) {
    std::string text;
    for (const std::string& name : run.memory.files.FileNames("/data/logs"))
      if (name.starts_with(Ref(i) + " ")) text += run.Read("/data/logs/" + name);
    return text;
  }
  void ConnectAll() {
    for (int16 i = 1; i <= Most; ++i) run.Do("#CONNECT " + Ref(i));
    run.memory.loop.Pass(60000);
  }

  RunningProgram run;
};

TEST_F(TwentyGames, StandEachInItsOwnSlotThoughAllAreSlow) {
  run.memory.sockets.ConnectDelay = 50000;  // each begins while some of the others still connect
  ConnectAll();
  for (int16 i = 1; i <= Most; ++i) {
    ASSERT_TRUE(run.memory.sockets.Connected(i)) << i;
    EXPECT_EQ(run.corvid.sessionState.SessionRef[i], Ref(i));
    EXPECT_EQ(run.memory.sockets.Host(i), Ref(i) + ".example");
    EXPECT_EQ(Written(i), "hello from " + Ref(i) + "\r\n") << "once, and with its own scripts";
    EXPECT_EQ(LogOf(i), "hello from " + Ref(i) + "\r\n");
  }
  EXPECT_EQ(run.Asked(), Texts());
  run.memory.face.Will("Ok");
  run.Do("#CONNECT " + Ref(Most + 1));
  EXPECT_EQ(run.Asked(), Texts({"MSGBOX Corvid|No more free connections--Maximum: 21"}));
  EXPECT_EQ(run.corvid.sessionState.SessionHigh, Most);
}

TEST_F(TwentyGames, AreAllShownLoggedAndTriggeredButOneIsHeard) {
  ConnectAll();
  run.Do("#CHAR c07");
  run.Do("c03::#ALARM 1 {say c03 wakes}");
  for (int16 i = 1; i <= Most; ++i) Written(i);
  run.memory.effects.Clear();
  for (int16 i = 1; i <= Most; ++i) run.memory.sockets.Receive(i, "Say who you are, " + Ref(i) + "\r\n");
  EXPECT_EQ(run.memory.effects.Of("speech"), Texts({"1 Say who you are, c07"}));
  for (int16 i = 1; i <= Most; ++i) {
    EXPECT_EQ(Written(i), "I am " + Ref(i) + "\r\n");
    EXPECT_TRUE(LogOf(i).ends_with("Say who you are, " + Ref(i) + "\r\nI am " + Ref(i) + "\r\n")) << LogOf(i);
    const std::string& window = run.corvid.sessionState.OutputWindow(i).Text();
    EXPECT_NE(window.find("Say who you are, " + Ref(i) + "\r\n"), std::string::npos) << window;
    EXPECT_EQ(run.corvid.sessionState.OutputWindow(i).Visible(), i == 7);
  }
}

TEST_F(TwentyGames, GoOnWhenSomeEndAndAnotherTakesASlot) {
  ConnectAll();
  run.Do("#CHAR c20");
  for (const int16 i : {int16{4}, int16{9}, int16{13}}) run.memory.sockets.CloseByPeer(i);
  for (int16 i = 1; i <= Most; ++i) Written(i);
  run.memory.effects.Clear();
  run.Do("#CONNECT " + Ref(Most + 1));
  EXPECT_EQ(run.corvid.sessionState.SessionRef[4], "c21") << "the first that is down";
  EXPECT_EQ(run.corvid.sessionState.SessionRef[9], "c09") << "a closed slot stays loaded";
  EXPECT_EQ(Written(4), "hello from c21\r\n");
  run.memory.sockets.Receive(4, "Say who\r\n");
  EXPECT_EQ(Written(4), "I am c21\r\n") << "c04's variable has gone with it";
  for (int16 i = 1; i <= Most; ++i) {
    if (i == 4 || i == 9 || i == 13) continue;
    run.memory.sockets.Receive(i, "Say who\r\n");
    EXPECT_EQ(Written(i), "I am " + Ref(i) + "\r\n");
  }
  EXPECT_EQ(LogOf(4).find("c21"), std::string::npos);
}

TEST_F(TwentyGames, KeepTheirAlarmsInTheBackground) {
  ConnectAll();
  run.Do("#CHAR c05");
  run.Do("#ALARM -1 {look}");
  run.Do("#CHAR c06");
  for (int16 i = 1; i <= Most; ++i) Written(i);
  run.memory.loop.Pass(2500);
  EXPECT_EQ(Written(5), "look\r\nlook\r\n");
  EXPECT_EQ(Written(6), "");
}

}  // namespace
}  // namespace corvid
