// SPDX-License-Identifier: GPL-3.0-or-later
// One command of a line on its way through the program: what its handler gets, and what the handler answers.
#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "core/parameters.h"
#include "core/types.h"
#include "core/upcalls.h"
#include "files/buffer_state.h"
#include "input/keyboard_state.h"
#include "platform/platform.h"
#include "script/options_state.h"
#include "script/parsed_command.h"
#include "script/script_state.h"
#include "sessions/session_state.h"
#include "speech/speech_state.h"

namespace corvid {

class Alarms;
class Buffers;
class DataFiles;
class Debugger;
class Expansion;
class ExpressionEvaluator;
class Logs;
class Menus;
class Music;
class OutputWindows;
class Scanner;
class Sessions;
class Sound;
class Speech;
class Symbols;
class VariableList;
struct CommandRow;
struct ControlState;
struct MusicState;

// All that a command may reach: the tables, and the routines of the floors below.
struct CommandHouse {
  ScriptState& script;
  OptionsState& options;
  BufferState& buffers;
  SessionState& sessions;
  KeyboardState& keyboard;
  ControlState& control;
  Symbols& symbols;
  Scanner& scanner;
  Expansion& expansion;
  ExpressionEvaluator& expressions;
  Buffers& scriptFiles;
  Sessions& sessionRoutines;
  OutputWindows& windows;
  Logs& logs;
  Alarms& alarms;
  DataFiles& dataFiles;
  Platform& platform;
  Upcalls& upcalls;
  SpeechState& speechSettings;
  Speech& speech;
  Menus& menus;
  Sound& sound;
  MusicState& musicState;
  Music& music;
  Debugger& debugger;
  VariableList& variables;
};

// What comes after a command.
enum class Flow {
  NextCommand,  // the rest of the line
  Leave,        // back to the caller, ErrorDescription as it is
  Trace,        // a nested line failed and has told so: add this line to the trail in the error log, then leave
  Report        // this command failed: report ErrorDescription (be it empty), then leave
};

// The references are to the running ProcessCommand call: valid as long as the handler runs, over event pumps too. Rows
// of tables are not.
struct CommandCall {
  CommandHouse& house;
  const CommandRow* row;  // nullptr for text that is no command
  ParsedCommand& P;       // P[1] the command word, P[2] its first parameter
  int16 part;             // how many parts there are, the command word included
  int16& options;
  std::string& ErrorDescription;
  Parameters& rvar;
  int16& outchannel;
  OwnerId owner;            // character of the session
  OwnerId definitionOwner;  // the same, or 0 behind the "G" prefix
  const std::string& inlineText;
  Flow next = Flow::NextCommand;
  std::string_view current = {};  // the line from this command on, as an error shows it; valid while the handler runs

  int16 count() const { return static_cast<int16>(part - 1); }
  bool checkOnly() const { return (options & option::CheckOnly) != 0; }
  bool has(int16 bit) const { return (options & bit) != 0; }

  void fail(std::string text) {
    ErrorDescription = std::move(text);
    next = Flow::Report;
  }
};

// Expands every parameter but the one at leaveRaw (a place in P, 0 for none). False when one failed: call is then set
// to report it, and the handler returns. May pump events.
bool ExpandParameters(CommandCall& call, int16 leaveRaw = 0);
// The same for one text. flags as ExplodeVariable takes them.
bool ExpandText(CommandCall& call, std::string& text, int16 flags = 0);

// The command as an error shows it: with the line that it is part of.
std::string ShownLine(std::string_view current, const std::string& inlineText);
// Reports an error of a command that carries on all the same; ErrorDescription is empty afterwards. May pump events.
void ReportAndGoOn(CommandCall& call, const std::string& problem);

// When a nested line gives its level of CommandDepth back.
enum class DepthBack {
  BeforeAborts,
  AfterAborts,  // a level that ABORT left keeps its count
  Never
};

// Runs a line inside this one and looks at how it ended. False when this handler must return: call.next is set. May
// pump events; body must not be a row of a table.
bool RunNested(CommandCall& call, const std::string& body, Parameters& rvar, int16& channel, DepthBack back);
// In check mode: whether a body would parse. Its level of CommandDepth is not given back.
bool CheckNested(CommandCall& call, const std::string& body);
// ABORT's two bits after a call that may have run scripts. False: the handler returns.
bool HonourAborts(CommandCall& call);

}  // namespace corvid
