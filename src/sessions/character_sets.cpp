// SPDX-License-Identifier: GPL-3.0-or-later
// The scripts and definitions of a character: loading them with its session, and forgetting them.
#include <unordered_set>

#include "core/number.h"
#include "core/text.h"
#include "core/trap.h"
#include "files/buffers.h"
#include "files/saving.h"
#include "script/statement_text.h"
#include "script/symbols.h"
#include "sessions/session.h"

namespace corvid {

std::string Sessions::CharacterFolder(int16 MudIndex) const {
  if (MudIndex <= 0 || MudIndex > sessions_.CharacterCount) return options_.UserDataFolder;
  const std::string& mud = sessions_.MudName[MudIndex];
  if (sessions_.CharacterName[MudIndex] == "QUICKCONNECT" || mud == "MUD" || mud.empty())
    return options_.UserDataFolder;
  return options_.UserDataFolder + FileStem(mud) + "/";
}

std::string Sessions::SetFile(int16 MudIndex, const std::string& ending) const {
  return CharacterFolder(MudIndex) + FileStem(sessions_.CharacterRef[MudIndex]) + ending;
}

void Sessions::LoadCharacterSets(int16 Index, int16 flags) {
  Trap trap{upcalls_.errors, "LoadCharacterSets", {std::to_string(Index)}};
  const int16 row = script_.SocketOwner[Index];
  if ((flags & opening::SkipSets) == 0) {
    trap.Step([&] { LoadSets(Index, flags); });  // PUMP
    if (!StillOwns(Index, row)) return;
    sessions_.ScriptChanged.at(static_cast<std::size_t>(Index)) = false;  // all that is there came from files
  }
  trap.Step([&] {
    for (const char* name : {"playback", "recording"}) symbols_.DeleteClass(name, script_.SocketOwner[Index]);
  });
  trap.Step([&] { PrepareLogsFolder(); });
  trap.Step([&] { logs_.RemoveOldLogs(); });
  trap.Step([&] { logs_.CloseLog(Index); });
  trap.Step([&] { logs_.OpenLog(Index); });
}

void Sessions::PrepareLogsFolder() {
  if (platform_.files.FolderExists(options_.LogsFolder)) return;
  try {
    platform_.files.CreateFolder(options_.LogsFolder);
  } catch (const Fault&) {
    upcalls_.errors.ShowError("Invalid log path : " + options_.LogsFolder);  // PUMP
  }
}

// Every load pumps events: when the slot has another character after one, the rest belongs to nobody.
void Sessions::LoadSets(int16 Index, int16 flags) {
  const int16 row = script_.SocketOwner[Index];
  if (row == 0 || IsQuickConnect(Index) || sessions_.SessionMud[Index] == "MUD") return;
  sessions_.MudFolder[Index] = CharacterFolder(row);
  const std::string mudSet = sessions_.MudFolder[Index] + FileStem(sessions_.SessionMud[Index]) + ".set";
  const std::string ownSet = SetFile(row, ".set");
  const std::string variableSet = SetFile(row, "-var.set");
  const std::string tabFile = SetFile(row, ".Tab");
  const std::string firstLine = std::string(1, options_.CommandChar) + "Char " + sessions_.SessionRef[Index] + "\r\n";
  Trap trap{upcalls_.errors, "LoadCharacterSets", {std::to_string(Index)}};
  const auto step = [&](auto&& work) {
    if (StillOwns(Index, row)) trap.Step(work);
  };
  step([&] {
    SetMud(Index, row);  // a buffer belongs to the character that is active when it is loaded
    platform_.files.CreateFolder(sessions_.MudFolder[Index]);
  });
  step([&] { LoadCharSet(Index, SetFile(row, "-Char.set"), firstLine, flags); });  // PUMP
  step([&] { SetMud(Index, row); });
  step([&] {
    if (platform_.files.FileExists(variableSet)) Load(Index, variableSet);  // PUMP
  });
  step([&] { LoadOrCreate(Index, mudSet, ""); });  // PUMP
  step([&] { LoadTabWords(row, tabFile); });
  step([&] { SetMud(Index, row); });
  step([&] { LoadOrCreate(Index, ownSet, firstLine); });  // PUMP
}

void Sessions::Load(int16 Index, const std::string& path) {
  int16 outchannel = Index;
  scriptFiles_.LoadSet(platform_.files.Absolute(path), 0, outchannel);  // PUMP
}

void Sessions::LoadOrCreate(int16 Index, const std::string& path, const std::string& firstLine) {
  if (!platform_.files.FileExists(path)) platform_.files.WriteWhole(path, firstLine, Privacy::Shared);
  Load(Index, path);  // PUMP
}

void Sessions::LoadCharSet(int16 Index, const std::string& path, const std::string& firstLine, int16 flags) {
  if ((flags & opening::AskBeforeLoading) != 0 && platform_.files.FileExists(path)) {
    const std::string name = sessions_.SessionRef[Index] + "-char.set file?";
    if (Ask("Would you like to use the previously saved " + name, "Corvid") == box::ResultNo) {      // PUMP
      if (Ask("Would you like to delete the previously saved " + name, "Delete") == box::ResultYes)  // PUMP
        platform_.files.Remove(path);
      return;
    }
  }
  LoadOrCreate(Index, path, firstLine);  // PUMP
}

void Sessions::LoadTabWords(int16 owner, const std::string& path) {
  if (!platform_.files.FileExists(path)) platform_.files.WriteWhole(path, "", Privacy::Shared);
  const std::string text = platform_.files.ReadWhole(path);
  std::unordered_set<std::string> known{""};  // a second connection reads the file again
  for (int32 row = 1; row <= script_.TabWordCount; ++row)
    if (script_.TabOwners[row] == owner) known.insert(script_.TabWords[row]);
  int32 pointer = 0;
  while (pointer >= 0) {
    const std::string word = Trim(ReadNextLine(text, pointer));
    if (!known.insert(word).second) continue;
    script_.TabWordCount = AddInt16(script_.TabWordCount, 1);
    script_.TabWords.Resize(script_.TabWordCount);
    script_.TabOwners.Resize(script_.TabWordCount);
    script_.TabWords[script_.TabWordCount] = word;
    script_.TabOwners[script_.TabWordCount] = owner;
  }
}

bool Sessions::ScriptsChanged(int16 ownedBy) const {
  const int16 slot = FindChannel(ownedBy);
  if (slot >= 0 && sessions_.ScriptChanged.at(static_cast<std::size_t>(slot))) return true;
  for (int16 number = buffer::FirstScript; number <= buffers_.BufferCount; ++number)
    if (buffers_.BufferOwners[number] == ownedBy && buffers_.BufferFlags[number] != 0 &&
        scriptFiles_.IsModified(number))
      return true;
  return false;
}

// False when the disk refused, as in the two below.
bool Sessions::SaveChanges(int16 ownedBy) {
  if (options_.AutoSave || !ScriptsChanged(ownedBy)) return true;
  if (Ask("Would you like to save any changes that you have made to " + sessions_.CharacterRef[ownedBy] + "?",
          "Corvid") != box::ResultYes)  // PUMP
    return true;
  const bool written = saving_.WriteAltMethod(ownedBy, SetFile(ownedBy, ".char.set"), false);  // PUMP
  return WriteVariables(ownedBy) && written;
}

// What becomes of the variables of a character that goes.
bool Sessions::KeepVariables(int16 ownedBy) {
  if ((sessions_.CharFlags[ownedBy] & charflag::KeepVariables) != 0) return WriteVariables(ownedBy);
  const std::string path = SetFile(ownedBy, "-var.set");
  if (!platform_.files.FileExists(path)) return true;
  const int16 answer =
      Ask("Would you like to save your variables again for " + sessions_.CharacterRef[ownedBy] + "?", "Save Variables");
  if (answer == box::ResultYes) return WriteVariables(ownedBy);
  if (answer == box::ResultNo && platform_.face.PlayerThere()) platform_.files.Remove(path);
  return true;
}

// A character that no session holds any more has no variables to write.
bool Sessions::WriteVariables(int16 ownedBy) {
  return FindChannel(ownedBy) < 0 || saving_.SaveVariables(ownedBy);
}

bool Sessions::RemoveCharacter(int16 ownedBy) {
  if (ownedBy <= 0 || ownedBy > sessions_.CharacterCount) return true;
  Trap trap{upcalls_.errors, "RemoveCharacter", {std::to_string(ownedBy)}};
  bool saved = true;
  trap.Step([&] { saved = SaveChanges(ownedBy); });  // PUMP
  trap.Step([&] {
    if (!sessions_.CharacterRef[ownedBy].empty()) saved = KeepVariables(ownedBy) && saved;  // PUMP
  });
  if (!saved) return false;
  trap.Step([&] { symbols_.RemoveCharacter(ownedBy); });
  for (int16 number = buffers_.BufferCount; number >= buffer::FirstScript; --number)
    trap.Step([&] {
      if (number <= buffers_.BufferCount && buffers_.BufferOwners[number] == ownedBy &&
          buffers_.BufferFlags[number] != 0)
        scriptFiles_.CloseBuffer(number);  // PUMP
    });
  return true;
}

}  // namespace corvid
