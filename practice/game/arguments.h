// SPDX-License-Identifier: GPL-3.0-or-later
// The command line of corvid-practice.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace corvid::practice {

struct Arguments {
  std::uint16_t Port = 0;             // 0: any free port
  bool ParentExits = false;           // end when standard input ends
  std::optional<std::uint64_t> Seed;  // none: other throws at every start
  std::string Record;                 // a file for what is sent; empty: none
  bool Help = false;
  std::string Error;  // empty: the command line is good
};

Arguments ParseArguments(const std::vector<std::string>& words);  // without the program's name
std::string UsageText();

}  // namespace corvid::practice
