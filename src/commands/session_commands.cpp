// SPDX-License-Identifier: GPL-3.0-or-later
// Script files and the end of things: LOAD, UNLOAD, EDIT, SAVE, RESET, QUIT and KILLALL.
#include "commands/command_call.h"
#include "commands/file_operations.h"
#include "commands/handlers.h"
#include "core/text.h"
#include "core/trap.h"
#include "files/buffers.h"
#include "script/symbols.h"
#include "sessions/logs.h"
#include "sessions/output.h"
#include "sessions/session.h"

namespace corvid {

namespace {

struct LoadKeywords {
  bool NoExecute = false;
  bool NoRemove = false;
};

bool ReadLoadKeywords(CommandCall& call, LoadKeywords& keywords) {
  bool good = true;
  for (const std::string& word : Split(call.P[3], "|")) {
    if (SameText(word, "NOEXECUTE")) {
      keywords.NoExecute = true;
    } else if (SameText(word, "NOREMOVE")) {
      keywords.NoRemove = true;
    } else {
      good = false;
    }
  }
  if (!good) call.fail("Third parameter must be NoExecute or NoRemove if included");
  return good;
}

void FileCommand(CommandCall& call, std::string_view operation) {
  if (call.checkOnly() || !ExpandParameters(call)) return;
  FileOperations(call.house).Run(operation, call.P[2], call.ErrorDescription, "", "", call.outchannel);  // PUMP
  if (!call.ErrorDescription.empty()) call.next = Flow::Report;
}

void EndSession(CommandHouse& house, int16 session) {
  house.sessions.SessionRef[session].clear();
  if (house.platform.sockets.Connected(session)) house.sessionRoutines.DropConnection(session);
  house.sessions.SessionRef[session].clear();
  house.windows.ClearViewports(session);
  // A disk that refuses the last lines of one log must not keep the other sessions open.
  Trap trap(house.upcalls.errors, "killall", {std::to_string(session)});
  if (house.sessions.LogOpen[session] != 0) trap.Step([&] { house.logs.CloseLog(session); });
}

void KillEverything(CommandHouse& house) {
  for (int16 i = 0; i <= house.sessions.SessionHigh; ++i) EndSession(house, i);
  ScriptState& script = house.script;
  script.VariableCount = 0;
  script.TriggerCount = script.MacroCount = script.AliasCount = 0;
  script.ClassCount = script.AbbreviationCount = script.TabWordCount = 0;
  script.Triggers.Resize(0);
  ++script.ClassVersion;
  house.upcalls.screens.InitializeConfigs();  // PUMP
}

}  // namespace

void handler::Load(CommandCall& call) {
  if (call.checkOnly() || !ExpandParameters(call)) return;
  LoadKeywords keywords;
  if (!ReadLoadKeywords(call, keywords)) return;
  const int16 defining = call.house.script.DefiningBuffer;
  FileOperations(call.house)
      .Run(keywords.NoExecute ? fileoperation::Check : fileoperation::Load, call.P[2], call.ErrorDescription,
           keywords.NoRemove ? "NoRemove" : "", "", call.outchannel);  // PUMP
  call.house.script.DefiningBuffer = defining;
  // Kept: a failed check is not reported, its text goes on to the caller.
  if (!call.ErrorDescription.empty() && !keywords.NoExecute) call.next = Flow::Report;
}

void handler::Unload(CommandCall& call) {
  FileCommand(call, fileoperation::Unload);
}

void handler::Edit(CommandCall& call) {
  FileCommand(call, fileoperation::Edit);
}

void handler::Save(CommandCall& call) {
  if (call.checkOnly()) return;
  Buffers& files = call.house.scriptFiles;
  if (call.count() > 0) {
    if (SameText(call.P[2], "VARIABLES")) {
      if (!call.P[3].empty()) call.fail("Filename not allowed with the \"Variables\" parameter.");
    } else if (!SameText(call.P[2], "CHARACTER") && !SameText(call.P[2], "FULL")) {
      call.fail("Save's parameter can only be Variables, Character or Full");
    }
    return;  // Kept: the three forms are reserved and save nothing.
  }
  files.SaveCurrentBuffer();
  for (int16 i = buffer::FirstScript; i <= call.house.buffers.BufferCount; ++i)
    if ((call.house.buffers.BufferFlags[i] & buffer::Modified) != 0) files.SaveBuffer(i);
}

void handler::Reset(CommandCall& call) {
  if (call.checkOnly()) return;
  ScriptState& script = call.house.script;
  const bool all = SameText(call.P[2], "ALL");
  for (int32 i = 1; i <= script.VariableCount; ++i) {
    // Kept: the word is tested only while there is a variable.
    if (!all && !call.P[2].empty()) return call.fail("Reset's parameter can only be blank or \"All\"");
    if (all || script.VariableOwners[i] == call.owner) script.VariableValues[i] = script.VariableDefaults[i];
  }
}

void handler::Quit(CommandCall& call) {
  if (!call.checkOnly()) call.house.upcalls.screens.quit(false);
}

void handler::KillAll(CommandCall& call) {
  if (call.checkOnly()) return;
  CommandHouse& house = call.house;
  if (call.count() == 0) return KillEverything(house);
  if (!ExpandParameters(call)) return;
  for (int16 i = 0; i <= house.sessions.SessionHigh; ++i) {
    if (!SameText(house.sessions.SessionRef[i], call.P[2])) continue;
    if (!house.sessionRoutines.RemoveCharacter(house.script.SocketOwner[i])) return;  // PUMP; the player knows
    house.symbols.CompressCommand(windowtype::All);
    return;
  }
}

}  // namespace corvid
