// SPDX-License-Identifier: GPL-3.0-or-later
#include "input/menu_table.h"

#include <array>
#include <cstddef>

#include "core/text.h"

namespace corvid {

namespace {

constexpr std::string_view Tools = "TOOLS", AutoWalk = "AUTOWALK", Connect = "CONNECT", Edit = "EDIT";

// Items that do nothing yet stand here too: the letter that finds an item must not change its meaning later.
constexpr std::array menuItems{
    MenuItem{menuname::Main, "File"},
    MenuItem{menuname::Main, "Edit", Edit},
    MenuItem{menuname::Main, "Connect", Connect},
    MenuItem{menuname::Main, "Tools and Preferences", Tools},
    MenuItem{menuname::Main, "Windows"},
    MenuItem{menuname::Main, "Help"},

    MenuItem{Edit, "Triggers"},
    MenuItem{Edit, "Aliases"},
    MenuItem{Edit, "Keys"},
    MenuItem{Edit, "Variables", "", menuitem::EditVariables},

    MenuItem{Connect, "Character Setup/Connect", "", menuitem::CharacterSetup},
    MenuItem{Connect, "Disconnect/Unload Character", "", menuitem::DisconnectCharacter},
    MenuItem{Connect, "Quick Connect", "", menuitem::ConnectQuickly},
    MenuItem{Connect, "Reconnect", "", menuitem::Reconnect},
    MenuItem{Connect, "RELOAD", "", menuitem::ReloadScripts},

    MenuItem{Tools, "Record Commands/Speed Walk", AutoWalk},
    MenuItem{Tools, "SPEECH"},
    MenuItem{Tools, "Debug", "", menuitem::Debug},
    MenuItem{Tools, "Options"},
    MenuItem{Tools, "View User Data Folder Locations"},
    MenuItem{Tools, "Change Corvid datafile location"},

    MenuItem{AutoWalk, "Begin Recording", "", menuitem::BeginRecording},
    MenuItem{AutoWalk, "Finish Recording", "", menuitem::FinishRecording},
    MenuItem{AutoWalk, "Stop Playback/Recording", "", menuitem::StopWalk},
    MenuItem{AutoWalk, "Pause Playback/Recording", "", menuitem::PauseWalk},
    MenuItem{AutoWalk, "UnPause Playback/Recording", "", menuitem::UnPauseWalk},
    MenuItem{AutoWalk, "Ignore Last Command", "", menuitem::IgnoreLast},
    MenuItem{AutoWalk, "Slow Walk Option    ", "", menuitem::ToggleSlowWalk, menuitem::SlowWalkState},
};

constexpr std::array momentLists{
    MomentList{menuname::OneTime, menuitem::TabWord},
    MomentList{menuname::Classes, menuitem::JustClose},
};

struct MenuTitle {
  std::string_view Menu;
  std::string_view Words;
};

constexpr std::array menuTitles{
    MenuTitle{menuname::Main, "Main menu"},  MenuTitle{Edit, "Edit"},
    MenuTitle{Connect, "Connect"},           MenuTitle{Tools, "Tools and Preferences"},
    MenuTitle{AutoWalk, "Speed walk"},       MenuTitle{menuname::OneTime, "Tab words"},
    MenuTitle{menuname::Classes, "Classes"}, MenuTitle{menuname::Buffer, "Script window menu"},
};

constexpr std::size_t CodeLength = 2;

constexpr char Capital(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

constexpr bool SameCode(std::string_view words, std::string_view others) {
  if (words.size() < CodeLength || others.size() < CodeLength) return false;
  for (std::size_t i = 0; i < CodeLength; ++i)
    if (Capital(words[i]) != Capital(others[i])) return false;
  return true;
}

// How many items have the code of an earlier one of their menu; such an item is found by all of its words alone.
constexpr int SharedCodes() {
  int shared = 0;
  for (std::size_t i = 0; i < menuItems.size(); ++i)
    for (std::size_t j = i + 1; j < menuItems.size(); ++j)
      if (menuItems[i].Menu == menuItems[j].Menu && SameCode(menuItems[i].Words, menuItems[j].Words)) ++shared;
  return shared;
}
static_assert(SharedCodes() == 1, "besides Reconnect and RELOAD two items begin with the same two characters");

}  // namespace

std::span<const MenuItem> MenuTable::Items() {
  return menuItems;
}

const MenuItem* MenuTable::Find(std::string_view menu, std::string_view item) {
  for (const MenuItem& each : menuItems)
    if (each.Menu == menu && SameText(each.Words, item)) return &each;
  for (const MenuItem& each : menuItems)
    if (each.Menu == menu && SameCode(each.Words, item)) return &each;
  return nullptr;
}

bool MenuTable::Has(std::string_view menu) {
  for (const MenuItem& item : menuItems)
    if (item.Menu == menu) return true;
  return false;
}

const MomentList* MenuTable::FindList(std::string_view menu) {
  for (const MomentList& list : momentLists)
    if (list.Menu == menu) return &list;
  return nullptr;
}

std::string MenuTable::Title(std::string_view menu) {
  for (const MenuTitle& title : menuTitles)
    if (SameText(title.Menu, menu)) return std::string(title.Words);
  return std::string(menu);
}

}  // namespace corvid
