// SPDX-License-Identifier: GPL-3.0-or-later
// The lists in which the player marks the triggers and aliases that stop a script.
#pragma once

namespace corvid {

class GenDialog;
struct ScriptState;

// Each shows what belongs to the character in force and to all, and writes the marks when the player presses OK. A
// definition that has gone meanwhile is passed over, one that has moved keeps its mark. May pump events.
void SelectTriggerBreakpoints(GenDialog& dialog, ScriptState& script);
void SelectAliasBreakpoints(GenDialog& dialog, ScriptState& script);

}  // namespace corvid
