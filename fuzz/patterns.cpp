// SPDX-License-Identifier: GPL-3.0-or-later
// Any text as a search string and any other as a line: the matcher and the plain comparison answer as a slow and
// obvious reference does, and no filter loses a match. The input is the search string, a line end, and the line.
#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "core/fault.h"
#include "core/pattern.h"
#include "core/pattern_matcher.h"
#include "fuzz.h"
#include "script/literal_filter.h"
#include "script/options_state.h"
#include "script/script_state.h"
#include "script/search_string.h"

namespace {

// A pattern taken apart place by place. Each place but a star takes exactly one code.
struct Place {
  bool Star = false;
  std::array<bool, 256> Takes{};
};

void Take(Place& place, unsigned char low, unsigned char high) {
  for (unsigned code = low; code <= high; ++code) place.Takes[code] = true;
}

// What stands between "[" and "]". False when a range runs backward.
bool TakeSet(Place& place, std::string_view members) {
  const bool inverted = members.size() > 1 && members[0] == '!';
  if (inverted) members.remove_prefix(1);
  while (!members.empty()) {
    const auto low = static_cast<unsigned char>(members[0]);
    const bool range = members.size() > 2 && members[1] == '-';
    const auto high = static_cast<unsigned char>(members[range ? 2 : 0]);
    if (high < low) return false;
    Take(place, low, high);
    members.remove_prefix(range ? 3 : 1);
  }
  if (inverted)
    for (bool& takes : place.Takes) takes = !takes;
  return true;
}

// False for a malformed pattern.
bool TakeApart(std::string_view pattern, std::vector<Place>& places) {
  while (!pattern.empty()) {
    Place place;
    std::size_t length = 1;
    if (pattern[0] == '*') {
      place.Star = true;
    } else if (pattern[0] == '?') {
      Take(place, 0, 255);
    } else if (pattern[0] == '#') {
      Take(place, '0', '9');
    } else if (pattern[0] == '[') {
      const std::size_t end = pattern.find(']');
      if (end == std::string_view::npos || !TakeSet(place, pattern.substr(1, end - 1))) return false;
      length = end + 1;
    } else {
      Take(place, static_cast<unsigned char>(pattern[0]), static_cast<unsigned char>(pattern[0]));
    }
    if (length != 2) places.push_back(place);  // "[]" is no place at all
    pattern.remove_prefix(length);
  }
  return true;
}

// Slow and obvious: for every beginning of the pattern, which beginnings of the text it fits.
bool SlowAnswer(std::string_view text, std::string_view pattern) {
  std::vector<Place> places;
  if (!TakeApart(pattern, places)) return false;
  std::vector<bool> fits(text.size() + 1, false);
  fits[0] = true;
  for (const Place& place : places) {
    std::vector<bool> next(text.size() + 1, false);
    for (std::size_t i = 0; i <= text.size(); ++i) {
      if (place.Star) {
        next[i] = fits[i] || (i > 0 && next[i - 1]);
      } else {
        next[i] = i > 0 && fits[i - 1] && place.Takes[static_cast<unsigned char>(text[i - 1])];
      }
    }
    fits = next;
  }
  return fits[text.size()];
}

bool PlainAnswer(std::string_view text, std::string_view pattern) {
  try {
    return corvid::Like(text, pattern);
  } catch (const corvid::Fault&) {
    return false;
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using corvid::fuzz::Require;
  const std::string_view input = corvid::fuzz::Text(data, size);
  const std::size_t end = std::min(input.find('\n'), input.size());
  const std::string search(input.substr(0, end));
  const std::string line(input.substr(std::min(end + 1, input.size())));

  corvid::ScriptState script;
  const corvid::OptionsState options;
  script.Triggers.Resize(1);
  std::string error;
  std::string pattern = search;
  try {
    pattern = corvid::ConvertSearchString(script, options, search, 1, error);
    Require(error.empty() || pattern.empty(), "an error leaves no pattern");
  } catch (const corvid::Fault& fault) {
    Require(fault.Kind == corvid::FaultKind::Index, "too many parts is the only fault");
  }
  for (const std::string& tried : {search, pattern}) {
    const corvid::PatternMatcher matcher(tried);
    const bool matches = matcher.Matches(line);
    Require(matches == SlowAnswer(line, tried), "the matcher answers as the reference does");
    Require(matches == PlainAnswer(line, tried), "and so does the plain comparison");
    corvid::LiteralFilter filter;
    std::vector<corvid::int32> found;
    if (!filter.Add(1, matcher.Literals()) || !matches) continue;
    filter.Collect(line, found);
    Require(!found.empty(), "no filter loses a match");
  }
  return 0;
}
