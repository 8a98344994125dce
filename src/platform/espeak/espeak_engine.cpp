// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/espeak/espeak_engine.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>

#include "core/spoken_text.h"
#include "core/utf8.h"

namespace corvid {

namespace {

constexpr std::size_t PieceBytes = 250;                     // about 8 ms of synthesis
constexpr std::size_t EnoughSamples = VoiceSampleRate / 3;  // waiting in a stream before its next piece is made
constexpr int Inaudible = 16;                               // amplitude, of 32767
constexpr std::chrono::milliseconds LookInterval{4};        // while something is heard

// Slot of a voice; 0, a slot of no voice, for a number out of range.
std::size_t Slot(int16 voice) {
  return voice >= 1 && static_cast<std::size_t>(voice) <= EngineVoices ? static_cast<std::size_t>(voice) : 0;
}

}  // namespace

EspeakEngine::~EspeakEngine() {
  if (!worker_.joinable()) return;
  {
    const std::lock_guard lock(mutex_);
    ending_ = true;
  }
  changed_.notify_one();
  worker_.join();
}

bool EspeakEngine::Start() {
  if (worker_.joinable()) return true;
  problem_ = synthesizer_.Open();
  if (!problem_.empty()) return false;
  if (!audio_.Open()) {
    problem_ = audio_.Problem();
    return false;
  }
  for (std::size_t voice = 1; voice <= EngineVoices; ++voice) {
    if (streams_[voice] == nullptr) streams_[voice] = audio_.CreateStream();
    if (streams_[voice] == nullptr) {
      problem_ = "The sound device cannot play six voices.";
      return false;
    }
  }
  worker_ = std::thread([this] { Work(); });
  return true;
}

std::vector<std::string> EspeakEngine::Voices() {
  std::vector<std::string> names;
  names.reserve(synthesizer_.Voices().size());
  for (const Synthesizer::Voice& voice : synthesizer_.Voices()) names.push_back(voice.name);
  return names;
}

void EspeakEngine::Speak(int16 voice, const std::string& text) {
  const std::size_t slot = Slot(voice);
  if (slot == 0 || !worker_.joinable() || text.empty()) return;
  {
    const std::lock_guard lock(mutex_);
    queue_.Add(slot, {.sequence = ++lastSequence_, .settings = settings_[slot], .text = text});
    Settle();  // what it interrupts falls silent now, not when the worker has time
  }
  changed_.notify_one();
}

void EspeakEngine::Purge(int16 voice) {
  const std::size_t slot = Slot(voice);
  if (slot == 0 || !worker_.joinable()) return;
  {
    const std::lock_guard lock(mutex_);
    queue_.Clear(slot);
    streams_[slot]->Purge();
    Settle();
  }
  changed_.notify_one();
}

void EspeakEngine::SetVoice(int16 voice, int16 number) {
  if (number >= 0 && static_cast<std::size_t>(number) < synthesizer_.Voices().size()) {
    settings_[Slot(voice)].number = number;
  }
}

void EspeakEngine::SetRate(int16 voice, int16 rate) {
  settings_[Slot(voice)].rate = std::clamp<int16>(rate, -10, 21);
}

void EspeakEngine::SetVolume(int16 voice, int16 volume) {
  settings_[Slot(voice)].volume = std::clamp<int16>(volume, 0, 100);
}

void EspeakEngine::SetPriority(int16 voice, int16 priority) {
  settings_[Slot(voice)].priority = static_cast<SpeechPriority>(std::clamp<int16>(priority, 0, 2));
}

int16 EspeakEngine::Rate(int16 voice) const {
  return settings_[Slot(voice)].rate;
}

int16 EspeakEngine::Volume(int16 voice) const {
  return settings_[Slot(voice)].volume;
}

bool EspeakEngine::Idle() {
  const std::lock_guard lock(mutex_);
  for (std::size_t voice = 1; voice <= EngineVoices; ++voice) {
    if (queue_.First(voice) != nullptr) return false;
  }
  return true;
}

void EspeakEngine::Work() {
  std::unique_lock lock(mutex_);
  while (!ending_) {
    FinishSaid();
    Settle();
    const std::size_t voice = Hungry();
    if (voice != 0) {
      Utterance& utterance = *queue_.First(voice);
      const std::uint64_t sequence = utterance.sequence;
      const std::size_t from = utterance.position;
      utterance.position = SpokenPieceEnd(utterance.text, from, PieceBytes);
      const Synthesizer::Piece piece = TakePiece(utterance, from);
      lock.unlock();
      synthesizer_.Say(
          piece, [&](const int16* samples, std::size_t count) { return Deliver(voice, sequence, samples, count); });
      lock.lock();
      continue;
    }
    const auto sounding = queue_.Sounding();
    if (std::find(sounding.begin(), sounding.end(), true) != sounding.end()) {
      changed_.wait_for(lock, LookInterval);
    } else {
      changed_.wait(lock);
    }
  }
}

// Goes on to the next text of each voice whose first one has been heard to its end.
void EspeakEngine::FinishSaid() {
  for (std::size_t voice = 1; voice <= EngineVoices; ++voice) {
    const Utterance* first = queue_.First(voice);
    if (first == nullptr || !first->begun || first->position < first->text.size()) continue;
    if (streams_[voice]->Waiting() == 0) queue_.Finish(voice);
  }
}

// Lets those voices be heard whose turn it is, and makes the others stand still.
void EspeakEngine::Settle() {
  const auto sounding = queue_.Sounding();
  for (std::size_t voice = 1; voice <= EngineVoices; ++voice) {
    Utterance* first = queue_.First(voice);
    if (first == nullptr) continue;
    if (sounding[voice] && !first->begun) {
      streams_[voice]->SetVolume(first->settings.volume / 100.0);
      first->begun = true;
    }
    streams_[voice]->SetPaused(!sounding[voice]);
  }
}

// The sounding voice that needs samples most; 0 when all have enough.
std::size_t EspeakEngine::Hungry() {
  const auto sounding = queue_.Sounding();
  std::size_t hungriest = 0;
  std::size_t least = EnoughSamples;
  for (std::size_t voice = 1; voice <= EngineVoices; ++voice) {
    const Utterance* first = queue_.First(voice);
    if (!sounding[voice] || first->position >= first->text.size()) continue;
    const std::size_t waiting = streams_[voice]->Waiting();
    if (waiting >= least) continue;
    hungriest = voice;
    least = waiting;
  }
  return hungriest;
}

Synthesizer::Piece EspeakEngine::TakePiece(const Utterance& utterance, std::size_t from) {
  const std::string_view text = utterance.text;
  return {.text = SpokenText(text.substr(from, utterance.position - from)),
          .voice = static_cast<std::size_t>(utterance.settings.number),
          .rate = utterance.settings.rate,
          .character = CharLength(text, 0) == text.size(),
          .last = utterance.position == text.size()};
}

// Called by the worker while it makes sound, without the lock. False when the text was purged meanwhile.
bool EspeakEngine::Deliver(std::size_t voice, std::uint64_t sequence, const int16* samples, std::size_t count) {
  const std::lock_guard lock(mutex_);
  Utterance* first = queue_.First(voice);
  if (ending_ || first == nullptr || first->sequence != sequence) return false;
  if (!first->audible) {
    // The library begins with 10 ms of silence, which a player who waits for an answer to a key can do without.
    const int16* sound = std::find_if(samples, samples + count, [](int16 code) { return std::abs(code) > Inaudible; });
    count -= static_cast<std::size_t>(sound - samples);
    samples = sound;
    if (count == 0) return true;
    first->audible = true;
  }
  streams_[voice]->Queue(samples, count);
  return true;
}

}  // namespace corvid
