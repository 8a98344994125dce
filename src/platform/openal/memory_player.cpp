// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/openal/memory_player.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace corvid {

MemoryPlayer::MemoryPlayer(DeviceCore& core, std::shared_ptr<const MemorySound> sound, bool inBackground)
    : DevicePlayer(core, sound->Frequency(), inBackground), sound_(std::move(sound)) {}

std::unique_ptr<MemoryPlayer> MemoryPlayer::Make(DeviceCore& core, std::shared_ptr<const MemorySound> sound,
                                                 bool inBackground) {
  std::unique_ptr<MemoryPlayer> player(new MemoryPlayer(core, std::move(sound), inBackground));
  bool created = false;
  {
    const DeviceTurn turn(core);
    core.Join(*player);
    created = player->Create();
  }
  return created ? std::move(player) : nullptr;
}

MemoryPlayer::~MemoryPlayer() {
  const DeviceTurn turn(core_);
  core_.Leave(*this);
  sources_.Delete();
  buffers_ = nullptr;
}

bool MemoryPlayer::Create() {
  buffers_ = core_.Halves(*sound_);
  if (buffers_ == nullptr || !sources_.Create()) return false;
  for (std::size_t side = 0; side < 2; ++side) {
    alSourcei(sources_.Id(side), AL_DIRECT_CHANNELS_SOFT, AL_TRUE);
    alSourcei(sources_.Id(side), AL_BUFFER, static_cast<ALint>(buffers_->Id(side)));
  }
  ApplyAll();
  return true;
}

void MemoryPlayer::StartAt(int64 frame) {
  NoEnd();
  sources_.Stop();
  sources_.SetOffset(static_cast<ALint>(frame));
  SetLoop(loop_);
  sources_.Play();
  playing_ = true;
  passed_ = frame;
  passedAt_ = Clock::now();
}

void MemoryPlayer::SetLoop(bool loop) {
  loop_ = loop;
  for (std::size_t side = 0; side < 2; ++side) alSourcei(sources_.Id(side), AL_LOOPING, loop ? AL_TRUE : AL_FALSE);
}

void MemoryPlayer::SetPosition(int64 byte) {
  const DeviceTurn turn(core_);
  const bool inside = byte >= 0 && byte < sound_->Bytes();
  const int64 frame = inside ? byte / (sound_->Channels() * static_cast<int64>(sizeof(int16))) : 0;
  if (Running()) {
    StartAt(frame);
  } else {
    position_ = frame;
  }
}

void MemoryPlayer::Play(bool loop) {
  const DeviceTurn turn(core_);
  if (Running() && loop == loop_) return;
  // Standing still while the loop changes, both sides meet the seam with the same one.
  if (playing_) sources_.Pause();
  if (Running()) {
    PitchChanges();  // the count that follows knows the new loop
    SetLoop(loop);
    sources_.Play();
    return;
  }
  loop_ = loop;
  StartAt(std::exchange(position_, 0));
}

void MemoryPlayer::Stop() {
  const DeviceTurn turn(core_);
  NoEnd();
  if (!playing_) return;
  sources_.Pause();
  if (!Running()) {  // it ends in this very moment
    NoEnd();
    return;
  }
  position_ = core_.Connected() ? sources_.Offset() : static_cast<int64>(ByTheClock());
  playing_ = false;
  sources_.Stop();
}

bool MemoryPlayer::Running() {
  if (!playing_) return false;
  if (sources_.State() != AL_STOPPED || !core_.Connected()) return true;
  playing_ = false;
  const std::chrono::duration<double> whole(static_cast<double>(sound_->Frames() - passed_) / Frequency());
  EndAt(std::min(Clock::now(), passedAt_ + std::chrono::duration_cast<Clock::duration>(whole)));
  return false;
}

void MemoryPlayer::PitchChanges() {
  if (!Running() || !core_.Connected()) return;
  passed_ = sources_.Offset();
  passedAt_ = Clock::now();
}

// The frame that is due; behind the end when it should have ended.
double MemoryPlayer::ByTheClock() const {
  const std::chrono::duration<double> since = Clock::now() - passedAt_;
  const double frame = static_cast<double>(passed_) + since.count() * Frequency();
  return loop_ ? std::fmod(frame, static_cast<double>(sound_->Frames())) : frame;
}

void MemoryPlayer::LeaveDevice() {
  if (Running()) {
    if (core_.Connected()) {
      sources_.Pause();
      passed_ = sources_.Offset();
    } else {
      passed_ = static_cast<int64>(ByTheClock());
    }
    if (passed_ >= sound_->Frames()) {
      playing_ = false;
      passed_ = 0;
    }
  }
  sources_.Forget();
  buffers_ = nullptr;
}

void MemoryPlayer::EnterDevice() {
  if (Create() && playing_) StartAt(passed_);
}

}  // namespace corvid
