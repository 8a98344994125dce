// SPDX-License-Identifier: GPL-3.0-or-later
// Sessions whose character is edited or taken away.
#include "core/text.h"
#include "core/trap.h"
#include "script/symbols.h"
#include "sessions/session.h"

namespace corvid {

bool Sessions::IsLoaded(int16 MudIndex) const {
  for (int16 slot = 0; slot <= sessions_.SessionHigh; ++slot)
    if (StillOwns(slot, MudIndex) && (!sessions_.SessionRef[slot].empty() || IsConnected(MudIndex))) return true;
  return false;
}

bool Sessions::IsConnected(int16 MudIndex) const {
  for (int16 slot = 0; slot <= sessions_.SessionHigh; ++slot)
    if (StillOwns(slot, MudIndex) && (platform_.sockets.Connected(slot) || platform_.sockets.Connecting(slot)))
      return true;
  return false;
}

bool Sessions::UnloadSession(int16 Index) {
  const auto free = [&] { return !platform_.sockets.Connected(Index) && !platform_.sockets.Connecting(Index); };
  const int16 owner = script_.SocketOwner[Index];
  if (!free() || !RemoveCharacter(owner)) return false;  // PUMP
  if (!StillOwns(Index, owner) || !free()) return false;
  symbols_.CompressCommand(windowtype::All);
  ++openings_[Index];  // a step that was begun for the session ends
  logs_.CloseLog(Index);
  sessions_.PartialLine[Index].clear();
  sessions_.MudFolder[Index].clear();
  output_.ClearViewports(Index);
  NoteState(Index, "unused");
  script_.SocketOwner[Index] = 0;
  for (Table<std::string>* name : {&sessions_.SessionMud, &sessions_.SessionName, &sessions_.SessionRef})
    (*name)[Index].clear();
  if (Index == script_.CurrentSocket) {
    symbols_.DeleteClass(classOn_, 0);
    classOn_.clear();
    SetMud(Index, 0);
  }
  return true;
}

void Sessions::CharacterEdited(int16 MudIndex) {
  for (int16 slot = 0; slot <= sessions_.SessionHigh; ++slot) {
    // KILLALL takes a slot's names away and leaves its owner: such a session is over.
    if (!StillOwns(slot, MudIndex) || sessions_.SessionRef[slot].empty()) continue;
    sessions_.SessionMud[slot] = sessions_.MudName[MudIndex];
    sessions_.SessionName[slot] = sessions_.CharacterName[MudIndex];
    sessions_.SessionRef[slot] = sessions_.CharacterRef[MudIndex];
    sessions_.MudFolder[slot] = CharacterFolder(MudIndex);
    Trap trap{upcalls_.errors, "CharacterEdited", {sessions_.MudFolder[slot]}};
    trap.Step([&] { platform_.files.CreateFolder(sessions_.MudFolder[slot]); });
    if (slot != script_.CurrentSocket) continue;
    SetMud(slot, MudIndex);
    if (!SameText(classOn_, sessions_.SessionRef[slot])) {
      symbols_.DeleteClass(classOn_, 0);
      classOn_ = sessions_.SessionRef[slot];
      symbols_.CheckAndAddClass(classOn_, 0);
    }
  }
}

}  // namespace corvid
