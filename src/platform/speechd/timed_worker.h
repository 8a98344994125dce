// SPDX-License-Identifier: GPL-3.0-or-later
// A thread for calls that may never return.
#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <thread>

namespace corvid {

class TimedWorker {
 public:
  TimedWorker();
  ~TimedWorker();  // a thread that is stuck is left behind
  TimedWorker(const TimedWorker&) = delete;
  TimedWorker& operator=(const TimedWorker&) = delete;

  // Runs job on the worker's thread and waits for it. False when it has not returned within the limit: it is then left
  // to itself (so it must own all that it touches), and the next Run has a new thread.
  bool Run(std::function<void()> job, std::chrono::milliseconds limit);
  int Stuck() const { return *stuck_; }  // jobs left to themselves that have not returned yet

 private:
  struct Desk;
  void Hire();
  static void Serve(const std::shared_ptr<Desk>& desk);

  std::shared_ptr<Desk> desk_;
  std::thread thread_;  // who works at desk_
  std::shared_ptr<std::atomic<int>> stuck_;
};

}  // namespace corvid
