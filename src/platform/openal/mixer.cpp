// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/openal/mixer.h"

#include <utility>

#include "platform/openal/device_core.h"
#include "platform/openal/memory_player.h"
#include "platform/openal/stream.h"
#include "platform/openal/streamed_player.h"

namespace corvid {

OpenAlMixer::OpenAlMixer(MixerSettings settings) : settings_(std::move(settings)) {}

OpenAlMixer::~OpenAlMixer() = default;

bool OpenAlMixer::Open() {
  if (core_ == nullptr) {
    auto core = std::make_unique<DeviceCore>(settings_, plugged_);
    if (!core->Open(problem_)) return false;
    core_ = std::move(core);
    core_->SetFocused(focused_);
  }
  if (!core_->Found()) return false;
  problem_.clear();
  return true;
}

std::string OpenAlMixer::Problem() const {
  return problem_;
}

std::unique_ptr<PcmStream> OpenAlMixer::CreateStream() {
  if (core_ == nullptr) return nullptr;
  return MixerStream::Make(*core_);
}

std::shared_ptr<const SoundData> OpenAlMixer::Load(const std::string& path, std::string& error) {
  const std::unique_ptr<SoundFile> file = SoundFile::Open(path, error);
  SoundSamples samples;
  if (file == nullptr || !ReadAll(*file, samples, error)) return nullptr;
  return std::make_shared<MemorySound>(std::move(samples));
}

std::unique_ptr<SoundPlayer> OpenAlMixer::CreatePlayer(const std::shared_ptr<const SoundData>& data, bool inBackground,
                                                       const SoundLabel& /*label*/) {
  auto sound = std::dynamic_pointer_cast<const MemorySound>(data);
  if (core_ == nullptr || sound == nullptr) return nullptr;
  return MemoryPlayer::Make(*core_, std::move(sound), inBackground);
}

std::unique_ptr<SoundPlayer> OpenAlMixer::CreateStreamed(const std::string& path, bool inBackground,
                                                         const SoundLabel& /*label*/, std::string& error) {
  if (core_ == nullptr) {
    error = problem_;
    return nullptr;
  }
  auto player = StreamedPlayer::Make(*core_, path, inBackground, error);
  if (player == nullptr && error.empty()) error = "Too many sounds play at once.";
  return player;
}

void OpenAlMixer::SetFocused(bool focused) {
  focused_ = focused;
  if (core_ != nullptr) core_->SetFocused(focused);
}

std::vector<float> OpenAlMixer::Render(std::size_t frames) {
  if (core_ != nullptr) return core_->Render(frames);
  return std::vector<float>(frames * static_cast<std::size_t>(settings_.loopbackChannels));
}

void OpenAlMixer::SetPlugged(bool plugged) {
  plugged_ = plugged;
  if (core_ != nullptr) core_->SetPlugged(plugged);
}

}  // namespace corvid
