// SPDX-License-Identifier: GPL-3.0-or-later
// The keyboard on the in-memory platform, with fingers.
#pragma once

#include <string>

#include "core/keys.h"
#include "dialogs/character_list.h"
#include "dialogs/gen_dialog.h"
#include "dialogs/quick_connect.h"
#include "dialogs/variable_list.h"
#include "input/keyboard.h"
#include "sessions/fixture.h"

namespace corvid {

class KeyboardTest : public SessionTest {
 protected:
  KeyboardTest() {
    memory.face.SetEvents(&keys);
    options.AutoSave = false;
    speech.TypingEcho = {};
    speech.InterruptOwn = {};
  }
  void Down(int16 KeyCode, int16 Shift = 0) { keys.KeyDown(KeyCode, Shift); }
  void Press(int16 KeyCode, int16 Shift = 0) {
    keys.KeyDown(KeyCode, Shift);
    keys.KeyUp(KeyCode, Shift);
  }
  void Type(const std::string& text) {
    for (const char c : text) Stroke(std::string(1, c));
  }
  // One key with what it types.
  void Stroke(const std::string& character) {
    keys.KeyDown(character == "\r" ? keycode::Enter : static_cast<int16>('Z'), 0);
    keys.KeyTyped(character);
  }
  void Enter(const std::string& line) {
    Type(line);
    Stroke("\r");
  }
  TextModel& Entry() { return buffers.EntryBox; }
  // A script buffer with this text, shown in the entry box.
  void Edit(const std::string& text, bool readOnly = false) {
    scriptFiles.ResizeBuffers(4);
    buffers.BufferFile[4] = "/data/hunt.set";
    buffers.BufferFlags[4] = static_cast<int16>(buffer::Script | (readOnly ? buffer::ReadOnly : 0));
    buffers.BufferText[4] = text;
    scriptFiles.MoveBuffers(4);
  }
  void Macro(int16 code, int16 shift, const std::string& body, const std::string& inClass = "") {
    std::string error;
    symbols.Addmacro(code, shift, body, 0, inClass, 7, body, error);
  }

  SpeechState speech;
  MenuState menu;
  GenDialog dialog{platform, upcalls, speech};
  std::vector<int16> opened;  // rows that quick connections opened
  QuickConnect quickConnect{
      state, characters, dialog, upcalls, [this](int16 row) { opened.push_back(row); }, [](int16) { return false; }};
  CharacterList characterList{script, options, state, characters, sessions, dialog, platform, upcalls};
  VariableList variables{script, options, symbols, dialog, platform, upcalls};
  Menus menus{{menu, script, options, buffers, state, keyboard, scriptFiles, dialog, platform, upcalls, sessions,
               characterList, quickConnect, variables, [this] { memory.effects.Add("screen", "debugger"); }}};
  Keyboard keys{{script, options, buffers, state, speech, keyboard},
                symbols,
                scanner,
                scriptFiles,
                saving,
                timers,
                menus,
                platform,
                upcalls};
};

}  // namespace corvid
