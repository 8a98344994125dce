// SPDX-License-Identifier: GPL-3.0-or-later
// Any text as a script file: checked; run, if it does not ask for endless rounds; and what it has defined saved and
// loaded again, which gives the same definitions.
#include "house.h"

namespace {

using corvid::fuzz::House;

std::string Definitions(House& house) {
  std::string text;
  using namespace corvid::save;
  house.corvid.saving.Save(Aliases | Triggers | Keys | TabWords | Classes | Directions, 0, text);
  return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using corvid::fuzz::Require;
  if (size > 4096) return 0;
  const std::string text(corvid::fuzz::Text(data, size));
  House house({{"a.set", text}});
  Require(house.started, "the program starts");
  corvid::int16 channel = 0;
  const std::string before = Definitions(house);
  house.corvid.buffers.LoadSet("a.set", corvid::load::NoExecution, channel);
  Require(Definitions(house) == before, "a check defines nothing");
  house.Calm();
  if (!corvid::fuzz::AsksForFewRounds(text)) return 0;
  channel = 0;
  house.corvid.buffers.LoadSet("a.set", 0, channel);
  Require(house.memory.files.ReadWhole("/data/a.set") == text, "the file is as it was");
  return 0;
}
