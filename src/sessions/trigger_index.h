// SPDX-License-Identifier: GPL-3.0-or-later
// What is worked out once about each trigger, so that a line meets only those that can match it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "core/pattern_matcher.h"
#include "script/literal_filter.h"
#include "script/script_state.h"

namespace corvid {

class Symbols;

// One trigger that a line may match.
struct TriggerCandidate {
  int32 Row;
  int32 Number;  // of what the index knows of it
};

class TriggerIndex {
 public:
  TriggerIndex(ScriptState& script, const Symbols& symbols) : script_(script), symbols_(symbols) {}

  // True as long as the rows of the last Collect are what the table holds.
  bool IsCurrent() const { return version_ == script_.Triggers.Version() && count_ == script_.TriggerCount; }

  // Fills candidates with the triggers in rows below `below`, the highest first, that the line can match; those that
  // need more than the line to tell are among them. What was defined since the last call is taken in first. plain is
  // the line in upper case, tagged is the line with its tags as it is. allColours: every colour trigger is a candidate.
  void Collect(std::string_view plain, std::string_view tagged, bool allColours, int32 below,
               std::vector<TriggerCandidate>& candidates);

  // The pattern of a candidate, in upper case where case does not count.
  const PatternMatcher& Matcher(int32 number) const { return entries_[static_cast<std::size_t>(number)].Matcher; }
  // Whether the classes of a candidate are on for owner, as InClass tells it, with the same Fault.
  bool InClass(int32 number, OwnerId owner);
  // The candidate's pattern holds variables: it is expanded at each test, and Matcher is of no use.
  bool IsExpanded(int32 number) const { return entries_[static_cast<std::size_t>(number)].Expanded; }

 private:
  enum class Kind { Free, Filtered, Always, Colour };
  struct Entry {
    Kind What = Kind::Free;
    bool Expanded = false;
    int32 Row = 0;
    std::uint64_t Seen = 0;  // version of the table in which Row was right
    int32 ClassList = 0;
    PatternMatcher Matcher;
  };
  // Answers of InClass for one owner, by class list: 0 not asked yet, 1 off, 2 on.
  struct OwnerClasses {
    int32 Version = -1;
    std::vector<char> Answers;
  };

  void TakeIn();
  void Forget();
  void Enter(int32 row);
  void File(int32 number);
  int32 ClassListNumber(const std::string& classes);
  void Add(const std::vector<int32>& numbers, int32 below, std::vector<TriggerCandidate>& candidates) const;

  ScriptState& script_;
  const Symbols& symbols_;
  std::uint64_t version_ = 0;
  int16 count_ = 0;
  std::vector<Entry> entries_{1};  // by number; 0 is not used
  std::vector<int32> always_;
  std::vector<int32> colours_;
  LiteralFilter plainFilter_;
  LiteralFilter colourFilter_;
  std::vector<int32> found_;
  std::vector<std::string> classLists_{1};  // by number; 0 is the empty one
  std::unordered_map<std::string, int32> classListNumbers_;
  std::unordered_map<OwnerId, OwnerClasses> ownerClasses_;
};

}  // namespace corvid
