// SPDX-License-Identifier: GPL-3.0-or-later
// One column of a table of the language: rows 1 to the count, slot 0 unused, every access checked.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "core/fault.h"
#include "core/types.h"

namespace corvid {

template <typename T>
class Table {
 public:
  Table() : rows_(1) {}
  explicit Table(int32 upper) : rows_(static_cast<std::size_t>(upper) + 1) {}

  // Highest row that may be named. A fresh table has only the unused slot 0.
  int32 UBound() const { return static_cast<int32>(rows_.size()) - 1; }

  // Makes upper the highest row; contents are kept, new rows hold T{}. A negative bound is a Fault.
  void Resize(int32 upper) {
    if (upper < 0) OutOfRange(upper);
    rows_.resize(static_cast<std::size_t>(upper) + 1);
  }

  // A row outside 0..UBound() is a Fault of kind Index, never undefined behaviour.
  typename std::vector<T>::reference operator[](int32 row) {
    if (row < 0 || row > UBound()) OutOfRange(row);
    return rows_[static_cast<std::size_t>(row)];
  }
  typename std::vector<T>::const_reference operator[](int32 row) const {
    if (row < 0 || row > UBound()) OutOfRange(row);
    return rows_[static_cast<std::size_t>(row)];
  }

 private:
  [[noreturn]] static void OutOfRange(int32 row) {
    throw Fault(FaultKind::Index, "Row " + std::to_string(row) + " is outside the table");
  }
  std::vector<T> rows_;
};

}  // namespace corvid
