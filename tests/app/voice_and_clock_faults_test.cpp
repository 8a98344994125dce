// SPDX-License-Identifier: GPL-3.0-or-later
// A voice that dies, and a clock that is set: what goes on all the same.
#include "core/keys.h"
#include "running_program.h"

namespace corvid {
namespace {

class DeadVoice : public testing::TestWithParam<MemorySpeech::Death> {};

TEST_P(DeadVoice, ShowsLogsAndSendsAllTheSame) {
  RunningProgram run;
  run.StartAndConnect(0);
  run.memory.speech.Died = GetParam();
  run.memory.sockets.Receive(1, "one\r\ntwo\r\n");
  EXPECT_EQ(run.memory.effects.Of("speech"), Texts());
  EXPECT_NE(run.corvid.sessionState.OutputWindow(1).Text().find("one\r\ntwo"), std::string::npos);
  run.Do("look");
  EXPECT_EQ(run.memory.sockets.TakeWritten(1), "look\r\n");
  const Texts logs = run.memory.files.FileNames("/data/logs");
  ASSERT_EQ(logs.size(), 1U);
  EXPECT_NE(run.Read("/data/logs/" + logs[0]).find("one\r\ntwo\r\n"), std::string::npos);
  for (const int16 key : {keycode::Control, keycode::Up, keycode::Tab}) {
    run.corvid.keyboard.KeyDown(key, 0);
    run.corvid.keyboard.KeyUp(key, 0);
  }
  run.memory.loop.Pass(100);
  // Back again, it says what comes from now on.
  run.memory.speech.Died = MemorySpeech::Death::None;
  run.memory.sockets.Receive(1, "three\r\n");
  EXPECT_EQ(run.memory.effects.Of("speech"), Texts({"1 three"}));
}

INSTANTIATE_TEST_SUITE_P(Kinds, DeadVoice, testing::Values(MemorySpeech::Death::Silent, MemorySpeech::Death::Broken));

TEST(DeadVoice, ThatNeverWorkedIsToldOnTheScreenOnce) {
  RunningProgram run;
  run.memory.speech.Works = false;
  ASSERT_TRUE(run.Start());
  run.Do("#MUD bob Aard aard.example 4000 Bob secret");
  run.Do("#CONNECT bob");
  run.memory.sockets.Receive(1, "one\r\ntwo\r\n");
  EXPECT_EQ(run.memory.effects.Of("notice"),
            Texts({"Error! Error initializing screen reader or MS SAPI. There is no voice in this test"}));
  EXPECT_NE(run.corvid.sessionState.OutputWindow(1).Text().find("two"), std::string::npos);
}

struct Jump {
  const char* Name;
  DateTime From, To;
};

void PrintTo(const Jump& jump, std::ostream* out) {
  *out << jump.Name;
}

class ClockThatJumps : public testing::TestWithParam<Jump> {};

TEST_P(ClockThatJumps, HurtsNeitherTheGameNorItsTimers) {
  RunningProgram run;
  run.memory.clock.SetNow(GetParam().From);
  run.StartAndConnect(0);
  run.Do("#ALARM 5 {tick}");
  run.memory.sockets.Receive(1, "one\r\nand a prompt>");
  run.memory.clock.SetNow(GetParam().To);
  run.memory.loop.Pass(150);
  // The unfinished line waits by a clock that nobody sets.
  EXPECT_EQ(run.memory.effects.Of("speech"), Texts({"1 one", "1 and a prompt>"}));
  run.Do("look");
  EXPECT_NE(run.memory.sockets.TakeWritten(1).find("look\r\n"), std::string::npos);  // the alarm may have rung before
  run.memory.sockets.Receive(1, "two\r\n");
  EXPECT_EQ(run.memory.effects.Of("speech").back(), "1 two");
  // A connection after the jump has its log and its date.
  run.memory.sockets.CloseByPeer(1);
  run.Do("#CONNECT bob");
  run.memory.sockets.Receive(1, "three\r\n");
  bool logged = false;
  for (const std::string& name : run.memory.files.FileNames("/data/logs"))
    logged = logged || run.Read("/data/logs/" + name).find("three\r\n") != std::string::npos;
  EXPECT_TRUE(logged);
  char date[16];
  std::snprintf(date, sizeof date, "%04d-%02d-%02d", GetParam().To.Year, GetParam().To.Month, GetParam().To.Day);
  EXPECT_TRUE(run.corvid.sessionState.LastConnected[2].starts_with(date)) << run.corvid.sessionState.LastConnected[2];
}

TEST_P(ClockThatJumps, LetsAWaitingScriptBeLeftAndTheGameTalk) {
  RunningProgram run;
  run.memory.clock.SetNow(GetParam().From);
  run.StartAndConnect(0);
  run.memory.loop.Pass(600);  // the job of the start
  run.memory.effects.Clear();
  const auto jump = run.corvid.platform.timers.Create([&] {
    run.memory.clock.SetNow(GetParam().To);
    run.memory.sockets.Receive(1, "while it waits\r\n");
  });
  const auto leave = run.corvid.platform.timers.Create([&] { run.memory.loop.End(0); });
  jump->SetInterval(500);
  leave->SetInterval(90000);
  jump->SetEnabled(true);
  leave->SetEnabled(true);
  run.Do("#WAIT 1");
  EXPECT_EQ(run.memory.effects.Of("speech").front(), "1 while it waits");
  EXPECT_LE(run.memory.clock.MonotonicMilliseconds(), 200000);
}

INSTANTIATE_TEST_SUITE_P(Jumps, ClockThatJumps,
                         testing::Values(Jump{"overMidnight", {2026, 1, 15, 23, 59, 58}, {2026, 1, 16, 0, 0, 3}},
                                         Jump{"backOverMidnight", {2026, 1, 16, 0, 0, 3}, {2026, 1, 15, 23, 59, 58}},
                                         Jump{"summerTime", {2026, 3, 29, 1, 59, 58}, {2026, 3, 29, 3, 0, 0}},
                                         Jump{"winterTime", {2026, 10, 25, 2, 59, 58}, {2026, 10, 25, 2, 0, 0}},
                                         Jump{"aDayAhead", {2026, 1, 15, 12, 0, 0}, {2026, 1, 16, 12, 0, 0}},
                                         Jump{"aYearBack", {2026, 1, 15, 12, 0, 0}, {2025, 1, 15, 12, 0, 0}}),
                         [](const auto& each) { return std::string(each.param.Name); });

TEST(Clock, AnAlarmRingsOnceOverMidnightAndOnceAfterSummerTime) {
  for (const Jump& jump : {Jump{"", {2026, 1, 15, 23, 59, 58}, {2026, 1, 16, 0, 0, 0}},
                           Jump{"", {2026, 3, 29, 1, 59, 58}, {2026, 3, 29, 3, 0, 0}}}) {
    RunningProgram run;
    run.memory.clock.SetNow(jump.From);
    run.StartAndConnect(0);
    run.Do("#ALARM 4 {tick}");
    run.memory.loop.Pass(2000);
    run.memory.clock.SetNow(jump.To);
    run.memory.loop.Pass(10000);
    EXPECT_EQ(run.memory.sockets.TakeWritten(1), "tick\r\n");
  }
}

}  // namespace
}  // namespace corvid
