// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/clock.h"

namespace corvid {

// The system's clock. Wire: construct it anywhere, it holds nothing.
class SystemClock : public Clock {
 public:
  DateTime Now() const override;
  double SecondsSinceMidnight() const override;
  std::int64_t MonotonicMilliseconds() const override;
};

}  // namespace corvid
