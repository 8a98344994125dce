// SPDX-License-Identifier: GPL-3.0-or-later
// The parameters of a running alias or trigger: %0 the whole text, %1 to %99 its pieces.
#pragma once

#include <array>
#include <memory>
#include <string>

#include "core/fault.h"
#include "core/types.h"

namespace corvid {

// Slots that were never set read as empty text. A slot outside 0..99 is a Fault of kind Index.
class Parameters {
 public:
  static constexpr int16 Slots = 100;

  const std::string& operator[](int32 slot) const {
    static const std::string empty;
    Check(slot);
    return slots_ ? (*slots_)[static_cast<std::size_t>(slot)] : empty;
  }
  void Set(int32 slot, std::string text) {
    Check(slot);
    if (!slots_) slots_ = std::make_unique<std::array<std::string, Slots>>();
    (*slots_)[static_cast<std::size_t>(slot)] = std::move(text);
  }
  void Clear() { slots_.reset(); }

 private:
  static void Check(int32 slot) {
    if (slot < 0 || slot >= Slots)
      throw Fault(FaultKind::Index, "Parameter " + std::to_string(slot) + " is outside 0 to 99");
  }
  std::unique_ptr<std::array<std::string, Slots>> slots_;  // made on first use: most lines have no parameter
};

}  // namespace corvid
