// SPDX-License-Identifier: GPL-3.0-or-later
// Sounds of the json face: what would be heard is printed. A sound ends when its length has passed.
#pragma once

#include <string>

#include "platform/qt/json_output.h"
#include "platform/timed_player.h"

namespace corvid {

class JsonSounds : public SoundOutput {
 public:
  JsonSounds(JsonOutput& output, const Clock& clock) : output_(output), clock_(clock) {}

  bool OpenSounds() override { return true; }
  std::string Problem() const override { return {}; }
  std::shared_ptr<const SoundData> Load(const std::string& path, std::string& error) override;
  std::unique_ptr<SoundPlayer> CreatePlayer(const std::shared_ptr<const SoundData>& data, bool inBackground,
                                            const SoundLabel& label) override;
  std::unique_ptr<SoundPlayer> CreateStreamed(const std::string& path, bool inBackground, const SoundLabel& label,
                                              std::string& error) override;
  void SetFocused(bool /*focused*/) override {}

  void Finish() { finished_ = true; }  // nothing is printed any more

 private:
  std::unique_ptr<SoundPlayer> Create(const SoundLength& length, bool inBackground, const SoundLabel& label);
  void Print(const char* op, const TimedPlayer& player);

  JsonOutput& output_;
  const Clock& clock_;
  bool finished_ = false;
};

}  // namespace corvid
