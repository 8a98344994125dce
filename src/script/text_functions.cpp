// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>

#include "core/text.h"
#include "script/function_table.h"

namespace corvid {

namespace {

std::size_t Count(std::int64_t count) {
  if (count < 0) throw Fault(FaultKind::Index, "A count is below 0");
  return static_cast<std::size_t>(count);
}

// From position, counted from 1, to the end.
std::string_view From(const std::string& text, std::int64_t position) {
  if (position < 1) throw Fault(FaultKind::Index, "A position is below 1");
  const auto start = static_cast<std::size_t>(position - 1);
  return start < text.size() ? std::string_view(text).substr(start) : std::string_view();
}

std::string Chr(FunctionCall& call) {
  const int32 code = call.Whole(1);
  if (code < 0 || code > 255) {
    call.ErrorDescription = "Bad ASCII value in CHR function";
    return "";
  }
  return std::string(1, static_cast<char>(code));
}

std::string Copy(FunctionCall& call) {
  const std::string_view rest = From(call.Text(1), call.Whole(2));
  if (call.parameters < 3 || call.Text(3).empty()) return std::string(rest);
  return std::string(rest.substr(0, Count(call.Whole(3))));
}

std::string Delete(FunctionCall& call) {
  const std::string& text = call.Text(1);
  const std::int64_t start = call.Whole(2);
  std::string result = text.substr(0, std::min(text.size(), Count(start - 1)));
  const std::int64_t behind = start + call.Whole(3);
  // Kept: the last character is lost when exactly it would remain.
  if (behind < static_cast<std::int64_t>(text.size())) result += From(text, behind);
  return result;
}

std::string Left(FunctionCall& call) {
  return call.Text(1).substr(0, Count(call.Whole(2)));
}

std::string Right(FunctionCall& call) {
  const std::string& text = call.Text(1);
  return text.substr(text.size() - std::min(text.size(), Count(call.Whole(2))));
}

std::string Length(FunctionCall& call) {
  return std::to_string(call.Text(1).size());
}
std::string TrimLeft(FunctionCall& call) {
  return LTrim(call.Text(1));
}
std::string TrimRight(FunctionCall& call) {
  return RTrim(call.Text(1));
}
std::string TrimBoth(FunctionCall& call) {
  return Trim(call.Text(1));
}

std::string Pos(FunctionCall& call) {
  const std::string text = Upper(call.Text(2));
  const std::size_t found = text.empty() ? std::string::npos : text.find(Upper(call.Text(1)));
  return found == std::string::npos ? "0" : std::to_string(found + 1);
}

std::string Proper(FunctionCall& call) {
  std::string text = Lower(call.Text(1));
  if (!text.empty()) text.front() = UpperChar(text.front());
  return text;
}

std::string ReplaceAll(FunctionCall& call) {
  return Replace(call.Text(1), call.Text(2), call.Text(3));
}

std::string Separator(const FunctionCall& call, int16 slot) {
  return call.parameters < slot ? " " : call.Text(slot);
}

std::string IfWord(FunctionCall& call) {
  const std::string separator = Separator(call, 3);
  const auto wrapped = [&](const std::string& text) { return Upper(separator + text + separator); };
  return wrapped(call.Text(2)).find(wrapped(call.Text(1))) == std::string::npos ? "0" : "1";
}

std::string NumWords(FunctionCall& call) {
  const std::string& text = call.Text(1);
  const std::string separator = Separator(call, 2);
  // Kept: only single characters are counted, and an empty text is one word.
  const auto count = separator.size() == 1 ? std::count(text.begin(), text.end(), separator.front()) : 0;
  return std::to_string(count + 1);
}

std::string Word(FunctionCall& call) {
  const int32 position = call.Whole(3);
  if (position < 1) throw Fault(FaultKind::Index, "A position is below 1");
  const std::string& text = call.Text(1);
  const std::string& separator = call.Text(2);
  if (text.empty() || separator.empty()) return text;
  std::size_t start = 0;
  for (int32 word = 1; word < position; ++word) {
    const std::size_t found = text.find(separator, start);
    if (found == std::string::npos) break;
    start = found + separator.size();
  }
  return text.substr(start, text.find(separator, start) - start);
}

constexpr std::array<FunctionRow, 15> Rows{{
    {"CHR", 1, 1, NumberAt(1), Chr},
    {"COPY", 2, 3, NumberAt(2) | NumberAt(3), Copy},
    {"DELETE", 3, 3, NumberAt(2) | NumberAt(3), Delete},
    {"IFWORD", 2, 3, NoNumber, IfWord},
    {"LEFT", 2, 2, NumberAt(2), Left},
    {"LENGTH", 1, 1, NoNumber, Length},
    {"LTRIM", 1, 1, NoNumber, TrimLeft},
    {"NUMWORDS", 1, 2, NoNumber, NumWords},
    {"POS", 2, 2, NoNumber, Pos},
    {"PROPER", 1, 1, NoNumber, Proper},
    {"REPLACE", 3, 3, NoNumber, ReplaceAll},
    {"RIGHT", 2, 2, NumberAt(2), Right},
    {"RTRIM", 1, 1, NoNumber, TrimRight},
    {"TRIM", 1, 1, NoNumber, TrimBoth},
    {"WORD", 3, 3, NumberAt(3), Word},
}};

}  // namespace

std::span<const FunctionRow> TextFunctions() {
  return Rows;
}

}  // namespace corvid
