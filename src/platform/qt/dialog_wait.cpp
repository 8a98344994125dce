// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/dialog_wait.h"

namespace corvid {

namespace {

constexpr std::int64_t PatienceMilliseconds = 100;

}  // namespace

DialogWait::DialogWait(const QtEventLoop& loop, const Clock& clock, DialogDriver& driver)
    : loop_(loop), clock_(clock), driver_(driver) {
  driver.SetWatch([this](bool open) { Changed(open); });
}

void DialogWait::Changed(bool open) {
  if (open) {
    depth_ = loop_.Depth() + 1;
  } else if (const std::uint64_t pump = loop_.PumpAt(depth_); pump != 0) {
    closing_.push_back({depth_, pump, clock_.MonotonicMilliseconds()});
  }
}

bool DialogWait::Over() {
  const std::int64_t now = clock_.MonotonicMilliseconds();
  std::erase_if(closing_, [&](const Closing& each) {
    return loop_.PumpAt(each.Depth) != each.Pump || now - each.Since >= PatienceMilliseconds;
  });
  return driver_.IsOpen() || closing_.empty();
}

}  // namespace corvid
