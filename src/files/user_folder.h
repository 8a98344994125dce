// SPDX-License-Identifier: GPL-3.0-or-later
// Where the player's files lie: choosing the folder, filling it on the first run, finding older ones.
#pragma once

#include <string>
#include <vector>

#include "core/types.h"
#include "core/upcalls.h"
#include "platform/platform.h"
#include "script/options_state.h"
#include "script/script_state.h"

namespace corvid {

class UserFolder {
 public:
  UserFolder(OptionsState& options, ScriptState& script, Platform& platform, Upcalls& upcalls)
      : options_(options), script_(script), platform_(platform), upcalls_(upcalls) {}

  // Settles AppFolder and UserDataFolder, creates the folder and fills it on a first run. A given folder (as "--data"
  // names it) is taken as it is and not stored. False: the program must end, and the player has been told why. May pump
  // events.
  bool Choose(const std::string& given);
  // Sets SoundsFolder, LogsFolder (both created if missing) and TempFolder, and the system variables that name folders.
  // A folder that cannot be made is told; the program goes on.
  void SetFolders();
  // The system variables that name folders, from the options. LoadSystemVariables may be called before or after.
  void SetFolderVariables();

  // Copies the scripts, tables and settings of source (".set", ".mud", ".ini", in any case) over those of target, and
  // each subfolder whole. Links to folders are left out. ErrorDescription names the first failure; copying ends there.
  void MoveDataFolder(const std::string& source, const std::string& target, std::string& ErrorDescription);
  // root and the folders below it that hold name, depth-first, each ending in "/". Links are not followed, and the walk
  // is bounded: at most MaxDepth levels and MaxFolders folders are looked at. May pump events.
  std::vector<std::string> LocateFile(const std::string& name, const std::string& root);

  static constexpr int MaxDepth = 16;
  static constexpr int MaxFolders = 100000;

 private:
  template <typename Work>
  void Try(Work&& work);
  bool Find();
  bool CreateDataFolder();
  bool FillDataFolder();
  bool FillFromShipped();
  bool FillFromOld();
  bool PickOldFolder(std::string& found);
  bool SearchOldFolder(std::string& found);
  bool CopyAsked(const std::string& source, const std::string& title, const std::string& done);
  void CopyFile(const std::string& name, const std::string& source, const std::string& target);
  void CopyFolderWhole(const std::string& source, const std::string& target, const std::string& name);
  int16 Ask(const std::string& text, int16 buttons, const std::string& title);

  OptionsState& options_;
  ScriptState& script_;
  Platform& platform_;
  Upcalls& upcalls_;
};

}  // namespace corvid
