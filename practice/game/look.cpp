// SPDX-License-Identifier: GPL-3.0-or-later
#include "game/look.h"

#include <vector>

#include "game/output.h"
#include "game/text.h"

namespace corvid::practice {

namespace {

// Room numbers of the board, in its two-character cells; the letters stand for rooms by their place in BoardRooms.
constexpr std::string_view BoardLines[] = {
    "+-------------------------------+", "|  [H]-------[B]-------[D]      |",  "|     \\       |       /         |",
    "|  [F]-------[A]-------[E]      |", "|     /       |       \\         |", "|  [I]-------[J]-------[K]      |",
    "|             |                 |", "|            [L]                |",  "+-------------------------------+",
};
constexpr std::string_view BoardLetters = "ABCDEFGHIJKLM";  // in the order of Rooms

int BoardPlace(int room) {
  if (room == TowerTop) return TowerFoot;
  if (room == Cellar) return Inn;
  return room == Den ? BramblePath : room;
}

std::string BoardLine(std::string_view line, int room) {
  std::string drawn(line);
  for (std::size_t i = 1; i + 1 < drawn.size(); ++i) {
    const std::size_t place = BoardLetters.find(drawn[i]);
    if (drawn[i - 1] != '[' || place == std::string_view::npos) continue;
    drawn[i] = static_cast<int>(place) == BoardPlace(room) ? '*' : '.';
  }
  return drawn;
}

std::string FoundInRoom(const GameState& state, const Player& self, const std::string& word) {
  for (const Sight& sight : Sights()) {
    if (sight.Room == self.Room && StartsWith(sight.Word, word)) return std::string(sight.Text);
  }
  for (const Person& person : People()) {
    if (person.Room == self.Room && StartsWith(person.Word, word)) return std::string(person.Text);
  }
  for (std::size_t i = 0; i < state.Beasts.size(); ++i) {
    const BeastKind& kind = BeastKinds()[i];
    if (kind.Room != self.Room || state.Beasts[i].Respawn != Never || !StartsWith(kind.Word, word)) continue;
    return std::string(kind.Text) + " It has " + std::to_string(state.Beasts[i].Hp) + " of " + std::to_string(kind.Hp) +
           " hit points.";
  }
  return {};
}

const ItemKind* FoundItem(const GameState& state, const Player& self, const std::string& word) {
  for (const auto* list : {&self.Carried, &state.RoomItems[static_cast<std::size_t>(self.Room)]}) {
    for (int item : *list) {
      const ItemKind& kind = ItemKinds()[static_cast<std::size_t>(item)];
      if (StartsWith(kind.Word, word)) return &kind;
    }
  }
  return nullptr;
}

void LookAt(Turn& turn, const std::string& word) {
  if (word == "board" && turn.Self.Room == Square) {
    Map(turn);
    return;
  }
  const std::string text = FoundInRoom(turn.State, turn.Self, word);
  if (!text.empty()) {
    SendText(turn.Who, text);
    return;
  }
  if (const ItemKind* item = FoundItem(turn.State, turn.Self, word)) {
    SendText(turn.Who, item->Text);
    return;
  }
  const Connection* other = FindPlaying(turn.State, word);
  if (other != nullptr && PlayerOf(turn.State, *other).Room == turn.Self.Room) {
    SendLine(turn.Who, other->Name + " is another player, and looks ready for anything.");
  } else {
    SendLine(turn.Who, "You see no " + word + " here.");
  }
}

void GiveHint(Connection& who, Player& player, const Room& room) {
  if (room.Lesson.empty() || !player.Seen.insert(player.Room).second) return;
  SendSound(who, "ding.wav", 40);
  SendText(who, Paint(ink::Hint, "Hint:") + " " + std::string(room.Hint));
}

}  // namespace

std::string ExitList(int room) {
  std::vector<std::string> names;
  for (std::size_t way = 0; way < DirectionCount; ++way) {
    if (Rooms[static_cast<std::size_t>(room)].Exits[way] != None) names.emplace_back(Directions[way].Name);
  }
  return Joined(names);
}

void ShowRoom(GameState& state, Connection& who) {
  const Player& self = PlayerOf(state, who);
  const auto place = static_cast<std::size_t>(self.Room);
  SendLine(who, Paint(ink::RoomName, Rooms[place].Name));
  SendText(who, Rooms[place].Text);
  SendLine(who, Paint(ink::Exits, "Exits: " + ExitList(self.Room) + "."));
  for (const Person& person : People()) {
    if (person.Room == self.Room) SendLine(who, Paint(ink::Person, person.Here));
  }
  for (std::size_t i = 0; i < state.Beasts.size(); ++i) {
    const BeastKind& kind = BeastKinds()[i];
    if (kind.Room == self.Room && state.Beasts[i].Respawn == Never) {
      SendLine(who, Paint(ink::Foe, Capitalised(kind.Name) + " is here."));
    }
  }
  for (int item : state.RoomItems[place]) {
    const ItemKind& kind = ItemKinds()[static_cast<std::size_t>(item)];
    SendLine(who, Paint(ink::Thing, Capitalised(kind.Name) + (kind.For == Use::Gold ? " lie here." : " lies here.")));
  }
  for (const auto& [id, other] : state.Connections) {
    if (id == who.Id || other.At != Stage::Playing || PlayerOf(state, other).Room != self.Room) continue;
    SendLine(who, Paint(ink::Person, other.Name + " is here."));
  }
}

void ArriveInRoom(GameState& state, Connection& who, int cameFrom) {
  Player& player = PlayerOf(state, who);
  const Room& room = Rooms[static_cast<std::size_t>(player.Room)];
  if (cameFrom != None) {
    const Room& left = Rooms[static_cast<std::size_t>(cameFrom)];
    SendSound(who, room.Door || left.Door ? "door.wav" : "step.wav");
    if (!left.Music.empty()) SendMusic(who, "Off");
  }
  ShowRoom(state, who);
  if (!room.Music.empty()) SendMusic(who, room.Music);
  GiveHint(who, player, room);
}

void Look(Turn& turn) {
  std::string what = Lower(turn.Rest);
  if (StartsWith(what, "at ")) TakeWord(what);
  if (what.empty()) {
    ShowRoom(turn.State, turn.Who);
  } else {
    LookAt(turn, what);
  }
}

void Read(Turn& turn) {
  const std::string what = Lower(turn.Rest);
  if (what == "board" || what == "map") {
    Map(turn);
    return;
  }
  const ItemKind* item = what.empty() ? nullptr : FoundItem(turn.State, turn.Self, what);
  if (item != nullptr && item->For == Use::Read) {
    SendText(turn.Who, item->Text);
  } else {
    SendLine(turn.Who, what.empty() ? "Read what?" : "There is nothing to read on that.");
  }
}

void Exits(Turn& turn) {
  for (std::size_t way = 0; way < DirectionCount; ++way) {
    const int to = Rooms[static_cast<std::size_t>(turn.Self.Room)].Exits[way];
    if (to == None) continue;
    SendLine(turn.Who, Paint(ink::Exits, Capitalised(Directions[way].Name)) + ": " +
                           std::string(Rooms[static_cast<std::size_t>(to)].Name));
  }
}

void Map(Turn& turn) {
  for (std::string_view line : BoardLines) {
    SendLine(turn.Who, Paint(ink::Board, BoardLine(line, turn.Self.Room)));
  }
  SendText(turn.Who,
           "The board shows the village as a picture of dots and dashes, with a star for where you are. Those lines "
           "are seen but not spoken, unless you set it otherwise: help art. In words: the square lies in the middle. "
           "Around it, beginning in the north and going with the clock, are the tower, the garden, the shop, the "
           "smithy, the south gate, the pond, the inn and the orchard. The brambles are south of the gate.");
}

}  // namespace corvid::practice
