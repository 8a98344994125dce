// SPDX-License-Identifier: GPL-3.0-or-later
// Reading WAV, OGG, FLAC and MP3 files. What a file says about itself is never trusted for its length.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/types.h"

namespace corvid {

// Bytes of decoded 16-bit samples that a sound loaded whole may have: six minutes of stereo at 44,100 hertz, twice that
// of mono. The library holds up to four times as much for it.
inline constexpr std::size_t LongestLoadedSound = std::size_t{64} * 1024 * 1024;
inline constexpr int MostFileChannels = 8;

struct SoundSamples {
  int16 channels = 0;  // 1 or 2
  int32 frequency = 0;
  std::vector<int16> samples;  // of two channels: left and right in turn
};

class SoundFile {
 public:
  // nullptr with error set, for the player, when it is no readable sound file.
  static std::unique_ptr<SoundFile> Open(const std::string& path, std::string& error);
  static std::unique_ptr<SoundFile> OpenBytes(std::string_view bytes, std::string& error);  // must outlive it
  ~SoundFile();
  SoundFile(const SoundFile&) = delete;
  SoundFile& operator=(const SoundFile&) = delete;

  int16 Channels() const;  // 1 or 2; what has more is mixed down to 2
  int32 Frequency() const;
  // Appends up to frames decoded frames; gives how many: fewer only at the end, or where the file is damaged.
  std::size_t Read(std::size_t frames, std::vector<int16>& samples);
  bool Seek(int64 frame);  // false when it is behind the end, or cannot be reached

 private:
  struct Library;
  explicit SoundFile(std::unique_ptr<Library> library);
  static std::unique_ptr<SoundFile> Check(std::unique_ptr<Library> library, std::string& error);

  std::unique_ptr<Library> library_;
  std::vector<float> read_;
};

// The whole of it. False with error set when it holds nothing that can be heard, or more bytes of samples than most.
bool ReadAll(SoundFile& file, SoundSamples& sound, std::string& error, std::size_t most = LongestLoadedSound);

}  // namespace corvid
