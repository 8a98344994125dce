// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/exit_watch.h"

#include <unistd.h>

#include <cstdlib>
#include <exception>
#include <thread>
#include <utility>

namespace corvid {

namespace {

// What exit() calls is given no argument, which is why this pointer stands here.
const ExitWatch* watch = nullptr;

}  // namespace

ExitWatch::ExitWatch(std::function<void()> act) : act_(std::move(act)), thread_(std::this_thread::get_id()) {
  watch = this;
  std::atexit([] {
    const ExitWatch* mine = std::exchange(watch, nullptr);
    if (mine != nullptr && mine->thread_ == std::this_thread::get_id()) mine->EndHere();
  });
}

ExitWatch::~ExitWatch() {
  watch = nullptr;
}

void ExitWatch::EndHere() const {
  try {
    act_();
  } catch (const std::exception&) {  // nobody is left to be told
  }
  _exit(EXIT_FAILURE);
}

}  // namespace corvid
