// SPDX-License-Identifier: GPL-3.0-or-later
// A line's way from the socket's bytes to viewport, log and speech call, without the faces and voices behind them.
// items_per_second are lines.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "files/buffers.h"
#include "platform/memory/memory_platform.h"
#include "script/scanner.h"
#include "script/symbols.h"
#include "sessions/line_maker.h"
#include "sessions/receive.h"
#include "sessions/sound_lines.h"
#include "sessions/telnet.h"
#include "sound/sound.h"
#include "support_upcalls.h"

namespace {

using corvid::int16;

class NoSpeech : public corvid::Speaker {
 public:
  void SpeakOut(const std::string& text, int16, int16) override { benchmark::DoNotOptimize(text.data()); }
  void Speak(const std::string&, int16, int16) override {}
  void StopSpeech() override {}
  void StopSpeaking(int16) override {}
  void StopSpeakingAll() override {}
};

class NoErrors : public corvid::ErrorSink {
 public:
  void ErrorReport(const std::string&, const std::string&, int, int16) override {}
  void DisplayErrorFile(const std::string&, int16) override {}
  void ShowError(const std::string&) override {}
  void writeError(const std::string&) override {}
  void ErrorDisplay(const std::string&) override {}
  void UnknownError(const std::string&, const std::string&, const std::vector<std::string>&) override {}
};

class NoCommands : public corvid::CommandRunner {
 public:
  void ProcessCommand(const std::string&, int16&, std::string&, corvid::Parameters&, int16&) override {}
  void SortTriggers() override {}
};

// The rest of the higher floors, which this road never asks.
class NoScreens : public corvid::Screens {
 public:
  void MaintainCharacters() override {}
  int16 SelectScreenReader() override { return 0; }
  void quit(bool) override {}
  void InitializeConfigs() override {}
  void SimulateEnter() override {}
  void ShowWindowAt(int16, corvid::int32) override {}
};

class NoJobs : public corvid::TimerJobs {
 public:
  void StartTimer1(int16, int) override {}
};

class Sink : public corvid::AppendFile {
 public:
  void Write(std::string_view bytes) override { benchmark::DoNotOptimize(bytes.data()); }
  void Flush() override {}
};

class SinkFiles : public corvid::MemoryFiles {
 public:
  std::unique_ptr<corvid::AppendFile> OpenAppend(const std::string&, corvid::Privacy) override {
    return std::make_unique<Sink>();
  }
};

// A server that has the whole flood ready.
class FloodSockets : public corvid::MemorySockets {
 public:
  FloodSockets(corvid::MemoryLoop& loop, corvid::EffectLog& effects, std::string flood)
      : MemorySockets(loop, effects), flood_(std::move(flood)) {}
  int Read(int16, char* buffer, int length) override {
    const std::size_t count = std::min(flood_.size() - place_, static_cast<std::size_t>(length));
    if (count == 0) return -1;
    std::memcpy(buffer, flood_.data() + place_, count);
    place_ += count;
    return static_cast<int>(count);
  }
  bool Waiting() const { return place_ < flood_.size(); }
  void Again() { place_ = 0; }

 private:
  std::string flood_;
  std::size_t place_ = 0;
};

constexpr int Lines = 20000;

// Lines of about 47 characters in colours, with a prompt after every tenth.
std::string Flood() {
  std::string text;
  for (int i = 0; i < Lines; ++i) {
    text += "\x1b[1;3" + std::to_string(i % 8) + "mA huge orc swings his axe at you, and misses" + "\x1b[0m.\r\n";
    if (i % 10 == 0) text += "<100hp 80m 120mv> ";
  }
  return text;
}

struct Client {
  Client() {
    symbols.LoadSystemVariables();
    memory.face.RecordDisplay = false;
    script.SocketOwner.Resize(0);
    state.PartialLine.Resize(0);
    options.LogsFolder = "/logs/";
  }
  corvid::MemoryPlatform memory;
  SinkFiles files;
  FloodSockets sockets{memory.loop, memory.effects, Flood()};
  corvid::Platform platform{memory.clock,    memory.loop,   memory.loop,   sockets,     files,        memory.places,
                            memory.settings, memory.speech, memory.speech, memory.face, memory.sounds};
  corvid::ScriptState script;
  corvid::OptionsState options;
  corvid::SessionState state;
  NoCommands commands;
  NoSpeech speech;
  NoErrors errors;
  corvid::SilentPrompter prompter;
  NoScreens screens;
  NoJobs jobs;
  corvid::Symbols symbols{script, commands};
  corvid::OutputWindows output{script, options, state, platform};
  corvid::Logs logs{options, state, platform};
  corvid::NoLineTriggers triggers;
};

void Pipeline(benchmark::State& bench, bool log, bool colours, bool rich) {
  Client client;
  corvid::Upcalls upcalls{client.commands, client.errors, client.speech, client.prompter, client.screens, client.jobs};
  corvid::Sound sound{client.options, client.platform, upcalls};
  corvid::SoundLines soundLines{client.options, sound, client.platform};
  corvid::Receive receive{client.script,   client.options, client.state,    client.output, client.logs,
                          client.triggers, soundLines,     client.platform, upcalls};
  client.options.ColourTextTags = colours;
  client.options.ColourDisplay = rich;
  client.output.CreateViewports(0);
  client.state.TriggerEnabled[0] = 1;
  client.output.SelectOutputWindow(rich);
  client.options.OutputLog = log;
  client.logs.OpenLog(0);
  for ([[maybe_unused]] auto iteration : bench) {
    client.sockets.Again();
    while (client.sockets.Waiting()) receive.sockTelnet_OnRead(0);
  }
  bench.SetItemsProcessed(bench.iterations() * Lines);
}

BENCHMARK_CAPTURE(Pipeline, log_off, false, false, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Pipeline, log_on, true, false, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Pipeline, colour_tags, false, true, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Pipeline, colour_window, false, false, true)->Unit(benchmark::kMillisecond);

void Decode(benchmark::State& bench) {
  class Nothing : public corvid::TelnetEffects {
   public:
    bool Answer(std::string_view) override { return true; }
    void MspOffered() override {}
    void Bell() override {}
  } nothing;
  const std::string flood = Flood();
  corvid::DecodedBlock block;
  for ([[maybe_unused]] auto iteration : bench) {
    for (std::size_t place = 0; place < flood.size(); place += 4096)
      corvid::DecodeTelnet(std::string_view(flood).substr(place, 4096), block, nothing);
  }
  bench.SetItemsProcessed(bench.iterations() * Lines);
}
BENCHMARK(Decode)->Unit(benchmark::kMillisecond);

void MakeLine(benchmark::State& bench, int16 art, bool quiet) {
  Client client;
  client.options.RemoveAsciiArt = art;
  if (quiet) client.options.QuietChars = {'*', '#'};
  const corvid::LineMaker maker{client.script, client.options};
  corvid::LineVersions line;
  std::vector<std::string> faults;
  for ([[maybe_unused]] auto iteration : bench) {
    maker.Make("\x1b[1;31mA huge orc swings his axe at you, and misses\x1b[0m.", line, faults);
    benchmark::DoNotOptimize(line.SpokenLine.data());
  }
  bench.SetItemsProcessed(bench.iterations());
}
BENCHMARK_CAPTURE(MakeLine, usual, int16{1}, false);
BENCHMARK_CAPTURE(MakeLine, art_2, int16{2}, false);
BENCHMARK_CAPTURE(MakeLine, quiet, int16{1}, true);

}  // namespace
