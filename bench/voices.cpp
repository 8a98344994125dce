// SPDX-License-Identifier: GPL-3.0-or-later
// From the call to the sound: how long a player waits for a voice or a sound, and for its silence. The samples are
// rendered by a thread that asks for a period every 5.8 ms, as a sound card does; the time ends when the period is
// mixed.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "platform/espeak/espeak_engine.h"
#include "platform/openal/mixer.h"

namespace {

using Clock = std::chrono::steady_clock;
using corvid::EspeakEngine;
using corvid::OpenAlMixer;

constexpr int CardRate = 44100;
constexpr std::size_t Period = 256;

class Card {
 public:
  explicit Card(OpenAlMixer& mixer) : mixer_(mixer), thread_([this] { Play(); }) {}
  ~Card() {
    ending_ = true;
    thread_.join();
  }
  Card(const Card&) = delete;
  Card& operator=(const Card&) = delete;

  // Seconds from since until a period has sound, or has none.
  double Wait(bool sound, Clock::time_point since) {
    when_ = 0;
    wanted_ = sound ? 1 : 2;
    while (when_ == 0) std::this_thread::sleep_for(std::chrono::microseconds(50));
    return std::chrono::duration<double>(Clock::duration(when_) - since.time_since_epoch()).count();
  }

 private:
  void Play() {
    auto next = Clock::now();
    while (!ending_) {
      float peak = 0;
      for (const float sample : mixer_.Render(Period)) peak = std::max(peak, std::abs(sample));
      if ((wanted_ == 1 && peak > 0.0005F) || (wanted_ == 2 && peak == 0)) {
        wanted_ = 0;
        when_ = Clock::now().time_since_epoch().count();
      }
      next += std::chrono::microseconds(1'000'000 * Period / CardRate);
      std::this_thread::sleep_until(next);
    }
  }
  OpenAlMixer& mixer_;
  std::atomic<bool> ending_ = false;
  std::atomic<int> wanted_ = 0;  // 1 sound, 2 silence
  std::atomic<Clock::rep> when_ = 0;
  std::thread thread_;
};

void Report(benchmark::State& state, std::vector<double>& seconds) {
  std::sort(seconds.begin(), seconds.end());
  state.counters["p50_ms"] = 1000 * seconds[seconds.size() / 2];
  state.counters["p99_ms"] = 1000 * seconds[seconds.size() * 99 / 100];
  state.counters["max_ms"] = 1000 * seconds.back();
}

// lines queued, then heard, then purged.
void Voice(benchmark::State& state, bool timePurge) {
  OpenAlMixer mixer(corvid::MixerSettings{.loopback = true, .loopbackRate = CardRate, .loopbackChannels = 2});
  EspeakEngine engine(mixer);
  if (!engine.Start()) {
    state.SkipWithError(engine.Problem().c_str());
    return;
  }
  Card card(mixer);
  std::vector<double> taken;
  for (auto _ : state) {
    auto start = Clock::now();
    for (int64_t line = 0; line < state.range(0); ++line) engine.Speak(1, "The orc hits you with a mighty blow.");
    const double first = card.Wait(true, start);
    std::this_thread::sleep_for(std::chrono::microseconds(100 * (taken.size() % 70)));
    start = Clock::now();
    engine.Purge(1);
    const double silent = card.Wait(false, start);
    taken.push_back(timePurge ? silent : first);
    state.SetIterationTime(taken.back());
  }
  Report(state, taken);
}

void CallToFirstSample(benchmark::State& state) {
  Voice(state, false);
}
void PurgeToSilence(benchmark::State& state) {
  Voice(state, true);
}

// A second of a loud tone as a WAV file.
std::string WriteTone() {
  const auto number = [](std::uint32_t value, int bytes) {
    std::string text;
    for (int i = 0; i < bytes; ++i) text += static_cast<char>(value >> (8 * i) & 0xFF);
    return text;
  };
  constexpr std::uint32_t Bytes = 2 * CardRate;
  std::string file = "RIFF" + number(Bytes + 36, 4) + "WAVEfmt " + number(16, 4) + number(1, 2) + number(1, 2) +
                     number(CardRate, 4) + number(2 * CardRate, 4) + number(2, 2) + number(16, 2) + "data" +
                     number(Bytes, 4);
  for (std::uint32_t i = 0; i < Bytes / 2; ++i) file += number(i / 50 % 2 == 0 ? 10'000 : 55'000, 2);
  const std::string path = (std::filesystem::temp_directory_path() / "corvid-bench-tone.wav").string();
  std::ofstream(path, std::ios::binary) << file;
  return path;
}

// A sound that is loaded already, one that has to be loaded first, and one that is decoded while it plays.
enum class Source { Loaded, File, Streamed };

void Sound(benchmark::State& state, Source source) {
  OpenAlMixer mixer(corvid::MixerSettings{.loopback = true, .loopbackRate = CardRate, .loopbackChannels = 2});
  if (!mixer.OpenSounds()) {
    state.SkipWithError(mixer.Problem().c_str());
    return;
  }
  const std::string path = WriteTone();
  std::string error;
  const auto loaded = mixer.Load(path, error);
  const auto resident = mixer.CreatePlayer(loaded, false, {});
  Card card(mixer);
  std::vector<double> taken;
  for (auto _ : state) {
    std::this_thread::sleep_for(std::chrono::microseconds(100 * (taken.size() % 70)));
    const auto start = Clock::now();
    std::unique_ptr<corvid::SoundPlayer> fresh;
    if (source == Source::File) fresh = mixer.CreatePlayer(mixer.Load(path, error), false, {});
    if (source == Source::Streamed) fresh = mixer.CreateStreamed(path, false, {}, error);
    corvid::SoundPlayer& player = fresh != nullptr ? *fresh : *resident;
    player.SetPosition(0);
    player.Play(false);
    taken.push_back(card.Wait(true, start));
    state.SetIterationTime(taken.back());
    player.Stop();
    card.Wait(false, Clock::now());
  }
  std::filesystem::remove(path);
  Report(state, taken);
}

void SoundCallToFirstSample(benchmark::State& state) {
  Sound(state, Source::Loaded);
}
void SoundFileToFirstSample(benchmark::State& state) {
  Sound(state, Source::File);
}
void MusicFileToFirstSample(benchmark::State& state) {
  Sound(state, Source::Streamed);
}

BENCHMARK(SoundCallToFirstSample)->UseManualTime()->Iterations(300)->Unit(benchmark::kMillisecond);
BENCHMARK(SoundFileToFirstSample)->UseManualTime()->Iterations(300)->Unit(benchmark::kMillisecond);
BENCHMARK(MusicFileToFirstSample)->UseManualTime()->Iterations(300)->Unit(benchmark::kMillisecond);
BENCHMARK(CallToFirstSample)->Arg(1)->UseManualTime()->Iterations(300)->Unit(benchmark::kMillisecond);
BENCHMARK(PurgeToSilence)->Arg(1)->Arg(1000)->UseManualTime()->Iterations(300)->Unit(benchmark::kMillisecond);

}  // namespace
