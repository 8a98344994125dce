// SPDX-License-Identifier: GPL-3.0-or-later
// Where the player is in the menus, and what the list over the entry line shows.
#pragma once

#include <string>
#include <vector>

#include "core/types.h"

namespace corvid {

struct MenuState {
  std::string CurrentMenu;             // name of the menu shown last
  int16 MenuDepth = 0;                 // how deep the player is; 1 is the first menu
  std::vector<std::string> MenuStack;  // by depth: the item that led there, "MAIN//FILE##0"; slot 0 unused
  std::string MenuAutoPath;            // steps of an automatic walk that are still to come, joined by "|"
  bool MenuDeleteKey = false;          // the Delete key chose the item
  bool MenuActive = false;             // an item runs that a key chose

  bool ListOpen = false;
  std::vector<std::string> ListItems;
  int32 ListIndex = -1;  // from 0; -1 for none
};

}  // namespace corvid
