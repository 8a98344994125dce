// SPDX-License-Identifier: GPL-3.0-or-later
// FILE, READ, WRITE, CLOSE and DELFILE: how scripts keep what they know in data files.
#include "commands/command_call.h"
#include "commands/data_files.h"
#include "commands/handlers.h"
#include "core/number.h"
#include "core/text.h"
#include "script/symbols.h"

namespace corvid {

namespace {

constexpr std::string_view BadHandle = "Parameter 2 must be a numeric file handle between 1 and 10.";
constexpr std::string_view NoSuchHandle = "File handle must be numeric and be 1 through 10";
constexpr std::string_view NotAssigned = "File not defined or not assigned a filename.";
constexpr std::string_view EndOfFile = "[EOF]";
constexpr std::string_view DefaultLength = "120";

constexpr int16 Handle = 2;  // places in P
constexpr int16 Name = 3;
constexpr int16 Extra = 4;  // record length, record number or NORETURN

// Types of files that the program and the system keep, and that no script shall touch.
constexpr std::string_view ForbiddenTypes = "-.HLP-.EXE-.DLL-.INI-.CFG-";

// What is wrong with a name, empty for nothing. Kept: of several objections the last one is told, and the type begins
// at the first ".".
std::string ObjectionTo(const std::string& name) {
  std::string objection;
  if (name.find_first_of("*\\/") != std::string::npos) objection = "Directory and wildcard characters are not allowed.";
  const std::size_t dot = name.find('.');
  if (dot == std::string::npos) return "Missing file type";
  const std::string type = "-" + Upper(std::string_view(name).substr(dot)) + "-";
  if (ForbiddenTypes.find(type) != std::string_view::npos) objection = "Illegal filetype";
  return objection;
}

bool InRange(const std::string& handle) {
  const double number = Val(handle);
  return number >= 1 && number <= scriptfile::Handles;
}

bool IsRecordNumber(const CommandCall& call) {
  return IsNumeric(call.P[Extra]);
}

// Kept: READ and WRITE compare the handle as a text, so "01" and " 1" are none though they are numbers. 0 for none.
int16 HandleByText(const std::string& text) {
  for (int16 handle = 1; handle <= scriptfile::Handles; ++handle)
    if (text == std::to_string(handle)) return handle;
  return 0;
}

// The handle of READ or WRITE with its file assigned; 0 when the call is set to report.
int16 AssignedHandle(CommandCall& call) {
  if (call.checkOnly() || !ExpandParameters(call)) return 0;
  const std::string& text = call.P[Handle];
  if (IsNumeric(text) && InRange(text) && call.house.dataFiles.NameOf(ToInt16(Val(text))).empty()) {
    call.fail(std::string(NotAssigned));
    return 0;
  }
  const int16 handle = HandleByText(text);
  if (handle == 0) call.fail(std::string(NoSuchHandle));
  return handle;
}

void Store(CommandCall& call, const std::string& value) {
  call.house.symbols.AddVariable(call.P[3], value, call.definitionOwner, call.ErrorDescription);
  if (!call.ErrorDescription.empty()) call.next = Flow::Report;
}

void ReadLine(CommandCall& call, int16 handle) {
  DataFiles& files = call.house.dataFiles;
  if (!call.P[Extra].empty()) return call.fail("Too many parameters for this type of read - no record number allowed");
  if (files.ModeOf(handle) == scriptfile::Closed) files.OpenForReading(handle);
  if (files.ModeOf(handle) != scriptfile::Reading)
    return call.fail("Trying to read from a file already open for write");
  std::string line;
  Store(call, files.NextLine(handle, line) ? line : std::string(EndOfFile));
}

void WriteLine(CommandCall& call, int16 handle) {
  DataFiles& files = call.house.dataFiles;
  const bool noReturn = SameText(call.P[Extra], "NORETURN");
  if (!noReturn && !call.P[Extra].empty())
    return call.fail("Too many parameters for this type of write - no record number allowed");
  if (files.ModeOf(handle) == scriptfile::Closed) files.OpenForWriting(handle);
  if (files.ModeOf(handle) != scriptfile::Writing) return call.fail("Trying to write to a file already open for read");
  files.AddText(handle, noReturn ? call.P[3] : call.P[3] + "\r\n");
}

}  // namespace

void handler::File(CommandCall& call) {
  if (call.checkOnly() || !ExpandParameters(call)) return;
  if (!IsNumeric(call.P[Handle])) return call.fail(std::string(BadHandle));
  const std::string objection = ObjectionTo(call.P[Name]);
  if (!objection.empty()) return call.fail(objection);
  if (!InRange(call.P[Handle])) return call.fail(std::string(BadHandle));
  DataFiles& files = call.house.dataFiles;
  const int16 handle = ToInt16(Val(call.P[Handle]));
  files.Close(handle);
  int16 length = 0;
  if (handle > scriptfile::LastSequential) {
    const std::string text = call.P[Extra].empty() ? std::string(DefaultLength) : call.P[Extra];
    if (!IsNumeric(text)) return call.fail("Parameter 3 must be numeric if included.");
    length = ToInt16(Val(text));
  }
  files.Assign(handle, call.P[Name], length);
}

void handler::CloseFile(CommandCall& call) {
  if (call.checkOnly() || !ExpandParameters(call)) return;
  if (!IsNumeric(call.P[Handle]) || !InRange(call.P[Handle])) return call.fail(std::string(BadHandle));
  DataFiles& files = call.house.dataFiles;
  const int16 handle = ToInt16(Val(call.P[Handle]));
  // Kept: a handle that is not open keeps its name.
  if (!files.IsOpen(handle)) return;
  files.Close(handle);
  files.Assign(handle, "", 0);
}

void handler::Read(CommandCall& call) {
  const int16 handle = AssignedHandle(call);
  if (handle == 0) return;
  if (handle <= scriptfile::LastSequential) return ReadLine(call, handle);
  if (!IsRecordNumber(call)) return call.fail("Record number missing for read, or value not numeric");
  Store(call, call.house.dataFiles.ReadRecord(handle, ToInt32(Val(call.P[Extra]))));
}

void handler::Write(CommandCall& call) {
  const int16 handle = AssignedHandle(call);
  if (handle == 0) return;
  if (handle <= scriptfile::LastSequential) return WriteLine(call, handle);
  if (!IsRecordNumber(call)) return call.fail("Record number missing for Write, or value not numeric");
  call.house.dataFiles.WriteRecord(handle, ToInt32(Val(call.P[Extra])), call.P[3]);
}

// Kept: a second parameter is taken and means nothing.
void handler::DelFile(CommandCall& call) {
  if (call.checkOnly() || !ExpandParameters(call)) return;
  const std::string objection = ObjectionTo(call.P[2]);
  if (!objection.empty()) return call.fail(objection);
  call.house.platform.files.Remove(call.house.dataFiles.PathOf(call.P[2]));
}

}  // namespace corvid
