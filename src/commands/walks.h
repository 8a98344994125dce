// SPDX-License-Identifier: GPL-3.0-or-later
// Walking: an alias whose name begins with "." is a path through the game. It is walked at once or, with SLOWWALK, a
// step for each OK.
#pragma once

#include <string>

#include "commands/command_call.h"

namespace corvid {

namespace walkstate {  // WalkState of a session
inline constexpr int16 Idle = 0, Playing = 1, Recording = 2;
inline constexpr int16 Paused = 4;  // a bit beside the others
}  // namespace walkstate

// Walks body in the call's session: all of it, or its first step in a slow walk. What it leads to stands in call.next,
// as for any alias; definedIn is the script buffer that an error is told with. May pump events.
void CallWalk(CommandCall& call, const std::string& body, bool backwards, int16 definedIn);

// The next step of a slow walk that is under way and not paused. A step that is a command runs together with the step
// behind it, so each call lets the player go one step. May pump events.
void WalkOn(CommandCall& call);

// Switches off what scripts tie to a recording or a walk of the character: the classes "Recording" and "playback".
void DeleteWalkClasses(CommandHouse& house, OwnerId owner);

}  // namespace corvid
