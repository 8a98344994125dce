// SPDX-License-Identifier: GPL-3.0-or-later
#include "input/menus.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "core/keys.h"
#include "core/list_rows.h"
#include "core/number.h"
#include "core/text.h"
#include "core/trap.h"
#include "files/buffers.h"
#include "input/keyboard_state.h"
#include "input/menu_table.h"
#include "platform/platform.h"

namespace corvid {

namespace {

constexpr std::string_view Parting = "//";
constexpr std::string_view IndexMark = "##";
constexpr std::size_t CodeLength = 2;
constexpr std::string_view WholeMenu = "00";
constexpr int16 ReadByWindow = 1;  // a screen reader reads the list by itself

bool IsFocusKey(int16 KeyCode) {
  return KeyCode == keycode::Shift || KeyCode == keycode::Control || KeyCode == keycode::Alt ||
         KeyCode == keycode::Applications;
}

}  // namespace

void Menus::OpenMenu(const std::string& FSelection, const std::string& path) {
  MenuState& menu = house_.menu;
  if (!path.empty()) CloseListBox();
  menu.MenuDepth = 1;
  menu.MenuAutoPath = path;
  MenuRoutine(FSelection);
}

void Menus::ShowList(const std::vector<std::string>& items, const std::string& MenuName) {
  house_.menu.MenuDepth = 1;
  house_.menu.MenuAutoPath.clear();
  SetupMenu(items, {}, 0, MenuName, 0);
}

void Menus::SetupMenu(const std::vector<std::string>& VariantList, const std::vector<std::string>& StringList,
                      int16 MenuLength, const std::string& MenuName, int32 ListIndex) {
  MenuState& menu = house_.menu;
  menu.CurrentMenu = MenuName;
  std::vector<std::string> items = VariantList;
  for (std::size_t i = 0; i < StringList.size() && static_cast<int32>(i) < MenuLength; ++i)
    items.push_back(StringList[i]);
  menu.ListItems = std::move(items);
  menu.ListIndex = std::clamp<int32>(ListIndex, -1, static_cast<int32>(menu.ListItems.size()) - 1);
  if (!menu.MenuAutoPath.empty()) return FollowPath();
  OpenListBox();
  if (menu.ListItems.empty()) {
    house_.upcalls.speaker.SpeakOut("The list is empty.", Channel::System, 0);
  } else {
    SayItem();
  }
}

void Menus::OpenListBox() {
  const MenuState& menu = house_.menu;
  house_.menu.ListOpen = true;
  house_.platform.face.ShowListMenu(
      {menu.CurrentMenu, MenuTable::Title(menu.CurrentMenu), menu.ListItems, menu.ListIndex});
}

void Menus::CloseListBox() {
  if (!std::exchange(house_.menu.ListOpen, false)) return;
  house_.platform.face.CloseListMenu();
  // The entry says its name when it gets the focus; an output that had it before says nothing.
  if (!house_.keyboard.OutputFocused) house_.scriptFiles.SpeakWindowName();
}

// An automatic walk: the menus on the way are not seen.
void Menus::FollowPath() {
  MenuState& menu = house_.menu;
  const std::size_t bar = menu.MenuAutoPath.find('|');
  const std::string wanted = menu.MenuAutoPath.substr(0, bar);
  menu.MenuAutoPath = bar == std::string::npos ? "" : menu.MenuAutoPath.substr(bar + 1);
  const auto found = std::find_if(menu.ListItems.begin(), menu.ListItems.end(),
                                  [&](const std::string& item) { return StartsWithText(item, wanted); });
  if (found == menu.ListItems.end()) {
    menu.MenuAutoPath.clear();  // the next menu that the player opens is no part of this walk
    house_.upcalls.errors.ErrorReport("Auto-menu did not find matchingmenu item " + wanted, menu.CurrentMenu, 0, 0);
    return;
  }
  menu.ListIndex = static_cast<int32>(found - menu.ListItems.begin());
  RunItem();  // PUMP
}

void Menus::MenuRoutine(const std::string& FSelection) {
  const std::size_t parting = FSelection.find(Parting);
  if (parting == std::string::npos) return;
  const std::string name = Upper(Trim(std::string_view(FSelection).substr(0, parting)));
  const std::string item = FSelection.substr(parting + Parting.size());
  MenuCall call{house_, *this, item};
  if (const MomentList* list = MenuTable::FindList(name)) return list->Choose(call);  // PUMP
  const std::string code = Upper(std::string_view(item).substr(0, CodeLength));
  if (code == WholeMenu) return ShowMenu(name);
  const MenuItem* chosen = MenuTable::Find(name, item);
  if (chosen == nullptr) return;
  if (chosen->Choose != nullptr) {
    chosen->Choose(call);  // PUMP
  } else if (!chosen->Opens.empty()) {
    MenuRoutine(std::string(chosen->Opens) + "//00");
  } else {
    SayNotBuilt(std::string(chosen->Words));
  }
}

void Menus::ShowMenu(const std::string& name) {
  const int32 index = std::exchange(restoreIndex_, 0);
  if (!MenuTable::Has(name)) return SayNotBuilt(MenuTable::Title(name));
  std::vector<std::string> items;
  for (const MenuItem& item : MenuTable::Items()) {
    if (item.Menu != name) continue;
    items.emplace_back(item.Words);
    if (item.State != nullptr) items.back() += item.State(house_);
  }
  SetupMenu(items, {}, 0, name, index);
}

void Menus::ShowAgain() {
  restoreIndex_ = house_.menu.ListIndex;
  ShowMenu(Upper(house_.menu.CurrentMenu));
}

void Menus::SayNotBuilt(const std::string& what) const {
  const std::string text = "Corvid does not have this menu yet: " + what;
  house_.platform.face.Notice(text);  // who reads with the fingers, or has no sound, is told as well
  house_.upcalls.speaker.SpeakOut(text, Channel::System, 0);
}

std::string Menus::Selection() const {
  const MenuState& menu = house_.menu;
  if (menu.ListIndex < 0) return {};
  return menu.CurrentMenu + std::string(Parting) + menu.ListItems.at(static_cast<std::size_t>(menu.ListIndex));
}

// Notes where the item leads to, so that Left finds the way back. Kept: an item that leads nowhere is a step down too.
void Menus::ChooseByKey() {
  MenuState& menu = house_.menu;
  if (menu.ListIndex < 0) return;
  menu.MenuDepth = AddInt16(menu.MenuDepth, 1);
  if (menu.MenuStack.size() <= static_cast<std::size_t>(menu.MenuDepth))
    menu.MenuStack.resize(static_cast<std::size_t>(menu.MenuDepth) + 1);
  menu.MenuStack[static_cast<std::size_t>(menu.MenuDepth)] = Upper(menu.CurrentMenu) +
                                                             Selection().substr(menu.CurrentMenu.size()) +
                                                             std::string(IndexMark) + std::to_string(menu.ListIndex);
  menu.MenuActive = true;
  RunItem();  // PUMP
}

void Menus::GoBack() {
  MenuState& menu = house_.menu;
  if (menu.MenuDepth <= 1) return CloseListBox();
  const std::string entry = menu.MenuStack.at(static_cast<std::size_t>(menu.MenuDepth));
  --menu.MenuDepth;
  const std::size_t mark = entry.rfind(IndexMark);
  restoreIndex_ = mark == std::string::npos ? 0 : static_cast<int32>(Val(entry.substr(mark + IndexMark.size())));
  MenuRoutine(entry.substr(0, entry.find(Parting)) + "//00");
}

bool Menus::ListKeyDown(int16 KeyCode, int16 Shift) {
  bool used = true;
  // An item that waits may be in the midst of its work while this key comes.
  const bool active = std::exchange(house_.menu.MenuActive, false);
  const bool deleting = std::exchange(house_.menu.MenuDeleteKey, false);
  Trap trap{house_.upcalls.errors, "listMenu_keydown", {Keyname(KeyCode, Shift)}};
  trap.Step([&] {
    if (IsFocusKey(KeyCode) || (Shift & (ControlBit | AltBit)) != 0) return;
    switch (KeyCode) {
      case keycode::Enter:
      case keycode::Space:
      case keycode::Right:
        return ChooseByKey();
      case keycode::Delete:
        house_.menu.MenuDeleteKey = true;
        RunItem();  // PUMP
        break;
      case keycode::Escape:
        return CloseListBox();
      case keycode::Left:
      case keycode::Backspace:
        return GoBack();
      default:
        if ((KeyCode >= 'A' && KeyCode <= 'Z') || (KeyCode >= '0' && KeyCode <= '9')) {
          used = FindByLetter(static_cast<char>(KeyCode));
        } else {
          Move(KeyCode);
        }
    }
  });
  house_.menu.MenuActive = active;
  house_.menu.MenuDeleteKey = deleting;
  return used;
}

// A letter that only one item begins with chooses it; one that several begin with goes from one to the next.
bool Menus::FindByLetter(char letter) {
  const std::vector<std::string>& items = house_.menu.ListItems;
  const auto begins = [&](const std::string& item) { return !item.empty() && UpperChar(item.front()) == letter; };
  const auto count = std::count_if(items.begin(), items.end(), begins);
  if (count == 0) return false;
  const auto rows = static_cast<int32>(items.size());
  int32 row = house_.menu.ListIndex;
  do {
    row = (row + 1) % rows;
  } while (!begins(items[static_cast<std::size_t>(row)]));
  SelectRow(row);
  if (count > 1) return false;
  ChooseByKey();
  return true;
}

void Menus::Move(int16 KeyCode) {
  const MenuState& menu = house_.menu;
  const auto last = static_cast<int32>(menu.ListItems.size()) - 1;
  if (const std::optional<int32> row = RowByKey(KeyCode, menu.ListIndex, last)) SelectRow(*row);
}

void Menus::SelectRow(int32 row) {
  house_.menu.ListIndex = row;
  house_.platform.face.SelectListRow(row);
  SayItem();
}

void Menus::SayItem() const {
  const MenuState& menu = house_.menu;
  if (menu.ListIndex < 0) return;
  house_.upcalls.speaker.StopSpeaking(Channel::Incoming);
  house_.upcalls.speaker.SpeakOut(menu.ListItems.at(static_cast<std::size_t>(menu.ListIndex)), Channel::Incoming,
                                  ReadByWindow);
}

void Menus::ListClick(int32 row) {
  const MenuState& menu = house_.menu;
  if (!menu.ListOpen || row < 0 || row >= static_cast<int32>(menu.ListItems.size())) return;
  Trap trap{house_.upcalls.errors, "ListMenu_click", {std::to_string(row)}};
  trap.Step([&] { SelectRow(row); });
}

void Menus::ListDoubleClick(int32 row) {
  const MenuState& menu = house_.menu;
  if (!menu.ListOpen || row < 0 || row >= static_cast<int32>(menu.ListItems.size())) return;
  Trap trap{house_.upcalls.errors, "ListMenu_click", {std::to_string(row)}};
  trap.Step([&] {
    house_.menu.ListIndex = row;
    RunItem();  // PUMP
  });
}

}  // namespace corvid
