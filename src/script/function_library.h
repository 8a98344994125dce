// SPDX-License-Identifier: GPL-3.0-or-later
// The functions that scripts call as "%NAME(arguments)", as the expansion sees them.
#pragma once

#include <array>
#include <string>

#include "core/fault.h"
#include "core/types.h"

namespace corvid {

class Expansion;

// Arguments 1 to 20; slot 0 is not used. A slot outside 0 to 20 is a Fault of kind Index.
class FunctionArguments {
 public:
  static constexpr int32 Highest = 20;

  std::string& operator[](int32 slot) {
    Check(slot);
    return slots_[static_cast<std::size_t>(slot)];
  }
  const std::string& operator[](int32 slot) const {
    Check(slot);
    return slots_[static_cast<std::size_t>(slot)];
  }

 private:
  static void Check(int32 slot) {
    if (slot < 0 || slot > Highest) throw Fault(FaultKind::Index, "A function has no argument " + std::to_string(slot));
  }
  std::array<std::string, Highest + 1> slots_;
};

class FunctionLibrary {
 public:
  virtual ~FunctionLibrary() = default;
  // The result of the function, empty when ErrorDescription is set. parameter[1] to parameter[parameters] are its
  // arguments, tempOwner the owner of the caller, expansion the caller, for functions that expand text themselves. May
  // pump events.
  virtual std::string ExecuteFunction(const std::string& functionName, FunctionArguments& parameter, int16 parameters,
                                      std::string& ErrorDescription, OwnerId tempOwner, Expansion& expansion) = 0;
};

}  // namespace corvid
