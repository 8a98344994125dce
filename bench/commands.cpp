// SPDX-License-Identifier: GPL-3.0-or-later
// What a script costs: a round of a loop, a call of an alias, a typed line on its way to the wire, definitions by the
// thousand.
#include "program.h"

namespace {

// One session, connected, with nothing recorded of what happens.
struct Program : corvid::bench::Program {
  Program() {
    corvid->sessionState.AliasEnabled[0] = 1;
    memory.sockets.Connect(0, "host", "4000", 1000);
    memory.loop.Pass(1);
  }
};

// items_per_second are rounds.
void WhileLoop(benchmark::State& state) {
  Program program;
  const std::string rounds = std::to_string(state.range(0));
  for (auto _ : state) program.Run("#VAR i 0;#WHILE {@i<" + rounds + "} {#MATH i {@i+1}}");
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(WhileLoop)->Arg(10000)->Arg(1000000)->Unit(benchmark::kMillisecond);

// items_per_second are calls.
void AliasWithAnArgument(benchmark::State& state) {
  Program program;
  program.Run("#ALIAS add {#VAR n %1}");
  for (auto _ : state) program.Run("add 5");
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(AliasWithAnArgument);

void RepeatedAliasWithAnArgument(benchmark::State& state) {
  Program program;
  program.Run("#ALIAS add {#VAR n %1}");
  for (auto _ : state) program.Run("#1000 {add %i}");
  state.SetItemsProcessed(state.iterations() * 1000);
}
BENCHMARK(RepeatedAliasWithAnArgument);

void TextForTheGame(benchmark::State& state) {
  Program program;
  program.corvid->optionsState.DisplayCommandsInOutput = false;
  int left = 10000;
  for (auto _ : state) {
    program.Run("say hello there");
    if (--left > 0) continue;
    state.PauseTiming();
    left = 10000;
    program.memory.effects.Clear();
    program.memory.sockets.TakeWritten(0);
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(TextForTheGame);

// items_per_second are statements.
void StatementsOfOneLine(benchmark::State& state) {
  Program program;
  std::string line;
  for (int i = 0; i < state.range(0); ++i) line += "#OK;";
  for (auto _ : state) program.Run(line);
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(StatementsOfOneLine)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);

// A list that grows to that many items and is emptied again; items_per_second are items.
void ListByItems(benchmark::State& state) {
  Program program;
  const std::string count = std::to_string(state.range(0));
  for (auto _ : state) program.Run("#VAR l {} {};#" + count + " {#ADDITEM l %i};#" + count + " {#VAR x %POP(l)}");
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(ListByItems)->Arg(100)->Arg(10000)->Unit(benchmark::kMillisecond);

// items_per_second are rounds over the items of one list.
void ForAllItems(benchmark::State& state) {
  Program program;
  std::string list = "0";
  for (int i = 1; i < state.range(0); ++i) list += "|" + std::to_string(i);
  program.Run("#VAR l {" + list + "}");
  for (auto _ : state) program.Run("#FORALL @l {#VAR x %i}");
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(ForAllItems)->Arg(1000)->Arg(1000000)->Unit(benchmark::kMillisecond);

void ConditionFullOfFunctions(benchmark::State& state) {
  Program program;
  program.Run("#VAR t {The large orc arrives from the north}");
  for (auto _ : state) {
    program.Run(
        "#IF {%LENGTH(%REPLACE(@t,orc,troll))>%WORD(1 20 3, ,2) AND %IFWORD(orc,@t)=1 AND "
        "%POS(north,@t)<>0} {#OK}");
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(ConditionFullOfFunctions);

// items_per_second are definitions.
void Definitions(benchmark::State& state) {
  std::string file;
  for (int i = 0; i < state.range(0); ++i)
    file += "#ALIAS alias" + std::to_string(i) + " {say " + std::to_string(i) + "}\r\n";
  corvid::bench::OnFreshPrograms<Program>(state, [&](Program& program) { program.RunFile(file); });
}
BENCHMARK(Definitions)->Arg(5000)->Unit(benchmark::kMillisecond);

}  // namespace
