// SPDX-License-Identifier: GPL-3.0-or-later
// Wildcard patterns: "?" one code, "*" any run, "#" one digit, "[abc]" "[a-z]" one of a set, "[!...]" none of it.
#pragma once

#include <string_view>

namespace corvid {

// Compares by code (upper-case both sides first where case must not matter). Never worse than pattern times text in
// time. A "[" without its "]" or a range that runs backward is a Fault of kind BadPattern (number 93).
bool Like(std::string_view text, std::string_view pattern);

}  // namespace corvid
