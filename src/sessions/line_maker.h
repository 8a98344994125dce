// SPDX-License-Identifier: GPL-3.0-or-later
// One line from the game as triggers, viewport and speech want it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "script/options_state.h"
#include "script/script_state.h"
#include "sessions/line_triggers.h"

namespace corvid {

class LineMaker {
 public:
  // A line full of colour numbers that do not exist must not keep the player waiting for its error reports: more than
  // this of one line are passed over.
  static constexpr std::size_t MostFaultsOfALine = 100;

  LineMaker(const ScriptState& script, const OptionsState& options) : script_(script), options_(options) {}

  // Fills all three versions. A colour number that is out of range is skipped and told in faults, one text for each.
  void Make(std::string_view line, LineVersions& versions, std::vector<std::string>& faults) const;

 private:
  class Run;

  const ScriptState& script_;
  const OptionsState& options_;
};

// Removes from SpokenLine what is drawn rather than written: when more than percent of a line of at least minLength
// codes are symbols. Blanks do not count.
bool IsArt(std::size_t spokenLength, int symbols, int spaces, int minLength, int percent);

}  // namespace corvid
