// SPDX-License-Identifier: GPL-3.0-or-later
#include "game/fight.h"

#include <algorithm>

#include "game/look.h"
#include "game/move.h"
#include "game/output.h"
#include "game/text.h"
#include "game/things.h"

namespace corvid::practice {

namespace {

constexpr int PlayerHitPercent = 75;
constexpr int FleePercent = 75;

std::string The(const BeastKind& kind) {
  return "the " + std::string(kind.Word);
}

void EndFight(Connection& who) {
  who.Foe = None;
  who.NextRound = Never;
}

void BeastFalls(GameState& state, Connection& who, std::size_t foe, Millis now) {
  const BeastKind& kind = BeastKinds()[foe];
  Player& self = PlayerOf(state, who);
  state.Beasts[foe].Respawn = now + RespawnTime;
  for (auto& [id, other] : state.Connections) {
    if (other.Foe == static_cast<int>(foe)) EndFight(other);
  }
  SendLine(who, Paint(ink::Title, Capitalised(The(kind)) + " is dead!"));
  SendRoom(state, self.Room, who.Id, Paint(ink::Person, who.Name) + " has slain " + The(kind) + ".");
  self.Points += kind.Points;
  SendSound(who, "ding.wav");
  SendLine(who, "You gain " + Counted(kind.Points, "point") + ".");
  if (kind.Gold > 0) {
    self.Gold += kind.Gold;
    SendSound(who, "coin.wav");
    SendLine(who, "You find " + Counted(kind.Gold, "gold piece") + ".");
  }
  const int item = FindItemKind(kind.Leaves);
  auto& here = state.RoomItems[static_cast<std::size_t>(kind.Room)];
  if (std::count(here.begin(), here.end(), item) == 0) here.push_back(item);
  SendLine(who, Paint(ink::Thing, Capitalised(ItemKinds()[static_cast<std::size_t>(item)].Name)) + " is left behind.");
}

// True if the beast fell.
bool PlayerStrikes(GameState& state, Connection& who, std::size_t foe, Millis now) {
  const BeastKind& kind = BeastKinds()[foe];
  const Player& self = PlayerOf(state, who);
  if (!state.Dice.Chance(PlayerHitPercent)) {
    SendSound(who, "miss.wav");
    SendLine(who, Paint(ink::Miss, "You miss " + The(kind) + "."));
    return false;
  }
  const int harm = state.Dice.Between(1, 3) + WeaponHarmOf(self);
  state.Beasts[foe].Hp -= harm;
  SendSound(who, "hit.wav");
  SendLine(who, Paint(ink::Title, "You hit " + The(kind) + " for " + std::to_string(harm) + "."));
  if (state.Beasts[foe].Hp > 0) return false;
  BeastFalls(state, who, foe, now);
  return true;
}

void PlayerFalls(GameState& state, Connection& who, const BeastKind& kind) {
  Player& self = PlayerOf(state, who);
  const int from = self.Room;
  EndFight(who);
  SendSound(who, "death.wav");
  SendLine(who, Paint(ink::Blow, Capitalised(The(kind)) + " has killed you!"));
  SendRoom(state, from, who.Id, Paint(ink::Person, who.Name) + " falls, and is gone.");
  SendText(who, "All goes dark. Then something pulls at your sleeve: Quill the raven has carried you home.");
  ++self.Deaths;
  self.Hp = self.MaxHp;
  self.Room = StartRoom;
  SendRoom(state, StartRoom, who.Id, Paint(ink::Person, who.Name) + " is dropped here by a raven.");
  ArriveInRoom(state, who, None);
}

void BeastStrikes(GameState& state, Connection& who, std::size_t foe) {
  const BeastKind& kind = BeastKinds()[foe];
  Player& self = PlayerOf(state, who);
  if (!state.Dice.Chance(kind.HitPercent)) {
    SendSound(who, "miss.wav");
    SendLine(who, Paint(ink::Miss, Capitalised(The(kind)) + " misses you."));
    return;
  }
  const int harm = std::max(1, state.Dice.Between(kind.LowHarm, kind.HighHarm) - ArmourOf(self));
  self.Hp = std::max(0, self.Hp - harm);
  SendSound(who, "hit.wav");
  SendLine(who, Paint(ink::Blow, Capitalised(The(kind)) + " " + std::string(kind.Bite) + " you for " +
                                     std::to_string(harm) + "."));
  if (self.Hp == 0) PlayerFalls(state, who, kind);
}

int BeastHere(const GameState& state, int room, std::string_view word) {
  for (std::size_t i = 0; i < state.Beasts.size(); ++i) {
    if (BeastKinds()[i].Room == room && state.Beasts[i].Respawn == Never && StartsWith(BeastKinds()[i].Word, word)) {
      return static_cast<int>(i);
    }
  }
  return None;
}

bool PersonHere(int room, std::string_view word) {
  const auto people = People();
  return std::any_of(people.begin(), people.end(),
                     [&](const Person& person) { return person.Room == room && StartsWith(person.Word, word); });
}

}  // namespace

void Kill(Turn& turn) {
  if (turn.Who.Foe != None) {
    SendLine(turn.Who, "You are fighting already.");
    return;
  }
  const int foe = BeastHere(turn.State, turn.Self.Room, turn.Rest);
  if (turn.Rest.empty()) {
    SendLine(turn.Who, "Kill what?");
  } else if (foe == None) {
    SendLine(turn.Who, PersonHere(turn.Self.Room, turn.Rest) ? "No. You need friends, too."
                                                             : "There is no " + turn.Rest + " to fight here.");
  } else {
    const BeastKind& kind = BeastKinds()[static_cast<std::size_t>(foe)];
    turn.Who.Foe = foe;
    SendLine(turn.Who, Paint(ink::Foe, "You attack " + The(kind) + "!"));
    SendRoom(turn.State, turn.Self.Room, turn.Who.Id,
             Paint(ink::Person, turn.Self.Name) + " attacks " + The(kind) + "!");
    FightRound(turn.State, turn.Who, turn.Now);
  }
}

void Flee(Turn& turn) {
  if (turn.Who.Foe == None) {
    SendLine(turn.Who, "There is nothing to flee from.");
    return;
  }
  if (!turn.State.Dice.Chance(FleePercent)) {
    SendLine(turn.Who, "You stumble, and cannot get away!");
    return;
  }
  EndFight(turn.Who);
  SendLine(turn.Who, "You run for your life.");
  std::size_t way = 0;
  while (Rooms[static_cast<std::size_t>(turn.Self.Room)].Exits[way] == None) ++way;
  WalkThrough(turn.State, turn.Who, way);
}

void FightRound(GameState& state, Connection& who, Millis now) {
  who.NextRound = now + RoundTime;
  const auto foe = static_cast<std::size_t>(who.Foe);
  if (!PlayerStrikes(state, who, foe, now)) BeastStrikes(state, who, foe);
}

}  // namespace corvid::practice
