// SPDX-License-Identifier: GPL-3.0-or-later
// Sounds for a program without a sound output: everything can be asked for, nothing is heard.
#pragma once

#include "platform/sounds.h"

namespace corvid {

class SilentSounds : public SoundOutput {
 public:
  bool OpenSounds() override { return true; }
  std::string Problem() const override { return {}; }
  std::shared_ptr<const SoundData> Load(const std::string& /*path*/, std::string& /*error*/) override {
    return std::make_shared<Data>();
  }
  std::unique_ptr<SoundPlayer> CreatePlayer(const std::shared_ptr<const SoundData>& /*data*/, bool /*inBackground*/,
                                            const SoundLabel& /*label*/) override {
    return std::make_unique<Player>();
  }
  std::unique_ptr<SoundPlayer> CreateStreamed(const std::string& /*path*/, bool /*inBackground*/,
                                              const SoundLabel& /*label*/, std::string& /*error*/) override {
    return std::make_unique<Player>();
  }
  void SetFocused(bool /*focused*/) override {}

 private:
  static constexpr int32 AnyFrequency = 22050;
  class Data : public SoundData {
   public:
    int16 Channels() const override { return 1; }
    int32 Frequency() const override { return AnyFrequency; }
    int64 Bytes() const override { return 0; }
  };
  class Player : public SoundPlayer {
   public:
    void SetVolume(int32 /*volume*/) override {}
    void SetPan(int32 /*pan*/) override {}
    void SetFrequency(int32 /*frequency*/) override {}
    int32 Frequency() const override { return AnyFrequency; }
    void SetPosition(int64 /*byte*/) override {}
    void Play(bool /*loop*/) override {}
    void Stop() override {}
    bool IsPlaying() override { return false; }
  };
};

}  // namespace corvid
