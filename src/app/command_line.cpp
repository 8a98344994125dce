// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/command_line.h"

#include <optional>

#include "core/text.h"

namespace corvid {

namespace {

// Walks the arguments, one name with its value at a time.
class Reader {
 public:
  explicit Reader(const std::vector<std::string>& arguments) : arguments_(arguments) {}

  bool Next() {
    if (at_ >= arguments_.size()) return false;
    name = arguments_[at_++];
    inlineValue_.reset();
    const std::size_t equals = name.find('=');
    if (name.starts_with("--") && equals != std::string::npos) {
      inlineValue_ = name.substr(equals + 1);
      name.resize(equals);
    }
    return true;
  }

  std::optional<std::string> Value() {
    if (inlineValue_) return inlineValue_;
    if (at_ >= arguments_.size()) return std::nullopt;
    return arguments_[at_++];
  }

  std::string name;

 private:
  const std::vector<std::string>& arguments_;
  std::size_t at_ = 0;
  std::optional<std::string> inlineValue_;
};

bool ReadFace(const std::string& word, CommandLine& line) {
  line.UiGiven = true;
  if (word == "desktop") {
    line.Ui = FaceKind::Desktop;
  } else if (word == "console") {
    line.Ui = FaceKind::Console;
  } else if (word == "json") {
    line.Ui = FaceKind::Json;
  } else {
    line.Problem = "--ui takes desktop, console or json, not \"" + word + "\".";
    return false;
  }
  return true;
}

bool ReadSwitch(const std::string& name, CommandLine& line) {
  if (name == "--practice") return line.Practice = true;
  if (name == "--version") return line.Version = true;
  if (name == "--help" || name == "-h") return line.Help = true;
  return false;
}

}  // namespace

CommandLine ParseCommandLine(const std::vector<std::string>& arguments) {
  CommandLine line;
  Reader reader(arguments);
  while (line.Problem.empty() && reader.Next()) {
    const std::string name = reader.name;
    if (ReadSwitch(name, line)) continue;
    if (name != "--ui" && name != "--data" && name != "--connect" && name != "--events") {
      line.Problem = "There is no option \"" + name + "\".";
      break;
    }
    const std::optional<std::string> value = reader.Value();
    if (!value || value->empty()) {
      line.Problem = name + " needs a value.";
    } else if (name == "--ui") {
      ReadFace(*value, line);
    } else if (name == "--data") {
      line.DataFolder = *value;
    } else if (name == "--connect") {
      line.Connect = *value;
    } else {
      line.JsonEventsGiven = true;
      line.JsonEvents = Split(*value, ",");
    }
  }
  return line;
}

std::string HelpText() {
  return "corvid: a client for text games, for players who hear them\n"
         "\n"
         "  --ui desktop|console|json  the window (the usual one), lines on a terminal, or events for other programs\n"
         "  --data FOLDER              the player's files for this run; nothing is stored about it\n"
         "  --connect REFERENCE        connects the character with this reference at once\n"
         "  --practice                 plays the practice game that comes with Corvid\n"
         "  --events a,b,c             json only: the events to print, \"none\" for none but ready and exit\n"
         "  --version                  tells the version\n"
         "  --help                     tells this\n";
}

}  // namespace corvid
