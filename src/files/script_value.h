// SPDX-License-Identifier: GPL-3.0-or-later
// Any text as the inside of braces in a saved script line.
#pragma once

#include <string>

#include "script/options_state.h"

namespace corvid {

// The value itself nearly always. A value may be anything, a game's text among it: where its braces, comments, escapes
// or expansions would make the line mean something else (or run as a command), the characters are escaped; the command
// that reads the line takes the escapes away again. Blank lines, blanks at a line's end and tabs do not survive a load.
std::string ScriptValue(const std::string& value, const OptionsState& options);

}  // namespace corvid
