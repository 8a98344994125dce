// SPDX-License-Identifier: GPL-3.0-or-later
#include "game/self.h"

#include "game/chatter.h"
#include "game/login.h"
#include "game/output.h"
#include "game/text.h"

namespace corvid::practice {

namespace {

// Sets the switch from "on" or "off"; another word shows how it stands.
bool Switch(Turn& turn, bool& value, std::string_view name) {
  const std::string word = Lower(turn.Rest);
  const bool known = word == "on" || word == "off";
  if (known) value = word == "on";
  SendLine(turn.Who, Capitalised(name) + (known ? " is now " : " is ") + (value ? "on." : "off.") +
                         (known ? "" : " Type " + std::string(name) + " on or " + std::string(name) + " off."));
  return known;
}

}  // namespace

void Score(Turn& turn) {
  const Player& self = turn.Self;
  SendLine(turn.Who, Paint(ink::Title, self.Name));
  SendLine(turn.Who, "Hit points: " + std::to_string(self.Hp) + " of " + std::to_string(self.MaxHp));
  SendLine(turn.Who, "Gold: " + std::to_string(self.Gold));
  SendLine(turn.Who, "Points: " + std::to_string(self.Points));
  SendLine(turn.Who, "Deaths: " + std::to_string(self.Deaths));
  SendLine(turn.Who, "Your client calls itself: " + (turn.Who.Terminal.empty() ? "nothing" : turn.Who.Terminal));
  SendLine(turn.Who, std::string("Sound lines: ") + (turn.Who.Sounds ? "on" : "off"));
}

void Ring(Turn& turn) {
  if (turn.Self.Room != TowerTop) {
    SendLine(turn.Who, "There is no bell here. It hangs at the top of the tower.");
    return;
  }
  SendSound(turn.Who, "bell.wav", 90);
  SendLine(turn.Who, "You pull the rope, and the bell booms out over the village.");
  for (auto& [id, who] : turn.State.Connections) {
    if (id == turn.Who.Id || who.At != Stage::Playing) continue;
    SendSound(who, "bell.wav", 50);
    SendLine(who, "The bell of the clock tower rings.");
  }
}

void ColourSwitch(Turn& turn) {
  Switch(turn, turn.Who.Colour, "colour");
}

void SoundSwitch(Turn& turn) {
  if (Lower(turn.Rest) == "off") SendMusic(turn.Who, "Off");
  Switch(turn, turn.Who.Sounds, "sound");
}

void ChatterSwitch(Turn& turn) {
  if (Lower(turn.Rest) == "now") {
    ChatterToOne(turn.Who);
  } else {
    Switch(turn, turn.Who.Chatter, "chatter");
  }
}

void Quit(Turn& turn) {
  LeaveGame(turn.State, turn.Who);
  SendSound(turn.Who, "disconnect.wav");
  SendLine(turn.Who, "Goodbye, " + turn.Self.Name + ". #CONNECT brings you back.");
}

void StartFlood(Turn& turn) {
  const std::string word = Lower(TakeWord(turn.Rest));
  FloodRun& flood = turn.Who.Flood;
  if (word == "stop") {
    SendLine(turn.Who, flood.Running() ? "The flood is stopped." : "There is no flood.");
    flood = {};
    return;
  }
  const int count = ParseCount(word, MostFloodLines);
  const std::string colour = Lower(turn.Rest);
  if (flood.Running()) {
    SendLine(turn.Who, "A flood is running already. Type flood stop to end it.");
  } else if (count < 1 || (!colour.empty() && colour != "colour" && colour != "color")) {
    SendLine(turn.Who, "Type flood, a number from 1 to 1000000, and colour if you want colours.");
  } else {
    flood = {count, 0, !colour.empty(), PromptText(turn.Self)};
  }
}

}  // namespace corvid::practice
