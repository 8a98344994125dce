// SPDX-License-Identifier: GPL-3.0-or-later
#include "sessions/triggers.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "core/fault.h"
#include "core/pattern.h"
#include "core/text.h"
#include "script/expansion.h"
#include "script/symbols.h"
#include "tools/debug_state.h"

namespace corvid {

namespace {

bool LikeOrMalformed(std::string_view text, std::string_view pattern) {
  try {
    return Like(text, pattern);
  } catch (const Fault& fault) {
    if (fault.Kind != FaultKind::BadPattern) throw;
    return false;  // a malformed pattern matches nothing
  }
}

// The gaps of a line around the literal pieces of a search string.
class Gaps {
 public:
  // line and parts are both in upper case where case does not count; text is the line as it is.
  Gaps(std::string_view line, std::string_view text) : line_(line), text_(text) {}

  // The gap in front of part, if the part is found at all and not at the very beginning of the line.
  bool Next(std::string_view part, std::string& gap) {
    const std::size_t found = from_ <= line_.size() ? line_.find(part, from_) : std::string_view::npos;
    // Nothing is found in an empty line, not even an empty text.
    if (found == std::string_view::npos || line_.empty()) return false;
    gap = text_.substr(from_, found - from_);
    from_ = found + part.size();
    return found > 0;
  }
  bool Rest(std::string& gap) const {
    if (from_ >= text_.size()) return false;
    gap = text_.substr(from_);
    return true;
  }

 private:
  std::string_view line_;
  std::string_view text_;
  std::size_t from_ = 0;
};

// Closes the gaps that classes have left in a large table. Only where no action runs: the walk over the rows behind its
// own would be led astray. at is the number of rows that is worth the next look.
void CloseGaps(const ScriptState& script, Symbols& symbols, int32& at) {
  constexpr int32 worthIt = 1000;
  const int32 count = script.TriggerCount;
  if (count < std::max(at, worthIt)) return;
  int32 used = 0;
  for (int32 row = 1; row <= count; ++row)
    if (!script.Triggers.Read(row).Pattern.empty()) ++used;
  if (used <= count / 2) symbols.CompressCommand(windowtype::Triggers);
  at = 2 * script.TriggerCount;
}

}  // namespace

// One line on its way through the table.
struct TriggerEngine::Run {
  bool Busy = false;
  int32 CloseGapsAt = 0;
  int16 Index = 0;
  LineVersions* Line = nullptr;
  std::string Upper;  // the plain line in upper case
  std::vector<TriggerCandidate> Candidates;
  std::uint64_t Version = 0;  // of the table, as Candidates has it
  int16 Count = 0;
};

// Calls lie within one another, so that the runs in use are the first ones.
class TriggerEngine::Lease {
 public:
  explicit Lease(std::vector<std::unique_ptr<Run>>& runs) : runs_(runs) {
    while (place_ < runs_.size() && runs_[place_]->Busy) ++place_;
    if (place_ == runs_.size()) runs_.push_back(std::make_unique<Run>());
    runs_[place_]->Busy = true;
  }
  ~Lease() {
    constexpr std::size_t kept = 4;  // deep calls are rare: their memory is given back
    runs_[place_]->Busy = false;
    if (runs_.size() > kept) runs_.pop_back();
  }
  Lease(const Lease&) = delete;
  Lease& operator=(const Lease&) = delete;
  Run& operator*() { return *runs_[place_]; }
  bool Outermost() const { return place_ == 0; }

