// SPDX-License-Identifier: GPL-3.0-or-later
// Taking, wearing, trading, talking and looking, as transcripts.
#include <gtest/gtest.h>

#include "practice/scenario.h"

namespace corvid::practice {
namespace {

TEST(ThingsTest, GetDropAndInventory) {
  Play(1, R"(
> i
= You carry nothing.
> nw
= A red apple lies here.
= A stout stick lies here.
> get app
= You take a red apple.
> l
! A red apple lies here.
> get apple
= There is no apple to take here.
> get all
= You take a stout stick.
> get all
= There is nothing to take here.
> i
= You carry:
=   a red apple
=   a stout stick
> drop apple
= You drop a red apple.
> l
= A red apple lies here.
> drop sword
= You carry no sword.
> drop
= Drop what?
> drop all
= You drop a stout stick.
> drop all
= You carry nothing.
)");
}

TEST(ThingsTest, WhatWasTakenGrowsBack) {
  Play(1, R"(
> nw
> get apple
+ 60000
> l
= A red apple lies here.
> get apple
= You take a red apple.
> drop all
> l
= A red apple lies here.
)");
}

TEST(ThingsTest, GoldIsPickedUpAtOnce) {
  Play(1, R"(
> sw
= A few gold coins lie here.
> take coins
= !!SOUND(coin.wav V=60 L=1)
= You pick up 3 gold pieces.
= <20/20hp 18gold> 
> gold
= You have 18 gold pieces.
> i
= You carry nothing.
)");
}

TEST(ThingsTest, OnePieceIsOne) {
  Play(1, R"(
> e
> buy sword
= You buy a short sword for 14 gold.
> gold
= You have 1 gold piece.
)");
}

TEST(ThingsTest, WearWieldAndRemove) {
  Play(1, R"(
> e
> buy cloak
> wear cloak
= You put on a leather cloak.
> i
=   a leather cloak (worn)
> remove cloak
= You put away a leather cloak.
> remove cloak
= You neither wear nor wield that.
> w
> nw
> get all
> wield stick
= You wield a stout stick.
> wear apple
= You can neither wear nor wield a red apple.
> i
=   a stout stick (wielded)
> drop stick
> get stick
> i
=   a stout stick
> eat stick
= You cannot eat a stout stick.
> eat apple
= You eat a red apple and feel better.
> eat apple
= You carry no apple.
)");
}

TEST(ThingsTest, TheShopTakesAndGivesGold) {
  Play(1, R"(
> buy sword
~ Nobody trades here.
> e
> list
= Pell sells:
=   a short sword, 14 gold
> buy sword
= !!SOUND(coin.wav V=60 L=1)
= You buy a short sword for 14 gold.
= <20/20hp 1gold> 
> buy potion
= That costs 5 gold, and you have 1.
> buy moon
= There is no moon for sale here.
> buy
= Buy what? Type list.
> wield sword
> sell sword
= You sell a short sword for 7 gold.
= <20/20hp 8gold> 
> i
= You carry nothing.
> sell
= Sell what?
> w
> w
> get letter
> sell letter
= Marta does not want a folded letter.
> read letter
~ tap Control and it is quiet
> buy ale
= You buy a mug of ale for 1 gold.
> drink ale
= You drink a mug of ale and feel better.
)");
}

TEST(ThingsTest, ArmsBecomeFull) {
  std::string transcript = "> w\n";
  for (int mug = 0; mug < 15; ++mug) transcript += "> buy ale\n= You buy a mug of ale for 1 gold.\n";
  transcript +=
      "> e\n> ne\n> get rose\n> sw\n> nw\n> get all\n> se\n> n\n> u\n> get feather\n> d\n> s\n> se\n"
      "> get horseshoe\n= You take a bent horseshoe.\n> nw\n> w\n> get letter\n= Your arms are full.\n";
  Play(1, transcript);
}

TEST(ThingsTest, LookingAtThings) {
  Play(1, R"(
> look at fountain
~ The water is clear
> l quill
~ old raven
> x nothing
= You see no nothing here.
> n
> u
> look bell
~ bronze bell
> l feather
~ green and purple
> exits
= Down: The Foot of the Clock Tower
)");
}

TEST(ThingsTest, TheMapIsAPictureAndWords) {
  Play(1, R"(
> map
= |  [.]-------[*]-------[.]      |
~ In words: the square lies in the middle.
> s
> read board
= |  [.]-------[*]-------[.]      |
> s
> map
= |            [*]                |
)");
}

TEST(ThingsTest, Talking) {
  Play(1, R"(
> say hello
= You say: hello
~ Quill says: Caw! I teach.
> 'hi
= You say: hi
> say
= Say what?
> ask quill about control
= You ask Quill about control.
~ Quill says: Tap the Control key alone
> ask quill #connect
~ opens that game
> ask marta about ale
= There is no marta here to ask.
> w
> ask marta about the ale
~ Marta says: Brewed it myself.
> ask marta about the moon
~ I would not know about that
> tell marta hello
~ Marta says: Welcome to the Sleeping Crow
> ask
~ Ask whom about what?
> tell nobody hello
= There is no nobody in the game. Type who.
> tell wren
~ Tell whom what?
> tell wren hello
= You tell Wren: hello
! Wren tells you:
+ 1499
! Wren tells you:
+ 1
= !!SOUND(chat.wav V=30 L=1)
~ Wren tells you: 
> who
=   Finch
=   Anna
= 6 players.
)");
}

TEST(ThingsTest, CommandsAreShortenedAndUnknownOnesAnswered) {
  Play(1, R"(
> xyzzy
= There is no command xyzzy. Type help commands for those there are.
> NORTH
= The Foot of the Clock Tower
> go so
= The Village Square
> go ne
= The Herb Garden
> go nowhere
= Go where? You can go west and southwest.
> qui
= There is no command qui. Type help commands for those there are.
> #CONNECT practice
~ #CONNECT is a command of the client
> ring
~ There is no bell here.
> 
! There
= <20/20hp 15gold> 
)");
}

TEST(ThingsTest, Help) {
  Play(1, R"(
> help
~ enter, lines, control, configure, character, connect, session
> help control
~ Tap the Control key alone
> help #configure
~ RemoveAsciiArt
> help flood
~ flood 1000
> h commands
~ k rat
> help nonsense
= There is no help about nonsense. Type help for the words there are.
)");
}

TEST(ThingsTest, Switches) {
  Play(1, R"(
> sound off
= !!MUSIC(Off)
= Sound is now off.
> n
! !!
> sound
= Sound is off. Type sound on or sound off.
> sound on
> s
= !!SOUND(step.wav V=60 L=1)
)");
  Game game(1);
  Millis now = 0;
  TestPlayer anna(game, now);
  anna.LogIn("Anna");
  EXPECT_NE(anna.Bytes("look\r\n").find("\x1b["), std::string::npos);
  anna.Type("colour off");
  EXPECT_EQ(anna.Bytes("look\r\n").find('\x1b'), std::string::npos);
}

}  // namespace
}  // namespace corvid::practice
