// SPDX-License-Identifier: GPL-3.0-or-later
// Writers of everything that outlives a run. All of it is script text: saving writes the commands that make the state
// again when they are read.
#pragma once

#include <string>

#include "core/types.h"
#include "core/upcalls.h"
#include "files/buffer_state.h"
#include "platform/platform.h"
#include "script/options_state.h"
#include "script/script_state.h"
#include "sessions/session_state.h"

namespace corvid {

class Buffers;

namespace save {  // stype of Save
inline constexpr int16 Variables = 1, Aliases = 2, Triggers = 4, Keys = 8, TabWords = 0x10, Classes = 0x20,
                       Directions = 0x40, Defaults = 0x80;
}

// Files are replaced whole. A disk that refuses is told to the player in a dialog "Error" ("Error creating file " and
// the name); the old file and the running state stay as they are, and the result is false.
class Saving {
 public:
  Saving(ScriptState& script, SessionState& sessions, BufferState& buffers, OptionsState& options, Buffers& bufferFiles,
         Platform& platform, Upcalls& upcalls)
      : script_(script),
        sessions_(sessions),
        buffers_(buffers),
        options_(options),
        bufferFiles_(bufferFiles),
        platform_(platform),
        upcalls_(upcalls) {}

  // Appends the definitions of one owner, of each kind whose bit is set, to text; each line ends in CR LF.
  void Save(int16 stype, OwnerId Owner, std::string& text) const;
  void SaveOptions(std::string& text) const;  // all saved options, in their fixed order
  bool SaveOptionsFile();                     // "corvid.set" of the user data folder
  // Sets the defaults, then loads "corvid.set" if it exists, by the command and escape characters of its first two
  // rows. A file that tries to change the folders is told and rewritten without that. May pump events.
  void InitializeConfigs();
  bool WriteAltMethod(OwnerId Owner, const std::string& filename, bool SaveVariables);  // a character's whole state
  bool WriteImage(const std::string& filename);                                         // everything
  bool SaveVariables(OwnerId ownedBy);  // "<ref>-var.set" in the folder of the owner's session; no session: false
  // Writes each script that differs from its file. False when the disk refused one; that went to UnknownError under the
  // procedure's name and the script stays modified.
  bool SaveChangedScripts(const std::string& procedure);
  void AutoSave();  // simple-control characters and changed scripts, if the option AutoSave is on
  // A file of the session's character in its Mud's folder: the reference and ending ("-var.set").
  std::string CharacterFile(int16 Index, const std::string& ending) const;
  // The first session (connected or not) of a character; -1 for none.
  int16 FindChannel(OwnerId ownedBy) const;

 private:
  void SaveVariableRows(bool defaultsOnly, OwnerId Owner, std::string& text) const;
  void SaveAliases(OwnerId Owner, std::string& text) const;
  void SaveKeys(OwnerId Owner, std::string& text) const;
  void SaveTriggers(OwnerId Owner, std::string& text) const;
  void SaveTabWords(OwnerId Owner, std::string& text) const;
  void SaveDirections(OwnerId Owner, std::string& text) const;
  void SaveClasses(OwnerId Owner, std::string& text) const;
  std::string CommandStart(OwnerId Owner) const;  // command character, and "G" for everybody's definitions
  void TakeReadingCharacters(const std::string& path);
  bool WriteFile(const std::string& filename, const std::string& text);
  void KeepBeside(const std::string& filename);

  ScriptState& script_;
  SessionState& sessions_;
  BufferState& buffers_;
  OptionsState& options_;
  Buffers& bufferFiles_;
  Platform& platform_;
  Upcalls& upcalls_;
};

}  // namespace corvid
