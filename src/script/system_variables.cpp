// SPDX-License-Identifier: GPL-3.0-or-later
// What the program itself tells scripts: system variables and colour names.
#include <array>
#include <utility>

#include "core/version.h"
#include "script/symbols.h"

namespace corvid {

namespace {

constexpr std::array<std::string_view, sysvar::Last + 1> Names{
    "",       "INSTALLFOLDER", "COPYLINE",  "FOUNDLINE",  "REPEATNUM",    "CRLF",      "CR",         "SOCKET",
    "CHAR",   "MUDNAME",       "Reference", "PLAYHANDLE", "MP3LOOP",      "PASSWORD",  "CONNECTED",  "I",
    "VOLUME", "HOMEFOLDER",    "CLIPBOARD", "VERSION",    "SOUNDSFOLDER", "MUDFOLDER", "LOGSFOLDER", "LF"};

constexpr std::array<std::string_view, 8> EightColours{"BLACK", "RED",     "GREEN", "YELLOW",
                                                       "BLUE",  "MAGENTA", "CYAN",  "WHITE"};
constexpr std::size_t FirstColour = 30;
constexpr std::size_t FirstBackground = 40;
constexpr std::array<std::pair<std::size_t, int32>, 6> SixColours{
    {{31, 0xFF}, {32, 0xFF00}, {33, 0xFFFF}, {34, 0xFF0000}, {35, 0xFF00FF}, {36, 0xFFFF00}}};

void LoadColours(ScriptState& state) {
  state.ColourNames.fill("");
  state.ColourValues.fill(0);
  state.BaseColours.fill(0);
  state.ColourNames[0] = "NORMAL";
  state.ColourNames[1] = "BRIGHT";
  for (std::size_t i = 0; i < EightColours.size(); ++i) {
    state.ColourNames[FirstColour + i] = EightColours[i];
    state.ColourNames[FirstBackground + i] = std::string(EightColours[i]) + " BACKGROUND";
  }
  state.ColourNames[39] = "DEFAULT";
  state.ColourNames[49] = "DEFAULT BACKGROUND";
  for (const auto& [number, colour] : SixColours) {
    state.ColourValues[number] = colour;
    state.BaseColours[number] = colour;
  }
  state.ColourValues[0] = -1;
  state.ColourValues[2] = -2;  // Kept: one slot behind the name "BRIGHT".
  state.BaseColours[37] = 0xFFFFFF;
}

}  // namespace

void Symbols::LoadSystemVariables() {
  for (std::size_t i = 0; i < Names.size(); ++i) state_.SystemNames[i] = Names[i];
  state_.SystemValues[sysvar::CRLF] = "\r\n";
  state_.SystemValues[sysvar::CR] = "\r";
  state_.SystemValues[sysvar::LF] = "\n";
  state_.SystemValues[sysvar::MP3LOOP] = "0";
  state_.SystemValues[sysvar::VOLUME] = "100";
  state_.SystemValues[sysvar::VERSION] = VersionDigits();
  LoadColours(state_);
}

}  // namespace corvid
