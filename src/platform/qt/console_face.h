// SPDX-License-Identifier: GPL-3.0-or-later
// The program on a text console or a braille terminal: typed lines in, window text out, dialogs as questions.
// docs/console.md tells its user how.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/clock.h"
#include "platform/face.h"
#include "platform/qt/event_loop.h"

namespace corvid {

// Wire, in main, as JsonFace: build it after the loop, give it to Platform, build the program, then
//   face.Start({.JobDue = [..] { a job of Timer1 is pending }, .Quit = [..] { quit(true) }});
//   const int code = loop.Run();
//   face.Finish();
// The voices are the real ones. The face is built before the program and destroyed after it; attached texts must not
// change once it is gone.
class ConsoleFace : public Face {
 public:
  struct Hooks {
    std::function<bool()> JobDue;
    std::function<void()> Quit;  // the input has ended
  };
  ConsoleFace(QtEventLoop& loop, const Clock& clock, int input = 0, int output = 1);
  ~ConsoleFace() override;
  ConsoleFace(const ConsoleFace&) = delete;
  ConsoleFace& operator=(const ConsoleFace&) = delete;

  void Start(Hooks hooks);
  void Leave();   // the player has gone, as at the end of the input
  void Finish();  // writes out what waits

  void SetEvents(FaceEvents* events) override;
  DialogView& Dialogs() override;
  void AttachEntry(TextModel& entry) override;
  void AttachViewport(int16 Index, bool colour, TextModel& viewport) override;
  void ShowMain() override;
  bool MainShown() const override;
  void SetTitle(const std::string& title) override;
  void BringForward() override {}
  void SetFocus(MainFocus focus) override;
  MainFocus Focus() const override;
  void ShowListMenu(const ListMenuView& menu) override;
  void SelectListRow(int32 row) override;
  void CloseListMenu() override;
  void SetEntryLabel(const std::string& label) override;
  void ResizeForm(int16 /*percent*/) override {}
  void Beep() override;
  std::string ClipboardText() override;
  void SetClipboardText(const std::string& text) override;
  void StartProgram(const std::string& program, const std::string& file) override;
  void Notice(const std::string& text) override;
  void NoteAnswer(const std::string& text) override;
  bool PlayerThere() const override;
  void NoteSession(int16 session, const std::string& state) override;

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace corvid
