// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/espeak/speech_queue.h"

#include <utility>

namespace corvid {

bool SpeechQueue::Add(std::size_t voice, Utterance utterance) {
  if (texts_[voice].size() >= LongestQueue) return false;
  if (utterance.settings.priority == SpeechPriority::Queued) queued_.insert(utterance.sequence);
  texts_[voice].push_back(std::move(utterance));
  return true;
}

void SpeechQueue::Forget(const Utterance& utterance) {
  if (utterance.settings.priority == SpeechPriority::Queued) queued_.erase(utterance.sequence);
}

void SpeechQueue::Clear(std::size_t voice) {
  for (const Utterance& utterance : texts_[voice]) Forget(utterance);
  texts_[voice].clear();
  if (aheadVoice_ == voice) aheadVoice_ = 0;
}

void SpeechQueue::Finish(std::size_t voice) {
  Forget(texts_[voice].front());
  texts_[voice].pop_front();
  if (aheadVoice_ == voice) aheadVoice_ = 0;
}

Utterance* SpeechQueue::First(std::size_t voice) {
  return texts_[voice].empty() ? nullptr : &texts_[voice].front();
}

const Utterance* SpeechQueue::FirstOf(std::size_t voice, SpeechPriority priority) const {
  if (texts_[voice].empty() || texts_[voice].front().settings.priority != priority) return nullptr;
  return &texts_[voice].front();
}

std::array<bool, EngineVoices + 1> SpeechQueue::Sounding() {
  std::array<bool, EngineVoices + 1> sounding{};
  std::uint64_t oldestAhead = 0;
  std::size_t ahead = aheadVoice_;
  for (std::size_t voice = 1; voice <= EngineVoices; ++voice) {
    sounding[voice] = FirstOf(voice, SpeechPriority::Over) != nullptr;
    const Utterance* first = FirstOf(voice, SpeechPriority::Ahead);
    if (aheadVoice_ != 0 || first == nullptr) continue;
    if (ahead == 0 || first->sequence < oldestAhead) {
      ahead = voice;
      oldestAhead = first->sequence;
    }
  }
  aheadVoice_ = ahead;  // it keeps its turn, also against an older one that was held up by its own voice
  if (ahead != 0) {
    sounding[ahead] = true;
    return sounding;
  }
  for (std::size_t voice = 1; voice <= EngineVoices; ++voice) {
    const Utterance* first = FirstOf(voice, SpeechPriority::Queued);
    if (first != nullptr && first->sequence == *queued_.begin()) sounding[voice] = true;
  }
  return sounding;
}

}  // namespace corvid
