// SPDX-License-Identifier: GPL-3.0-or-later
// The session logs: one file for each session or each day, and their removal when they are old.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "core/table.h"
#include "core/text.h"
#include "platform/platform.h"
#include "script/options_state.h"
#include "sessions/session_state.h"

namespace corvid {

class Logs {
 public:
  Logs(OptionsState& options, SessionState& sessions, Platform& platform);
  ~Logs();

  // Opens the slot's log for appending, after closing one that is open. Only while OutputLog is on. A Fault when the
  // file cannot be opened; LogOpen is then false.
  void OpenLog(int16 Index);
  void CloseLog(int16 Index);  // LogOpen becomes false; a Fault when the rest could not be written
  void CloseAll();             // never throws
  // Adds text and a line end to an open log. A Fault when the disk refuses; the log stays open.
  void WriteLog(int16 Index, std::string_view text);
  void Flush(int16 Index);  // to the disk what was written since; nothing to do is no error
  // Deletes each file of the logs folder whose name holds a date more than LogRetentionDays ago, except a log that is
  // open. Never throws.
  void RemoveOldLogs();

 private:
  std::string LogName(int16 Index) const;
  bool IsOpen(const std::string& name) const;

  OptionsState& options_;
  SessionState& sessions_;
  Platform& platform_;
  Table<std::unique_ptr<AppendFile>> LogFile;
  Table<std::string> openName_;  // of each open log, without the folder
};

}  // namespace corvid
