// SPDX-License-Identifier: GPL-3.0-or-later
// What every fuzz program has: the entry, and a check that holds in any build.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace corvid::fuzz {

inline void Require(bool holds, std::string_view what) {
  if (holds) return;
  std::cerr << "does not hold: " << what << '\n';
  std::abort();
}

inline std::string_view Text(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

}  // namespace corvid::fuzz
