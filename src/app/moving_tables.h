// SPDX-License-Identifier: GPL-3.0-or-later
// For builds that hunt stale rows (CORVID_STRESS): an event loop that moves every table of the language by a row each
// time it is pumped, so that a row number held across a pump meets the wrong row at once.
#pragma once

#include "platform/event_loop.h"
#include "script/script_state.h"

namespace corvid {

class MovingLoop : public EventLoop {
 public:
  MovingLoop(EventLoop& loop, ScriptState& tables) : loop_(loop), tables_(tables) {}

  void DoEvents() override {
    MoveTables();
    loop_.DoEvents();
  }
  void WaitEvents(int milliseconds) override {
    MoveTables();
    loop_.WaitEvents(milliseconds);
  }
  void End(int code) override { loop_.End(code); }
  bool Ending() const override { return loop_.Ending(); }
  int Run() override { return loop_.Run(); }

 private:
  void MoveTables();

  EventLoop& loop_;
  ScriptState& tables_;
};

// Puts a row that counts as deleted in front of each table that has rows, or takes it away again. Lookups and saving
// pass over it; compressing a table drops it.
void MoveByARow(ScriptState& tables);

}  // namespace corvid
