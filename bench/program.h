// SPDX-License-Identifier: GPL-3.0-or-later
// The whole program on the in-memory platform, without faces and voices, for what is measured of its scripts.
#pragma once

#include <benchmark/benchmark.h>

#include <memory>
#include <string>

#include "app/corvid.h"
#include "platform/memory/memory_platform.h"

namespace corvid::bench {

struct Program {
  Program() : corvid(std::make_unique<Corvid>(memory.All())) {
    corvid->symbols.LoadSystemVariables();
    corvid->buffers.ResizeBuffers(3);
    corvid->sessions.ResizeConnections(0);
    memory.face.RecordDisplay = false;
    memory.sockets.SetEvents(nullptr);
  }
  void Run(const std::string& line, int16 options = 0) {
    std::string problem;
    int16 channel = 0;
    Parameters none;
    corvid->scriptState.CommandDepth = 0;
    corvid->dispatcher.ProcessCommand(line, options, problem, none, channel);
  }
  void RunFile(const std::string& text) {
    int16 channel = 0;
    benchmark::DoNotOptimize(corvid->scanner.ExecuteBuffer(text, 2, channel));
  }
  MemoryPlatform memory;
  std::unique_ptr<Corvid> corvid;
};

// Measures work(program), each time on a program that knows nothing yet; its making and end are not in the time.
template <typename Kind, typename Work>
void OnFreshPrograms(benchmark::State& state, Work work) {
  for (auto _ : state) {
    state.PauseTiming();
    auto program = std::make_unique<Kind>();
    state.ResumeTiming();
    work(*program);
    state.PauseTiming();
    program.reset();
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

}  // namespace corvid::bench
