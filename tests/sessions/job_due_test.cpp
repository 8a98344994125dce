// SPDX-License-Identifier: GPL-3.0-or-later
// What a program that drives this one waits for, and what it does not.
#include <gtest/gtest.h>

#include "platform/memory/memory_platform.h"
#include "sessions/timers.h"
#include "support_upcalls.h"

namespace corvid {
namespace {

TEST(TimersJobDue, TheJobOfAKeyCountsAndTheOneOfTheStartDoesNot) {
  MemoryPlatform memory;
  Platform platform = memory.All();
  RecordingFloors floors{memory.effects};
  ScriptState script;
  OptionsState options;
  SessionState sessions;
  BufferState buffers;
  KeyboardState keys;
  TimerRoutines timers(script, options, sessions, buffers, keys, platform, floors.upcalls);
  EXPECT_FALSE(timers.JobDue());
  timers.StartTimer1(timeraction::OpenCharacters, 500);
  EXPECT_FALSE(timers.JobDue());
  timers.StartTimer1(timeraction::RunEntryLine, 1);
  EXPECT_TRUE(timers.JobDue()) << "a typed line waits behind it";
  memory.face.ShowMain();
  memory.loop.Pass(500);
  EXPECT_EQ(memory.effects.Of("screen"), std::vector<std::string>{"characters"});
  memory.loop.Pass(5);
  EXPECT_EQ(memory.effects.Of("command"), std::vector<std::string>{""});
  EXPECT_FALSE(timers.JobDue());
  timers.StartTimer1(timeraction::RunEntryLine, 1);
  EXPECT_TRUE(timers.JobDue());
}

}  // namespace
}  // namespace corvid
