// SPDX-License-Identifier: GPL-3.0-or-later
// Stand-in for the function library, for tests of what calls it.
#pragma once

#include <string>

#include "script/function_library.h"

namespace corvid {

// For houses whose tests call no function: every call fails and tells so.
class NoFunctions : public FunctionLibrary {
 public:
  std::string ExecuteFunction(const std::string& functionName, FunctionArguments&, int16, std::string& ErrorDescription,
                              OwnerId, Expansion&) override {
    ErrorDescription = "This house has no function " + functionName;
    return "";
  }
};

}  // namespace corvid
