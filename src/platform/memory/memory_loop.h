// SPDX-License-Identifier: GPL-3.0-or-later
// Virtual time: nothing sleeps, the test or a waiting loop moves the clock.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <vector>

#include "platform/clock.h"
#include "platform/event_loop.h"

namespace corvid {

class MemoryClock : public Clock {
 public:
  DateTime Now() const override;
  double SecondsSinceMidnight() const override;
  std::int64_t MonotonicMilliseconds() const override { return monotonic_; }
  // Starts as 2026-01-15 12:00:00.
  void SetNow(const DateTime& now);
  void Advance(std::int64_t milliseconds) { monotonic_ += milliseconds; }

 private:
  std::int64_t monotonic_ = 0;
  std::int64_t base_ = 0;  // seconds since 1970 that stand for monotonic 0; 0: the starting date
};

class MemoryLoop : public EventLoop, public Timers {
 public:
  explicit MemoryLoop(MemoryClock& clock) : clock_(clock) {}
  ~MemoryLoop() override;

  void DoEvents() override;
  void WaitEvents(int milliseconds) override;
  void Freeze(int milliseconds) override { clock_.Advance(milliseconds); }
  void End(int code) override;
  bool Ending() const override { return ending_; }
  int Run() override;
  std::unique_ptr<Timer> Create(std::function<void()> fired) override;

  void Post(std::function<void()> work) { posted_.push_back(std::move(work)); }
  // Lets milliseconds of virtual time pass, with all that falls due in them.
  void Pass(int milliseconds);
  // Asked when a loop waits and nothing is due within its limit: true when it brought something about (an answer to a
  // dialog). When a loop without limit waits for nothing at all, that is a Fault: the program would hang.
  std::function<bool()> Idle;
  // Called at the start of every pump: a stress test moves tables here.
  std::function<void()> BeforePump;
  int ExitCode() const { return code_; }

 private:
  class LoopTimer;
  bool RunDue();
  LoopTimer* NextTimer() const;

  MemoryClock& clock_;
  std::deque<std::function<void()>> posted_;
  std::vector<LoopTimer*> timers_;
  bool ending_ = false;
  int code_ = 0;
};

}  // namespace corvid
