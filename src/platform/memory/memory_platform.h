// SPDX-License-Identifier: GPL-3.0-or-later
// Everything outside the program, in memory and in virtual time, for tests.
#pragma once

#include "platform/memory/effects.h"
#include "platform/memory/memory_face.h"
#include "platform/memory/memory_files.h"
#include "platform/memory/memory_loop.h"
#include "platform/memory/memory_sockets.h"
#include "platform/memory/memory_sounds.h"
#include "platform/platform.h"

namespace corvid {

struct MemoryPlatform {
  MemoryPlatform() {
    loop.Idle = [this] { return face.AnswerDialog(); };
    // As with the real device, which tells it from a thread of its own.
    sounds.Lost = [this](const std::string& text) { loop.Post([this, text] { face.Notice(text); }); };
  }

  EffectLog effects;
  MemoryClock clock;
  MemoryLoop loop{clock};
  MemorySockets sockets{loop, effects};
  MemoryFiles files;
  MemoryPlaces places;
  MemorySettings settings;
  MemorySpeech speech{effects};
  MemoryFace face{effects};
  MemorySounds sounds{clock, effects};

  Platform All() { return {clock, loop, loop, sockets, files, places, settings, speech, speech, face, sounds}; }

  // The one device that voices and sounds come out of goes, or is there again.
  void PlugAudio(bool plugged) {
    speech.Died = plugged ? MemorySpeech::Death::None : MemorySpeech::Death::Silent;
    sounds.SetPlugged(plugged);
  }

  // A sound file on the disk that can be played.
  void PutSound(const std::string& path, int milliseconds, int16 channels = 1, int32 frequency = 22050) {
    files.Put(path, "a sound");
    sounds.Put(path, {int64{milliseconds} * frequency / 1000 * channels * 2, channels, frequency});
  }
};

}  // namespace corvid
