// SPDX-License-Identifier: GPL-3.0-or-later
#include "game/help.h"

#include "game/commands.h"
#include "game/output.h"
#include "game/text.h"

namespace corvid::practice {

namespace {

struct Topic {
  std::string_view Word;
  std::string_view Text;
};

// The order decides which topic an abbreviation finds.
constexpr Topic ClientTopics[] = {
    {"enter",
     "The line at the bottom of the client is the entry; on a text console it is the line you are typing. Press Enter: "
     "the line goes to the game, and the game's answer is spoken.\n"
     "A semicolon parts several lines: n;e;sw sends three of them, one after the other.\n"
     "A line that begins with # is for the client itself and is not sent."},
    {"lines",
     "In the window the entry keeps the lines you typed, one below the other. Up Arrow and Down Arrow move between "
     "them, and each is spoken as you come to it. Press Enter on an earlier line and it is sent again; it is copied to "
     "the end, and the old one stays where it is. You can change it before you press Enter.\n"
     "On a text console the arrow keys are not the client's. There a short word of your own saves the typing: "
     "#ALIAS kr {kill rat} makes kr stand for kill rat, in the window too."},
    {"control",
     "Tap the Control key alone, without another key, and all speech stops at once; on a text console type /key "
     "Control. Nothing is lost: every line is on the screen, and the next line from the game is spoken again."},
    {"configure",
     "#CONFIGURE sets one option of the client. Write the option's name in full, then its value. Some to try here:\n"
     "#CONFIGURE RemoveAsciiArt 0 reads pictures made of signs, 1 keeps them silent.\n"
     "#CONFIGURE CompressOutput off shows blank lines too.\n"
     "#CONFIGURE ColourTextTags on writes the names of colours into the text.\n"
     "#CONFIGURE BatchSpeech on speaks a text that the game broke into lines as one piece."},
    {"character",
     "#CHARACTER and a name takes you to another game that is open, for example #CHARACTER practice. From then on you "
     "hear that one, and what you type goes there. The others go on in the background."},
    {"connect",
     "#CONNECT and a name from your character table opens that game. #CONNECT alone connects you again to the game you "
     "were in. Try it: type quit, and then #CONNECT. You will be asked for your name and your password again."},
    {"session",
     "A line of the form name:text sends the text to the game of that name and takes you there. name::text sends it "
     "there, but you stay where you are. *:text sends it to every game you are connected to. The name can be "
     "shortened. For example practice:look, or pra::look."},
    {"colours",
     "The game colours its text: places are bright cyan, things yellow, beasts red, people magenta. #CONFIGURE "
     "ColourDisplay on shows the colours, #CONFIGURE ColourTextTags on writes them as words. To have none at all, type "
     "colour off."},
    {"sounds",
     "The game tells the client to play sounds: steps, doors, blows, coins, music in the inn. It does so with lines "
     "that begin with two exclamation marks, and only if the client said that it understands them. Type score to hear "
     "whether it did. Type sound off or sound on to choose."},
    {"art",
     "Type map: you will hear the words below the board, but not the board itself, which is made of dots and dashes. "
     "The client leaves out lines that are mostly signs. #CONFIGURE RemoveAsciiArt 0 has them spoken, #CONFIGURE "
     "RemoveAsciiArt 1 makes them silent again."},
    {"prompts",
     "After each answer the game writes a prompt: your hit points, how many you can have, and your gold. Its line has "
     "no end, so the client waits a moment for the rest and then speaks what it has."},
    {"password",
     "The password you type here is shown and, while logging is on, written to the log of this game like every other "
     "line you send. So take a word that you use nowhere else. The game forgets it when it ends."},
    {"walk",
     "#RECORD begins to record your steps, and #ENDRECORD with a name keeps them; a dot and that name walks them "
     "again, "
     "two dots walk them backwards. A tour that goes through all ten directions and ends where it began: from the "
     "square, go n, u, d, e, sw, s, w, ne, nw, se."},
};

constexpr Topic GameTopics[] = {
    {"fight",
     "Type kill rat in the cellar. The fight goes on by itself, a round every two seconds, and the prompt shows how "
     "you "
     "do. Type flee to get away. If you die, you wake in the square with all you had. Rest heals you slowly; pie, ale "
     "and potions do it at once. Wield a stick or a sword, wear a cloak."},
    {"things",
     "get apple, get all, drop apple, look at apple, inventory, wear cloak, wield stick, remove cloak, eat apple, "
     "drink "
     "ale, read letter. What you take grows back after a minute."},
    {"trade",
     "In the shop and in the inn: list, buy sword, sell tail. gold tells what you have. A shop pays half the price."},
    {"talk",
     "say hello is heard by all in the room. tell wren hello is heard by Wren alone. ask marta about rat gets an "
     "answer "
     "from those who live here. chat, newbie and auction with some words are heard by everybody. who tells who is in "
     "the game. chatter off silences the other players, chatter on brings them back, chatter now lets one of them "
     "speak at once."},
    {"flood",
     "flood 1000 sends a thousand numbered lines as fast as your client takes them, with a prompt after every tenth, "
     "and flood 1000 colour does so in colours. The number may go up to 1000000. The last line is flood done and the "
     "number. flood stop ends it. It shows how a client bears much text: the keys should answer all the time."},
};

void ListTopics(Turn& turn, std::string_view title, std::span<const Topic> topics) {
  std::vector<std::string> words;
  for (const Topic& topic : topics) words.emplace_back(topic.Word);
  SendText(turn.Who, Paint(ink::Title, title) + " " + Joined(words) + ".");
}

std::string_view Find(std::span<const Topic> topics, std::string_view word) {
  for (const Topic& topic : topics) {
    if (StartsWith(topic.Word, word)) return topic.Text;
  }
  return {};
}

}  // namespace

std::string_view HelpText(std::string_view word) {
  // A client command may be asked for as it is typed.
  if (!word.empty() && word[0] == '#') word.remove_prefix(1);
  const std::string_view client = Find(ClientTopics, word);
  return client.empty() ? Find(GameTopics, word) : client;
}

void Help(Turn& turn) {
  if (turn.Rest.empty()) {
    SendLine(turn.Who, "Type help and one of these words.");
    ListTopics(turn, "The client:", ClientTopics);
    ListTopics(turn, "The game:", GameTopics);
    SendLine(turn.Who, "help commands lists the commands.");
  } else if (StartsWith("commands", turn.Rest) && turn.Rest.size() > 3) {
    SendText(turn.Who, CommandList());
  } else if (const std::string_view text = HelpText(turn.Rest); !text.empty()) {
    SendText(turn.Who, text);
  } else {
    SendLine(turn.Who, "There is no help about " + turn.Rest + ". Type help for the words there are.");
  }
}

void Hint(Turn& turn) {
  const Room& room = Rooms[static_cast<std::size_t>(turn.Self.Room)];
  SendText(turn.Who,
           Paint(ink::Hint, "Hint:") + " " +
               (room.Hint.empty() ? std::string("There is none for this place. Type help.") : std::string(room.Hint)));
}

}  // namespace corvid::practice
