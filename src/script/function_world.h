// SPDX-License-Identifier: GPL-3.0-or-later
// What the functions of the language look at and change.
#pragma once

#include <functional>
#include <random>

#include "core/types.h"

namespace corvid {

class ExpressionEvaluator;
class Prompter;
class Sockets;
class Symbols;
struct ScriptState;
struct SessionState;

struct FunctionWorld {
  ScriptState& state;
  const Symbols& symbols;
  const ExpressionEvaluator& expressions;
  const SessionState& sessions;
  const Sockets& sockets;
  Prompter& prompter;
  // True when the script's data file of that number, 1 to 10, is not open or is read to its end; a number outside is a
  // Fault.
  std::function<bool(int32)> endOfFile;
  std::mt19937 random{std::random_device()()};
};

}  // namespace corvid
