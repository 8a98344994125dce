// SPDX-License-Identifier: GPL-3.0-or-later
#include "game/commands.h"

#include "game/fight.h"
#include "game/help.h"
#include "game/look.h"
#include "game/move.h"
#include "game/output.h"
#include "game/self.h"
#include "game/talk.h"
#include "game/text.h"
#include "game/things.h"

namespace corvid::practice {

namespace {

struct Command {
  std::string_view Word;
  std::size_t Shortest;  // letters that must be typed
  void (*Run)(Turn& turn);
  int Argument;
};

constexpr int UseOf(Use use) {
  return static_cast<int>(use);
}
constexpr int ChannelOf(Channel channel) {
  return static_cast<int>(channel);
}

// The first row that begins with what was typed runs, so the order decides the abbreviations. Words that do harm when
// mistyped must be typed in full.
constexpr Command Commands[] = {
    {"north", 1, Move, 0},
    {"south", 1, Move, 1},
    {"east", 1, Move, 2},
    {"west", 1, Move, 3},
    {"ne", 2, Move, 4},
    {"nw", 2, Move, 5},
    {"se", 2, Move, 6},
    {"sw", 2, Move, 7},
    {"northeast", 6, Move, 4},
    {"northwest", 6, Move, 5},
    {"southeast", 6, Move, 6},
    {"southwest", 6, Move, 7},
    {"up", 1, Move, 8},
    {"down", 1, Move, 9},
    {"look", 1, Look, 0},
    {"inventory", 1, Inventory, 0},
    {"kill", 1, Kill, 0},
    {"get", 1, Get, 0},
    {"ask", 1, Ask, 0},
    {"buy", 1, Buy, 0},
    {"chat", 1, OnChannel, ChannelOf(Channel::Chat)},
    {"flee", 1, Flee, 0},
    {"help", 1, Help, 0},
    {"map", 1, Map, 0},
    {"read", 1, Read, 0},
    {"tell", 1, Tell, 0},
    {"attack", 2, Kill, 0},
    {"auction", 2, OnChannel, ChannelOf(Channel::Auction)},
    {"chatter", 5, ChatterSwitch, 0},
    {"colour", 2, ColourSwitch, 0},
    {"color", 5, ColourSwitch, 0},
    {"drop", 2, Drop, 0},
    {"drink", 3, Consume, UseOf(Use::Drink)},
    {"eat", 3, Consume, UseOf(Use::Eat)},
    {"examine", 2, Look, 0},
    {"exits", 3, Exits, 0},
    {"flood", 5, StartFlood, 0},
    {"go", 2, Go, 0},
    {"gold", 3, Gold, 0},
    {"hint", 2, Hint, 0},
    {"list", 2, List, 0},
    {"newbie", 3, OnChannel, ChannelOf(Channel::Newbie)},
    {"quit", 4, Quit, 0},
    {"remove", 3, Remove, 0},
    {"ring", 2, Ring, 0},
    {"say", 2, Say, 0},
    {"score", 2, Score, 0},
    {"sell", 3, Sell, 0},
    {"sound", 4, SoundSwitch, 0},
    {"take", 2, Get, 0},
    {"wear", 3, Wear, 0},
    {"who", 2, Who, 0},
    {"wield", 2, Wear, 0},
    {"x", 1, Look, 0},
};

const Command* FindCommand(std::string_view word) {
  for (const Command& command : Commands) {
    if (word.size() >= command.Shortest && StartsWith(command.Word, word)) return &command;
  }
  return nullptr;
}

}  // namespace

void RunCommand(GameState& state, Connection& who, const std::string& line, Millis now) {
  who.NeedsPrompt = true;
  std::string rest = Trimmed(line);
  if (rest.empty()) return;
  // "'hello" is "say hello", with or without a blank.
  if (rest[0] == '\'') rest = "say " + rest.substr(1);
  const bool forClient = rest[0] == '#';
  const std::string word = TakeWord(rest);
  const Command* command = FindCommand(word);
  if (command != nullptr) {
    Turn turn{state, who, PlayerOf(state, who), rest, command->Argument, now};
    command->Run(turn);
  } else if (forClient) {
    SendLine(who, word + " is a command of the client, but it was sent to the game. Begin the line with the # itself.");
  } else {
    SendSound(who, "error.wav");
    SendLine(who, "There is no command " + word + ". Type help commands for those there are.");
  }
}

std::string CommandList() {
  std::vector<std::string> words;
  for (const Command& command : Commands) words.emplace_back(command.Word);
  return Joined(words) + ". Most can be shortened: n, l, i, k rat.";
}

}  // namespace corvid::practice
