// SPDX-License-Identifier: GPL-3.0-or-later
// What commands and menus do with files: find, make, load, check, unload, hand to the editor, send to the game.
#pragma once

#include <string>
#include <string_view>

#include "commands/command_call.h"

namespace corvid {

namespace fileoperation {
inline constexpr std::string_view New = "NE", Send = "DA", Edit = "ED", Load = "LO", Unload = "UN", Check = "NO";
}

class FileOperations {
 public:
  explicit FileOperations(CommandHouse& house) : house_(house) {}

  // A name without a path is looked for in the user data folder, then in the folder of the session's game. Load, Unload
  // and Check with param1 "NOREMOVE" keep what the file defined before. Send puts param1 before and param2 behind each
  // line and sends it as it stands; it ends at the first error. New shows a new buffer for a file that does not exist,
  // and does nothing for one that does. ErrorDescription is set when the file is not there (for New as well), or with
  // the system's words when the operation failed; a player who refuses to give up changes ends Load, Unload and Check
  // without an error. May pump events.
  void Run(std::string_view OpType, const std::string& FileSpec2, std::string& ErrorDescription,
           const std::string& param1, const std::string& param2, int16& outchannel);

 private:
  std::string Locate(const std::string& name, std::string& ErrorDescription, int16 session) const;
  bool IsNew(const std::string& name) const;
  void ShowNew(const std::string& name);
  void SendLines(const std::string& path, std::string& ErrorDescription, const std::string& before,
                 const std::string& behind, int16& outchannel);
  void LoadOrUnload(std::string_view OpType, const std::string& path, bool remove, int16& outchannel);
  bool RemoveLoaded(const std::string& path, int16& buffer);

  CommandHouse& house_;
};

}  // namespace corvid
