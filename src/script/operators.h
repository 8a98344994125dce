// SPDX-License-Identifier: GPL-3.0-or-later
// The operators of expressions and what each does to the values on the stack.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/types.h"

namespace corvid {

enum class OperatorCode {
  Not,
  Minus,  // of one operand
  Open,
  Close,
  Power,
  Product,
  Quotient,
  Remainder,
  Sum,
  Difference,
  Equal,
  Less,
  Greater,
  GreaterEqual,
  LessEqual,
  Unequal,
  Matches,
  And,
  Or,
  Xor
};

struct OperatorRow {
  std::string_view Name;
  int Priority;  // a higher number binds tighter
  OperatorCode Code;
};

// The row of an operator in upper case, or nullptr.
const OperatorRow* FindOperator(std::string_view name);

// A number or a text. Texts are in upper case already.
struct ExpressionValue {
  bool IsText = false;
  double Number = 0;
  std::string Text;
};

// At most 50 values; one more, and an operator without enough of them, is a Fault.
class ValueStack {
 public:
  // emptyIsZero: an operand of arithmetic that is the empty text reads as 0.
  explicit ValueStack(bool emptyIsZero) : emptyIsZero_(emptyIsZero) { values_.reserve(8); }

  void PushNumber(double number);
  void PushText(std::string text);
  // Takes the operands from the stack and puts the result there. Operands of the wrong kind, overflow and division by
  // zero are a Fault.
  void Apply(OperatorCode code);
  // The one value that is left, as a whole number. More or fewer values, or a text that is no number, are a Fault.
  int32 Result() const;

 private:
  void Push(ExpressionValue value);
  ExpressionValue Pop();
  void ApplyToOne(OperatorCode code);
  void FillEmptyOperands(OperatorCode code, ExpressionValue& left, ExpressionValue& right) const;

  std::vector<ExpressionValue> values_;
  bool emptyIsZero_;
};

}  // namespace corvid
