// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/timed_player.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace corvid {

TimedPlayer::TimedPlayer(const Clock& clock, const SoundLength& length, bool inBackground, const SoundLabel& label,
                         Told told)
    : clock_(clock),
      length_(length),
      inBackground_(inBackground),
      label_(label),
      told_(std::move(told)),
      frequency_(length.Frequency) {}

TimedPlayer::~TimedPlayer() {
  if (IsPlaying()) Tell("stop");
}

void TimedPlayer::Tell(const char* op) {
  if (told_) told_(op, *this);
}

double TimedPlayer::Place() const {
  if (!playing_) return position_;
  const double seconds = static_cast<double>(clock_.MonotonicMilliseconds() - started_) / 1000;
  return position_ + seconds * frequency_ * length_.Channels * 2;
}

void TimedPlayer::Hold() {
  position_ = Place();
  const auto whole = static_cast<double>(length_.Bytes);
  if (loop_ && whole > 0) position_ = std::fmod(position_, whole);
  started_ = clock_.MonotonicMilliseconds();
}

void TimedPlayer::SetVolume(int32 volume) {
  volume_ = std::clamp(volume, -10000, 0);
  if (IsPlaying()) Tell("volume");
}

void TimedPlayer::SetPan(int32 pan) {
  pan_ = std::clamp(pan, -10000, 10000);
  if (IsPlaying()) Tell("pan");
}

void TimedPlayer::SetFrequency(int32 frequency) {
  Hold();
  frequency_ = frequency > 0 ? frequency : length_.Frequency;
  if (IsPlaying()) Tell("frequency");
}

void TimedPlayer::SetPosition(int64 byte) {
  position_ = byte < 0 || byte >= length_.Bytes ? 0.0 : static_cast<double>(byte);
  started_ = clock_.MonotonicMilliseconds();
}

void TimedPlayer::Play(bool loop) {
  IsPlaying();
  Hold();
  loop_ = loop;
  playing_ = true;
  Tell("play");
}

void TimedPlayer::Stop() {
  if (!IsPlaying()) return;
  Hold();
  playing_ = false;
  Tell("stop");
}

bool TimedPlayer::IsPlaying() {
  const auto whole = static_cast<double>(length_.Bytes);
  if (playing_ && Place() >= whole && (!loop_ || whole == 0)) {
    playing_ = false;
    position_ = 0;
  }
  return playing_;
}

}  // namespace corvid
