// SPDX-License-Identifier: GPL-3.0-or-later
// Stand-ins for the floors above the script language: they note what they are asked.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "core/upcalls.h"
#include "script/options_state.h"
#include "script/scanner.h"
#include "script/script_state.h"
#include "script/symbols.h"

namespace corvid::testing_script {

struct RanCommand {
  std::string Text;
  int16 Options;
  int16 Outchannel;
  bool operator==(const RanCommand&) const = default;
};

class RecordingRunner : public CommandRunner {
 public:
  void ProcessCommand(const std::string& inlineText, int16& options, std::string& ErrorDescription, Parameters& rvar,
                      int16& outchannel) override {
    Ran.push_back({inlineText, options, outchannel});
    HadParameters = HadParameters || !rvar[0].empty() || !rvar[1].empty();
    if (Failures.count(inlineText) != 0) ErrorDescription = Failures[inlineText];
    if (OnRun) OnRun(inlineText, rvar);
  }
  void SortTriggers() override { ++Sorts; }

  std::vector<std::string> Texts() const {
    std::vector<std::string> texts;
    for (const RanCommand& ran : Ran) texts.push_back(ran.Text);
    return texts;
  }

  std::vector<RanCommand> Ran;
  std::map<std::string, std::string> Failures;  // error text of a command
  std::function<void(const std::string&, Parameters&)> OnRun;
  bool HadParameters = false;
  int Sorts = 0;
};

class RecordingErrors : public ErrorSink {
 public:
  void ErrorReport(const std::string& ErrorDescription, const std::string& line, int errorCode, int16 flags) override {
    Reports.push_back(ErrorDescription + " | " + line + " | " + std::to_string(errorCode) + " | " +
                      std::to_string(flags));
  }
  void DisplayErrorFile(const std::string& ErrorDescription, int16) override { Other.push_back(ErrorDescription); }
  void ShowError(const std::string& strError) override { Other.push_back(strError); }
  void writeError(const std::string& ErrMes) override { Other.push_back(ErrMes); }
  void ErrorDisplay(const std::string& mes) override { Other.push_back(mes); }
  void UnknownError(const std::string&, const std::string& procedure,
                    const std::vector<std::string>& parameters) override {
    Unknown.push_back(procedure + ": " + (parameters.empty() ? "" : parameters.front()));
  }

  std::vector<std::string> Reports;
  std::vector<std::string> Unknown;
  std::vector<std::string> Other;
};

// The script floor with nothing above it.
struct Script {
  ScriptState state;
  OptionsState options;
  RecordingRunner runner;
  RecordingErrors errors;
  Symbols symbols{state, runner};
  Scanner scanner{state, options, symbols, runner, errors};

  void Set(const std::string& name, const std::string& value, OwnerId owner = 0) {
    std::string error;
    symbols.AddVariable(name, value, owner, error);
  }
  // "(none)" for no row.
  std::string Get(const std::string& name, OwnerId owner = 0) {
    std::string value;
    return symbols.FindVariable(name, value, owner) == 0 ? "(none)" : value;
  }
};

using Texts = std::vector<std::string>;

}  // namespace corvid::testing_script
