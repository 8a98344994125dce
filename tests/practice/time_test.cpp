// SPDX-License-Identifier: GPL-3.0-or-later
// Fights, chatter and the flood: what happens on the clock, or between several players.
#include <gtest/gtest.h>

#include "practice/scenario.h"

namespace corvid::practice {
namespace {

struct TimeTest : testing::Test {
  // Lets the clock run from event to event until the text is heard, for at most ten minutes.
  std::string Until(TestPlayer& player, const std::string& text) {
    std::string heard;
    const Millis end = now + 600000;
    while (heard.find(text) == std::string::npos && game.NextDue() != Never && now < end) {
      now = game.NextDue();
      game.Advance(now);
      heard += player.Hear();
    }
    return heard;
  }

  Game game{7};
  Millis now = 1000;
};

int Count(const std::string& text, const std::string& part) {
  int count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
  return count;
}

TEST_F(TimeTest, TheRatIsFoughtToItsEndAndComesBack) {
  TestPlayer anna(game, now);
  anna.LogIn("Anna", true);
  anna.Type("chatter off");
  anna.Type("w");
  anna.Type("d");
  const std::string first = anna.Type("k rat");
  EXPECT_EQ(first.find("\r\nYou attack the rat!\r\n!!SOUND("), 0U) << first;
  EXPECT_NE(anna.Type("u").find("You cannot walk away from a fight."), std::string::npos);
  EXPECT_NE(anna.Type("k rat").find("You are fighting already."), std::string::npos);
  EXPECT_EQ(game.NextDue(), now + RoundTime);
  const std::string fight = Until(anna, "The rat is dead!");
  EXPECT_NE(fight.find("The rat is dead!\r\n!!SOUND(ding.wav V=60 L=1)\r\nYou gain 10 points.\r\n"
                       "!!SOUND(coin.wav V=60 L=1)\r\nYou find 4 gold pieces.\r\nA rat tail is left behind.\r\n<"),
            std::string::npos)
      << fight;
  EXPECT_NE(fight.find("19gold> "), std::string::npos);
  EXPECT_NE(anna.Type("k rat").find("There is no rat to fight here."), std::string::npos);
  EXPECT_NE(anna.Type("get tail").find("You take a rat tail."), std::string::npos);
  EXPECT_NE(Until(anna, "comes").find("Out of the dark comes a cellar rat."), std::string::npos);
  EXPECT_NE(anna.Type("l rat").find("It has 8 of 8 hit points."), std::string::npos);
}

TEST_F(TimeTest, DeathLeadsBackToTheStart) {
  TestPlayer anna(game, now);
  anna.LogIn("Anna", true);
  for (const char* step : {"s", "s", "d"}) anna.Type(step);
  anna.Type("k boar");
  const std::string fight = Until(anna, "has killed you!");
  EXPECT_NE(fight.find("!!SOUND(death.wav V=60 L=1)\r\nThe boar has killed you!\r\n"), std::string::npos) << fight;
  EXPECT_NE(fight.find("\r\nThe Village Square\r\n"), std::string::npos);
  EXPECT_EQ(fight.substr(fight.size() - 18), "\n<20/20hp 15gold> ");
  EXPECT_NE(anna.Type("score").find("Deaths: 1\r\n"), std::string::npos);
}

TEST_F(TimeTest, FleeingEndsTheFightAndTheBeastRecovers) {
  TestPlayer anna(game, now);
  anna.LogIn("Anna");
  EXPECT_NE(anna.Type("flee").find("There is nothing to flee from."), std::string::npos);
  for (const char* step : {"s", "s", "d"}) anna.Type(step);
  anna.Type("k boar");
  std::string fled;
  while (fled.find("You run for your life.") == std::string::npos) fled = anna.Type("flee");
  EXPECT_NE(fled.find("A Path under the Brambles"), std::string::npos);
  now += HealTime;
  game.Advance(now);
  EXPECT_EQ(anna.Hear().find("boar"), std::string::npos);
  EXPECT_NE(anna.Type("d").find("A wild boar is here."), std::string::npos);
  EXPECT_NE(anna.Type("l boar").find("It has 30 of 30 hit points."), std::string::npos);
}

TEST_F(TimeTest, HitPointsComeBackOutsideOfFights) {
  TestPlayer anna(game, now);
  anna.LogIn("Anna");
  anna.Type("chatter off");
  for (const char* step : {"s", "s", "d"}) anna.Type(step);
  anna.Type("k boar");
  while (anna.Type("flee").find("You run") == std::string::npos || anna.Type("").find("<20/") != std::string::npos) {
    now += RoundTime;
    game.Advance(now);
    anna.Hear();
    anna.Type("d");
    anna.Type("k boar");
  }
  const std::string before = anna.Type("");
  now += HealTime;
  game.Advance(now);
  EXPECT_EQ(anna.Hear(), "") << "healing is silent";
  const int had = std::stoi(before.substr(before.find('<') + 1));
  const std::string after = anna.Type("");
  EXPECT_EQ(std::stoi(after.substr(after.find('<') + 1)), had + 1);
}

TEST_F(TimeTest, TheOtherPlayersChatInTheirTime) {
  TestPlayer anna(game, now);
  anna.LogIn("Anna", true);
  anna.Hear();
  game.Advance(now + FirstChatTime - 1);
  EXPECT_EQ(anna.Hear(), "");
  now += FirstChatTime;
  game.Advance(now);
  EXPECT_EQ(anna.Hear(),
            "\r\n!!SOUND(chat.wav V=30 L=1)\r\n[newbie] Wren: how do I stop the voice when it reads too much?\r\n"
            "<20/20hp 15gold> ");
  std::string heard;
  for (int step = 0; step < 600; ++step) {
    now += 1000;
    game.Advance(now);
    heard += anna.Hear();
  }
  const int lines = Count(heard, "chat.wav");
  EXPECT_GE(lines, 600 / 40);
  EXPECT_LE(lines, 600 / 15);
  for (const char* kind : {"\n[chat] ", "\n[newbie] ", "\n[auction] ", " tells you: "}) {
    EXPECT_GT(Count(heard, kind), 0) << kind;
  }
}

TEST_F(TimeTest, ChatterCanBeSilencedAndCalled) {
  TestPlayer anna(game, now);
  anna.LogIn("Anna");
  anna.Type("chatter off");
  now += 300000;
  game.Advance(now);
  EXPECT_EQ(anna.Hear(), "");
  EXPECT_EQ(anna.Type("chatter now"),
            "\r\n[newbie] Wren: how do I stop the voice when it reads too much?\r\n"
            "<20/20hp 15gold> ");
}

TEST_F(TimeTest, NothingIsDueWhileNobodyPlays) {
  EXPECT_EQ(game.NextDue(), Never);
  TestPlayer anna(game, now);
  EXPECT_EQ(game.NextDue(), Never);
  anna.LogIn("Anna");
  EXPECT_EQ(game.NextDue(), now + HealTime);
  game.Disconnect(anna.Id);
  EXPECT_EQ(game.NextDue(), Never);
}

TEST_F(TimeTest, PlayersMeet) {
  TestPlayer anna(game, now);
  anna.LogIn("Anna");
  TestPlayer bob(game, now);
  bob.LogIn("Bob");
  EXPECT_NE(anna.Hear().find("Bob has come into the game."), std::string::npos);
  bob.Type("say good day");
  EXPECT_EQ(anna.Hear(), "\r\nBob says: good day\r\n<20/20hp 15gold> ");
  bob.Type("ne");
  EXPECT_NE(anna.Hear().find("Bob leaves northeast."), std::string::npos);
  bob.Type("sw");
  EXPECT_NE(anna.Hear().find("Bob comes from the northeast."), std::string::npos);
  anna.Type("chat anyone here?");
  EXPECT_NE(bob.Hear().find("[chat] Anna: anyone here?"), std::string::npos);
  EXPECT_NE(bob.Type("tell ann yes, me").find("You tell Anna: yes, me"), std::string::npos);
  EXPECT_NE(anna.Hear().find("Bob tells you: yes, me"), std::string::npos);
  EXPECT_NE(anna.Type("l").find("Bob is here."), std::string::npos);
  EXPECT_NE(anna.Type("l bob").find("Bob is another player"), std::string::npos);
  game.Disconnect(bob.Id);
  EXPECT_NE(anna.Hear().find("Bob has left the game."), std::string::npos);
}

TEST_F(TimeTest, TwoFightOneBeastAndBothAreFreeAfterwards) {
  TestPlayer anna(game, now);
  anna.LogIn("Anna");
  TestPlayer bob(game, now);
  bob.LogIn("Bob");
  for (TestPlayer* player : {&anna, &bob}) {
    player->Type("w");
    player->Type("d");
    player->Type("k rat");
  }
  std::string heard = anna.Hear() + bob.Hear();
  while (heard.find("The rat is dead!") == std::string::npos) {
    now += RoundTime;
    game.Advance(now);
    heard += anna.Hear() + bob.Hear();
  }
  EXPECT_EQ(Count(heard, "The rat is dead!"), 1);
  EXPECT_EQ(Count(heard, "has slain the rat."), 1);
  EXPECT_NE(anna.Type("u").find("The Sleeping Crow"), std::string::npos);
  EXPECT_NE(bob.Type("u").find("The Sleeping Crow"), std::string::npos);
}

TEST_F(TimeTest, TheSameSeedPlaysTheSameGame) {
  std::string heard[2];
  for (std::string& all : heard) {
    Game same(42);
    Millis time = 0;
    TestPlayer anna(same, time);
    all = same.TakeOutput(anna.Id);
    for (const char* line : {"anna", "word", "w", "d", "k rat"}) all += anna.Bytes(std::string(line) + "\r\n");
    for (; time < 120000; time += 500) {
      same.Advance(time);
      all += same.TakeOutput(anna.Id);
    }
  }
  EXPECT_EQ(heard[0], heard[1]);
  EXPECT_GT(heard[0].size(), 2000U);
}

TEST_F(TimeTest, TheFloodIsNumberedPromptedAndEnds) {
  TestPlayer anna(game, now);
  anna.LogIn("Anna");
  const std::string plain = anna.Type("flood 25");
  EXPECT_EQ(plain.find("\r\n0000001 the wind combs the grass of the orchard\r\n0000002 "), 0U) << plain;
  EXPECT_EQ(Count(plain, "<20/20hp 15gold> \r\n"), 2);
  EXPECT_NE(plain.find("\r\n0000025 "), std::string::npos);
  const std::string end = "\r\nflood done 25\r\n<20/20hp 15gold> ";
  EXPECT_EQ(plain.substr(plain.size() - end.size()), end);
  int codes = 0, lines = 0;
  for (const std::string& line : Lines(plain)) {
    if (line.find("00000") != 0) continue;
    ++lines;
    codes += static_cast<int>(line.size());
  }
  EXPECT_EQ(lines, 25);
  EXPECT_NEAR(codes / 25.0, 47, 1);
}

TEST_F(TimeTest, TheFloodIsPouredInPortionsAndCanBeStopped) {
  TestPlayer anna(game, now);
  anna.LogIn("Anna");
  EXPECT_EQ(anna.Bytes("flood 1000000 colour\r\n"), "");
  EXPECT_TRUE(game.Pour(anna.Id, 10000));
  const std::string piece = game.TakeOutput(anna.Id);
  EXPECT_GE(piece.size(), 10000U);
  EXPECT_LE(piece.size(), 10100U);
  EXPECT_NE(piece.find("\x1b[1;33m0000009\x1b[0m sparks"), std::string::npos);
  EXPECT_NE(Plain(anna.Bytes("flood 5\r\n")).find("A flood is running already."), std::string::npos);
  EXPECT_NE(Plain(anna.Bytes("gold\r\n")).find("You have 15 gold pieces."), std::string::npos);
  EXPECT_NE(Plain(anna.Bytes("flood stop\r\n")).find("The flood is stopped."), std::string::npos);
  EXPECT_FALSE(game.Pour(anna.Id, 10000));
  for (const char* bad : {"flood", "flood 0", "flood 1000001", "flood -1", "flood x", "flood 5 red"}) {
    EXPECT_NE(anna.Type(bad).find("Type flood, a number from 1 to 1000000"), std::string::npos) << bad;
  }
}

}  // namespace
}  // namespace corvid::practice
