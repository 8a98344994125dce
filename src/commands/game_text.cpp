// SPDX-License-Identifier: GPL-3.0-or-later
#include "commands/game_text.h"

#include <exception>

#include "commands/walks.h"
#include "core/text.h"
#include "core/utf8.h"
#include "script/expansion.h"
#include "script/symbols.h"
#include "sessions/logs.h"
#include "sessions/output.h"
#include "sessions/session.h"
#include "sound/sound.h"
#include "tools/debugger.h"

namespace corvid {

namespace {

constexpr std::size_t RecordWarning = 10000;  // characters of a walk, from which on the player is warned

constexpr const char* AliasBreak = "- [Alias Breakpoint]";

bool NeedsExpansion(const std::string& text) {
  return text.find_first_of("@%") != std::string::npos;  // Kept: "@" whatever the variable character is.
}

}  // namespace

void GameText::Run(CommandCall& call) {
  if (call.checkOnly()) return;
  Target target{call.outchannel, call.outchannel, false};
  if (!TakeSessionPrefix(call, target)) return;
  if (RunAlias(call)) return;
  std::string text;
  if (!JoinText(call, text)) return;
  if (!PlaceInEntry(call, text)) return;
  Send(call, text, target);
}

void GameText::SendVerbatim(CommandCall& call, const std::string& text) {
  if (house_.keyboard.EchoPrefix) TellVerbatim();
  Send(call, text, Target{call.outchannel, call.outchannel, false});
}

// The player hears that the line is not looked at.
void GameText::TellVerbatim() {
  int32 volume = 0;
  if (house_.sound.PlaySound("ding.wav", volume) == 0) house_.platform.face.Beep();
}

// "name:text" switches to the session and sends there, "name::text" only sends there, "*:text" sends to all. False when
// the handling of the text is over.
bool GameText::TakeSessionPrefix(CommandCall& call, Target& target) {
  const std::string separator = house_.options.SwitchSession;
  const std::string text = call.P[1];
  const std::size_t last = separator.empty() ? std::string::npos : text.rfind(separator);
  if (last == std::string::npos) return true;
  call.P[1] = text.substr(last + separator.size());
  std::string reference = text.substr(0, last);
  const bool doubled = reference.ends_with(separator);
  if (doubled) reference.erase(reference.size() - separator.size());
  if (reference == "*") {
    target = {0, house_.sessions.SessionHigh, true};
    return true;
  }
  return SwitchSession(call, reference, doubled, target);
}

bool GameText::SwitchSession(CommandCall& call, const std::string& reference, bool stay, Target& target) {
  const std::string notFound = "Character Reference " + reference + " not found or not connected";
  const int16 found = FindConnected(reference);
  if (found < 0) {
    call.fail(notFound);
    return false;
  }
  const std::string name = house_.sessions.SessionRef[found];
  auto options = static_cast<int16>(call.options | option::ConnectedOnly | (stay ? option::LookUpOnly : 0));
  int16 channel = call.outchannel;
  const int16 session =
      house_.sessionRoutines.SetCharacter(name, options, call.ErrorDescription, call.rvar, channel);  // PUMP
  call.options = static_cast<int16>(call.options | (options & (option::AbortAll | option::AbortBlock)));
  if (!HonourAborts(call)) return false;
  if (call.ErrorDescription == "ER1") {
    call.fail(notFound);
    return false;
  }
  if (!call.ErrorDescription.empty()) {
    call.next = Flow::Trace;
    return false;
  }
  call.outchannel = session;
  target = {session, session, false};
  call.owner = call.definitionOwner = house_.script.SocketOwner[session];
  return true;
}

int16 GameText::FindConnected(const std::string& reference) const {
  for (int16 i = 0; i <= house_.sessions.SessionHigh; ++i) {
    if (house_.platform.sockets.Connected(i) && StartsWithText(house_.sessions.SessionRef[i], reference)) return i;
  }
  return -1;
}

// True when the text was an alias, or failed as one: call.next tells what comes.
bool GameText::RunAlias(CommandCall& call) {
  if (house_.sessions.AliasEnabled[call.outchannel] == 0) return false;
  std::string_view name = call.P[1];
  const bool backwards = name.starts_with("..");
  if (backwards) name.remove_prefix(1);
  if (name.empty()) return false;
  const int16 row = house_.symbols.FindAlias(name, call.owner, true);
  if (row == 0) return false;
  const std::string body = house_.script.AliasValues[row];
  const int16 definedIn = house_.script.AliasBuffers[row];
  const bool stops = (house_.script.AliasFlags[row] & BreakpointFlag) != 0;
  if (name.front() == '.') {
    if (stops) house_.debugger.Request(AliasBreak);
    CallWalk(call, body, backwards, definedIn);  // PUMP: row is dead
    return true;
  }
  Parameters arguments;
  if (!AliasArguments(call, arguments)) return true;  // PUMP
  if (stops) house_.debugger.Request(AliasBreak);
  if (RunNested(call, body, arguments, call.outchannel, DepthBack::BeforeAborts)) return true;  // PUMP: row is dead
  if (call.next == Flow::Trace) house_.upcalls.errors.DisplayErrorFile(call.ErrorDescription, definedIn);
  return true;
}

bool GameText::AliasArguments(CommandCall& call, Parameters& arguments) {
  if (call.part < 2) return true;
  std::string all;
  for (int16 i = 2; i <= call.part; ++i) {
    std::string argument = call.P[i];
    if (NeedsExpansion(argument) && !ExpandText(call, argument)) return false;
    all += argument;
    all += ' ';
    arguments.Set(i - 1, std::move(argument));
  }
  arguments.Set(0, std::move(all));
  return true;
}

bool GameText::JoinText(CommandCall& call, std::string& text) {
  for (int16 i = 1; i <= call.part; ++i) {
    std::string piece = call.P[i];
    if (!ExpandText(call, piece)) return false;
    if (i > 1) text += ' ';
    text += piece;
  }
  text = LTrim(text);
  return true;
}

// For lines that the player shall see in the entry line first. False when the line ends there.
bool GameText::PlaceInEntry(CommandCall& call, const std::string& text) {
  const bool place = call.has(option::PlaceInEntry);
  if (place) {
    const bool shown = house_.buffers.CurrentBuffer == buffer::EntryLine;
    if (shown) {
      house_.buffers.EntryBox.SetText(text);  // with the caret at the beginning
    } else {
      house_.buffers.BufferText[buffer::EntryLine] = text;
      house_.buffers.BufferCaret[buffer::EntryLine] = 0;
    }
  }
  if (call.has(option::DoNotSend)) return false;
  if (place) house_.upcalls.screens.SimulateEnter();
  return true;
}

void GameText::Send(CommandCall& call, const std::string& text, const Target& target) {
  for (int16 session = target.First; session <= target.Last; ++session) {
    WriteLog(call, session, text);
    if (!Deliver(call, session, text, target)) return;  // PUMP
    FlushLog(call, session);
  }
}

// False: the line ends here.
bool GameText::Deliver(CommandCall& call, int16 session, const std::string& text, const Target& target) {
  if (!text.empty() && house_.options.DisplayCommandsInOutput) Display(session, text);
  const Sockets& sockets = house_.platform.sockets;
  if (!target.All && !sockets.Connected(session) && !NotConnected(call, session, text)) return false;  // PUMP
  if (!sockets.Connected(session)) return true;
  Record(session, text);
  Write(session, text);  // PUMP
  return true;
}

bool GameText::IsLogged(int16 session) const {
  return house_.sessions.LogOpen[session] != 0 && house_.options.OutputLog &&
         house_.sessions.LogEntriesEnabled[session] != 0;
}

void GameText::WriteLog(CommandCall& call, int16 session, const std::string& text) {
  if (!IsLogged(session)) return;
  try {
    house_.logs.WriteLog(session, text);
  } catch (const std::exception& fault) {
    LogFailed(call, fault);
  }
}

// Behind the text, since a slow disk must not keep it from the game; and now, since a disk that is full is to be known
// at the line that was typed and not when the game answers.
void GameText::FlushLog(CommandCall& call, int16 session) {
  if (!IsLogged(session)) return;
  try {
    house_.logs.Flush(session);
  } catch (const std::exception& fault) {
    LogFailed(call, fault);
  }
}

// A full disk must not keep the player from playing: the log goes off, the line goes on.
void GameText::LogFailed(CommandCall& call, const std::exception& fault) {
  house_.options.OutputLog = false;
  ReportAndGoOn(call, std::string("Error opening the Output Log ") + fault.what());
}

void GameText::Display(int16 session, const std::string& text) {
  house_.windows.Queue(session, text + "\r\n");
  house_.windows.DisplayOutputBuffer(session);
}

// Asks whether to connect, or tells that the text went nowhere. False: the line ends here.
bool GameText::NotConnected(CommandCall& call, int16 session, const std::string& text) {
  const std::string name = house_.sessions.SessionRef[session];
  if (name.empty()) {
    house_.upcalls.speaker.Answer("Not connected.", Incoming);
    house_.platform.face.Beep();
    if (!IsBlank(text)) AppendErrorLog(house_.buffers, "\r\nText entered when not connected:  " + text);
    return true;
  }
  if (house_.upcalls.prompter.MsgBox("Would you like to connect " + name + "?", box::YesNo, "Connect") !=
      box::ResultYes)
    return true;
  int16 channel = CurrentSession;
  house_.upcalls.commands.ProcessCommand(std::string(1, house_.options.CommandChar) + "connect", call.options,
                                         call.ErrorDescription, call.rvar, channel);
  if (call.ErrorDescription.empty()) return true;
  call.next = Flow::Leave;
  return false;
}

void GameText::Record(int16 session, const std::string& text) {
  // Kept: a paused recording takes no steps.
  if (house_.sessions.WalkState[session] != walkstate::Recording) return;
  if (house_.sessions.WalkBuffer[session].size() > RecordWarning)
    house_.upcalls.speaker.Answer("Record buffer filling", Incoming);
  house_.sessions.WalkBuffer[session] += text + house_.options.CommandSeparator;
}

void GameText::Write(int16 session, const std::string& text) {
  Platform& platform = house_.platform;
  platform.face.NoteSend(session, text);
  const std::string line = text + house_.options.LineTerminator;
  const bool asUtf8 = house_.sessions.Utf8Seen[session] != 0;
  if (platform.sockets.Write(session, asUtf8 ? line : ToWire(line)) >= 0) return;
  // The connection goes before the box opens: while the player reads, an alarm would fail in the same way and open box
  // upon box, and a new connection could stand in the slot when the box is closed.
  const int error = platform.sockets.LastError(session);
  house_.sessionRoutines.DropConnection(session);
  house_.upcalls.prompter.MsgBox(
      "An error occurred during the transmission to the Mud.  Error = " + std::to_string(error), box::OkOnly,
      "Corvid");  // PUMP
}

}  // namespace corvid
