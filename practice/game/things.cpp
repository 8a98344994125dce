// SPDX-License-Identifier: GPL-3.0-or-later
#include "game/things.h"

#include <algorithm>

#include "game/output.h"
#include "game/text.h"

namespace corvid::practice {

namespace {

constexpr std::size_t MostCarried = 20;

const ItemKind& Kind(int item) {
  return ItemKinds()[static_cast<std::size_t>(item)];
}

std::vector<int>& ItemsHere(Turn& turn) {
  return turn.State.RoomItems[static_cast<std::size_t>(turn.Self.Room)];
}

// The place of the first thing whose word begins so, or the end.
std::vector<int>::iterator Find(std::vector<int>& items, std::string_view word) {
  return std::find_if(items.begin(), items.end(), [&](int item) { return StartsWith(Kind(item).Word, word); });
}

// What is given away, eaten or sold is no longer worn, unless there is a second one.
void TakeFromPlayer(Player& self, std::vector<int>::iterator place) {
  const int item = *place;
  self.Carried.erase(place);
  if (std::count(self.Carried.begin(), self.Carried.end(), item) > 0) return;
  if (self.Wielded == item) self.Wielded = None;
  self.Worn.erase(item);
}

bool TakeUp(Turn& turn, int item) {
  if (Kind(item).For == Use::Gold) {
    turn.Self.Gold += Kind(item).Strength;
    SendSound(turn.Who, "coin.wav");
    SendLine(turn.Who, "You pick up " + Counted(Kind(item).Strength, "gold piece") + ".");
    return true;
  }
  if (turn.Self.Carried.size() >= MostCarried) {
    SendLine(turn.Who, "Your arms are full.");
    return false;
  }
  turn.Self.Carried.push_back(item);
  SendLine(turn.Who, "You take " + Paint(ink::Thing, Kind(item).Name) + ".");
  return true;
}

void TellOthers(Turn& turn, std::string_view does, int item) {
  SendRoom(turn.State, turn.Self.Room, turn.Who.Id,
           Paint(ink::Person, turn.Self.Name) + " " + std::string(does) + " " + std::string(Kind(item).Name) + ".");
}

std::string InUse(const Player& self, int item) {
  if (self.Wielded == item) return " (wielded)";
  return self.Worn.count(item) > 0 ? " (worn)" : "";
}

// The carried thing that Rest names, or the end after a message.
std::vector<int>::iterator Carried(Turn& turn, std::string_view verb) {
  const auto place = Find(turn.Self.Carried, turn.Rest);
  if (turn.Rest.empty()) {
    SendLine(turn.Who, Capitalised(verb) + " what?");
  } else if (place == turn.Self.Carried.end()) {
    SendLine(turn.Who, "You carry no " + turn.Rest + ".");
  }
  return place;
}

const ShopStock* ShopHere(Turn& turn) {
  const ShopStock* shop = ShopIn(turn.Self.Room);
  if (shop == nullptr) SendLine(turn.Who, "Nobody trades here. Try the shop, east of the square, or the inn.");
  return shop;
}

}  // namespace

void Get(Turn& turn) {
  auto& here = ItemsHere(turn);
  if (turn.Rest.empty()) {
    SendLine(turn.Who, "Get what?");
  } else if (Lower(turn.Rest) == "all") {
    if (here.empty()) SendLine(turn.Who, "There is nothing to take here.");
    while (!here.empty() && TakeUp(turn, here.front())) {
      TellOthers(turn, "takes", here.front());
      here.erase(here.begin());
    }
  } else if (const auto place = Find(here, turn.Rest); place == here.end()) {
    SendLine(turn.Who, "There is no " + turn.Rest + " to take here.");
  } else if (TakeUp(turn, *place)) {
    TellOthers(turn, "takes", *place);
    here.erase(place);
  }
}

void Drop(Turn& turn) {
  const bool all = Lower(turn.Rest) == "all";
  if (all && turn.Self.Carried.empty()) SendLine(turn.Who, "You carry nothing.");
  do {
    const auto place = all ? turn.Self.Carried.begin() : Carried(turn, "drop");
    if (place == turn.Self.Carried.end()) return;
    const int item = *place;
    TakeFromPlayer(turn.Self, place);
    // A room is no endless store: of what grows back there, one is enough.
    auto& here = ItemsHere(turn);
    if (std::count(here.begin(), here.end(), item) == 0) here.push_back(item);
    SendLine(turn.Who, "You drop " + Paint(ink::Thing, Kind(item).Name) + ".");
    TellOthers(turn, "drops", item);
  } while (all && !turn.Self.Carried.empty());
}

void Inventory(Turn& turn) {
  if (turn.Self.Carried.empty()) {
    SendLine(turn.Who, "You carry nothing.");
    return;
  }
  SendLine(turn.Who, "You carry:");
  bool marked = false;
  int last = None;
  for (int item : turn.Self.Carried) {
    marked = !InUse(turn.Self, item).empty() && item != last;
    SendLine(turn.Who, "  " + Paint(ink::Thing, Kind(item).Name) + (marked ? InUse(turn.Self, item) : ""));
    last = item;
  }
}

void Wear(Turn& turn) {
  const auto place = Carried(turn, "wear");
  if (place == turn.Self.Carried.end()) return;
  const std::string name = Paint(ink::Thing, Kind(*place).Name);
  if (Kind(*place).For == Use::Weapon) {
    turn.Self.Wielded = *place;
    SendLine(turn.Who, "You wield " + name + ".");
    TellOthers(turn, "wields", *place);
  } else if (Kind(*place).For == Use::Wear) {
    turn.Self.Worn.insert(*place);
    SendLine(turn.Who, "You put on " + name + ".");
    TellOthers(turn, "puts on", *place);
  } else {
    SendLine(turn.Who, "You can neither wear nor wield " + name + ".");
  }
}

void Remove(Turn& turn) {
  const auto place = Carried(turn, "remove");
  if (place == turn.Self.Carried.end()) return;
  if (InUse(turn.Self, *place).empty()) {
    SendLine(turn.Who, "You neither wear nor wield that.");
    return;
  }
  if (turn.Self.Wielded == *place) turn.Self.Wielded = None;
  turn.Self.Worn.erase(*place);
  SendLine(turn.Who, "You put away " + Paint(ink::Thing, Kind(*place).Name) + ".");
}

void Consume(Turn& turn) {
  const Use use = static_cast<Use>(turn.Argument);
  const std::string verb = use == Use::Eat ? "eat" : "drink";
  const auto place = Carried(turn, verb);
  if (place == turn.Self.Carried.end()) return;
  const int item = *place;
  if (Kind(item).For != use) {
    SendLine(turn.Who, "You cannot " + verb + " " + Paint(ink::Thing, Kind(item).Name) + ".");
    return;
  }
  TakeFromPlayer(turn.Self, place);
  turn.Self.Hp = std::min(turn.Self.MaxHp, turn.Self.Hp + Kind(item).Strength);
  SendLine(turn.Who, "You " + verb + " " + Paint(ink::Thing, Kind(item).Name) + " and feel better.");
  TellOthers(turn, use == Use::Eat ? "eats" : "drinks", item);
}

void List(Turn& turn) {
  const ShopStock* shop = ShopHere(turn);
  if (shop == nullptr) return;
  SendLine(turn.Who, std::string(shop->Keeper) + " sells:");
  for (std::string_view word : shop->Goods) {
    const ItemKind& kind = Kind(FindItemKind(word));
    SendLine(turn.Who, "  " + Paint(ink::Thing, kind.Name) + ", " + std::to_string(kind.Price) + " gold");
  }
}

void Buy(Turn& turn) {
  const ShopStock* shop = ShopHere(turn);
  if (shop == nullptr) return;
  const auto word = std::find_if(shop->Goods.begin(), shop->Goods.end(),
                                 [&](std::string_view good) { return StartsWith(good, turn.Rest); });
  if (word == shop->Goods.end()) {
    SendLine(turn.Who, turn.Rest.empty() ? "Buy what? Type list." : "There is no " + turn.Rest + " for sale here.");
    return;
  }
  const int item = FindItemKind(*word);
  if (turn.Self.Gold < Kind(item).Price) {
    SendLine(turn.Who, "That costs " + std::to_string(Kind(item).Price) + " gold, and you have " +
                           std::to_string(turn.Self.Gold) + ".");
  } else if (turn.Self.Carried.size() >= MostCarried) {
    SendLine(turn.Who, "Your arms are full.");
  } else {
    turn.Self.Gold -= Kind(item).Price;
    turn.Self.Carried.push_back(item);
    SendSound(turn.Who, "coin.wav");
    SendLine(turn.Who,
             "You buy " + Paint(ink::Thing, Kind(item).Name) + " for " + std::to_string(Kind(item).Price) + " gold.");
    TellOthers(turn, "buys", item);
  }
}

void Sell(Turn& turn) {
  const ShopStock* shop = ShopHere(turn);
  if (shop == nullptr) return;
  const auto place = Carried(turn, "sell");
  if (place == turn.Self.Carried.end()) return;
  const int item = *place;
  const int price = Kind(item).Price / 2;
  if (price == 0) {
    SendLine(turn.Who, std::string(shop->Keeper) + " does not want " + Paint(ink::Thing, Kind(item).Name) + ".");
    return;
  }
  TakeFromPlayer(turn.Self, place);
  turn.Self.Gold += price;
  SendSound(turn.Who, "coin.wav");
  SendLine(turn.Who, "You sell " + Paint(ink::Thing, Kind(item).Name) + " for " + std::to_string(price) + " gold.");
  TellOthers(turn, "sells", item);
}

void Gold(Turn& turn) {
  SendLine(turn.Who, "You have " + Counted(turn.Self.Gold, "gold piece") + ".");
}

int ArmourOf(const Player& player) {
  int armour = 0;
  for (int item : player.Worn) armour += Kind(item).Strength;
  return armour;
}

int WeaponHarmOf(const Player& player) {
  return player.Wielded == None ? 0 : Kind(player.Wielded).Strength;
}

}  // namespace corvid::practice
