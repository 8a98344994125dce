// SPDX-License-Identifier: GPL-3.0-or-later
#include "commands/command_table.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "core/fault.h"

namespace corvid::test {

namespace {

std::string Keyword(std::string_view word) {
  const CommandRow* row = CommandTable::Find(word);
  return row == nullptr ? "(none)" : std::string(row->Keyword);
}

struct Arity {
  const char* Keyword;
  int Min;
  int Max;
};

constexpr int Any = 1000;

// The language's commands in the order in which they are tried.
constexpr Arity arities[] = {
    {"ABORT", 0, 1},     {"ADDITEM", 2, 3},   {"ALARM", 2, 3},      {"ALIAS", 2, 3},    {"AUTOMENU", 1, 1},
    {"BELL", 0, 0},      {"BREAK", 0, 0},     {"CHARACTER", 0, 1},  {"CLASS", 0, 2},    {"CLIPBOARD", 1, 1},
    {"CLOSE", 1, 1},     {"CONFIGURE", 2, 2}, {"CONNECT", 0, 1},    {"DELCLASS", 1, 1}, {"DELFILE", 1, 2},
    {"DIRECTION", 1, 2}, {"EDIT", 1, 1},      {"ENDRECORD", 1, 2},  {"ERASE", 0, Any},  {"EXECUTE", 1, 2},
    {"FILE", 2, 3},      {"FIND", 1, 2},      {"FORALL", 2, 2},     {"GAGLINE", 0, 2},  {"GAGON", 0, 1},
    {"IF", 0, Any},      {"IGNORE", 2, 2},    {"KEY", 2, 3},        {"KILLALL", 0, 1},  {"LOAD", 1, 2},
    {"LOCAL", 0, 1},     {"MATH", 2, 2},      {"MUD", 6, 6},        {"OFFLINE", 1, 2},  {"OK", 0, 0},
    {"PASSTHRU", 1, 1},  {"PAUSE", 0, 0},     {"PC", 2, 3},         {"PICK", 1, 1},     {"PLAYLOOP", 1, 2},
    {"PROMPT", 2, 2},    {"QUIET", 1, 1},     {"QUIT", 0, 0},       {"READ", 2, 3},     {"RECORD", 0, 0},
    {"RELOAD", 0, 1},    {"RESET", 0, 1},     {"SAVE", 0, 2},       {"SAY", 1, 2},      {"SEND", 1, 3},
    {"SETSPEECH", 2, 5}, {"STOP", 0, 0},      {"SUBSTITUTE", 1, 1}, {"SYSKEY", 0, 1},   {"TAB", 0, 1},
    {"TRIGGER", 2, 4},   {"UNALARM", 1, 1},   {"UNALIAS", 1, 2},    {"UNCLASS", 1, 1},  {"UNGAGLINE", 0, 0},
    {"UNGAGON", 0, 0},   {"UNKEY", 1, 2},     {"UNLOAD", 1, 1},     {"UNPAUSE", 0, 0},  {"UNTAB", 0, 1},
    {"UNTIL", 2, 2},     {"UNTRIGGER", 1, 2}, {"UNVARIABLE", 1, 1}, {"VARIABLE", 0, 3}, {"WHILE", 2, 2},
    {"WAIT", 1, 2},      {"WINDOW", 1, 1},    {"WRITE", 2, 3},      {"", 0, 1},
};

}  // namespace

TEST(CommandTable, HoldsEveryCommandInItsOrderWithItsCounts) {
  const auto rows = CommandTable::Rows();
  ASSERT_EQ(rows.size(), std::size(arities));
  for (std::size_t i = 0; i < rows.size(); ++i) {
    EXPECT_EQ(rows[i].Keyword, arities[i].Keyword);
    EXPECT_EQ(rows[i].Min, arities[i].Min) << rows[i].Keyword;
    EXPECT_EQ(rows[i].Max, arities[i].Max) << rows[i].Keyword;
  }
}

TEST(CommandTable, FindsEachCommandByItsFullWord) {
  for (const CommandRow& row : CommandTable::Rows()) {
    if (row.Keyword.empty()) continue;
    EXPECT_EQ(Keyword(row.Keyword), row.Keyword);
  }
}

TEST(CommandTable, ThePrefixThatFitsSeveralMeansTheFirst) {
  const std::pair<const char*, const char*> ties[] = {
      {"A", "ABORT"},        {"AL", "ALARM"},      {"B", "BELL"},       {"C", "CHARACTER"}, {"CL", "CLASS"},
      {"CO", "CONFIGURE"},   {"CON", "CONFIGURE"}, {"CONN", "CONNECT"}, {"D", "DELCLASS"},  {"E", "EDIT"},
      {"F", "FILE"},         {"FI", "FILE"},       {"GAG", "GAGLINE"},  {"I", "IF"},        {"K", "KEY"},
      {"L", "LOAD"},         {"LO", "LOAD"},       {"M", "MATH"},       {"O", "OFFLINE"},   {"P", "PASSTHRU"},
      {"PA", "PASSTHRU"},    {"Q", "QUIET"},       {"QUI", "QUIET"},    {"QUIT", "QUIT"},   {"R", "READ"},
      {"RE", "READ"},        {"S", "SAVE"},        {"SA", "SAVE"},      {"T", "TAB"},       {"U", "UNALARM"},
      {"UN", "UNALARM"},     {"UNT", "UNTAB"},     {"V", "VARIABLE"},   {"W", "WHILE"},     {"WA", "WAIT"},
      {"CONF", "CONFIGURE"}, {"GAGO", "GAGON"},    {"UNTI", "UNTIL"},   {"REC", "RECORD"},  {"SU", "SUBSTITUTE"},
  };
  for (const auto& [typed, meant] : ties) EXPECT_EQ(Keyword(typed), meant) << typed;
}

TEST(CommandTable, KillAllIsNeverAbbreviated) {
  EXPECT_EQ(Keyword("KILLALL"), "KILLALL");
  for (const char* word : {"KI", "KILLAL", "KILLALLS", "KILLA?L", "KILLALL*"}) EXPECT_EQ(Keyword(word), "(none)");
}

TEST(CommandTable, TheTypedWordIsAPatternBehindItsFirstLetter) {
  EXPECT_EQ(Keyword("A?ORT"), "ABORT");
  EXPECT_EQ(Keyword("C[L]I"), "CLIPBOARD");
  EXPECT_EQ(Keyword("W[!H]"), "WAIT");
  EXPECT_EQ(Keyword("?BORT"), "(none)");
  EXPECT_EQ(Keyword("AL#"), "(none)");
  EXPECT_THROW(CommandTable::Find("A[B"), Fault);
}

TEST(CommandTable, OnlyTheGroupOfTheLetterIsTried) {
  for (const char* word : {"", "*", "H", "J", "N", "X", "5", "_A", "\xC4", "ABORTX", "OKAY"})
    EXPECT_EQ(Keyword(word), "(none)") << word;
  EXPECT_TRUE(CommandTable::IsNumberGroup('7'));
  EXPECT_TRUE(CommandTable::IsNumberGroup('V'));
  EXPECT_FALSE(CommandTable::IsNumberGroup('U'));
}

TEST(CommandTable, SetSpeechTakesTwoOrFiveParametersAndNothingBetween) {
  const CommandRow& row = *CommandTable::Find("SETSPEECH");
  for (int16 count = 0; count <= 6; ++count) EXPECT_EQ(CommandTable::CountFits(row, count), count == 2 || count == 5);
}

}  // namespace corvid::test
