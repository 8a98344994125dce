// SPDX-License-Identifier: GPL-3.0-or-later
// Any text as a sum or a condition: a number or an error, and never an exception.
#include "script/expression.h"

#include "fuzz.h"
#include "script/options_state.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using corvid::fuzz::Require;
  const corvid::OptionsState options;
  const corvid::ExpressionEvaluator expressions(options);
  const std::string text(corvid::fuzz::Text(data, size));
  std::string error;
  const corvid::int32 value = expressions.EvaluateExpression(text, error);
  Require(error.empty() || value == 0, "a failed sum is 0");
  std::string again;
  Require(expressions.EvaluateExpression(text, again) == value && again == error, "the same text, the same answer");
  return 0;
}
