// SPDX-License-Identifier: GPL-3.0-or-later
// The map and the other tables hold together.
#include "game/world.h"

#include <gtest/gtest.h>

#include <set>

#include "game/chatter.h"
#include "game/help.h"
#include "practice/scenario.h"

namespace corvid::practice {
namespace {

TEST(WorldTest, EveryExitLeadsBackByItsOpposite) {
  for (int room = 0; room < RoomCount; ++room) {
    for (std::size_t way = 0; way < DirectionCount; ++way) {
      const int to = Rooms[static_cast<std::size_t>(room)].Exits[way];
      if (to == None) continue;
      const auto back = static_cast<std::size_t>(Directions[way].Opposite);
      EXPECT_EQ(Directions[back].Opposite, static_cast<int>(way));
      EXPECT_EQ(Rooms[static_cast<std::size_t>(to)].Exits[back], room)
          << Rooms[static_cast<std::size_t>(room)].Name << " " << Directions[way].Name;
    }
  }
}

TEST(WorldTest, AllTenDirectionsAreUsed) {
  std::set<std::size_t> used;
  for (const Room& room : Rooms) {
    for (std::size_t way = 0; way < DirectionCount; ++way) {
      if (room.Exits[way] != None) used.insert(way);
    }
  }
  EXPECT_EQ(used.size(), DirectionCount);
}

// Walks every exit there and back, from room to room, as a player would type it.
void Explore(TestPlayer& anna, int room, std::set<int>& seen) {
  seen.insert(room);
  for (std::size_t way = 0; way < DirectionCount; ++way) {
    const int to = Rooms[static_cast<std::size_t>(room)].Exits[way];
    const std::string shortName(Directions[way].Short);
    if (to == None) {
      EXPECT_NE(anna.Type(shortName).find("There is no way " + std::string(Directions[way].Name)), std::string::npos);
      continue;
    }
    const std::string there = anna.Type(shortName);
    EXPECT_NE(there.find("\r\n" + std::string(Rooms[static_cast<std::size_t>(to)].Name) + "\r\n"), std::string::npos);
    if (seen.count(to) == 0) Explore(anna, to, seen);
    const std::string back =
        anna.Type(std::string(Directions[static_cast<std::size_t>(Directions[way].Opposite)].Name));
    EXPECT_NE(back.find("\r\n" + std::string(Rooms[static_cast<std::size_t>(room)].Name) + "\r\n"), std::string::npos);
  }
}

TEST(WorldTest, EveryRoomIsReachedAndEveryWayWalkedBothWays) {
  Game game(1);
  Millis now = 0;
  TestPlayer anna(game, now);
  anna.LogIn("Anna");
  std::set<int> seen;
  Explore(anna, StartRoom, seen);
  EXPECT_EQ(seen.size(), static_cast<std::size_t>(RoomCount));
}

TEST(WorldTest, TablesNameWhatExists) {
  for (const Room& room : Rooms) {
    EXPECT_EQ(HelpText(room.Lesson).empty(), room.Lesson.empty()) << room.Lesson;
  }
  for (const BeastKind& beast : BeastKinds()) EXPECT_NE(FindItemKind(beast.Leaves), None) << beast.Leaves;
  for (int room : {Shop, Inn}) {
    ASSERT_NE(ShopIn(room), nullptr);
    for (std::string_view word : ShopIn(room)->Goods) {
      ASSERT_NE(FindItemKind(word), None) << word;
      EXPECT_GT(ItemKinds()[static_cast<std::size_t>(FindItemKind(word))].Price, 0) << word;
    }
  }
  EXPECT_EQ(ShopIn(Square), nullptr);
  EXPECT_EQ(FindItemKind("nothing"), None);
}

TEST(WorldTest, EveryRoomHasItsSoundOfArriving) {
  Play(1, R"(
> w
= !!SOUND(door.wav V=60 L=1)
= !!MUSIC(music.wav V=40 L=-1)
> d
= !!MUSIC(Off)
= !!SOUND(door.wav V=60 L=1)
> u
> e
= !!MUSIC(Off)
> s
= !!SOUND(step.wav V=60 L=1)
! !!MUSIC
)");
}

TEST(WorldTest, AHintIsGivenOnce) {
  Play(1, R"(
> n
= !!SOUND(ding.wav V=40 L=1)
~ Hint: A line you typed
> s
! Hint:
> n
! Hint:
> hint
~ Hint: A line you typed
)");
}

}  // namespace
}  // namespace corvid::practice
