// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/key_chars.h"

#include <array>

#include "core/keys.h"
#include "core/text.h"

namespace corvid {

namespace {

struct KeyRow {
  int16 KeyCode;
  char Plain;
  char Shifted;
};

constexpr std::array<KeyRow, 37> Keys{{
    {keycode::Enter, '\r', '\r'},
    {keycode::Backspace, '\b', '\b'},
    {keycode::Space, ' ', ' '},
    {'0', '0', ')'},
    {'1', '1', '!'},
    {'2', '2', '@'},
    {'3', '3', '#'},
    {'4', '4', '$'},
    {'5', '5', '%'},
    {'6', '6', '^'},
    {'7', '7', '&'},
    {'8', '8', '*'},
    {'9', '9', '('},
    {192, '`', '~'},
    {189, '-', '_'},
    {187, '=', '+'},
    {188, ',', '<'},
    {190, '.', '>'},
    {191, '/', '?'},
    {186, ';', ':'},
    {222, '\'', '"'},
    {219, '[', '{'},
    {221, ']', '}'},
    {220, '\\', '|'},
    {96, '0', '0'},
    {97, '1', '1'},
    {98, '2', '2'},
    {99, '3', '3'},
    {100, '4', '4'},
    {101, '5', '5'},
    {102, '6', '6'},
    {103, '7', '7'},
    {104, '8', '8'},
    {105, '9', '9'},
    {106, '*', '*'},
    {107, '+', '+'},
    {109, '-', '-'},
}};

}  // namespace

std::string CharacterOf(int16 KeyCode, int16 Shift) {
  if ((Shift & (ControlBit | AltBit)) != 0) return {};
  const bool shifted = (Shift & ShiftBit) != 0;
  if (KeyCode >= 'A' && KeyCode <= 'Z') return {static_cast<char>(shifted ? KeyCode : KeyCode + ('a' - 'A'))};
  for (const KeyRow& row : Keys)
    if (row.KeyCode == KeyCode) return {shifted ? row.Shifted : row.Plain};
  if (KeyCode == 110) return ".";
  if (KeyCode == 111) return "/";
  return {};
}

Keystroke KeyOf(std::string_view character) {
  if (character.size() != 1) return {CharacterKey, 0};
  const char c = character.front();
  if (c == '\n') return {keycode::Enter, 0};
  if (c == '\t') return {keycode::Tab, 0};
  if (c >= 'a' && c <= 'z') return {static_cast<int16>(c - ('a' - 'A')), 0};
  if (c >= 'A' && c <= 'Z') return {static_cast<int16>(c), ShiftBit};
  for (const KeyRow& row : Keys) {
    if (row.Plain == c) return {row.KeyCode, 0};
    if (row.Shifted == c) return {row.KeyCode, ShiftBit};
  }
  return {CharacterKey, 0};
}

int16 LoneKey(std::string_view name) {
  if (SameText(name, "Alt")) return keycode::Alt;
  if (SameText(name, "Control") || SameText(name, "Ctrl")) return keycode::Control;
  if (SameText(name, "Shift")) return keycode::Shift;
  if (SameText(name, "Applications")) return keycode::Applications;
  return 0;
}

int16 ModifierBit(int16 KeyCode) {
  switch (KeyCode) {
    case keycode::Shift:
      return ShiftBit;
    case keycode::Control:
      return ControlBit;
    case keycode::Alt:
      return AltBit;
    default:
      return 0;
  }
}

}  // namespace corvid
