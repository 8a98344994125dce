// SPDX-License-Identifier: GPL-3.0-or-later
// How a face shows a dialog. The dialog engine keeps the controls; a face mirrors them, writes the user's changes back
// into them and tells the engine what happened, event by event.
#pragma once

#include <string>
#include <vector>

#include "core/types.h"

namespace corvid {

// Kind and event numbers are those that handlers test.
enum class ControlKind : int16 {
  TextBox = 1,
  Option = 2,
  List = 4,
  Check = 8,
  Button = 16,
  Form = 32,
  Scroll = 64,
  Box = 128,
  Label = 256
};
enum class DialogEvent : int16 {
  GotFocus = 1,
  LostFocus = 2,
  KeyDown = 4,
  KeyUp = 8,
  KeyPress = 16,
  Change = 32,
  Click = 64,
  DoubleClick = 128,
  Activate = 256,
  Unload = 512,
  Scroll = 2048
};

struct DialogControl {
  ControlKind Kind = ControlKind::Label;
  int16 Index = 0;      // from 1 within its kind
  std::string Caption;  // what is spoken in front of the value; also the accessible name
  std::string Text;     // text box, box and label: the contents; button: the words on it
  bool Masked = false;  // text box: a star is shown and spoken for each character, and nothing is copied out of it
  int32 SelStart = 0;   // caret and selection of a text box or box
  int32 SelLength = 0;
  std::vector<std::string> Items;  // list
  int32 ListIndex = -1;            // list: selected row from 0, -1 none
  bool MultiSelect = false;
  std::vector<bool> Selected;  // list with MultiSelect
  int16 Value = 0;             // check: 0 off, 1 on, 2 greyed; option: 0 or 1; scroll: its value
  int16 Min = 0, Max = 0, SmallChange = 1, LargeChange = 10;  // scroll
  int16 Group = 0;                                            // options of one group exclude each other
  bool Default = false;                                       // button that Enter presses
  bool Cancel = false;                                        // button that Escape presses
  bool Enabled = true;
  bool Visible = true;
  int32 Top = 0, Left = 0, Height = 0, Width = 0;  // twips (1/1440 inch); a face may lay out by order alone
};

struct DialogModel {
  std::string Code;  // "TEXTPROMPT" and the like
  std::string Title;
  std::vector<DialogControl> Controls;  // in order of creation, which is the tab order
  int32 Width = 0, Height = 0;          // twips
  int32 FirstFocus = -1;                // place in Controls that has the focus at first; -1: the first that can
};

// What a face tells. Called on the event thread. After any call the dialog may be closed.
class DialogEvents {
 public:
  virtual ~DialogEvents() = default;
  // control is the place in Controls (-1 for the form). key and shift are filled for key events and may be set to 0 by
  // the handler to consume the key. The model already holds the new value. Click is another row or mark of a list, a
  // toggled check, a chosen option, a pressed button; Change an edited text or a moved scroll bar.
  virtual void DialogHappened(int32 control, DialogEvent event, int16& key, int16& shift) = 0;
  virtual void DialogCloseRequested() = 0;  // closed from outside, as the window's close button does
};

// One dialog at a time. The engine opens it, pumps events until it is closed, and closes it.
class DialogView {
 public:
  virtual ~DialogView() = default;
  virtual void OpenDialog(DialogModel& model, DialogEvents& events) = 0;  // model stays valid until CloseDialog
  virtual void ControlChanged(int32 control) = 0;                         // the engine changed it: show it anew
  virtual void FocusControl(int32 control) = 0;                           // answers with the GotFocus event
  virtual void CloseDialog() = 0;
};

}  // namespace corvid
