// SPDX-License-Identifier: GPL-3.0-or-later
// What is typed ahead must meet the dialog it was meant for.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/clock.h"
#include "platform/dialog_driver.h"
#include "platform/qt/event_loop.h"

namespace corvid {

// Knows the moment between the close of a dialog and the return of the loop that waited for it. Input that is taken in
// this moment would reach the main window, although the program may be about to ask its next question.
class DialogWait {
 public:
  // Watches the driver from now on; all three live as long as this.
  DialogWait(const QtEventLoop& loop, const Clock& clock, DialogDriver& driver);
  DialogWait(const DialogWait&) = delete;
  DialogWait& operator=(const DialogWait&) = delete;

  // True when input may be taken: a dialog is open, or no loop has yet to see that its dialog is closed. One that takes
  // long is at other work, which input may be for.
  bool Over();

 private:
  struct Closing {
    int Depth;  // of the loop that waits
    std::uint64_t Pump;
    std::int64_t Since;
  };
  void Changed(bool open);

  const QtEventLoop& loop_;
  const Clock& clock_;
  const DialogDriver& driver_;
  int depth_ = 0;  // of the loop that waits for the open dialog
  std::vector<Closing> closing_;
};

}  // namespace corvid
