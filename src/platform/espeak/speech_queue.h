// SPDX-License-Identifier: GPL-3.0-or-later
// Who may speak: six voices, each saying its own texts in order, and three ways to meet the others. Pure bookkeeping,
// not thread-safe.
//
//   queued   one after another over all voices, in the order of Add
//   ahead    before all queued texts: a queued text that is being said stands still meanwhile and goes on afterwards;
//            several texts of this kind follow each other
//   over     at once, over whatever is heard
//
// A text that is not the first of its own voice waits for that voice in any case.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <set>
#include <string>

#include "core/types.h"

namespace corvid {

inline constexpr std::size_t EngineVoices = 6;  // numbered from 1

enum class SpeechPriority { Queued, Ahead, Over };

struct VoiceSettings {
  int16 number = 0;
  int16 rate = 0;
  int16 volume = 100;
  SpeechPriority priority = SpeechPriority::Queued;
};

struct Utterance {
  std::uint64_t sequence = 0;  // higher for what came later
  VoiceSettings settings;
  std::string text;
  std::size_t position = 0;  // what lies before it has become sound
  bool begun = false;        // its turn has come
  bool audible = false;      // the silence before its first sound is over
};

class SpeechQueue {
 public:
  // A player never hears the end of so much; a flood must not eat the memory.
  static constexpr std::size_t LongestQueue = 10'000;

  // False when the voice has LongestQueue texts waiting: the text is dropped. sequence must grow from call to call.
  bool Add(std::size_t voice, Utterance utterance);
  void Clear(std::size_t voice);
  void Finish(std::size_t voice);       // the first text of the voice has been said
  Utterance* First(std::size_t voice);  // nullptr when the voice has nothing to say; dead after the next change
  // Marks the voices whose first text may be heard now; index 0 is unused.
  std::array<bool, EngineVoices + 1> Sounding();

 private:
  const Utterance* FirstOf(std::size_t voice, SpeechPriority priority) const;
  void Forget(const Utterance& utterance);

  std::array<std::deque<Utterance>, EngineVoices + 1> texts_;
  std::set<std::uint64_t> queued_;  // the texts of SpeechPriority::Queued, of all voices
  std::size_t aheadVoice_ = 0;      // whose text of SpeechPriority::Ahead has begun; 0 none
};

}  // namespace corvid
