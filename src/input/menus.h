// SPDX-License-Identifier: GPL-3.0-or-later
// The menus: a list that comes up over the entry line and is read item by item. Every menu is shown, and every item
// carried out, by a selection code: the menu's name, "//", and the first two characters of the item; "00" is the menu
// itself. Where two items have one code, the first is meant, and the other by all of its words.
#pragma once

#include <string>
#include <vector>

#include "input/menu_call.h"

namespace corvid {

class Menus final : public MenuList {
 public:
  explicit Menus(const MenuHouse& house) : house_(house) {}

  // From outside the menus: the first menu that a player meets, or the begin of an automatic walk by path ("TOOLS|RE",
  // beginnings of items). A step that no item fits is reported and ends the walk. May pump events.
  void OpenMenu(const std::string& FSelection, const std::string& path = "");
  // A list for this one time, under a name of MenuTable::FindList.
  void ShowList(const std::vector<std::string>& items, const std::string& MenuName);

  void SetupMenu(const std::vector<std::string>& VariantList, const std::vector<std::string>& StringList,
                 int16 MenuLength, const std::string& MenuName, int32 ListIndex) override;
  void CloseListBox() override;
  void MenuRoutine(const std::string& FSelection) override;
  void ShowAgain() override;

  bool ListOpen() const { return house_.menu.ListOpen; }
  // A key while the list is open. True when it is used up, so that its character goes nowhere. May pump events.
  bool ListKeyDown(int16 KeyCode, int16 Shift);
  // The mouse: a row outside the list is left alone.
  void ListClick(int32 row);
  void ListDoubleClick(int32 row);

 private:
  void OpenListBox();
  void ShowMenu(const std::string& name);
  void FollowPath();
  void ChooseByKey();
  void GoBack();
  void Move(int16 KeyCode);
  bool FindByLetter(char letter);
  void SelectRow(int32 row);
  void SayItem() const;
  void RunItem() { MenuRoutine(Selection()); }
  std::string Selection() const;  // code of the selected item; empty for none
  void SayNotBuilt(const std::string& what) const;

  MenuHouse house_;
  int32 restoreIndex_ = 0;  // row that the menu shown next begins with
};

}  // namespace corvid
