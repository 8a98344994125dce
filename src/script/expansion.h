// SPDX-License-Identifier: GPL-3.0-or-later
// Variables, parameters, system variables and function calls in a text become their values.
#pragma once

#include <functional>
#include <string>

#include "core/parameters.h"
#include "core/types.h"

namespace corvid {

class FunctionLibrary;
class Symbols;
struct OptionsState;
struct ScriptState;

// Bit of flags: the text goes to the expression evaluator, so values that are no numbers are put in double quotes.
inline constexpr int16 ExpressionMode = 1;

class Expansion {
 public:
  using Clipboard = std::function<std::string()>;

  // readClipboard is called for each %CLIPBOARD.
  Expansion(const ScriptState& state, const OptionsState& options, const Symbols& symbols, FunctionLibrary& functions,
            Clipboard readClipboard)
      : state_(state),
        options_(options),
        symbols_(symbols),
        functions_(functions),
        readClipboard_(std::move(readClipboard)) {}

  // The expanded text, in one pass: what was put in is not looked at again. ErrorDescription is empty on entry; set on
  // return it means failure, and the result is empty. An Owner below 0 means the CurrentOwner. A text without special
  // characters comes back as it is (hand it over with std::move and it is not copied). A function call of more than 20
  // arguments is a Fault of kind Index. May pump events (functions that open a dialog).
  std::string ExplodeVariable(std::string part, std::string& ErrorDescription, const Parameters& rvar, int16 flags,
                              OwnerId Owner);

 private:
  class Pass;

  bool IsPlain(const std::string& part) const;

  const ScriptState& state_;
  const OptionsState& options_;
  const Symbols& symbols_;
  FunctionLibrary& functions_;
  Clipboard readClipboard_;
  int depth_ = 0;  // nested calls now running
};

}  // namespace corvid
