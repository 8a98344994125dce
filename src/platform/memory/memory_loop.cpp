// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/memory/memory_loop.h"

#include <algorithm>
#include <ctime>

#include "core/fault.h"

namespace corvid {

namespace {

// Days since 1970-01-01 of a date of the Gregorian calendar, and back (time zones play no part in a test).
std::int64_t SecondsOf(const DateTime& at) {
  std::tm parts{};
  parts.tm_year = at.Year - 1900;
  parts.tm_mon = at.Month - 1;
  parts.tm_mday = at.Day;
  parts.tm_hour = at.Hour;
  parts.tm_min = at.Minute;
  parts.tm_sec = at.Second;
  return static_cast<std::int64_t>(timegm(&parts));
}

constexpr DateTime StartDate{2026, 1, 15, 12, 0, 0};

}  // namespace

DateTime MemoryClock::Now() const {
  const std::int64_t seconds = (base_ == 0 ? SecondsOf(StartDate) : base_) + monotonic_ / 1000;
  const std::time_t time = static_cast<std::time_t>(seconds);
  std::tm parts{};
  gmtime_r(&time, &parts);
  return {parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday, parts.tm_hour, parts.tm_min, parts.tm_sec};
}

double MemoryClock::SecondsSinceMidnight() const {
  const DateTime now = Now();
  return now.Hour * 3600 + now.Minute * 60 + now.Second + static_cast<double>(monotonic_ % 1000) / 1000;
}

void MemoryClock::SetNow(const DateTime& now) {
  base_ = SecondsOf(now) - monotonic_ / 1000;
}

class MemoryLoop::LoopTimer : public Timer {
 public:
  LoopTimer(MemoryLoop& loop, std::function<void()> fired) : Fired(std::move(fired)), loop_(loop) {
    loop_.timers_.push_back(this);
  }
  ~LoopTimer() override { std::erase(loop_.timers_, this); }
  LoopTimer(const LoopTimer&) = delete;
  LoopTimer& operator=(const LoopTimer&) = delete;
  void SetInterval(int milliseconds) override {
    const int interval = std::max(0, milliseconds);
    if (interval == interval_) return;
    interval_ = interval;
    if (enabled_) Restart();
  }
  void SetEnabled(bool enabled) override {
    enabled_ = enabled;
    if (!enabled) return;
    Restart();
    if (interval_ == 1) --Due;  // as the real one: the shortest interval means the loop's next turn
  }
  bool Enabled() const override { return enabled_; }
  void Restart() { Due = loop_.clock_.MonotonicMilliseconds() + interval_; }

  std::function<void()> Fired;
  std::int64_t Due = 0;

 private:
  MemoryLoop& loop_;
  int interval_ = 0;
  bool enabled_ = false;
};

MemoryLoop::~MemoryLoop() = default;

std::unique_ptr<Timer> MemoryLoop::Create(std::function<void()> fired) {
  return std::make_unique<LoopTimer>(*this, std::move(fired));
}

MemoryLoop::LoopTimer* MemoryLoop::NextTimer() const {
  LoopTimer* next = nullptr;
  for (LoopTimer* timer : timers_)
    if (timer->Enabled() && (next == nullptr || timer->Due < next->Due)) next = timer;
  return next;
}

bool MemoryLoop::RunDue() {
  bool ran = false;
  for (std::size_t jobs = posted_.size(); jobs > 0 && !posted_.empty(); --jobs) {
    auto work = std::move(posted_.front());
    posted_.pop_front();
    work();
    ran = true;
  }
  // Each timer fires once a pump at most: one with interval 0 must not hold the pump for ever.
  const std::int64_t now = clock_.MonotonicMilliseconds();
  std::vector<LoopTimer*> due;
  for (LoopTimer* timer : timers_)
    if (timer->Enabled() && timer->Due <= now) due.push_back(timer);
  std::stable_sort(due.begin(), due.end(), [](auto* a, auto* b) { return a->Due < b->Due; });
  for (LoopTimer* timer : due) {
    const bool alive = std::find(timers_.begin(), timers_.end(), timer) != timers_.end();
    if (!alive || !timer->Enabled() || timer->Due > now) continue;
    timer->Restart();
    auto fired = timer->Fired;  // the handler may destroy its timer
    fired();
    ran = true;
  }
  return ran;
}

void MemoryLoop::DoEvents() {
  if (BeforePump) BeforePump();
  RunDue();
}

void MemoryLoop::WaitEvents(int milliseconds) {
  if (BeforePump) BeforePump();
  if (ending_ || RunDue()) return;
  if (Idle && Idle()) return;
  LoopTimer* next = NextTimer();
  const std::int64_t now = clock_.MonotonicMilliseconds();
  if (next == nullptr && milliseconds < 0) throw Fault(FaultKind::Internal, "The program waits and nothing can happen");
  std::int64_t step = next == nullptr ? milliseconds : std::max<std::int64_t>(0, next->Due - now);
  if (milliseconds >= 0) step = std::min<std::int64_t>(step, milliseconds);
  clock_.Advance(step);
  RunDue();
}

void MemoryLoop::Pass(int milliseconds) {
  const std::int64_t end = clock_.MonotonicMilliseconds() + milliseconds;
  DoEvents();
  for (LoopTimer* next = NextTimer(); next != nullptr && next->Due <= end; next = NextTimer()) {
    // A timer with interval 0 is due for ever: let a millisecond pass between its ticks.
    const std::int64_t now = clock_.MonotonicMilliseconds();
    clock_.Advance(std::max<std::int64_t>(now >= end ? 0 : 1, next->Due - now));
    DoEvents();
    if (now >= end) break;
  }
  clock_.Advance(std::max<std::int64_t>(0, end - clock_.MonotonicMilliseconds()));
  DoEvents();
}

void MemoryLoop::End(int code) {
  if (ending_) return;  // the first reason to end is the one that counts
  ending_ = true;
  code_ = code;
}

int MemoryLoop::Run() {
  while (!ending_) WaitEvents(-1);
  return code_;
}

}  // namespace corvid
