// SPDX-License-Identifier: GPL-3.0-or-later
// Checks of values that commands and functions share.
#pragma once

#include <string>
#include <string_view>

#include "core/table.h"
#include "core/types.h"

namespace corvid {

class Symbols;

// A number of a command's parameter, within MinVal and MaxVal; otherwise ErrorDescription is set and the result 0. Does
// nothing when ErrorDescription is set already. parameter is the number of the part, one above what a player counts.
int32 ValidValue(std::string_view t, int16 parameter, int32 MinVal, int32 MaxVal, std::string& ErrorDescription);

// Bits of flags for lookup.
namespace lookupflag {
inline constexpr int16 FreeRow = 1;    // an empty row does when the text is nowhere
inline constexpr int16 ClassIsOn = 2;  // rows count only while the class CString is on for Owner
}  // namespace lookupflag

// The row from 1 to MaxTable that equals SString without regard to case, or 0.
int32 lookup(const Table<std::string>& table, int32 MaxTable, std::string_view SString, std::string_view CString,
             int16 flags, const Symbols& symbols, OwnerId Owner);

int16 ConvertToInteger(int32 x);  // what does not fit 16 bits is a Fault of kind Overflow

}  // namespace corvid
