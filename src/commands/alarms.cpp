// SPDX-License-Identifier: GPL-3.0-or-later
#include "commands/alarms.h"

#include "core/number.h"
#include "core/trap.h"

namespace corvid {

namespace {

constexpr int TickMilliseconds = 100;
constexpr float Waiting = 999999;      // below it a slot needs the timer
constexpr float NearMidnight = 86300;  // an alarm beyond it was meant for the next day
constexpr float SecondsOfDay = 86400;
constexpr float Reusable = 900000;  // above it a slot may be given away
constexpr double InUse = 99999;     // below it a named slot is taken over

}  // namespace

Alarms::Alarms(ControlState& control, ScriptState& script, Platform& platform, Upcalls& upcalls)
    : control_(control), script_(script), platform_(platform), upcalls_(upcalls) {
  Alarm = platform_.timers.Create([this] { Alarm_Timer(); });
  Alarm->SetInterval(TickMilliseconds);
}

Alarms::~Alarms() = default;

bool Alarms::Running() const {
  return Alarm->Enabled();
}

bool Alarms::Active(double slot) const {
  return slot >= 1 && slot <= Highest() && static_cast<double>(control_.AlarmNext[ToInt16(slot)]) < InUse;
}

int16 Alarms::FreeSlot() {
  for (int16 slot = 1; slot <= Highest(); ++slot)
    if (control_.AlarmNext[slot] > Reusable) return slot;
  const int16 slot = AddInt16(Highest(), 1);
  control_.AlarmCommand.Resize(slot);
  control_.AlarmChannel.Resize(slot);
  control_.AlarmNext.Resize(slot);
  control_.AlarmPeriod.Resize(slot);
  control_.AlarmNext[slot] = ControlState::FreeAlarm;
  return slot;
}

void Alarms::Set(int16 slot, float period, const std::string* command, int16 channel) {
  const auto now = static_cast<float>(platform_.clock.SecondsSinceMidnight());
  control_.AlarmPeriod[slot] = period;
  control_.AlarmNext[slot] = period < 0 ? now - period : now + period;
  if (command != nullptr) control_.AlarmCommand[slot] = *command;
  control_.AlarmChannel[slot] = channel;
  if (!Alarm->Enabled() && control_.AlarmNext[slot] < ControlState::FreeAlarm) Alarm->SetEnabled(true);
}

void Alarms::Cancel(int16 slot) {
  control_.AlarmNext[slot] = ControlState::FreeAlarm;
  Alarm->SetEnabled(false);
  StartIfAnyActive();
}

void Alarms::StartIfAnyActive() {
  for (int16 slot = 1; slot <= Highest(); ++slot)
    if (control_.AlarmNext[slot] < Waiting) Alarm->SetEnabled(true);
}

void Alarms::CancelAll() {
  Alarm->SetEnabled(false);
  control_.AlarmCommand.Resize(1);
  control_.AlarmChannel.Resize(1);
  control_.AlarmNext.Resize(1);
  control_.AlarmPeriod.Resize(1);
  control_.AlarmNext[1] = ControlState::FreeAlarm;
}

void Alarms::Alarm_Timer() {
  Alarm->SetEnabled(false);
  const auto now = static_cast<float>(platform_.clock.SecondsSinceMidnight());
  if (now < control_.LastAlarmTick) ForgiveMidnight(now);
  control_.LastAlarmTick = now;
  Trap trap(upcalls_.errors, "alarm_timer");
  const int16 slots = Highest();  // what an alarm sets now has its first chance at the next tick
  for (int16 slot = 1; slot <= slots; ++slot) {
    if (slot > Highest()) return;    // an alarm has cancelled them all
    trap.Step([&] { Tick(slot); });  // PUMP
    if (slot <= Highest() && control_.AlarmNext[slot] < Waiting) Alarm->SetEnabled(true);
  }
}

void Alarms::ForgiveMidnight(float now) {
  for (int16 slot = 1; slot <= Highest(); ++slot) {
    float& next = control_.AlarmNext[slot];
    if (next > NearMidnight && next < ControlState::FreeAlarm) next -= SecondsOfDay;
  }
  control_.LastAlarmTick = now;
}

void Alarms::Tick(int16 slot) {
  const auto now = static_cast<float>(platform_.clock.SecondsSinceMidnight());
  if (now <= control_.AlarmNext[slot]) return;
  const float period = control_.AlarmPeriod[slot];
  control_.AlarmNext[slot] = period < 0 ? now - period : ControlState::FreeAlarm;
  // A session that is down misses its alarm and keeps its schedule.
  if (platform_.sockets.Connected(control_.AlarmChannel[slot])) Run(slot);
}

void Alarms::Run(int16 slot) {
  const std::string command = control_.AlarmCommand[slot];
  int16 channel = control_.AlarmChannel[slot];
  int16 options = 0;
  std::string problem;  // reported by the line itself; alarms belong to no file
  Parameters none;
  script_.CommandDepth = 0;
  upcalls_.commands.ProcessCommand(command, options, problem, none, channel);  // PUMP
}

}  // namespace corvid
