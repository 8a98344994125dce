// SPDX-License-Identifier: GPL-3.0-or-later
#include "game/move.h"

#include "game/look.h"
#include "game/output.h"
#include "game/text.h"

namespace corvid::practice {

void WalkThrough(GameState& state, Connection& who, std::size_t way) {
  Player& self = PlayerOf(state, who);
  const int from = self.Room;
  const int to = Rooms[static_cast<std::size_t>(from)].Exits[way];
  const std::string name = Paint(ink::Person, who.Name);
  SendRoom(state, from, who.Id, name + " leaves " + std::string(Directions[way].Name) + ".");
  SendRoom(state, to, who.Id, name + " comes " + std::string(Directions[way].From) + ".");
  self.Room = to;
  ArriveInRoom(state, who, from);
}

void Move(Turn& turn) {
  const auto way = static_cast<std::size_t>(turn.Argument);
  if (turn.Who.Foe != None) {
    SendLine(turn.Who, "You cannot walk away from a fight. Type flee.");
  } else if (Rooms[static_cast<std::size_t>(turn.Self.Room)].Exits[way] == None) {
    SendLine(turn.Who, "There is no way " + std::string(Directions[way].Name) + " from here. You can go " +
                           ExitList(turn.Self.Room) + ".");
  } else {
    WalkThrough(turn.State, turn.Who, way);
  }
}

void Go(Turn& turn) {
  for (std::size_t way = 0; way < DirectionCount; ++way) {
    if (!StartsWith(Directions[way].Name, turn.Rest) && Lower(turn.Rest) != Directions[way].Short) continue;
    turn.Argument = static_cast<int>(way);
    Move(turn);
    return;
  }
  SendLine(turn.Who, "Go where? You can go " + ExitList(turn.Self.Room) + ".");
}

}  // namespace corvid::practice
