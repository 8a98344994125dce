// SPDX-License-Identifier: GPL-3.0-or-later
// Making another session the active one.
#include "core/pattern.h"
#include "core/text.h"
#include "script/symbols.h"
#include "sessions/session.h"

namespace corvid {

int16 Sessions::FindSession(const std::string& name, int16 options) const {
  const std::string wanted = Upper(name);
  if (wanted.empty() || wanted == "NEXT") return NextSession(options);
  const bool connectedOnly = (options & option::ConnectedOnly) != 0;
  if (wanted == "GLOBAL" && !connectedOnly) return 0;
  for (const bool connected : {true, false}) {
    if (!connected && connectedOnly) break;
    for (int16 slot = 0; slot <= sessions_.SessionHigh; ++slot) {
      if (connected && !platform_.sockets.Connected(slot)) continue;
      if (Like(Upper(sessions_.SessionRef[slot]), wanted + "*")) return slot;
    }
  }
  return NoSlot;
}

// The class that is named like the session's reference is on while the session is the active one, so that a global
// script can tie keys to it.
void Sessions::SwitchTo(int16 slot) {
  const int16 before = script_.CurrentSocket;
  // A session that was just opened is active already, and the class on is still that of the one before it.
  for (const std::string& name : {sessions_.SessionRef[before], classOn_}) symbols_.DeleteClass(name, 0);
  SetMud(slot, script_.SocketOwner[slot]);
  classOn_ = sessions_.SessionRef[slot];
  symbols_.CheckAndAddClass(classOn_, 0);
  if (script_.SocketOwner[slot] > 0) SetTarget(script_.SocketOwner[slot]);  // the host that the player is asked about
  output_.DisplayOutputBuffer(slot);  // the viewport itself keeps the line where the player left it
  TellSwitch(before, slot);           // PUMP
}

int16 Sessions::SetCharacter(const std::string& CName, int16& options, std::string& ErrorDescription,
                             Parameters& /*rvar*/, int16& DefChannel2) {
  const int16 slot = FindSession(CName, options);
  if (slot == NoSlot) {
    ErrorDescription = "ER1";
    return NoSlot;
  }
  DefChannel2 = slot;
  if ((options & option::LookUpOnly) != 0) return slot;
  SwitchTo(slot);  // PUMP
  upcalls_.speaker.SpeakOut(sessions_.SessionRef[slot], Channel::System, 0);
  return slot;
}

}  // namespace corvid
