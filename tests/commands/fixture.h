// SPDX-License-Identifier: GPL-3.0-or-later
// The whole command floor on the in-memory platform: what a line of script leads to is read from the effects.
#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "commands/alarms.h"
#include "commands/command_call.h"
#include "commands/control_state.h"
#include "commands/data_files.h"
#include "commands/dispatcher.h"
#include "commands/errors.h"
#include "commands/script_file_state.h"
#include "core/text.h"
#include "dialogs/character_list.h"
#include "dialogs/gen_dialog.h"
#include "dialogs/quick_connect.h"
#include "dialogs/variable_list.h"
#include "files/buffers.h"
#include "files/option_rows.h"
#include "files/saving.h"
#include "input/menus.h"
#include "platform/memory/memory_platform.h"
#include "script/expansion.h"
#include "script/expression.h"
#include "script/functions.h"
#include "script/scanner.h"
#include "script/symbols.h"
#include "sessions/character_file.h"
#include "sessions/logs.h"
#include "sessions/output.h"
#include "sessions/receive.h"
#include "sessions/session.h"
#include "sessions/sound_lines.h"
#include "sessions/triggers.h"
#include "sound/music.h"
#include "sound/music_state.h"
#include "sound/sound.h"
#include "speech/speech.h"
#include "support_upcalls.h"
#include "tools/debug_state.h"
#include "tools/debugger.h"

namespace corvid::test {

using Lines = std::vector<std::string>;

// Passes calls on to what is built later.
struct LateRunner : CommandRunner {
  CommandRunner* Real = nullptr;
  void ProcessCommand(const std::string& inlineText, int16& options, std::string& ErrorDescription, Parameters& rvar,
                      int16& outchannel) override {
    Real->ProcessCommand(inlineText, options, ErrorDescription, rvar, outchannel);
  }
  void SortTriggers() override { Real->SortTriggers(); }
};

struct LateErrors : ErrorSink {
  ErrorSink* Real = nullptr;
  void ErrorReport(const std::string& text, const std::string& line, int code, int16 flags) override {
    Real->ErrorReport(text, line, code, flags);
  }
  void DisplayErrorFile(const std::string& text, int16 bufno) override { Real->DisplayErrorFile(text, bufno); }
  void ShowError(const std::string& text) override { Real->ShowError(text); }
  void writeError(const std::string& text) override { Real->writeError(text); }
  void ErrorDisplay(const std::string& text) override { Real->ErrorDisplay(text); }
  void UnknownError(const std::string& error, const std::string& procedure, const Lines& parameters) override {
    Real->UnknownError(error, procedure, parameters);
  }
};

struct CommandSpeaker : Speaker {
  explicit CommandSpeaker(EffectLog& log) : Log(log) {}
  void SpeakOut(const std::string& text, int16 window, int16) override {
    if (Fails) throw Fault(FaultKind::Internal, "no voice");
    Log.Add("speech", std::to_string(window) + " " + text);
  }
  void Speak(const std::string& text, int16, int16 voice) override { SpeakOut(text, voice, 0); }
  void StopSpeech() override { Log.Add("silence", "all"); }
  void StopSpeaking(int16 window) override { Log.Add("silence", std::to_string(window)); }
  void StopSpeakingAll() override {}
  EffectLog& Log;
  bool Fails = false;
};

// Message boxes are recorded as "title|text" and answered from the list; without an answer with OK or No.
struct CommandPrompter : SilentPrompter {
  explicit CommandPrompter(EffectLog& log) : Log(log) {}
  int16 MsgBox(const std::string& text, int16 flags, const std::string& title) override {
    Log.Add("box", title + "|" + text);
    LastFlags = flags;
    if (OnBox) OnBox();
    if (!Answers.empty()) {
      const int16 answer = Answers.front();
      Answers.pop_front();
      return answer;
    }
    return (flags & 15) == box::OkOnly ? box::ResultOk : box::ResultNo;
  }
  std::string TextPrompt(const std::string& prompt, const std::string& title, int16 kind,
                         const std::string& start) override {
    Log.Add("prompt", title + "|" + prompt);
    LastKind = kind;
    LastStart = start;
    return NextText();
  }
  std::string PickList(const std::string& list) override {
    Log.Add("list", list);
    return NextText();
  }
  EffectLog& Log;
  std::string NextText() {
    if (Texts.empty()) return "";
    std::string text = Texts.front();
    Texts.pop_front();
    return text;
  }
  std::function<void()> OnBox;  // what happens while the player reads
  std::deque<int16> Answers;
  std::deque<std::string> Texts;  // what a text prompt or a choice answers
  int16 LastFlags = 0;
  int16 LastKind = 0;     // of a text prompt
  std::string LastStart;  // what stood in its box
};

struct NoJobs : TimerJobs {
  void StartTimer1(int16, int) override {}
};

class CommandTest : public ::testing::Test {
 protected:
  CommandTest() {
    runner.Real = &dispatcher;
    lateErrors.Real = &errors;
    options.UserDataFolder = "/data/";
    options.AppFolder = "/app/";
    options.SoundsFolder = "/data/Sounds/";
    options.LogsFolder = "/data/logs/";
    for (const char* folder : {"/data", "/data/Sounds", "/data/logs", "/app"}) memory.files.CreateFolder(folder);
    symbols.LoadSystemVariables();
    sound.DSInit();
    scriptFiles.ResizeBuffers(3);
    sessionRoutines.ResizeConnections(0);
    windows.SelectOutputWindow(false);
    memory.sockets.SetEvents(&sessionRoutines);
    sessions.AliasEnabled[0] = sessions.LogEntriesEnabled[0] = sessions.TriggerEnabled[0] = sessions.KeyEnabled[0] = 1;
    Effects();
  }

