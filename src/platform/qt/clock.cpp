// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/clock.h"

#include <chrono>
#include <ctime>

namespace corvid {

namespace {

std::tm LocalTime(std::time_t seconds) {
  std::tm parts{};
  localtime_r(&seconds, &parts);
  return parts;
}

}  // namespace

DateTime SystemClock::Now() const {
  const std::tm t = LocalTime(std::time(nullptr));
  return DateTime{t.tm_year + 1900, t.tm_mon + 1, t.tm_mday, t.tm_hour, t.tm_min, t.tm_sec};
}

double SystemClock::SecondsSinceMidnight() const {
  std::timespec now{};
  std::timespec_get(&now, TIME_UTC);
  const std::tm t = LocalTime(now.tv_sec);
  return t.tm_hour * 3600 + t.tm_min * 60 + t.tm_sec + static_cast<double>(now.tv_nsec) / 1e9;
}

std::int64_t SystemClock::MonotonicMilliseconds() const {
  using std::chrono::duration_cast;
  using std::chrono::milliseconds;
  return duration_cast<milliseconds>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

}  // namespace corvid
