// SPDX-License-Identifier: GPL-3.0-or-later
// An hour of play in a handful of bytes: a game that sends anything, a player who types and presses anything, time that
// passes, connections that break, a disk that fills. Each step is a byte that says what, one that says how long, and
// the bytes themselves.
#include <algorithm>
#include <array>

#include "core/keys.h"
#include "house.h"
#include "trigger_set.h"

namespace {

using corvid::int16;
using corvid::fuzz::House;

// What a player has in his scripts, and what he changes while he plays.
constexpr std::array<const char*, 26> Lines{
    "#TRIGGER {*shouts*} {#SUBSTITUTE {%1 says %2}}",
    "#TRIGGER {&who tells you '&what'} {#VAR teller @who;reply @what} {} ANYCASE",
    "#UNTRIGGER {*shouts*}",
    "#TRIGGER {Bright Red} {#CLASS fight enable} prompt COLOR",
    "#ALIAS {k} {kill %1;loot %1}",
    "#KEY F5 {look;#WAIT 0.1;score}",
    "#CONFIGURE CompressOutput False",
    "#CONFIGURE ColourDisplay True",
    "#CONFIGURE ColourDisplay False",
    "#CONFIGURE ColourTextTags True",
    "#CONFIGURE RemoveAsciiArt 0",
    "#CONFIGURE RemoveAsciiArt 2",
    "#CONFIGURE BatchSpeech True",
    "#CONFIGURE OutputWindowSize 5",
    "#CONFIGURE OutputLog False",
    "#CONFIGURE DisplayCommandsInOutput False",
    "#QUIET {*}",
    "#GAGON",
    "#GAGOFF",
    "#CONNECT bob",
    "#CONNECT amy",
    "#SAVE",
    "#ALARM 1 {look}",
    "#KILLALL",
    "#LOAD {Aard/triggers.set}",
    "#CLASS counting enable",
};

class Play {
 public:
  Play() {
    house_.Do("#MUD bob Aard aard.example 4000 Bob secret");
    house_.Do("#MUD amy Aard aard.example 4000 Amy secret");
    house_.Do("#CONNECT bob");
    corvid::fuzz::LoadTriggers(house_);
  }
  void Step(std::uint8_t what, const std::string& bytes) {
    const int16 session = house_.corvid.scriptState.CurrentSocket;
    switch (what % 10) {
      case 0:
      case 1:
      case 2:
        if (house_.memory.sockets.Connected(session)) house_.memory.sockets.Receive(session, bytes);
        break;
      case 3:
        if (house_.memory.sockets.Connected(1)) house_.memory.sockets.Receive(1, bytes);
        break;
      case 4:
        house_.memory.loop.Pass(static_cast<int>(bytes.size()) * 20 + 1);
        break;
      case 5:
        if (corvid::fuzz::AsksForFewRounds(bytes)) house_.Do(bytes);
        break;
      case 6:
        Keys(bytes);
        break;
      case 7:
        for (const char c : bytes.substr(0, 8)) house_.Do(Lines[static_cast<unsigned char>(c) % Lines.size()]);
        break;
      case 8:
        house_.memory.sockets.CloseByPeer(session);
        break;
      default:
        Disk(what >= 128);
    }
    house_.Calm();
  }
  void Check() {
    const corvid::Corvid& corvid = house_.corvid;
    using corvid::fuzz::Require;
    for (int16 i = 0; i <= corvid.sessionState.SessionHigh; ++i) {
      Require(corvid.sessionState.PartialLine[i].size() <= corvid::Receive::LongestHeldLine, "the held line");
      Require(corvid.scriptState.SocketOwner[i] <= corvid.sessionState.CharacterCount, "the owner of a session");
    }
    Require(corvid.scriptState.CurrentSocket <= corvid.sessionState.SessionHigh, "the session in the foreground");
  }
  bool Ended() const { return house_.memory.loop.Ending(); }

 private:
  // Each key is two bytes, code and shift state, and types its code if that is a character.
  void Keys(const std::string& bytes) {
    auto& keys = house_.corvid.keyboard;
    for (std::size_t i = 0; i + 1 < std::min<std::size_t>(bytes.size(), 40); i += 2) {
      const auto code = static_cast<int16>(static_cast<unsigned char>(bytes[i]));
      const auto shift = static_cast<int16>(static_cast<unsigned char>(bytes[i + 1]) & 7);
      keys.KeyDown(code, shift);
      if (code >= 32 || code == corvid::keycode::Enter) keys.KeyTyped(std::string(1, bytes[i]));
      keys.KeyUp(code, shift);
      if (EntryAsksForMuch()) house_.corvid.bufferState.EntryBox.SetText("");
    }
    house_.memory.loop.Pass(20);
  }
  bool EntryAsksForMuch() const { return !corvid::fuzz::AsksForFewRounds(house_.corvid.bufferState.EntryBox.View()); }
  void Disk(bool full) {
    house_.memory.files.Fail = nullptr;
    if (full)
      house_.memory.files.Fail = [](const std::string& operation, const std::string&) {
        return operation == "read" ? std::string() : std::string("No space left on device");
      };
  }

  House house_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > 4096) return 0;
  Play play;
  std::size_t place = 0;
  while (place + 1 < size && !play.Ended()) {
    const std::uint8_t what = data[place];
    const std::size_t length = std::min<std::size_t>(data[place + 1], size - place - 2);
    play.Step(what, std::string(corvid::fuzz::Text(data + place + 2, length)));
    play.Check();
    place += 2 + length;
  }
  return 0;
}
