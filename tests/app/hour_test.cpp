// SPDX-License-Identifier: GPL-3.0-or-later
// An hour of play by the clock, over a midnight: twenty characters in the practice game, in virtual time. Each of them
// sends a line every few seconds and has an alarm that comes again and again; some lose their connection on the way.
// scripts/soak plays the same with real sockets and processes, by the number of commands instead of the time.
#include <malloc.h>

#include <algorithm>
#include <array>
#include <random>
#include <set>

#include "core/text.h"
#include "game/game.h"
#include "game/text.h"
#include "running_program.h"

namespace corvid {
namespace {

constexpr int16 Players = 20;
constexpr int Hour = 3600 * 1000;
constexpr int Step = 500;   // milliseconds from one look at the world to the next
constexpr int Pace = 5000;  // from one line of a player to the next
constexpr int AlarmSeconds = 30;
const std::string AlarmWords = "say half a minute";
constexpr int Harvest = 60 * 1000;  // logs are compared, and emptied, that often
constexpr int Settled = 20 * 60 * 1000;
constexpr std::size_t Growth = 400'000;  // bytes that the rest of the hour may take
constexpr std::array<const char*, 11> Words{"look",      "north",           "south", "east", "west",    "score",
                                            "inventory", "say hello there", "hint",  "who",  "nonsense"};

// Without blanks and line ends: where a prompt that waits is cut from its line is a matter of time, not of text.
std::string Tight(const std::string& text) {
  std::string kept;
  for (const char c : text)
    if (static_cast<unsigned char>(c) > ' ') kept += c;
  return kept;
}

// What a server's bytes look like in a log.
std::string Plain(const std::string& bytes) {
  std::string text;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const auto byte = static_cast<unsigned char>(bytes[i]);
    if (byte == 255 && i + 1 < bytes.size()) {
      i += static_cast<unsigned char>(bytes[i + 1]) >= 251 ? 2 : 1;
    } else if (byte != 7) {
      text += bytes[i];
    }
  }
  text = practice::StripColours(text);
  for (std::size_t at = text.find("!!"); at != std::string::npos; at = text.find("!!", at)) {
    text.erase(at, text.find('\n', at) - at);  // lines for sounds; the game says each of them whole
  }
  return text;
}

void ExpectSame(const std::string& log, const std::string& sent, const std::string& where) {
  if (log == sent) return;
  const auto apart = std::mismatch(log.begin(), log.end(), sent.begin(), sent.end()).first - log.begin();
  const std::size_t from = static_cast<std::size_t>(std::max<std::ptrdiff_t>(apart - 60, 0));
  ADD_FAILURE() << where << "\n log:  " << log.substr(from, 140) << "\n sent: " << sent.substr(from, 140);
}

std::size_t HeapInUse() {
  return mallinfo2().uordblks;  // 0 where a sanitizer has its own heap
}

class AnHour : public testing::Test {
 protected:
  struct Seat {
    int Id = 0;        // in the game; 0: none
    std::string Sent;  // by the game since the last comparison, as a log shows it
    int Alarms = 0;
  };

  void SetUp() override {
    run.memory.clock.SetNow({2026, 3, 14, 23, 30, 0});
    run.memory.face.RecordDisplay = false;
    run.memory.files.Put("/data/logs/p01 2026-01-02 9.5.txt", "of January\r\n");
    ASSERT_TRUE(run.Start());
    run.Do("#CONFIGURE OutputWindowSize 30");
    run.Do("#GALIAS OnConnect {#IGNORE LogEntries On;#ALARM " + std::to_string(AlarmSeconds) + " {ring}}");
    run.Do("#GALIAS ring {" + AlarmWords + ";#ALARM " + std::to_string(AlarmSeconds) + " {ring}}");
    run.Do("#GTRIGGER {Obvious *} {#SUBSTITUTE {Ways: %1}}");
    run.Do("#GTRIGGER {*hello there*} {#GAGLINE}");
    for (int16 i = 1; i <= Players; ++i) {
      run.Do("#MUD " + Ref(i) + " Practice p.example 4000 " + Ref(i) + " secret");
      run.Do("#CONNECT " + Ref(i));
      Sit(i);
    }
  }
  static std::string Ref(int16 i) { return (i < 10 ? "p0" : "p") + std::to_string(i); }
  std::int64_t Now() { return run.memory.clock.MonotonicMilliseconds(); }

