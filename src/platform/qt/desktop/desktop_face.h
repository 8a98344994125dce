// SPDX-License-Identifier: GPL-3.0-or-later
// The program as a window of the desktop: text windows, dialogs, keys, and names and roles for a screen reader.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/clock.h"
#include "platform/face.h"
#include "platform/qt/event_loop.h"

namespace corvid {

// Wire, in main:
//   const DesktopApplication application(argc, argv);   desktop_application.h
//   QtEventLoop loop(argc, argv);  SystemClock clock;
//   DesktopFace face(loop, clock);
//   Platform platform{..., face};
//   ... build the program ...
//   face.Start({.Quit = [..] { quit(true) }});
//   return loop.Run();
// The face is built before the program and destroyed after it; attached texts must not change once it is gone.
class DesktopFace : public Face {
 public:
  struct Hooks {
    std::function<void()> Quit;                   // the player has closed the window or has gone
    std::function<void(bool focused)> Focused{};  // the program has got the focus, or another one has
  };

  DesktopFace(QtEventLoop& loop, const Clock& clock);
  ~DesktopFace() override;
  DesktopFace(const DesktopFace&) = delete;
  DesktopFace& operator=(const DesktopFace&) = delete;

  void Start(Hooks hooks);
  void Leave();  // the player has gone: the session of the desktop ends
  // The windows cannot be used any more: dialogs are not shown, and no player is there. Nothing brings them back.
  void LoseScreen();

  void SetEvents(FaceEvents* events) override;
  DialogView& Dialogs() override;
  void AttachEntry(TextModel& entry) override;
  void AttachViewport(int16 Index, bool colour, TextModel& viewport) override;
  void ShowMain() override;
  bool MainShown() const override;
  void SetTitle(const std::string& title) override;
  void BringForward() override;
  void SetFocus(MainFocus focus) override;
  MainFocus Focus() const override;
  void ShowListMenu(const ListMenuView& menu) override;
  void SelectListRow(int32 row) override;
  void CloseListMenu() override;
  void SetEntryLabel(const std::string& label) override;
  void ResizeForm(int16 percent) override;
  void Beep() override;
  std::string ClipboardText() override;  // lines end in CR LF
  void SetClipboardText(const std::string& text) override;
  void StartProgram(const std::string& program, const std::string& file) override;
  void Notice(const std::string& text) override;
  bool PlayerThere() const override;

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace corvid
