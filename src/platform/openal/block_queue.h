// SPDX-License-Identifier: GPL-3.0-or-later
// Blocks of samples played one behind the other without a gap, by one source (mono) or by two (the sides of a stereo
// sound). No block is lost, and none is heard twice, also when the queue runs dry between two of them. All calls come
// within a DeviceTurn.
#pragma once

#include <array>
#include <cstddef>
#include <deque>
#include <vector>

#include "core/types.h"
#include "platform/openal/device_core.h"
#include "platform/openal/source_group.h"

namespace corvid {

struct SampleBlock {
  std::vector<int16> samples;  // stereo: left and right in turn
  int64 start = 0;             // the owner's number for the first frame
  int64 wrapsAt = -1;          // the frame of the block that is the owner's number 0 again; -1 none
};

class BlockQueue {
 public:
  BlockQueue(const DeviceCore& core, ALsizei channels, int32 rate);
  BlockQueue(const BlockQueue&) = delete;
  BlockQueue& operator=(const BlockQueue&) = delete;

  bool Create();   // false when the device has no source left; must be called before anything else
  void Destroy();  // silent from here on; the last call
  SourceGroup& Sources() { return sources_; }

  // Hands a block over. False when there is no memory for it: the block is untouched.
  bool Push(SampleBlock& block);
  void Run();      // plays what is there and what comes
  void Hold();     // stands still; goes on at the frame where it stopped
  void Clear();    // silent from the next period on, nothing is left to play
  void Collect();  // takes back what has been heard
  bool Empty() const { return blocks_.empty(); }
  std::size_t Frames() const { return frames_; }  // handed over and not taken back yet
  std::size_t Unheard() const;                    // frames, after Collect
  int64 Position() const;  // the owner's number of the next frame to be heard, -1 when there is none; after Collect

  void LeaveDevice();
  bool EnterDevice();

 private:
  struct Handed {
    std::array<ALuint, 2> buffers{};
    SampleBlock block;
  };
  std::size_t FramesOf(const SampleBlock& block) const { return block.samples.size() / sources_.Count(); }
  bool Fill(Handed& handed);
  bool TakeBuffer(ALuint& buffer);
  void Link(const Handed& handed);
  void LinkWhilePlaying(const Handed& handed);
  void TakeBack(std::size_t count);
  std::size_t Offset() const;

  const DeviceCore& core_;
  const int32 rate_;
  SourceGroup sources_;
  bool running_ = false;
  std::deque<Handed> blocks_;  // in the library's queue, oldest first
  std::size_t frames_ = 0;     // of all blocks
  std::size_t left_ = 0;       // between two devices: frames of the first block that were heard
  std::vector<ALuint> spare_;
  std::vector<int16> side_;  // for the filling of a buffer
};

}  // namespace corvid
