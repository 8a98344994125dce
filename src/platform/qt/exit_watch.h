// SPDX-License-Identifier: GPL-3.0-or-later
// The end that nobody has asked for: a library calls exit() from inside one of its own routines. Qt does so when the
// connection to the screen breaks, as when the X server dies or the player's desktop session goes down with it.
#pragma once

#include <functional>
#include <thread>

namespace corvid {

class ExitWatch {
 public:
  // act is called when exit() is called on this thread while the object lives, and only then. It may be in the midst of
  // any call of the event loop or of a window, none of which will return: act must not pump events nor touch a window.
  // After act the process ends at once with code 1; no destructor runs, since the threads of voices and sounds are
  // still at work on what these would take away. At most one object at a time.
  explicit ExitWatch(std::function<void()> act);
  ~ExitWatch();
  ExitWatch(const ExitWatch&) = delete;
  ExitWatch& operator=(const ExitWatch&) = delete;

 private:
  [[noreturn]] void EndHere() const;

  std::function<void()> act_;
  std::thread::id thread_;
};

}  // namespace corvid
