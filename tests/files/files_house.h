// SPDX-License-Identifier: GPL-3.0-or-later
// The floor of files over the in-memory platform, with a small reader of commands in place of the floors above.
#pragma once

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "core/keys.h"
#include "core/text.h"
#include "files/buffers.h"
#include "files/option_rows.h"
#include "files/saving.h"
#include "files/user_folder.h"
#include "platform/memory/memory_platform.h"
#include "script/expansion.h"
#include "script/parsed_command.h"
#include "script/scanner.h"
#include "script/symbols.h"
#include "support_functions.h"
#include "support_upcalls.h"

namespace corvid::testing_files {

// What is asked of a changed "a.set" before it is left.
inline constexpr const char* Question =
    "Modified Buffer|The Script  belonging to file a.set has been modified. Would you like to save this file?";

// Answers dialogs from a list and writes down what was asked.
class ListedPrompter : public SilentPrompter {
 public:
  explicit ListedPrompter(EffectLog& effects) : effects_(effects) {}
  int16 MsgBox(const std::string& text, int16 flags, const std::string& title) override {
    effects_.Add("box", title + "|" + text);
    if (OnBox) OnBox(title);
    if ((flags & 0xF) == box::OkOnly) return box::ResultOk;
    return answers_.empty() ? Unanswered(title) : Next<int16>(answers_);
  }
  std::string PickList(const std::string& list) override {
    effects_.Add("pick", list);
    return Texts.empty() ? "" : Next<std::string>(Texts);
  }
  void FolderDialog2(const std::string&, const std::string& wildcard, int16, const std::string& title, std::string&,
                     std::string& filename, const std::string& StartingFolder) override {
    effects_.Add("folder", title + "|" + wildcard + "|" + StartingFolder);
    filename = Texts.empty() ? "" : Next<std::string>(Texts);
  }
  std::string PickDrive(const std::string& title) override {
    effects_.Add("drive", title);
    return "/";
  }

  void Will(int16 answer) { answers_.push_back(answer); }
  std::deque<std::string> Texts;                        // for pick lists and folders
  std::function<void(const std::string& title)> OnBox;  // what happens while a box is open

 private:
  template <typename T>
  static T Next(std::deque<T>& from) {
    T next = from.front();
    from.pop_front();
    return next;
  }
  int16 Unanswered(const std::string& title) {
    effects_.Add("unanswered", title);
    return box::ResultCancel;
  }
  std::deque<int16> answers_;
  EffectLog& effects_;
};

// Carries out the commands that saved files hold, by the rules of the real ones; every line is recorded.
class SmallRunner : public CommandRunner {
 public:
  SmallRunner(ScriptState& script, OptionsState& options) : script_(script), options_(options) {}
  void ProcessCommand(const std::string& line, int16& options, std::string& ErrorDescription, Parameters& rvar,
                      int16& outchannel) override {
    Lines.push_back(line);
    if (OnLine && OnLine(line, outchannel)) return;
    int16 part = 0;
    ParsedCommand P;
    std::string rest;
    Reader->ParseCommand(line, part, P, ErrorDescription, rest, options);
    if (!ErrorDescription.empty() || (options & option::CheckOnly) != 0) return;
    if (P[1].empty() || P[1][0] != options_.CommandChar) {
      ErrorDescription = "no command";
      return;
    }
    Carry(Upper(P[1]).substr(1), part, P, ErrorDescription, rvar);
  }
  void SortTriggers() override {}

  Scanner* Reader = nullptr;
  Symbols* Names = nullptr;
  Expansion* Texts = nullptr;
  std::vector<std::string> Lines;
  std::function<bool(const std::string& line, int16& outchannel)> OnLine;  // true: done with it

