// SPDX-License-Identifier: GPL-3.0-or-later
// FIND: a text in the output or the entry window. The caret goes to it, and its line stands in FOUNDLINE.
#include "commands/command_call.h"
#include "commands/handlers.h"
#include "core/reading.h"
#include "core/text.h"

namespace corvid {

namespace {

// Kept: a hit nearer than this to the last one is passed over.
constexpr int32 NextStep = 6;

struct Search {
  bool First = true;
  int32 Direction = 1;  // -1 backwards
  bool InOutput = false;
};

bool ReadKeywords(CommandCall& call, Search& search) {
  search.InOutput = call.house.keyboard.OutputFocused;
  for (const std::string& word : Split(call.P[3].empty() ? "FIRST|FORWARD" : call.P[3], "|")) {
    if (word.empty()) continue;
    if (SameText(word, "FIRST")) {
      search.First = true;
    } else if (SameText(word, "NEXT")) {
      search.First = false;
    } else if (SameText(word, "FORWARD")) {
      search.Direction = 1;
    } else if (SameText(word, "REVERSE")) {
      search.Direction = -1;
    } else if (SameText(word, "OUTPUT")) {
      search.InOutput = true;
    } else if (SameText(word, "INPUT")) {
      search.InOutput = false;
    } else {
      call.fail(
          "The second parameter must include only the following: First, Next, Forward, Reverse, Output, or Input");
      return false;
    }
  }
  return true;
}

constexpr int32 FromTheEnd = -1;  // a start for a search backwards in the output

// Positions count from 1; 0 for no hit. A hit begins at start or behind it, backwards at start or before it.
int32 Position(std::string_view text, std::string_view wanted, int32 start, int32 direction) {
  if (start < 1 || text.empty()) return 0;
  const auto from = static_cast<std::size_t>(start - 1);
  const std::string all = Upper(text);
  const std::string part = Upper(wanted);
  const std::size_t hit = direction > 0 ? all.find(part, from) : all.rfind(part, from);
  return hit == std::string::npos ? 0 : static_cast<int32>(hit) + 1;
}

int32 Start(const Search& search, const TextModel& window) {
  int32 start = search.Direction > 0 ? 1 : window.Length();
  if (!search.First) start = window.SelStart() + NextStep * search.Direction;
  // Kept: one place before the text is the end of the output, so a step back that lands there begins anew.
  return search.InOutput && search.Direction < 0 && start == FromTheEnd ? window.Length() : start;
}

}  // namespace

void handler::Find(CommandCall& call) {
  if (call.checkOnly() || !ExpandParameters(call)) return;
  Search search;
  if (!ReadKeywords(call, search)) return;
  CommandHouse& house = call.house;
  TextModel& window = search.InOutput ? house.sessions.OutputWindow(call.outchannel) : house.buffers.EntryBox;
  std::string& found = house.script.SystemValues[sysvar::FOUNDLINE];
  const int32 at = Position(window.View(), call.P[2], Start(search, window), search.Direction);
  if (at == 0) {
    found.clear();
    const bool more = search.InOutput && !search.First;
    house.upcalls.speaker.Answer(more ? "No more found." : "Not found", Channel::Incoming);
    return;
  }
  // Kept: in the output the caret rests one place behind where the hit begins.
  window.SetSelStart(search.InOutput ? at : at - 1);
  found = search.InOutput ? CurrentLine(window.View(), at) : CurrentLine2(window.View(), at);
}

}  // namespace corvid
