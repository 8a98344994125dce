// SPDX-License-Identifier: GPL-3.0-or-later
#include "script/symbols.h"

#include <utility>

#include "core/number.h"
#include "core/text.h"
#include "script/row_search.h"

namespace corvid {

namespace {

constexpr int16 KeyFactor = 10;  // a key sorts by its code times this plus its shift state

int16 KeyNumber(int16 code, int16 shift) {
  return ToInt16(static_cast<double>(code) * KeyFactor + shift);
}

// Names keep the spelling they were defined with; case and blanks around do not count.
auto NameOrder(const Table<std::string>& names, std::string_view wanted) {
  return [&names, wanted](int32 row) { return CompareText(wanted, TrimView(names[row])); };
}

auto NameIsFree(const Table<std::string>& names) {
  return [&names](int32 row) { return IsBlank(names[row]); };
}

auto KeyOrder(const ScriptState& state, int16 wanted) {
  return [&state, wanted](int32 row) { return wanted - KeyNumber(state.MacroKeyCodes[row], state.MacroShifts[row]); };
}

auto KeyIsFree(const ScriptState& state) {
  return [&state](int32 row) { return state.MacroKeyCodes[row] == 0; };
}

int32 NamelessAlias(const ScriptState& state, OwnerId owner) {
  for (int32 row = 1; row <= state.AliasCount; ++row)
    if (IsBlank(state.AliasNames[row]) && (state.AliasOwners[row] == owner || state.AliasOwners[row] == 0)) return row;
  return 0;
}

template <typename T>
void MoveColumnUp(Table<T>& column, int32 first, int32 last) {
  for (int32 row = last; row >= first; --row) column[row + 1] = std::move(column[row]);
}

// Makes room for a row at first in all columns of a table.
template <typename... T>
void MoveUp(int32 first, int32 last, Table<T>&... columns) {
  (MoveColumnUp(columns, first, last), ...);
}

bool IsVariableName(std::string_view name) {
  if (name.empty() || !IsLetter(name.front())) return false;
  for (const char c : name)
    if (!IsLetter(c) && !IsDigit(c)) return false;
  return true;
}

}  // namespace

void Symbols::AddVariable(std::string vName2, std::string VValue, OwnerId Owner, std::string&, std::string VDefault2) {
  const std::string name = Upper(TrimView(vName2));
  if (name.empty()) return;
  if (const int32 row = FindVariableRow(name, Owner); row != 0) {
    state_.VariableValues[row] = std::move(VValue);
    return;
  }
  if (!IsVariableName(name)) return;
  const int32 count = state_.VariableCount;
  const int32 row = InsertionRow(count, NameOrder(state_.VariableNames, name), NameIsFree(state_.VariableNames));
  const int32 upper = count + 2;  // one slot larger than the count
  state_.VariableNames.Resize(upper);
  state_.VariableValues.Resize(upper);
  state_.VariableDefaults.Resize(upper);
  state_.VariableOwners.Resize(upper);
  MoveUp(row, count, state_.VariableNames, state_.VariableValues, state_.VariableDefaults, state_.VariableOwners);
  state_.VariableNames[row] = std::move(vName2);
  state_.VariableDefaults[row] = VDefault2 == DefaultIsValue ? VValue : std::move(VDefault2);
  state_.VariableValues[row] = std::move(VValue);
  state_.VariableOwners[row] = Owner;
  state_.VariableCount = count + 1;
}

void Symbols::AddAlias(std::string aname2, std::string AValue, OwnerId Owner, std::string AClass, int16 ABuffer,
                       std::string AOriginalCommand, std::string&) {
  const std::string name = Upper(TrimView(aname2));
  // A row without a name is passed over when names are looked up: it would never be met again.
  int32 row = name.empty() ? NamelessAlias(state_, Owner) : FindAlias(name, Owner, false);
  if (row == 0) {
    const int16 count = state_.AliasCount;
    const int16 grown = AddInt16(count, 1);
    row = InsertionRow(count, NameOrder(state_.AliasNames, name), NameIsFree(state_.AliasNames));
    resizeCommand(windowtype::Aliases, grown);
    MoveUp(row, count, state_.AliasNames, state_.AliasValues, state_.AliasClasses, state_.AliasBuffers,
           state_.AliasOwners, state_.AliasFlags, state_.AliasOriginals);
    state_.AliasNames[row] = std::move(aname2);
    state_.AliasOwners[row] = Owner;
    state_.AliasFlags[row] = 0;
    state_.AliasCount = grown;
  }
  state_.AliasValues[row] = std::move(AValue);
  state_.AliasClasses[row] = std::move(AClass);
  state_.AliasBuffers[row] = ABuffer;
  state_.AliasOriginals[row] = std::move(AOriginalCommand);
}

void Symbols::Addmacro(int16 kc, int16 ks, std::string kvalue, OwnerId Owner, std::string KClass, int16 KBuffer,
                       std::string AOriginalCommand, std::string&) {
  int32 row = FindMacro(kc, ks, Owner, false);
  if (row == 0) {
    const int16 count = state_.MacroCount;
    const int16 grown = AddInt16(count, 1);
    row = InsertionRow(count, KeyOrder(state_, KeyNumber(kc, ks)), KeyIsFree(state_));
    resizeCommand(windowtype::Keys, grown);
    MoveUp(row, count, state_.MacroKeyCodes, state_.MacroShifts, state_.MacroValues, state_.MacroFlags,
           state_.MacroClasses, state_.MacroBuffers, state_.MacroOwners, state_.MacroOriginals);
    state_.MacroKeyCodes[row] = kc;
    state_.MacroShifts[row] = ks;
    state_.MacroOwners[row] = Owner;
    state_.MacroFlags[row] = 0;
    state_.MacroCount = grown;
  }
  state_.MacroValues[row] = std::move(kvalue);
  state_.MacroClasses[row] = std::move(KClass);
  state_.MacroBuffers[row] = KBuffer;
  state_.MacroOriginals[row] = std::move(AOriginalCommand);
}

int32 Symbols::FindVariable(std::string_view VN2, std::string& vv, OwnerId vo) const {
  if (state_.VariableCount == 0) return 0;  // Kept: vv stays as it was.
  const int32 row = FindVariableRow(VN2, vo);
  if (row == 0) {
    vv.clear();
  } else {
    vv = state_.VariableValues[row];
  }
  return row;
}

int32 Symbols::FindVariableRow(std::string_view VN2, OwnerId vo) const {
  const auto owner = [&](int32 row) { return state_.VariableOwners[row]; };
  return BestRow(
      state_.VariableCount, NameOrder(state_.VariableNames, VN2), NameIsFree(state_.VariableNames),
      [&](int32 candidate) { return owner(candidate) == vo; }, [&](int32 candidate) { return owner(candidate) == 0; });
}

int16 Symbols::FindAlias(std::string_view VN2, OwnerId vo, bool checkclass) const {
  const auto counts = [&](int32 row, OwnerId owner) {
    return state_.AliasOwners[row] == owner && (!checkclass || InClass(state_.AliasClasses[row], vo));
  };
  return static_cast<int16>(BestRow(
      state_.AliasCount, NameOrder(state_.AliasNames, VN2), NameIsFree(state_.AliasNames),
      [&](int32 row) { return counts(row, vo); }, [&](int32 row) { return counts(row, 0); }));
}

int16 Symbols::FindMacro(int16 kc, int16 ks, OwnerId ko, bool checkclass) const {
  const auto counts = [&](int32 row, OwnerId owner) {
    return state_.MacroOwners[row] == owner && (!checkclass || InClass(state_.MacroClasses[row], ko));
  };
  return static_cast<int16>(BestRow(
      state_.MacroCount, KeyOrder(state_, KeyNumber(kc, ks)), KeyIsFree(state_),
      [&](int32 row) { return counts(row, ko); }, [&](int32 row) { return counts(row, 0); }));
}

}  // namespace corvid
