// SPDX-License-Identifier: GPL-3.0-or-later
// Any text as a search string and any other as a line: the matcher answers as the plain comparison does, and no filter
// loses a match. The input is the search string, a line end, and the line.
#include <algorithm>
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
    Require(matches == PlainAnswer(line, tried), "the matcher is the plain comparison");
    corvid::LiteralFilter filter;
    std::vector<corvid::int32> found;
    if (!filter.Add(1, matcher.Literals()) || !matches) continue;
    filter.Collect(line, found);
    Require(!found.empty(), "no filter loses a match");
  }
  return 0;
}
