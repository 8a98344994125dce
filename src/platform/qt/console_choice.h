// SPDX-License-Identifier: GPL-3.0-or-later
// Reading typed choices.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvid {

// The number, when text is nothing but one; blanks around it do not count.
std::optional<int> WholeNumber(std::string_view text);
// Which of words line names: by number from 1, by its whole words, or by a beginning that only one has. From 0; -1 for
// none.
int ChoiceOf(const std::vector<std::string>& words, const std::string& line);

// While it lives the flag is set; afterwards it is as it was.
class Acting {
 public:
  explicit Acting(bool& flag) : flag_(flag), before_(std::exchange(flag, true)) {}
  Acting(const Acting&) = delete;
  Acting& operator=(const Acting&) = delete;
  ~Acting() { flag_ = before_; }

 private:
  bool& flag_;
  bool before_;
};

}  // namespace corvid
