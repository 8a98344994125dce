// SPDX-License-Identifier: GPL-3.0-or-later
#include "script/functions.h"

#include "core/text.h"
#include "core/upcalls.h"
#include "platform/sockets.h"
#include "script/expression.h"
#include "script/function_table.h"
#include "script/statement_text.h"

namespace corvid {

namespace {

const FunctionRow* FindFunction(std::string_view name) {
  for (const auto& family : {TextFunctions(), ListFunctions(), NumberFunctions(), ProgramFunctions()})
    for (const FunctionRow& row : family)
      if (SameText(row.Name, name)) return &row;
  return nullptr;
}

void RemoveArgumentQuotes(FunctionArguments& parameter) {
  for (int32 slot = 1; slot <= FunctionArguments::Highest; ++slot)
    if (parameter[slot].find('"') != std::string::npos) parameter[slot] = RemoveQuotes(parameter[slot]);
}

// Expressions in the place of numbers become numbers. Returns the first argument that is neither, or 0.
int16 MakeNumbers(const FunctionRow& row, const ExpressionEvaluator& expressions, FunctionArguments& parameter,
                  int16 parameters) {
  for (int16 slot = 1; slot <= parameters; ++slot) {
    std::string& text = parameter[slot];
    if ((row.Numeric & NumberAt(slot)) == 0 || IsNumeric(text)) continue;
    const bool optional = slot > row.Least && row.Numeric != AllNumbers;
    if (optional && text.empty()) continue;
    std::string error;
    text = std::to_string(expressions.EvaluateExpression(text, error));
    if (!error.empty()) return slot;
  }
  return 0;
}

}  // namespace

std::string Functions::ExecuteFunction(const std::string& functionName, FunctionArguments& parameter, int16 parameters,
                                       std::string& ErrorDescription, OwnerId tempOwner, Expansion& expansion) {
  RemoveArgumentQuotes(parameter);
  const FunctionRow* row = FindFunction(functionName);
  if (row == nullptr) {
    ErrorDescription = "Unknown function " + functionName;
    return "";
  }
  if (parameters < row->Least || parameters > row->Most) {
    ErrorDescription = "Wrong number of arguments for function " + functionName;
    return "";
  }
  if (const int16 slot = MakeNumbers(*row, world_.expressions, parameter, parameters); slot != 0) {
    ErrorDescription = "Argument " + std::to_string(slot) + " must be numeric in function " + functionName;
    return "";
  }
  std::string result;
  try {
    FunctionCall call{world_, parameter, parameters, ErrorDescription, tempOwner, expansion};
    result = row->Routine(call);
  } catch (const Fault&) {
    ErrorDescription = "Error in one of the arguments in function " + functionName;
  }
  return ErrorDescription.empty() ? result : std::string();
}

}  // namespace corvid
