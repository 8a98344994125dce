// SPDX-License-Identifier: GPL-3.0-or-later
// What the program is heard by: espeak-ng and sounds through one device, and the screen reader's own speech.
#pragma once

#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "platform/espeak/espeak_engine.h"
#include "platform/event_loop.h"
#include "platform/face.h"
#include "platform/openal/mixer.h"
#include "platform/speechd/speechd_reader.h"

namespace corvid {

class Voices {
 public:
  Voices(Timers& timers, Face& face);
  ~Voices();
  Voices(const Voices&) = delete;
  Voices& operator=(const Voices&) = delete;

 private:
  // What the reader's and the mixer's threads have to tell, until the event thread shows it.
  struct Mailbox {
    std::mutex mutex;
    std::vector<std::string> texts;
    void Put(const std::string& text);
  };
  void Deliver();

  Face& face_;
  std::shared_ptr<Mailbox> mailbox_ = std::make_shared<Mailbox>();
  std::unique_ptr<Timer> collect_;
  OpenAlMixer mixer_;

 public:
  EspeakEngine engine;
  SpeechdReader reader;
  SoundOutput& sounds = mixer_;
};

}  // namespace corvid
