// SPDX-License-Identifier: GPL-3.0-or-later
// The menu of recorded walks.
#include "core/upcalls.h"
#include "dialogs/finish_recording.h"
#include "dialogs/outer_command.h"
#include "files/buffers.h"
#include "input/menu_call.h"
#include "platform/platform.h"
#include "script/options_state.h"
#include "script/script_state.h"
#include "sessions/session_state.h"

namespace corvid {

namespace {

constexpr int16 RecordingOn = 2;  // of WalkState

std::string Keywords(const FinishedRecording& answer) {
  std::string words;
  const auto add = [&](bool wanted, const char* word) {
    if (wanted) words += (words.empty() ? "" : "|") + std::string(word);
  };
  add(answer.DirectionsOnly, "Direction");
  add(answer.Compress, "Compress");
  add(!answer.File.empty(), "Save");
  return words;
}

}  // namespace

void RunAndSay(MenuCall& call, const std::string& command, const std::string& words) {
  call.list.CloseListBox();
  RunMenuCommand(call.house, command);  // PUMP
  call.house.upcalls.speaker.Answer(words, Channel::Incoming);
}

bool RunMenuCommand(MenuHouse& house, const std::string& command, int16 moreOptions) {
  const auto flags = static_cast<int16>(option::Interactive | moreOptions);
  return RunOuterCommand(house.script, house.options, house.upcalls, command, flags).empty();  // PUMP
}

void menuitem::BeginRecording(MenuCall& call) {
  call.list.CloseListBox();
  RunMenuCommand(call.house, "record");                                     // PUMP
  call.house.upcalls.speaker.SpeakOut("Recording.", Channel::Incoming, 0);  // the command itself has written it
}

void menuitem::StopWalk(MenuCall& call) {
  RunAndSay(call, "STOP", "stopped.");
}

void menuitem::PauseWalk(MenuCall& call) {
  RunAndSay(call, "Pause", "Paused.");
}

void menuitem::UnPauseWalk(MenuCall& call) {
  RunAndSay(call, "UnPause", "Unpaused.");
}

void menuitem::IgnoreLast(MenuCall& call) {
  RunAndSay(call, "ERASE", "last command was ignored.");
}

std::string menuitem::SlowWalkState(const MenuHouse& house) {
  return house.options.SlowWalk ? "On" : "Off";
}

void menuitem::ToggleSlowWalk(MenuCall& call) {
  call.house.options.SlowWalk = !call.house.options.SlowWalk;
  call.list.ShowAgain();
}

void menuitem::FinishRecording(MenuCall& call) {
  MenuHouse& house = call.house;
  if (house.sessions.WalkState[house.script.CurrentSocket] != RecordingOn) {
    house.platform.face.Beep();
    house.upcalls.speaker.Answer("No record in progress", Channel::Incoming);
    return;
  }
  if (house.sessions.WalkBuffer[house.script.CurrentSocket].empty()) {
    house.platform.face.Beep();
    house.upcalls.speaker.Answer("Nothing is recorded yet", Channel::Incoming);  // before the name is asked for
    return;
  }
  call.list.CloseListBox();
  FinishedRecording answer;
  if (!FinishRecordingDialog(house.dialog, house.buffers, house.upcalls).Ask(answer)) return;  // PUMP
  const std::string command = "EndRecord " + answer.Name + " " + Keywords(answer);
  const int16 defining = house.script.DefiningBuffer;
  house.script.DefiningBuffer = answer.File.empty() ? int16{0} : house.scriptFiles.GetBufferNumber(answer.File);
  if (RunMenuCommand(house, command, option::CheckOnly)) RunMenuCommand(house, command);  // PUMP
  house.script.DefiningBuffer = defining;
}

}  // namespace corvid
