// SPDX-License-Identifier: GPL-3.0-or-later
// The parameters of the command at which a script has stopped, to look at and to change.
#pragma once

namespace corvid {

class GenDialog;
class Parameters;

// What the player has changed goes into rvar with OK. May pump events.
void MaintainParameters(GenDialog& dialog, Parameters& rvar);

}  // namespace corvid
