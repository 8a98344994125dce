// SPDX-License-Identifier: GPL-3.0-or-later
// The login dialogue, byte for byte where clients depend on it.
#include <gtest/gtest.h>

#include "practice/scenario.h"

namespace corvid::practice {
namespace {

constexpr char Ga[] = "\xff\xf9";

struct LoginTest : testing::Test {
  Game game{1};
  Millis now = 0;
};

TEST_F(LoginTest, GreetsWithNegotiationAndAnOpenPrompt) {
  TestPlayer anna(game, now);
  EXPECT_EQ(game.TakeOutput(anna.Id),
            "\xff\xfb\x5a\xff\xfd\x18"
            "==============================================\r\n"
            "\x1b[1;36mMagpie Cross\x1b[0m\r\n"
            "The practice game of Corvid, on your own machine.\r\n"
            "==============================================\r\n"
            "What is your name? \xff\xf9");
}

TEST_F(LoginTest, HidesThePasswordOfANewPlayer) {
  TestPlayer anna(game, now);
  game.TakeOutput(anna.Id);
  EXPECT_EQ(anna.Bytes("anna\r\n"),
            "\r\nWelcome, Anna, you are new here.\r\n"
            "Any word will do as your password. It is forgotten when the game ends.\r\n"
            "\xff\xfb\x01"
            "Choose a password: \xff\xf9");
  const std::string in = anna.Bytes("secret\r\n");
  EXPECT_EQ(in.find("\xff\xfc\x01"), 0U);
  EXPECT_NE(in.find("You are in the game, Anna."), std::string::npos);
  EXPECT_NE(in.find("Hint:"), std::string::npos);
  EXPECT_EQ(in.substr(in.size() - 20), std::string("\n<20/20hp 15gold> ") + Ga);
}

TEST_F(LoginTest, AsksForTheTerminalAndKeepsItsName) {
  TestPlayer anna(game, now);
  game.TakeOutput(anna.Id);
  EXPECT_EQ(anna.Bytes("\xff\xfb\x18"), std::string("\xff\xfa\x18\x01\xff\xf0"));
  EXPECT_EQ(anna.Bytes(std::string("\xff\xfa\x18\x00"
                                   "dumb\xff\xf0",
                                   10)),
            "");
  anna.LogIn("Anna");
  EXPECT_NE(anna.Type("score").find("Your client calls itself: dumb\r\n"), std::string::npos);
}

TEST_F(LoginTest, RefusesOtherOptionsAndStaysSilentOnRefusals) {
  TestPlayer anna(game, now);
  game.TakeOutput(anna.Id);
  EXPECT_EQ(anna.Bytes("\xff\xfb\x1f\xff\xfd\x03"), "\xff\xfe\x1f\xff\xfc\x03");
  EXPECT_EQ(anna.Bytes("\xff\xfe\x1f\xff\xfc\x03\xff\xfd\x01\xff\xfe\x01"), "");
}

TEST_F(LoginTest, SendsSoundLinesOnlyToThoseWhoWantThem) {
  TestPlayer deaf(game, now);
  deaf.LogIn("Deaf");
  EXPECT_EQ(deaf.Type("n").find("!!"), std::string::npos);
  TestPlayer anna(game, now);
  anna.LogIn("Anna", true);
  EXPECT_NE(anna.Type("n").find("\r\n!!SOUND(step.wav V=60 L=1)\r\n"), std::string::npos);
  EXPECT_EQ(anna.Type("xyzzy").find("\r\n!!SOUND(error.wav V=60 L=1)\r\nThere is no command xyzzy."), 0U);
  anna.Bytes("\xff\xfe\x5a");
  EXPECT_EQ(anna.Type("s").find("!!"), std::string::npos);
}

TEST_F(LoginTest, ComingAndGoingAreHeard) {
  TestPlayer anna(game, now);
  anna.Bytes("\xff\xfd\x5a");
  anna.Type("anna");
  EXPECT_EQ(anna.Type("word").find("\r\n\r\n!!SOUND(connect.wav V=60 L=1)\r\nYou are in the game, Anna.\r\n"), 0U);
  EXPECT_EQ(anna.Type("quit"),
            "\r\n!!MUSIC(Off)\r\n!!SOUND(disconnect.wav V=60 L=1)\r\nGoodbye, Anna. #CONNECT brings you back.\r\n");
}

TEST_F(LoginTest, TakesGoodNamesOnly) {
  TestPlayer anna(game, now);
  for (const char* name : {"a", "x1", "two words", "abcdefghijklmnopq", "\xc3\xa9t\xc3\xa9"}) {
    const std::string answer = anna.Type(name);
    EXPECT_NE(answer.find("A name is 2 to 16 letters"), std::string::npos) << name;
    EXPECT_NE(answer.find("What is your name? "), std::string::npos) << name;
  }
  EXPECT_NE(anna.Type("marta").find("Marta lives here already."), std::string::npos);
  EXPECT_NE(anna.Type("FINCH").find("Finch lives here already."), std::string::npos);
  EXPECT_EQ(anna.Type(""), "\r\nWhat is your name? ");
}

TEST_F(LoginTest, RemembersAPlayerAndWhatItHad) {
  TestPlayer first(game, now);
  first.LogIn("Anna");
  first.Type("nw");
  first.Type("get apple");
  EXPECT_EQ(first.Type("quit"), "\r\nGoodbye, Anna. #CONNECT brings you back.\r\n");
  EXPECT_TRUE(game.Leaving(first.Id));
  game.Disconnect(first.Id);
  TestPlayer again(game, now);
  again.Hear();
  EXPECT_EQ(again.Type("ANNA"), "\r\nGood to see you again, Anna.\r\nPassword: ");
  EXPECT_EQ(again.Type("wrong"), "\r\nThat is not the password.\r\nPassword: ");
  EXPECT_NE(again.Type("word").find("The Old Orchard"), std::string::npos);
  EXPECT_NE(again.Type("i").find("a red apple"), std::string::npos);
}

TEST_F(LoginTest, EndsAfterThreeWrongPasswords) {
  TestPlayer first(game, now);
  first.LogIn("Anna");
  TestPlayer thief(game, now);
  thief.Type("anna");
  thief.Type("a");
  thief.Type("b");
  EXPECT_NE(thief.Type("c").find("Three wrong words are enough. Goodbye."), std::string::npos);
  EXPECT_TRUE(game.Leaving(thief.Id));
  EXPECT_FALSE(game.Leaving(first.Id));
}

TEST_F(LoginTest, TheLaterConnectionTakesOver) {
  TestPlayer first(game, now);
  first.LogIn("Anna");
  TestPlayer second(game, now);
  second.LogIn("Anna");
  EXPECT_NE(first.Hear().find("You have come in again from elsewhere."), std::string::npos);
  EXPECT_TRUE(game.Leaving(first.Id));
  EXPECT_NE(second.Type("score").find("Anna"), std::string::npos);
  EXPECT_EQ(first.Type("look"), "") << "a connection that is leaving plays no more";
}

TEST_F(LoginTest, TwoWhoWantOneNewNameDoNotShareIt) {
  TestPlayer quick(game, now);
  TestPlayer slow(game, now);
  quick.Type("anna");
  slow.Type("anna");
  quick.Type("one");
  EXPECT_NE(slow.Type("two").find("Someone else has just taken that name.\r\nWhat is your name? "), std::string::npos);
}

}  // namespace
}  // namespace corvid::practice
