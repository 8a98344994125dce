// SPDX-License-Identifier: GPL-3.0-or-later
// The one sound output of the program. Voices and sounds are mixed here, so that they are heard over each other.
#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "core/types.h"

namespace corvid {

inline constexpr int VoiceSampleRate = 22050;  // samples a second of a voice

// Samples of one voice (mono, 16 bit) played without a gap in the order they are queued. All calls return at once and
// may come from any thread. A stream is silent from its destruction on, and is destroyed before its output.
class PcmStream {
 public:
  virtual ~PcmStream() = default;
  virtual void Queue(const int16* samples, std::size_t count) = 0;  // copied; starts to play unless paused
  virtual void Purge() = 0;                   // silent from the next period on (6 ms), nothing is left to play
  virtual void SetPaused(bool paused) = 0;    // silent from the next period on; goes on at the sample where it stopped
  virtual void SetVolume(double volume) = 0;  // 0 to 1, the factor of the amplitude; 1 at first
  virtual std::size_t Waiting() = 0;          // samples queued and not yet mixed; 0 when all is played
};

class AudioOutput {
 public:
  virtual ~AudioOutput() = default;
  // Opens the device, once. False when there is none or it does not answer within a few seconds; Problem() then says
  // why, for the player. It is looked for again from then on; a later call does not wait, and tells whether it has
  // been there.
  virtual bool Open() = 0;
  virtual std::string Problem() const = 0;
  // A new stream of VoiceSampleRate; only after Open was called. nullptr when the device has no source left.
  virtual std::unique_ptr<PcmStream> CreateStream() = 0;
};

}  // namespace corvid
