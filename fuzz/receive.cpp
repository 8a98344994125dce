// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes from a server, cut into reads in any way, under any options: nothing but text comes of them, and not more
// than there is room for. The first byte chooses options; then each byte is the length of a read and the read follows.
#include "sessions/receive.h"
#include "fuzz.h"
#include "platform/memory/memory_platform.h"
#include "script/symbols.h"
#include "support_upcalls.h"

namespace {

using corvid::int16;

class NoPrompter : public corvid::Prompter {
 public:
  int16 MsgBox(const std::string&, int16, const std::string&) override { return corvid::box::ResultNo; }
  std::string TextPrompt(const std::string&, const std::string&, int16, const std::string&) override { return {}; }
  std::string PickList(const std::string&) override { return {}; }
  bool ChooseFromList(const std::string&, const std::vector<std::string>&, int16&) override { return false; }
  std::string InputBox2(const std::string&, const std::string&, const std::string&) override { return {}; }
  void FolderDialog2(const std::string&, const std::string&, int16, const std::string&, std::string&, std::string&,
                     const std::string&) override {}
  std::string PickDrive(const std::string&) override { return {}; }
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
  NoPrompter prompter;
  corvid::RecordingScreens screens{memory.effects};
  corvid::RecordingJobs jobs{memory.effects};
  corvid::Upcalls upcalls{runner, errors, speaker, prompter, screens, jobs};
  corvid::Symbols symbols{script, runner};
  corvid::OutputWindows output{script, options, state, platform};
  corvid::Logs logs{options, state, platform};
  corvid::NoLineTriggers triggers;
  corvid::Receive receive{script, options, state, output, logs, triggers, platform, upcalls};
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  Client client(data[0]);
  std::size_t place = 1;
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
  for (const char code : client.state.OutputWindow(0).Text())
    corvid::fuzz::Require(static_cast<unsigned char>(code) >= 32 || code == '\r' || code == '\n', "no control codes");
  return 0;
}
