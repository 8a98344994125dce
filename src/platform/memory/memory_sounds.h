// SPDX-License-Identifier: GPL-3.0-or-later
// A sound card that writes down what it would play. A sound ends when its length has passed on the test's clock.
#pragma once

#include <functional>
#include <map>
#include <string>

#include "platform/memory/effects.h"
#include "platform/timed_player.h"

namespace corvid {

// Effects of kind "sound": "play 1 hit.wav -600 0 22050 once background" (handle, file, volume, pan, frequency, "once"
// or "loop", and whether it is heard without the focus), "volume 1 hit.wav -300", "pan ...", "frequency ...", "stop 1
// hit.wav".
class MemorySounds : public SoundOutput {
 public:
  MemorySounds(const Clock& clock, EffectLog& effects) : clock_(clock), effects_(effects) {}

  // A path that can be played; any other one cannot be read.
  void Put(const std::string& path, const SoundLength& length) { lengths_[path] = length; }

  bool OpenSounds() override { return Works; }
  std::string Problem() const override { return Works ? "" : "There is no sound card in this test"; }
  std::shared_ptr<const SoundData> Load(const std::string& path, std::string& error) override;
  std::unique_ptr<SoundPlayer> CreatePlayer(const std::shared_ptr<const SoundData>& data, bool inBackground,
                                            const SoundLabel& label) override;
  std::unique_ptr<SoundPlayer> CreateStreamed(const std::string& path, bool inBackground, const SoundLabel& label,
                                              std::string& error) override;
  void SetFocused(bool focused) override { Focused = focused; }
  // The device goes, or is there again. Without it players run on in silence: effects tell of none of them. Lost is
  // told the text for the player, once each time.
  void SetPlugged(bool plugged);
  std::function<void(const std::string& text)> Lost;

  bool Works = true;  // without a device nothing is heard, and sounds end in time
  bool Focused = true;
  int PlayersLeft = 301;  // that may still be made
  int PlayersToFail = 0;  // the next ones that cannot be made
  int Loads = 0;          // files that were decoded whole

 private:
  std::unique_ptr<SoundPlayer> Create(const SoundLength& length, bool inBackground, const SoundLabel& label);

  const Clock& clock_;
  EffectLog& effects_;
  std::map<std::string, SoundLength> lengths_;
  bool plugged_ = true;
};

}  // namespace corvid
