// SPDX-License-Identifier: GPL-3.0-or-later
// What triggers cost: a line against a table of them, a long line against many stars, definitions by the thousand.
#include <vector>

#include "program.h"

namespace {

struct Program : corvid::bench::Program {
  void Fire(const std::string& text) {
    versions.PlainLine = versions.TaggedLine = versions.SpokenLine = text;
    benchmark::DoNotOptimize(corvid->triggers.Fire(0, versions));
  }
  corvid::LineVersions versions;
};

// The forms that players write, all with a wildcard in front, and none like the next.
std::string Pattern(int64_t number) {
  const std::string n = std::to_string(number);
  switch (number % 5) {
    case 0:
      return "*Adventurer" + n + " tells you*";
    case 1:
      return "* the guard of gate " + n + " arrives from the *.";
    case 2:
      return "*You receive # gold coins for quest " + n + "*";
    case 3:
      return "* picks up a potion marked " + n + ".";
    default:
      return "*the dragon of hill " + n + " breathes &what at you*";
  }
}

std::string Matching(int64_t number) {
  const std::string n = std::to_string(number);
  switch (number % 5) {
    case 0:
      return "Adventurer" + n + " tells you 'come here'";
    case 1:
      return "Bob, the guard of gate " + n + " arrives from the north.";
    case 2:
      return "You receive 5 gold coins for quest " + n + "!";
    case 3:
      return "Alice picks up a potion marked " + n + ".";
    default:
      return "Roaring, the dragon of hill " + n + " breathes fire at you!";
  }
}

// A hundred lines, three of which match one trigger each if there are any.
std::vector<std::string> GameLines(int64_t triggers) {
  const std::vector<std::string> usual{
      "The raven circles the tower once again and settles.",
      "You hit the huge orc with a mighty blow.",
      "A huge orc misses you.",
      "Obvious exits: north, south, up.",
      "Adventurer tells you nothing of the guard of the gate today.",
      "You see a potion, a scroll and 12 gold coins here.",
      "<100hp 80gold> ",
      "The dragon sleeps on the hill and does not breathe.",
  };
  std::vector<std::string> lines;
  for (std::size_t i = 0; i < 100; ++i) lines.push_back(usual[i % usual.size()]);
  if (triggers > 0) {
    for (const std::size_t place : {std::size_t{7}, std::size_t{40}, std::size_t{73}})
      lines[place] = Matching(static_cast<int64_t>(place * 13) % triggers);
  }
  return lines;
}

// items_per_second are lines.
void FireGameLines(benchmark::State& state, Program& program) {
  const std::vector<std::string> lines = GameLines(state.range(0));
  for (auto _ : state)
    for (const std::string& text : lines) program.Fire(text);
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(lines.size()));
}

void LinesAgainstTriggers(benchmark::State& state) {
  Program program;
  for (int64_t i = 0; i < state.range(0); ++i) program.Run("#GTRIGGER {" + Pattern(i) + "} {#VAR seen %1}");
  FireGameLines(state, program);
}
BENCHMARK(LinesAgainstTriggers)->Arg(0)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

// The same with classes, half of them off, and with the case left open.
void LinesAgainstTriggersInClasses(benchmark::State& state) {
  Program program;
  for (int64_t i = 0; i < state.range(0); ++i)
    program.Run("#GTRIGGER {" + Pattern(i) + "} {#VAR seen %1} {class" + std::to_string(i % 20) + "|all} AnyCase");
  for (int i = 0; i < 10; ++i) program.Run("#GCLASS class" + std::to_string(i) + " ENABLE");
  program.Run("#GCLASS all ENABLE");
  FireGameLines(state, program);
}
BENCHMARK(LinesAgainstTriggersInClasses)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

// A trigger that replaces another at each line, among so many that stay. items_per_second are lines.
void TableChangedAtEachLine(benchmark::State& state) {
  Program program;
  for (int64_t i = 0; i < state.range(0); ++i) program.Run("#GTRIGGER {" + Pattern(i) + "} {#VAR seen %1}");
  program.Run("#GTRIGGER {tick*} {#GTRIGGER {*once only*} {look};#GUNTRIGGER {*once only*}}");
  for (auto _ : state) program.Fire("tick of the clock");
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(TableChangedAtEachLine)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

// Four thousand characters against thirty stars, which match or fail at the very end.
void ThirtyStars(benchmark::State& state) {
  Program program;
  std::string pattern;
  for (int i = 0; i < 30; ++i) pattern += "*ab?";
  program.Run("#GTRIGGER {" + pattern + "*~[!x~]x} {never}");
  std::string text;
  while (text.size() < 4000) text += "abaabbab";
  text += "xx";
  for (auto _ : state) program.Fire(text);
}
BENCHMARK(ThirtyStars)->Unit(benchmark::kMicrosecond);

void DefineFromAFile(benchmark::State& state, const std::string& body, int64_t keys) {
  std::string file;
  for (int64_t i = 0; i < state.range(0); ++i) {
    file += "#GTRIGGER {" + Pattern(i % keys) + "} {" + body + "}\r\n";
  }
  corvid::bench::OnFreshPrograms<Program>(state, [&](Program& program) {
    program.RunFile(file);
    program.Fire("the first line");
  });
}
// items_per_second are definitions; the first line behind them is in the time.
BENCHMARK_CAPTURE(DefineFromAFile, plain, std::string("say %1"), int64_t{1000000})
    ->Arg(5000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(DefineFromAFile, substituting, std::string("#SUB {%1}"), int64_t{1000000})
    ->Arg(5000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(DefineFromAFile, again_and_again, std::string("say %1"), int64_t{500})
    ->Arg(5000)
    ->Unit(benchmark::kMillisecond);

// Every other one replaces its line, so that each finds its place in the middle of the table.
void TypedDefinitions(benchmark::State& state) {
  std::vector<std::string> lines;
  for (int64_t i = 0; i < state.range(0); ++i)
    lines.push_back("#GTRIGGER {" + Pattern(i) + "} {" + (i % 2 == 0 ? "#SUB x}" : "look}"));
  corvid::bench::OnFreshPrograms<Program>(state, [&](Program& program) {
    for (const std::string& line : lines) program.Run(line, corvid::option::Interactive);
  });
}
BENCHMARK(TypedDefinitions)->Arg(5000)->Unit(benchmark::kMillisecond);

// A function-heavy expression. items_per_second are evaluations.
void ManyFunctions(benchmark::State& state) {
  Program program;
  program.Run("#GVAR words {alpha|beta|gamma|delta}");
  const std::string line =
      "#VAR n {%LEFT(%REPLACE(@words,a,xx),5) %WORD(@words,|,2) %NUMWORDS(@words,|) %POS(g,@words) %EVAL(3*4+1)}";
  for (auto _ : state) program.Run(line);
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(ManyFunctions);

}  // namespace
