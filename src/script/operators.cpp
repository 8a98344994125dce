// SPDX-License-Identifier: GPL-3.0-or-later
#include "script/operators.h"

#include <array>
#include <cmath>
#include <utility>

#include "core/fault.h"
#include "core/number.h"
#include "core/pattern.h"
#include "core/text.h"

namespace corvid {

namespace {

constexpr std::size_t DeepestStack = 50;

constexpr std::array<OperatorRow, 20> Operators{{
    {"NOT", 30, OperatorCode::Not},      {";", 30, OperatorCode::Minus},         {"(", 28, OperatorCode::Open},
    {")", 28, OperatorCode::Close},      {"^", 25, OperatorCode::Power},         {"*", 24, OperatorCode::Product},
    {"/", 24, OperatorCode::Quotient},   {"\\", 23, OperatorCode::Remainder},    {"+", 20, OperatorCode::Sum},
    {"-", 20, OperatorCode::Difference}, {"=", 18, OperatorCode::Equal},         {"<", 18, OperatorCode::Less},
    {">", 18, OperatorCode::Greater},    {">=", 18, OperatorCode::GreaterEqual}, {"<=", 18, OperatorCode::LessEqual},
    {"<>", 18, OperatorCode::Unequal},   {"=*", 17, OperatorCode::Matches},      {"AND", 14, OperatorCode::And},
    {"OR", 13, OperatorCode::Or},        {"XOR", 12, OperatorCode::Xor},
}};

double NumberOf(const ExpressionValue& value) {
  return value.IsText ? ToNumber(value.Text) : value.Number;
}
std::string TextOf(const ExpressionValue& value) {
  return value.IsText ? value.Text : NumberText(value.Number);
}

double Finite(double value) {
  if (!std::isfinite(value)) throw Fault(FaultKind::Overflow, "The result is no number");
  return value;
}

double Quotient(double left, double right) {
  if (right == 0) throw Fault(FaultKind::Division, "Division by zero");
  return ToInt16(left / right);
}

double Remainder(double left, double right) {
  const std::int64_t divisor = ToInt32(right);
  const std::int64_t dividend = ToInt32(left);
  if (divisor == 0) throw Fault(FaultKind::Division, "Division by zero");
  return static_cast<double>(dividend % divisor);
}

// Below, equal to or above 0. Two texts compare as texts, even when both hold digits.
int Compare(const ExpressionValue& left, const ExpressionValue& right) {
  if (left.IsText && right.IsText) return CompareText(left.Text, right.Text);
  const double a = NumberOf(left);
  const double b = NumberOf(right);
  return a < b ? -1 : a > b ? 1 : 0;
}

bool Compares(OperatorCode code, const ExpressionValue& left, const ExpressionValue& right) {
  const int sign = Compare(left, right);
  switch (code) {
    case OperatorCode::Less:
      return sign < 0;
    case OperatorCode::Greater:
      return sign > 0;
    case OperatorCode::GreaterEqual:
      return sign >= 0;
    case OperatorCode::LessEqual:
      return sign <= 0;
    default:
      return sign != 0;
  }
}

bool Decides(OperatorCode code, const ExpressionValue& left, const ExpressionValue& right) {
  switch (code) {
    case OperatorCode::Equal:
      return SameText(TextOf(left), TextOf(right));
    case OperatorCode::Matches:
      return Like(TextOf(left), TextOf(right));
    case OperatorCode::And:
    case OperatorCode::Or:
    case OperatorCode::Xor: {
      const bool a = NumberOf(left) != 0;
      const bool b = NumberOf(right) != 0;
      if (code == OperatorCode::Xor) return a != b;
      return code == OperatorCode::And ? a && b : a || b;
    }
    default:
      return Compares(code, left, right);
  }
}

}  // namespace

const OperatorRow* FindOperator(std::string_view name) {
  for (const OperatorRow& row : Operators)
    if (row.Name == name) return &row;
  return nullptr;
}

void ValueStack::Push(ExpressionValue value) {
  if (values_.size() == DeepestStack) throw Fault(FaultKind::Index, "The expression holds too many values");
  values_.push_back(std::move(value));
}

void ValueStack::PushNumber(double number) {
  Push({false, number, {}});
}
void ValueStack::PushText(std::string text) {
  Push({true, 0, std::move(text)});
}

ExpressionValue ValueStack::Pop() {
  if (values_.empty()) throw Fault(FaultKind::Index, "An operator has no value to work on");
  ExpressionValue value = std::move(values_.back());
  values_.pop_back();
  return value;
}

void ValueStack::FillEmptyOperands(OperatorCode code, ExpressionValue& left, ExpressionValue& right) const {
  if (!emptyIsZero_) return;
  const auto fill = [](ExpressionValue& value) {
    if (value.IsText && value.Text.empty()) value.Text = "0";
  };
  fill(right);
  // Kept: the left operand of the others stays empty, which no sum can take.
  if (code == OperatorCode::Power || code == OperatorCode::Product) fill(left);
}

void ValueStack::ApplyToOne(OperatorCode code) {
  ExpressionValue value = Pop();
  if (emptyIsZero_ && value.IsText && value.Text.empty()) value.Text = "0";
  const double number = NumberOf(value);
  PushNumber(code == OperatorCode::Not ? (number == 0 ? 1 : 0) : -number);
}

void ValueStack::Apply(OperatorCode code) {
  if (code == OperatorCode::Not || code == OperatorCode::Minus) return ApplyToOne(code);
  ExpressionValue right = Pop();
  ExpressionValue left = Pop();
  if (code >= OperatorCode::Equal) return PushNumber(Decides(code, left, right) ? 1 : 0);
  FillEmptyOperands(code, left, right);
  if (code == OperatorCode::Sum && left.IsText && right.IsText) return PushText(left.Text + right.Text);
  const double a = NumberOf(left);
  const double b = NumberOf(right);
  switch (code) {
    case OperatorCode::Power:
      return PushNumber(Finite(std::pow(a, b)));
    case OperatorCode::Product:
      return PushNumber(Finite(a * b));
    case OperatorCode::Quotient:
      return PushNumber(Quotient(a, b));
    case OperatorCode::Remainder:
      return PushNumber(Remainder(a, b));
    case OperatorCode::Sum:
      return PushNumber(Finite(a + b));
    default:
      return PushNumber(Finite(a - b));
  }
}

int32 ValueStack::Result() const {
  if (values_.size() != 1) throw Fault(FaultKind::Index, "Not exactly one value is left");
  return ToInt32(NumberOf(values_.back()));
}

}  // namespace corvid
