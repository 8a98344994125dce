// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/script_value.h"

#include <string_view>

#include "core/text.h"

namespace corvid {

namespace {

bool StandsAt(std::string_view text, std::size_t place, std::string_view piece) {
  return text.compare(place, piece.size(), piece) == 0;
}

// A comment character counts where a line begins, blanks aside; the value's own first line has a command in front.
bool StaysAtLineStart(char c, bool lineStart) {
  return c == '\n' || c == '\r' || (lineStart && c == ' ');
}

bool BeginsExpansion(char next) {
  return IsLetter(next) || IsDigit(next) || next == '{' || next == '(';
}

bool ReadsBackAsItIs(const std::string& value, const OptionsState& options) {
  int depth = 0;
  bool lineStart = false;
  for (std::size_t i = 0; i < value.size(); ++i) {
    const char c = value[i];
    if (c == options.EscapeChar || c == options.VariableChar) return false;
    if (StandsAt(value, i, options.EndOfLineCommentChar)) return false;
    if (lineStart && c == options.CommentChar) return false;
    if (c == '%' && BeginsExpansion(i + 1 < value.size() ? value[i + 1] : ' ')) return false;
    depth += c == '{' ? 1 : c == '}' ? -1 : 0;
    if (depth < 0) return false;
    lineStart = StaysAtLineStart(c, lineStart);
  }
  return depth == 0;
}

}  // namespace

std::string ScriptValue(const std::string& value, const OptionsState& options) {
  if (ReadsBackAsItIs(value, options)) return value;
  const std::string marks{'{', '}', '%', options.VariableChar, options.EscapeChar};
  std::string result;
  bool lineStart = false;
  for (std::size_t i = 0; i < value.size(); ++i) {
    const char c = value[i];
    const bool comment = StandsAt(value, i, options.EndOfLineCommentChar) || (lineStart && c == options.CommentChar);
    if (comment || marks.find(c) != std::string::npos) result += options.EscapeChar;
    result += c;
    lineStart = StaysAtLineStart(c, lineStart);
  }
  return result;
}

}  // namespace corvid
