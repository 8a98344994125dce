// SPDX-License-Identifier: GPL-3.0-or-later
#include "game/login.h"

#include <algorithm>

#include "game/chatter.h"
#include "game/help.h"
#include "game/look.h"
#include "game/output.h"
#include "game/text.h"

namespace corvid::practice {

namespace {

constexpr std::size_t ShortestName = 2, LongestName = 16;
constexpr int MostWrongPasswords = 3;
constexpr std::size_t MostPlayers = 1000;  // remembered; an absent one makes room for a new one

bool GoodName(const std::string& name) {
  return name.size() >= ShortestName && name.size() <= LongestName &&
         std::all_of(name.begin(), name.end(), [](char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); });
}

bool LivesHere(const std::string& name) {
  const auto people = People();
  return IsChatterName(name) ||
         std::any_of(people.begin(), people.end(), [&](const Person& person) { return person.Name == name; });
}

bool Playing(const GameState& state, const std::string& name) {
  return std::any_of(state.Connections.begin(), state.Connections.end(),
                     [&](const auto& row) { return row.second.At == Stage::Playing && row.second.Name == name; });
}

void ForgetSomeone(GameState& state) {
  for (auto row = state.Players.begin(); row != state.Players.end(); ++row) {
    if (!Playing(state, row->first)) {
      state.Players.erase(row);
      return;
    }
  }
}

void TakeName(GameState& state, Connection& who, const std::string& line) {
  const std::string name = Trimmed(line);
  who.NeedsPrompt = true;
  if (name.empty()) return;
  if (!GoodName(name)) {
    SendLine(who, "A name is 2 to 16 letters from A to Z, and nothing else.");
    return;
  }
  who.Name = Capitalised(name);
  if (LivesHere(who.Name)) {
    SendLine(who, who.Name + " lives here already. Choose another name.");
    return;
  }
  const bool known = state.Players.count(who.Name) > 0;
  who.At = known ? Stage::Password : Stage::NewPassword;
  SendLine(who, known ? "Good to see you again, " + who.Name + "." : "Welcome, " + who.Name + ", you are new here.");
  if (!known) SendLine(who, "Any word will do as your password. It is forgotten when the game ends.");
  // The game promises to echo, which it does not do: so the terminal of a sighted player hides what is typed.
  SendRaw(who, telnet::Command(telnet::Will, telnet::Echo));
}

void ShowEcho(Connection& who) {
  SendRaw(who, telnet::Command(telnet::Wont, telnet::Echo));
}

// Whoever logs in again from elsewhere takes over.
void DropOldConnection(GameState& state, const Connection& who) {
  for (auto& [id, old] : state.Connections) {
    if (id == who.Id || old.At != Stage::Playing || old.Name != who.Name) continue;
    SendLine(old, "You have come in again from elsewhere. Goodbye here.");
    LeaveGame(state, old);
  }
}

void StartClocks(GameState& state, Millis now) {
  if (state.NextHeal != Never) return;
  state.NextChat = now + FirstChatTime;
  state.NextHeal = now + HealTime;
  state.NextRefill = now + RefillTime;
}

void EnterGame(GameState& state, Connection& who, Millis now) {
  DropOldConnection(state, who);
  who.At = Stage::Playing;
  StartClocks(state, now);
  Player& player = PlayerOf(state, who);
  SendLine(who, "");
  SendSound(who, "connect.wav");
  SendLine(who, Paint(ink::Title, "You are in the game, " + who.Name + "."));
  SendText(who, "What you type and end with Enter is sent here. Type help for help, and quit to leave.");
  SendRoom(state, player.Room, who.Id, Paint(ink::Person, who.Name) + " has come into the game.");
  ArriveInRoom(state, who, None);
}

void TakeNewPassword(GameState& state, Connection& who, const std::string& line, Millis now) {
  who.NeedsPrompt = true;
  const std::string word = Trimmed(line);
  if (word.empty()) return;
  ShowEcho(who);
  const auto found = state.Players.find(who.Name);
  if (found != state.Players.end()) {
    // Two connections asked for the same new name, and the other one was quicker.
    SendLine(who, "Someone else has just taken that name.");
    who.At = Stage::Name;
    return;
  }
  if (state.Players.size() >= MostPlayers) ForgetSomeone(state);
  Player& player = state.Players[who.Name];
  player.Name = who.Name;
  player.Password = word;
  EnterGame(state, who, now);
}

void TakePassword(GameState& state, Connection& who, const std::string& line, Millis now) {
  who.NeedsPrompt = true;
  const auto found = state.Players.find(who.Name);
  if (found != state.Players.end() && found->second.Password == Trimmed(line)) {
    ShowEcho(who);
    EnterGame(state, who, now);
    return;
  }
  SendLine(who, "That is not the password.");
  if (++who.WrongPasswords < MostWrongPasswords) return;
  ShowEcho(who);
  SendLine(who, "Three wrong words are enough. Goodbye.");
  who.At = Stage::Leaving;
}

}  // namespace

void Greet(Connection& who) {
  SendRaw(who, telnet::Command(telnet::Will, telnet::Msp));
  SendRaw(who, telnet::Command(telnet::Do, telnet::TerminalType));
  SendLine(who, "==============================================");
  SendLine(who, Paint(ink::RoomName, "Magpie Cross"));
  SendLine(who, "The practice game of Corvid, on your own machine.");
  SendLine(who, "==============================================");
  SendPrompt(who, LoginQuestion(Stage::Name));
}

std::string_view LoginQuestion(Stage stage) {
  if (stage == Stage::Name) return "What is your name? ";
  return stage == Stage::NewPassword ? "Choose a password: " : "Password: ";
}

void LoginLine(GameState& state, Connection& who, const std::string& line, Millis now) {
  if (who.At == Stage::Name) {
    TakeName(state, who, line);
  } else if (who.At == Stage::NewPassword) {
    TakeNewPassword(state, who, line, now);
  } else if (who.At == Stage::Password) {
    TakePassword(state, who, line, now);
  }
}

void LeaveGame(GameState& state, Connection& who) {
  if (who.At == Stage::Playing) {
    SendMusic(who, "Off");
    SendRoom(state, PlayerOf(state, who).Room, who.Id, Paint(ink::Person, who.Name) + " has left the game.");
  }
  who.At = Stage::Leaving;
  who.Foe = None;
  who.NextRound = Never;
  who.Flood = {};
  const bool nobody = std::none_of(state.Connections.begin(), state.Connections.end(),
                                   [](const auto& row) { return row.second.At == Stage::Playing; });
  if (nobody) state.NextChat = state.NextHeal = state.NextRefill = Never;
}

}  // namespace corvid::practice
