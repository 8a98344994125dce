// SPDX-License-Identifier: GPL-3.0-or-later
// The parts of one statement: [1] the command word, [2] its first parameter, and so on.
#pragma once

#include <array>
#include <deque>
#include <memory>
#include <string>

#include "core/fault.h"
#include "core/types.h"

namespace corvid {

// Parts 0 to 1000 exist and are empty until they are set; part 1001 is a Fault of kind Index. A reference to a part
// stays valid until Clear. Few parts cost no memory from the heap: each command and each nested block makes one of
// these.
class ParsedCommand {
 public:
  static constexpr int32 Highest = 1000;

  std::string& operator[](int32 part) {
    Check(part);
    if (part < Near) return near_[static_cast<std::size_t>(part)];
    if (!far_) far_ = std::make_unique<std::deque<std::string>>();
    const auto place = static_cast<std::size_t>(part - Near);
    while (far_->size() <= place) far_->emplace_back();
    return (*far_)[place];
  }
  const std::string& operator[](int32 part) const {
    static const std::string empty;
    Check(part);
    if (part < Near) return near_[static_cast<std::size_t>(part)];
    const auto place = static_cast<std::size_t>(part - Near);
    return far_ && place < far_->size() ? (*far_)[place] : empty;
  }
  void Clear() {
    for (std::string& part : near_) part.clear();
    far_.reset();
  }

 private:
  static constexpr int32 Near = 8;
  static void Check(int32 part) {
    if (part < 0 || part > Highest) throw Fault(FaultKind::Index, "A statement has no part " + std::to_string(part));
  }
  std::array<std::string, Near> near_;
  std::unique_ptr<std::deque<std::string>> far_;  // a deque: growing it moves no part
};

}  // namespace corvid
