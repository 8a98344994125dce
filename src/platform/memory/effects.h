// SPDX-License-Identifier: GPL-3.0-or-later
// What the program did, in order, as a test reads it: "speech" "1 Bob shouts", "send" "0 look", "beep" "".
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace corvid {

struct Effect {
  std::string Kind;
  std::string Text;
  bool operator==(const Effect&) const = default;
};

class EffectLog {
 public:
  void Add(std::string kind, std::string text) { effects_.push_back({std::move(kind), std::move(text)}); }
  const std::vector<Effect>& All() const { return effects_; }
  // Texts of one kind, in order.
  std::vector<std::string> Of(const std::string& kind) const;
  // One per line as "kind text"; kinds given in leaveOut are skipped.
  std::string Transcript(const std::vector<std::string>& leaveOut = {}) const;
  void Clear() { effects_.clear(); }

 private:
  std::vector<Effect> effects_;
};

}  // namespace corvid
