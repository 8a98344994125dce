// SPDX-License-Identifier: GPL-3.0-or-later
// One row per function. The families stand in files of their own.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "core/number.h"
#include "script/function_library.h"
#include "script/function_world.h"

namespace corvid {

// A call whose count and numeric arguments have been checked. A Fault thrown by its routine becomes the error "Error in
// one of the arguments in function ".
struct FunctionCall {
  FunctionWorld& world;
  FunctionArguments& parameter;
  int16 parameters;
  std::string& ErrorDescription;
  OwnerId owner;
  Expansion& expansion;

  const std::string& Text(int32 slot) const { return parameter[slot]; }
  double Number(int32 slot) const { return ToNumber(parameter[slot]); }
  int32 Whole(int32 slot) const { return ToInt32(Number(slot)); }  // positions and counts: halves to even
};

struct FunctionRow {
  std::string_view Name;
  int16 Least;
  int16 Most;
  std::uint32_t Numeric;  // bit n: argument n is a number, or an expression for one; an optional one may be empty
  std::string (*Routine)(FunctionCall& call);
};

inline constexpr std::uint32_t NoNumber = 0;
inline constexpr std::uint32_t AllNumbers = ~0U;
constexpr std::uint32_t NumberAt(int slot) {
  return 1U << slot;
}

std::span<const FunctionRow> TextFunctions();
std::span<const FunctionRow> ListFunctions();
std::span<const FunctionRow> NumberFunctions();
std::span<const FunctionRow> ProgramFunctions();  // variables, sessions, files, dialogs

}  // namespace corvid
