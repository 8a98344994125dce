// SPDX-License-Identifier: GPL-3.0-or-later
// Opening a session: finding its slot, connecting, and what follows when the connection stands.
#include "core/text.h"
#include "core/trap.h"
#include "script/symbols.h"
#include "sessions/session.h"

namespace corvid {

namespace {

constexpr int ConnectMilliseconds = 60000;

}  // namespace

bool Sessions::SameCharacter(int16 slot, int16 MudIndex) const {
  const std::string& reference = sessions_.CharacterRef[MudIndex];
  if (reference.empty()) return sessions_.SessionRef[slot].empty() && script_.SocketOwner[slot] == MudIndex;
  return SameText(sessions_.SessionRef[slot], reference);
}

// The slot for a character: its own, else one that was never used, else one whose connection is down. Slot 0 is for
// offline work only, so that scripts without a character keep a place. NoSlot when all are taken.
int16 Sessions::FindSlot(int16 MudIndex, int16 flags) const {
  enum Priority { None, Closed, Unused, Own };
  Priority reuse = None;
  int16 found = NoSlot;
  for (int16 slot = (flags & opening::Offline) != 0 ? 0 : 1; slot <= sessions_.SessionHigh; ++slot) {
    if (platform_.sockets.Connected(slot)) continue;
    Priority priority = Closed;
    if (SameCharacter(slot, MudIndex)) {
      priority = Own;
    } else if (platform_.sockets.Connecting(slot)) {
      continue;
    } else if (sessions_.SessionRef[slot].empty()) {
      priority = Unused;
    }
    if (priority <= reuse) continue;
    reuse = priority;
    found = slot;
  }
  return found;
}

bool Sessions::RefuseConnected(int16 MudIndex, int16 flags) {
  for (int16 slot = 0; slot <= sessions_.SessionHigh; ++slot) {
    if (!platform_.sockets.Connected(slot) || !SameCharacter(slot, MudIndex)) continue;
    const std::string who = "Character " + sessions_.MudName[MudIndex] + " " + sessions_.CharacterName[MudIndex];
    const bool offline = (flags & opening::Offline) != 0;
    Ask(who + (offline ? " already loaded. The character is already connected as well." : " already connected. "),
        "Connect Character");  // PUMP
    return true;
  }
  return false;
}

// A slot that is free for the row, emptied of another character. NoSlot, after telling the player, when there is none.
int16 Sessions::TakeSlot(int16 MudIndex, int16 flags) {
  for (;;) {
    const int16 slot = FindSlot(MudIndex, flags);
    if (slot == NoSlot) break;
    if (sessions_.SessionRef[slot].empty() || SameCharacter(slot, MudIndex)) return slot;
    const int16 other = script_.SocketOwner[slot];
    if (!RemoveCharacter(other)) return NoSlot;  // PUMP: the slot may be in use meanwhile: the search begins anew
    symbols_.CompressCommand(windowtype::All);
    if (RefuseConnected(MudIndex, flags)) return NoSlot;  // PUMP
    if (!StillOwns(slot, other) || platform_.sockets.Connected(slot) || platform_.sockets.Connecting(slot)) continue;
    sessions_.SessionRef[slot].clear();
    NoteState(slot, "unused");
  }
  if (sessions_.SessionHigh >= MaxConnections) {
    upcalls_.errors.ShowError("No more free connections--Maximum: " + std::to_string(MaxConnections + 1));  // PUMP
    return NoSlot;
  }
  ResizeConnections(static_cast<int16>(sessions_.SessionHigh + 1));
  return sessions_.SessionHigh;
}

void Sessions::PrepareSlot(int16 slot, int16 MudIndex) {
  ++openings_[slot];
  receive_.NewConnection(slot);
  sessions_.MudFolder[slot] = CharacterFolder(MudIndex);
  SetMud(slot, MudIndex);
  output_.ClearViewports(slot);
  sessions_.PartialLine[slot].clear();
  sessions_.MspOn[slot] = 0;
  sessions_.Utf8Seen[slot] = 0;
  sessions_.ScriptsLoaded[slot] = 0;
  for (Table<char>* enabled :
       {&sessions_.TriggerEnabled, &sessions_.AliasEnabled, &sessions_.KeyEnabled, &sessions_.LogEntriesEnabled})
    (*enabled)[slot] = 1;
}

void Sessions::SetTarget(int16 MudIndex) {
  sessions_.ConnectHost = sessions_.HostName[MudIndex];
  sessions_.ConnectPort = sessions_.Port[MudIndex];
}

int16 Sessions::OpenMud(int16 MudIndex, int16 flags) {
  SetTarget(MudIndex);
  const int16 before = script_.CurrentSocket;
  if (RefuseConnected(MudIndex, flags)) return -1;
  const int16 slot = TakeSlot(MudIndex, flags);  // PUMP
  if (slot == NoSlot) return -1;
  SetTarget(MudIndex);  // another session may have been opened meanwhile: its host must not get this one's password
  openFlags_[slot] = flags;
  sessionBefore_[slot] = before;
  PrepareSlot(slot, MudIndex);
  if ((flags & opening::Offline) == 0) return StartConnecting(slot) ? int16{0} : int16{-1};
  platform_.sockets.Disconnect(slot);  // its character may have been connecting
  NoteState(slot, "offline");
  const int32 opening = openings_[slot];
  LoadCharacterSets(slot, flags);  // PUMP
  if (openings_[slot] == opening) output_.AppendNow(slot, "Working Offline.");
  return 0;
}

bool Sessions::StartConnecting(int16 slot) {
  const std::string host = sessions_.ConnectHost;
  const std::string port = sessions_.ConnectPort;
  if (!platform_.sockets.PortKnown(port)) {
    NoteState(slot, "closed");
    upcalls_.errors.ShowError("The specified service name is invalid");  // PUMP
    return false;
  }
  const int error = platform_.sockets.Connect(slot, host, port, ConnectMilliseconds);
  if (error != 0) {
    NoteState(slot, "closed");
    upcalls_.errors.ShowError("Unable to connect to " + host + ".  Error " + std::to_string(error));  // PUMP
    return false;
  }
  NoteState(slot, "connecting");
  return true;
}

// The aliases "SessionOff" and "SessionOn" tell scripts that the player now hears another session.
void Sessions::TellSwitch(int16 before, int16 now) {
  if (before == now) return;
  RunAlias("SessionOff", before);  // PUMP
  RunAlias("SessionOn", now);      // PUMP
}

void Sessions::FinishConnect(int16 Index) {
  if (!platform_.sockets.Connected(Index) || sessions_.ScriptsLoaded[Index]) return;
  sessions_.ScriptsLoaded[Index] = 1;
  const int16 active = script_.CurrentSocket;
  const int16 before = active == Index ? sessionBefore_[Index] : active;
  Trap trap{upcalls_.errors, "FinishConnect", {std::to_string(Index)}};
  // A script that waits while it is loaded can outlive its session: the next one in the slot has its own turn.
  const auto step = [&, opening = openings_[Index]](auto&& work) {
    if (openings_[Index] == opening) trap.Step(work);
  };
  step([&] { LoadCharacterSets(Index, openFlags_[Index]); });  // PUMP
  const bool inFront = script_.CurrentSocket == Index;         // a slow server whose sets stay brings nothing forward
  step([&] { RunAlias("OnConnect", Index); });                 // PUMP
  step([&] {
    const int16 row = script_.SocketOwner[Index];
    const bool known = row > 0 && row <= sessions_.CharacterCount;
    if (known && (sessions_.CharFlags[row] & charflag::AutoLogin) != 0 && options_.AutoLogin)
      RunAlias("login", Index);  // PUMP
  });
  step([&] {
    if (inFront) TellSwitch(before, Index);  // PUMP
  });
}

int16 Sessions::NextSession(int16 options) const {
  const bool connectedOnly = (options & option::ConnectedOnly) != 0;
  const int slots = sessions_.SessionHigh + 1;
  for (int step = 1; step <= slots; ++step) {
    const auto slot = static_cast<int16>((script_.CurrentSocket + step) % slots);
    if (sessions_.SessionRef[slot].empty() || (connectedOnly && !platform_.sockets.Connected(slot))) continue;
    return slot;
  }
  return NoSlot;
}

}  // namespace corvid
