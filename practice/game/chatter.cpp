// SPDX-License-Identifier: GPL-3.0-or-later
#include "game/chatter.h"

#include <algorithm>
#include <iterator>

#include "game/output.h"
#include "game/text.h"

namespace corvid::practice {

namespace {

constexpr int ShortestPause = 15000, LongestPause = 40000;  // milliseconds between two lines

constexpr std::string_view Names[] = {"Finch", "Wren", "Linnet", "Siskin", "Dunnock"};

struct ChatterLine {
  std::string_view Channel;  // "tell": said to each player alone
  std::string_view Name;
  std::string_view Text;
};

constexpr ChatterLine Lines[] = {
    {"newbie", "Wren", "how do I stop the voice when it reads too much?"},
    {"newbie", "Finch", "tap Control once, all by itself"},
    {"chat", "Linnet", "good evening everybody"},
    {"auction", "Siskin", "a silver whistle, starting at 10 gold"},
    {"chat", "Dunnock", "the boar got me again. Bring a sword, they said"},
    {"auction", "Finch", "12 gold for the whistle"},
    {"tell", "Wren", "hello! are you new? type tell wren hello to answer me"},
    {"newbie", "Linnet", "is there a way to hear a picture?"},
    {"newbie", "Dunnock", "type map, the words are below the picture"},
    {"chat", "Siskin", "has anyone rung the bell today?"},
    {"auction", "Siskin", "whistle going once, going twice, sold to Finch"},
    {"chat", "Finch", "it is shrill. I like it"},
    {"tell", "Linnet", "the apples in the orchard are ripe, northwest of the square"},
    {"chat", "Wren", "I walk in circles: n, e, sw. It is a nice tune of footsteps"},
    {"newbie", "Siskin", "where do I sell a rat tail?"},
    {"newbie", "Finch", "Pell takes it, east of the square"},
    {"auction", "Dunnock", "a tusk. A real one, this time"},
    {"chat", "Linnet", "Marta's pie is better than her ale"},
};
constexpr int LineCount = static_cast<int>(std::size(Lines));

constexpr std::string_view TellAnswers[] = {
    "nice to hear from you",
    "I am fine. Have you been up the tower?",
    "ask Quill, he knows everything",
    "sorry, in a fight, talk later",
    "ha! Well said",
};

std::string_view ChannelInk(std::string_view channel) {
  if (channel == "newbie") return ink::Newbie;
  return channel == "auction" ? ink::Auction : ink::Chat;
}

void SendChatter(Connection& who, int at) {
  const ChatterLine& line = Lines[at];
  SendSound(who, "chat.wav", 30);
  SendLine(who,
           line.Channel == "tell" ? TellLine(line.Name, line.Text) : ChannelLine(line.Channel, line.Name, line.Text));
}

}  // namespace

bool IsChatterName(std::string_view name) {
  return std::find(std::begin(Names), std::end(Names), name) != std::end(Names);
}

std::vector<std::string> ChatterNames() {
  return {std::begin(Names), std::end(Names)};
}

std::string FindChatter(std::string_view start) {
  const auto* found =
      std::find_if(std::begin(Names), std::end(Names), [&](auto name) { return StartsWith(name, start); });
  return found == std::end(Names) ? std::string() : std::string(*found);
}

void ChatterToAll(GameState& state, Millis now) {
  for (auto& [id, who] : state.Connections) {
    if (who.At == Stage::Playing && who.Chatter) SendChatter(who, state.ChatterAt);
  }
  state.ChatterAt = (state.ChatterAt + 1) % LineCount;
  state.NextChat = now + state.Dice.Between(ShortestPause, LongestPause);
}

void ChatterToOne(Connection& who) {
  SendChatter(who, who.ChatterAt);
  who.ChatterAt = (who.ChatterAt + 1) % LineCount;
}

void AnswerTell(GameState& state, const Connection& who, const std::string& name, Millis now) {
  // One answer at a time: a hasty player does not fill the list.
  const bool waits =
      std::any_of(state.Replies.begin(), state.Replies.end(), [&](const Reply& reply) { return reply.Id == who.Id; });
  if (waits) return;
  const int answer = state.Dice.Below(static_cast<int>(std::size(TellAnswers)));
  state.Replies.push_back({now + ReplyTime, who.Id, TellLine(name, TellAnswers[answer])});
}

std::string ChannelLine(std::string_view channel, std::string_view name, std::string_view text) {
  return Paint(ChannelInk(channel), "[" + std::string(channel) + "]") + " " + std::string(name) + ": " +
         std::string(text);
}

std::string TellLine(std::string_view name, std::string_view text) {
  return Paint(ink::Tell, std::string(name) + " tells you:") + " " + std::string(text);
}

}  // namespace corvid::practice
