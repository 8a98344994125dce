// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/openal/device_player.h"

#include <algorithm>
#include <cmath>

namespace corvid {

namespace {

constexpr int32 Silent = 10'000;  // hundredths of a decibel below full volume

float Gain(int32 below) {
  if (below >= Silent) return 0;
  return below <= 0 ? 1.0F : static_cast<float>(std::pow(10.0, -below / 2000.0));
}

}  // namespace

std::array<float, 2> SideGains(int32 volume, int32 pan) {
  const int32 below = -std::clamp<int32>(volume, -Silent, 0);
  const int32 side = std::clamp<int32>(pan, -Silent, Silent);
  return {Gain(below + std::max(side, 0)), Gain(below + std::max(-side, 0))};
}

void DevicePlayer::SetVolume(int32 volume) {
  const DeviceTurn turn(core_);
  volume_ = volume;
  ApplyLevel();
}

void DevicePlayer::SetPan(int32 pan) {
  const DeviceTurn turn(core_);
  pan_ = pan;
  ApplyLevel();
}

void DevicePlayer::ApplyLevel() {
  const bool heard = inBackground_ || core_.focused;
  Sources().SetGains(heard ? SideGains(volume_, pan_) : std::array<float, 2>{});
}

void DevicePlayer::SetFrequency(int32 frequency) {
  const DeviceTurn turn(core_);
  PitchChanges();
  frequency_ = frequency > 0 ? frequency : native_;
  Sources().SetPitch(static_cast<float>(frequency_) / static_cast<float>(native_));
}

void DevicePlayer::ApplyAll() {
  ApplyLevel();
  Sources().SetPitch(static_cast<float>(frequency_) / static_cast<float>(native_));
}

bool DevicePlayer::IsPlaying() {
  const DeviceTurn turn(core_);
  return Running() || Clock::now() < heardAt_;
}

}  // namespace corvid
