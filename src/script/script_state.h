// SPDX-License-Identifier: GPL-3.0-or-later
// The tables of the script language. Parallel arrays with rows from 1 to the count; slot 0 is never used.
#pragma once

#include <array>
#include <string>

#include "core/table.h"
#include "core/types.h"
#include "script/trigger_state.h"

namespace corvid {

inline constexpr int16 BreakpointFlag = 0x80;  // of AliasFlags, MacroFlags and a trigger's Flags

struct VariableTable {  // sorted by upper-cased name; one slot larger than the count
  int32 VariableCount = 0;
  Table<std::string> VariableNames;
  Table<std::string> VariableValues;
  Table<std::string> VariableDefaults;
  Table<int16> VariableOwners;
};

struct AliasTable {  // sorted by upper-cased name
  int16 AliasCount = 0;
  Table<std::string> AliasNames;
  Table<std::string> AliasValues;   // run when the alias is typed
  Table<std::string> AliasClasses;  // "A|B" needs both classes; empty is always active
  Table<int16> AliasBuffers;        // script buffer that defined it
  Table<int16> AliasOwners;
  Table<int16> AliasFlags;
  Table<std::string> AliasOriginals;  // as written in the script; run by the program's own event aliases
};

struct MacroTable {  // keys, sorted by code * 10 + shift state
  int16 MacroCount = 0;
  Table<int16> MacroKeyCodes;
  Table<int16> MacroShifts;
  Table<std::string> MacroValues;
  Table<int16> MacroFlags;
  Table<std::string> MacroClasses;
  Table<int16> MacroBuffers;
  Table<int16> MacroOwners;
  Table<std::string> MacroOriginals;
};

struct AbbreviationTable {  // direction pairs of recorded walks
  int16 AbbreviationCount = 0;
  Table<std::string> Directions;
  Table<std::string> OppositeDirections;
  Table<std::string> AbbreviationClasses;
  Table<int16> AbbreviationBuffers;
  Table<int16> AbbreviationOwners;
};

struct TabWordTable {
  int16 TabWordCount = 0;
  Table<std::string> TabWords;
  Table<int16> TabOwners;
};

struct ClassTable {  // the classes that are switched on; one that is in no row is off
  int16 ClassCount = 0;
  Table<std::string> ClassNames;
  Table<int16> ClassOwners;
  int32 ClassVersion = 0;  // another number after each change, so that answers about classes can be kept
};

namespace sysvar {  // rows of SystemNames and SystemValues
enum : int16 {
  INSTALLFOLDER = 1,
  COPYLINE,
  FOUNDLINE,
  REPEATNUM,
  CRLF,
  CR,
  SOCKET,
  CHAR,
  MUDNAME,
  Reference,
  PLAYHANDLE,
  MP3LOOP,
  PASSWORD,
  CONNECTED,
  I,
  VOLUME,
  HOMEFOLDER,
  CLIPBOARD,
  VERSION,
  SOUNDSFOLDER,
  MUDFOLDER,
  LOGSFOLDER,
  LF
};
inline constexpr int16 Last = 23;
}  // namespace sysvar

struct ScriptState : VariableTable, AliasTable, MacroTable, TriggerTable, AbbreviationTable, TabWordTable, ClassTable {
  std::array<std::string, 24> SystemNames;
  std::array<std::string, 24> SystemValues;
  std::array<std::string, 100> ColourNames;  // by SGR number; empty: no tag
  std::array<int32, 100> ColourValues{};     // what a tag gives on display, blue-green-red; 0: no change
  std::array<int32, 100> BaseColours{};      // what a colour name means to the colour options

  int16 CommandDepth = 0;           // nested ProcessCommand calls; every outer source sets it to 0 first
  int16 CurrentSocket = 0;          // session in the foreground
  int16 CurrentOwner = 0;           // its character
  Table<int16> SocketOwner;         // character of each session
  Table<std::string> CurrentClass;  // class that new definitions of a session join
  int16 DefiningBuffer = 0;         // buffer that new definitions belong to; 0 the keyboard
};

}  // namespace corvid
