// SPDX-License-Identifier: GPL-3.0-or-later
#include "script/expansion.h"

#include <array>
#include <cmath>
#include <utility>

#include "core/number.h"
#include "core/text.h"
#include "script/function_library.h"
#include "script/options_state.h"
#include "script/script_state.h"
#include "script/symbols.h"

namespace corvid {

namespace {

constexpr int DeepestExpansion = 250;  // calls in the arguments of calls, names in the braces of names

// The parameter that a name stands for, or -1. Numbers wrap at 16 bits, so that "65537" is parameter 1.
int32 ParameterNumber(const std::string& name) {
  constexpr double largest = 9e15;  // whole numbers up to here are exact
  if (!IsNumeric(name)) return -1;
  double number = 0;
  try {
    number = std::trunc(Val(name));
  } catch (const Fault&) {
    return -1;  // "%1E999" is no parameter, but no failure either
  }
  if (std::abs(number) > largest) return -1;
  const auto wrapped = static_cast<int16>(static_cast<std::int64_t>(number));
  return wrapped >= 0 && wrapped < Parameters::Slots ? wrapped : -1;
}

// Values for the expression evaluator: numbers stay bare, what ends in a quote is taken to be quoted.
void QuoteValue(std::string& value) {
  if (IsNumeric(value) || value.ends_with('"')) return;
  value = '"' + value + '"';
}

void QuoteResult(std::string& value) {
  if (value.starts_with('"') && value.ends_with('"')) return;
  value = '"' + value + '"';
}

}  // namespace

// One text on its way. out_ is what has been read, with values in place; in_ from position_ on is still to be read.
class Expansion::Pass {
 public:
  Pass(Expansion& expansion, std::string_view in, std::string& error, const Parameters& rvar, int16 flags,
       OwnerId owner)
      : expansion_(expansion), in_(in), error_(error), rvar_(rvar), flags_(flags), owner_(owner) {}

  std::string Run() {
    while (position_ < in_.size() && error_.empty()) {
      const char c = in_[position_];
      if (!inName_) {
        Outside(c);
      } else if (braces_ == 0) {
        InName(c);
      } else {
        InBraces(c);
      }
    }
    if (error_.empty() && inName_) UseValue();
    if (error_.empty() && braces_ > 0) error_ = "inappropriate use of braces with variables";
    return error_.empty() ? std::move(out_) : std::string();
  }

 private:
  enum class Kind { Variable, Percent };

  struct Arguments {
    FunctionArguments Text;
    std::array<bool, FunctionArguments::Highest + 1> Expand{};  // holds a variable
    int16 Count = 1;
    int32 Depth = 0;  // of parentheses; -1 when the call is closed
    bool InQuote = false;
  };

  char Take() {
    const char c = in_[position_++];
    out_ += c;
    return c;
  }

  void Outside(char c) {
    if (c == expansion_.options_.EscapeChar) {
      ++position_;
      if (position_ < in_.size()) Take();
    } else if (c == expansion_.options_.VariableChar) {
      BeginName(Kind::Variable);
    } else if (c == '%') {
      BeginName(Kind::Percent);
    } else {
      Take();
    }
  }

  void BeginName(Kind kind) {
    inName_ = true;
    kind_ = kind;
    start_ = out_.size();
    Take();
  }

  void InName(char c) {
    if (c == expansion_.options_.EscapeChar) {
      Take();
      if (position_ < in_.size()) name_ += Take();
    } else if (c == '(') {
      Take();
      CallFunction();
    } else if (c == '{' && name_.empty()) {
      Take();
      braces_ = 1;
    } else if (IsLetter(c) || IsDigit(c)) {
      name_ += Take();
    } else if (!UseValue()) {
      Take();  // Kept: the character behind an unknown name is not looked at, so "%FOO@BAR" leaves "@BAR".
    }
  }

  void InBraces(char c) {
    Take();
    if (c == '{') ++braces_;
    if (c == '}' && --braces_ == 0) {
      name_ = expansion_.ExplodeVariable(std::move(name_), error_, rvar_, 0, -1);
      if (error_.empty()) UseValue();
      return;
    }
    name_ += c;
  }

  // Puts the value of the name in place of everything from its prefix on. False if there is none; the text then stays.
  bool UseValue() {
    const bool found = kind_ == Kind::Variable ? FindUserVariable() : FindParameter() || FindSystemVariable();
    if (found) {
      if ((flags_ & ExpressionMode) != 0) QuoteValue(value_);
      out_.resize(start_);
      out_ += value_;
    }
    inName_ = false;
    name_.clear();
    return found;
  }

