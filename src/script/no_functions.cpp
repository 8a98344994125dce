// SPDX-License-Identifier: GPL-3.0-or-later
#include "script/function_library.h"

namespace corvid {

std::string NoFunctions::ExecuteFunction(const std::string& functionName, FunctionArguments&, int16,
                                         std::string& ErrorDescription, OwnerId, Expansion&) {
  ErrorDescription = "Functions are not built yet: " + functionName;
  return "";
}

}  // namespace corvid
