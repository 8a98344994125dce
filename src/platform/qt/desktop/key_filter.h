// SPDX-License-Identifier: GPL-3.0-or-later
// Takes every key before the windows see it, and hands them on one after the other: what is typed while a key is still
// in work waits for it.
#pragma once

#include <QObject>
#include <deque>
#include <functional>
#include <memory>
#include <string>

#include "platform/clock.h"
#include "platform/event_loop.h"
#include "platform/key_router.h"

class QInputMethodEvent;
class QWidget;

namespace corvid {

class KeyFilter : public QObject {
 public:
  struct Hooks {
    std::function<bool()> MayTake;  // asked before each key; while false it waits, and it is asked again soon
    std::function<void()> Handled;  // after each key
  };
  KeyFilter(DialogDriver& dialog, const Clock& clock, Hooks hooks);
  ~KeyFilter() override;

  KeyRouter& Router() { return router_; }
  void Watch(QWidget* widget);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct Half {
    bool Down;
    int16 KeyCode;
    int16 Shift;
    std::string Text;
  };
  void Typed(const QInputMethodEvent& event);
  void Take(Half half);
  void HandOn();

  KeyRouter router_;
  Hooks hooks_;
  std::deque<Half> waiting_;
  bool altHeld_ = false;
  std::unique_ptr<Timer> later_;
};

}  // namespace corvid
