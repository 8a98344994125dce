// SPDX-License-Identifier: GPL-3.0-or-later
#include "sound/sounds_ini.h"

#include "core/text.h"

namespace corvid {

namespace {

constexpr int32 Plenty = 1000000;  // more than any setting takes

// Kept: the digits at the start count, and anything else is 0, a sign too.
int32 LeadingDigits(std::string_view text) {
  int32 value = 0;
  for (const char c : text) {
    if (!IsDigit(c) || value >= Plenty) break;
    value = value * 10 + (c - '0');
  }
  return value;
}

// False when there is no such setting.
bool Take(std::string_view key, std::string_view value, SoundSettings& settings) {
  const int32 number = LeadingDigits(value);
  if (key == "SOUND BUFFERS") {
    const bool fits = number >= FewestSoundBuffers && number <= MostSoundBuffers;
    settings.SoundBuffers = fits ? static_cast<int16>(number) : DefaultSoundBuffers;
  } else if (key == "SOFTWARE BUFFERS") {
    settings.SoftwareBuffers = number > 0;
  } else if (key == "HRTF") {
    settings.Hrtf = number > 0;
  } else if (key == "MINIMAL SOUNDS") {
    settings.MinimalSounds = number > 0;
  } else {
    // Kept: "OGG BUFFERS" and "MP3 BUFFERS" are no settings, though the pools have sizes.
    return key == "MODIFY FREQUENCY";  // taken, and of no effect
  }
  return true;
}

}  // namespace

SoundSettings ReadSoundsIni(std::string_view text, const std::function<void(const std::string& line)>& complain) {
  SoundSettings settings;
  for (const std::string& raw : Split(text, "\n")) {
    std::string line = Upper(Trim(Replace(raw, "\r", "")));
    line = Trim(line.substr(0, line.find('\'')));
    if (line.empty()) continue;
    const std::size_t equals = line.find('=');
    const std::string key = Trim(line.substr(0, equals));
    const std::string value = equals == std::string::npos ? "1" : Trim(line.substr(equals + 1));
    if (!Take(key, value, settings)) complain(line);
  }
  return settings;
}

}  // namespace corvid
