// SPDX-License-Identifier: GPL-3.0-or-later
#include "speech/punctuation.h"

#include <array>

namespace corvid {

namespace {

constexpr std::string_view Lowers = "abcdefghijklmnopqrstuvwxyz";
constexpr std::string_view Uppers = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
constexpr std::string_view Digits = "0123456789";

// Kept: "colan" is how it has always been spoken.
constexpr std::array<PunctuationRow, 33> Marks{{
    {32, " ", "space"},
    {49 + ShiftedKey, "!", "exclaim"},
    {50 + ShiftedKey, "@", ""},
    {51 + ShiftedKey, "#", ""},
    {52 + ShiftedKey, "$", ""},
    {53 + ShiftedKey, "%", ""},
    {54 + ShiftedKey, "^", ""},
    {55 + ShiftedKey, "&", ""},
    {56 + ShiftedKey, "*", ""},
    {57 + ShiftedKey, "(", "left parren"},
    {48 + ShiftedKey, ")", "right parren"},
    {186, ";", "semi colan"},
    {186 + ShiftedKey, ":", "colan"},
    {187, "=", ""},
    {187 + ShiftedKey, "+", ""},
    {188, ",", "comma"},
    {188 + ShiftedKey, "<", "less"},
    {189, "-", "dash"},
    {189 + ShiftedKey, "_", ""},
    {190, ".", "period"},
    {190 + ShiftedKey, ">", "greater"},
    {191, "/", ""},
    {191 + ShiftedKey, "?", "question"},
    {192, "`", ""},
    {192 + ShiftedKey, "~", ""},
    {219, "[", "left bracket"},
    {219 + ShiftedKey, "{", "left brace"},
    {220, "\\", "back slash"},
    {220 + ShiftedKey, "|", "vertical bar"},
    {221, "]", "right bracket"},
    {221 + ShiftedKey, "}", "right brace"},
    {222, "'", "apostrophe"},
    {222 + ShiftedKey, "\"", "quote"},
}};

constexpr std::size_t RowCount = Lowers.size() + Uppers.size() + Digits.size() + Marks.size();

constexpr std::array<PunctuationRow, RowCount> MakeRows() {
  std::array<PunctuationRow, RowCount> rows{};
  std::size_t next = 0;
  for (std::size_t i = 0; i < Uppers.size(); ++i) {
    const auto code = static_cast<int16>('A' + i);
    rows[next++] = {code, Lowers.substr(i, 1), ""};
    rows[next++] = {static_cast<int16>(code + ShiftedKey), Uppers.substr(i, 1), ""};
  }
  for (std::size_t i = 0; i < Digits.size(); ++i) {
    rows[next++] = {static_cast<int16>('0' + i), Digits.substr(i, 1), ""};
  }
  for (const PunctuationRow& mark : Marks) rows[next++] = mark;
  return rows;
}

constexpr std::array<PunctuationRow, RowCount> Rows = MakeRows();

std::string Spoken(const PunctuationRow& row) {
  return std::string(row.Name.empty() ? row.Text : row.Name);
}

const PunctuationRow* RowOfKey(int16 KeyCode, int16 Shift) {
  if (Shift != 0 && Shift != 1) return nullptr;
  const int code = KeyCode + (Shift == 1 ? ShiftedKey : 0);
  for (const PunctuationRow& row : Rows) {
    if (row.KeyCode == code) return &row;
  }
  return nullptr;
}

}  // namespace

std::span<const PunctuationRow> PunctuationTable() {
  return Rows;
}

std::string SpokenCharacter(std::string_view character) {
  for (const PunctuationRow& row : Rows) {
    if (row.Text == character) return Spoken(row);
  }
  return std::string(character);
}

std::string TypedCharacter(int16 KeyCode, int16 Shift) {
  const PunctuationRow* row = RowOfKey(KeyCode, Shift);
  return row == nullptr ? "" : std::string(row->Text);
}

std::string SayCharacter(int16 KeyCode, int16 Shift) {
  const PunctuationRow* row = RowOfKey(KeyCode, Shift);
  return row == nullptr ? "" : Spoken(*row);
}

}  // namespace corvid
