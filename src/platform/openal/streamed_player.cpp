// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/openal/streamed_player.h"

#include <algorithm>
#include <utility>

namespace corvid {

namespace {

using std::chrono::milliseconds;

constexpr std::size_t HandedLimit = 16'384;  // frames in the library's queue, about
constexpr milliseconds FeedInterval{20};
constexpr milliseconds HungryInterval{2};  // the next block is being decoded, and nothing is left to be heard

}  // namespace

StreamedPlayer::StreamedPlayer(DeviceCore& core, std::unique_ptr<StreamReader> reader, int16 channels, int32 frequency,
                               bool inBackground)
    : DevicePlayer(core, frequency, inBackground),
      reader_(std::move(reader)),
      channels_(channels),
      queue_(core, 2, frequency) {}

std::unique_ptr<StreamedPlayer> StreamedPlayer::Make(DeviceCore& core, const std::string& path, bool inBackground,
                                                     std::string& error) {
  std::unique_ptr<SoundFile> file = SoundFile::Open(path, error);
  if (file == nullptr) return nullptr;
  const int16 channels = file->Channels();
  const int32 frequency = file->Frequency();
  std::unique_ptr<StreamReader> reader = StreamReader::Make(std::move(file), error);
  if (reader == nullptr) return nullptr;
  std::unique_ptr<StreamedPlayer> player(
      new StreamedPlayer(core, std::move(reader), channels, frequency, inBackground));
  bool created = false;
  {
    const DeviceTurn turn(core);
    core.Join(*player);
    created = player->queue_.Create();
    if (created) player->ApplyAll();
  }
  return created ? std::move(player) : nullptr;
}

StreamedPlayer::~StreamedPlayer() {
  const DeviceTurn turn(core_);
  core_.Leave(*this);
  queue_.Destroy();
}

void StreamedPlayer::GoTo(int64 frame, bool loop) {
  loop_ = loop;
  queue_.Clear();
  next_ = {};
  reader_->Restart(frame, loop);
}

void StreamedPlayer::SetPosition(int64 byte) {
  const DeviceTurn turn(core_);
  GoTo(std::max<int64>(byte, 0) / (channels_ * static_cast<int64>(sizeof(int16))), loop_);
  if (playing_) core_.Hurry();
}

void StreamedPlayer::Play(bool loop) {
  const DeviceTurn turn(core_);
  NoEnd();
  const bool wasRunning = Running();
  const bool drained = queue_.Empty() && next_.samples.empty() && reader_->Finished();
  if (drained) {
    GoTo(0, loop);
  } else if (loop) {
    loop_ = true;
    reader_->BeginLoop();
  } else if (loop_) {
    // Beginnings may have been decoded behind the end; the sound goes on without them.
    const int64 position = queue_.Position();
    GoTo(std::max<int64>(position, 0), false);
  }
  playing_ = true;
  if (!wasRunning) queue_.Run();
  HandOver();
  core_.Hurry();
}

void StreamedPlayer::Stop() {
  const DeviceTurn turn(core_);
  NoEnd();
  playing_ = false;
  queue_.Hold();
}

void StreamedPlayer::HandOver() {
  queue_.Collect();
  while (queue_.Frames() < HandedLimit && (!next_.samples.empty() || reader_->Take(next_))) {
    if (!queue_.Push(next_)) return;  // no memory: it is tried again
    next_ = {};
  }
}

bool StreamedPlayer::Running() {
  if (!playing_) return false;
  HandOver();
  if (!queue_.Empty() || !next_.samples.empty() || !reader_->Finished()) return true;
  playing_ = false;
  queue_.Hold();
  EndAt(Clock::now());
  return false;
}

milliseconds StreamedPlayer::Feed() {
  if (!Running()) return milliseconds(0);
  return queue_.Empty() ? HungryInterval : FeedInterval;
}

void StreamedPlayer::EnterDevice() {
  if (queue_.EnterDevice()) ApplyAll();
}

}  // namespace corvid
