// SPDX-License-Identifier: GPL-3.0-or-later
#include "sessions/logs.h"

#include "fixture.h"

namespace corvid {
namespace {

class LogsTest : public SessionTest {
 protected:
  LogsTest() { state.SessionRef[0] = "bob"; }
  Texts Names() { return memory.files.FileNames("/data/logs"); }
};

TEST_F(LogsTest, NamesALogByDateHourAndSecond) {
  memory.clock.SetNow({2026, 3, 4, 5, 59, 7});
  logs.OpenLog(0);
  EXPECT_EQ(state.LogOpen[0], 1);
  logs.WriteLog(0, "line");
  logs.CloseLog(0);
  EXPECT_EQ(state.LogOpen[0], 0);
  EXPECT_EQ(Names(), (Texts{"bob 2026-03-04 5.7.txt"}));
  EXPECT_EQ(memory.files.ReadWhole("/data/logs/bob 2026-03-04 5.7.txt"), "line\r\n");
  EXPECT_TRUE(memory.files.IsPrivate("/data/logs/bob 2026-03-04 5.7.txt"));
}

TEST_F(LogsTest, AppendsToOneLogADay) {
  options.LogBySession = false;
  memory.clock.SetNow({2026, 11, 21, 5, 59, 7});
  for (const char* text : {"one", "two"}) {
    logs.OpenLog(0);
    logs.WriteLog(0, text);
  }
  logs.CloseAll();
  EXPECT_EQ(Names(), (Texts{"bob 2026-11-21.txt"}));
  EXPECT_EQ(memory.files.ReadWhole("/data/logs/bob 2026-11-21.txt"), "one\r\ntwo\r\n");
}

TEST_F(LogsTest, OpensNoneWhileLogsAreOff) {
  options.OutputLog = false;
  logs.OpenLog(0);
  EXPECT_EQ(state.LogOpen[0], 0);
  EXPECT_TRUE(Names().empty());
  logs.WriteLog(0, "nowhere");
  logs.Flush(0);
}

TEST_F(LogsTest, StaysClosedWhenTheDiskRefuses) {
  memory.files.Fail = [](const std::string&, const std::string&) { return "read-only"; };
  EXPECT_THROW(logs.OpenLog(0), Fault);
  EXPECT_EQ(state.LogOpen[0], 0);
}

TEST_F(LogsTest, CannotLeaveItsFolder) {
  state.SessionRef[0] = "../../etc/x\\y";
  logs.OpenLog(0);
  logs.CloseLog(0);
  EXPECT_EQ(Names().size(), 1U);
}

TEST_F(LogsTest, RemovesOldOnes) {
  memory.clock.SetNow({2026, 3, 31, 12, 0, 0});
  options.LogRetentionDays = 30;
  const char* kept[] = {"bob 2026-03-01.txt", "bob 2026-03-31 1.2.txt", "notes.txt",
                        "bob 2026-02-30.txt", "a20b 2020-01-01.txt",    "bob 20260101.txt",
                        "bob 2026-1-1x.txt",  "bob 2027-01-01.txt",     "anything 2019 2018.txt"};
  const char* gone[] = {"bob 2026-02-28.txt", "amy 2025-12-31 4.5.txt", "2020-01-01"};
  for (const char* name : kept) memory.files.Put("/data/logs/" + std::string(name), "x");
  for (const char* name : gone) memory.files.Put("/data/logs/" + std::string(name), "x");
  logs.RemoveOldLogs();
  for (const char* name : kept) EXPECT_TRUE(memory.files.FileExists("/data/logs/" + std::string(name))) << name;
  for (const char* name : gone) EXPECT_FALSE(memory.files.FileExists("/data/logs/" + std::string(name))) << name;
}

TEST_F(LogsTest, KeepsTheLastDayAndRemovesTheNext) {
  memory.clock.SetNow({2026, 3, 31, 12, 0, 0});
  memory.files.Put("/data/logs/bob 2026-03-01.txt", "thirty days ago");
  memory.files.Put("/data/logs/bob 2026-02-28.txt", "thirty-one days ago");
  logs.RemoveOldLogs();
  EXPECT_EQ(Names(), (Texts{"bob 2026-03-01.txt"}));
}

TEST_F(LogsTest, KeepsALogThatIsStillWritten) {
  memory.clock.SetNow({2026, 3, 1, 23, 59, 59});
  logs.OpenLog(0);
  memory.clock.SetNow({2026, 6, 1, 12, 0, 0});
  logs.RemoveOldLogs();
  logs.WriteLog(0, "the game goes on");
  EXPECT_EQ(memory.files.ReadWhole("/data/logs/bob 2026-03-01 23.59.txt"), "the game goes on\r\n");
  logs.CloseLog(0);
  logs.RemoveOldLogs();
  EXPECT_TRUE(Names().empty()) << "closed, it is as old as the others";
}

TEST_F(LogsTest, GivesEachSessionItsOwn) {
  sessions.ResizeConnections(2);
  state.SessionRef[1] = "amy";
  state.SessionRef[2] = "";
  for (const int16 slot : {int16{0}, int16{1}, int16{2}}) logs.OpenLog(slot);
  for (const int16 slot : {int16{0}, int16{1}, int16{2}}) logs.WriteLog(slot, std::to_string(slot));
  EXPECT_EQ(Names(), (Texts{" 2026-01-15 12.0.txt", "amy 2026-01-15 12.0.txt", "bob 2026-01-15 12.0.txt"}));
  EXPECT_EQ(memory.files.ReadWhole("/data/logs/amy 2026-01-15 12.0.txt"), "1\r\n");
  EXPECT_EQ(memory.files.ReadWhole("/data/logs/ 2026-01-15 12.0.txt"), "2\r\n");
}

TEST_F(LogsTest, GoesOnBehindAFileThatStays) {
  memory.clock.SetNow({2026, 3, 31, 12, 0, 0});
  for (const char* name : {"a 2020-01-01", "b 2020-01-01", "c 2020-01-01"})
    memory.files.Put("/data/logs/" + std::string(name), "x");
  memory.files.Fail = [](const std::string&, const std::string& path) {
    return path.find("b 2020") != std::string::npos ? std::string("in use") : std::string();
  };
  logs.RemoveOldLogs();
  EXPECT_EQ(Names(), (Texts{"b 2020-01-01"}));
}

}  // namespace
}  // namespace corvid