  bool FindUserVariable() {
    if (expansion_.symbols_.FindVariable(name_, value_, owner_) != 0) return true;
    if (expansion_.options_.Explicit) return false;
    value_.clear();
    return true;
  }

  bool FindParameter() {
    const int32 number = ParameterNumber(name_);
    if (number < 0) return false;
    value_ = rvar_[number];
    return true;
  }

  bool FindSystemVariable() {
    if (name_.empty()) return false;
    for (std::size_t i = 1; i <= sysvar::Last; ++i) {
      if (!SameText(expansion_.state_.SystemNames[i], name_)) continue;
      value_ = i == sysvar::CLIPBOARD ? expansion_.readClipboard_() : expansion_.state_.SystemValues[i];
      return true;
    }
    return false;
  }

  // The name state goes on behind the call: a letter there extends the name, and a system variable (or, behind the
  // variable character, a variable) of that name replaces the result. Scripts depend on it.
  void CallFunction() {
    Arguments arguments;
    ReadArguments(arguments);
    if (error_.empty()) ExpandArguments(arguments);
    if (!error_.empty()) return;
    value_ = expansion_.functions_.ExecuteFunction(name_, arguments.Text, arguments.Count, error_, owner_, expansion_);
    if ((flags_ & ExpressionMode) != 0) QuoteResult(value_);
    out_.resize(start_);
    out_ += value_;
  }

  void ReadArguments(Arguments& arguments) {
    while (position_ < in_.size() && arguments.Depth >= 0) ReadArgumentCode(arguments, in_[position_++]);
    // The other message, "unfinished argument list for function ", can never be reached: a call that is not closed is
    // unbalanced first.
    if (arguments.Depth != -1) error_ = "Unbalanced parentheses for argument list in function " + name_;
  }

  void ReadArgumentCode(Arguments& arguments, char c) {
    std::string& text = arguments.Text[arguments.Count];
    if (c == '@' || c == '%') arguments.Expand[static_cast<std::size_t>(arguments.Count)] = true;
    if (c == expansion_.options_.EscapeChar) {
      if (position_ < in_.size()) text += in_[position_++];
    } else if (c == '"' && name_ != "EVAL" && (arguments.InQuote || IsBlank(text))) {
      arguments.InQuote = !arguments.InQuote;
    } else if (c == ')' && !arguments.InQuote && --arguments.Depth < 0) {
      return;
    } else if (c == ',' && !arguments.InQuote && arguments.Depth == 0) {
      arguments.Text[++arguments.Count].clear();  // argument 21 faults here
    } else {
      if (c == '(' && !arguments.InQuote) ++arguments.Depth;
      text += c;
    }
  }

  void ExpandArguments(Arguments& arguments) {
    const auto isConditional = [](const std::string& text) { return text == "IF" || text == "EVAL"; };
    const bool firstIsExpression = isConditional(name_) || isConditional(value_);
    for (int16 i = 1; i <= arguments.Count && error_.empty(); ++i) {
      if (!arguments.Expand[static_cast<std::size_t>(i)]) continue;
      const int16 flags = i == 1 && firstIsExpression ? static_cast<int16>(flags_ | ExpressionMode) : flags_;
      arguments.Text[i] = expansion_.ExplodeVariable(std::move(arguments.Text[i]), error_, rvar_, flags, -1);
    }
  }

  Expansion& expansion_;
  std::string_view in_;
  std::string& error_;
  const Parameters& rvar_;
  int16 flags_;
  OwnerId owner_;

  std::string out_;
  std::size_t position_ = 0;
  bool inName_ = false;
  Kind kind_ = Kind::Variable;
  std::size_t start_ = 0;  // where the prefix stands in out_
  std::string name_;
  std::string value_;  // the last value of this pass
  int32 braces_ = 0;
};

bool Expansion::IsPlain(const std::string& part) const {
  const std::array<char, 3> special{options_.VariableChar, '%', options_.EscapeChar};
  return part.find_first_of(special.data(), 0, special.size()) == std::string::npos;
}

std::string Expansion::ExplodeVariable(std::string part, std::string& ErrorDescription, const Parameters& rvar,
                                       int16 flags, OwnerId Owner) {
  if (IsPlain(part)) return part;
  if (depth_ >= DeepestExpansion) {
    ErrorDescription = "Variables and function calls are nested too deeply";
    return "";
  }
  struct Level {
    explicit Level(int& depth) : Depth(depth) { ++Depth; }
    ~Level() { --Depth; }
    int& Depth;
  } level(depth_);
  return Pass(*this, part, ErrorDescription, rvar, flags, Owner < 0 ? state_.CurrentOwner : Owner).Run();
}

}  // namespace corvid
