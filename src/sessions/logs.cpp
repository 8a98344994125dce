// SPDX-License-Identifier: GPL-3.0-or-later
#include "sessions/logs.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <optional>

#include "core/fault.h"
#include "core/text.h"

namespace corvid {

namespace {

std::string TwoDigits(int number) {
  return (number < 10 ? "0" : "") + std::to_string(number);
}

std::string DateText(const DateTime& at) {
  char text[16];
  std::snprintf(text, sizeof text, "%04d", at.Year);
  return std::string(text) + "-" + TwoDigits(at.Month) + "-" + TwoDigits(at.Day);
}

std::optional<int> ReadNumber(std::string_view text) {
  int number = 0;
  for (const char c : text) {
    if (!IsDigit(c)) return std::nullopt;
    number = number * 10 + (c - '0');
  }
  return number;
}

std::chrono::sys_days DayOf(int year, int month, int day) {
  return std::chrono::sys_days(std::chrono::year_month_day(std::chrono::year(year),
                                                           std::chrono::month(static_cast<unsigned>(month)),
                                                           std::chrono::day(static_cast<unsigned>(day))));
}

// The date that starts at the first "20" of a name. Kept: a reference that holds "20" itself hides the date.
std::optional<std::chrono::sys_days> DateInName(std::string_view name) {
  const std::size_t start = name.find("20");
  if (start == std::string_view::npos) return std::nullopt;
  const std::string_view date = name.substr(start, 10);
  if (date.size() < 10 || date[4] != '-' || date[7] != '-') return std::nullopt;
  const std::optional<int> year = ReadNumber(date.substr(0, 4));
  const std::optional<int> month = ReadNumber(date.substr(5, 2));
  const std::optional<int> day = ReadNumber(date.substr(8, 2));
  if (!year || !month || !day) return std::nullopt;
  const std::chrono::year_month_day parts(std::chrono::year(*year), std::chrono::month(static_cast<unsigned>(*month)),
                                          std::chrono::day(static_cast<unsigned>(*day)));
  if (!parts.ok()) return std::nullopt;
  return std::chrono::sys_days(parts);
}

}  // namespace

Logs::Logs(OptionsState& options, SessionState& sessions, Platform& platform)
    : options_(options), sessions_(sessions), platform_(platform) {}

Logs::~Logs() = default;

std::string Logs::LogName(int16 Index) const {
  const DateTime now = platform_.clock.Now();
  std::string name = FileStem(sessions_.SessionRef[Index]) + " " + DateText(now);
  // Kept: hour and second, unpadded. Players and their tools know the logs by these names.
  if (options_.LogBySession) name += " " + std::to_string(now.Hour) + "." + std::to_string(now.Second);
  return name + ".txt";
}

void Logs::OpenLog(int16 Index) {
  CloseLog(Index);
  if (!options_.OutputLog) return;
  if (LogFile.UBound() < Index) {
    LogFile.Resize(Index);
    openName_.Resize(Index);
  }
  const std::string name = LogName(Index);
  LogFile[Index] = platform_.files.OpenAppend(options_.LogsFolder + name, Privacy::Private);
  openName_[Index] = name;
  sessions_.LogOpen[Index] = 1;
}

void Logs::CloseLog(int16 Index) {
  sessions_.LogOpen[Index] = 0;
  if (LogFile.UBound() < Index || !LogFile[Index]) return;
  const std::unique_ptr<AppendFile> file = std::move(LogFile[Index]);
  file->Flush();
}

void Logs::CloseAll() {
  for (int32 slot = 0; slot <= LogFile.UBound(); ++slot) {
    try {
      CloseLog(static_cast<int16>(slot));
    } catch (const Fault&) {  // the program ends: the disk refused the last lines and nobody is left to be told
    }
  }
}

void Logs::WriteLog(int16 Index, std::string_view text) {
  if (LogFile.UBound() < Index || !LogFile[Index]) return;
  AppendFile& file = *LogFile[Index];
  file.Write(text);
  file.Write("\r\n");
}

void Logs::Flush(int16 Index) {
  if (Index <= LogFile.UBound() && LogFile[Index]) LogFile[Index]->Flush();
}

// A session that has been up for long still writes to a log of an old day: without its name the rest of the game would
// go nowhere.
bool Logs::IsOpen(const std::string& name) const {
  for (int32 slot = 0; slot <= LogFile.UBound(); ++slot)
    if (LogFile[slot] && SameText(openName_[slot], name)) return true;
  return false;
}

void Logs::RemoveOldLogs() {
  const DateTime now = platform_.clock.Now();
  const auto today = DayOf(now.Year, now.Month, now.Day);
  std::vector<std::string> names;
  try {
    names = platform_.files.FileNames(options_.LogsFolder);
  } catch (const Fault&) {
    return;
  }
  for (const std::string& name : names) {
    const std::optional<std::chrono::sys_days> date = DateInName(name);
    if (!date || (today - *date).count() <= options_.LogRetentionDays || IsOpen(name)) continue;
    try {
      platform_.files.Remove(options_.LogsFolder + name);
    } catch (const Fault&) {  // a log that stays is no reason to keep the others
    }
  }
}

}  // namespace corvid
