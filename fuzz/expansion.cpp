// SPDX-License-Identifier: GPL-3.0-or-later
// Any text expanded, plainly and for the evaluator, and what comes of that evaluated: a text or an error, never both.
#include "script/expansion.h"

#include "fuzz.h"
#include "script_house.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using corvid::fuzz::Require;
  if (size == 0 || size > 4096) return 0;
  corvid::fuzz::ScriptHouse house;
  house.options.Explicit = (data[0] & 1U) != 0;
  if ((data[0] & 2U) != 0) house.options.VariableChar = '$';
  const std::string text(corvid::fuzz::Text(data + 1, size - 1));
  corvid::Parameters parameters;
  parameters.Set(0, "the whole line");
  parameters.Set(1, "%2@b");
  parameters.Set(99, "}");
  for (const corvid::int16 mode : {corvid::int16{0}, corvid::ExpressionMode}) {
    std::string error;
    std::string result;
    try {
      result = house.expansion.ExplodeVariable(text, error, parameters, mode, 1);
    } catch (const corvid::Fault&) {
      continue;  // more arguments than a call may have
    }
    Require(error.empty() || result.empty(), "an error has no result");
    if (!error.empty() || mode == 0) continue;
    const corvid::int32 value = house.expressions.EvaluateExpression(result, error);
    Require(error.empty() || value == 0, "a failed sum is 0");
  }
  return 0;
}
