// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/list_rows.h"

#include <algorithm>

#include "core/keys.h"

namespace corvid {

std::optional<int32> RowByKey(int16 KeyCode, int32 row, int32 last) {
  constexpr int32 page = 10;
  if (last < 0) return std::nullopt;
  switch (KeyCode) {
    case keycode::Up:
    case keycode::Left:
      return std::max(row - 1, 0);
    case keycode::Down:
    case keycode::Right:
      return std::min(row + 1, last);
    case keycode::PageUp:
      return std::max(row - page, 0);
    case keycode::PageDown:
      return std::min(row + page, last);
    case keycode::Home:
      return 0;
    case keycode::End:
      return last;
    default:
      return std::nullopt;
  }
}

}  // namespace corvid
