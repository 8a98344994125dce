// SPDX-License-Identifier: GPL-3.0-or-later
#include "sessions/trigger_index.h"

#include <algorithm>

#include "core/text.h"
#include "script/symbols.h"

namespace corvid {

namespace {

std::vector<std::string> InUpperCase(std::vector<std::string> texts) {
  for (std::string& text : texts) text = Upper(text);
  return texts;
}

bool Is(const TriggerRecord& trigger, int16 flag) {
  return (trigger.Flags & flag) != 0;
}

}  // namespace

// Rows that are known keep what was worked out and only their number is noted; so a script that defines and removes a
// trigger at each line does not pay for all the others.
void TriggerIndex::TakeIn() {
  if (IsCurrent()) return;
  TriggerRows& rows = script_.Triggers;
  const int32 count = std::min<int32>(script_.TriggerCount, rows.UBound());
  constexpr std::size_t slack = 100;
  if (entries_.size() > 2 * static_cast<std::size_t>(count) + slack) Forget();
  version_ = rows.Version();
  count_ = script_.TriggerCount;
  const std::size_t known = entries_.size();
  for (int32 row = 1; row <= count; ++row) {
    const auto number = static_cast<std::size_t>(rows.Mark(row));
    if (number == 0) {
      Enter(row);
    } else {
      entries_[number].Row = row;
      entries_[number].Seen = version_;
    }
  }
  for (std::size_t number = known; number < entries_.size(); ++number) File(static_cast<int32>(number));
}

void TriggerIndex::Forget() {
  script_.Triggers.ClearMarks();
  entries_.assign(1, Entry());
  always_.clear();
  colours_.clear();
  plainFilter_.Clear();
  colourFilter_.Clear();
  classLists_.assign(1, std::string());
  classListNumbers_.clear();
  ownerClasses_.clear();
}

void TriggerIndex::Enter(int32 row) {
  const TriggerRecord& trigger = script_.Triggers.Read(row);
  Entry entry;
  entry.Row = row;
  entry.Seen = version_;
  if (!trigger.Pattern.empty() && !Is(trigger, triggerflag::PassedOver)) {
    entry.ClassList = ClassListNumber(trigger.Class);
    entry.Expanded = trigger.Pattern.find_first_of("@%") != std::string::npos;
    const bool colour = Is(trigger, triggerflag::Colour);
    const bool eachLine = entry.Expanded || Symbols::HasTooManyClasses(trigger.Class);
    entry.What = eachLine ? Kind::Always : colour ? Kind::Colour : Kind::Filtered;
    const bool anyCase = !colour && Is(trigger, triggerflag::AnyCase);
    if (!entry.Expanded)
      entry.Matcher = PatternMatcher(colour    ? "*" + trigger.Pattern
                                     : anyCase ? Upper(trigger.Pattern)
                                               : trigger.Pattern);
    if (entry.What == Kind::Colour) colourFilter_.Weigh(entry.Matcher.Literals());
    if (entry.What == Kind::Filtered) plainFilter_.Weigh(InUpperCase(entry.Matcher.Literals()));
  }
  script_.Triggers.SetMark(row, static_cast<int32>(entries_.size()));
  entries_.push_back(std::move(entry));
}

void TriggerIndex::File(int32 number) {
  Entry& entry = entries_[static_cast<std::size_t>(number)];
  switch (entry.What) {
    case Kind::Free:
      break;
    case Kind::Colour:
      if (!colourFilter_.Add(number, entry.Matcher.Literals())) entry.What = Kind::Always;
      break;
    case Kind::Filtered:
      if (!plainFilter_.Add(number, InUpperCase(entry.Matcher.Literals()))) entry.What = Kind::Always;
      break;
    case Kind::Always:
      break;
  }
  if (entry.What == Kind::Always) always_.push_back(number);
  if (entry.What == Kind::Colour) colours_.push_back(number);
}

int32 TriggerIndex::ClassListNumber(const std::string& classes) {
  if (classes.empty()) return 0;
  const auto [place, isNew] = classListNumbers_.try_emplace(classes, static_cast<int32>(classLists_.size()));
  if (isNew) classLists_.push_back(classes);
  return place->second;
}

bool TriggerIndex::InClass(int32 number, OwnerId owner) {
  const int32 list = entries_[static_cast<std::size_t>(number)].ClassList;
  if (list == 0) return true;
  constexpr char off = 1, on = 2;
  OwnerClasses& known = ownerClasses_[owner];
  if (known.Version != script_.ClassVersion) {
    known.Version = script_.ClassVersion;
    known.Answers.clear();
  }
  const auto place = static_cast<std::size_t>(list);
  if (known.Answers.size() < classLists_.size()) known.Answers.resize(classLists_.size(), 0);
  if (known.Answers[place] == 0) known.Answers[place] = symbols_.InClass(classLists_[place], owner) ? on : off;
  return known.Answers[place] == on;
}

void TriggerIndex::Add(const std::vector<int32>& numbers, int32 below,
                       std::vector<TriggerCandidate>& candidates) const {
  for (const int32 number : numbers) {
    const Entry& entry = entries_[static_cast<std::size_t>(number)];
    if (entry.Seen == version_ && entry.Row < below) candidates.push_back({entry.Row, number});
  }
}

void TriggerIndex::Collect(std::string_view plain, std::string_view tagged, bool allColours, int32 below,
                           std::vector<TriggerCandidate>& candidates) {
  TakeIn();
  candidates.clear();
  found_.clear();
  plainFilter_.Collect(plain, found_);
  if (!allColours) colourFilter_.Collect(tagged, found_);
  Add(found_, below, candidates);
  Add(always_, below, candidates);
  if (allColours) Add(colours_, below, candidates);
  if (candidates.size() < 2) return;
  const auto higher = [](const TriggerCandidate& a, const TriggerCandidate& b) { return a.Row > b.Row; };
  const auto same = [](const TriggerCandidate& a, const TriggerCandidate& b) { return a.Row == b.Row; };
  std::sort(candidates.begin(), candidates.end(), higher);
  candidates.erase(std::unique(candidates.begin(), candidates.end(), same), candidates.end());
}

}  // namespace corvid
