// SPDX-License-Identifier: GPL-3.0-or-later
// A started program in memory, with a character to play.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "app/corvid.h"
#include "core/scramble.h"
#include "platform/memory/memory_platform.h"

namespace corvid {

// What a start needs to find in "/data": an empty script, and how to speak.
inline void PutStartFiles(MemoryFiles& files, const SpeechState& speech) {
  files.Put("/data/start.set", "; nothing\r\n");
  files.Put("/data/speech.ini", Scramble(SpeechSettings::FileText(speech)));
}

// Every channel with the program's own voices.
inline SpeechState OwnVoices() {
  SpeechState speech;
  speech.SpeechType = {0, 3, 3, 3, 3, 3, 3};
  return speech;
}

// A line as the player types it; the error text, empty if it succeeded.
inline std::string TryLine(Corvid& corvid, const std::string& line) {
  int16 options = 0;
  int16 outchannel = CurrentSession;
  std::string error;
  Parameters rvar;
  corvid.scriptState.CommandDepth = 0;
  corvid.upcalls.commands.ProcessCommand(line, options, error, rvar, outchannel);
  return error;
}

// The same; it must succeed.
inline void TypeLine(Corvid& corvid, const std::string& line) {
  EXPECT_EQ(TryLine(corvid, line), "") << line;
}

// Leaves the list of characters, which opens half a second after a start that names none. Answers that wait for later
// questions stay, and what the list shows and says is no part of the story.
inline void PassTheList(MemoryPlatform& memory) {
  const auto close = [&memory] {
    if (memory.face.OpenEvents() == nullptr) return false;
    memory.face.OpenEvents()->DialogCloseRequested();
    return true;
  };
  const std::function<bool()> answers = std::exchange(memory.loop.Idle, close);
  const EffectLog story = memory.effects;
  memory.loop.Pass(500);
  memory.effects = story;
  memory.loop.Idle = answers;
}

struct RunningProgram {
  RunningProgram() { PutStartFiles(memory.files, OwnVoices()); }
  bool Start() {
    const bool started = corvid.Start({.DataFolder = "/data", .Connect = {}, .PracticePort = {}});
    if (started) PassTheList(memory);
    return started;
  }
  // Starts, makes the character "bob" of the Mud "Aard" and connects it in slot 1. Its effects are forgotten.
  void StartAndConnect(int16 flags) {
    ASSERT_TRUE(Start());
    Do("#MUD bob Aard aard.example 4000 Bob secret");
    corvid.sessionState.CharFlags[FindCharacter(corvid.sessionState, "bob")] = flags;
    Do("#CONNECT bob");
    ASSERT_TRUE(memory.sockets.Connected(1));
    memory.effects.Clear();
  }
  void Do(const std::string& line) { TypeLine(corvid, line); }
  // A line that may be refused.
  void Try(const std::string& line) { TryLine(corvid, line); }
  // Changes a script that is loaded, in memory alone; its number.
  int16 ChangeScript(const std::string& path, const std::string& text) {
    const int16 number = corvid.buffers.GetBufferNumber(path);
    EXPECT_GE(number, buffer::FirstScript) << path;
    corvid.buffers.SetBufferText(number, text);
    return number;
  }
  // From now on the disk takes nothing any more.
  void FillDisk() {
    memory.files.Fail = [](const std::string& operation, const std::string&) {
      return operation == "read" ? std::string() : std::string("No space left on device");
    };
  }
  void MakeRoom() { memory.files.Fail = nullptr; }
  bool Exists(const std::string& path) { return memory.files.FileExists(path); }
  std::string Read(const std::string& path) { return memory.files.ReadWhole(path); }
  // The dialogs since the last Clear, as "MSGBOX title|text|".
  std::vector<std::string> Asked() { return memory.effects.Of("dialog"); }
  bool Ended() const { return memory.loop.Ending(); }
  const std::string& ErrorLog() { return corvid.bufferState.BufferText[buffer::ErrorLog]; }
  // The value of a variable of the session's character.
  std::string Variable(const std::string& name) {
    const int16 owner = corvid.scriptState.SocketOwner[1];
    for (int32 row = 1; row <= corvid.scriptState.VariableCount; ++row)
      if (corvid.scriptState.VariableNames[row] == name && corvid.scriptState.VariableOwners[row] == owner)
        return corvid.scriptState.VariableValues[row];
    return "(none)";
  }
  void Define(const std::string& name, const std::string& value) {
    std::string error;
    corvid.symbols.AddVariable(name, value, corvid.scriptState.SocketOwner[1], error, "");
    EXPECT_EQ(error, "");
  }

  MemoryPlatform memory;
  Corvid corvid{memory.All()};
};

using Texts = std::vector<std::string>;

}  // namespace corvid
