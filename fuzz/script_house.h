// SPDX-License-Identifier: GPL-3.0-or-later
// The language alone: tables with a few definitions in them, expansion, sums and functions.
#pragma once

#include <string>
#include <vector>

#include "fuzz.h"
#include "platform/memory/memory_platform.h"
#include "script/expansion.h"
#include "script/expression.h"
#include "script/functions.h"
#include "script/options_state.h"
#include "script/script_state.h"
#include "script/symbols.h"
#include "sessions/session_state.h"
#include "support_upcalls.h"

namespace corvid::fuzz {

// A player who refuses everything.
class NoPrompter : public SilentPrompter {
 public:
  int16 MsgBox(const std::string&, int16, const std::string&) override { return box::ResultNo; }
};

struct ScriptHouse {
  ScriptHouse() {
    symbols.LoadSystemVariables();
    std::string error;
    symbols.AddVariable("a", "north|south", 0, error);
    symbols.AddVariable("b", "12", 1, error);
    symbols.AddVariable("list", "1|2|3", 1, error);
    symbols.AddVariable("long", std::string(300, 'x'), 0, error);
    sessions.SessionRef.Resize(1);
    sessions.SessionRef[1] = "bob";
    sessions.SessionHigh = 1;
    sessions.HistoryLines.Resize(1);
    sessions.HistoryPos.Resize(1);
    for (auto* column : {&sessions.CharacterRef, &sessions.CharacterName, &sessions.Password, &sessions.MudName})
      column->Resize(1);
    sessions.CharacterRef[1] = "bob";
  }

  MemoryPlatform memory;
  ScriptState script;
  OptionsState options;
  SessionState sessions;
  RecordingRunner runner{memory.effects};
  NoPrompter prompter;
  Symbols symbols{script, runner};
  ExpressionEvaluator expressions{options};
  Functions functions{{script, symbols, expressions, sessions, memory.sockets, prompter, [](int32 number) {
                         if (number < 1 || number > 10) throw Fault(FaultKind::Index, "no such file");
                         return true;
                       }}};
  Expansion expansion{script, options, symbols, functions, [] { return std::string("from elsewhere"); }};
};

}  // namespace corvid::fuzz
