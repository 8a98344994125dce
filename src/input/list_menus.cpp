// SPDX-License-Identifier: GPL-3.0-or-later
// Lists that exist for one showing: the tab words, and lists that are only read.
#include <algorithm>

#include "core/text.h"
#include "core/upcalls.h"
#include "files/buffer_state.h"
#include "files/script_value.h"
#include "input/menu_call.h"
#include "input/menu_table.h"
#include "script/options_state.h"

namespace corvid {

namespace {

// The list stays, so that several words can be dropped one after the other.
void DropWord(MenuCall& call) {
  MenuState& menu = call.house.menu;
  const int32 row = menu.ListIndex;
  if (!RunMenuCommand(call.house, "untab {" + ScriptValue(call.Item, call.house.options) + "}")) return;  // PUMP
  if (!menu.ListOpen || menu.CurrentMenu != menuname::OneTime) return;
  std::vector<std::string> left = menu.ListItems;
  const auto gone = std::find(left.begin(), left.end(), call.Item);
  if (gone != left.end()) left.erase(gone);
  if (left.empty()) return call.list.CloseListBox();
  call.list.SetupMenu(left, {}, 0, std::string(menuname::OneTime), row);
}

}  // namespace

void menuitem::TabWord(MenuCall& call) {
  if (call.house.menu.MenuDeleteKey) return DropWord(call);
  TextModel& entry = call.house.buffers.EntryBox;
  if (!entry.Locked()) {
    const int32 start = entry.SelStart();
    entry.SetSelText(call.Item);
    entry.Select(start, start + static_cast<int32>(call.Item.size()));  // the caret behind it
  }
  call.list.CloseListBox();
}

void menuitem::JustClose(MenuCall& call) {
  call.list.CloseListBox();
}

}  // namespace corvid
