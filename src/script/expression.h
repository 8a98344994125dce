// SPDX-License-Identifier: GPL-3.0-or-later
// Conditions and sums: an expanded text becomes one whole number.
#pragma once

#include <string>
#include <string_view>

#include "core/types.h"

namespace corvid {

struct OptionsState;

class ExpressionEvaluator {
 public:
  explicit ExpressionEvaluator(const OptionsState& options) : options_(options) {}

  // The value, halves rounded to even; other than 0 means true. The text has been expanded in expression mode: values
  // are bare numbers or texts in double quotes, compared without regard to case. On failure ErrorDescription is set and
  // the result 0. Never throws for what the text holds.
  int32 EvaluateExpression(std::string_view expression, std::string& ErrorDescription) const;

 private:
  const OptionsState& options_;
};

}  // namespace corvid
