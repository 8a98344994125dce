// SPDX-License-Identifier: GPL-3.0-or-later
// Foreign bytes, small helpers and the command line.
#include <gtest/gtest.h>

#include "game/arguments.h"
#include "game/random.h"
#include "game/text.h"
#include "practice/scenario.h"

namespace corvid::practice {
namespace {

// What the bytes hold, as one text: lines in brackets, commands as numbers.
std::string Taken(const std::string& bytes, std::size_t portion) {
  std::string taken;
  TelnetInput input;
  const TelnetSink sink{
      [&](const std::string& line, bool cut) { taken += "[" + line + (cut ? "+" : "") + "]"; },
      [&](unsigned char verb, unsigned char option) {
        taken += "(" + std::to_string(verb) + " " + std::to_string(option) + ")";
      },
      [&](unsigned char option, const std::string& payload) {
        taken += "{" + std::to_string(option) + " " + payload + "}";
      },
  };
  for (std::size_t at = 0; at < bytes.size(); at += portion) input.Feed(bytes.substr(at, portion), sink);
  return taken;
}

TEST(InputTest, BytesAreTakenApartInAnyPortions) {
  const struct {
    std::string Bytes, Taken;
  } cases[] = {
      {"look\r\n", "[look]"},
      {"a\nb\rc\r\n\n", "[a][b][c][]"},
      {std::string("n\r\0s\r\0", 6), "[n][s]"},
      {"lo\xff\xfb\x18ok\r\n", "(251 24)[look]"},
      {std::string("\xff\xfa\x18\0xterm\xff\xf0hi\n", 14), std::string("{24 \0xterm}[hi]", 15)},
      {"\xff\xfa\x18"
       "a\xff\xff"
       "b\xff\xf0",
       "{24 a\xff"
       "b}"},
      {"a\xff\xff"
       "b\n",
       "[ab]"},
      {"a\xff\xf9"
       "b\xff\xf1\n",
       "[ab]"},
      {"\x07\x1b[31mred\x7f\t\n", "[[31mred]"},
      {"caf\xc3\xa9\n", "[caf\xc3\xa9]"},
      {std::string(1000, 'x') + "\n", "[" + std::string(1000, 'x') + "]"},
      {std::string(1001, 'x') + "\ny\n", "[" + std::string(1000, 'x') + "+][y]"},
      {"\xff\xfa\x18" + std::string(100, 'x') + "\xff\xf0", "{24 " + std::string(64, 'x') + "}"},
      {"\xff\xfa\x18" + std::string(4097, 'x') + "look\n", "[look]"},
  };
  for (const auto& row : cases) {
    for (std::size_t portion : {std::size_t{1}, std::size_t{3}, row.Bytes.size()}) {
      EXPECT_EQ(Taken(row.Bytes, portion), row.Taken) << portion;
    }
  }
}

TEST(InputTest, AnOverlongLineIsCutWithAMessage) {
  Game game(1);
  Millis now = 0;
  TestPlayer anna(game, now);
  anna.LogIn("Anna");
  const std::string answer = anna.Type("say " + std::string(5000, 'x'));
  EXPECT_EQ(answer.find("\r\nYour line was too long. Only its first 1000 characters were read.\r\nYou say: " +
                        std::string(996, 'x') + "\r\n"),
            0U);
}

TEST(InputTest, RandomBytesNeverBreakTheGame) {
  Random random(99);
  for (int round = 0; round < 30; ++round) {
    Game game(1);
    Millis now = 0;
    TestPlayer anna(game, now);
    TestPlayer bob(game, now);
    bob.LogIn("Bob");
    std::string bytes;
    for (int i = 0; i < 3000; ++i) {
      bytes += random.Chance(30) ? static_cast<char>(random.Between(240, 255)) : static_cast<char>(random.Below(256));
    }
    anna.Bytes(bytes);
    now += 60000;
    game.Advance(now);
    EXPECT_NE(bob.Type("gold").find("You have 15 gold pieces."), std::string::npos);
    game.Disconnect(anna.Id);
  }
}

TEST(InputTest, UnknownConnectionsAreIgnored) {
  Game game(1);
  game.Input(5, "look\r\n", 0);
  game.Disconnect(5);
  EXPECT_EQ(game.TakeOutput(5), "");
  EXPECT_FALSE(game.Leaving(5));
  EXPECT_FALSE(game.Pour(5, 100));
}

TEST(InputTest, CommandLine) {
  const auto parse = [](std::vector<std::string> words) { return ParseArguments(words); };
  EXPECT_EQ(parse({}).Port, 0);
  EXPECT_FALSE(parse({}).Seed.has_value());
  const Arguments all = parse({"--port", "4000", "--seed", "12", "--parent-exits", "--record", "x.log"});
  EXPECT_EQ(all.Error, "");
  EXPECT_EQ(all.Port, 4000);
  EXPECT_EQ(all.Seed.value_or(0), 12U);
  EXPECT_TRUE(all.ParentExits);
  EXPECT_EQ(all.Record, "x.log");
  const struct {
    std::vector<std::string> Words;
    std::string Error;
  } bad[] = {
      {{"--port"}, "--port needs a value"},
      {{"--port", "65536"}, "--port needs a number from 0 to 65535, not 65536"},
      {{"--port", "-1"}, "--port needs a number from 0 to 65535, not -1"},
      {{"--port", "12x"}, "--port needs a number from 0 to 65535, not 12x"},
      {{"--seed", "x"}, "--seed needs a whole number from 0 up, not x"},
      {{"--record", ""}, "--record needs the name of a file"},
      {{"--loud"}, "unknown argument --loud"},
      {{"4000"}, "unknown argument 4000"},
  };
  for (const auto& row : bad) EXPECT_EQ(parse(row.Words).Error, row.Error);
  EXPECT_TRUE(parse({"--help"}).Help);
}

TEST(InputTest, TextHelpers) {
  using Rows = std::vector<std::string>;
  EXPECT_EQ(Wrap("one two three", 7), (Rows{"one two", "three"}));
  EXPECT_EQ(Wrap("abcdefgh ij", 4), (Rows{"abcdefgh", "ij"}));
  EXPECT_EQ(Wrap(Paint("31", "red") + " is it", 6), (Rows{Paint("31", "red") + " is", "it"}));
  EXPECT_EQ(Wrap("one two ", 7), (Rows{"one two", ""}));
  EXPECT_EQ(Wrap("a\nb", 4), (Rows{"a", "b"}));
  EXPECT_EQ(Wrap("", 4), (Rows{""}));
  EXPECT_EQ(StripColours(Paint("1;31", "red") + "x"), "redx");
  EXPECT_EQ(Joined({}), "");
  EXPECT_EQ(Joined({"a", "b", "c"}), "a, b and c");
  EXPECT_EQ(ParseCount("1000000", 1000000), 1000000);
  EXPECT_EQ(ParseCount("1000001", 1000000), -1);
  EXPECT_EQ(ParseCount("99999999999999999999", 1000000), -1);
  EXPECT_EQ(ParseCount("", 10), -1);
  EXPECT_EQ(ParseCount("1x", 10), -1);
  EXPECT_EQ(Capitalised("aNNA"), "Anna");
  EXPECT_TRUE(StartsWith("sword", "SW"));
  EXPECT_FALSE(StartsWith("sword", ""));
}

TEST(InputTest, DiceStayInTheirRange) {
  Random random(3);
  int low = 0, high = 0, hits = 0;
  for (int i = 0; i < 2000; ++i) {
    const int thrown = random.Between(3, 6);
    ASSERT_GE(thrown, 3);
    ASSERT_LE(thrown, 6);
    low += thrown == 3 ? 1 : 0;
    high += thrown == 6 ? 1 : 0;
    hits += random.Chance(25) ? 1 : 0;
  }
  EXPECT_NEAR(low, 500, 120);
  EXPECT_NEAR(high, 500, 120);
  EXPECT_NEAR(hits, 500, 120);
  Random same(3), other(4);
  EXPECT_EQ(Random(3).Below(1000000), same.Below(1000000));
  EXPECT_NE(Random(3).Below(1000000), other.Below(1000000));
}

}  // namespace
}  // namespace corvid::practice
