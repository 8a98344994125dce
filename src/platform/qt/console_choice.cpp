// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/console_choice.h"

#include <charconv>

#include "core/text.h"

namespace corvid {

std::optional<int> WholeNumber(std::string_view text) {
  text = TrimView(text);
  int number = 0;
  const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (text.empty() || error != std::errc{} || rest != text.data() + text.size()) return std::nullopt;
  return number;
}

int ChoiceOf(const std::vector<std::string>& words, const std::string& line) {
  const auto number = WholeNumber(line);
  if (number && *number >= 1 && *number <= static_cast<int>(words.size())) return *number - 1;
  const std::string wanted = Trim(line);
  int found = -1;
  bool several = false;
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (SameText(words[i], wanted)) return static_cast<int>(i);
    if (wanted.empty() || !StartsWithText(words[i], wanted)) continue;
    several = several || found >= 0;
    found = static_cast<int>(i);
  }
  return several ? -1 : found;
}

}  // namespace corvid
