// SPDX-License-Identifier: GPL-3.0-or-later
// Wildcard patterns: "?" one code, "*" any run, "#" one digit, "[abc]" "[a-z]" one of a set, "[!...]" none of it.
#pragma once

#include <string_view>

namespace corvid {

// Compares by code (upper-case both sides first where case must not matter). Never worse than pattern times text in
// time. A "[" without its "]" or a range that runs backward is a Fault of kind BadPattern (number 93), at the moment
// the comparison reaches it: a text that differs before gives false and no fault. "[]" matches no code and takes none;
// in a set a "-" that is first or last and a lone "!" stand for themselves, and so does "]" outside of one.
bool Like(std::string_view text, std::string_view pattern);

}  // namespace corvid
