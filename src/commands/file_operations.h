// SPDX-License-Identifier: GPL-3.0-or-later
// What commands and menus do with script files: find, load, check, unload, hand to the editor.
#pragma once

#include <string>
#include <string_view>

#include "commands/command_call.h"

namespace corvid {

namespace fileoperation {
inline constexpr std::string_view Load = "LO", Check = "NO", Unload = "UN", Edit = "ED";
}

class FileOperations {
 public:
  explicit FileOperations(CommandHouse& house) : house_(house) {}

  // A name without a path is looked for in the user data folder, then in the folder of the session's game. param1
  // "NOREMOVE" keeps what the file defined before. ErrorDescription is set when the file is not there, or with the
  // system's words when the operation failed; a player who refuses to give up changes ends it without an error. May
  // pump events.
  void Run(std::string_view OpType, const std::string& FileSpec2, std::string& ErrorDescription,
           const std::string& param1, int16& outchannel);

 private:
  std::string Locate(const std::string& name, std::string& ErrorDescription, int16 session) const;
  void Carry(std::string_view OpType, const std::string& path, bool remove, int16& outchannel);
  bool RemoveLoaded(const std::string& path, int16& buffer);

  CommandHouse& house_;
};

}  // namespace corvid
