// SPDX-License-Identifier: GPL-3.0-or-later
// The function library of the language.
#pragma once

#include <string>
#include <utility>

#include "script/function_library.h"
#include "script/function_world.h"

namespace corvid {

class Functions : public FunctionLibrary {
 public:
  explicit Functions(FunctionWorld world) : world_(std::move(world)) {}

  // Case of the name does not matter. Errors: "Unknown function ", "Wrong number of arguments for function ", "Argument
  // n must be numeric in function " and "Error in one of the arguments in function ", each with the name.
  std::string ExecuteFunction(const std::string& functionName, FunctionArguments& parameter, int16 parameters,
                              std::string& ErrorDescription, OwnerId tempOwner, Expansion& expansion) override;

 private:
  FunctionWorld world_;
};

}  // namespace corvid
