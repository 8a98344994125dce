// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/espeak/synthesizer.h"

#include <espeak-ng/espeak_ng.h>
#include <espeak-ng/speak_lib.h>

#include <algorithm>
#include <cmath>
#include <string_view>
#include <utility>

#include "platform/audio.h"

namespace corvid {

namespace {

constexpr int BlockMilliseconds = 20;  // of sound; a purge during synthesis takes effect with the next block

int TakeSamples(short* samples, int count, espeak_EVENT* events) {
  const auto* sink = static_cast<const Synthesizer::Sink*>(events->user_data);
  if (samples == nullptr || count <= 0 || sink == nullptr) return 0;
  return (*sink)(samples, static_cast<std::size_t>(count)) ? 0 : 1;
}

std::vector<Synthesizer::Voice> Listed(espeak_VOICE* wanted) {
  std::vector<Synthesizer::Voice> voices;
  for (const espeak_VOICE** voice = espeak_ListVoices(wanted); *voice != nullptr; ++voice) {
    voices.push_back({(*voice)->name, (*voice)->identifier});
  }
  std::sort(voices.begin(), voices.end(), [](const Synthesizer::Voice& a, const Synthesizer::Voice& b) {
    return std::pair(a.name, a.identifier) < std::pair(b.name, b.identifier);
  });
  return voices;
}

bool IsEnglish(const Synthesizer::Voice& voice) {
  return voice.identifier.starts_with("gmw/en");
}

}  // namespace

int WordsPerMinute(int16 rate) {
  return static_cast<int>(std::lround(175.0 * std::pow(1.08, std::clamp<int16>(rate, -10, 21))));
}

std::string Synthesizer::Open() {
  if (!voices_.empty()) return {};
  // The library stays ready until the process ends: espeak_Terminate can wait for ever after a second start. A rate
  // above 0 tells that an engine before this one has made it ready.
  if (espeak_ng_GetSampleRate() <= 0) {
    // Without DONT_EXIT the library would end the program when its data is missing.
    espeak_Initialize(AUDIO_OUTPUT_SYNCHRONOUS, BlockMilliseconds, nullptr, espeakINITIALIZE_DONT_EXIT);
  }
  const int rate = espeak_ng_GetSampleRate();
  if (rate <= 0) return "The speech engine espeak-ng cannot start: its voice data is missing or damaged.";
  espeak_SetSynthCallback(TakeSamples);
  if (rate == VoiceSampleRate) ListVoices();
  return voices_.empty() ? "The speech engine espeak-ng has no usable voices." : "";
}

void Synthesizer::ListVoices() {
  voices_ = Listed(nullptr);
  const auto others = std::stable_partition(voices_.begin(), voices_.end(), IsEnglish);
  if (others == voices_.begin()) return;
  const Voice first = voices_.front();
  espeak_VOICE timbre{};
  timbre.languages = "variant";
  std::vector<Voice> timbres = Listed(&timbre);
  for (Voice& voice : timbres) {
    const std::string_view file = std::string_view(voice.identifier).substr(voice.identifier.rfind('/') + 1);
    voice = {first.name + ", " + voice.name, first.identifier + "+" + std::string(file)};
  }
  voices_.insert(others, timbres.begin(), timbres.end());
}

void Synthesizer::Say(const Piece& piece, const Sink& sink) {
  const std::string& identifier = voices_[piece.voice].identifier;
  if (identifier != current_) {
    espeak_SetVoiceByName(identifier.c_str());
    current_ = identifier;
  }
  espeak_SetParameter(espeakRATE, WordsPerMinute(piece.rate), 0);
  espeak_SetParameter(espeakPUNCTUATION, piece.character ? espeakPUNCT_ALL : espeakPUNCT_NONE, 0);
  const unsigned flags = espeakCHARS_UTF8 | (piece.last && !piece.character ? espeakENDPAUSE : 0U);
  espeak_Synth(piece.text.c_str(), piece.text.size() + 1, 0, POS_CHARACTER, 0, flags, nullptr,
               const_cast<Sink*>(&sink));
}

}  // namespace corvid
