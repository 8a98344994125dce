// SPDX-License-Identifier: GPL-3.0-or-later
// What every function asks of its arguments before it works: how many there are, and which are numbers.
#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "library.h"

namespace corvid {
namespace {

using testing_script::Library;

struct FunctionNeeds {
  const char* Name;
  int16 Least;
  int16 Most;
  std::vector<int16> Numbers;  // the arguments that must be numbers
};

constexpr int16 Many = FunctionArguments::Highest;

const std::vector<FunctionNeeds> AllFunctions{
    {"CASE", 3, Many, {1}},
    {"CHARINFO", 1, 1, {}},
    {"CHR", 1, 1, {1}},
    {"CONNECTED", 1, 1, {}},
    {"COPY", 2, 3, {2, 3}},
    {"DEFINED", 1, 1, {}},
    {"DELETE", 3, 3, {2, 3}},
    {"DELITEM", 2, 2, {}},
    {"DELNITEM", 2, 2, {2}},
    {"ENDOFFILE", 1, 1, {1}},
    {"EVAL", 1, 1, {}},
    {"EXPAND", 1, 1, {}},
    {"IF", 3, 3, {}},
    {"IFWORD", 2, 3, {}},
    {"ISNUMBER", 1, 1, {}},
    {"LASTLINE", 1, 1, {1}},
    {"LEFT", 2, 2, {2}},
    {"LENGTH", 1, 1, {}},
    {"LTRIM", 1, 1, {}},
    {"MAX", 2, Many, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20}},
    {"MIN", 2, Many, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20}},
    {"NUMWORDS", 1, 2, {}},
    {"PICK", 1, 1, {}},
    {"POP", 1, 1, {}},
    {"PUSH", 2, 2, {}},
    {"POS", 2, 2, {}},
    {"PROPER", 1, 1, {}},
    {"RANDOM", 2, 2, {1, 2}},
    {"REPLACE", 3, 3, {}},
    {"REVERSELIST", 1, 1, {}},
    {"RIGHT", 2, 2, {2}},
    {"RTRIM", 1, 1, {}},
    {"SORT", 1, 2, {}},
    {"SWITCHDIRECTION", 1, 1, {}},
    {"TRIM", 1, 1, {}},
    {"VAR", 1, 1, {}},
    {"WORD", 3, 3, {3}},
};

class FunctionCalls : public Library {
 protected:
  // The error of a call whose arguments are all "1", but the one at odd.
  std::string Error(const std::string& name, int16 count, int16 odd = 0, const std::string& text = "") {
    FunctionArguments arguments;
    for (int16 i = 1; i <= count; ++i) arguments[i] = i == odd ? text : "1";
    std::string error;
    const std::string result = functions.ExecuteFunction(name, arguments, count, error, 2, expansion);
    if (!error.empty()) {
      EXPECT_EQ(result, "") << name;
    }
    return error;
  }
};

TEST_F(FunctionCalls, TakeAsManyArgumentsAsTheySay) {
  for (const FunctionNeeds& needs : AllFunctions) {
    const std::string wrong = std::string("Wrong number of arguments for function ") + needs.Name;
    for (int16 count = 1; count <= Many; ++count) {
      const bool fits = count >= needs.Least && count <= needs.Most;
      EXPECT_EQ(Error(needs.Name, count) == wrong, !fits) << needs.Name << " with " << count;
    }
  }
}

TEST_F(FunctionCalls, TakeNumbersWhereTheySay) {
  for (const FunctionNeeds& needs : AllFunctions) {
    for (int16 place = 1; place <= needs.Most; ++place) {
      const bool number = std::find(needs.Numbers.begin(), needs.Numbers.end(), place) != needs.Numbers.end();
      const std::string refused =
          "Argument " + std::to_string(place) + " must be numeric in function " + std::string(needs.Name);
      EXPECT_EQ(Error(needs.Name, needs.Most, place, "1 1") == refused, number) << needs.Name << " at " << place;
      EXPECT_NE(Error(needs.Name, needs.Most, place, "3-2"), refused) << "a sum is as good as its result";
    }
  }
}

TEST_F(FunctionCalls, NamesCountInAnyCaseAndWhole) {
  EXPECT_EQ(Error("tRiM", 1), "");
  EXPECT_EQ(Error("TRI", 1), "Unknown function TRI");
  EXPECT_EQ(Error("TRIMS", 1), "Unknown function TRIMS");
  EXPECT_EQ(Error("", 1), "Unknown function ");
}

TEST_F(FunctionCalls, QuotesAroundAnyArgumentGo) {
  FunctionArguments arguments;
  for (int16 i = 1; i <= Many; ++i) arguments[i] = " \"" + std::to_string(i) + "\" ";
  std::string error;
  EXPECT_EQ(functions.ExecuteFunction("MAX", arguments, Many, error, 0, expansion), "20");
  EXPECT_EQ(error, "");
  for (int16 i = 1; i <= Many; ++i) EXPECT_EQ(arguments[i], std::to_string(i));
}

}  // namespace
}  // namespace corvid
