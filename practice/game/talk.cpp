// SPDX-License-Identifier: GPL-3.0-or-later
#include "game/talk.h"

#include <algorithm>

#include "game/chatter.h"
#include "game/help.h"
#include "game/output.h"
#include "game/text.h"

namespace corvid::practice {

namespace {

const Person* PersonHere(int room, std::string_view word) {
  for (const Person& person : People()) {
    if (person.Room == room && (word.empty() || StartsWith(person.Word, word))) return &person;
  }
  return nullptr;
}

void Speaks(Turn& turn, const Person& person, std::string_view text) {
  SendText(turn.Who, Paint(ink::Person, std::string(person.Name) + " says:") + " " + std::string(text));
}

// The first answer whose word stands somewhere in what was asked.
std::string_view AnswerOf(const Person& person, const std::string& question) {
  const std::string lower = Lower(question);
  for (const Answer& answer : person.Answers) {
    if (lower.find(answer.Word) != std::string::npos) return answer.Text;
  }
  return {};
}

bool Greets(const std::string& said) {
  const std::string lower = Lower(said);
  return lower.find("hello") != std::string::npos || lower == "hi" || StartsWith(lower, "hi ");
}

}  // namespace

void Say(Turn& turn) {
  if (turn.Rest.empty()) {
    SendLine(turn.Who, "Say what?");
    return;
  }
  SendLine(turn.Who, "You say: " + turn.Rest);
  SendRoom(turn.State, turn.Self.Room, turn.Who.Id, Paint(ink::Person, turn.Self.Name) + " says: " + turn.Rest);
  const Person* person = PersonHere(turn.Self.Room, "");
  if (person != nullptr) Speaks(turn, *person, AnswerOf(*person, Greets(turn.Rest) ? "hello" : turn.Rest));
}

void Tell(Turn& turn) {
  const std::string name = TakeWord(turn.Rest);
  if (name.empty() || turn.Rest.empty()) {
    SendLine(turn.Who, "Tell whom what? For example: tell wren hello");
    return;
  }
  if (Connection* other = FindPlaying(turn.State, name); other != nullptr) {
    SendLine(turn.Who, "You tell " + other->Name + ": " + turn.Rest);
    SendSound(*other, "chat.wav", 30);
    SendLine(*other, TellLine(turn.Self.Name, turn.Rest));
  } else if (const std::string chatter = FindChatter(name); !chatter.empty()) {
    SendLine(turn.Who, "You tell " + chatter + ": " + turn.Rest);
    AnswerTell(turn.State, turn.Who, chatter, turn.Now);
  } else if (const Person* person = PersonHere(turn.Self.Room, name); person != nullptr) {
    Speaks(turn, *person, AnswerOf(*person, Greets(turn.Rest) ? "hello" : turn.Rest));
  } else {
    SendLine(turn.Who, "There is no " + name + " in the game. Type who.");
  }
}

void Ask(Turn& turn) {
  const std::string name = TakeWord(turn.Rest);
  if (StartsWith(turn.Rest, "about ")) TakeWord(turn.Rest);
  if (name.empty() || turn.Rest.empty()) {
    SendLine(turn.Who, "Ask whom about what? For example: ask quill about control");
    return;
  }
  const Person* person = PersonHere(turn.Self.Room, name);
  if (person == nullptr) {
    SendLine(turn.Who, "There is no " + name + " here to ask.");
    return;
  }
  SendLine(turn.Who, "You ask " + std::string(person->Name) + " about " + turn.Rest + ".");
  const std::string_view lesson = person->KnowsHelp ? HelpText(turn.Rest) : std::string_view();
  Speaks(turn, *person, lesson.empty() ? AnswerOf(*person, turn.Rest) : lesson);
}

void OnChannel(Turn& turn) {
  constexpr std::string_view ChannelNames[] = {"chat", "newbie", "auction"};
  const std::string_view channel = ChannelNames[turn.Argument];
  if (turn.Rest.empty()) {
    SendLine(turn.Who, Capitalised(channel) + " what? What you write behind it is heard by everybody.");
    return;
  }
  const std::string line = ChannelLine(channel, turn.Self.Name, turn.Rest);
  for (auto& [id, who] : turn.State.Connections) {
    if (who.At != Stage::Playing) continue;
    if (id != turn.Who.Id) SendSound(who, "chat.wav", 30);
    SendLine(who, line);
  }
}

void Who(Turn& turn) {
  SendLine(turn.Who, Paint(ink::Title, "In the game:"));
  std::vector<std::string> names = ChatterNames();
  for (const auto& [id, who] : turn.State.Connections) {
    if (who.At == Stage::Playing) names.push_back(who.Name);
  }
  std::sort(names.begin(), names.end());
  for (const std::string& name : names) SendLine(turn.Who, "  " + Paint(ink::Person, name));
  SendLine(turn.Who, std::to_string(names.size()) + " players.");
}

}  // namespace corvid::practice