  // Runs a line as an outer source does; what is returned is ErrorDescription.
  std::string Run(const std::string& line, int16 flags = 0) {
    std::string problem;
    int16 channel = CurrentSession;
    LastOptions = flags;
    Parameters rvar;
    script.CommandDepth = 0;
    dispatcher.ProcessCommand(line, LastOptions, problem, rvar, channel);
    LastChannel = channel;
    return problem;
  }
  std::string Box(const std::string& line) { return Run(line, option::Interactive); }

  // Since the last call, one per effect as "kind text"; window titles, focus and the like are left out.
  Lines Effects() {
    Lines lines;
    for (const Effect& effect : memory.effects.All()) {
      const std::string& kind = effect.Kind;
      if (kind == "title" || kind == "focus" || kind == "forward" || kind == "session" || kind == "send" ||
          kind == "resize" || kind == "cleared")
        continue;
      lines.push_back(effect.Text.empty() ? kind : kind + " " + effect.Text);
    }
    memory.effects.Clear();
    return lines;
  }
  Lines Of(const std::string& kind) {
    Lines lines = memory.effects.Of(kind);
    memory.effects.Clear();
    return lines;
  }
  std::string ErrorLog() const { return buffers.BufferText[buffer::ErrorLog]; }
  void ClearErrorLog() { buffers.BufferText[buffer::ErrorLog].clear(); }

  // A row of the character table.
  int16 AddRow(const std::string& reference, const std::string& mud = "Avalon") {
    const int16 row = AddCharacter(sessions);
    sessions.CharacterRef[row] = reference;
    sessions.MudName[row] = mud;
    sessions.HostName[row] = reference + ".example";
    sessions.Port[row] = "4000";
    sessions.CharacterName[row] = Upper(reference.substr(0, 1)) + reference.substr(1);
    return row;
  }
  // A session as it stands after a connection, without the way there.
  void MakeSession(int16 index, const std::string& reference, bool connected) {
    if (index > sessions.SessionHigh) sessionRoutines.ResizeConnections(index);
    const int16 row = AddRow(reference);
    script.SocketOwner[index] = row;
    sessions.SessionRef[index] = reference;
    sessions.SessionName[index] = sessions.CharacterName[row];
    sessions.SessionMud[index] = sessions.MudName[row];
    sessions.AliasEnabled[index] = sessions.LogEntriesEnabled[index] = 1;
    sessions.TriggerEnabled[index] = sessions.KeyEnabled[index] = 1;
    if (connected) Connect(index);
    Effects();
  }
  void Connect(int16 index) {
    memory.sockets.SetEvents(nullptr);
    memory.sockets.Connect(index, "host", "4000", 60000);
    memory.loop.Pass(1);
    memory.sockets.SetEvents(&sessionRoutines);
    ASSERT_TRUE(memory.sockets.Connected(index));
  }
  void AddAlias(const std::string& name, const std::string& body, OwnerId owner = 0, int16 definedIn = 0) {
    std::string problem;
    symbols.AddAlias(name, body, owner, "", definedIn, body, problem);
  }
  void AddVariable(const std::string& name, const std::string& value, OwnerId owner = 0) {
    std::string problem;
    symbols.AddVariable(name, value, owner, problem);
  }
  std::string Variable(const std::string& name, OwnerId owner = 0) {
    std::string value;
    return symbols.FindVariable(name, value, owner) == 0 ? "(none)" : value;
  }

