// SPDX-License-Identifier: GPL-3.0-or-later
// The options of the program, as CONFIGURE sets them and "corvid.set" keeps them.
#pragma once

#include <string>
#include <vector>

#include "core/types.h"

namespace corvid {

struct OptionsState {
  std::string LineTerminator = "\r\n";
  std::string CommandSeparator = ";";
  std::string SwitchSession = ":";
  char CommandChar = '#';
  char PassThruChar = '>';
  char CommentChar = ';';
  char VariableChar = '@';
  std::string EndOfLineCommentChar = "//";  // two characters
  char EscapeChar = '~';
  bool ColourDisplay = false;
  bool ColourTextTags = false;
  std::string BackgroundColour = "STANDARD";
  std::string ForegroundColour = "STANDARD";
  bool SlowWalk = false;
  bool SpeakIndent = true;
  bool Explicit = false;
  bool AutoSave = true;
  bool ExpandCommandLineVars = false;
  bool ScriptReadOnly = false;
  bool AutoLogin = true;
  bool OutputLog = true;
  int32 LogRetentionDays = 30;
  int16 OutputWindowPercent = 90;
  int32 OutputWindowSize = 32;  // thousands of characters a viewport holds
  int16 MarginBell = 74;
  std::string Editor = "Notepad.exe ";
  bool CompressOutput = true;
  bool PlaySoundsOutsideCorvid = true;
  int16 RemoveAsciiArt = 1;
  bool DisplayCommandsInOutput = true;
  bool LogBySession = true;
  bool EchoMoveByWord = true;
  bool EntryByLine = true;
  bool BatchSpeech = false;

  bool DictionaryEnabled = true;
  bool TriggerColourNeeded = false;  // a trigger asks for colours, so lines are tagged
  int16 AsciiMinLength = 20;
  int16 AsciiPercent = 70;
  std::vector<int16> QuietChars;  // character codes that are not spoken

  bool LoadingOptions = false;         // "corvid.set" is being read: folder keywords are not carried out
  bool FolderChangeAttempted = false;  // ... and one was met

  std::string UserDataFolder;  // these four end in "/"
  std::string AppFolder;
  std::string SoundsFolder;
  std::string LogsFolder;
  std::string TempFolder;
};

}  // namespace corvid
