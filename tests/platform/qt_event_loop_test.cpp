// SPDX-License-Identifier: GPL-3.0-or-later
// The loop inside the loop: a dialog waits while a command runs, and everything else must go on.
#include "platform/qt/event_loop.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

namespace corvid {
namespace {

struct Program {
  int argc = 1;
  char name[5] = "test";
  char* argv[2] = {name, nullptr};
  QtEventLoop loop{argc, argv};
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

}  // namespace
}  // namespace corvid
