// SPDX-License-Identifier: GPL-3.0-or-later
// Commands that a dialog or a menu runs for the player.
#pragma once

#include <string>

#include "core/upcalls.h"
#include "script/options_state.h"
#include "script/script_state.h"

namespace corvid {

// Runs a command as an outer source in the current session; the command character is put before it. flags as
// ProcessCommand takes them. Gives the error text, empty when it worked. May pump events.
std::string RunOuterCommand(ScriptState& script, const OptionsState& options, Upcalls& upcalls,
                            const std::string& command, int16 flags);

}  // namespace corvid
