// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/sound_length.h"

#include <algorithm>

namespace corvid {

namespace {

constexpr int64 CompressedBytesASecond = 16000;
constexpr int32 CompressedFrequency = 44100;

int64 Number(std::string_view head, std::size_t at, std::size_t bytes) {
  int64 value = 0;
  for (std::size_t i = bytes; i > 0; --i)
    value = value * 256 + (at + i - 1 < head.size() ? static_cast<unsigned char>(head[at + i - 1]) : 0);
  return value;
}

std::optional<SoundLength> Wave(std::string_view head, int64 size) {
  constexpr std::size_t chunkHead = 8;
  SoundLength length;
  int64 bytesASecond = 0;
  for (std::size_t at = 12; at + chunkHead <= head.size();) {
    const std::string_view name = head.substr(at, 4);
    const int64 chunk = Number(head, at + 4, 4);
    if (name == "fmt ") {
      length.Channels = static_cast<int16>(std::clamp<int64>(Number(head, at + 10, 2), 1, 2));
      length.Frequency = static_cast<int32>(std::clamp<int64>(Number(head, at + 12, 4), 0, 1000000));
      bytesASecond = Number(head, at + 16, 4);
    } else if (name == "data") {
      if (bytesASecond <= 0 || length.Frequency == 0) return std::nullopt;
      const int64 there = std::min(chunk, size - static_cast<int64>(at + chunkHead));
      // The rate of the file's own form: it need not be that of 16-bit samples.
      const int64 frames = there * length.Frequency / bytesASecond;
      length.Bytes = frames * length.Channels * 2;
      return length;
    }
    at += chunkHead + static_cast<std::size_t>(chunk + chunk % 2);
  }
  return std::nullopt;
}

bool LooksCompressed(std::string_view head) {
  if (head.starts_with("OggS") || head.starts_with("fLaC") || head.starts_with("ID3")) return true;
  return head.size() > 1 && head[0] == '\xFF' && (static_cast<unsigned char>(head[1]) & 0xE0U) == 0xE0U;
}

}  // namespace

std::optional<SoundLength> LengthOfSound(std::string_view head, int64 size) {
  if (head.starts_with("RIFF") && head.substr(std::min<std::size_t>(8, head.size())).starts_with("WAVE"))
    return Wave(head, size);
  if (!LooksCompressed(head)) return std::nullopt;
  return SoundLength{size * CompressedFrequency / CompressedBytesASecond * 4, 2, CompressedFrequency};
}

}  // namespace corvid
