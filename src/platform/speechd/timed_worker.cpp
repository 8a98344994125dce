// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/speechd/timed_worker.h"

#include <pthread.h>
#include <signal.h>

#include <condition_variable>
#include <mutex>
#include <utility>

namespace corvid {

// Where one thread and its employer meet. Both hold it, since either may be gone first.
struct TimedWorker::Desk {
  std::mutex mutex;
  std::condition_variable changed;
  std::function<void()> job;  // empty while there is none
  bool done = false;
  bool ending = false;
  bool abandoned = false;
  std::shared_ptr<std::atomic<int>> stuck;
};

TimedWorker::TimedWorker() : stuck_(std::make_shared<std::atomic<int>>(0)) {}

TimedWorker::~TimedWorker() {
  if (desk_ == nullptr) return;
  {
    const std::lock_guard lock(desk_->mutex);
    desk_->ending = true;
    desk_->changed.notify_all();
  }
  thread_.join();
}

void TimedWorker::Hire() {
  desk_ = std::make_shared<Desk>();
  desk_->stuck = stuck_;
  // A service that died must not end the program when the library writes to it. The thread inherits the blocked signal.
  sigset_t pipe;
  sigset_t before;
  sigemptyset(&pipe);
  sigaddset(&pipe, SIGPIPE);
  pthread_sigmask(SIG_BLOCK, &pipe, &before);
  thread_ = std::thread([desk = desk_] { Serve(desk); });
  pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

void TimedWorker::Serve(const std::shared_ptr<Desk>& desk) {
  std::unique_lock lock(desk->mutex);
  for (;;) {
    desk->changed.wait(lock, [&] { return desk->ending || desk->job != nullptr; });
    if (desk->job == nullptr) return;
    std::function<void()> job = std::move(desk->job);
    desk->job = nullptr;
    lock.unlock();
    job();
    job = nullptr;  // what it owns goes before anybody hears that it is done
    lock.lock();
    if (desk->abandoned) {
      --*desk->stuck;
      return;
    }
    desk->done = true;
    desk->changed.notify_all();
  }
}

bool TimedWorker::Run(std::function<void()> job, std::chrono::milliseconds limit) {
  if (desk_ == nullptr) Hire();
  std::unique_lock lock(desk_->mutex);
  desk_->job = std::move(job);
  desk_->done = false;
  desk_->changed.notify_all();
  if (desk_->changed.wait_for(lock, limit, [&] { return desk_->done; })) return true;
  desk_->abandoned = true;
  ++*stuck_;
  lock.unlock();
  thread_.detach();
  desk_ = nullptr;
  return false;
}

}  // namespace corvid
