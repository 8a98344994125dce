// SPDX-License-Identifier: GPL-3.0-or-later
// The one exception of our own: an unexpected run-time error, such as a row out of range or a full disk.
#pragma once

#include <stdexcept>
#include <string>

namespace corvid {

// Numbers that scripts and the error log know; BadPattern is the one that the receive pipeline tests for.
enum class FaultKind : int {
  Overflow = 6,
  Index = 9,
  Division = 11,
  Type = 13,
  Internal = 51,
  BadFile = 52,
  FileNotFound = 53,
  FileIo = 57,
  BadRecordLength = 59,
  DiskFull = 61,
  Permission = 70,
  PathNotFound = 76,
  BadPattern = 93,
};

class Fault : public std::runtime_error {
 public:
  Fault(FaultKind kind, const std::string& text) : std::runtime_error(text), Kind(kind) {}
  FaultKind Kind;
  int Number() const { return static_cast<int>(Kind); }
};

}  // namespace corvid
