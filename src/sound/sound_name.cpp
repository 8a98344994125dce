// SPDX-License-Identifier: GPL-3.0-or-later
#include "sound/sound_name.h"

#include <algorithm>
#include <memory>
#include <random>

#include "core/text.h"

namespace corvid {

RandomNumber Chance() {
  auto generator = std::make_shared<std::mt19937>(std::random_device()());
  return [generator](int16 highest) {
    return static_cast<int16>(std::uniform_int_distribution<int>(1, highest)(*generator));
  };
}

SoundKind KindOfSound(std::string& name) {
  constexpr std::string_view decodedOgg = ".OGG!";
  if (name.find(".MP3") != std::string::npos) return SoundKind::Mp3;
  if (const std::size_t at = name.find(decodedOgg); at != std::string::npos) {
    name.erase(at + decodedOgg.size() - 1);
    return SoundKind::Buffered;
  }
  return name.find(".OGG") != std::string::npos ? SoundKind::StreamedOgg : SoundKind::Buffered;
}

bool ChooseNumbered(std::string& name, const RandomNumber& random) {
  constexpr std::size_t mostDigits = 3;
  const std::size_t star = name.find('*');
  if (star == std::string::npos) return true;
  const std::size_t first = star + 1;
  const auto end =
      std::find_if(name.begin() + static_cast<std::ptrdiff_t>(first), name.end(), [](char c) { return !IsDigit(c); });
  if (end == name.end()) return true;
  const auto digits = static_cast<std::size_t>(end - name.begin()) - first;
  if (digits == 0 || digits > mostDigits) return false;
  const auto highest = static_cast<int16>(std::stoi(name.substr(first, digits)));
  name.replace(star, digits + 1, std::to_string(random(std::max<int16>(1, highest))));
  return true;
}

bool IsWholePath(const std::string& name) {
  return name.find(':') != std::string::npos || name.starts_with('\\') || name.starts_with('/');
}

}  // namespace corvid
