// SPDX-License-Identifier: GPL-3.0-or-later
// A sound that is decoded while it plays.
#pragma once

#include <memory>

#include "platform/openal/block_queue.h"
#include "platform/openal/device_player.h"
#include "platform/openal/stream_reader.h"

namespace corvid {

class StreamedPlayer : public DevicePlayer {
 public:
  // nullptr when the device has no sources left (error empty), or the file cannot be read.
  static std::unique_ptr<StreamedPlayer> Make(DeviceCore& core, const std::string& path, bool inBackground,
                                              std::string& error);
  ~StreamedPlayer() override;

  void SetPosition(int64 byte) override;
  void Play(bool loop) override;
  void Stop() override;

  std::chrono::milliseconds Feed() override;
  void LeaveDevice() override { queue_.LeaveDevice(); }
  void EnterDevice() override;

 private:
  StreamedPlayer(DeviceCore& core, std::unique_ptr<StreamReader> reader, int16 channels, int32 frequency,
                 bool inBackground);
  SourceGroup& Sources() override { return queue_.Sources(); }
  bool Running() override;
  void HandOver();
  void GoTo(int64 frame, bool loop);

  const std::unique_ptr<StreamReader> reader_;
  const int16 channels_;  // of the file; what is played is stereo
  BlockQueue queue_;
  SampleBlock next_;  // taken from the reader and not handed over yet
  bool playing_ = false;
  bool loop_ = false;
};

}  // namespace corvid
