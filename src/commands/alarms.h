// SPDX-License-Identifier: GPL-3.0-or-later
// Script lines that run at their time.
#pragma once

#include <memory>
#include <string>

#include "commands/control_state.h"
#include "core/upcalls.h"
#include "platform/platform.h"
#include "script/script_state.h"

namespace corvid {

class Alarms {
 public:
  Alarms(ControlState& control, ScriptState& script, Platform& platform, Upcalls& upcalls);
  ~Alarms();

  // Sets slot to go off after period seconds; a negative one repeats. command nullptr keeps the slot's line.
  void Set(int16 slot, float period, const std::string* command, int16 channel);
  int16 FreeSlot();                // the first free one, made if there is none
  bool Active(double slot) const;  // a slot that waits for its time
  int16 Highest() const { return static_cast<int16>(control_.AlarmNext.UBound()); }
  void Cancel(int16 slot);
  void CancelAll();
  // The tick. Never throws. May pump events.
  void Alarm_Timer();
  bool Running() const;  // the timer is on

 private:
  void ForgiveMidnight(float now);
  void Tick(int16 slot);
  void Run(int16 slot);
  void StartIfAnyActive();

  ControlState& control_;
  ScriptState& script_;
  Platform& platform_;
  Upcalls& upcalls_;
  std::unique_ptr<Timer> Alarm;
};

}  // namespace corvid
