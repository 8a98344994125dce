// SPDX-License-Identifier: GPL-3.0-or-later
#include "commands/file_operations.h"

#include <exception>

#include "core/text.h"
#include "files/buffers.h"
#include "files/line_reader.h"

namespace corvid {

namespace {

bool HasPath(const std::string& name) {
  return name.starts_with('\\') || name.starts_with('/') || (name.size() > 1 && name[1] == ':');
}

}  // namespace

void FileOperations::Run(std::string_view OpType, const std::string& FileSpec2, std::string& ErrorDescription,
                         const std::string& param1, const std::string& param2, int16& outchannel) {
  if (outchannel == CurrentSession) outchannel = house_.script.CurrentSocket;
  // Kept: a new file is looked for all the same, and that it is not on the disk yet is told.
  if (OpType == fileoperation::New && IsNew(FileSpec2)) ShowNew(FileSpec2);  // PUMP
  std::string path = Locate(FileSpec2, ErrorDescription, outchannel);
  if (!ErrorDescription.empty()) return;
  try {
    path = house_.platform.files.Absolute(path);
    if (OpType == fileoperation::Send) {
      SendLines(path, ErrorDescription, param1, param2, outchannel);  // PUMP
    } else if (OpType == fileoperation::Edit) {
      house_.platform.face.StartProgram(house_.options.Editor, path);
    } else if (OpType != fileoperation::New) {
      LoadOrUnload(OpType, path, !SameText(param1, "NOREMOVE"), outchannel);  // PUMP
    }
  } catch (const std::exception& fault) {
    ErrorDescription = "General error in file operation using " + path + " with error " + fault.what();
  }
}

// In the user data folder, where a new file without a path would lie.
bool FileOperations::IsNew(const std::string& name) const {
  return !name.empty() &&
         !house_.platform.files.FileExists(HasPath(name) ? name : house_.options.UserDataFolder + name);
}

void FileOperations::ShowNew(const std::string& name) {
  const std::string& home = house_.options.UserDataFolder;
  const std::string path = house_.platform.files.Absolute(HasPath(name) ? name : home + name);
  const int16 number = house_.scriptFiles.OpenBuffers(path, buffer::Script);  // PUMP
  if (number < buffer::FirstScript) return;
  int16& flags = house_.buffers.BufferFlags[number];
  flags = static_cast<int16>(flags | buffer::News);
  house_.scriptFiles.MoveBuffers(number);
}

std::string FileOperations::Locate(const std::string& name, std::string& ErrorDescription, int16 session) const {
  const Files& files = house_.platform.files;
  if (HasPath(name)) {
    if (!files.FileExists(name)) ErrorDescription = "Error finding file " + name;
    return name;
  }
  const std::string& home = house_.options.UserDataFolder;
  if (!name.empty() && files.FileExists(home + name)) return home + name;
  const std::string& game = house_.sessions.MudFolder[session];
  if (!name.empty() && !game.empty() && files.FileExists(game + name)) return game + name;
  ErrorDescription = "Error finding file " + home + name;
  if (!game.empty()) ErrorDescription += " or " + game + name;
  return "";
}

// Kept: the lines count from depth 0 and belong to no script file, whatever runs around them.
void FileOperations::SendLines(const std::string& path, std::string& ErrorDescription, const std::string& before,
                               const std::string& behind, int16& outchannel) {
  LineReader lines(house_.platform.files.OpenRead(path));
  while (ErrorDescription.empty() && !house_.platform.events.Ending() && !lines.AtEnd()) {
    std::string line(1, house_.options.PassThruChar);
    line.append(before).append(lines.Next()).append(behind);
    house_.script.DefiningBuffer = 0;
    house_.script.CommandDepth = 0;
    int16 options = 0;
    Parameters none;
    house_.upcalls.commands.ProcessCommand(line, options, ErrorDescription, none, outchannel);  // PUMP
  }
}

void FileOperations::LoadOrUnload(std::string_view OpType, const std::string& path, bool remove, int16& outchannel) {
  int16 closed = 0;
  if (remove && !RemoveLoaded(path, closed)) return;  // PUMP
  if (OpType == fileoperation::Load) {
    house_.scriptFiles.LoadSet(path, 0, outchannel);
  } else if (OpType == fileoperation::Check) {
    house_.scriptFiles.LoadSet(path, load::NoExecution, outchannel);
    if (closed != 0 && house_.buffers.BufferFlags[closed] != 0) house_.scriptFiles.MoveBuffers(closed);
  }
}

// Takes a loaded file out with all that it defined; buffer is where it was, 0 if it was not loaded. False when the
// player keeps it.
bool FileOperations::RemoveLoaded(const std::string& path, int16& buffer) {
  buffer = house_.scriptFiles.GetBufferNumber(path);
  if (buffer < buffer::FirstScript) {
    buffer = 0;
    return true;
  }
  return house_.scriptFiles.CloseBuffer(buffer);  // PUMP; it clears the slot's name too
}

}  // namespace corvid
