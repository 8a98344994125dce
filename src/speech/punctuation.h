// SPDX-License-Identifier: GPL-3.0-or-later
// How single characters are spoken, and which key of a US keyboard types them.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "core/types.h"

namespace corvid {

struct PunctuationRow {
  int16 KeyCode;          // plus ShiftedKey when Shift is needed
  std::string_view Text;  // the character
  std::string_view Name;  // its spoken name; empty: it is read by itself
};

inline constexpr int16 ShiftedKey = 1000;

std::span<const PunctuationRow> PunctuationTable();
// The spoken name of a character (one whole UTF-8 character), or the character itself.
std::string SpokenCharacter(std::string_view character);
// What a key types: Shift 0 or 1. Empty when the table has no such key.
std::string TypedCharacter(int16 KeyCode, int16 Shift);
// What a key types, as it is spoken: Shift 0 or 1. Empty when the table has no such key.
std::string SayCharacter(int16 KeyCode, int16 Shift);

}  // namespace corvid
