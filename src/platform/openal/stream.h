// SPDX-License-Identifier: GPL-3.0-or-later
// One voice's samples on their way into the library. Not thread-safe: the mixer locks, and sets the context.
#pragma once

#include <deque>
#include <vector>

#include "platform/audio.h"
#include "platform/openal/device.h"

namespace corvid {

// A bounded part of the samples lies in the library's own queue; the rest waits here, so that a purge of hours of
// speech is as quick as one of a word.
class SourceFeed {
 public:
  explicit SourceFeed(ALuint source) : source_(source) {}
  ~SourceFeed();
  SourceFeed(const SourceFeed&) = delete;
  SourceFeed& operator=(const SourceFeed&) = delete;

  void Append(const int16* samples, std::size_t count);
  void Purge();
  void SetPaused(bool paused);
  void SetVolume(double volume);
  std::size_t Waiting();
  // Takes back what was played, hands over what comes next, and starts the source when it stands still.
  void Feed();
  bool HasMore() const { return !paused_ && taken_ < samples_.size(); }  // Feed must be called again in time

 private:
  struct Handed {
    ALuint buffer;
    std::size_t count;
  };
  ALint State() const;
  void TakeBack(ALint played);
  void HandOver();
  void StartIfStanding(std::size_t newlyHanded);

  ALuint source_;
  bool paused_ = false;
  std::vector<int16> samples_;  // those from taken_ on are still to be handed over
  std::size_t taken_ = 0;
  std::deque<Handed> handed_;  // in the library's queue, oldest first
  std::size_t handedSamples_ = 0;
  std::vector<ALuint> spare_;
};

}  // namespace corvid
