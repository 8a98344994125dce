// SPDX-License-Identifier: GPL-3.0-or-later
#include "commands/walk_steps.h"

#include <utility>
#include <vector>

#include "core/text.h"

namespace corvid {

namespace {

std::vector<std::string> StepsOf(const std::string& text, const std::string& separator) {
  return separator.empty() ? std::vector<std::string>{text} : Split(text, separator);
}

std::string Joined(const std::vector<std::string>& steps, const std::string& separator) {
  std::string text;
  for (std::size_t i = 0; i < steps.size(); ++i) text += (i == 0 ? "" : separator) + steps[i];
  return text;
}

// Row of the direction, or 0.
int16 FindDirection(const AbbreviationTable& directions, const std::string& step) {
  for (int32 row = 1; row <= directions.AbbreviationCount; ++row)
    if (SameText(directions.Directions[row], step)) return static_cast<int16>(row);
  return 0;
}

std::string WithoutEmptySteps(std::string steps, const std::string& separator) {
  std::size_t before = 0;
  do {
    before = steps.size();
    steps = Replace(std::move(steps), separator + separator, separator);
  } while (steps.size() < before);
  return steps;
}

void CutEnds(std::string& steps, const std::string& separator) {
  if (separator.empty()) return;
  if (steps.starts_with(separator)) steps.erase(0, separator.size());
  if (steps.ends_with(separator)) steps.erase(steps.size() - separator.size());
}

// Taking one pair away can bring the next together, so it goes on until nothing changes. Kept: a recording ends with a
// separator, so a last step that the table has without an opposite is a pair with the nothing behind it and goes too.
std::string WithoutDetours(const AbbreviationTable& directions, std::string steps, const std::string& separator) {
  std::size_t before = 0;
  do {
    before = steps.size();
    steps = separator + steps + separator;
    for (int32 row = 1; row <= directions.AbbreviationCount; ++row) {
      std::string pair = separator + directions.Directions[row];
      pair += separator + directions.OppositeDirections[row];
      pair += separator;
      steps = Replace(std::move(steps), pair, separator);
    }
    CutEnds(steps, separator);
  } while (steps.size() < before);
  return steps;
}

}  // namespace

std::string RecordedSteps(const AbbreviationTable& directions, const std::string& recorded,
                          const std::string& separator, const RecordingWishes& wishes) {
  std::string text = recorded;
  if (!separator.empty() && text.starts_with(separator)) text.erase(0, separator.size());
  std::vector<std::string> steps = StepsOf(text, separator);
  for (std::string& step : steps) {
    if (FindDirection(directions, step) != 0) {
      step = Upper(step);
    } else if (wishes.DirectionsOnly) {
      step.clear();
    }
  }
  text = WithoutEmptySteps(Joined(steps, separator), separator);
  if (wishes.Compress) text = WithoutDetours(directions, std::move(text), separator);
  text = WithoutEmptySteps(std::move(text), separator);
  CutEnds(text, separator);
  return text;
}

std::string WalkBackwards(const AbbreviationTable& directions, const std::string& steps, const std::string& separator) {
  const std::vector<std::string> there = StepsOf(steps, separator);
  std::vector<std::string> back;
  for (auto step = there.rbegin(); step != there.rend(); ++step) {
    const int16 row = FindDirection(directions, *step);
    back.push_back(row == 0 ? *step : directions.OppositeDirections[row]);
  }
  return Joined(back, separator);
}

std::string TakeStep(std::string& steps, const std::string& separator, bool& more) {
  const std::size_t end = separator.empty() ? std::string::npos : steps.find(separator);
  more = end != std::string::npos;
  if (!more) return std::exchange(steps, {});
  std::string step = steps.substr(0, end);
  steps.erase(0, end + separator.size());
  return step;
}

}  // namespace corvid
