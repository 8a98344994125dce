// SPDX-License-Identifier: GPL-3.0-or-later
// Searching a sorted table whose rows may be blanked. A blanked row has no key and so no place in the order; the
// nearest used row stands in for it.
#pragma once

#include "core/types.h"

namespace corvid {

// order(row) is below, equal to or above 0 as the wanted key sorts before, equal to or after the row's.

// The used row nearest to the middle of low..high, or 0 if all are free.
template <typename Free>
int32 MiddleRow(int32 low, int32 high, Free isFree) {
  const int32 middle = low + (high - low) / 2;
  for (int32 row = middle; row >= low; --row)
    if (!isFree(row)) return row;
  for (int32 row = middle + 1; row <= high; ++row)
    if (!isFree(row)) return row;
  return 0;
}

// A row with the wanted key, or 0.
template <typename Order, typename Free>
int32 EqualRow(int32 count, Order order, Free isFree) {
  int32 low = 1;
  int32 high = count;
  while (low <= high) {
    const int32 middle = MiddleRow(low, high, isFree);
    if (middle == 0) return 0;
    const int sign = order(middle);
    if (sign == 0) return middle;
    if (sign < 0) {
      high = middle - 1;
    } else {
      low = middle + 1;
    }
  }
  return 0;
}

// The first row that sorts after the wanted key; count + 1 if there is none.
template <typename Order, typename Free>
int32 InsertionRow(int32 count, Order order, Free isFree) {
  int32 low = 1;
  int32 high = count + 1;
  while (low < high) {
    const int32 middle = MiddleRow(low, high - 1, isFree);
    if (middle == 0) return high;
    if (order(middle) < 0) {
      high = middle;
    } else {
      low = middle + 1;
    }
  }
  return high;
}

// Among the rows with the wanted key: the first that owned(row) claims, else the last that shared(row) accepts, else 0.
// Rows are asked from the one found upward, then downward.
template <typename Order, typename Free, typename Owned, typename Shared>
int32 BestRow(int32 count, Order order, Free isFree, Owned owned, Shared shared) {
  const int32 found = EqualRow(count, order, isFree);
  if (found == 0) return 0;
  int32 remembered = 0;
  for (const int32 step : {1, -1}) {
    for (int32 row = found; row >= 1 && row <= count; row += step) {
      if (isFree(row)) continue;
      if (order(row) != 0) break;
      if (owned(row)) return row;
      if (shared(row)) remembered = row;
    }
  }
  return remembered;
}

// Moves the used rows down over the free ones with copy(from, to) and returns how many there are.
template <typename Free, typename Copy>
int32 PackRows(int32 count, Free isFree, Copy copy) {
  int32 kept = 0;
  for (int32 row = 1; row <= count; ++row) {
    if (isFree(row)) continue;
    ++kept;
    if (kept != row) copy(row, kept);
  }
  return kept;
}

}  // namespace corvid
