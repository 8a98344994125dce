// SPDX-License-Identifier: GPL-3.0-or-later
// Voices and screen reader of the json face: what they are to say is printed.
#pragma once

#include <array>

#include "platform/qt/json_output.h"
#include "platform/speech.h"

namespace corvid {

class JsonEngine : public SpeechEngine {
 public:
  explicit JsonEngine(JsonOutput& output) : output_(output) {}
  bool Start() override { return true; }
  std::string Problem() const override { return {}; }
  std::vector<std::string> Voices() override;
  void Speak(int16 voice, const std::string& text) override;
  void Purge(int16 voice) override;
  void SetVoice(int16 /*voice*/, int16 /*number*/) override {}
  void SetRate(int16 voice, int16 rate) override;
  void SetVolume(int16 voice, int16 volume) override;
  void SetPriority(int16 /*voice*/, int16 /*priority*/) override {}
  int16 Rate(int16 voice) const override;
  int16 Volume(int16 voice) const override;

 private:
  static constexpr std::size_t VoiceCount = 7;  // 1 to 6
  static std::size_t Place(int16 voice) { return voice >= 1 && voice <= 6 ? static_cast<std::size_t>(voice) : 0; }

  JsonOutput& output_;
  std::array<int16, VoiceCount> rates_{};
  std::array<int16, VoiceCount> volumes_{100, 100, 100, 100, 100, 100, 100};
};

class JsonReader : public ScreenReader {
 public:
  explicit JsonReader(JsonOutput& output) : output_(output) {}
  bool Start() override { return true; }
  std::string Problem() const override { return {}; }
  void Say(int16 channel, const std::string& text, bool interrupt) override;

 private:
  JsonOutput& output_;
};

}  // namespace corvid
