// SPDX-License-Identifier: GPL-3.0-or-later
// Every option of the program, one row each: the CONFIGURE command, the saved file and the options dialog all read the
// same row, so that an option is added in one place.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "core/types.h"
#include "script/options_state.h"

namespace corvid {

enum class OptionType {
  Text,
  Truth,         // true/false words, and -1 and 0, which saved files hold
  Colour,        // one of eight names, or Standard
  Number,        // numeric, within Minimum and Maximum where these differ
  Folder,        // an existing folder; never saved
  ArtLevel,      // 0, 1 or 2
  Character,     // the first character of the value, no line end; a blank for an empty value
  CharacterPair  // the first two, padded with a blank
};

// What the command does besides storing the value.
enum class OptionEffect {
  None,
  SelectOutputWindow,  // before the value is stored, when it changes
  BackgroundColour,    // recolour every window and the display table
  ForegroundColour,    // the same
  ResizeForm,          // after the value is stored
  UserFolder,          // stores the folder and its system variable
  SoundsFolder,        // the same
  LogsFolder           // the same
};

enum class SaveForm {
  None,           // not in the saved file
  EscapedBraces,  // {, escape character, value, }
  EscapeTwice,    // {, the escape character twice, }
  Terminator,     // " %cr", " %crlf", " %lf" or " %char(code)"
  Plain,          // the value; true/false as "True" or "False"
  PrintedNumber,  // blank or minus in front, blank behind; true is -1
  Braces          // {, value, }
};

struct OptionRow {
  std::string_view Keyword;  // upper case; compared in full
  OptionType Type;
  std::variant<std::monostate, std::string OptionsState::*, char OptionsState::*, bool OptionsState::*,
               int16 OptionsState::*, int32 OptionsState::*>
      Field;                 // monostate: none of its own
  std::string_view Default;  // as a stored value; truths are "True" and "False"
  std::string_view BadType;  // message for a value of the wrong kind; folders: the text behind the quoted value
  int32 Minimum = 0;         // Minimum equal to Maximum: no range
  int32 Maximum = 0;
  std::string_view OutOfRange;  // message for a value outside the range
  OptionEffect Effect = OptionEffect::None;
  int16 SaveOrder = 0;         // line of the saved file, from 1; 0: not saved
  std::string_view SaveWords;  // what stands between the command character and the value
  SaveForm Form = SaveForm::None;
};

// A value that has passed its row's test.
struct OptionValue {
  std::string Text;  // for texts, characters, colours (upper case) and folders
  int32 Number = 0;  // for truths (-1 or 0), numbers and art levels
};

class OptionTable {
 public:
  // All rows, in the order in which CONFIGURE tests the keywords.
  static std::span<const OptionRow> Rows();
  // The row of a keyword in any case and in full; nullptr for none.
  static const OptionRow* Find(std::string_view keyword);
  // The rows that are saved, in the order of the saved file.
  static std::vector<const OptionRow*> SavedRows();

  // Tests an expanded value. Empty result: value is filled; else it is the error text and value is as it was.
  // A number too large for its field is a Fault of kind Overflow. Colours are only upper-cased (and trimmed for the
  // foreground) and folders taken as they are: whoever carries out the effect tests those.
  static std::string Test(const OptionRow& row, const std::string& text, OptionValue& value);
  // Stores a tested value. OutputWindowSize stores 30 while ColourDisplay is off.
  static void Store(const OptionRow& row, const OptionValue& value, OptionsState& options);
  static OptionValue Read(const OptionRow& row, const OptionsState& options);

  // "%crlf", "%cr", "%lf" or "%char(10)" as the saved file writes a line terminator, tested before expansion, in any
  // case; several "%char" may follow each other and "%char()" is an empty one. False when raw is something else;
  // terminator is then untouched.
  static bool ReadRawTerminator(std::string_view raw, std::string& terminator);

  // One line of the saved file, without the command character and the line end.
  static std::string SavedLine(const OptionRow& row, const OptionsState& options);
  static void SetDefaults(OptionsState& options);
};

}  // namespace corvid
