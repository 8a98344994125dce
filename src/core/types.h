// SPDX-License-Identifier: GPL-3.0-or-later
// Widths of the script language's numbers. Counts, options and session numbers are 16-bit, text positions 32-bit.
#pragma once

#include <cstdint>

namespace corvid {

using int16 = std::int16_t;
using int32 = std::int32_t;
using int64 = std::int64_t;

// Whose definition it is: 0 everybody's, above 0 a row of the character table, -1 (as an argument) the current owner.
using OwnerId = int16;

inline constexpr int16 CurrentSession = -2;  // an outchannel that means "the session in the foreground"
inline constexpr int16 MaxConnections = 20;  // highest session number; slot 0 is the start or offline slot

}  // namespace corvid
