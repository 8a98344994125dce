// SPDX-License-Identifier: GPL-3.0-or-later
// The one thread's event loop, and timers on it.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <thread>

namespace corvid {

class EventLoop {
 public:
  virtual ~EventLoop() = default;
  // Handles what is due and returns. Anything may have changed afterwards: no row number survives it.
  virtual void DoEvents() = 0;
  // Sleeps until something is due or milliseconds have passed (-1: no limit), handles it, returns.
  virtual void WaitEvents(int milliseconds) = 0;
  // Lets milliseconds pass in which nothing at all is handled.
  virtual void Freeze(int milliseconds) { std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds)); }
  // Makes the outermost Run return code; from then on Ending() is true and every waiting loop must give up.
  virtual void End(int code) = 0;
  virtual bool Ending() const = 0;
  virtual int Run() = 0;
};

// Fires on the event thread, every Interval milliseconds until disabled. Enabling again restarts the count.
class Timer {
 public:
  virtual ~Timer() = default;
  virtual void SetInterval(int milliseconds) = 0;
  virtual void SetEnabled(bool enabled) = 0;
  virtual bool Enabled() const = 0;
};

class Timers {
 public:
  virtual ~Timers() = default;
  virtual std::unique_ptr<Timer> Create(std::function<void()> fired) = 0;  // disabled at first
};

}  // namespace corvid
