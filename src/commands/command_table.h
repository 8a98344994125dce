// SPDX-License-Identifier: GPL-3.0-or-later
// Every command of the language, one row each. The order of the rows decides what an abbreviation means, so the table
// is also its documentation: the first row of a group that the typed word fits is the command.
#pragma once

#include <span>
#include <string_view>

#include "core/types.h"

namespace corvid {

struct CommandCall;

using CommandHandler = void (*)(CommandCall& call);

struct CommandRow {
  std::string_view Letters;  // group: commands that begin with one of these letters, "A" to "Z" and "0" to "9"
  std::string_view Keyword;  // full word, upper case; empty: the number form
  int16 Min;                 // allowed number of parameters behind the command word
  int16 Max;
  CommandHandler Handler;
  bool Between = true;     // false: only Min or Max, nothing between
  bool WholeWord = false;  // cannot be abbreviated
};

inline constexpr int16 AnyCount = 1000;

class CommandTable {
 public:
  static std::span<const CommandRow> Rows();
  // The command that a typed word means. word is upper case, without command character and "G"; "?", "#" and "[...]"
  // in it behind the first letter stand for what they match. nullptr when no row of its group fits. A bad pattern is a
  // Fault of kind BadPattern.
  static const CommandRow* Find(std::string_view word);
  static const CommandRow& NumberForm();  // a number in place of the word; the caller tests that it is one
  // Letter of the group in which the number form is tried.
  static bool IsNumberGroup(char letter);
  static bool CountFits(const CommandRow& row, int32 count);
};

}  // namespace corvid
