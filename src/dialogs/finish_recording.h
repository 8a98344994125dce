// SPDX-License-Identifier: GPL-3.0-or-later
// The question at the end of a recorded walk: what it is called, what is left out, where it is kept.
#pragma once

#include <string>
#include <vector>

#include "core/upcalls.h"
#include "dialogs/gen_dialog.h"
#include "files/buffer_state.h"

namespace corvid {

struct FinishedRecording {
  std::string Name;
  bool DirectionsOnly = false;
  bool Compress = false;
  std::string File;  // of the script that the walk is added to; empty: New Lines
};

class FinishRecordingDialog {
 public:
  FinishRecordingDialog(GenDialog& dialog, const BufferState& buffers, Upcalls& upcalls)
      : dialog_(dialog), buffers_(buffers), upcalls_(upcalls) {}

  // True for OK, which takes a name. May pump events.
  bool Ask(FinishedRecording& answer);

 private:
  void Take(const std::vector<std::string>& places, FinishedRecording& answer);

  GenDialog& dialog_;
  const BufferState& buffers_;
  Upcalls& upcalls_;
};

}  // namespace corvid
