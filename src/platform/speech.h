// SPDX-License-Identifier: GPL-3.0-or-later
// The two ways to speak: the engine with six voices of its own, and the player's screen reader. No call waits for
// speech, and none fails in a way that stops the program.
#pragma once

#include <string>
#include <vector>

#include "core/types.h"

namespace corvid {

class SpeechEngine {
 public:
  virtual ~SpeechEngine() = default;
  // Starts the engine. False when there is no engine or no sound output; Problem() then says why, for the player.
  virtual bool Start() = 0;
  virtual std::string Problem() const = 0;
  virtual std::vector<std::string> Voices() = 0;  // always in the same order: a voice's number is stored in a file
  // Speaks text (bytes as they came) behind what the voice still says. voice 1 to 6.
  virtual void Speak(int16 voice, const std::string& text) = 0;
  virtual void Purge(int16 voice) = 0;                        // silence at the next sample, the queue is empty
  virtual void SetVoice(int16 voice, int16 number) = 0;       // a number outside the list is ignored
  virtual void SetRate(int16 voice, int16 rate) = 0;          // -10 to 21, 0 is 175 words a minute
  virtual void SetVolume(int16 voice, int16 volume) = 0;      // 0 to 100
  virtual void SetPriority(int16 voice, int16 priority) = 0;  // 0 queued, 1 ahead of queued speech, 2 over other speech
  virtual int16 Rate(int16 voice) const = 0;
  virtual int16 Volume(int16 voice) const = 0;
};

class ScreenReader {
 public:
  virtual ~ScreenReader() = default;
  virtual bool Start() = 0;                 // false when no screen reader or speech service answers
  virtual std::string Problem() const = 0;  // empty while it works, also when it was found only after Start
  // Never waits. Where Start has failed, the service is looked for again now and then, and what is said until it is
  // found is lost. interrupt true drops what this channel still has to say before text is queued; an empty text with
  // interrupt is only the stop. channel 1 to 6.
  virtual void Say(int16 channel, const std::string& text, bool interrupt) = 0;
};

}  // namespace corvid
