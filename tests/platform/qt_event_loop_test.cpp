// SPDX-License-Identifier: GPL-3.0-or-later
// The real loop and its timers. A dialog waits in a loop inside the loop, and everything else must go on.
#include "platform/qt/event_loop.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

#include "qt_program.h"

namespace corvid {
namespace {

struct Program : QtProgram {
  QtTimers timers;
};

// A line of input that was queued before a dialog opened is what answers the dialog.
TEST(QtEventLoop, AWaitInsideAQueuedCallSeesWhatWasQueuedBeforeIt) {
  Program program;
  bool answered = false;
  bool seenInside = false;
  QMetaObject::invokeMethod(
      QCoreApplication::instance(),
      [&] {
        constexpr int Limit = 2000;  // milliseconds; passed only when the answer is not seen
        const auto limit = program.timers.Create([&] { program.loop.End(1); });
        limit->SetInterval(Limit);
        limit->SetEnabled(true);
        while (!answered && !program.loop.Ending()) program.loop.WaitEvents(-1);
        seenInside = answered;
        program.loop.End(0);
      },
      Qt::QueuedConnection);
  QMetaObject::invokeMethod(
      QCoreApplication::instance(), [&] { answered = true; }, Qt::QueuedConnection);
  EXPECT_EQ(program.loop.Run(), 0);
  EXPECT_TRUE(seenInside);
}

TEST(QtEventLoop, AnUnlimitedWaitSleepsUntilSomethingHappens) {
  Program program;
  int ticks = 0;
  const auto timer = program.timers.Create([&] { ++ticks; });
  timer->SetInterval(20);
  timer->SetEnabled(true);
  int rounds = 0;
  while (ticks < 3) {
    program.loop.WaitEvents(-1);
    ++rounds;
  }
  EXPECT_LT(rounds, 50) << "a wait must sleep, not spin";
}

TEST(QtTimersTest, RepeatUntilDisabledAlsoWhileTheirHandlerWaits) {
  Program program;
  int ticks = 0;
  std::unique_ptr<Timer> timer;
  timer = program.timers.Create([&] {
    if (++ticks == 1)
      while (ticks < 3) program.loop.WaitEvents(-1);
    if (ticks >= 3) timer->SetEnabled(false);
  });
  timer->SetInterval(1);
  EXPECT_FALSE(timer->Enabled());
  timer->SetEnabled(true);
  while (timer->Enabled()) program.loop.WaitEvents(1000);
  EXPECT_EQ(ticks, 3);
  program.loop.WaitEvents(5);
  EXPECT_EQ(ticks, 3);
}

TEST(QtTimersTest, TheShortestIntervalTicksAtTheNextTurn) {
  Program program;
  int ticks = 0;
  const auto timer = program.timers.Create([&] { ++ticks; });
  timer->SetInterval(1);
  timer->SetEnabled(true);
  EXPECT_EQ(ticks, 0);
  program.loop.DoEvents();
  EXPECT_GE(ticks, 1);
  timer->SetEnabled(true);
  timer->SetEnabled(false);
  const int before = ticks;
  program.loop.DoEvents();
  EXPECT_EQ(ticks, before);
}

TEST(QtTimersTest, ATimerMayDieInItsOwnHandler) {
  Program program;
  std::unique_ptr<Timer> timer;
  bool fired = false;
  timer = program.timers.Create([&] {
    timer.reset();
    fired = true;
  });
  timer->SetInterval(1);
  timer->SetEnabled(true);
  while (!fired) program.loop.WaitEvents(1000);
  EXPECT_EQ(timer, nullptr);
}

TEST(QtEventLoopTest, EndGivesTheFirstCodeAndStopsWaiting) {
  Program program;
  const auto timer = program.timers.Create([&] {
    program.loop.End(3);
    program.loop.End(4);
    program.loop.WaitEvents(-1);  // must not sleep any more
  });
  timer->SetInterval(1);
  timer->SetEnabled(true);
  EXPECT_EQ(program.loop.Run(), 3);
  EXPECT_TRUE(program.loop.Ending());
}

TEST(QtEventLoopTest, EndBeforeRunEndsAtOnce) {
  Program program;
  program.loop.End(7);
  EXPECT_EQ(program.loop.Run(), 7);
}

}  // namespace
}  // namespace corvid
