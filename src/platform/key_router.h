// SPDX-License-Identifier: GPL-3.0-or-later
// Sends keys where the player's hands are: to the open dialog, else to the main window.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "platform/clock.h"
#include "platform/dialog_driver.h"
#include "platform/face.h"

namespace corvid {

class KeyRouter {
 public:
  KeyRouter(DialogDriver& dialog, const Clock& clock) : dialog_(dialog), clock_(clock) {}
  void SetEvents(FaceEvents* events) { events_ = events; }

  // Keeps the modifiers that are held; Shift of every key is theirs.
  void Down(int16 KeyCode);
  void Up(int16 KeyCode);
  // A whole key with what it types. Modifiers of Shift that are not held are pressed before and released behind it, or
  // as soon as another key comes while it waits.
  void Press(int16 KeyCode, int16 Shift);
  // A whole key for one character (UTF-8).
  void Type(const std::string& character);
  // A whole line at once: puts it at the end of the entry and presses Enter. What the entry shows of a script that
  // cannot be changed gives way to the entry line first, as it does for a typed character.
  void EnterLine(TextModel& entry, const std::string& line);

  // Halves of a key of a real keyboard, which tells its modifiers (its own included while it is down) and what it types
  // (UTF-8, any number of characters).
  void Pressed(int16 KeyCode, int16 Shift, const std::string& text);
  void Released(int16 KeyCode, int16 Shift);

  // False while a key is still in work and no one waits for the next: what came after it must not overtake it. A key
  // that has opened a dialog, or keeps waiting, lets the next one in.
  bool Free() const;

 private:
  class Work;
  void KeyDown(int16 KeyCode);
  void KeyTyped(const std::string& character);
  void KeyUp(int16 KeyCode);
  void LetGo();

  DialogDriver& dialog_;
  const Clock& clock_;
  FaceEvents* events_ = nullptr;
  int16 held_ = 0;
  int16 borrowed_ = 0;   // of those the ones that Press has put down
  unsigned target_ = 0;  // serial of the dialog state that got the last KeyDown
  int working_ = 0;      // keys in work, one inside the other
  unsigned workSerial_ = 0;
  std::int64_t workStart_ = 0;
};

}  // namespace corvid
