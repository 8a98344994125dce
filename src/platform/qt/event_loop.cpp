// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/event_loop.h"

#include <QCoreApplication>
#include <QEvent>
#include <QTimer>
#include <algorithm>
#include <utility>

namespace corvid {

// Counts what is delivered to any object.
class QtEventLoop::Counter : public QObject {
 public:
  bool eventFilter(QObject* /*receiver*/, QEvent* /*event*/) override {
    ++Delivered;
    return false;
  }
  std::uint64_t Delivered = 0;
};

QtEventLoop::QtEventLoop(int& argc, char** argv) : counter_(std::make_unique<Counter>()) {
  if (QCoreApplication::instance() == nullptr) application_ = std::make_unique<QCoreApplication>(argc, argv);
  QCoreApplication::instance()->installEventFilter(counter_.get());
}

QtEventLoop::~QtEventLoop() = default;

// A loop inside a queued call does not see by itself what was queued before it: it would sleep over a line of input or
// a tick that is due already. So that is delivered first, and only when there was nothing does the loop sleep.
void QtEventLoop::Pump(bool wait) {
  if (broken_) return;
  pumps_.push_back(++lastPump_);
  const std::uint64_t before = counter_->Delivered;
  QCoreApplication::sendPostedEvents();
  const bool sleep = wait && counter_->Delivered == before && !ending_;
  QCoreApplication::processEvents(sleep ? QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents
                                        : QEventLoop::ProcessEventsFlags(QEventLoop::AllEvents));
  pumps_.pop_back();
}

void QtEventLoop::DoEvents() {
  Pump(false);
}

void QtEventLoop::WaitEvents(int milliseconds) {
  if (ending_) return;  // a waiting loop must come round and see it
  if (milliseconds == 0) return Pump(false);
  QTimer limit;  // its tick is what ends the sleep; nobody listens to it
  if (milliseconds > 0) {
    limit.setTimerType(Qt::PreciseTimer);
    limit.start(milliseconds);
  }
  Pump(true);
}

void QtEventLoop::End(int code) {
  if (ending_) return;  // the first reason to end is the one that counts
  ending_ = true;
  code_ = code;
  QCoreApplication::exit(code);
}

int QtEventLoop::Run() {
  if (!ending_) QCoreApplication::exec();
  return code_;
}

namespace {

class QtTimer : public Timer {
 public:
  explicit QtTimer(std::function<void()> fired) : fired_(std::make_shared<std::function<void()>>(std::move(fired))) {
    timer_.setTimerType(Qt::PreciseTimer);
    // The tick only queues the handler's call: run inside the timeout signal, the timer would stay silent as long as
    // its own handler waits.
    QObject::connect(&timer_, &QTimer::timeout, &context_, [this] { Tick(); });
  }

  void SetInterval(int milliseconds) override {
    const int interval = std::max(milliseconds, 1);
    if (timer_.interval() != interval) timer_.setInterval(interval);
  }

  void SetEnabled(bool enabled) override {
    ++period_;  // a tick that is queued already belongs to the past
    queued_ = false;
    enabled_ = enabled;
    if (enabled) {
      timer_.start();
      // The shortest interval means "once this event is done with": a millisecond of sleep before each typed line is
      // sent would be the longest part of its way.
      if (timer_.interval() <= 1) Tick();
    } else {
      timer_.stop();
    }
  }

  bool Enabled() const override { return enabled_; }

 private:
  void Tick() {
    if (queued_) return;  // one waits already: a slow handler must not find a heap of them
    queued_ = true;
    QMetaObject::invokeMethod(
        &context_,
        [this, period = period_] {
          if (period != period_) return;
          queued_ = false;
          const auto fired = fired_;  // the handler may destroy this timer
          (*fired)();
        },
        Qt::QueuedConnection);
  }

  std::shared_ptr<std::function<void()>> fired_;
  QTimer timer_;
  unsigned period_ = 0;
  bool queued_ = false;
  bool enabled_ = false;
  QObject context_;  // declared last: its queued calls die before the rest
};

}  // namespace

std::unique_ptr<Timer> QtTimers::Create(std::function<void()> fired) {
  return std::make_unique<QtTimer>(std::move(fired));
}

}  // namespace corvid
