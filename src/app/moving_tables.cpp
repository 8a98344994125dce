// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/moving_tables.h"

#include <utility>

namespace corvid {

namespace {

template <typename Column>
void ShiftUp(Column& column, int32 count) {
  // One slot more than the rows, as an insertion needs it.
  if (column.UBound() < count + 2) column.Resize(count + 2);
  for (int32 row = count; row >= 1; --row) column[row + 1] = std::move(column[row]);
  column[1] = {};
}

template <typename Column>
void ShiftDown(Column& column, int32 count) {
  for (int32 row = 1; row < count; ++row) column[row] = std::move(column[row + 1]);
  column[count] = {};
}

// The columns of one table, moved together; blank tells whether row 1 is the row that was put in.
template <typename Count, typename... Columns>
void Move(Count& count, bool blank, Columns&... columns) {
  if (count == 0) return;
  if (blank) {
    (ShiftDown(columns, count), ...);
    count = static_cast<Count>(count - 1);
  } else {
    (ShiftUp(columns, count), ...);
    count = static_cast<Count>(count + 1);
  }
}

}  // namespace

void MoveByARow(ScriptState& t) {
  Move(t.AliasCount, t.AliasCount > 0 && t.AliasNames[1].empty(), t.AliasNames, t.AliasValues, t.AliasClasses,
       t.AliasBuffers, t.AliasOwners, t.AliasFlags, t.AliasOriginals);
  Move(t.MacroCount, t.MacroCount > 0 && t.MacroKeyCodes[1] == 0, t.MacroKeyCodes, t.MacroShifts, t.MacroValues,
       t.MacroFlags, t.MacroClasses, t.MacroBuffers, t.MacroOwners, t.MacroOriginals);
  // A line's triggers are walked by row number whatever a trigger's action does, so these only change their place in
  // memory.
  t.Triggers = TriggerRows(t.Triggers);
  Move(t.VariableCount, t.VariableCount > 0 && t.VariableNames[1].empty(), t.VariableNames, t.VariableValues,
       t.VariableDefaults, t.VariableOwners);
}

void MovingLoop::MoveTables() {
  MoveByARow(tables_);
}

}  // namespace corvid
