// SPDX-License-Identifier: GPL-3.0-or-later
// A walk as text: steps joined by the command separator. What is done with the steps of a recording, and how a walk is
// turned round.
#pragma once

#include <string>

#include "script/script_state.h"

namespace corvid {

struct RecordingWishes {
  bool DirectionsOnly = false;  // steps that are no direction of the table are left out
  bool Compress = false;        // so are two steps that undo each other
};

// The steps of a record buffer, ready for a definition: directions in upper case, no empty step, no separator at
// either end. A direction and its opposite cancel only where the table holds them in this order; so does, at the end of
// a recording, a direction whose opposite is empty.
std::string RecordedSteps(const AbbreviationTable& directions, const std::string& recorded,
                          const std::string& separator, const RecordingWishes& wishes);

// The last step first, each direction as its opposite. The first row of the table that has the direction counts; a step
// that no row has stays as it is.
std::string WalkBackwards(const AbbreviationTable& directions, const std::string& steps, const std::string& separator);

// The first step, taken off the front of steps with the separator behind it. more tells whether a separator was there.
std::string TakeStep(std::string& steps, const std::string& separator, bool& more);

}  // namespace corvid
