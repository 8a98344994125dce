// SPDX-License-Identifier: GPL-3.0-or-later
// From what a player writes as a trigger's search string to the pattern that lines are tested against.
#pragma once

#include <string>

#include "core/types.h"

namespace corvid {

struct OptionsState;
struct ScriptState;

// The pattern, with Parts and Names of trigger row Index filled. In a search string "<name>" in front is left out, the
// escape character takes the meaning of the next one away from the cutting into parts (but not from the pattern), "&x"
// and "&{x}" are a "*" whose text goes to the variable x, and "[x]" is the literal x. ErrorDescription set means
// failure; the result is empty then. More than 30 parts are a Fault of kind Index.
std::string ConvertSearchString(ScriptState& state, const OptionsState& options, const std::string& instring2,
                                int16 Index, std::string& ErrorDescription);

// The pattern of "[Bright] colour [On background]", for the tags of a line. Empty with ErrorDescription set on failure.
std::string ConvertColourString(const ScriptState& state, const std::string& searchText, std::string& ErrorDescription);

}  // namespace corvid
