// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/desktop/key_filter.h"

#include <QCoreApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QWidget>
#include <utility>

#include "core/keys.h"
#include "core/utf8.h"
#include "platform/key_chars.h"
#include "platform/qt/desktop/qt_keys.h"
#include "platform/qt/event_loop.h"

namespace corvid {

namespace {

constexpr int AskAgain = 2;  // milliseconds until a waiting key tries again

}  // namespace

KeyFilter::KeyFilter(DialogDriver& dialog, const Clock& clock, Hooks hooks)
    : router_(dialog, clock), hooks_(std::move(hooks)), later_(QtTimers().Create([this] { HandOn(); })) {
  later_->SetInterval(AskAgain);
}

KeyFilter::~KeyFilter() = default;

void KeyFilter::Watch(QWidget* widget) {
  widget->installEventFilter(this);
}

bool KeyFilter::eventFilter(QObject* /*watched*/, QEvent* event) {
  switch (event->type()) {
    case QEvent::ShortcutOverride:
      event->accept();  // no key is a shortcut of a window
      return true;
    case QEvent::KeyPress:
    case QEvent::KeyRelease: {
      const auto& key = static_cast<const QKeyEvent&>(*event);
      event->accept();
      if (event->type() == QEvent::KeyRelease && key.isAutoRepeat()) return true;
      const QtKey read = ReadKey(key);
      if (read.KeyCode != 0) Take({event->type() == QEvent::KeyPress, read.KeyCode, read.Shift, read.Text});
      return true;
    }
    case QEvent::InputMethod:
      Typed(static_cast<const QInputMethodEvent&>(*event));
      event->accept();
      return true;
    case QEvent::WindowDeactivate:
      // The window manager took the Tab of Alt-Tab; the release of Alt, when it comes here after all, is no lone Alt.
      if (std::exchange(altHeld_, false)) Take({false, keycode::Tab, AltBit, {}});
      return false;
    default:
      return false;
  }
}

// Dead keys and input methods bring characters without keys.
void KeyFilter::Typed(const QInputMethodEvent& event) {
  const std::string text = event.commitString().toStdString();
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t length = CharLength(text, at);
    const std::string character = text.substr(at, length);
    const Keystroke key = KeyOf(character);
    Take({true, key.KeyCode, key.Shift, character});
    Take({false, key.KeyCode, key.Shift, {}});
    at += length;
  }
}

void KeyFilter::Take(Half half) {
  if (half.KeyCode == keycode::Alt) altHeld_ = half.Down;
  waiting_.push_back(std::move(half));
  HandOn();
}

void KeyFilter::HandOn() {
  while (!waiting_.empty() && router_.Free() && hooks_.MayTake()) {
    const Half half = std::move(waiting_.front());
    waiting_.pop_front();
    if (half.Down) {
      router_.Pressed(half.KeyCode, half.Shift, half.Text);  // PUMP
    } else {
      router_.Released(half.KeyCode, half.Shift);  // PUMP
    }
    hooks_.Handled();
  }
  if (later_->Enabled() != !waiting_.empty()) later_->SetEnabled(!waiting_.empty());
}

}  // namespace corvid
