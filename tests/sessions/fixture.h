// SPDX-License-Identifier: GPL-3.0-or-later
// The session floor on the in-memory platform, with the higher floors played by recorders.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "files/buffers.h"
#include "files/saving.h"
#include "platform/memory/memory_platform.h"
#include "script/scanner.h"
#include "script/symbols.h"
#include "sessions/character_file.h"
#include "sessions/logs.h"
#include "sessions/output.h"
#include "sessions/receive.h"
#include "sessions/session.h"
#include "sessions/sound_lines.h"
#include "sessions/timers.h"
#include "sound/sound.h"
#include "support_upcalls.h"

namespace corvid {

// Records each box as "title|text" and gives the next answer; without one, No.
class ScriptedPrompter : public SilentPrompter {
 public:
  explicit ScriptedPrompter(EffectLog& effects) : effects_(effects) {}
  int16 MsgBox(const std::string& text, int16 flags, const std::string& title) override {
    effects_.Add("box", title + "|" + text + ((flags & 15) == box::YesNo ? "|yesno" : ""));
    if (OnBox) OnBox();
    if (answers.empty()) return box::ResultNo;
    const int16 answer = answers.front();
    answers.pop_front();
    return answer;
  }

  std::deque<int16> answers;
  std::function<void()> OnBox;

 private:
  EffectLog& effects_;
};

// Records each line with its session, and lets a test carry it out.
class ScriptedRunner : public CommandRunner {
 public:
  explicit ScriptedRunner(EffectLog& effects) : effects_(effects) {}
  void ProcessCommand(const std::string& line, int16& options, std::string& ErrorDescription, Parameters& rvar,
                      int16& outchannel) override {
    effects_.Add("command", std::to_string(outchannel) + " " + line);
    if (OnCommand) OnCommand(line, options, ErrorDescription, rvar, outchannel);
  }
  void SortTriggers() override {}

  std::function<void(const std::string&, int16&, std::string&, Parameters&, int16&)> OnCommand;

 private:
  EffectLog& effects_;
};

// Triggers that a test writes as a function.
class ScriptedTriggers : public LineTriggers {
 public:
  bool Any() const override { return static_cast<bool>(OnLine); }
  LineFate Fire(int16 Index, LineVersions& line) override { return OnLine(Index, line); }
  std::function<LineFate(int16, LineVersions&)> OnLine;
};

class SessionTest : public ::testing::Test {
 protected:
  SessionTest() {
    options.UserDataFolder = "/data/";
    options.LogsFolder = "/data/logs/";
    options.SoundsFolder = "/data/Sounds/";
    memory.files.CreateFolder("/data/logs");
    memory.sockets.SetEvents(&sessions);
    ResizeBuffers(buffers, 3);
    symbols.LoadSystemVariables();
    sound.DSInit();
    sessions.ResizeConnections(0);
    output.SelectOutputWindow(false);
    memory.face.ShowMain();
    memory.effects.Clear();
  }

  // A row of the character table.
  int16 Character(const std::string& mud, const std::string& name, const std::string& reference, int16 flags = 0) {
    const int16 row = AddCharacter(state);
    state.MudName[row] = mud;
    state.HostName[row] = mud + ".example";
    state.Port[row] = "4000";
    state.CharacterName[row] = name;
    state.CharacterRef[row] = reference;
    state.Password[row] = "secret";
    state.CharFlags[row] = flags;
    return row;
  }
  // A connected session of a new character; its effects are forgotten.
  int16 Online(const std::string& reference) {
    const int16 row = Character("Mud" + reference, "Name" + reference, reference);
    EXPECT_EQ(sessions.OpenMud(row, 0), 0);
    const int16 slot = script.CurrentSocket;
    memory.loop.Pass(1);
    EXPECT_TRUE(memory.sockets.Connected(slot));
    memory.effects.Clear();
    memory.sockets.TakeWritten(slot);
    return slot;
  }
  void Alias(const std::string& name, const std::string& body, int16 owner = 0) {
    std::string error;
    symbols.AddAlias(name, body, owner, "", 0, body, error);
  }
  void Receives(int16 Index, std::string_view bytes) { memory.sockets.Receive(Index, bytes); }
  void Pass(int milliseconds) { memory.loop.Pass(milliseconds); }
  const std::string& Screen(int16 Index) { return state.OutputWindow(Index).Text(); }
  std::vector<std::string> Spoken() { return memory.effects.Of("spoken"); }
  std::vector<std::string> Of(const std::string& kind) { return memory.effects.Of(kind); }
  using Texts = std::vector<std::string>;

  MemoryPlatform memory;
  int16 Chance = 1;  // what is chosen among files that match
  Platform platform = memory.All();
  ScriptState script;
  OptionsState options;
  SessionState state;
  BufferState buffers;
  KeyboardState keyboard;
  ScriptedRunner runner{memory.effects};
  RecordingErrors errors{memory.effects};
  RecordingSpeaker speaker{memory.effects};
  ScriptedPrompter prompter{memory.effects};
  RecordingScreens screens{memory.effects};
  RecordingJobs jobs{memory.effects};
  Upcalls upcalls{runner, errors, speaker, prompter, screens, jobs};

  Symbols symbols{script, runner};
  Scanner scanner{script, options, symbols, runner, errors};
  Buffers scriptFiles{buffers, script, options, symbols, scanner, platform, upcalls};
  Saving saving{script, state, buffers, options, scriptFiles, platform, upcalls};
  CharacterFile characters{state, options, platform, upcalls};
  OutputWindows output{script, options, state, platform};
  Logs logs{options, state, platform};
  ScriptedTriggers triggers;
  Sound sound{options, platform, upcalls, [](int16 highest) { return highest; }};
  SoundLines soundLines{options, sound, platform, [this](int16 highest) { return std::min(Chance, highest); }};
  Receive receive{script, options, state, output, logs, triggers, soundLines, platform, upcalls};
  Sessions sessions{script, options,    state,  buffers, symbols, scanner,  scriptFiles,
                    saving, characters, output, logs,    receive, platform, upcalls};
  TimerRoutines timers{script, options, state, buffers, keyboard, platform, upcalls};
};

}  // namespace corvid
