// SPDX-License-Identifier: GPL-3.0-or-later
// Any text as "corvid.set": the program starts, and the options that came of it are saved and read back the same.
#include "house.h"

namespace {

std::string Options(corvid::fuzz::House& house) {
  std::string text;
  house.corvid.saving.SaveOptions(text);
  return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using corvid::fuzz::Require;
  if (size > 4096) return 0;
  const std::string text(corvid::fuzz::Text(data, size));
  if (!corvid::fuzz::AsksForFewRounds(text)) return 0;
  corvid::fuzz::House house({{"corvid.set", text}});
  Require(house.started, "the program starts");
  if (house.memory.loop.Ending()) return 0;
  const std::string options = Options(house);
  Require(house.corvid.optionsState.UserDataFolder == "/data/", "the file does not move the folder");
  corvid::fuzz::House again({{"corvid.set", options}});
  Require(again.started, "and starts again");
  const std::string second = Options(again);
  if (second != options) std::cerr << options << "\nread again:\n" << second << '\n';
  Require(second == options, "what was saved is read back");
  return 0;
}
