// SPDX-License-Identifier: GPL-3.0-or-later
// What a line from the game sets off: every trigger whose classes are on and whose pattern matches runs its command,
// newest first, those that replace the line last.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "core/parameters.h"
#include "core/upcalls.h"
#include "script/options_state.h"
#include "script/script_state.h"
#include "sessions/line_triggers.h"
#include "sessions/trigger_index.h"

namespace corvid {

class Expansion;
class Symbols;
struct DebugState;

class TriggerEngine final : public LineTriggers {
 public:
  TriggerEngine(ScriptState& script, OptionsState& options, DebugState& debug, Symbols& symbols, Expansion& expansion,
                Upcalls& upcalls);
  ~TriggerEngine() override;

  bool Any() const override { return script_.TriggerCount > 0; }
  // The table is walked by row number, whatever the commands of a trigger do to it: one that removes rows below its own
  // moves the rest down, and a row that is then behind the end is a Fault of kind Index. A fault in a single test is
  // reported and the next trigger goes on. May pump events, and may be entered again meanwhile.
  LineFate Fire(int16 Index, LineVersions& line) override;

 private:
  struct Run;
  class Lease;
  enum class Walk { GoesOn, LineIsReplaced, LineIsFinished };

  void Collect(Run& run, int32 below);
  bool IsCurrent(const Run& run) const;
  Walk Test(Run& run, const TriggerCandidate& candidate);
  bool Matches(Run& run, const TriggerCandidate& candidate);
  bool MatchesExpanded(Run& run, int32 row);
  bool ExpandPattern(Run& run, int32 row, std::string& pattern);
  void TakeParameters(Run& run, const TriggerRecord& trigger, Parameters& params);
  Walk Carry(Run& run, int32 row);

  ScriptState& script_;
  OptionsState& options_;
  DebugState& debug_;
  Symbols& symbols_;
  Expansion& expansion_;
  Upcalls& upcalls_;
  TriggerIndex index_;
  std::vector<std::unique_ptr<Run>> runs_;  // behind those in use; their memory serves the next calls
};

}  // namespace corvid
