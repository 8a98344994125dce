// SPDX-License-Identifier: GPL-3.0-or-later
// What every event loop must do alike: the real one, and the one in virtual time that the other tests trust. Only the
// order is looked at, so that a slow machine changes nothing.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <functional>
#include <memory>
#include <string>

#include "platform/memory/memory_loop.h"
#include "qt_program.h"

namespace corvid {
namespace {

class RealLoop {
  QtProgram qt_;

 public:
  QtEventLoop& Loop = qt_.loop;
  QtTimers Clockwork;
  void Post(std::function<void()> work) {
    QMetaObject::invokeMethod(QCoreApplication::instance(), std::move(work), Qt::QueuedConnection);
  }
};

class LoopInMemory {
  MemoryClock clock_;

 public:
  MemoryLoop Loop{clock_};
  Timers& Clockwork = Loop;
  void Post(std::function<void()> work) { Loop.Post(std::move(work)); }
};

template <typename Place>
class LoopContract : public testing::Test {
 protected:
  bool Until(const std::function<bool()>& done) {
    for (int round = 0; round < 1000 && !done(); ++round) loop.WaitEvents(10);
    return done();
  }
  // Until so much is noted.
  const std::string& After(std::size_t marks) {
    Until([&] { return log.size() >= marks; });
    return log;
  }
  std::unique_ptr<Timer> Make(int milliseconds, std::function<void()> fired) {
    auto timer = timers.Create(std::move(fired));
    timer->SetInterval(milliseconds);
    return timer;
  }
  // Fires once and notes the mark.
  void Once(std::unique_ptr<Timer>& timer, int milliseconds, char mark) {
    timer = Make(milliseconds, [this, &timer, mark] {
      timer->SetEnabled(false);
      log += mark;
    });
  }
  // Passes that much of the loop's time.
  void Pass(int milliseconds) {
    bool over = false;
    const auto end = Make(milliseconds, [&] { over = true; });
    end->SetEnabled(true);
    EXPECT_TRUE(Until([&] { return over; }));
  }

