// SPDX-License-Identifier: GPL-3.0-or-later
// The sound output on OpenAL Soft.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/audio.h"

namespace corvid {

struct MixerSettings {
  std::string device{};   // name of the device; empty for the system's default
  bool loopback = false;  // no device at all: Render hands out what would be heard
  int loopbackRate = VoiceSampleRate;
  int loopbackChannels = 1;  // 1 or 2
};

// Sets ALSOFT_CONF (short periods) and ALSOFT_LOGLEVEL for this process where the player has not set them, so the first
// Open belongs before other threads that read the environment.
class OpenAlMixer : public AudioOutput {
 public:
  explicit OpenAlMixer(MixerSettings settings = {});
  ~OpenAlMixer() override;
  OpenAlMixer(const OpenAlMixer&) = delete;
  OpenAlMixer& operator=(const OpenAlMixer&) = delete;

  bool Open() override;
  std::string Problem() const override;
  std::unique_ptr<PcmStream> CreateStream() override;

  // Loopback only: mixes the next frames and returns them, channels interleaved, full scale being 1.
  std::vector<float> Render(std::size_t frames);

  struct Core;  // the device and its streams

 private:
  MixerSettings settings_;
  std::string problem_;
  std::unique_ptr<Core> core_;
};

}  // namespace corvid
