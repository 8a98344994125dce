// SPDX-License-Identifier: GPL-3.0-or-later
// Any text as "speech.ini": refused and nothing changed, or read into values that are written and read back the same.
#include "speech/speech_settings.h"

#include "core/scramble.h"
#include "fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using corvid::SpeechSettings;
  using corvid::fuzz::Require;
  const std::string text(corvid::fuzz::Text(data, size));
  Require(corvid::Scramble(corvid::Scramble(text)) == text, "the shift is its own inverse");
  corvid::SpeechState speech;
  SpeechSettings::SetDefaults(speech);
  const std::string before = SpeechSettings::FileText(speech);
  if (!SpeechSettings::FromFileText(text, speech)) {
    Require(SpeechSettings::FileText(speech) == before, "a refused text changes nothing");
    return 0;
  }
  const std::string written = SpeechSettings::FileText(speech);
  corvid::SpeechState again;
  Require(SpeechSettings::FromFileText(written, again), "what was written is read");
  Require(SpeechSettings::FileText(again) == written, "and reads the same");
  return 0;
}