  Place place;
  EventLoop& loop = place.Loop;
  Timers& timers = place.Clockwork;
  std::string log;
  std::unique_ptr<Timer> a, b, c;
};

using Loops = testing::Types<RealLoop, LoopInMemory>;
TYPED_TEST_SUITE(LoopContract, Loops);

TYPED_TEST(LoopContract, PostedCallsRunInTheirOrder) {
  this->place.Post([&] {
    this->log += "a";
    this->place.Post([&] { this->log += "d"; });
  });
  this->place.Post([&] { this->log += "b"; });
  this->place.Post([&] { this->log += "c"; });
  EXPECT_EQ(this->log, "") << "not before the loop comes round";
  EXPECT_EQ(this->After(4), "abcd");
}

TYPED_TEST(LoopContract, TimersFireInTheOrderOfTheirTime) {
  this->Once(this->a, 30, 'a');
  this->Once(this->b, 10, 'b');
  this->Once(this->c, 20, 'c');
  EXPECT_FALSE(this->a->Enabled());
  for (Timer* timer : {this->b.get(), this->c.get(), this->a.get()}) timer->SetEnabled(true);
  EXPECT_EQ(this->log, "");
  EXPECT_EQ(this->After(3), "bca");
}

TYPED_TEST(LoopContract, ATimerRepeatsUntilItIsDisabled) {
  this->a = this->Make(2, [&] {
    this->log += "a";
    EXPECT_TRUE(this->a->Enabled());
    if (this->log.size() == 3) this->a->SetEnabled(false);
  });
  this->a->SetEnabled(true);
  EXPECT_EQ(this->After(3), "aaa");
  EXPECT_FALSE(this->a->Enabled());
  this->Pass(20);
  EXPECT_EQ(this->log, "aaa");
  this->a->SetEnabled(true);
  EXPECT_EQ(this->After(4), "aaaa");
}

TYPED_TEST(LoopContract, ADisabledTimerNeverFiresThoughItWasDue) {
  this->Once(this->a, 5, 'a');
  this->Once(this->b, 5, 'b');
  this->a->SetEnabled(true);
  this->b->SetEnabled(true);
  this->loop.Freeze(10);
  this->a->SetEnabled(false);
  this->Pass(20);
  EXPECT_EQ(this->log, "b");
}

// The third timer's tick, at 20, is where the first one's count begins again, or goes on.
TYPED_TEST(LoopContract, EnablingAgainRestartsTheCount) {
  this->Once(this->a, 30, 'a');
  this->Once(this->b, 40, 'b');
  this->c = this->Make(20, [&] {
    this->c->SetEnabled(false);
    this->a->SetEnabled(true);
  });
  for (Timer* timer : {this->b.get(), this->c.get(), this->a.get()}) timer->SetEnabled(true);
  EXPECT_EQ(this->After(2), "ba");
}

TYPED_TEST(LoopContract, TheSameIntervalAgainDoesNot) {
  this->Once(this->a, 30, 'a');
  this->Once(this->b, 40, 'b');
  this->c = this->Make(20, [&] {
    this->c->SetEnabled(false);
    this->a->SetInterval(30);
  });
  for (Timer* timer : {this->a.get(), this->b.get(), this->c.get()}) timer->SetEnabled(true);
  EXPECT_EQ(this->After(2), "ab");
}

TYPED_TEST(LoopContract, TheShortestIntervalTicksAtTheNextTurn) {
  this->Once(this->a, 1, 'a');
  this->a->SetEnabled(true);
  EXPECT_EQ(this->log, "");
  this->loop.DoEvents();
  EXPECT_EQ(this->log, "a");
}

TYPED_TEST(LoopContract, PostedCallsRunInsideOneThatWaits) {
  this->place.Post([&] {
    this->log += "(";
    EXPECT_TRUE(this->Until([&] { return this->log == "(b"; }));
    this->log += ")";
  });
  this->place.Post([&] { this->log += "b"; });
  EXPECT_EQ(this->After(3), "(b)");
}

TYPED_TEST(LoopContract, ATimerFiresAlsoWhileItsHandlerWaits) {
  int ticks = 0;
  this->a = this->Make(2, [&] {
    if (++ticks == 2) {
      this->a->SetEnabled(false);
      this->log += "t";
    }
    if (ticks != 1) return;
    this->log += "(";
    this->place.Post([&] { this->log += "p"; });
    EXPECT_TRUE(this->Until([&] { return ticks == 2; }));
    this->log += ")";
  });
  this->a->SetEnabled(true);
  EXPECT_EQ(this->After(4), "(pt)");
}

TYPED_TEST(LoopContract, NestedWaitsEndTheInnermostFirst) {
  bool first = false, second = false;
  this->place.Post([&] {
    EXPECT_TRUE(this->Until([&] { return first; }));
    this->log += "a";
  });
  this->place.Post([&] {
    this->place.Post([&] { first = true; });
    this->place.Post([&] { second = true; });
    EXPECT_TRUE(this->Until([&] { return second; }));
    this->log += "b";
  });
  EXPECT_EQ(this->After(2), "ba");
}

TYPED_TEST(LoopContract, ATimerMayDieInAnyHandler) {
  this->a = this->Make(5, [&] {
    this->log += "a";
    this->b.reset();
    this->a.reset();
  });
  this->Once(this->b, 6, 'b');
  this->a->SetEnabled(true);
  this->b->SetEnabled(true);
  this->loop.Freeze(20);  // both are due
  this->Pass(20);
  EXPECT_EQ(this->log, "a");
}

TYPED_TEST(LoopContract, NothingIsHandledWhileItIsFrozen) {
  this->place.Post([&] { this->log += "p"; });
  this->Once(this->a, 1, 'a');
  this->a->SetEnabled(true);
  this->loop.Freeze(5);
  EXPECT_EQ(this->log, "");
  EXPECT_EQ(this->After(2), "pa");
}

TYPED_TEST(LoopContract, TheFirstEndCountsAndNothingWaitsAfterIt) {
  EXPECT_FALSE(this->loop.Ending());
  this->Once(this->b, 60000, 'b');
  this->b->SetEnabled(true);
  this->place.Post([&] {
    this->loop.End(3);
    this->loop.End(4);
    this->place.Post([&] { this->log += "late"; });
    this->loop.WaitEvents(-1);
  });
  EXPECT_EQ(this->loop.Run(), 3);
  EXPECT_TRUE(this->loop.Ending());
  EXPECT_EQ(this->log, "");
  EXPECT_EQ(this->loop.Run(), 3);
}

}  // namespace
}  // namespace corvid
