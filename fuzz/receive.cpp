// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes from a server, cut into reads in any way, under any options, with a player's triggers loaded: nothing but
// text comes of them, and not more than there is room for. The first byte chooses options, and with its highest bit the
// second one chooses more; then each byte is the length of a read and the read follows. A read comes at once, after a
// while, or while a trigger may be waiting.
#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "house.h"
#include "trigger_set.h"

namespace {

using corvid::int16;
using corvid::fuzz::Require;

struct Client {
  explicit Client(unsigned choice, unsigned more) {
    house.Do("#MUD bob Aard aard.example 4000 Bob secret");
    house.Do("#CONNECT bob");
    if ((more & 64U) == 0) corvid::fuzz::LoadTriggers(house);
    if ((more & 128U) != 0) {  // another session is in the foreground
      house.Do("#MUD amy Aard aard.example 4000 Amy secret");
      house.Do("#CONNECT amy");
    }
    corvid::OptionsState& options = house.corvid.optionsState;
    options.CompressOutput = (choice & 1U) != 0;
    options.RemoveAsciiArt = static_cast<int16>((choice >> 1U) % 3);
    options.ColourTextTags = (choice & 8U) != 0;
    options.ColourDisplay = (choice & 16U) != 0;
    options.BatchSpeech = (choice & 32U) != 0;
    if ((choice & 64U) != 0) options.QuietChars = {'*', 0xFF};
    options.OutputWindowSize = 5;
    options.TriggerColourNeeded = (more & 1U) != 0;
    options.OutputLog = (more & 2U) == 0;
    if ((more & 4U) != 0) options.AsciiMinLength = options.AsciiPercent = 5;
    corvid::SessionState& state = house.corvid.sessionState;
    if ((more & 8U) != 0) state.GagFlags[1] = corvid::gag::OnSpeech;
    if ((more & 16U) != 0) state.GagFlags[1] = corvid::gag::AnyDisplay;
    if ((more & 32U) != 0) state.GagLines[1] = 2;
    house.corvid.output.SelectOutputWindow(options.ColourDisplay);
    house.memory.loop.Pass(1000);
  }
  void Read(unsigned kind, const std::string& bytes) {
    if (kind == 7) house.memory.loop.Pass(100);
    if (kind == 6 && late_.size() < MostLate) {
      late_.push_back(house.corvid.platform.timers.Create([this, place = late_.size(), bytes] {
        late_[place]->SetEnabled(false);
        Receive(bytes);
      }));
      late_.back()->SetInterval(30);
      late_.back()->SetEnabled(true);
    } else {
      Receive(bytes);
    }
    Check();
    for (const std::string& words : house.memory.effects.Of("speech")) CheckCodes(words);
    house.Calm();
  }
  void Check() {
    corvid::SessionState& state = house.corvid.sessionState;
    Require(state.PartialLine[1].size() <= corvid::Receive::LongestHeldLine, "the held line");
    Require(state.OutputWindow(1).Length() <= 5000, "the viewport");
  }
  void CheckCodes(const std::string& text) {
    for (const char code : text)
      Require(static_cast<unsigned char>(code) >= 32 || code == '\r' || code == '\n', "no control codes");
  }
  void CheckEnd() {
    house.memory.loop.Pass(5000);
    if (house.memory.loop.Ending()) return;
    Require(house.corvid.sessionState.PartialLine[1].empty(), "a held line is shown in the end");
    CheckCodes(house.corvid.sessionState.OutputWindow(1).Text());
    for (const std::string& name : house.memory.files.FileNames("/data/logs"))
      CheckCodes(house.memory.files.ReadWhole("/data/logs/" + name));
  }

  corvid::fuzz::House house;

 private:
  static constexpr std::size_t MostLate = 20;
  void Receive(const std::string& bytes) {
    if (house.memory.sockets.Connected(1)) house.memory.sockets.Receive(1, bytes);
  }
  std::vector<std::unique_ptr<corvid::Timer>> late_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0 || size > 20000) return 0;
  std::size_t place = 1;
  const bool more = (data[0] & 128U) != 0 && size > 1;
  if (more) ++place;
  Client client(data[0], more ? data[1] : 0);
  while (place < size && !client.house.memory.loop.Ending()) {
    const std::size_t length = std::min<std::size_t>(data[place] * std::size_t{16} + 1, size - place - 1);
    const unsigned kind = data[place] % 8;
    ++place;
    client.Read(kind, std::string(corvid::fuzz::Text(data + place, length)));
    place += length;
  }
  client.CheckEnd();
  return 0;
}
