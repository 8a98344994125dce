// SPDX-License-Identifier: GPL-3.0-or-later
// Calls that go up the house. The language is mutually recursive: a command expands text, a function in the text opens
// a dialog, the dialog runs a command. What stands on a lower floor reaches a higher one through these interfaces only;
// the main object implements each in a line.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/parameters.h"
#include "core/types.h"

namespace corvid {

// Bits of options, as ProcessCommand takes them.
namespace option {
inline constexpr int16 PlaceInEntry = 1;      // text for the game goes to the entry line first
inline constexpr int16 DoNotSend = 2;         // and stays there
inline constexpr int16 CheckOnly = 4;         // validate, carry out nothing
inline constexpr int16 Interactive = 8;       // errors in a message box
inline constexpr int16 AbortAll = 0x10;       // set by ABORT with a parameter
inline constexpr int16 LookUpOnly = 0x20;     // SetCharacter: do not switch
inline constexpr int16 ConnectedOnly = 0x40;  // SetCharacter: connected sessions only
inline constexpr int16 AbortBlock = 0x80;     // set by ABORT without one
}  // namespace option

// Runs one line of script or typed text: the one execution point of the language.
class CommandRunner {
 public:
  virtual ~CommandRunner() = default;
  // May pump events. ErrorDescription empty on return means success.
  virtual void ProcessCommand(const std::string& inlineText, int16& options, std::string& ErrorDescription,
                              Parameters& rvar, int16& outchannel) = 0;
  virtual void SortTriggers() = 0;
};

// Where errors go. None of these fails.
class ErrorSink {
 public:
  virtual ~ErrorSink() = default;
  virtual void ErrorReport(const std::string& ErrorDescription, const std::string& line, int errorCode,
                           int16 flags) = 0;
  virtual void DisplayErrorFile(const std::string& ErrorDescription, int16 bufno) = 0;
  virtual void ShowError(const std::string& strError) = 0;
  virtual void writeError(const std::string& ErrMes) = 0;
  virtual void ErrorDisplay(const std::string& mes) = 0;
  // Logs an unexpected fault to "error.log" and says "Error logged.". At most five parameters are kept.
  virtual void UnknownError(const std::string& error, const std::string& procedure,
                            const std::vector<std::string>& parameters) = 0;
};

enum Channel : int16 { Incoming = 1, Entry = 2, Output = 3, Edit = 4, System = 5, User = 6 };

class Speaker {
 public:
  virtual ~Speaker() = default;
  virtual void SpeakOut(const std::string& text, int16 window, int16 spokenByWindow) = 0;
  // A short answer of the program to its player that stands nowhere else ("Not found"): spoken, and written as well by
  // a face that is read with the fingers.
  virtual void Answer(const std::string& text, int16 window) { SpeakOut(text, window, 0); }
  virtual void Speak(const std::string& textstring, int16 tSpeechType, int16 voicetype) = 0;
  virtual void StopSpeech() = 0;
  virtual void StopSpeaking(int16 window) = 0;
  virtual void StopSpeakingAll() = 0;
  // Each character by its name, or as it is. May pump events between characters.
  virtual void SpellWord(const std::string& /*phrase*/, int16 /*WType*/) {}
};

// Flags of the message box; the low four bits choose the buttons.
namespace box {
inline constexpr int16 OkOnly = 0, OkCancel = 1, YesNoCancel = 3, YesNo = 4, Exclamation = 0x30, SecondDefault = 0x100,
                       ThirdDefault = 0x200;
inline constexpr int16 ResultOk = 1, ResultCancel = 2, ResultYes = 6, ResultNo = 7;
}  // namespace box

// Modal questions to the player. Each pumps events until it is answered.
class Prompter {
 public:
  virtual ~Prompter() = default;
  virtual int16 MsgBox(const std::string& text, int16 flags, const std::string& title) = 0;
  virtual std::string TextPrompt(const std::string& prompt, const std::string& title, int16 WType,
                                 const std::string& DefVal) = 0;
  // Value of the row chosen; empty for none. Items joined by "|" are "label:value" or "label"; the label "P" gives the
  // prompt, a label that begins with "*" is chosen at first, and "\&1" in an item stands for ":".
  virtual std::string PickList(const std::string& list) = 0;
  // True for OK; position2 is then the row from 0.
  virtual bool ChooseFromList(const std::string& PromptString, const std::vector<std::string>& CList,
                              int16& position2) = 0;
  virtual std::string InputBox2(const std::string& message, const std::string& title,
                                const std::string& startString) = 0;
  // Empty filename when refused.
  virtual void FolderDialog2(const std::string& StartFile, const std::string& wildcard, int16 fOptions,
                             const std::string& title, std::string& ErrorDescription, std::string& filename,
                             const std::string& StartingFolder) = 0;
  virtual std::string PickDrive(const std::string& title) = 0;
};

// Screens and jobs of higher floors.
class Screens {
 public:
  virtual ~Screens() = default;
  virtual void MaintainCharacters() = 0;
  virtual int16 SelectScreenReader() = 0;  // first run: 0, 1 or 3; ends the program on Cancel
  virtual void quit(bool Mandatory) = 0;
  virtual void InitializeConfigs() = 0;
  virtual void SimulateEnter() = 0;                          // the key path of Enter in the entry line
  virtual void ShowWindowAt(int16 buffer, int32 caret) = 0;  // shows a script buffer, says its name, places the caret
};

// Work that waits for its moment on the event loop.
class TimerJobs {
 public:
  virtual ~TimerJobs() = default;
  // One-shot Timer1: TimerAction is carried out after milliseconds. A pending job 5 or 6 is done first, not lost.
  virtual void StartTimer1(int16 action, int milliseconds) = 0;
};

struct Upcalls {
  CommandRunner& commands;
  ErrorSink& errors;
  Speaker& speaker;
  Prompter& prompter;
  Screens& screens;
  TimerJobs& jobs;
};

}  // namespace corvid