  MemoryPlatform memory;
  ScriptState script;
  OptionsState options;
  BufferState buffers;
  SessionState sessions;
  KeyboardState keyboard;
  ControlState control;
  SpeechState voices;
  ScriptFileState scriptFileState;
  DebugState debugState;
  Platform platform = memory.All();
  LateRunner runner;
  LateErrors lateErrors;
  CommandSpeaker speaker{memory.effects};
  CommandPrompter prompter{memory.effects};
  RecordingScreens screens{memory.effects};
  NoJobs jobs;
  Upcalls upcalls{runner, lateErrors, speaker, prompter, screens, jobs};
  Symbols symbols{script, runner};
  Scanner scanner{script, options, symbols, runner, lateErrors};
  ExpressionEvaluator expressions{options};
  DataFiles dataFiles{scriptFileState, options, platform.files};
  Functions functions{{script, symbols, expressions, sessions, platform.sockets, prompter,
                       [this](int32 number) { return dataFiles.AtEnd(number); }}};
  Expansion expansion{script, options, symbols, functions, [this] { return memory.face.ClipboardText(); }};
  Buffers scriptFiles{buffers, script, options, symbols, scanner, platform, upcalls};
  Saving saving{script, sessions, buffers, options, scriptFiles, platform, upcalls};
  CharacterFile characters{sessions, options, platform, upcalls};
  OutputWindows windows{script, options, sessions, platform};
  Logs logs{options, sessions, platform};
  TriggerEngine triggers{script, options, debugState, symbols, expansion, upcalls};
  Sound sound{options, platform, upcalls, [](int16 highest) { return highest; }};
  MusicState musicState;
  Music music{musicState, script, sound, platform, upcalls};
  SoundLines soundLines{options, sound, platform};
  Receive receive{script, options, sessions, windows, logs, triggers, soundLines, platform, upcalls};
  Sessions sessionRoutines{script, options,    sessions, buffers, symbols, scanner,  scriptFiles,
                           saving, characters, windows,  logs,    receive, platform, upcalls};
  Errors errors{buffers, script, options, platform, upcalls};
  Speech speech{voices, keyboard, platform};
  Alarms alarms{control, script, platform, upcalls};
  MenuState menu;
  GenDialog dialog{platform, upcalls, voices};
  QuickConnect quickConnect{sessions, characters, dialog, upcalls, [](int16) {}, [](int16) { return false; }};
  CharacterList characterList{script, options, sessions, characters, sessionRoutines, dialog, platform, upcalls};
  VariableList variables{script, options, symbols, dialog, platform, upcalls};
  Menus menus{{menu, script, options, buffers, sessions, keyboard, scriptFiles, dialog, platform, upcalls,
               sessionRoutines, characterList, quickConnect, variables, [] {}}};
  Debugger debugger{{debugState, script, sessions, expansion, expressions, receive, dialog, platform, upcalls, [] {}}};
  CommandHouse house{script,  options,    buffers,     sessions,    keyboard,        control, symbols,
                     scanner, expansion,  expressions, scriptFiles, sessionRoutines, windows, logs,
                     alarms,  dataFiles,  platform,    upcalls,     voices,          speech,  menus,
                     sound,   musicState, music,       debugger,    variables};
  Dispatcher dispatcher{house};
  int16 LastOptions = 0;
  int16 LastChannel = 0;
};

}  // namespace corvid::test
