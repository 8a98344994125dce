// SPDX-License-Identifier: GPL-3.0-or-later
// The event loop and its timers on Qt. Everything here belongs to the main thread.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "platform/event_loop.h"

class QCoreApplication;

namespace corvid {

// Wire: construct it first in main, after DesktopApplication (platform/qt/desktop) when the desktop window is
// wanted and alone otherwise, since sockets, timers and faces need an application object. argc and argv must live as
// long as the program.
class QtEventLoop : public EventLoop {
 public:
  QtEventLoop(int& argc, char** argv);
  ~QtEventLoop() override;

  void DoEvents() override;
  void WaitEvents(int milliseconds) override;
  void End(int code) override;
  bool Ending() const override { return ending_; }
  int Run() override;
  // From now on no call pumps: the process is about to end from inside a pump, and what the loop reads from is gone.
  void Break() { broken_ = true; }

  // How many DoEvents and WaitEvents calls are running inside each other: 0 in Run alone. A face tells by it whether
  // the program is idle or in the middle of a command that waits.
  int Depth() const { return static_cast<int>(pumps_.size()); }
  // Number of the call that runs at that depth, never the same twice; 0 when none does.
  std::uint64_t PumpAt(int depth) const {
    return depth < 1 || depth > Depth() ? 0 : pumps_[static_cast<std::size_t>(depth) - 1];
  }

 private:
  class Counter;
  void Pump(bool wait);

  std::unique_ptr<Counter> counter_;

  std::unique_ptr<QCoreApplication> application_;  // empty when one existed already
  bool ending_ = false;
  bool broken_ = false;
  int code_ = 0;
  std::vector<std::uint64_t> pumps_;  // the calls that are running, the innermost last
  std::uint64_t lastPump_ = 0;
};

// Timers fire while a handler waits in DoEvents or WaitEvents too, the own handler included. A timer may be disabled,
// restarted or destroyed from its own handler. With an interval of 1 the first tick comes at the loop's next turn.
class QtTimers : public Timers {
 public:
  std::unique_ptr<Timer> Create(std::function<void()> fired) override;
};

}  // namespace corvid
