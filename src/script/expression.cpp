// SPDX-License-Identifier: GPL-3.0-or-later
#include "script/expression.h"

#include <vector>

#include "core/fault.h"
#include "core/number.h"
#include "core/text.h"
#include "script/operators.h"
#include "script/options_state.h"

namespace corvid {

namespace {

constexpr std::size_t DeepestOperators = 50;

// Reads the text from left to right; operators wait on a stack until their operands are there, and then work at once.
class Reader {
 public:
  Reader(const OptionsState& options, std::string_view text)
      : options_(options), text_(text), values_(!options.Explicit) {}

  int32 Run(std::string& error) {
    try {
      while (position_ < text_.size() && error_.empty()) ReadCode(text_[position_++]);
      if (error_.empty()) FinishToken();
      while (error_.empty() && !operators_.empty()) EmitTop();
      if (error_.empty()) error_ = runError_;  // what the text says wrong comes first, what it does wrong second
      if (error_.empty()) return values_.Result();
    } catch (const Fault&) {
      error_ = BadExpression();
    }
    error = error_;
    return 0;
  }

 private:
  enum class Kind { None, Text, Number, Word };

  std::string BadExpression() const { return "Bad expression " + std::string(text_); }

  void ReadCode(char c) {
    if (c == '"') {
      FinishToken();
      if (error_.empty()) ReadText();
    } else if (c == '(' || c == ')') {
      FinishToken();
      if (error_.empty()) FinishWord(std::string(1, c));
    } else if (c == ' ') {
      FinishToken();
    } else if (IsDigit(c)) {
      if (kind_ != Kind::Number) BeginToken(Kind::Number);
      token_ += c;
    } else {
      if (kind_ != Kind::Word || c == '-' || c == '+') BeginToken(Kind::Word);
      token_ += c;
    }
  }

  void ReadText() {
    std::string text;
    while (position_ < text_.size()) {
      char c = text_[position_++];
      if (c == '"') {
        previous_ = Kind::Text;
        return Emit([&] { values_.PushText(Upper(text)); });
      }
      if (c == options_.EscapeChar && position_ < text_.size()) c = text_[position_++];
      text += c;
    }
    error_ = "No matching ending quotation for string";
  }

  void BeginToken(Kind kind) {
    FinishToken();
    kind_ = kind;
  }

  void FinishToken() {
    const Kind kind = kind_;
    std::string token;
    token.swap(token_);
    kind_ = Kind::None;
    if (token.empty() || !error_.empty()) return;
    if (kind == Kind::Number) {
      previous_ = Kind::Number;
      const double number = Val(token);
      return Emit([&] { values_.PushNumber(number); });
    }
    // Kept: a closing bracket is a word too, so the minus in "(1+2)-3" is a sign and the expression fails.
    const bool isSign = previous_ == Kind::None || previous_ == Kind::Word;
    if (isSign && token == "+") return;
    FinishWord(isSign && token == "-" ? ";" : Upper(token));
  }

  void FinishWord(const std::string& word) {
    previous_ = Kind::Word;
    const OperatorRow* row = FindOperator(word);
    if (row == nullptr) {
      error_ = "Undefined variable or unknown symbol in expression [" + word + "] expression " + std::string(text_);
      return;
    }
    if (row->Code == OperatorCode::Close) return CloseBracket();
    if (row->Code != OperatorCode::Open) {
      while (!operators_.empty() && operators_.back()->Code != OperatorCode::Open &&
             operators_.back()->Priority >= row->Priority)
        EmitTop();
    }
    if (operators_.size() == DeepestOperators) throw Fault(FaultKind::Index, "The expression is nested too deeply");
    operators_.push_back(row);
  }

  void CloseBracket() {
    while (!operators_.empty() && operators_.back()->Code != OperatorCode::Open) EmitTop();
    if (operators_.empty()) {
      error_ = "Unbalanced parentheses in expression " + std::string(text_);
      return;
    }
    operators_.pop_back();
  }

  void EmitTop() {
    const OperatorCode code = operators_.back()->Code;
    operators_.pop_back();
    if (code != OperatorCode::Open) return Emit([&] { values_.Apply(code); });
    if (runError_.empty())
      runError_ =
          std::string("Bad expression syntax starting at [") + text_.back() + "] in expression " + std::string(text_);
  }

  // The first failure while working stops the work, but the rest of the text is still read for errors in it.
  template <typename Work>
  void Emit(Work work) {
    if (!runError_.empty()) return;
    try {
      work();
    } catch (const Fault&) {
      runError_ = BadExpression();
    }
  }

  const OptionsState& options_;
  std::string_view text_;
  ValueStack values_;
  std::vector<const OperatorRow*> operators_;
  std::size_t position_ = 0;
  Kind kind_ = Kind::None;
  Kind previous_ = Kind::None;
  std::string token_;
  std::string error_;     // in the text
  std::string runError_;  // in the work
};

}  // namespace

int32 ExpressionEvaluator::EvaluateExpression(std::string_view expression, std::string& ErrorDescription) const {
  return Reader(options_, expression).Run(ErrorDescription);
}

}  // namespace corvid
