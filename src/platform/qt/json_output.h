// SPDX-License-Identifier: GPL-3.0-or-later
// What the json face prints: one event a line, gathered and written out once per turn of the event loop.
#pragma once

#include <set>
#include <string>
#include <string_view>

#include "core/types.h"
#include "platform/qt/json_text.h"

namespace corvid {

class JsonOutput {
 public:
  // filter holds the names of the events to print, joined by ","; empty prints all of them and "none" none. "ready",
  // "exit", and "state" and "error", which answer an input, are always printed.
  JsonOutput(int descriptor, const std::string& filter);

  // The names in filter that are no event, joined by ", "; empty when all are known.
  static std::string UnknownEvents(const std::string& filter);

  // Ask before gathering what an event tells: a filtered event must cost nothing.
  bool Wants(std::string_view event) const;
  // Adds the line {"event":event, fields}. The event is printed whether wanted or not.
  void Print(std::string_view event, const JsonObject& fields);
  // Text that reached a viewport. What comes for one session without another event between is printed as one.
  void Display(int16 session, std::string_view text);
  // A beep; beeps with nothing between them are one.
  void Beep();
  // Writes out what was gathered. False once nobody reads any more.
  bool Flush();

 private:
  void EndDisplay();

  int descriptor_;
  bool all_;
  std::set<std::string, std::less<>> wanted_;
  std::string waiting_;
  int16 displaySession_ = -1;
  std::string display_;
  bool lastWasBeep_ = false;
  bool broken_ = false;
};

}  // namespace corvid