  // A new connection of the slot's character, logged in.
  void Sit(int16 i) {
    ASSERT_TRUE(run.memory.sockets.Connected(i)) << i;
    seats[i].Id = world.Connect(Now());
    Carry(i);
    const auto letter = static_cast<char>('a' + i - 1);
    Say(i, std::string("Soak") + letter);
    Say(i, "secret");
  }
  void Say(int16 i, const std::string& line) {
    run.Do(Ref(i) + "::" + line);
    ++commands;
    Carry(i);
  }
  // What the player's program has sent goes to the game, what the game says comes back.
  void Carry(int16 i) {
    Seat& seat = seats[i];
    const std::string written = run.memory.sockets.TakeWritten(i);
    for (std::size_t at = written.find(AlarmWords); at != std::string::npos; at = written.find(AlarmWords, at + 1))
      ++seat.Alarms;
    if (!written.empty()) world.Input(seat.Id, written, Now());
    const std::string said = world.TakeOutput(seat.Id);
    if (said.empty()) return;
    seat.Sent += Plain(said);
    run.memory.sockets.Receive(i, said);
    run.memory.effects.Clear();
  }
  void Pass(int milliseconds) {
    run.memory.loop.Pass(milliseconds);
    world.Advance(Now());
    for (int16 i = 1; i <= Players; ++i) Carry(i);
  }
  void LoseConnection(int16 i) {
    world.Disconnect(seats[i].Id);
    run.memory.sockets.CloseByPeer(i);
    run.memory.loop.Pass(200);  // the unfinished line has come to its end
    run.Do("#CONNECT " + Ref(i));
    Sit(i);
  }
  // All logs against what the game has said, which are then forgotten on both sides.
  void CompareLogs() {
    run.memory.loop.Pass(Step);  // a prompt that waited for its end is in the log then
    for (int16 i = 1; i <= Players; ++i) {
      std::string log;
      for (const std::string& name : run.memory.files.FileNames("/data/logs")) {
        if (!name.starts_with(Ref(i) + " ")) continue;
        names.insert(name);
        log += run.Read("/data/logs/" + name);
        run.memory.files.Put("/data/logs/" + name, "");
      }
      lines += static_cast<int>(std::count(log.begin(), log.end(), '\n'));
      ExpectSame(Tight(log), Tight(seats[i].Sent), Ref(i) + " after " + std::to_string(Now() / 1000) + " s");
      seats[i].Sent.clear();
    }
  }

  RunningProgram run;
  practice::Game world{7};
  std::array<Seat, Players + 1> seats;
  std::set<std::string> names;
  int commands = 0;
  int lines = 0;
};

TEST_F(AnHour, KeepsEachLogEachAlarmAndItsMemory) {
  std::mt19937 chance(7);
  std::size_t settled = 0;
  const std::int64_t begun = Now();
  for (int time = 0; time < Hour; time += Step) {
    Pass(Step);
    for (int16 i = 1; i <= Players; ++i)
      if ((time + i * Step) % Pace == 0) Say(i, Words[chance() % Words.size()]);
    if (time % (10 * 60 * 1000) == 5 * 60 * 1000) LoseConnection(static_cast<int16>(1 + time / (10 * 60 * 1000)));
    if (time % Harvest == 0) CompareLogs();
    if (time == Settled) settled = HeapInUse();
    ASSERT_FALSE(testing::Test::HasFailure());
  }
  CompareLogs();
  const std::size_t end = HeapInUse();
  EXPECT_LE(end, settled + Growth);
  EXPECT_GE(Now() - begun, Hour);
  EXPECT_GT(commands, Players * Hour / Pace);
  EXPECT_GT(lines, commands);
  EXPECT_EQ(run.Asked(), Texts());
  EXPECT_EQ(run.ErrorLog(), "");
  for (int16 i = 7; i <= Players; ++i) EXPECT_NEAR(seats[i].Alarms, Hour / 1000 / AlarmSeconds, 2) << Ref(i);
  EXPECT_FALSE(run.Exists("/data/logs/p01 2026-01-02 9.5.txt"));
  // Who came back after midnight has a log of the new day; who stayed goes on in the one of the old day.
  EXPECT_TRUE(
      std::any_of(names.begin(), names.end(), [](const auto& name) { return name.starts_with("p05 2026-03-15"); }));
  EXPECT_FALSE(
      std::any_of(names.begin(), names.end(), [](const auto& name) { return name.starts_with("p20 2026-03-15"); }));
}

}  // namespace
}  // namespace corvid
