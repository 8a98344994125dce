// SPDX-License-Identifier: GPL-3.0-or-later
// What the program is asked to do on its command line.
#pragma once

#include <string>
#include <vector>

namespace corvid {

enum class FaceKind { Desktop, Console, Json };

struct CommandLine {
  FaceKind Ui = FaceKind::Desktop;
  bool UiGiven = false;
  std::string DataFolder;  // empty: the stored one
  std::string Connect;     // reference of a character; empty: none
  bool Practice = false;
  bool Version = false;
  bool Help = false;
  std::vector<std::string> JsonEvents;  // names of events that the json face prints
  bool JsonEventsGiven = false;         // false: all of them
  std::string Problem;                  // not empty: the command line is wrong, this says why
};

// arguments without the program's own name. "--name value" and "--name=value" are the same.
CommandLine ParseCommandLine(const std::vector<std::string>& arguments);
std::string HelpText();

}  // namespace corvid
