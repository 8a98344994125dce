// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace corvid {

struct DateTime {
  int Year, Month, Day, Hour, Minute, Second;  // local time; Month and Day from 1
};

class Clock {
 public:
  virtual ~Clock() = default;
  virtual DateTime Now() const = 0;
  virtual double SecondsSinceMidnight() const = 0;         // local time, with fractions
  virtual std::int64_t MonotonicMilliseconds() const = 0;  // never goes back
};

}  // namespace corvid
