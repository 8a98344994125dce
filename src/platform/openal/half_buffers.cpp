// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/openal/half_buffers.h"

#include <vector>

namespace corvid {

std::shared_ptr<HalfBuffers> HalfBuffers::Make(const MemorySound& sound) {
  std::shared_ptr<HalfBuffers> made(new HalfBuffers());
  alGetError();
  alGenBuffers(2, made->ids_.data());
  if (alGetError() != AL_NO_ERROR) {
    made->ids_ = {};
    return nullptr;
  }
  const std::vector<int16>& samples = sound.Samples().samples;
  const auto channels = static_cast<std::size_t>(sound.Channels());
  const auto frames = static_cast<std::size_t>(sound.Frames());
  for (std::size_t side = 0; side < 2; ++side) {
    std::vector<int16> half(2 * frames);
    for (std::size_t i = 0; i < frames; ++i) half[2 * i + side] = samples[i * channels + (channels == 2 ? side : 0)];
    alBufferData(made->ids_[side], AL_FORMAT_STEREO16, half.data(), static_cast<ALsizei>(half.size() * sizeof(int16)),
                 sound.Frequency());
    if (alGetError() != AL_NO_ERROR) return nullptr;
  }
  return made;
}

HalfBuffers::~HalfBuffers() {
  if (ids_[0] != 0) alDeleteBuffers(2, ids_.data());
}

}  // namespace corvid
