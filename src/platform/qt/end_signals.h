// SPDX-License-Identifier: GPL-3.0-or-later
// The system's requests to end (a closed terminal, Control-C, the end of the desktop session) as an event of the loop,
// so that what a character remembers is saved before the program goes.
#pragma once

#include <functional>
#include <memory>

namespace corvid {

class EndSignals {
 public:
  // asked is called once, on the event thread, at SIGTERM, SIGINT or SIGHUP. One that was ignored when the program was
  // started stays ignored. The same signal a second time ends the program at once, as it would without this. At most
  // one object at a time.
  explicit EndSignals(std::function<void()> asked);
  ~EndSignals();
  EndSignals(const EndSignals&) = delete;
  EndSignals& operator=(const EndSignals&) = delete;

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace corvid
