// SPDX-License-Identifier: GPL-3.0-or-later
// What the json face is told: one JSON object a line.
#pragma once

#include <string>
#include <string_view>

#include "core/types.h"

namespace corvid {

struct JsonRequest {
  enum class Kind { Error, Line, Key, Down, Up, Type, Wait, Get, Select, Clipboard, Close };
  Kind What = Kind::Error;
  std::string Text;    // the line, the key's name, the text, what to get, the window; for Error what is wrong
  double Seconds = 0;  // Wait: 0 to 3600
  int16 Number = 0;    // Get of a buffer
  int32 Start = 0;     // Select
  int32 Length = 0;
  int16 KeyCode = 0;  // Key, Down, Up
  int16 Shift = 0;    // Key: the modifiers of its name
};

// Never fails: a line that is no request becomes one of kind Error.
JsonRequest ParseJsonRequest(std::string_view line);

}  // namespace corvid
