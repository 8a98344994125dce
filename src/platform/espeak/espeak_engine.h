// SPDX-License-Identifier: GPL-3.0-or-later
// The six voices of espeak-ng. Texts become sound on a thread of their own and are heard through the program's sound
// output; no call waits for either.
#pragma once

#include <array>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "platform/audio.h"
#include "platform/espeak/speech_queue.h"
#include "platform/espeak/synthesizer.h"
#include "platform/speech.h"

namespace corvid {

// A text keeps the voice, rate, volume and priority that its voice had when Speak was called. At most one engine at a
// time: the library behind it exists once.
class EspeakEngine : public SpeechEngine {
 public:
  explicit EspeakEngine(AudioOutput& audio) : audio_(audio) {}  // must outlive the engine
  ~EspeakEngine() override;
  EspeakEngine(const EspeakEngine&) = delete;
  EspeakEngine& operator=(const EspeakEngine&) = delete;

  bool Start() override;  // opens the sound output too; may be tried again after a failure
  std::string Problem() const override { return problem_; }
  std::vector<std::string> Voices() override;
  void Speak(int16 voice, const std::string& text) override;
  void Purge(int16 voice) override;
  void SetVoice(int16 voice, int16 number) override;
  void SetRate(int16 voice, int16 rate) override;
  void SetVolume(int16 voice, int16 volume) override;
  void SetPriority(int16 voice, int16 priority) override;
  int16 Rate(int16 voice) const override;
  int16 Volume(int16 voice) const override;
  bool Idle();  // all that was to be said has been heard or purged

 private:
  void Work();
  void FinishSaid();
  void Settle();
  std::size_t Hungry();
  static Synthesizer::Piece TakePiece(const Utterance& utterance, std::size_t from);
  bool Deliver(std::size_t voice, std::uint64_t sequence, const int16* samples, std::size_t count);

  AudioOutput& audio_;
  std::string problem_;
  Synthesizer synthesizer_;  // the worker's alone once it runs; its list of voices is never changed then
  std::array<VoiceSettings, EngineVoices + 1> settings_{};
  std::array<std::unique_ptr<PcmStream>, EngineVoices + 1> streams_;

  std::mutex mutex_;  // guards what follows, and the order of queue and streams
  std::condition_variable changed_;
  SpeechQueue queue_;
  std::uint64_t lastSequence_ = 0;
  bool ending_ = false;
  std::thread worker_;
};

}  // namespace corvid
