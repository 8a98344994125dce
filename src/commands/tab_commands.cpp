// SPDX-License-Identifier: GPL-3.0-or-later
// TAB and UNTAB: the words that the Tab key completes, and the file that keeps them.
#include "commands/command_call.h"
#include "commands/handlers.h"
#include "core/number.h"
#include "core/text.h"
#include "input/menus.h"
#include "script/symbols.h"
#include "sessions/logs.h"

namespace corvid {

namespace {

int16 FindWord(const ScriptState& script, const std::string& word, OwnerId owner) {
  for (int32 i = 1; i <= script.TabWordCount; ++i)
    if (script.TabOwners[i] == owner && SameText(script.TabWords[i], word)) return static_cast<int16>(i);
  return 0;
}

// Kept: the file lists the words of the character in the foreground, whoever the command ran for.
void WriteWords(CommandHouse& house, int16 session) {
  const std::string& folder = house.sessions.MudFolder[session];
  if (folder.empty()) return;
  std::string text;
  for (int32 i = 1; i <= house.script.TabWordCount; ++i) {
    if (house.script.TabOwners[i] == house.script.CurrentOwner && !house.script.TabWords[i].empty())
      text += house.script.TabWords[i] + "\r\n";
  }
  house.platform.files.WriteWhole(folder + FileStem(house.sessions.SessionRef[session]) + ".Tab", text,
                                  Privacy::Shared);
}

void ShowWords(CommandCall& call) {
  const ScriptState& script = call.house.script;
  std::vector<std::string> words;
  for (int32 i = 1; i <= script.TabWordCount; ++i)
    if (script.TabOwners[i] == call.owner && !script.TabWords[i].empty()) words.push_back(script.TabWords[i]);
  call.house.menus.ShowList(words, "ONETIME");
  if (words.empty()) call.house.platform.face.Beep();  // there is no row to be heard
}

}  // namespace

void handler::Tab(CommandCall& call) {
  if (call.checkOnly() || !ExpandParameters(call)) return;
  ScriptState& script = call.house.script;
  if (call.count() == 0) return ShowWords(call);
  for (const std::string& word : Split(call.P[2], "|")) {
    if (word.empty() || FindWord(script, word, call.owner) != 0) continue;
    script.TabWordCount = AddInt16(script.TabWordCount, 1);
    script.TabWords.Resize(script.TabWordCount);
    script.TabOwners.Resize(script.TabWordCount);
    script.TabWords[script.TabWordCount] = word;
    script.TabOwners[script.TabWordCount] = call.owner;
    call.house.sessions.ScriptChanged.at(static_cast<std::size_t>(call.outchannel)) = true;
  }
  WriteWords(call.house, call.outchannel);
}

void handler::UnTab(CommandCall& call) {
  if (call.checkOnly() || !ExpandParameters(call)) return;
  if (SameText(call.P[2], "ALLCLEAR")) {
    call.house.symbols.RemoveTabWords(call.owner);
  } else {
    for (const std::string& word : Split(call.P[2], "|")) {
      const int16 row = word.empty() ? static_cast<int16>(0) : FindWord(call.house.script, word, call.owner);
      if (row != 0) call.house.script.TabWords[row].clear();
    }
  }
  WriteWords(call.house, call.outchannel);
}

}  // namespace corvid
