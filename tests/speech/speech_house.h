// SPDX-License-Identifier: GPL-3.0-or-later
// The speech floor over the in-memory platform, with real dialogs.
#pragma once

#include "dialogs/gen_dialog.h"
#include "dialogs/prompts.h"
#include "platform/memory/memory_platform.h"
#include "speech/speech.h"
#include "speech/speech_settings.h"
#include "speech/voice_keys.h"
#include "support_upcalls.h"

namespace corvid::testing_speech {

using Texts = std::vector<std::string>;

struct SpeechHouse {
  SpeechHouse() {
    options.UserDataFolder = "/data/";
    mem.files.CreateFolder("/data");
  }
  Texts Told(const std::string& kind) { return mem.effects.Of(kind); }
  void AllChannels(int16 type) {
    for (std::size_t channel = 1; channel <= 6; ++channel) state.SpeechType[channel] = type;
    speech.SpeakWhateverWorks(false);
  }
  void ReadyBoth() {  // both ways to speak have been used once
    speech.Speak("x", 1, 1);
    speech.Speak("x", 3, 1);
    mem.effects.Clear();
  }

  MemoryPlatform mem;
  SpeechState state;
  KeyboardState keyboard;
  OptionsState options;
  Platform platform = mem.All();
  Speech speech{state, keyboard, platform};
  RecordingRunner runner{mem.effects};
  RecordingErrors errors{mem.effects};
  RecordingScreens screens{mem.effects};
  RecordingJobs jobs{mem.effects};
  RelayedBoxes relay;
  Upcalls upcalls{runner, errors, speech, relay, screens, jobs};
  GenDialog dialog{platform, upcalls, state};
  Prompts prompts{dialog, state, platform, upcalls};
  VoiceKeys voiceKeys{speech, keyboard, platform, upcalls};
  SpeechSettings settings{state, options, dialog, speech, platform, upcalls};
  bool related = (relay.Real = &prompts) != nullptr;
};

// The engine and the screen reader apart, so that a test sees which of them was meant.
struct TwoWays {
  explicit TwoWays(SpeechHouse& house, MemorySpeech& engine)
      : platform{house.mem.clock,  house.mem.loop,   house.mem.loop,     house.mem.sockets,
                 house.mem.files,  house.mem.places, house.mem.settings, engine,
                 house.mem.speech, house.mem.face,   house.mem.sounds},
        speech(house.state, house.keyboard, platform) {
    speech.SpeakWhateverWorks(false);
  }
  Platform platform;
  Speech speech;
};

}  // namespace corvid::testing_speech
