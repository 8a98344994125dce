// SPDX-License-Identifier: GPL-3.0-or-later
// The menu of tools.
#include "input/menu_call.h"

namespace corvid {

void menuitem::Debug(MenuCall& call) {
  call.list.CloseListBox();
  call.house.DebugRoutine();  // PUMP
}

}  // namespace corvid
