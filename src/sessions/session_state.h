// SPDX-License-Identifier: GPL-3.0-or-later
// Characters and sessions. The character table has rows from 1; the session arrays are indexed 0 to SessionHigh.
#pragma once

#include <array>
#include <memory>
#include <string>

#include "core/table.h"
#include "core/text_model.h"
#include "core/types.h"

namespace corvid {

namespace charflag {
inline constexpr int16 AutoLogin = 1, KeepVariables = 2, SimpleControl = 4;
}

struct CharacterTable {  // in the order of the file's fields
  int16 CharacterCount = 0;
  Table<std::string> MudName;
  Table<std::string> HostName;
  Table<std::string> Notes;
  Table<std::string> Port;  // a number or a service name
  Table<std::string> CharacterName;
  Table<std::string> CharacterRef;
  Table<std::string> Password;
  Table<int16> CharFlags;
  Table<std::string> LastConnected;  // "yyyy-mm-dd hh:mm:ss", empty if never
};

namespace gag {  // bits of GagFlags
inline constexpr int16 LineSpeech = 1, LineDisplay = 2, OnSpeech = 4, OnDisplay = 8, AnySpeech = 5, AnyDisplay = 10;
}

struct SessionState : CharacterTable {
  int16 SessionHigh = 0;  // highest slot in use
  std::string ConnectHost;
  std::string ConnectPort;

  Table<std::string> SessionMud;
  Table<std::string> SessionName;
  Table<std::string> SessionRef;
  Table<std::string> MudFolder;  // ends in "/"
  Table<char> TriggerEnabled;    // four switches, 0 or 1
  Table<char> AliasEnabled;
  Table<char> KeyEnabled;
  Table<char> LogEntriesEnabled;
  Table<char> MspOn;          // the server has offered MSP
  Table<char> Utf8Seen;       // the server has sent well-formed multi-byte UTF-8
  Table<char> ScriptsLoaded;  // OnConnect has run for this connection
  Table<char> LogOpen;
  std::array<bool, MaxConnections + 1> ScriptChanged{};  // something was defined that no file holds yet

  Table<std::string> PartialLine;  // bytes held back from the previous read
  Table<char> ReadTimerLoaded;
  Table<std::string> OutputBuffer;  // text that is not in the viewport yet
  Table<int16> GagFlags;
  Table<int16> GagLines;   // lines still gagged by GAGLINE; negative: none
  Table<float> GagNotice;  // seconds of the day of the last notice; 0: never armed
  Table<char> TextArrived;
  Table<std::array<std::string, 11>> HistoryLines;
  Table<int16> HistoryPos;
  Table<std::string> PassThruPattern;  // the session's pass-through text
  Table<int16> WalkState;              // 0 idle, 1 slow walking, 2 recording
  Table<std::string> WalkBuffer;

  Table<std::unique_ptr<TextModel>> EditViewPortR;  // rich family
  Table<std::unique_ptr<TextModel>> editViewportT;  // plain family
  bool RichFamily = false;                          // which one is in use
  int32 ViewEnd = 62000;                            // caret value meaning "end of text"
  bool ReadPosition = false;  // the output has the focus: its caret stays where it is on an append
  std::string InjectedText;   // a line fed in as if it had arrived
  bool ReadTimerFired = false;

  TextModel& OutputWindow(int16 Index) { return RichFamily ? *EditViewPortR[Index] : *editViewportT[Index]; }
};

}  // namespace corvid
