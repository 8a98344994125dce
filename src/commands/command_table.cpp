// SPDX-License-Identifier: GPL-3.0-or-later
#include "commands/command_table.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>

#include "commands/handlers.h"
#include "core/pattern.h"
#include "core/text.h"

namespace corvid {

namespace {

constexpr std::string_view AB = "AB", CD = "CD", EF = "EF", GHI = "GHI", JO = "JKLMNO", PQR = "PQR", ST = "ST", U = "U",
                           VZ = "VWXYZ0123456789";

constexpr bool OnlyMinOrMax = false;
constexpr bool WholeWord = true;

// The order of the rows is what abbreviations mean: a row that moves can change what a script does.
constexpr std::array commandRows{
    CommandRow{AB, "ABORT", 0, 1, handler::Abort},
    CommandRow{AB, "ADDITEM", 2, 3, handler::AddItem},
    CommandRow{AB, "ALARM", 2, 3, handler::Alarm},
    CommandRow{AB, "ALIAS", 2, 3, handler::Alias},
    CommandRow{AB, "AUTOMENU", 1, 1, handler::AutoMenu},
    CommandRow{AB, "BELL", 0, 0, handler::Bell},
    CommandRow{AB, "BREAK", 0, 0, handler::Break},

    CommandRow{CD, "CHARACTER", 0, 1, handler::Character},
    CommandRow{CD, "CLASS", 0, 2, handler::Class},
    CommandRow{CD, "CLIPBOARD", 1, 1, handler::Clipboard},
    CommandRow{CD, "CLOSE", 1, 1, handler::CloseFile},
    CommandRow{CD, "CONFIGURE", 2, 2, handler::Configure},
    CommandRow{CD, "CONNECT", 0, 1, handler::Connect},
    CommandRow{CD, "DELCLASS", 1, 1, handler::DelClass},
    CommandRow{CD, "DELFILE", 1, 2, handler::DelFile},
    CommandRow{CD, "DIRECTION", 1, 2, handler::Direction},

    CommandRow{EF, "EDIT", 1, 1, handler::Edit},
    CommandRow{EF, "ENDRECORD", 1, 2, handler::EndRecord},
    CommandRow{EF, "ERASE", 0, AnyCount, handler::Erase},  // it answers a parameter with words of its own: none
    CommandRow{EF, "EXECUTE", 1, 2, handler::Execute},
    CommandRow{EF, "FILE", 2, 3, handler::File},
    CommandRow{EF, "FIND", 1, 2, handler::Find},
    CommandRow{EF, "FORALL", 2, 2, handler::ForAll},

    CommandRow{GHI, "GAGLINE", 0, 2, handler::GagLine},
    CommandRow{GHI, "GAGON", 0, 1, handler::GagOn},
    CommandRow{GHI, "IF", 0, AnyCount, handler::If},  // Kept: any count passes; scripts rely on it.
    CommandRow{GHI, "IGNORE", 2, 2, handler::Ignore},

    CommandRow{JO, "KEY", 2, 3, handler::Key},
    CommandRow{JO, "KILLALL", 0, 1, handler::KillAll, true, WholeWord},
    CommandRow{JO, "LOAD", 1, 2, handler::Load},
    CommandRow{JO, "LOCAL", 0, 1, handler::Local},
    CommandRow{JO, "MATH", 2, 2, handler::Math},
    CommandRow{JO, "MUD", 6, 6, handler::Mud},
    CommandRow{JO, "OFFLINE", 1, 2, handler::Offline},
    CommandRow{JO, "OK", 0, 0, handler::Ok},

    CommandRow{PQR, "PASSTHRU", 1, 1, handler::PassThru},
    CommandRow{PQR, "PAUSE", 0, 0, handler::Pause},
    CommandRow{PQR, "PC", 2, 3, handler::PlayControl},
    CommandRow{PQR, "PICK", 1, 1, handler::Pick},
    CommandRow{PQR, "PLAYLOOP", 1, 2, handler::Play},
    CommandRow{PQR, "PROMPT", 2, 2, handler::Prompt},
    CommandRow{PQR, "QUIET", 1, 1, handler::Quiet},
    CommandRow{PQR, "QUIT", 0, 0, handler::Quit},
    CommandRow{PQR, "READ", 2, 3, handler::Read},
    CommandRow{PQR, "RECORD", 0, 0, handler::Record},
    CommandRow{PQR, "RELOAD", 0, 1, handler::Reload},
    CommandRow{PQR, "RESET", 0, 1, handler::Reset},

    CommandRow{ST, "SAVE", 0, 2, handler::Save},
    CommandRow{ST, "SAY", 1, 2, handler::Say},
    CommandRow{ST, "SEND", 1, 3, handler::Send},
    CommandRow{ST, "SETSPEECH", 2, 5, handler::SetSpeech, OnlyMinOrMax},
    CommandRow{ST, "STOP", 0, 0, handler::Stop},
    CommandRow{ST, "SUBSTITUTE", 1, 1, handler::Substitute},
    CommandRow{ST, "SYSKEY", 0, 1, handler::SysKey},
    CommandRow{ST, "TAB", 0, 1, handler::Tab},
    CommandRow{ST, "TRIGGER", 2, 4, handler::Trigger},

    CommandRow{U, "UNALARM", 1, 1, handler::UnAlarm},
    CommandRow{U, "UNALIAS", 1, 2, handler::UnAlias},
    CommandRow{U, "UNCLASS", 1, 1, handler::UnClass},
    CommandRow{U, "UNGAGLINE", 0, 0, handler::UnGagLine},
    CommandRow{U, "UNGAGON", 0, 0, handler::UnGagOn},
    CommandRow{U, "UNKEY", 1, 2, handler::UnKey},
    CommandRow{U, "UNLOAD", 1, 1, handler::Unload},
    CommandRow{U, "UNPAUSE", 0, 0, handler::UnPause},
    CommandRow{U, "UNTAB", 0, 1, handler::UnTab},
    CommandRow{U, "UNTIL", 2, 2, handler::Until},
    CommandRow{U, "UNTRIGGER", 1, 2, handler::UnTrigger},
    CommandRow{U, "UNVARIABLE", 1, 1, handler::UnVariable},

    CommandRow{VZ, "VARIABLE", 0, 3, handler::Variable},
    CommandRow{VZ, "WHILE", 2, 2, handler::While},
    CommandRow{VZ, "WAIT", 1, 2, handler::Wait},
    CommandRow{VZ, "WINDOW", 1, 1, handler::Window},
    CommandRow{VZ, "WRITE", 2, 3, handler::Write},
    CommandRow{VZ, "", 0, 1, handler::Repeat},
};

// Groups and rows stand in the order of the alphabet, so that a command added at the wrong place is seen at once. One
// row is out of it on purpose: "#W" has always meant WHILE.
constexpr bool InOrder() {
  for (std::size_t i = 0; i < commandRows.size(); ++i) {
    const CommandRow& row = commandRows[i];
    const bool number = row.Keyword.empty();
    if (number) return i + 1 == commandRows.size() && row.Letters == VZ;
    if (row.Letters.find(row.Keyword.front()) == std::string_view::npos || row.Min > row.Max) return false;
    if (i == 0) continue;
    const CommandRow& before = commandRows[i - 1];
    const bool exception = before.Keyword == "WHILE" && row.Keyword == "WAIT";
    if (before.Keyword > row.Keyword && !exception) return false;
    if (before.Letters != row.Letters && before.Letters.front() >= row.Letters.front()) return false;
  }
  return false;
}
static_assert(InOrder(), "the rows of the command table are out of order");

constexpr std::size_t Codes = 128;

struct GroupRange {
  std::size_t First = 0, End = 0;
};

// First and last row of each letter's group: only the group of the typed letter is tried.
constexpr std::array<GroupRange, Codes> MakeGroups() {
  std::array<GroupRange, Codes> groups{};
  for (std::size_t i = 0; i < commandRows.size(); ++i) {
    for (const char letter : commandRows[i].Letters) {
      GroupRange& group = groups[static_cast<unsigned char>(letter)];
      if (group.End == 0) group.First = i;
      group.End = i + 1;
    }
  }
  return groups;
}
constexpr std::array<GroupRange, Codes> groupRanges = MakeGroups();

bool Fits(const CommandRow& row, std::string_view word, bool plain) {
  if (row.Keyword.empty()) return false;
  if (row.WholeWord) return row.Keyword == word;
  if (plain) return row.Keyword.starts_with(word);
  return Like(row.Keyword, std::string(word) + "*");
}

}  // namespace

std::span<const CommandRow> CommandTable::Rows() {
  return commandRows;
}

const CommandRow* CommandTable::Find(std::string_view word) {
  if (word.empty()) return nullptr;
  const auto letter = static_cast<unsigned char>(word.front());
  if (letter >= Codes) return nullptr;
  const GroupRange group = groupRanges[letter];
  // Most words hold no wildcard; a comparison of the beginning is all they need.
  const bool plain = word.find_first_of("?*#[") == std::string_view::npos;
  for (std::size_t i = group.First; i < group.End; ++i)
    if (Fits(commandRows[i], word, plain)) return &commandRows[i];
  return nullptr;
}

const CommandRow& CommandTable::NumberForm() {
  return commandRows.back();
}

bool CommandTable::IsNumberGroup(char letter) {
  return VZ.find(letter) != std::string_view::npos;
}

bool CommandTable::CountFits(const CommandRow& row, int32 count) {
  if (!row.Between) return count == row.Min || count == row.Max;
  return count >= row.Min && count <= row.Max;
}

}  // namespace corvid
