// SPDX-License-Identifier: GPL-3.0-or-later
// What running scripts leave behind: alarms, and the word that a waiting script listens for.
#pragma once

#include <array>
#include <string>

#include "core/table.h"
#include "core/types.h"

namespace corvid {

struct ControlState {
  static constexpr float FreeAlarm = 1000000;  // AlarmNext of a slot that nothing waits for

  ControlState() {
    AlarmCommand.Resize(1);
    AlarmChannel.Resize(1);
    AlarmNext.Resize(1);
    AlarmPeriod.Resize(1);
    AlarmNext[1] = FreeAlarm;
  }

  // Alarm slots, from 1; a slot is reused, never taken out.
  Table<std::string> AlarmCommand;
  Table<int16> AlarmChannel;  // session that the command runs in
  Table<float> AlarmNext;     // seconds of the day
  Table<float> AlarmPeriod;   // as given; negative: again every so many seconds
  float LastAlarmTick = 0;    // seconds of the day

  std::array<bool, MaxConnections + 1> OkFlag{};  // set by OK, by session

  int16 SetSpeechChannel = 0;  // channel that SETSPEECH named last; 0: none yet
};

}  // namespace corvid
