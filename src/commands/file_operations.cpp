// SPDX-License-Identifier: GPL-3.0-or-later
#include "commands/file_operations.h"

#include <exception>

#include "core/text.h"
#include "files/buffers.h"

namespace corvid {

namespace {

bool HasPath(const std::string& name) {
  return name.starts_with('\\') || name.starts_with('/') || (name.size() > 1 && name[1] == ':');
}

}  // namespace

void FileOperations::Run(std::string_view OpType, const std::string& FileSpec2, std::string& ErrorDescription,
                         const std::string& param1, int16& outchannel) {
  if (outchannel == CurrentSession) outchannel = house_.script.CurrentSocket;
  std::string path = Locate(FileSpec2, ErrorDescription, outchannel);
  if (!ErrorDescription.empty()) return;
  try {
    path = house_.platform.files.Absolute(path);
    Carry(OpType, path, !SameText(param1, "NOREMOVE"), outchannel);
  } catch (const std::exception& fault) {
    ErrorDescription = "General error in file operation using " + path + ", with error " + fault.what();
  }
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

void FileOperations::Carry(std::string_view OpType, const std::string& path, bool remove, int16& outchannel) {
  if (OpType == fileoperation::Edit) return house_.platform.face.StartProgram(house_.options.Editor, path);
  int16 closed = 0;
  if (remove && !RemoveLoaded(path, closed)) return;
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
  if (!house_.scriptFiles.CloseBuffer(buffer)) return false;
  house_.buffers.BufferFile[buffer].clear();
  return true;
}

}  // namespace corvid
