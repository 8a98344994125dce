// SPDX-License-Identifier: GPL-3.0-or-later
// Keys that press buttons: a caption such as "Step F8" or "Find   Ctrl-F" ends with the name of its key.
#include "core/keys.h"
#include "core/text.h"
#include "dialogs/gen_dialog.h"

namespace corvid {

namespace {

struct CaptionKey {
  int16 KeyCode = -1;  // -1: the caption names none
  int16 Shift = 0;
};

// A plain word such as "Delete" is no key, and neither is a letter alone. "Esc" is the cancel button's affair.
CaptionKey KeyIn(const std::string& caption) {
  const std::size_t blank = caption.rfind(' ');
  if (blank == std::string::npos) return {};
  const std::string word = caption.substr(blank + 1);
  if (SameText(word, "Del")) return {keycode::Delete, 0};
  CaptionKey key;
  ParseKeystroke(word, key.Shift, key.KeyCode);
  const bool function = key.KeyCode >= keycode::F1 && key.KeyCode <= keycode::F12;
  if (!function && (key.Shift & (ControlBit | AltBit)) == 0) return {};
  return key;
}

}  // namespace

// True when the key was a button's. In a text the Delete key edits.
bool GenDialog::PressByKey(ControlKind from, int16& KeyCode, int16 Shift) {
  const bool inText = from == ControlKind::TextBox || from == ControlKind::Box;
  if (inText && KeyCode == keycode::Delete) return false;
  for (const DialogControl& control : model_.Controls) {
    if (control.Kind != ControlKind::Button || !control.Enabled || !control.Visible) continue;
    const CaptionKey key = KeyIn(control.Caption);
    if (key.KeyCode < 0 || key.KeyCode != KeyCode || key.Shift != Shift) continue;
    KeyCode = 0;
    int16 none = 0;
    GDEvent(ControlKind::Button, control.Index, DialogEvent::Click, none, none);  // the dialog may be gone
    return true;
  }
  return false;
}

}  // namespace corvid
