// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes from a server, cut into reads in any way, under any options: nothing but text comes of them, and not more
// than there is room for. The first byte chooses options, and with its highest bit the second one chooses more; then
// each byte is the length of a read and the read follows.
#include "sessions/receive.h"
#include "fuzz.h"
#include "platform/memory/memory_platform.h"
#include "script/symbols.h"
#include "script_house.h"
#include "sessions/sound_lines.h"
#include "sound/sound.h"
#include "support_upcalls.h"

namespace {

using corvid::int16;

// Triggers that gag, rewrite and lengthen lines, and let time pass while they run.
class BusyTriggers final : public corvid::LineTriggers {
 public:
  explicit BusyTriggers(corvid::MemoryLoop& loop) : loop_(loop) {}
  bool Any() const override { return On; }
  corvid::LineFate Fire(int16, corvid::LineVersions& line) override {
    const std::size_t length = line.PlainLine.size();
    if (length % 7 == 1) return corvid::LineFate::IsFinished;
    if (length % 7 == 2) line.TaggedLine = line.SpokenLine = line.PlainLine = "replaced";
    if (length % 7 == 3) line.TaggedLine += "<RED>more</RED>\r\nand more";
    if (length % 7 == 4 && depth_ < 3) {
      ++depth_;
      loop_.Pass(length % 2 == 0 ? 5 : 120);
      --depth_;
    }
    return corvid::LineFate::GoesOn;
  }
  bool On = false;

 private:
  corvid::MemoryLoop& loop_;
  int depth_ = 0;
};

struct Client {
  explicit Client(unsigned choice) {
    symbols.LoadSystemVariables();
    memory.face.RecordDisplay = false;
    options.LogsFolder = "/logs/";
    memory.files.CreateFolder("/logs");
    options.CompressOutput = (choice & 1U) != 0;
    options.RemoveAsciiArt = static_cast<int16>((choice >> 1U) % 3);
    options.ColourTextTags = (choice & 8U) != 0;
    options.ColourDisplay = (choice & 16U) != 0;
    options.BatchSpeech = (choice & 32U) != 0;
    if ((choice & 64U) != 0) options.QuietChars = {'*', 0xFF};
    state.TriggerEnabled[0] = 1;
    output.CreateViewports(0);
    output.SelectOutputWindow(options.ColourDisplay);
    options.OutputWindowSize = 5;
    logs.OpenLog(0);
    memory.sockets.Create(0);
    memory.sockets.Connect(0, "game.example", "23", 1000);
    memory.loop.Pass(1);
  }
  void ChooseMore(unsigned choice) {
    options.TriggerColourNeeded = (choice & 1U) != 0;
    options.OutputLog = (choice & 2U) == 0;
    if ((choice & 4U) != 0) options.AsciiMinLength = options.AsciiPercent = 5;
    if ((choice & 8U) != 0) state.GagFlags[0] = corvid::gag::OnSpeech;
    if ((choice & 16U) != 0) state.GagFlags[0] = corvid::gag::AnyDisplay;
    if ((choice & 32U) != 0) state.GagLines[0] = 2;
    triggers.On = (choice & 64U) != 0;
    if ((choice & 128U) != 0) script.CurrentSocket = 1;  // another session is in the foreground
  }
  void Read(std::string_view bytes) {
    memory.sockets.Receive(0, bytes);  // nobody listens: the bytes wait
    receive.sockTelnet_OnRead(0);
  }

  corvid::MemoryPlatform memory;
  corvid::Platform platform = memory.All();
  corvid::ScriptState script;
  corvid::OptionsState options;
  corvid::SessionState state;
  corvid::RecordingRunner runner{memory.effects};
  corvid::RecordingErrors errors{memory.effects};
  corvid::RecordingSpeaker speaker{memory.effects};
  corvid::fuzz::NoPrompter prompter;
  corvid::RecordingScreens screens{memory.effects};
  corvid::RecordingJobs jobs{memory.effects};
  corvid::Upcalls upcalls{runner, errors, speaker, prompter, screens, jobs};
  corvid::Symbols symbols{script, runner};
  corvid::OutputWindows output{script, options, state, platform};
  corvid::Logs logs{options, state, platform};
  BusyTriggers triggers{memory.loop};
  corvid::Sound sound{options, platform, upcalls};
  corvid::SoundLines soundLines{options, sound, platform};
  corvid::Receive receive{script, options, state, output, logs, triggers, soundLines, platform, upcalls};
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  Client client(data[0]);
  std::size_t place = 1;
  if ((data[0] & 128U) != 0 && size > 1) client.ChooseMore(data[place++]);
  const bool rewritten = client.triggers.On;
  while (place < size) {
    const std::size_t length = std::min<std::size_t>(data[place] * std::size_t{16} + 1, size - place - 1);
    if (data[place] % 8 == 7) client.memory.loop.Pass(100);
    ++place;
    client.Read(corvid::fuzz::Text(data + place, length));
    place += length;
    corvid::fuzz::Require(client.state.PartialLine[0].size() <= corvid::Receive::LongestHeldLine, "the held line");
    corvid::fuzz::Require(client.state.OutputWindow(0).Length() <= 5000, "the viewport");
  }
  client.memory.loop.Pass(200);
  corvid::fuzz::Require(client.state.PartialLine[0].empty(), "a held line is shown in the end");
  if (rewritten) return 0;
  for (const char code : client.state.OutputWindow(0).Text())
    corvid::fuzz::Require(static_cast<unsigned char>(code) >= 32 || code == '\r' || code == '\n', "no control codes");
  return 0;
}
