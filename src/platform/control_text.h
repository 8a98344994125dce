// SPDX-License-Identifier: GPL-3.0-or-later
// Editing the text of a dialog's text box or box: caret, selection, deleting, by whole characters.
#pragma once

#include <string>
#include <string_view>

#include "platform/dialog_view.h"

namespace corvid {

// What is shown and spoken of the control's text: the text itself, or its stars.
std::string ShownText(const DialogControl& control);

class ControlText {
 public:
  // caretAtStart tells which end of the selection is the caret and is kept up to date.
  ControlText(DialogControl& control, bool& caretAtStart) : control_(control), caretAtStart_(caretAtStart) { Clamp(); }

  void Insert(std::string_view text);  // replaces the selection
  bool DeleteBack();                   // the selection, else the character before the caret; false when there is none
  bool DeleteForward();
  bool MoveKey(int16 KeyCode, int16 Shift);  // false for a key that moves nothing
  void SelectAll();
  std::string Selected() const;

 private:
  void Clamp();
  std::size_t Caret() const;
  void Place(std::size_t caret, bool select);
  bool Erase(std::size_t from, std::size_t to);
  std::size_t Before(std::size_t position) const;
  std::size_t Behind(std::size_t position) const;
  std::size_t WordBefore(std::size_t position) const;
  std::size_t WordBehind(std::size_t position) const;
  std::size_t LineStart(std::size_t position) const;
  std::size_t LineEnd(std::size_t position) const;
  std::size_t OtherLine(std::size_t position, bool up) const;

  DialogControl& control_;
  bool& caretAtStart_;
};

}  // namespace corvid
