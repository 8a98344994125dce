// SPDX-License-Identifier: GPL-3.0-or-later
// The sounds of games and scripts, as the sound engine needs them: decoded files, and players over them. They come out
// of the same device as the voices, so that both are heard over each other.
#pragma once

#include <memory>
#include <string>

#include "core/types.h"

namespace corvid {

// The samples of one file, decoded once and shared by every player of it.
class SoundData {
 public:
  virtual ~SoundData() = default;
  virtual int16 Channels() const = 0;   // 1 or 2; what has more is mixed down to 2
  virtual int32 Frequency() const = 0;  // samples a second of one channel
  virtual int64 Bytes() const = 0;      // length as 16-bit samples, all channels
};

// What is played by which handle, for whoever reports it.
struct SoundLabel {
  int16 handle = 0;
  std::string file;
};

// One sound that can be heard. All calls return at once. Silent from its destruction on, and destroyed before its
// output. A player whose device is gone plays nothing and comes to its end in time.
class SoundPlayer {
 public:
  virtual ~SoundPlayer() = default;
  virtual void SetVolume(int32 volume) = 0;  // hundredths of a decibel, 0 to -10000 (silent); held in that range
  // Hundredths of a decibel, -10000 to 10000 and held in that range: below 0 the right side is that much softer, above
  // 0 the left one. The other side stays exactly as it is.
  virtual void SetPan(int32 pan) = 0;
  virtual void SetFrequency(int32 frequency) = 0;  // hertz; pitch is frequency / the file's own; 0 or less: its own
  virtual int32 Frequency() const = 0;
  virtual void SetPosition(int64 byte) = 0;  // as SoundData::Bytes counts; behind the end: the start
  virtual void Play(bool loop) = 0;          // from the position on; a playing one goes on, with the new loop
  virtual void Stop() = 0;                   // keeps the position
  virtual bool IsPlaying() = 0;              // false as soon as the end was heard
};

class SoundOutput {
 public:
  virtual ~SoundOutput() = default;
  // Opens the device, once; false when there is none. Problem() then says why, for the player. It is looked for again
  // from then on: players made meanwhile play in silence, and are heard as soon as there is one.
  virtual bool OpenSounds() = 0;
  virtual std::string Problem() const = 0;
  // Decodes a WAV, OGG, FLAC or MP3 file, whole. nullptr with error set when it cannot be read.
  virtual std::shared_ptr<const SoundData> Load(const std::string& path, std::string& error) = 0;
  // A player at the start of the data, at full volume and in the middle. inBackground: heard also while the program has
  // not the focus. nullptr when there are too many.
  virtual std::unique_ptr<SoundPlayer> CreatePlayer(const std::shared_ptr<const SoundData>& data, bool inBackground,
                                                    const SoundLabel& label) = 0;
  // A player that decodes its file while it plays, off the event thread: music of any length starts at once. nullptr
  // with error set when the file cannot be read.
  virtual std::unique_ptr<SoundPlayer> CreateStreamed(const std::string& path, bool inBackground,
                                                      const SoundLabel& label, std::string& error) = 0;
  // Whether the program has the focus; without it only what plays inBackground is heard, all else runs on in silence.
  virtual void SetFocused(bool focused) = 0;
};

}  // namespace corvid
