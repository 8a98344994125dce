// SPDX-License-Identifier: GPL-3.0-or-later
// Speech for a program that was started without it: settings are kept, nothing is heard.
#pragma once

#include <algorithm>
#include <array>
#include <utility>

#include "platform/speech.h"

namespace corvid {

class SilentEngine : public SpeechEngine {
 public:
  explicit SilentEngine(std::string reason) : reason_(std::move(reason)) {}
  bool Start() override { return false; }
  std::string Problem() const override { return reason_; }
  std::vector<std::string> Voices() override { return {}; }
  void Speak(int16 /*voice*/, const std::string& /*text*/) override {}
  void Purge(int16 /*voice*/) override {}
  void SetVoice(int16 /*voice*/, int16 /*number*/) override {}
  void SetRate(int16 voice, int16 rate) override { rates_[Slot(voice)] = std::clamp<int16>(rate, -10, 21); }
  void SetVolume(int16 voice, int16 volume) override { volumes_[Slot(voice)] = std::clamp<int16>(volume, 0, 100); }
  void SetPriority(int16 /*voice*/, int16 /*priority*/) override {}
  int16 Rate(int16 voice) const override { return rates_[Slot(voice)]; }
  int16 Volume(int16 voice) const override { return volumes_[Slot(voice)]; }

 private:
  static std::size_t Slot(int16 voice) { return voice >= 1 && voice <= 6 ? static_cast<std::size_t>(voice) : 0; }
  std::string reason_;
  std::array<int16, 7> rates_{};
  std::array<int16, 7> volumes_{100, 100, 100, 100, 100, 100, 100};
};

class SilentReader : public ScreenReader {
 public:
  explicit SilentReader(std::string reason) : reason_(std::move(reason)) {}
  bool Start() override { return false; }
  std::string Problem() const override { return reason_; }
  void Say(int16 /*channel*/, const std::string& /*text*/, bool /*interrupt*/) override {}

 private:
  std::string reason_;
};

}  // namespace corvid
