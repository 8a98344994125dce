// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/scramble.h"

namespace corvid {

namespace {

// A line end, and the pair that the shift would turn into one, stay as they are. The second exception is what makes
// the shift its own inverse for every text: no line end comes into being, and none is lost.
bool StaysAsItIs(std::string_view pair) {
  return pair == "\r\n" || pair == "\x8D\x8A";
}

}  // namespace

std::string Scramble(std::string_view text) {
  std::string result(text);
  for (std::size_t i = 0; i < result.size(); ++i) {
    if (StaysAsItIs(text.substr(i, 2))) {
      ++i;
    } else {
      result[i] = static_cast<char>(static_cast<unsigned char>(text[i]) ^ 0x80U);
    }
  }
  return result;
}

}  // namespace corvid
