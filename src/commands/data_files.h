// SPDX-License-Identifier: GPL-3.0-or-later
// Data files of scripts: lines by handles 1 to 5, numbered records by handles 6 to 10. All lie directly in the user
// data folder. Refusals of the disk are Faults.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "commands/script_file_state.h"
#include "files/line_reader.h"
#include "platform/files.h"
#include "script/options_state.h"

namespace corvid {

class DataFiles {
 public:
  // Kept: records stand this far apart whatever length FILE was given; other programs' files rely on it.
  static constexpr std::size_t RecordSize = 128;
  static constexpr std::size_t LongestRecord = RecordSize - 2;                     // behind the 16-bit length
  static constexpr int32 LastRecord = INT32_MAX / static_cast<int32>(RecordSize);  // that can be written

  DataFiles(ScriptFileState& state, const OptionsState& options, Files& files);

  // Where a name of FILE or DELFILE lies. The name must have passed the check of those commands.
  std::string PathOf(const std::string& name) const;

  // A handle outside 1 to 10 is a Fault in all of these.
  const std::string& NameOf(int16 handle) const { return state_.ScriptFileName[handle]; }
  int16 ModeOf(int16 handle) const { return state_.ScriptFileLength[handle]; }  // handles 1 to 5
  bool IsOpen(int16 handle) const { return state_.ScriptFileNumber[handle] != 0; }
  void Assign(int16 handle, const std::string& name, int16 length);  // of a closed handle
  void Close(int16 handle);  // the name stays; a handle that is closed is left alone
  // Not open, or nothing left to read: behind the last line, behind the last record, or open for writing.
  bool AtEnd(int32 handle);

  // Handles 1 to 5. OpenForReading and OpenForWriting take a closed handle.
  void OpenForReading(int16 handle);
  void OpenForWriting(int16 handle);
  bool NextLine(int16 handle, std::string& line);       // false at the end; the handle is open for reading
  void AddText(int16 handle, const std::string& text);  // on the disk, whole or not at all, when it returns

  // Handles 6 to 10; a closed handle is opened. Records are numbered from 1.
  std::string ReadRecord(int16 handle, int32 record);  // empty behind the end
  // A text over LongestRecord is a Fault of kind BadRecordLength; the file is as it was.
  void WriteRecord(int16 handle, int32 record, const std::string& text);

 private:
  struct OpenFile {
    std::unique_ptr<LineReader> Lines;
    std::unique_ptr<AppendFile> End;
    std::unique_ptr<RandomFile> Records;
    std::int64_t Behind = 0;  // place behind the record used last
  };
  OpenFile& At(int16 handle) { return open_.at(static_cast<std::size_t>(handle)); }
  OpenFile& OpenRecords(int16 handle);

  ScriptFileState& state_;
  const OptionsState& options_;
  Files& files_;
  std::array<OpenFile, scriptfile::Handles + 1> open_;
};

}  // namespace corvid
