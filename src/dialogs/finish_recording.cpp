// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/finish_recording.h"

#include "core/text.h"

namespace corvid {

namespace {

constexpr int16 DirectionsCheck = 1, CompressCheck = 2;

}  // namespace

bool FinishRecordingDialog::Ask(FinishedRecording& answer) {
  std::vector<std::string> places{"New Lines Window"};
  for (int16 number = buffer::FirstScript; number <= buffers_.BufferCount; ++number)
    if (!buffers_.BufferFile[number].empty()) places.push_back(buffers_.BufferFile[number]);
  const auto handler = [&](const DialogEventArgs& at) {
    if (at.Kind != ControlKind::Button || at.Event != DialogEvent::Click) return;
    if (at.Index != 1) return dialog_.End(2);
    Take(places, answer);
  };
  dialog_.Form_Init("AUTOWALK", "Finish Recording", handler);
  dialog_.MakeLabel(500, 500, 295, 2000, "Name");
  dialog_.MakeTextBox(0, -200, 295, 3000, "");
  dialog_.MakeCheck(-200, 500, 295, 5000, 0, "Retain directions only");
  dialog_.MakeCheck(-200, 500, 295, 5000, 0, "Remove redundant directions");
  dialog_.MakeLabel(-300, 500, 295, 5000, "Add Script line to...");
  dialog_.MakeList(-100, 500, 2500, 6000, places, 0, "Script Files");
  dialog_.MakeCommand(-400, 500, 400, 1200, "OK", GenDialog::DefaultButton);
  dialog_.MakeCommand(0, -400, 400, 1200, "Cancel", GenDialog::CancelButton);
  dialog_.SetCommandButtons(1, 2);
  dialog_.ShowForm(500, 500);  // PUMP
  return dialog_.GDResult == 1;
}

void FinishRecordingDialog::Take(const std::vector<std::string>& places, FinishedRecording& answer) {
  answer.Name = Trim(dialog_.Control(ControlKind::TextBox, 1).Text);
  const bool parted = answer.Name.find(' ') != std::string::npos;  // only the first word of a line can call a walk
  if (answer.Name.empty() || parted) {
    upcalls_.speaker.Answer(parted ? "The name of a walk is one word." : "The walk needs a name.", Channel::System);
    return dialog_.SetFocus(ControlKind::TextBox, 1);
  }
  answer.DirectionsOnly = dialog_.Control(ControlKind::Check, DirectionsCheck).Value == 1;
  answer.Compress = dialog_.Control(ControlKind::Check, CompressCheck).Value == 1;
  const int32 row = dialog_.Control(ControlKind::List, 1).ListIndex;
  answer.File = row > 0 ? places.at(static_cast<std::size_t>(row)) : std::string();
  dialog_.End(1);
}

}  // namespace corvid
