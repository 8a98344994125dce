// SPDX-License-Identifier: GPL-3.0-or-later
// Numbers as the language reads, rounds and writes them.
#pragma once

#include <string>
#include <string_view>

#include "core/types.h"

namespace corvid {

// True when the whole text, blanks around it allowed, is a decimal number: sign, digits, point, exponent.
bool IsNumeric(std::string_view text);
// The number at the start of the text, 0 if there is none ("12abc" gives 12). Leading blanks are skipped. A number that
// no double can hold is a Fault of kind Overflow.
double Val(std::string_view text);
// Halves are rounded to even; a value outside 16 (or 32) bits is a Fault of kind Overflow.
int16 ToInt16(double value);
int32 ToInt32(double value);
// Text to a number by IsNumeric; other text is a Fault of kind Type.
double ToNumber(std::string_view text);
float ToFloat(double value);              // Fault of kind Overflow outside 32-bit floats
int16 AddInt16(int16 a, int16 b);         // Fault of kind Overflow instead of a wrap
std::string NumberText(double value);     // shortest form that reads back the same; whole below 1E15 in full
std::string PrintedNumber(double value);  // blank or minus in front, blank behind: the form of numbers printed to files

}  // namespace corvid
