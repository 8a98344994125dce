// SPDX-License-Identifier: GPL-3.0-or-later
// Drives an open dialog without a toolkit: what each key does to which control, and what the engine is told of it. The
// faces that have no windows of their own stand on it, so that a dialog behaves the same behind each.
//
// What is told: moving the focus gives LostFocus and GotFocus; an edit of a text box or box Change; another row or mark
// of a list, a toggled check, a chosen option, a pressed button Click; a moved scroll bar Change. Before a key has its
// effect the focused control is told KeyDown, before a character KeyPress, and either may be consumed.
#pragma once

#include <functional>
#include <string>
#include <utility>

#include "platform/dialog_view.h"

namespace corvid {

class DialogDriver {
 public:
  struct Clipboard {
    std::function<std::string()> Get;
    std::function<void(const std::string&)> Set;
  };
  // Without a clipboard Control-C, Control-X and Control-V do nothing.
  explicit DialogDriver(Clipboard clipboard = {});

  // Told when a dialog opens (true) and when it has closed.
  void SetWatch(std::function<void(bool open)> watch) { watch_ = std::move(watch); }

  // The four calls of DialogView. Open is Prepare, after which the dialog can be looked at, and TakeFirstFocus.
  void Open(DialogModel& model, DialogEvents& events);
  void Prepare(DialogModel& model, DialogEvents& events);
  void TakeFirstFocus();
  void Close();
  void ControlChanged(int32 control);
  void Focus(int32 control);  // nothing happens when it cannot have the focus

  bool IsOpen() const { return model_ != nullptr; }
  DialogModel* Model() const { return model_; }  // nullptr when none is open
  int32 Focused() const { return focus_; }       // -1 for none
  // Changes with every Open and Close: the same number means the same dialog.
  unsigned Serial() const { return serial_; }

  // Keys, for the focused control. Tab and Shift-Tab move the focus; Enter presses the focused or else the default
  // button; Escape presses the cancel button; Space presses, toggles or marks; arrows, Home, End and the page keys move
  // in lists, options and scroll bars; typing edits text and finds list rows by their first letter.
  void KeyDown(int16 KeyCode, int16 Shift);
  void KeyTyped(const std::string& character);  // belongs to the KeyDown before it
  void KeyUp(int16 KeyCode, int16 Shift);

  // The same by meaning. A control of another kind, or a row outside the list, is left alone.
  void SetText(int32 control, const std::string& text);
  void ChooseRow(int32 control, int32 row);
  void MarkRow(int32 control, int32 row, bool selected);  // of a list of many choices
  void SetValue(int32 control, int16 value);              // check, option, scroll bar; brought into its range
  void Press(int32 control);
  void DoubleClick(int32 control);  // of a list's chosen row
  // Tells the control that a key is down, without the key's usual effect. True when the dialog took it for itself.
  bool Offer(int32 control, int16 KeyCode);
  int32 DefaultButton() const;  // -1 for none
  int32 CancelButton() const;
  void RequestClose();

  static bool CanFocus(const DialogControl& control);
  static int32 FirstFocus(const DialogModel& model);  // place of the control that begins with the focus, -1 for none

 private:
  DialogControl* At(int32 control) const;
  bool Tell(int32 control, DialogEvent event, int16& key, int16& shift);
  bool Tell(int32 control, DialogEvent event);
  int32 Neighbour(int32 from, int step) const;
  int32 FindButton(bool DialogControl::*which) const;
  void KeyEffect(DialogControl& control, int16 KeyCode, int16 Shift);
  void ListKey(const DialogControl& control, int16 KeyCode);
  void FindRow(const DialogControl& control, const std::string& character);
  void OptionKey(DialogControl& control, int16 KeyCode);
  void ScrollKey(const DialogControl& control, int16 KeyCode);
  void ToggleMark(DialogControl& control);
  void TextKey(DialogControl& control, int16 KeyCode, int16 Shift);
  void TypeInto(DialogControl& control, const std::string& character);

  Clipboard clipboard_;
  std::function<void(bool)> watch_;
  DialogModel* model_ = nullptr;
  DialogEvents* events_ = nullptr;
  int32 focus_ = -1;
  unsigned serial_ = 0;
  bool swallow_ = false;       // the key was used up: its character goes nowhere
  bool caretAtStart_ = false;  // which end of the selection moves with Shift and an arrow
};

}  // namespace corvid
