// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/desktop/desktop_face.h"

#include <QApplication>
#include <QClipboard>
#include <QTimer>
#include <algorithm>
#include <utility>

#include "platform/beep_gate.h"
#include "platform/qt/desktop/dialog_controls.h"
#include "platform/qt/desktop/dialog_window.h"
#include "platform/qt/desktop/key_filter.h"
#include "platform/qt/desktop/main_window.h"
#include "platform/qt/dialog_wait.h"
#include "platform/qt/program_start.h"

namespace corvid {

namespace {

constexpr int AwayAfter = 300;  // milliseconds: between two windows of ours there is a moment without any
constexpr int BeepPause = 100;  // milliseconds

std::string ReadClipboard() {
  QString text = QApplication::clipboard()->text();
  text.replace(QLatin1String("\r\n"), QLatin1String("\n")).replace(QLatin1Char('\r'), QLatin1Char('\n'));
  return WithLineBreaks(text);
}

void WriteClipboard(const std::string& text) {
  QApplication::clipboard()->setText(Shown(text));
}

// Where dialogs go that nobody can see. The engine closes them by itself, since no player is there.
class NoDialogs : public DialogView {
 public:
  void OpenDialog(DialogModel& /*model*/, DialogEvents& /*events*/) override {}
  void ControlChanged(int32 /*control*/) override {}
  void FocusControl(int32 /*control*/) override {}
  void CloseDialog() override {}
};

}  // namespace

struct DesktopFace::Parts {
  Parts(QtEventLoop& eventLoop, const Clock& time)
      : loop(eventLoop),
        clock(time),
        dialog({ReadClipboard, WriteClipboard}),
        wait(eventLoop, clock, dialog.Driver()),
        keys(dialog.Driver(), clock, {[this] { return wait.Over(); }, [this] { dialog.ShowAll(); }}),
        window({[this](QWidget* widget) { keys.Watch(widget); },
                [this](MainFocus taken) { ChangeFocus(taken); },
                [this] { CloseSoon(); },
                {[this](int32 row) { TellMenu(&FaceEvents::MenuClicked, row); },
                 [this](int32 row) { TellMenu(&FaceEvents::MenuDoubleClicked, row); },
                 [this] {
                   if (events != nullptr) events->MenuLeft();
                 }}}) {
    dialog.SetMainWindow(&window);
    dialog.SetWatch([this](QWidget* widget) { keys.Watch(widget); });
    away.setSingleShot(true);
    away.setInterval(AwayAfter);
    QObject::connect(&away, &QTimer::timeout, &context, [this] { TellFocused(false); });
    QObject::connect(qApp, &QGuiApplication::applicationStateChanged, &context, [this](Qt::ApplicationState state) {
      if (state != Qt::ApplicationActive) {
        if (arrived) away.start();
      } else {
        arrived = true;
        away.stop();
        TellFocused(true);
      }
    });
  }

  void TellFocused(bool now) {
    if (std::exchange(focused, now) != now && hooks.Focused) hooks.Focused(now);
  }

  void ChangeFocus(MainFocus wanted) {
    if (wanted == focus) return;
    focus = wanted;
    window.TakeFocus(wanted);
    if (events != nullptr) events->FocusChanged(focus);
  }

  void TellMenu(void (FaceEvents::*what)(int32), int32 row) {
    if (events != nullptr) (events->*what)(row);  // PUMP
  }

  // Not from inside the window's own event: the program may ask, and wait for the answer.
  void CloseSoon() {
    QMetaObject::invokeMethod(
        &context, [this] { Close(); }, Qt::QueuedConnection);
  }

  void Close() {
    if (closing || dialog.Driver().IsOpen()) return;
    closing = true;
    const bool may = events == nullptr || events->CloseRequested();  // PUMP
    if (may && !loop.Ending() && hooks.Quit) hooks.Quit();
    closing = false;
  }

  QtEventLoop& loop;
  const Clock& clock;
  Hooks hooks;
  FaceEvents* events = nullptr;
  MainFocus focus = MainFocus::Entry;
  bool closing = false;
  bool gone = false;
  bool screenLost = false;
  NoDialogs noDialogs;
  bool arrived = false;  // the player has been here: until then nobody has gone elsewhere
  bool focused = true;
  QTimer away;
  BeepGate beeps{BeepPause};
  DialogWindow dialog;
  DialogWait wait;
  KeyFilter keys;
  MainWindow window;
  QObject context;  // declared last: its queued calls die before the rest
};

DesktopFace::DesktopFace(QtEventLoop& loop, const Clock& clock) : parts_(std::make_unique<Parts>(loop, clock)) {}
DesktopFace::~DesktopFace() = default;

void DesktopFace::Start(Hooks hooks) {
  parts_->hooks = std::move(hooks);
}

void DesktopFace::Leave() {
  parts_->gone = true;
  if (parts_->hooks.Quit) parts_->hooks.Quit();
}

void DesktopFace::LoseScreen() {
  parts_->gone = true;
  parts_->screenLost = true;
}

bool DesktopFace::PlayerThere() const {
  return !parts_->gone;
}

void DesktopFace::SetEvents(FaceEvents* events) {
  parts_->events = events;
  parts_->keys.Router().SetEvents(events);
}

DialogView& DesktopFace::Dialogs() {
  if (parts_->screenLost) return parts_->noDialogs;
  return parts_->dialog;
}

void DesktopFace::AttachEntry(TextModel& entry) {
  parts_->window.AttachEntry(entry);
}

void DesktopFace::AttachViewport(int16 /*Index*/, bool /*colour*/, TextModel& viewport) {
  parts_->window.AttachViewport(viewport);
}

void DesktopFace::ShowMain() {
  parts_->window.show();
  parts_->dialog.BringForward();
}
bool DesktopFace::MainShown() const {
  return parts_->window.isVisible();
}

void DesktopFace::SetTitle(const std::string& title) {
  parts_->window.setWindowTitle(Shown(title));
}

void DesktopFace::BringForward() {
  MainWindow& window = parts_->window;
  if (window.isMinimized()) window.showNormal();
  window.raise();
  window.activateWindow();
  parts_->dialog.BringForward();
}

void DesktopFace::SetFocus(MainFocus focus) {
  parts_->ChangeFocus(focus);
}
MainFocus DesktopFace::Focus() const {
  return parts_->focus;
}

void DesktopFace::ShowListMenu(const ListMenuView& menu) {
  parts_->window.ShowMenu(menu);
}
void DesktopFace::SelectListRow(int32 row) {
  parts_->window.SelectMenuRow(row);
}
void DesktopFace::CloseListMenu() {
  parts_->window.CloseMenu(parts_->focus);
}

void DesktopFace::SetEntryLabel(const std::string& label) {
  parts_->window.SetEntryLabel(label);
}

void DesktopFace::ResizeForm(int16 percent) {
  parts_->window.ShareHeight(std::clamp<int16>(percent, 10, 90));
}

void DesktopFace::Beep() {
  if (parts_->beeps.Passes(parts_->clock.MonotonicMilliseconds())) QApplication::beep();
}

std::string DesktopFace::ClipboardText() {
  return ReadClipboard();
}
void DesktopFace::SetClipboardText(const std::string& text) {
  WriteClipboard(text);
}

void DesktopFace::StartProgram(const std::string& program, const std::string& file) {
  StartDetachedProgram(program, file, Terminal::Own);
}

void DesktopFace::Notice(const std::string& text) {
  parts_->window.AddNotice(text);
}

}  // namespace corvid
