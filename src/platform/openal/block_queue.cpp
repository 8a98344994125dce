// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/openal/block_queue.h"

#include <algorithm>
#include <utility>

namespace corvid {

namespace {

// With so much still to be heard a queue cannot run dry while a block is linked to it.
constexpr std::size_t SafeFrames = 2048;

}  // namespace

BlockQueue::BlockQueue(const DeviceCore& core, ALsizei channels, int32 rate)
    : core_(core), rate_(rate), sources_(channels) {}

void BlockQueue::Destroy() {
  if (!sources_.Exist()) return;
  Clear();
  sources_.Delete();
  if (!spare_.empty()) alDeleteBuffers(static_cast<ALsizei>(spare_.size()), spare_.data());
  spare_.clear();
}

bool BlockQueue::Create() {
  if (!sources_.Create()) return false;
  if (sources_.Count() == 1) return true;
  for (std::size_t side = 0; side < 2; ++side) alSourcei(sources_.Id(side), AL_DIRECT_CHANNELS_SOFT, AL_TRUE);
  return true;
}

bool BlockQueue::TakeBuffer(ALuint& buffer) {
  if (!spare_.empty()) {
    buffer = spare_.back();
    spare_.pop_back();
    return true;
  }
  alGetError();
  alGenBuffers(1, &buffer);
  return alGetError() == AL_NO_ERROR;
}

// Gives the block's samples to buffers of the library.
bool BlockQueue::Fill(Handed& handed) {
  const std::vector<int16>& samples = handed.block.samples;
  const auto bytes = static_cast<ALsizei>(samples.size() * sizeof(int16));
  for (std::size_t side = 0; side < sources_.Count(); ++side) {
    if (!TakeBuffer(handed.buffers[side])) {
      if (side > 0) spare_.push_back(handed.buffers[0]);
      return false;
    }
    alGetError();
    if (sources_.Count() == 1) {
      alBufferData(handed.buffers[side], AL_FORMAT_MONO16, samples.data(), bytes, rate_);
    } else {
      side_.assign(samples.size(), 0);
      for (std::size_t i = side; i < samples.size(); i += 2) side_[i] = samples[i];
      alBufferData(handed.buffers[side], AL_FORMAT_STEREO16, side_.data(), bytes, rate_);
    }
    if (alGetError() != AL_NO_ERROR) {
      for (std::size_t taken = 0; taken <= side; ++taken) spare_.push_back(handed.buffers[taken]);
      return false;
    }
  }
  return true;
}

void BlockQueue::Link(const Handed& handed) {
  for (std::size_t side = 0; side < sources_.Count(); ++side) {
    alSourceQueueBuffers(sources_.Id(side), 1, &handed.buffers[side]);
  }
}

bool BlockQueue::Push(SampleBlock& block) {
  Handed handed;
  handed.block = std::move(block);
  if (!Fill(handed)) {
    block = std::move(handed.block);
    return false;
  }
  if (running_ && sources_.State() == AL_PLAYING) {
    LinkWhilePlaying(handed);
  } else {
    Collect();  // it may have come to its end since the last look
    Link(handed);
    if (running_) sources_.Play();
  }
  frames_ += FramesOf(handed.block);
  blocks_.push_back(std::move(handed));
  return true;
}

// The device mixes meanwhile, and may come to the end of the queue in any moment. A block linked behind an end that
// the device has already met is never heard, yet counts as played.
void BlockQueue::LinkWhilePlaying(const Handed& handed) {
  Collect();
  if (Unheard() < SafeFrames) {
    // Near the end they stand still for a moment: then it is certain whether the end was met.
    sources_.Pause();
    Collect();
    Link(handed);
    sources_.Play();
    return;
  }
  Link(handed);
  // Asked for the offset, the library waits for the period that it mixes. Who plays after that has seen the block.
  sources_.Offset();
  if (sources_.AllPlaying() || !core_.Connected()) return;
  // This thread was stopped between the two looks for as long as SafeFrames last.
  sources_.Stop();
  for (std::size_t side = 0; side < sources_.Count(); ++side) alSourcei(sources_.Id(side), AL_BUFFER, 0);
  for (const Handed& old : blocks_) {
    for (std::size_t side = 0; side < sources_.Count(); ++side) spare_.push_back(old.buffers[side]);
  }
  blocks_.clear();
  frames_ = 0;
  sources_.Rewind();
  Link(handed);
  sources_.Play();
}

void BlockQueue::Run() {
  running_ = true;
  if (sources_.State() == AL_PLAYING) return;
  Collect();  // what has come to its end is not played again
  if (!blocks_.empty()) sources_.Play();
}

void BlockQueue::Hold() {
  running_ = false;
  if (sources_.State() == AL_PLAYING) sources_.Pause();
}

void BlockQueue::Clear() {
  sources_.Stop();
  TakeBack(blocks_.size());
  sources_.Rewind();
}

void BlockQueue::Collect() {
  if (blocks_.empty()) return;
  if (sources_.State() != AL_STOPPED) {
    TakeBack(static_cast<std::size_t>(std::max(sources_.Processed(), 0)));
  } else if (core_.Connected()) {
    Clear();  // every block was linked in time, so all were heard
  }
}

void BlockQueue::TakeBack(std::size_t count) {
  for (; count > 0 && !blocks_.empty(); --count) {
    for (std::size_t side = 0; side < sources_.Count(); ++side) {
      ALuint buffer = 0;
      alSourceUnqueueBuffers(sources_.Id(side), 1, &buffer);
      spare_.push_back(blocks_.front().buffers[side]);
    }
    frames_ -= FramesOf(blocks_.front().block);
    blocks_.pop_front();
  }
}

std::size_t BlockQueue::Offset() const {
  return blocks_.empty() ? 0 : std::min(static_cast<std::size_t>(sources_.Offset()), frames_);
}

std::size_t BlockQueue::Unheard() const {
  return frames_ - Offset();
}

int64 BlockQueue::Position() const {
  std::size_t offset = Offset();
  for (const Handed& handed : blocks_) {
    const std::size_t frames = FramesOf(handed.block);
    if (offset >= frames) {
      offset -= frames;
      continue;
    }
    const auto inBlock = static_cast<int64>(offset);
    const SampleBlock& block = handed.block;
    return block.wrapsAt >= 0 && inBlock >= block.wrapsAt ? inBlock - block.wrapsAt : block.start + inBlock;
  }
  return -1;
}

void BlockQueue::LeaveDevice() {
  left_ = 0;
  if (core_.Connected()) {
    if (running_) sources_.Pause();
    Collect();
    left_ = Offset();
  }
  sources_.Forget();
  spare_.clear();
}

bool BlockQueue::EnterDevice() {
  if (!Create()) return false;
  std::size_t linked = 0;
  for (; linked < blocks_.size() && Fill(blocks_[linked]); ++linked) Link(blocks_[linked]);
  for (; blocks_.size() > linked; blocks_.pop_back()) frames_ -= FramesOf(blocks_.back().block);  // no memory for them
  if (blocks_.empty()) return true;
  if (left_ > 0) sources_.SetOffset(static_cast<ALint>(left_));
  if (running_) sources_.Play();
  return true;
}

}  // namespace corvid
