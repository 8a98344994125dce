// SPDX-License-Identifier: GPL-3.0-or-later
// A player at the keys of the menus.
#pragma once

#include <string>

#include "fixture.h"

namespace corvid {

class MenuTest : public KeyboardTest {
 protected:
  void TapAlt() { Press(keycode::Alt, AltBit); }
  // A key of the list, all three halves.
  void Key(int16 KeyCode, const std::string& character = "") {
    keys.KeyDown(KeyCode, 0);
    if (!character.empty()) keys.KeyTyped(character);
    keys.KeyUp(KeyCode, 0);
  }
  void Letter(char letter) { Key(letter, std::string(1, static_cast<char>(letter + 32))); }
  void OpenWalkMenu() {
    TapAlt();
    Letter('T');
    Letter('R');
    ASSERT_EQ(menu.CurrentMenu, "AUTOWALK");
    memory.effects.Clear();
  }
  void Record() {
    state.WalkState[0] = 2;
    state.WalkBuffer[0] = "n;";
  }
  std::string Item() const {
    return menu.ListIndex < 0 ? "" : menu.ListItems.at(static_cast<std::size_t>(menu.ListIndex));
  }
};

}  // namespace corvid
