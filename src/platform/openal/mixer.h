// SPDX-License-Identifier: GPL-3.0-or-later
// The sound output on OpenAL Soft: voices and sounds through one device.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/audio.h"
#include "platform/openal/mixer_settings.h"
#include "platform/sounds.h"

namespace corvid {

struct DeviceCore;

// A device that goes away while the program runs is opened again when it is back, or another is there; until then
// voices and sounds run on in silence and come to their end in time. The same holds where there is none at first.
//
// Sets ALSOFT_CONF and ALSOFT_LOGLEVEL for this process where the player has not set them, so the first Open belongs
// before other threads that read the environment.
class OpenAlMixer : public AudioOutput, public SoundOutput {
 public:
  explicit OpenAlMixer(MixerSettings settings = {});
  ~OpenAlMixer() override;
  OpenAlMixer(const OpenAlMixer&) = delete;
  OpenAlMixer& operator=(const OpenAlMixer&) = delete;

  bool Open() override;
  std::string Problem() const override;  // of the device, for voices and sounds alike
  std::unique_ptr<PcmStream> CreateStream() override;

  bool OpenSounds() override { return Open(); }
  // A sound of more than 64 megabytes of decoded samples (six minutes of stereo) is an error.
  std::shared_ptr<const SoundData> Load(const std::string& path, std::string& error) override;
  std::unique_ptr<SoundPlayer> CreatePlayer(const std::shared_ptr<const SoundData>& data, bool inBackground,
                                            const SoundLabel& label) override;
  std::unique_ptr<SoundPlayer> CreateStreamed(const std::string& path, bool inBackground, const SoundLabel& label,
                                              std::string& error) override;
  void SetFocused(bool focused) override;

  // Loopback only: mixes the next frames and returns them, channels interleaved, full scale being 1. Never waits for
  // the other calls, nor they for it, as on a real device.
  std::vector<float> Render(std::size_t frames);
  // Loopback only: takes the device away and gives it back. Before Open: whether it is there.
  void SetPlugged(bool plugged);

 private:
  MixerSettings settings_;
  std::string problem_;
  bool focused_ = true;
  bool plugged_ = true;
  std::unique_ptr<DeviceCore> core_;
};

}  // namespace corvid
