// SPDX-License-Identifier: GPL-3.0-or-later
// What never changes: the rooms, the ways between them, the kinds of things, beasts and people. All of it is tables.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string_view>

namespace corvid::practice {

inline constexpr int None = -1;

struct Direction {
  std::string_view Name;   // "northeast"
  std::string_view Short;  // "ne"
  std::string_view From;   // how those in the room see someone come who walked so: "from the southwest"
  int Opposite;            // row of this table
};

inline constexpr std::size_t DirectionCount = 10;
extern const std::array<Direction, DirectionCount> Directions;

struct Room {
  std::string_view Name;
  std::string_view Text;
  std::array<int, DirectionCount> Exits;  // rows of Rooms in the order of Directions; None: no way
  bool Door;                              // coming or going opens a door, which is heard
  std::string_view Music;                 // sound file that loops here; empty: none
  std::string_view Lesson;                // help topic that is hinted at on the first visit; empty: none
  std::string_view Hint;                  // the words of that hint
};

inline constexpr int RoomCount = 13;
extern const std::array<Room, RoomCount> Rooms;

// The rooms that something happens in.
inline constexpr int Square = 0, TowerFoot = 1, TowerTop = 2, Garden = 3, Shop = 4, Inn = 5, Cellar = 6, Orchard = 7,
                     Pond = 8, Gate = 9, Smithy = 10, BramblePath = 11, Den = 12;
inline constexpr int StartRoom = Square;

// Something fixed in a room that can be looked at, or read.
struct Sight {
  int Room;
  std::string_view Word;
  std::string_view Text;
};
std::span<const Sight> Sights();

enum class Use { Nothing, Weapon, Wear, Eat, Drink, Gold, Read };

struct ItemKind {
  std::string_view Word;  // what a player types: "sword"
  std::string_view Name;  // "a short sword"
  std::string_view Text;  // what is seen when looking at it
  Use For;
  int Strength;  // harm added, harm kept off, hit points given, or gold pieces, by For
  int Price;     // in a shop; it buys for half of that; 0: worthless
  int Home;      // room where it grows back, or None
};
std::span<const ItemKind> ItemKinds();
int FindItemKind(std::string_view word);  // by the whole word; None if unknown

struct ShopStock {
  int Room;
  std::string_view Keeper;
  std::span<const std::string_view> Goods;  // words of ItemKinds
};
const ShopStock* ShopIn(int room);  // nullptr: nothing is sold there

struct BeastKind {
  std::string_view Word;
  std::string_view Name;  // "a cellar rat"
  std::string_view Text;
  std::string_view Bite;  // "bites"
  int Room;
  int Hp;
  int HitPercent;  // how often it hits
  int LowHarm, HighHarm;
  int Gold, Points;         // what its end brings
  std::string_view Leaves;  // word of the item it leaves behind
};
std::span<const BeastKind> BeastKinds();

struct Answer {
  std::string_view Word;  // what is asked about; empty: everything else
  std::string_view Text;
};

struct Person {
  std::string_view Word;  // "marta"
  std::string_view Name;  // "Marta"
  std::string_view Here;  // the line in the room
  std::string_view Text;  // what is seen when looking
  int Room;
  bool KnowsHelp;  // a question about a help topic is answered with it
  std::span<const Answer> Answers;
};
std::span<const Person> People();

}  // namespace corvid::practice
