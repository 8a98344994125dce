// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/keys.h"

#include <array>
#include <vector>

#include "core/number.h"
#include "core/text.h"

namespace corvid {

namespace {

struct ModifierRow {
  std::string_view Name;
  int16 Bit;
};

constexpr std::array<ModifierRow, 4> Modifiers{
    {{"SHIFT", ShiftBit}, {"CTRL", ControlBit}, {"CONTROL", ControlBit}, {"ALT", AltBit}}};

struct KeyRow {
  std::string_view Name;  // as scripts write it, compared in upper case
  int16 Code;
  bool Written;  // false for a second spelling of a code
};

constexpr std::array<KeyRow, 34> KeyNames{{
    {"ENTER", 13, true},     {"TAB", 9, true},       {"SPACE", 32, true},       {"BACKSPACE", 8, true},
    {"ESCAPE", 27, true},    {"CAPS", 20, true},     {"PAGEUP", 33, true},      {"PAGEDOWN", 34, true},
    {"END", 35, true},       {"HOME", 36, true},     {"LEFT", 37, true},        {"UP", 38, true},
    {"RIGHT", 39, true},     {"DOWN", 40, true},     {"INSERT", 45, true},      {"DELETE", 46, true},
    {"`", 192, true},        {"DASH", 89, true},     {"=", 187, true},          {",", 188, true},
    {".", 190, true},        {"/", 191, true},       {";", 186, true},          {"'", 222, true},
    {"[", 219, true},        {"]", 221, true},       {"\\", 220, true},         {"NUMLOCK", 144, true},
    {"NUMPAD/", 111, true},  {"NUMPAD*", 106, true}, {"NUMPADDASH", 109, true}, {"NUMPADPLUS", 107, true},
    {"NUMPAD+", 107, false}, {"NumPad.", 110, true},
}};
constexpr int16 NumPad0 = 96;
constexpr int16 NumPad9 = 105;
constexpr int16 FirstFunctionOffset = 111;  // "F" and a number n is the code n plus this

int16 ModifierBit(std::string_view part) {
  for (const ModifierRow& row : Modifiers)
    if (SameText(row.Name, part)) return row.Bit;
  return 0;
}

// "F1" to "F12"; anything else, a number above 12 included, is no function key.
int16 FunctionKeyCode(std::string_view part) {
  if (part.size() < 2 || part.size() > 3 || UpperChar(part.front()) != 'F') return -1;
  if (!IsDigit(part[1]) || !IsDigit(part.back())) return -1;
  const auto code = static_cast<int16>(ToInt16(Val(part.substr(1))) + FirstFunctionOffset);
  return code >= keycode::F1 && code <= keycode::F12 ? code : static_cast<int16>(-1);
}

int16 KeyCodeOf(std::string_view part) {
  if (part.size() == 1 && (IsLetter(part.front()) || IsDigit(part.front()))) return UpperChar(part.front());
  for (const KeyRow& row : KeyNames)
    if (SameText(row.Name, part)) return row.Code;
  if (part.size() == 7 && StartsWithText(part, "NUMPAD") && IsDigit(part.back()))
    return static_cast<int16>(NumPad0 + (part.back() - '0'));
  return FunctionKeyCode(part);
}

std::string NameOfCode(int16 code) {
  // Kept: "Y" and "DASH" share the code 89, and the letter wins.
  if ((code >= '0' && code <= '9') || (code >= 'A' && code <= 'Z')) return std::string(1, static_cast<char>(code));
  for (const KeyRow& row : KeyNames)
    if (row.Written && row.Code == code) return std::string(row.Name);
  if (code >= NumPad0 && code <= NumPad9) return "NUMPAD" + std::to_string(code - NumPad0);
  if (code >= keycode::F1 && code <= keycode::F12) return "F" + std::to_string(code - FirstFunctionOffset);
  return "";
}

}  // namespace

void ParseKeystroke(std::string_view instring, int16& Shift, int16& KeyCode) {
  Shift = 0;
  KeyCode = -1;
  int16 code = -1;
  for (const std::string& part : Split(instring, "-")) {
    if (code != -1) return;  // a part behind the key
    const int16 bit = ModifierBit(part);
    if (bit == 0) {
      code = KeyCodeOf(part);
      if (code == -1) return;
    } else if ((Shift & bit) != 0) {
      return;  // the same modifier twice
    } else {
      Shift = static_cast<int16>(Shift | bit);
    }
  }
  KeyCode = code;
}

std::string Keyname(int16 KeyCode, int16 Shift) {
  std::string name;
  if ((Shift & ShiftBit) != 0) name += "Shift-";
  if ((Shift & ControlBit) != 0) name += "Control-";
  if ((Shift & AltBit) != 0) name += "Alt-";
  return name + NameOfCode(KeyCode);
}

}  // namespace corvid
