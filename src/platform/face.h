// SPDX-License-Identifier: GPL-3.0-or-later
// The program as its user meets it: main window, keys, beep, clipboard. Three exist (desktop, console, json), and one
// for tests.
#pragma once

#include <string>
#include <vector>

#include "core/text_model.h"
#include "core/types.h"
#include "platform/dialog_view.h"

namespace corvid {

enum class MainFocus { Entry, Output };

// What a face tells the program. A key that the program does not take for itself has its usual editing effect, which
// the program carries out too, so that it is the same behind every face: a face edits nothing.
class FaceEvents {
 public:
  virtual ~FaceEvents() = default;
  virtual void KeyDown(int16 KeyCode, int16 Shift) = 0;
  virtual void KeyTyped(const std::string& character) = 0;  // one character as UTF-8, "\r" for Enter, "\b" Backspace
  virtual void KeyUp(int16 KeyCode, int16 Shift) = 0;
  virtual void FocusChanged(MainFocus focus) = 0;  // by the mouse or the window system
  virtual bool CloseRequested() = 0;               // false: the window stays
  // The list menu, by the mouse or by a screen reader. Rows count from 0.
  virtual void MenuClicked(int32 /*row*/) {}
  virtual void MenuDoubleClicked(int32 /*row*/) {}
  virtual void MenuLeft() {}  // the player went elsewhere: the list is to close
};

// The list over the entry line, in which menus are shown. The program moves its selection: keys go the way of all keys.
struct ListMenuView {
  std::string Name;   // "MAIN"
  std::string Title;  // what a player calls it
  std::vector<std::string> Items;
  int32 Index = -1;  // selected row
};

class Face {
 public:
  virtual ~Face() = default;
  virtual void SetEvents(FaceEvents* events) = 0;  // not owned
  virtual DialogView& Dialogs() = 0;

  // The texts to mirror. Each is given once and lives as long as the program.
  virtual void AttachEntry(TextModel& entry) = 0;
  virtual void AttachViewport(int16 Index, bool colour, TextModel& viewport) = 0;

  virtual void ShowMain() = 0;
  virtual bool MainShown() const = 0;
  virtual void SetTitle(const std::string& title) = 0;
  virtual void BringForward() = 0;
  virtual void SetFocus(MainFocus focus) = 0;
  virtual MainFocus Focus() const = 0;
  // Opens the list and gives it the focus, or shows other rows in it. Focus() goes on to tell the window below.
  virtual void ShowListMenu(const ListMenuView& menu) = 0;
  virtual void SelectListRow(int32 row) = 0;
  virtual void CloseListMenu() = 0;                          // the focus goes back to the window that Focus() tells
  virtual void SetEntryLabel(const std::string& label) = 0;  // name of the buffer that the entry shows
  virtual void ResizeForm(int16 percent) = 0;                // share of the height that the output gets, 10 to 90
  virtual void Beep() = 0;                                   // storms are coalesced here
  virtual std::string ClipboardText() = 0;
  virtual void SetClipboardText(const std::string& text) = 0;
  virtual void StartProgram(const std::string& program, const std::string& file) = 0;  // Fault when it cannot
  // A line for a player whom speech cannot reach (no sound card, no voice): shown, not spoken.
  virtual void Notice(const std::string& text) = 0;
  // A short answer that is spoken; a face that is read line by line writes it too.
  virtual void NoteAnswer(const std::string& /*text*/) {}

  // False once nobody can answer a question any more: the input has ended. A dialog then closes by itself.
  virtual bool PlayerThere() const { return true; }

  // Facts for faces that report them; the others ignore these.
  virtual void NoteSend(int16 /*session*/, const std::string& /*text*/) {}
  virtual void NoteSession(int16 /*session*/, const std::string& /*state*/) {}
  virtual void NoteCleared(int16 /*session*/) {}
};

}  // namespace corvid
