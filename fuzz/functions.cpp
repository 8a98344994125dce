// SPDX-License-Identifier: GPL-3.0-or-later
// Every function of the language, with any arguments: the first byte chooses one, line ends part the arguments.
#include "script/functions.h"

#include "core/text.h"
#include "fuzz.h"
#include "script/function_table.h"
#include "script_house.h"

namespace {

std::vector<std::string> Names() {
  std::vector<std::string> names{"NoSuchFunction"};
  for (const auto& family :
       {corvid::TextFunctions(), corvid::ListFunctions(), corvid::NumberFunctions(), corvid::ProgramFunctions()})
    for (const corvid::FunctionRow& row : family) names.emplace_back(row.Name);
  return names;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using corvid::fuzz::Require;
  if (size == 0 || size > 4096) return 0;
  const std::vector<std::string> names = Names();
  const std::vector<std::string> given = corvid::Split(std::string(corvid::fuzz::Text(data + 1, size - 1)), "\n");
  corvid::FunctionArguments arguments;
  corvid::int16 count = 0;
  for (const std::string& argument : given) {
    if (count == corvid::FunctionArguments::Highest) break;
    arguments[++count] = argument;
  }
  corvid::fuzz::ScriptHouse house;
  std::string error;
  const std::string name = names[data[0] % names.size()];
  // Its arguments are taken as they are: texts that hold calls themselves are expanded only by EXPAND and VAR.
  std::string result;
  try {
    result = house.functions.ExecuteFunction(name, arguments, count, error, 1, house.expansion);
  } catch (const corvid::Fault&) {
    Require(false, "a function tells its faults as errors");
  }
  Require(error.empty() || result.empty(), "an error has no result");
  Require(data[0] % names.size() != 0 || !error.empty(), "an unknown name is an error");
  return 0;
}
