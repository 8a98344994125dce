// SPDX-License-Identifier: GPL-3.0-or-later
// The classes that are switched on.
#include <algorithm>

#include "core/number.h"
#include "core/text.h"
#include "script/symbols.h"

namespace corvid {

void Symbols::CheckAndAddClass(std::string_view class1, OwnerId Owner) {
  if (class1.empty() || class1 == "0") return;
  for (int32 row = 1; row <= state_.ClassCount; ++row)
    if (state_.ClassOwners[row] == Owner && SameText(state_.ClassNames[row], class1)) return;
  const int16 grown = AddInt16(state_.ClassCount, 1);
  const int32 upper = std::max<int32>(state_.ClassNames.UBound(), grown);
  std::string name = Upper(class1);  // before the table moves: class1 may stand in it
  state_.ClassNames.Resize(upper);
  state_.ClassOwners.Resize(upper);
  state_.ClassNames[grown] = std::move(name);
  state_.ClassOwners[grown] = Owner;
  state_.ClassCount = grown;
  ++state_.ClassVersion;
}

void Symbols::DeleteClass(std::string_view class1, OwnerId Owner) {
  if (class1.empty()) return;
  for (int32 row = 1; row <= state_.ClassCount; ++row) {
    if (state_.ClassOwners[row] != Owner || !SameText(state_.ClassNames[row], class1)) continue;
    for (int32 next = row + 1; next <= state_.ClassCount; ++next) {
      state_.ClassNames[next - 1] = std::move(state_.ClassNames[next]);
      state_.ClassOwners[next - 1] = state_.ClassOwners[next];
    }
    --state_.ClassCount;  // the arrays keep their size
    ++state_.ClassVersion;
    return;
  }
}

bool Symbols::IsClassOn(std::string_view name, OwnerId Owner) const {
  for (int32 row = 1; row <= state_.ClassCount; ++row) {
    const OwnerId owner = state_.ClassOwners[row];
    if ((owner == Owner || owner == 0) && SameText(state_.ClassNames[row], name)) return true;
  }
  return false;
}

bool Symbols::HasTooManyClasses(std::string_view class1) {
  constexpr std::ptrdiff_t mostClasses = 11;
  return std::count(class1.begin(), class1.end(), '|') >= mostClasses;
}

bool Symbols::InClass(std::string_view class1, OwnerId Owner) const {
  if (class1.empty()) return true;
  if (HasTooManyClasses(class1)) throw Fault(FaultKind::Index, "A definition has more than 11 classes");
  while (true) {
    const std::size_t bar = class1.find('|');
    if (!IsClassOn(class1.substr(0, bar), Owner)) return false;
    if (bar == std::string_view::npos) return true;
    class1.remove_prefix(bar + 1);
  }
}

}  // namespace corvid
