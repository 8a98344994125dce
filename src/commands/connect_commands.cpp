// SPDX-License-Identifier: GPL-3.0-or-later
// CONNECT, CHARACTER, OFFLINE and MUD: opening sessions and moving between them.
#include <algorithm>

#include "commands/command_call.h"
#include "commands/handlers.h"
#include "core/text.h"
#include "script/symbols.h"
#include "sessions/character_file.h"
#include "sessions/session.h"

namespace corvid {

namespace {

constexpr std::int64_t ConnectPatience = 3000;  // milliseconds for which the command waits for the connection

// Row of a reference in the character table, from the row first on; -1 for none.
int16 FindReference(const CharacterTable& table, const std::string& reference, int16 first) {
  for (int16 i = first; i <= table.CharacterCount; ++i)
    if (i <= table.CharacterRef.UBound() && SameText(table.CharacterRef[i], reference)) return i;
  return -1;
}

bool HasConnectedSession(const CommandHouse& house, const std::string& reference) {
  for (int16 i = 0; i <= house.sessions.SessionHigh; ++i)
    if (house.platform.sockets.Connected(i) && SameText(house.sessions.SessionRef[i], reference)) return true;
  return false;
}

// The reference that CONNECT is about. False when it failed.
bool ReferenceToConnect(CommandCall& call, std::string& reference, int16& mode) {
  if (call.count() > 0) {
    reference = call.P[2];
    return true;
  }
  reference = call.house.sessions.SessionRef[call.outchannel];
  if (reference.empty()) {
    call.fail("No current character -- reconnect aborted.");
    return false;
  }
  if (call.house.platform.sockets.Connected(call.outchannel)) {
    call.fail(Upper(reference) + " already connected.");
    return false;
  }
  mode = opening::SkipSets;
  return true;
}

// Lets the program run until the connection of the session stands, for three seconds at most. A slower server is not
// given up: its scripts are loaded when the socket says that it stands.
void AwaitConnection(CommandHouse& house, int16 session) {
  Platform& platform = house.platform;
  const std::int64_t deadline = platform.clock.MonotonicMilliseconds() + ConnectPatience;
  for (;;) {
    platform.events.DoEvents();  // PUMP
    if (platform.sockets.Connected(session)) return house.sessionRoutines.FinishConnect(session);
    const std::int64_t left = deadline - platform.clock.MonotonicMilliseconds();
    if (left <= 0 || platform.events.Ending() || !platform.sockets.Connecting(session)) return;
    platform.events.WaitEvents(static_cast<int>(left));  // PUMP
  }
}

// SetCharacter for a command with a reference; the session becomes the call's. False when the handler returns.
bool GoToCharacter(CommandCall& call, const std::string& reference, bool honourBlock) {
  int16 session = call.outchannel;
  call.house.sessionRoutines.SetCharacter(reference, call.options, call.ErrorDescription, call.rvar, session);  // PUMP
  if (call.ErrorDescription.empty()) call.outchannel = session;
  if (honourBlock) {
    if (!HonourAborts(call)) return false;
  } else if (call.has(option::AbortAll)) {
    call.next = Flow::Leave;
    return false;
  }
  if (call.ErrorDescription == "ER1") {
    call.fail("Character " + reference + " not found");
    return false;
  }
  if (call.ErrorDescription.empty()) return true;
  call.next = Flow::Trace;
  return false;
}

}  // namespace

void handler::Connect(CommandCall& call) {
  if (call.checkOnly() || !ExpandParameters(call)) return;
  CommandHouse& house = call.house;
  std::string reference;
  int16 mode = 0;
  if (!ReferenceToConnect(call, reference, mode)) return;
  const int16 row = FindReference(house.sessions, reference, 0);
  if (row < 0) return call.fail("Character reference not found in list");
  // A character that is connected already is only brought to the front: it keeps its session and its scripts.
  const bool standing = HasConnectedSession(house, reference);
  if (!standing && house.sessionRoutines.OpenMud(row, mode) < 0) return;  // PUMP; the player knows
  int16 options = option::Interactive;
  std::string problem;
  const int16 opened = house.script.CurrentSocket;
  int16 session = opened;
  house.sessionRoutines.SetCharacter(reference, options, problem, call.rvar, session);  // PUMP
  if (!problem.empty()) session = house.script.CurrentSocket;
  call.outchannel = session;
  if (!standing) AwaitConnection(house, opened);
}

void handler::Character(CommandCall& call) {
  if (call.checkOnly() || !ExpandParameters(call)) return;
  GoToCharacter(call, call.P[2], false);
}

void handler::Reload(CommandCall& call) {
  if (call.checkOnly()) return;
  CommandHouse& house = call.house;
  if (call.count() > 0 && (!ExpandParameters(call) || !GoToCharacter(call, call.P[2], true))) return;
  const OwnerId owner = house.script.SocketOwner[call.outchannel];
  // Without a character there is nothing to read again, and the definitions for everybody would only be lost.
  if (owner == 0) return;
  if (!house.sessionRoutines.RemoveCharacter(owner)) return;  // PUMP; the player knows
  house.symbols.CompressCommand(windowtype::All);
  house.sessionRoutines.LoadCharacterSets(call.outchannel, 0);  // PUMP
}

void handler::Offline(CommandCall& call) {
  if (call.checkOnly() || !ExpandParameters(call)) return;
  CommandHouse& house = call.house;
  int16 mode = opening::Offline;
  if (!call.P[3].empty()) {
    if (!SameText(call.P[3], "NOLOAD")) return call.fail("Invalid parameter after char-reference.");
    mode = opening::Offline | opening::SkipSets;
  }
  const int16 row = FindReference(house.sessions, call.P[2], 1);
  if (row < 0) return call.fail("Character reference not found in list");
  if (house.sessionRoutines.OpenMud(row, mode) > 0) return;  // PUMP
  const int16 session = house.sessionRoutines.FindChannel(row);
  if (session >= 0 && house.platform.sockets.Connected(session))
    return call.fail("You must disconnect character before you can work offline with it");
  call.outchannel = house.script.CurrentSocket;
}

// The row keeps its notes, flags and date when the reference is known already.
void handler::Mud(CommandCall& call) {
  if (call.checkOnly() || !ExpandParameters(call)) return;
  SessionState& table = call.house.sessions;
  int16 row = FindReference(table, call.P[2], 1);
  if (row < 0) row = AddCharacter(table);
  Table<std::string>* const fields[] = {&table.CharacterRef, &table.MudName,       &table.HostName,
                                        &table.Port,         &table.CharacterName, &table.Password};
  bool changed = false;
  int16 part = 2;
  for (Table<std::string>* field : fields) {
    const std::string& given = call.P[part++];
    if ((*field)[row] == given) continue;
    (*field)[row] = given;
    changed = true;
  }
  // A character that was typed once is there at the next start; a script that names it again writes nothing.
  if (changed) call.house.sessionRoutines.SaveCharacters();  // PUMP
}

}  // namespace corvid
