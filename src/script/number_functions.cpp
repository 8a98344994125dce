// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>
#include <cmath>

#include "script/expression.h"
#include "script/function_table.h"

namespace corvid {

namespace {

std::string Case(FunctionCall& call) {
  const int32 index = call.Whole(1);
  if (index < 0 || index >= call.parameters) return "";
  return call.Text(index + 1);  // Kept: index 0 gives the index itself.
}

std::string Eval(FunctionCall& call) {
  return std::to_string(call.world.expressions.EvaluateExpression(call.Text(1), call.ErrorDescription));
}

std::string If(FunctionCall& call) {
  const int32 value = call.world.expressions.EvaluateExpression(call.Text(1), call.ErrorDescription);
  return call.Text(value != 0 ? 2 : 3);
}

std::string IsNumber(FunctionCall& call) {
  return IsNumeric(call.Text(1)) ? "1" : "0";
}

std::string Max(FunctionCall& call) {
  double largest = -2147483648.0;
  for (int32 slot = 1; slot <= call.parameters; ++slot) largest = std::max(largest, call.Number(slot));
  return NumberText(largest);
}

std::string Min(FunctionCall& call) {
  double smallest = 2147483648.0;
  for (int32 slot = 1; slot <= call.parameters; ++slot) smallest = std::min(smallest, call.Number(slot));
  return NumberText(smallest);
}

std::string Random(FunctionCall& call) {
  const float low = ToFloat(call.Number(1));
  const float high = ToFloat(call.Number(2));
  const float range = ToFloat(double{high} - low + 1.0);
  const float r = std::uniform_real_distribution<float>(0.0F, 1.0F)(call.world.random);
  // A large range is coarse in single precision: rounding must not carry the number past the end.
  const float number = std::floor(r * range + low);
  return NumberText(high >= low ? std::min(number, std::floor(high)) : number);
}

constexpr std::array<FunctionRow, 7> Rows{{
    {"CASE", 3, FunctionArguments::Highest, NumberAt(1), Case},
    {"EVAL", 1, 1, NoNumber, Eval},
    {"IF", 3, 3, NoNumber, If},
    {"ISNUMBER", 1, 1, NoNumber, IsNumber},
    {"MAX", 2, FunctionArguments::Highest, AllNumbers, Max},
    {"MIN", 2, FunctionArguments::Highest, AllNumbers, Min},
    {"RANDOM", 2, 2, NumberAt(1) | NumberAt(2), Random},
}};

}  // namespace

std::span<const FunctionRow> NumberFunctions() {
  return Rows;
}

}  // namespace corvid
