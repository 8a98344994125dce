// SPDX-License-Identifier: GPL-3.0-or-later
// The last resort of a routine that must go on: each step runs, and a fault in one is logged under the procedure's
// name.
#pragma once

#include <exception>
#include <string>
#include <utility>
#include <vector>

#include "core/fault.h"
#include "core/upcalls.h"

namespace corvid {

class Trap {
 public:
  Trap(ErrorSink& errors, std::string procedure, std::vector<std::string> parameters = {})
      : errors_(errors), procedure_(std::move(procedure)), parameters_(std::move(parameters)) {}

  // Runs work; a Fault or another standard exception is handed to UnknownError. False if there was one.
  template <typename Work>
  bool Step(Work&& work) {
    try {
      std::forward<Work>(work)();
      return true;
    } catch (const std::exception& fault) {
      errors_.UnknownError(fault.what(), procedure_, parameters_);
      return false;
    }
  }

 private:
  ErrorSink& errors_;
  std::string procedure_;
  std::vector<std::string> parameters_;
};

}  // namespace corvid
