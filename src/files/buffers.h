// SPDX-License-Identifier: GPL-3.0-or-later
// Script files in memory: loading, paging through them in the entry box, changing a definition's line, saving.
#pragma once

#include <set>
#include <string>
#include <string_view>

#include "core/types.h"
#include "core/upcalls.h"
#include "files/buffer_state.h"
#include "platform/platform.h"
#include "script/options_state.h"
#include "script/script_state.h"

namespace corvid {

class Scanner;
class Symbols;

namespace load {  // inflags of LoadSet
inline constexpr int16 NoExecution = 4, OptionsOnly = 0x800;
}

// What UpdateBuffer does with the line of the old definition.
enum class UpdateAction : int16 {
  Delete = 1,  // takes it out; nothing happens if there is none
  Append = 2,  // puts NewLine at the end of the text, whatever is there
  Write = 4    // puts NewLine in its place, or at the end if there is none
};

// A definition as the tables hold it, to be found again in a script's text.
struct OldDefinition {
  std::string Command;   // full command word in any case, with or without the command character: "Trigger", "#GKEY"
  std::string Name;      // search text, alias or key name; empty: any
  std::string Commands;  // as written in the script; empty: any
  std::string Class;     // empty: any; else one of its classes, or none, may stand in the script
};

class Buffers {
 public:
  Buffers(BufferState& buffers, ScriptState& script, OptionsState& options, Symbols& symbols, Scanner& scanner,
          Platform& platform, Upcalls& upcalls)
      : buffers_(buffers),
        script_(script),
        options_(options),
        symbols_(symbols),
        scanner_(scanner),
        platform_(platform),
        upcalls_(upcalls) {}

  // Loads a script file and runs it (or checks it only, with NoExecution). A relative name is taken from the user data
  // folder. What worked before a failing statement stays in force; the failure is in the error log, the entry box shows
  // the file with the caret at the place, and its name is spoken. Never throws: other faults go to UnknownError as
  // "Loadset". Files that load each other without end are stopped at MaxNesting. May pump events.
  void LoadSet(const std::string& filename, int16 inflags, int16& outchannel);
  static constexpr int16 MaxNesting = 12;

  // True when the last load of this file failed on the way: what it holds is not all in memory, and whoever writes it
  // anew must keep the old one. Forget when that is done.
  bool LoadedInPart(const std::string& filename) const;
  void ForgetLoad(const std::string& filename);

  // A buffer for the absolute path, with empty text unless the file is loaded already (flags has 0x20: its own buffer,
  // after SaveIfBufModified); -1 when the player cancelled. May pump events.
  int16 OpenBuffers(const std::string& filename, int16 flags);
  // Changes a definition in a buffer's text and marks the buffer modified. BufferNumber below 1 means the buffer of
  // filespec; with neither nothing happens. False if the text is as it was.
  bool UpdateBuffer(int16 BufferNumber, UpdateAction Action, const std::string& NewLine, const std::string& filespec,
                    const OldDefinition& old);

  // Writes the buffer to its file. A buffer without a file has nothing to save (true). A refusal of the disk is told
  // to the player; the text stays modified and the result is false. May pump events then.
  bool SaveBuffer(int16 BufferNumber);
  void WriteBuffer(int16 BufferNumber);  // the same, but a refusal is a Fault
  void SaveCurrentBuffer();              // takes text and caret of the entry box into the current buffer
  // Asks to save a changed buffer. False when the player cancelled or the disk refused: the caller must not drop it.
  // May pump events.
  bool SaveIfBufModified(int16 bufnum);
  // Forgets a script, its definitions included. False when it stays: buffers 1 to 3, or the player cancelled. May pump.
  bool CloseBuffer(int16 bufnum);

  std::string GetBufferName(int16 Buffer) const;       // by type: "Entry", "Script " and so on
  int16 GetBufferNumber(const std::string& fn) const;  // by absolute path in any case; 0 for none
  void ResizeBuffers(int16 Buffer);                    // makes Buffer the highest number
  void MoveBuffers(int16 NewBuffer);                   // shows it in the entry box
  bool FindNextBuffer();   // shows the next buffer in use and says its name; false when there is no other
  void SpeakWindowName();  // channel 5
  // Shows a buffer, says its name and puts the caret there (brought into the text).
  void ShowBufferAt(int16 Buffer, int32 caret);
  bool IsModified(int16 Buffer) const;  // text differs from the file as loaded or saved last
  // Replaces a buffer's text, and the entry box's if it is shown there; marks it modified if it differs.
  void SetBufferText(int16 Buffer, const std::string& text);

  // The last part of a path, behind "/" or "\".
  static std::string ShortName(std::string_view path);

 private:
  void LoadSteps(const std::string& filename, int16 inflags, int16& outchannel);
  void ReadInto(int16 number, const std::string& path);
  void LoadFailed(int16 number, const std::string& path, int16 inflags, int32 position);
  bool Holds(int16 number, const std::string& path) const;
  void FreeSlot(int16 number);
  void MarkModified(int16 Buffer);
  void SetFlags(int16 Buffer, int16 set, int16 clear);
  int16 FreeBuffer();
  std::string AbsoluteName(const std::string& filename) const;

  BufferState& buffers_;
  ScriptState& script_;
  OptionsState& options_;
  Symbols& symbols_;
  Scanner& scanner_;
  Platform& platform_;
  Upcalls& upcalls_;
  int16 nesting_ = 0;       // loads within loads
  bool nestedOut_ = false;  // the limit was met: the loads around it end as well
  std::set<std::string> loadedInPart_;
};

}  // namespace corvid
