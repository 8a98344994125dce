// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>

#include "core/text.h"
#include "script/function_table.h"
#include "script/lists.h"
#include "script/script_state.h"
#include "script/symbols.h"

namespace corvid {

namespace {

std::string DelItem(FunctionCall& call) {
  return DeleteItem(call.Text(1), call.Text(2));
}
std::string DelNItem(FunctionCall& call) {
  return DeleteNthItem(call.Text(1), call.Whole(2));
}

std::string Pop(FunctionCall& call) {
  const int32 row = call.world.symbols.FindVariableRow(call.Text(1), call.owner);
  if (row == 0) return "";
  std::string& list = call.world.state.VariableValues[row];
  const std::size_t bar = list.find('|');
  std::string first = list.substr(0, bar);
  list.erase(0, bar == std::string::npos ? bar : bar + 1);
  return first;
}

std::string Push(FunctionCall& call) {
  return call.Text(1).empty() ? call.Text(2) : call.Text(2) + "|" + call.Text(1);
}

std::string Reverse(FunctionCall& call) {
  return ReverseList(call.Text(1));
}

// Kept: a flag that is missing is no number, so one argument fails.
std::string Sort(FunctionCall& call) {
  return SortStringList(call.Text(1), ToInt16(call.Number(2)));
}

constexpr std::array<FunctionRow, 6> Rows{{
    {"DELITEM", 2, 2, NoNumber, DelItem},
    {"DELNITEM", 2, 2, NumberAt(2), DelNItem},
    {"POP", 1, 1, NoNumber, Pop},
    {"PUSH", 2, 2, NoNumber, Push},
    {"REVERSELIST", 1, 1, NoNumber, Reverse},
    {"SORT", 1, 2, NoNumber, Sort},
}};

}  // namespace

std::span<const FunctionRow> ListFunctions() {
  return Rows;
}

}  // namespace corvid