 private:
  std::string Expanded(const std::string& text, Parameters& rvar) {
    std::string error;
    return Texts->ExplodeVariable(text, error, rvar, 0, -1);
  }
  void Carry(std::string word, int16 part, ParsedCommand& P, std::string& error, Parameters& rvar) {
    const OwnerId owner = word.starts_with('G') ? OwnerId{0} : script_.CurrentOwner;
    if (word.starts_with('G')) word.erase(0, 1);
    if (word == "CONFIGURE") return Configure(P, error, rvar);
    const int16 buffer = script_.DefiningBuffer;
    if (word == "VAR") {
      const std::string standard = part > 3 ? Expanded(P[4], rvar) : std::string(Symbols::DefaultIsValue);
      Names->AddVariable(P[2], Expanded(P[3], rvar), owner, error, standard);
    } else if (word == "ALIAS") {
      Names->AddAlias(P[2], P[3], owner, P[4], buffer, P[3], error);
    } else if (word == "KEY") {
      int16 shift = 0;
      int16 code = 0;
      ParseKeystroke(P[2], shift, code);
      Names->Addmacro(code, shift, P[3], owner, P[4], buffer, P[3], error);
    } else if (word == "FAIL") {
      error = "It fails";
    }
  }
  void Configure(ParsedCommand& P, std::string& error, Parameters& rvar) {
    if (SameText(P[2], "LINETERMINATOR") && OptionTable::ReadRawTerminator(P[3], options_.LineTerminator)) return;
    const OptionRow* row = OptionTable::Find(P[2]);
    if (row == nullptr) {
      error = "Bad configuration parameter";
      return;
    }
    if (row->Type == OptionType::Folder) {
      options_.FolderChangeAttempted = options_.LoadingOptions;
      return;
    }
    OptionValue value;
    error = OptionTable::Test(*row, Expanded(P[3], rvar), value);
    if (error.empty()) OptionTable::Store(*row, value, options_);
  }

  ScriptState& script_;
  OptionsState& options_;
};

struct FilesHouse {
  FilesHouse() {
    runner.Reader = &scanner;
    runner.Names = &symbols;
    runner.Texts = &expansion;
    options.UserDataFolder = "/data/";
    mem.files.CreateFolder("/data");
    sessions.SessionHigh = 2;
    sessions.SessionRef.Resize(2);
    sessions.MudFolder.Resize(2);
    sessions.CharacterRef.Resize(9);
    sessions.CharFlags.Resize(9);
    script.SocketOwner.Resize(2);
    symbols.LoadSystemVariables();
    buffers.ResizeBuffers(3);
    mem.face.AttachEntry(state.EntryBox);
  }
  void OpenSession(int16 index, OwnerId owner, const std::string& ref) {
    sessions.SessionRef[index] = ref;
    sessions.CharacterRef[owner] = ref;
    sessions.MudFolder[index] = "/data/mud/";
    script.SocketOwner[index] = owner;
    mem.files.CreateFolder("/data/mud");
  }
  void Load(const std::string& name, int16 flags = 0) {
    int16 channel = CurrentSession;
    buffers.LoadSet(name, flags, channel);
  }
  // A script on the disk.
  void Put(const std::string& text, const std::string& name = "/data/a.set") { mem.files.Put(name, text); }
  std::string File(const std::string& path) { return mem.files.ReadWhole(path); }
  std::vector<std::string> Told(const std::string& kind) { return mem.effects.Of(kind); }

  MemoryPlatform mem;
  Platform platform = mem.All();
  ScriptState script;
  OptionsState options;
  BufferState state;
  SessionState sessions;
  SmallRunner runner{script, options};
  RecordingErrors errors{mem.effects};
  RecordingSpeaker speaker{mem.effects};
  ListedPrompter prompter{mem.effects};
  RecordingScreens screens{mem.effects};
  RecordingJobs jobs{mem.effects};
  Upcalls upcalls{runner, errors, speaker, prompter, screens, jobs};
  Symbols symbols{script, runner};
  NoFunctions functions;
  Expansion expansion{script, options, symbols, functions, [] { return std::string(); }};
  Scanner scanner{script, options, symbols, runner, errors};
  Buffers buffers{state, script, options, symbols, scanner, platform, upcalls};
  Saving saving{script, sessions, state, options, buffers, platform, upcalls};
  UserFolder folder{options, script, platform, upcalls};
};

using Texts = std::vector<std::string>;

}  // namespace corvid::testing_files
