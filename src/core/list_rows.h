// SPDX-License-Identifier: GPL-3.0-or-later
// How keys move in a list, the same in menus and in dialogs.
#pragma once

#include <optional>

#include "core/types.h"

namespace corvid {

// Row of a list of rows 0 to last that a key leads to from row; at either end it stays. Nothing for a key that does not
// move, and for a list without rows.
std::optional<int32> RowByKey(int16 KeyCode, int32 row, int32 last);

}  // namespace corvid
