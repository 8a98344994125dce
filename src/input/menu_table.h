// SPDX-License-Identifier: GPL-3.0-or-later
// Every menu of the program. A new item is a row here and, where it does more than open another menu, a routine in
// menu_call.h.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "input/menu_call.h"

namespace corvid {

struct MenuItem {
  std::string_view Menu;                                   // upper case
  std::string_view Words;                                  // the first two characters are its code
  std::string_view Opens = {};                             // name of the menu that it leads to; empty: none
  MenuAction Choose = nullptr;                             // what it does; without both it is not built yet
  std::string (*State)(const MenuHouse& house) = nullptr;  // shown behind the words
};

// A list whose rows are whatever is at hand, shown for this one time.
struct MomentList {
  std::string_view Menu;
  MenuAction Choose;
};

namespace menuname {
inline constexpr std::string_view Main = "MAIN", Buffer = "BUFFERMENU", OneTime = "ONETIME", Classes = "CLASS";
}

class MenuTable {
 public:
  static std::span<const MenuItem> Items();
  // What stands behind "//": the words of an item, or any text with its code. nullptr when the menu has no such item.
  static const MenuItem* Find(std::string_view menu, std::string_view item);
  static bool Has(std::string_view menu);
  static const MomentList* FindList(std::string_view menu);
  // What a player calls the menu; its name where it has no other.
  static std::string Title(std::string_view menu);
};

}  // namespace corvid
