// SPDX-License-Identifier: GPL-3.0-or-later
// The version of the program, as the build names it.
#pragma once

#include <string>

namespace corvid {

std::string DottedVersion();  // "1.4.0", for people
std::string VersionDigits();  // major, two digits of minor, three of revision: "104000", for scripts

}  // namespace corvid