 private:
  std::vector<std::unique_ptr<Run>>& runs_;
  std::size_t place_ = 0;
};

TriggerEngine::TriggerEngine(ScriptState& script, OptionsState& options, DebugState& debug, Symbols& symbols,
                             Expansion& expansion, Upcalls& upcalls)
    : script_(script),
      options_(options),
      debug_(debug),
      symbols_(symbols),
      expansion_(expansion),
      upcalls_(upcalls),
      index_(script, symbols) {}

TriggerEngine::~TriggerEngine() = default;

LineFate TriggerEngine::Fire(int16 Index, LineVersions& line) {
  Lease lease(runs_);
  Run& run = *lease;
  if (lease.Outermost()) CloseGaps(script_, symbols_, run.CloseGapsAt);
  run.Index = Index;
  run.Line = &line;
  run.Upper = line.PlainLine;
  for (char& c : run.Upper) c = UpperChar(c);
  Collect(run, script_.TriggerCount + 1);
  for (std::size_t i = 0; i < run.Candidates.size();) {
    const TriggerCandidate candidate = run.Candidates[i];
    const Walk walk = Test(run, candidate);  // PUMP
    if (walk == Walk::LineIsFinished) return LineFate::IsFinished;
    if (walk == Walk::LineIsReplaced) return LineFate::GoesOn;
    if (IsCurrent(run)) {
      ++i;
      continue;
    }
    // Kept: the walk goes on by row number in the table as it is now.
    const int32 next = candidate.Row - 1;
    if (next > script_.TriggerCount)
      throw Fault(FaultKind::Index, "Trigger " + std::to_string(next) + " is gone: a trigger has removed others");
    Collect(run, candidate.Row);
    i = 0;
  }
  return LineFate::GoesOn;
}

void TriggerEngine::Collect(Run& run, int32 below) {
  index_.Collect(run.Upper, run.Line->TaggedLine, !options_.TriggerColourNeeded, below, run.Candidates);
  run.Version = script_.Triggers.Version();
  run.Count = script_.TriggerCount;
}

bool TriggerEngine::IsCurrent(const Run& run) const {
  return run.Version == script_.Triggers.Version() && run.Count == script_.TriggerCount;
}

TriggerEngine::Walk TriggerEngine::Test(Run& run, const TriggerCandidate& candidate) {
  try {
    if (!Matches(run, candidate)) return Walk::GoesOn;  // PUMP
    if (candidate.Row > script_.TriggerCount) return Walk::GoesOn;
    return Carry(run, candidate.Row);  // PUMP
  } catch (const std::exception& fault) {
    upcalls_.errors.UnknownError(fault.what(), "SockTelnet_OnRead", {std::to_string(run.Index)});
    return Walk::GoesOn;
  }
}

bool TriggerEngine::Matches(Run& run, const TriggerCandidate& candidate) {
  const TriggerRecord& trigger = script_.Triggers.Read(candidate.Row);
  const OwnerId owner = script_.SocketOwner[run.Index];
  if (trigger.Owner != 0 && trigger.Owner != owner) return false;
  if (!index_.InClass(candidate.Number, owner)) return false;
  if (index_.IsExpanded(candidate.Number)) return MatchesExpanded(run, candidate.Row);  // PUMP
  const PatternMatcher& matcher = index_.Matcher(candidate.Number);
  if ((trigger.Flags & triggerflag::Colour) != 0) {
    options_.TriggerColourNeeded = true;  // from the next line on there are tags to look at
    return matcher.Matches(run.Line->TaggedLine);
  }
  const bool anyCase = (trigger.Flags & triggerflag::AnyCase) != 0;
  return matcher.Matches(anyCase ? std::string_view(run.Upper) : std::string_view(run.Line->PlainLine));
}

bool TriggerEngine::MatchesExpanded(Run& run, int32 row) {
  std::string pattern;
  if (!ExpandPattern(run, row, pattern)) return false;  // PUMP: the trigger may be another one
  if (row > script_.TriggerCount) return false;
  const int16 flags = script_.Triggers.Read(row).Flags;
  if ((flags & triggerflag::Colour) != 0) {
    options_.TriggerColourNeeded = true;
    return LikeOrMalformed(run.Line->TaggedLine, "*" + pattern);
  }
  if ((flags & triggerflag::AnyCase) != 0) return LikeOrMalformed(run.Upper, Upper(pattern));
  return LikeOrMalformed(run.Line->PlainLine, pattern);
}

bool TriggerEngine::ExpandPattern(Run& run, int32 row, std::string& pattern) {
  const TriggerRecord& trigger = script_.Triggers.Read(row);
  const std::string written = trigger.Pattern;
  const std::string action = trigger.ActionText;
  const int16 definedIn = trigger.Buffer;
  std::string error;
  pattern = expansion_.ExplodeVariable(written, error, Parameters(), 0, script_.SocketOwner[run.Index]);  // PUMP
  if (error.empty()) return true;
  upcalls_.errors.ErrorReport(error + " - Trigger search string " + written, action, 0, 0);
  upcalls_.errors.DisplayErrorFile(error, definedIn);
  return false;
}

// Kept: the pieces are looked for from the left, each at its first place, which need not be where the pattern has
// matched them.
void TriggerEngine::TakeParameters(Run& run, const TriggerRecord& trigger, Parameters& params) {
  const bool anyCase = (trigger.Flags & triggerflag::AnyCase) != 0;
  const std::string& plain = run.Line->PlainLine;
  Gaps gaps(anyCase ? run.Upper : plain, plain);
  std::vector<std::pair<std::string, std::string>> named;
  std::string gap;
  int16 count = 0;
  int32 part = 1;
  const auto take = [&] {
    // Behind thirty pieces there is no name left for the rest.
    if (part <= TriggerTexts::Last && !trigger.Names[part].empty()) named.emplace_back(trigger.Names[part], gap);
    params.Set(++count, gap);
  };
  for (; part <= TriggerTexts::Last && !trigger.Parts[part].empty(); ++part)
    if (gaps.Next(anyCase ? Upper(trigger.Parts[part]) : trigger.Parts[part], gap)) take();
  if (gaps.Rest(gap)) take();
  const OwnerId owner = script_.SocketOwner[run.Index];
  const int16 definedIn = trigger.Buffer;
  for (const auto& [name, text] : named) {  // trigger is not looked at any more
    std::string error;
    symbols_.AddVariable(name, text, owner, error);
    if (error.empty()) continue;
    upcalls_.errors.ErrorReport(error, name, 0, 0);
    upcalls_.errors.DisplayErrorFile(error, definedIn);
  }
}

TriggerEngine::Walk TriggerEngine::Carry(Run& run, int32 row) {
  const TriggerRecord& trigger = script_.Triggers.Read(row);
  const std::string action = trigger.Action;
  const int16 definedIn = trigger.Buffer;
  const bool stops = (trigger.Flags & BreakpointFlag) != 0;
  LineVersions& line = *run.Line;
  Parameters params;
  TakeParameters(run, trigger, params);
  params.Set(0, line.PlainLine);
  if (stops) RequestBreak(debug_, "- [Trigger Breakpoint]");
  script_.DefiningBuffer = definedIn;
  script_.CommandDepth = 0;
  int16 options = 0;
  int16 channel = run.Index;
  std::string error;
  upcalls_.commands.ProcessCommand(action, options, error, params, channel);  // PUMP: row and trigger are dead
  if (params[0] == line.PlainLine) {
    if (!error.empty()) upcalls_.errors.DisplayErrorFile(error, definedIn);
    return Walk::GoesOn;
  }
  line.PlainLine = params[0];
  if (line.PlainLine.empty() && options_.CompressOutput) return Walk::LineIsFinished;
  line.SpokenLine = line.TaggedLine = line.PlainLine;
  return Walk::LineIsReplaced;
}

}  // namespace corvid
