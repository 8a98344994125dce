// SPDX-License-Identifier: GPL-3.0-or-later
// TRIGGER, UNTRIGGER and SUBSTITUTE.
#include "commands/command_call.h"
#include "commands/definition_rules.h"
#include "commands/handlers.h"
#include "core/number.h"
#include "core/text.h"
#include "script/search_string.h"
#include "script/symbols.h"

namespace corvid {

namespace {

constexpr int16 ReplaceOld = 1, RemoveByName = 2;  // as RemoveTrigger takes them
constexpr int32 SequenceRound = 10000;             // of the sequence number the key has the last four digits

std::string NextSortKey(ScriptState& script, char commandChar, const std::string& body) {
  // The counter is 16 bits wide; a round less gives the same digits, and triggers can be defined for ever.
  if (script.TriggerSequence == INT16_MAX)
    script.TriggerSequence = static_cast<int16>(script.TriggerSequence - SequenceRound);
  ++script.TriggerSequence;
  // What replaces the line comes last of all: the others shall have seen it as it was. Lines are tested from the
  // highest row down.
  const bool substitutes = Upper(body).find(std::string(1, commandChar) + "SU") != std::string::npos;
  const std::string digits = "000" + std::to_string(script.TriggerSequence);
  return (substitutes ? "0" : "1") + digits.substr(digits.size() - 4);
}

// The flag word behind the class. False when it is none.
bool ReadFlag(const std::string& word, int16& flags) {
  flags = 0;
  if (word.empty()) return true;
  if (SameText(word, "ANYCASE")) {
    flags = triggerflag::AnyCase;
  } else if (SameText(word, "COLOR") || SameText(word, "COLOUR")) {
    flags = triggerflag::Colour;
  }
  return flags != 0;
}

// False when the call is to end here.
bool ExpandTriggerParts(CommandCall& call, std::string& body) {
  std::string& search = call.P[2];
  std::string& classes = call.P[4];
  if (!classes.empty() && !ExpandText(call, classes)) {
    call.next = Flow::Trace;
    return false;
  }
  if (HoldsExpand(search) && !ExpandText(call, search)) return false;
  return ExpandBodyNow(call, body);
}

// The new row's pattern; empty when ErrorDescription is set.
std::string PatternFor(CommandCall& call, int16 row, int16 flags) {
  ScriptState& script = call.house.script;
  std::string pattern = ConvertSearchString(script, call.house.options, call.P[2], row, call.ErrorDescription);
  if (call.ErrorDescription.empty() && (flags & triggerflag::Colour) != 0)
    pattern = ConvertColourString(script, call.P[2], call.ErrorDescription);
  return pattern;
}

}  // namespace

void handler::Trigger(CommandCall& call) {
  std::string body = call.P[3];
  if (call.checkOnly()) {
    CheckNested(call, body);
    return;
  }
  if (!ExpandTriggerParts(call, body)) return;  // PUMP
  const std::string classes = ClassList(call, call.P[4]);
  Symbols& symbols = call.house.symbols;
  // Kept: the old trigger goes first, so that a bad flag leaves none.
  symbols.RemoveTrigger(ReplaceOld, call.definitionOwner, call.P[2], classes, call.ErrorDescription);
  if (!call.ErrorDescription.empty()) return call.fail(call.ErrorDescription);
  int16 flags = 0;
  if (!ReadFlag(call.P[5], flags)) return call.fail("Invalid trigger flag. Must be either \"Color\" or \"AnyCase\"");

  ScriptState& script = call.house.script;
  if (script.TriggerCount == INT16_MAX) symbols.CompressCommand(windowtype::Triggers);  // rows that classes have left
  const int16 row = AddInt16(script.TriggerCount, 1);
  symbols.resizeCommand(windowtype::Triggers, row);
  script.TriggerCount = row;
  MarkChanged(call);
  script.Triggers[row] = TriggerRecord{};
  script.Triggers[row].SortKey = NextSortKey(script, call.house.options.CommandChar, body);
  script.Triggers[row].SearchText = call.P[2];
  script.Triggers[row].Owner = call.definitionOwner;
  script.Triggers[row].Buffer = script.DefiningBuffer;
  const std::string pattern = PatternFor(call, row, flags);
  if (!call.ErrorDescription.empty()) return call.fail(call.ErrorDescription);  // a row without a pattern is a free one

  TriggerRecord& trigger = script.Triggers[row];
  trigger.Pattern = pattern;
  trigger.Action = body;
  trigger.ActionText = call.P[3];
  trigger.Flags = flags;
  trigger.Class = classes;
  if (call.has(option::Interactive)) call.house.upcalls.commands.SortTriggers();
}

void handler::UnTrigger(CommandCall& call) {
  if (call.checkOnly()) return;
  call.house.symbols.RemoveTrigger(RemoveByName, call.definitionOwner, call.P[2], call.P[3], call.ErrorDescription);
  if (!call.ErrorDescription.empty()) call.fail(call.ErrorDescription);
}

void handler::Substitute(CommandCall& call) {
  if (call.checkOnly() || !ExpandParameters(call)) return;
  call.rvar.Set(0, call.P[2]);
}

}  // namespace corvid
