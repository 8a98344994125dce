// SPDX-License-Identifier: GPL-3.0-or-later
#include "script/values.h"

#include <limits>

#include "core/fault.h"
#include "core/number.h"
#include "core/text.h"
#include "script/symbols.h"

namespace corvid {

namespace {

// A number that nothing can hold is outside every range.
double ValueOrInfinity(std::string_view number) {
  try {
    return Val(number);
  } catch (const Fault&) {
    return std::numeric_limits<double>::infinity();
  }
}

}  // namespace

int32 ValidValue(std::string_view t, int16 parameter, int32 MinVal, int32 MaxVal, std::string& ErrorDescription) {
  if (!ErrorDescription.empty()) return 0;
  const std::string start = "Parameter " + std::to_string(parameter - 1) + " must be ";
  if (!IsNumeric(t)) {
    ErrorDescription = start + "numeric";
    return 0;
  }
  const double value = ValueOrInfinity(t);
  if (value < MinVal || value > MaxVal) {
    ErrorDescription = start + "in the range " + std::to_string(MinVal) + " and " + std::to_string(MaxVal);
    return 0;
  }
  return ToInt32(value);
}

int32 lookup(const Table<std::string>& table, int32 MaxTable, std::string_view SString, std::string_view CString,
             int16 flags, const Symbols& symbols, OwnerId Owner) {
  const bool rowsCount = (flags & lookupflag::ClassIsOn) == 0 || symbols.InClass(CString, Owner);
  int32 freeRow = 0;
  for (int32 row = 1; row <= MaxTable; ++row) {
    if (rowsCount && SameText(table[row], SString)) return row;
    if (freeRow == 0 && table[row].empty()) freeRow = row;
  }
  return (flags & lookupflag::FreeRow) != 0 ? freeRow : 0;
}

int16 ConvertToInteger(int32 x) {
  return ToInt16(x);
}

}  // namespace corvid
