// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/option_rows.h"

#include <algorithm>
#include <array>

#include "core/number.h"
#include "core/text.h"
#include "files/script_value.h"

namespace corvid {

namespace {

using enum OptionType;
using State = OptionsState;
using Effect = OptionEffect;
using Form = SaveForm;

constexpr std::string_view TruthMessage = "Parameter 2 must be either of the keywords True or False";
constexpr std::string_view ColourMessage =
    "Valid colour names are: Standard, Black, White, Blue, Red, green, yellow, cyan, magenta";
constexpr std::string_view ArtMessage = "Remove Ascii Art must be 0, 1, or 2";
constexpr std::string_view LineEndMessage = "A line end can not be used as this character";
constexpr int32 PlainWindowSize = 30;  // what a viewport holds while colour display is off

constexpr OptionRow TruthRow(std::string_view keyword, bool State::*field, std::string_view standard, int16 order,
                             std::string_view words, Form form = Form::Plain, Effect effect = Effect::None) {
  return {keyword, OptionType::Truth, field, standard, TruthMessage, 0, 0, "", effect, order, words, form};
}
constexpr OptionRow CharacterRow(std::string_view keyword, char State::*field, std::string_view standard, int16 order,
                                 std::string_view words, Form form = Form::EscapedBraces) {
  return {keyword, Character, field, standard, LineEndMessage, 0, 0, "", Effect::None, order, words, form};
}
constexpr OptionRow TextRow(std::string_view keyword, std::string State::*field, std::string_view standard, int16 order,
                            std::string_view words, Form form, OptionType type = Text) {
  return {keyword, type, field, standard, "", 0, 0, "", Effect::None, order, words, form};
}
constexpr OptionRow ColourRow(std::string_view keyword, std::string State::*field, int16 order, std::string_view words,
                              Effect effect) {
  return {keyword, Colour, field, "STANDARD", ColourMessage, 0, 0, "", effect, order, words, Form::Plain};
}
constexpr OptionRow FolderRow(std::string_view keyword, std::string State::*field, std::string_view message,
                              Effect effect) {
  return {keyword, Folder, field, "", message, 0, 0, "", effect, 0, "", Form::None};
}
constexpr OptionRow ArtRow(std::string_view keyword, int16 order, std::string_view words, Form form) {
  return {keyword, ArtLevel, &State::RemoveAsciiArt, "1", ArtMessage, 0, 0, "", Effect::None, order, words, form};
}

// clang-format off
constexpr std::array<OptionRow, 38> OptionRows{{
  TextRow("LINETERMINATOR", &State::LineTerminator, "\r\n", 9, "Configure LineTerminator  ", Form::Terminator),
  TextRow("COMMANDSEPARATOR", &State::CommandSeparator, ";", 3, "Configure CommandSeparator ", Form::EscapedBraces),
  TextRow("SWITCHSESSION", &State::SwitchSession, ":", 4, "Configure SwitchSession ", Form::EscapedBraces),
  TruthRow("COLOURDISPLAY", &State::ColourDisplay, "False", 24, "Configure ColourDisplay ", Form::Plain,
        Effect::SelectOutputWindow),
  TruthRow("COLOURTEXTTAGS", &State::ColourTextTags, "False", 25, "Configure ColourTextTags "),
  ColourRow("BACKGROUNDCOLOUR", &State::BackgroundColour, 26, "Configure BackgroundColour ", Effect::BackgroundColour),
  ColourRow("FOREGROUNDCOLOUR", &State::ForegroundColour, 27, "Configure Foregroundcolour ", Effect::ForegroundColour),
  TruthRow("SLOWWALK", &State::SlowWalk, "False", 11, "Configure SlowWalk "),
  TruthRow("SPEAKINDENT", &State::SpeakIndent, "True", 13, "Configure SpeakIndent "),
  TruthRow("EXPLICIT", &State::Explicit, "False", 15, "Configure Explicit "),
  TruthRow("AUTOSAVE", &State::AutoSave, "True", 23, "Configure AutoSave "),
  TruthRow("EXPANDCOMMANDLINEVARS", &State::ExpandCommandLineVars, "False", 14, "Configure ExpandCommandLineVars "),
  TruthRow("SCRIPTREADONLY", &State::ScriptReadOnly, "False", 16, "Configure ScriptReadOnly ", Form::PrintedNumber),
  TruthRow("AUTOLOGIN", &State::AutoLogin, "True", 17, "Configure AutoLogin "),
  TruthRow("OUTPUTLOG", &State::OutputLog, "True", 18, "Configure OutputLog  "),
  {"LOGRETENTIONDAYS", Number, &State::LogRetentionDays, "30", "LogRetentionDays must be numeric", 0, 0, "",
   Effect::None, 19, "Configure LogRetentionDays ", Form::Plain},
  // The upper limit is 90, although the message says 89.
  {"OUTPUTWINDOWPERCENT", Number, &State::OutputWindowPercent, "90", "OutputHeightPercent must be numeric", 10, 90,
   "OutputHeightPercent must be greater than 9 and less than 89", Effect::ResizeForm, 10,
   "Configure OutputWindowPercent ", Form::Plain},
  {"OUTPUTWINDOWSIZE", Number, &State::OutputWindowSize, "32", "OutputWindowSize must be numeric", 5, 2000000,
   "OutputWindowSize must be greater than 4 and less than 2000000", Effect::None, 31, "Configure OutputWindowSize  ",
   Form::Plain},
  {"MARGINBELL", Number, &State::MarginBell, "74", "MarginBell must be numeric", 0, 0, "", Effect::None, 20,
   "Configure MarginBell ", Form::Plain},
  TextRow("EDITOR", &State::Editor, "Notepad.exe ", 22, "Configure Editor ", Form::Braces),
  FolderRow("USERPATH", &State::UserDataFolder, "\" does not exist. User Data folder remains \"", Effect::UserFolder),
  FolderRow("SOUNDPATH", &State::SoundsFolder, "\" does not exist. Sound path folder remains \"",
           Effect::SoundsFolder),
  FolderRow("LOGSPATH", &State::LogsFolder, "\" does not exist. Log file path folder remains \"", Effect::LogsFolder),
  TruthRow("COMPRESSOUTPUT", &State::CompressOutput, "True", 28, "Configure CompressOutput "),
  TruthRow("PLAYSOUNDSOUTSIDECORVID", &State::PlaySoundsOutsideCorvid, "True", 12, "Configure PlaySoundsOutsideCorvid "),
  ArtRow("REMOVEASCIIGRAPHICS", 0, "", Form::None),
  ArtRow("REMOVEASCIIART", 29, "Configure RemoveAsciiArt ", Form::PrintedNumber),
  TruthRow("DISPLAYCOMMANDSINOUTPUT", &State::DisplayCommandsInOutput, "True", 30, "Configure DisplayCommandsInOutput "),
  TruthRow("LOGBYSESSION", &State::LogBySession, "True", 21, "Configure LogBySession "),
  TruthRow("ECHOMOVEBYWORD", &State::EchoMoveByWord, "True", 0, "", Form::None),
  TruthRow("ENTRYBYLINE", &State::EntryByLine, "True", 32, "Configure EntryByLine ", Form::PrintedNumber),
  TruthRow("BATCHSPEECH", &State::BatchSpeech, "False", 33, "Configure BatchSpeech ", Form::PrintedNumber),
  CharacterRow("COMMANDCHAR", &State::CommandChar, "#", 1, "Configure CommandChar "),
  CharacterRow("PASSTHRUCHAR", &State::PassThruChar, ">", 5, "Configure PassThruChar "),
  CharacterRow("COMMENTCHAR", &State::CommentChar, ";", 6, "Configure CommentChar "),
  CharacterRow("VARIABLECHAR", &State::VariableChar, "@", 7, "Configure VariableChar "),
  TextRow("ENDOFLINECOMMENTCHAR", &State::EndOfLineCommentChar, "//", 8, "Configure EndOfLineCommentChar ",
         Form::EscapedBraces, CharacterPair),
  CharacterRow("ESCAPECHAR", &State::EscapeChar, "~", 2, "Configure EscapeChar ", Form::EscapeTwice),
}};
// clang-format on

bool IsTrueWord(std::string_view word) {
  return word == "TRUE" || word == "ON" || word == "YES" || word == "-1";
}
bool IsFalseWord(std::string_view word) {
  return word == "FALSE" || word == "OFF" || word == "NO" || word == "0";
}

std::string TestTruth(const OptionRow& row, const std::string& text, OptionValue& value) {
  const std::string word = Upper(text);
  if (!IsTrueWord(word) && !IsFalseWord(word)) return std::string(row.BadType);
  value.Number = IsTrueWord(word) ? -1 : 0;
  return "";
}

std::string TestNumber(const OptionRow& row, const std::string& text, OptionValue& value) {
  if (!IsNumeric(text)) return std::string(row.BadType);
  const double number = ToNumber(text);
  if (row.Minimum != row.Maximum && (number < row.Minimum || number > row.Maximum)) return std::string(row.OutOfRange);
  const bool narrow = std::holds_alternative<int16 State::*>(row.Field);
  value.Number = narrow ? ToInt16(number) : ToInt32(number);
  return "";
}

// Kept: any piece of "012" passes, so "12" is taken too.
std::string TestArt(const OptionRow& row, const std::string& text, OptionValue& value) {
  std::string level = Trim(text);
  if (Upper(level) == "TRUE") level = "1";
  if (Upper(level) == "FALSE") level = "0";
  if (std::string_view("012").find(level) == std::string_view::npos) return std::string(row.BadType);
  value.Number = ToInt16(Val(level));
  return "";
}

// No script with a line end for one of its characters could be read again: lines are told apart first.
std::string TestCharacter(const OptionRow& row, const std::string& text, OptionValue& value) {
  if (text.starts_with('\r') || text.starts_with('\n')) return std::string(row.BadType);
  value.Text = text.empty() ? " " : text.substr(0, 1);
  return "";
}

void SetField(const OptionRow& row, const OptionValue& value, OptionsState& options) {
  if (const auto* text = std::get_if<std::string State::*>(&row.Field)) {
    options.*(*text) = value.Text;
  } else if (const auto* code = std::get_if<char State::*>(&row.Field)) {
    options.*(*code) = value.Text.empty() ? ' ' : value.Text[0];
  } else if (const auto* truth = std::get_if<bool State::*>(&row.Field)) {
    options.*(*truth) = value.Number != 0;
  } else if (const auto* small = std::get_if<int16 State::*>(&row.Field)) {
    options.*(*small) = ToInt16(value.Number);
  } else if (const auto* large = std::get_if<int32 State::*>(&row.Field)) {
    options.*(*large) = value.Number;
  }
}

// How the usual line ends stand in the saved file.
constexpr std::array<std::pair<std::string_view, std::string_view>, 4> TerminatorWords{
    {{"%CR", "\r"}, {"%CRLF", "\r\n"}, {"%LF", "\n"}, {"%CHAR()", ""}}};

std::string TerminatorText(std::string_view terminator) {
  std::string result = " ";
  for (const auto& [words, ends] : TerminatorWords) {
    if (terminator == ends) return result + Lower(words);
  }
  for (const char c : terminator) result += "%char(" + std::to_string(static_cast<unsigned char>(c)) + ")";
  return result;
}

// The first character is always escaped; nearly always it is the only one that needs it. What follows is read while
// some signs of the language are still the usual ones: a text that these would change has every character but line ends
// escaped.
std::string EscapedText(const std::string& text, const OptionsState& options) {
  const std::string rest = text.empty() ? "" : text.substr(1);
  OptionsState usual;
  OptionTable::SetDefaults(usual);
  usual.EscapeChar = options.EscapeChar;
  if (ScriptValue(rest, usual) == rest) return options.EscapeChar + text.substr(0, 1) + ScriptValue(rest, options);
  std::string escaped;
  for (const char c : text) {
    if (c != '\r' && c != '\n') escaped += options.EscapeChar;
    escaped += c;
  }
  return escaped;
}

// A letter or a digit may be the escape or the variable character. In the words of a line such a letter stands in its
// other case, which they are read in as well; a digit or a minus takes an escape.
std::string Guarded(std::string_view words, const OptionsState& options) {
  std::string result;
  for (const char c : words) {
    const bool sign = c == options.EscapeChar || c == options.VariableChar;
    if (sign && (IsDigit(c) || c == '-')) result += options.EscapeChar;
    const char other = UpperChar(c) == c ? Lower(std::string(1, c))[0] : UpperChar(c);
    result += sign ? other : c;
  }
  return result;
}

std::string PlainText(const OptionRow& row, const OptionValue& value) {
  if (row.Type == OptionType::Truth) return value.Number != 0 ? "True" : "False";
  if (row.Type == Number || row.Type == ArtLevel) return NumberText(value.Number);
  return value.Text;
}

}  // namespace

std::span<const OptionRow> OptionTable::Rows() {
  return OptionRows;
}

const OptionRow* OptionTable::Find(std::string_view keyword) {
  const auto row = std::ranges::find_if(OptionRows, [&](const OptionRow& r) { return SameText(r.Keyword, keyword); });
  return row == OptionRows.end() ? nullptr : &*row;
}

std::vector<const OptionRow*> OptionTable::SavedRows() {
  std::vector<const OptionRow*> saved;
  for (const OptionRow& row : OptionRows) {
    if (row.SaveOrder > 0) saved.push_back(&row);
  }
  std::ranges::sort(saved, {}, [](const OptionRow* row) { return row->SaveOrder; });
  return saved;
}

std::string OptionTable::Test(const OptionRow& row, const std::string& text, OptionValue& value) {
  switch (row.Type) {
    case OptionType::Truth:
      return TestTruth(row, text, value);
    case Number:
      return TestNumber(row, text, value);
    case ArtLevel:
      return TestArt(row, text, value);
    case Colour:
      value.Text = Upper(row.Effect == Effect::ForegroundColour ? Trim(text) : text);
      return "";
    case Character:
      return TestCharacter(row, text, value);
    case CharacterPair:
      value.Text = (text + "  ").substr(0, 2);
      return "";
    case Text:
    case Folder:
      value.Text = text;
      return "";
  }
  return "";
}

void OptionTable::Store(const OptionRow& row, const OptionValue& value, OptionsState& options) {
  SetField(row, value, options);
  if (row.Keyword == "OUTPUTWINDOWSIZE" && !options.ColourDisplay) options.OutputWindowSize = PlainWindowSize;
}

OptionValue OptionTable::Read(const OptionRow& row, const OptionsState& options) {
  OptionValue value;
  if (const auto* text = std::get_if<std::string State::*>(&row.Field)) {
    value.Text = options.*(*text);
  } else if (const auto* code = std::get_if<char State::*>(&row.Field)) {
    value.Text = std::string(1, options.*(*code));
  } else if (const auto* truth = std::get_if<bool State::*>(&row.Field)) {
    value.Number = options.*(*truth) ? -1 : 0;
  } else if (const auto* small = std::get_if<int16 State::*>(&row.Field)) {
    value.Number = options.*(*small);
  } else if (const auto* large = std::get_if<int32 State::*>(&row.Field)) {
    value.Number = options.*(*large);
  }
  return value;
}

bool OptionTable::ReadRawTerminator(std::string_view raw, std::string& terminator) {
  constexpr std::string_view start = "%CHAR(";
  std::string rest = Upper(TrimView(raw));
  for (const auto& [words, ends] : TerminatorWords) {
    if (rest != words) continue;
    terminator = ends;
    return true;
  }
  std::string codes;
  while (rest.starts_with(start)) {
    const std::size_t end = rest.find(')');
    if (end == std::string::npos) return false;
    const std::string digits = rest.substr(start.size(), end - start.size());
    if (digits.empty() || digits.size() > 3 || !std::ranges::all_of(digits, IsDigit)) return false;
    const int code = std::stoi(digits);
    if (code > 255) return false;
    codes += static_cast<char>(code);
    rest.erase(0, end + 1);
  }
  if (codes.empty() || !rest.empty()) return false;
  terminator = codes;
  return true;
}

std::string OptionTable::SavedLine(const OptionRow& row, const OptionsState& options) {
  const OptionValue value = Read(row, options);
  const std::string escape(1, options.EscapeChar);
  std::string line = Guarded(row.SaveWords, options);
  switch (row.Form) {
    case Form::EscapedBraces:
      return line + "{" + EscapedText(value.Text, options) + "}";
    case Form::EscapeTwice:
      return line + "{" + escape + escape + "}";
    case Form::Terminator:
      return line + TerminatorText(value.Text);
    case Form::PrintedNumber:
      return line + Guarded(PrintedNumber(value.Number), options);
    case Form::Braces:
      return line + "{" + ScriptValue(value.Text, options) + "}";
    case Form::Plain:
      return line + Guarded(PlainText(row, value), options);
    case Form::None:
      break;
  }
  return "";
}

void OptionTable::SetDefaults(OptionsState& options) {
  for (const OptionRow& row : OptionRows) {
    if (row.Type == Folder) continue;
    OptionValue value;
    Test(row, std::string(row.Default), value);
    SetField(row, value, options);
  }
}

}  // namespace corvid
