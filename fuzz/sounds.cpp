// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes as a sound file: refused, or read to their end within the limit, as often and from wherever one likes.
#include <string>

#include "fuzz.h"
#include "platform/openal/sound_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using corvid::fuzz::Require;
  constexpr std::size_t most = 1U << 18;
  std::string error;
  const auto file = corvid::SoundFile::OpenBytes(corvid::fuzz::Text(data, size), error);
  Require((file == nullptr) == !error.empty(), "what is refused has a reason");
  if (file == nullptr) return 0;
  Require(file->Channels() == 1 || file->Channels() == 2, "one side or two");
  Require(file->Frequency() > 0, "some speed");

  corvid::SoundSamples sound;
  const bool whole = corvid::ReadAll(*file, sound, error, most);
  Require(whole == error.empty(), "what is refused has a reason");
  Require(sound.samples.size() % static_cast<std::size_t>(sound.channels) == 0, "whole frames");
  Require(sound.samples.size() <= most, "no more is read than may be");

  // As music that is decoded while it plays: some frames from a place, and from the start again.
  for (const corvid::int64 frame : {static_cast<corvid::int64>(size % 997), corvid::int64{1} << 40, corvid::int64{0}}) {
    std::vector<corvid::int16> samples;
    if (!file->Seek(frame)) continue;
    Require(file->Read(4096, samples) <= 4096, "no more is read than was asked for");
  }
  return 0;
}
