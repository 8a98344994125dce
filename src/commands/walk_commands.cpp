// SPDX-License-Identifier: GPL-3.0-or-later
// RECORD, ENDRECORD, ERASE, DIRECTION, STOP, PAUSE and UNPAUSE: how a walk is recorded, kept and stopped.
#include "commands/command_call.h"
#include "commands/handlers.h"
#include "commands/walk_steps.h"
#include "commands/walks.h"
#include "core/number.h"
#include "core/text.h"
#include "files/buffers.h"
#include "script/symbols.h"
#include "sessions/output.h"

namespace corvid {

namespace {

struct EndRecordKeywords {
  RecordingWishes Wishes;
  bool Save = false;
};

bool ReadKeywords(CommandCall& call, EndRecordKeywords& keywords) {
  for (const std::string& word : Split(Upper(call.P[3]), "|")) {
    if (word == "DIRECTION") {
      keywords.Wishes.DirectionsOnly = true;
    } else if (word == "SAVE") {
      keywords.Save = true;
    } else if (word == "COMPRESS") {
      keywords.Wishes.Compress = true;
    } else {
      // Kept: "TEMP" is named and not taken.
      call.fail("If included, EndRecord options must be one or more of TEMP, COMPRESS, and Direction");
      return false;
    }
  }
  return true;
}

void Show(CommandHouse& house, int16 session, const std::string& text) {
  house.sessions.OutputBuffer[session] += text;
  house.windows.DisplayOutputBuffer(session);
}

// Puts the definition of a walk into the script that is being worked on, in the place of an older one of the name.
// Kept: what a global walk replaces is the character's own; one that was global already stays before it.
void SaveWalk(CommandCall& call, const std::string& name, const std::string& line) {
  CommandHouse& house = call.house;
  const int16 script = house.script.DefiningBuffer;
  const std::string word = std::string(1, house.options.CommandChar) + "ALIAS";
  house.scriptFiles.UpdateBuffer(script, UpdateAction::Write, line, "", {word, "." + name, "", ""});
  const std::string told =
      "Recorded commands have been saved in " + Buffers::ShortName(house.buffers.BufferFile[script]) + "\r\n";
  Show(house, call.outchannel, told);
  house.upcalls.speaker.SpeakOut(told, Channel::System, 0);
}

void KeepAsNewLine(CommandCall& call, const std::string& line) {
  CommandHouse& house = call.house;
  AppendNewLine(house.buffers, line);
  Show(house, call.outchannel, "\r\nRecorded commands  saved in New Lines window.");
  house.upcalls.speaker.SpeakOut("Recorded commands saved in New Lines window.\r\n", Channel::System, 0);
}

}  // namespace

void handler::Record(CommandCall& call) {
  if (call.checkOnly()) return;
  CommandHouse& house = call.house;
  house.sessions.WalkState[call.outchannel] = walkstate::Recording;
  house.sessions.WalkBuffer[call.outchannel].clear();
  house.upcalls.speaker.Answer("Recording", Channel::Incoming);
  house.symbols.CheckAndAddClass("Recording", call.owner);
}

void handler::EndRecord(CommandCall& call) {
  if (call.checkOnly() || !ExpandParameters(call)) return;
  CommandHouse& house = call.house;
  const int16 session = call.outchannel;
  DeleteWalkClasses(house, call.owner);
  EndRecordKeywords keywords;
  if (!ReadKeywords(call, keywords)) return;
  const std::string steps =
      RecordedSteps(house.script, house.sessions.WalkBuffer[session], house.options.CommandSeparator, keywords.Wishes);
  const std::string name = call.P[2].starts_with('.') ? call.P[2].substr(1) : call.P[2];
  const std::string line = std::string(1, house.options.CommandChar) +
                           (call.definitionOwner == 0 ? "Galias {." : "alias {.") + name + "} {" + steps + "}";
  // Kept: a definition that fails (one without a step does) leaves the recording on, with all its steps.
  if (!RunNested(call, line, call.rvar, call.outchannel, DepthBack::BeforeAborts)) return;
  if (keywords.Save && house.script.DefiningBuffer > 0) {
    SaveWalk(call, name, line);
  } else {
    KeepAsNewLine(call, line);
  }
  house.sessions.WalkState[session] = walkstate::Idle;
  house.sessions.WalkBuffer[session].clear();
}

void handler::Erase(CommandCall& call) {
  // Kept: a parameter is refused with an empty text, not with the usual words.
  if (call.count() > 0) return call.fail("");
  if (call.checkOnly()) return;
  CommandHouse& house = call.house;
  if ((house.sessions.WalkState[call.outchannel] & walkstate::Recording) == 0) return;
  std::string& steps = house.sessions.WalkBuffer[call.outchannel];
  const std::string separator = house.options.CommandSeparator;
  const std::size_t body = steps.ends_with(separator) ? steps.size() - separator.size() : steps.size();
  const std::size_t last =
      separator.empty() ? std::string::npos : std::string_view(steps).substr(0, body).rfind(separator);
  if (steps.size() <= 1) return steps.clear();
  const std::size_t start = last == std::string::npos ? 0 : last + separator.size();
  // Kept: the only step is told with its separator.
  const std::size_t end = last == std::string::npos ? steps.size() : body;
  const std::string told = steps.substr(start, end - start);
  steps.erase(start);
  house.upcalls.speaker.Answer("erasing " + told, Channel::Incoming);
}

void handler::Direction(CommandCall& call) {
  if (call.checkOnly() || !ExpandParameters(call)) return;
  ScriptState& script = call.house.script;
  const int16 row = AddInt16(script.AbbreviationCount, 1);
  call.house.symbols.resizeCommand(windowtype::Abbreviations, row);
  script.AbbreviationCount = row;
  script.Directions[row] = Upper(call.P[2]);
  script.OppositeDirections[row] = Upper(call.P[3]);
  script.AbbreviationBuffers[row] = script.DefiningBuffer;
  script.AbbreviationOwners[row] = call.definitionOwner;
}

void handler::Stop(CommandCall& call) {
  if (call.checkOnly()) return;
  call.house.sessions.WalkBuffer[call.outchannel].clear();
  call.house.sessions.WalkState[call.outchannel] = walkstate::Idle;
  DeleteWalkClasses(call.house, call.owner);
}

void handler::Pause(CommandCall& call) {
  if (call.checkOnly()) return;
  int16& state = call.house.sessions.WalkState[call.outchannel];
  state = static_cast<int16>(state | walkstate::Paused);
}

void handler::UnPause(CommandCall& call) {
  if (call.checkOnly()) return;
  int16& state = call.house.sessions.WalkState[call.outchannel];
  state = static_cast<int16>(state & ~walkstate::Paused);
}

}  // namespace corvid
