// SPDX-License-Identifier: GPL-3.0-or-later
// The dialogs that ask, over a face in memory.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "dialogs/prompts.h"
#include "platform/memory/memory_platform.h"
#include "support_upcalls.h"

namespace corvid {

class PromptsTest : public testing::Test {
 protected:
  MemoryPlatform memory;
  Platform platform = memory.All();
  RecordingFloors floors{memory.effects};
  Upcalls& upcalls = floors.upcalls;
  SpeechState speech;
  GenDialog dialog{platform, upcalls, speech};
  Prompts prompts{dialog, speech, platform, upcalls};

  std::vector<std::string> Spoken() { return memory.effects.Of("spoken"); }

  // Sends an event to a control of the open dialog as a face would; gives the key back as the dialog left it.
  int16 Tell(int32 place, DialogEvent event, int16 key = 0, int16 shift = 0) {
    memory.face.OpenEvents()->DialogHappened(place, event, key, shift);
    return key;
  }
  int32 PlaceOfButton(const std::string& words) {
    int32 place = 0;
    for (const DialogControl& control : memory.face.OpenModel()->Controls) {
      if (control.Kind == ControlKind::Button && control.Text == words) return place;
      ++place;
    }
    return -1;
  }
};

}  // namespace corvid
