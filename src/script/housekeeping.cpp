// SPDX-License-Identifier: GPL-3.0-or-later
// Removing definitions and closing the gaps that this leaves.
#include <utility>

#include "core/text.h"
#include "core/upcalls.h"
#include "script/row_search.h"
#include "script/symbols.h"

namespace corvid {

namespace {

template <typename... Columns>
void ResizeAll(int32 upper, Columns&... columns) {
  (columns.Resize(upper), ...);
}

template <typename... Columns>
void MoveRow(int32 from, int32 to, Columns&... columns) {
  ((columns[to] = std::move(columns[from])), ...);
}

}  // namespace

void Symbols::RemoveTrigger(int16 stype, OwnerId Owner, std::string_view sString2, std::string_view sClass,
                            std::string& ErrorDescription) {
  constexpr int16 nameAlone = 2;
  std::string_view wanted = sString2;
  if (!wanted.empty() && wanted.front() == '<') {
    const std::size_t close = wanted.find('>');
    if (close == std::string_view::npos) {
      ErrorDescription = "Missing matching right angle bracket for search string";
      return;
    }
    if (stype == nameAlone && close + 1 < wanted.size()) {
      ErrorDescription = "Extra characters after the right angle bracket";
      return;
    }
    wanted = TriggerName(wanted);
  }
  // Each definition comes through here to remove the one before it, so numbers are compared before texts. A row that is
  // free already counts too: a trigger that comes and goes with its class closes its own gaps.
  const std::uint32_t number = TriggerRows::NumberOfName(wanted);
  bool removed = false;
  for (int32 row = 1; row <= state_.TriggerCount; ++row) {
    if (state_.Triggers.NameNumber(row) != number) continue;
    const TriggerRecord& trigger = state_.Triggers.Read(row);
    if (trigger.Owner != Owner || !SameText(TriggerName(trigger.SearchText), wanted)) continue;
    if (!sClass.empty() && !SameText(sClass, trigger.Class)) continue;
    state_.Triggers[row].Pattern.clear();
    removed = true;
  }
  if (removed) CompressCommand(windowtype::Triggers);
}

void Symbols::RemoveTabWords(OwnerId ownedBy) {
  for (int32 row = 1; row <= state_.TabWordCount; ++row)
    if (state_.TabOwners[row] == ownedBy) state_.TabWords[row].clear();
  const int32 kept = PackRows(
      state_.TabWordCount, [&](int32 row) { return state_.TabWords[row].empty(); },
      [&](int32 from, int32 to) { MoveRow(from, to, state_.TabWords, state_.TabOwners); });
  state_.TabWordCount = static_cast<int16>(kept);
  ResizeAll(kept, state_.TabWords, state_.TabOwners);
}

void Symbols::RemoveCommands(int16 BufferNumber) {
  for (int32 row = 1; row <= state_.TriggerCount; ++row)
    if (state_.Triggers.Read(row).Buffer == BufferNumber) state_.Triggers[row].Pattern.clear();
  for (int32 row = 1; row <= state_.AliasCount; ++row)
    if (state_.AliasBuffers[row] == BufferNumber) state_.AliasNames[row].clear();
  for (int32 row = 1; row <= state_.MacroCount; ++row)
    if (state_.MacroBuffers[row] == BufferNumber) state_.MacroKeyCodes[row] = 0;
}

void Symbols::RemoveCharacter(OwnerId ownedBy) {
  for (int32 row = 1; row <= state_.TriggerCount; ++row)
    if (state_.Triggers.Read(row).Owner == ownedBy) state_.Triggers[row].Pattern.clear();
  for (int32 row = 1; row <= state_.AliasCount; ++row)
    if (state_.AliasOwners[row] == ownedBy) state_.AliasNames[row].clear();
  for (int32 row = 1; row <= state_.MacroCount; ++row)
    if (state_.MacroOwners[row] == ownedBy) state_.MacroKeyCodes[row] = 0;
  for (int32 row = 1; row <= state_.VariableCount; ++row)
    if (state_.VariableOwners[row] == ownedBy) state_.VariableNames[row].clear();
  RemoveTabWords(ownedBy);
}

void Symbols::CompressCommand(int32 WindowType) {
  if ((WindowType & windowtype::Triggers) != 0) CompressTriggers();
  if ((WindowType & windowtype::Keys) != 0) CompressKeys();
  if ((WindowType & windowtype::Aliases) != 0) CompressAliases();
  if ((WindowType & windowtype::Variables) != 0) CompressVariables();
}

// Kept: of a trigger that moves down, the pieces and names behind the tenth stay where they are, and the trigger gets
// those of the row it comes to.
void Symbols::CompressTriggers() {
  constexpr int32 moved = 10;
  TriggerRows& rows = state_.Triggers;
  const int32 kept = PackRows(
      state_.TriggerCount, [&](int32 row) { return rows.Read(row).Pattern.empty(); },
      [&](int32 from, int32 to) {
        rows.Swap(from, to);
        if (!rows.HoldsTextsBehind(moved, from) && !rows.HoldsTextsBehind(moved, to)) return;
        TriggerRecord& one = rows[from];
        TriggerRecord& other = rows[to];
        one.Parts.SwapBehind(other.Parts, moved);
        one.Names.SwapBehind(other.Names, moved);
      });
  state_.TriggerCount = static_cast<int16>(kept);
  resizeCommand(windowtype::Triggers, kept);
  commands_.SortTriggers();
}

void Symbols::CompressKeys() {
  const int32 kept = PackRows(
      state_.MacroCount, [&](int32 row) { return state_.MacroKeyCodes[row] == 0; },
      [&](int32 from, int32 to) {
        MoveRow(from, to, state_.MacroKeyCodes, state_.MacroShifts, state_.MacroFlags, state_.MacroBuffers,
                state_.MacroOwners);
        MoveRow(from, to, state_.MacroValues, state_.MacroClasses, state_.MacroOriginals);
      });
  state_.MacroCount = static_cast<int16>(kept);
  resizeCommand(windowtype::Keys, kept);
}

void Symbols::CompressAliases() {
  const int32 kept = PackRows(
      state_.AliasCount, [&](int32 row) { return IsBlank(state_.AliasNames[row]); },
      [&](int32 from, int32 to) {
        MoveRow(from, to, state_.AliasBuffers, state_.AliasOwners, state_.AliasFlags);
        MoveRow(from, to, state_.AliasNames, state_.AliasValues, state_.AliasClasses, state_.AliasOriginals);
      });
  state_.AliasCount = static_cast<int16>(kept);
  resizeCommand(windowtype::Aliases, kept);
}

void Symbols::CompressVariables() {
  const int32 kept = PackRows(
      state_.VariableCount, [&](int32 row) { return IsBlank(state_.VariableNames[row]); },
      [&](int32 from, int32 to) {
        MoveRow(from, to, state_.VariableNames, state_.VariableValues, state_.VariableDefaults);
        MoveRow(from, to, state_.VariableOwners);
      });
  state_.VariableCount = kept;
  ResizeAll(kept + 1, state_.VariableNames, state_.VariableValues, state_.VariableDefaults, state_.VariableOwners);
}

void Symbols::resizeCommand(int32 WindowType, int32 Size) {
  switch (WindowType) {
    case windowtype::Keys:
      ResizeAll(Size, state_.MacroKeyCodes, state_.MacroShifts, state_.MacroFlags, state_.MacroBuffers,
                state_.MacroOwners);
      ResizeAll(Size, state_.MacroValues, state_.MacroClasses, state_.MacroOriginals);
      break;
    case windowtype::Aliases:
      ResizeAll(Size, state_.AliasBuffers, state_.AliasOwners, state_.AliasFlags);
      ResizeAll(Size, state_.AliasNames, state_.AliasValues, state_.AliasClasses, state_.AliasOriginals);
      break;
    case windowtype::Triggers:
      ResizeAll(Size, state_.Triggers);
      break;
    case windowtype::Abbreviations:
      ResizeAll(Size, state_.Directions, state_.OppositeDirections, state_.AbbreviationClasses);
      ResizeAll(Size, state_.AbbreviationBuffers, state_.AbbreviationOwners);
      break;
    default:
      break;
  }
}

}  // namespace corvid
