// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/start_order.h"

#include "core/text.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "files/buffer_state.h"
#include "files/buffers.h"
#include "files/saving.h"
#include "files/shipped_files.h"
#include "files/user_folder.h"
#include "platform/platform.h"
#include "script/options_state.h"
#include "script/script_state.h"
#include "script/symbols.h"
#include "sessions/character_file.h"
#include "sessions/logs.h"
#include "sessions/output.h"
#include "sessions/session.h"
#include "sessions/session_state.h"
#include "sessions/timers.h"
#include "sound/sound.h"
#include "speech/speech_settings.h"
#include "speech/speech_state.h"

namespace corvid {

namespace {

constexpr int FirstTick = 500;  // milliseconds until Timer1's first job, so that the window has appeared

constexpr const char* LeaveWarning =
    "You are currently connected to the Mud. If you disconnect without first exiting the Mud normally, you may lose "
    "your char's equipment or have ...";

}  // namespace

bool StartOrder::Form_Load(const StartRequest& request) {
  const StartHouse& c = house_;
  Trap trap{c.upcalls.errors, "Form_Load"};
  // What the other steps stand on: tables, the first slot, the buffers.
  trap.Step([&] { c.symbols.LoadSystemVariables(); });
  trap.Step([&] { c.sessions.ResizeConnections(0); });
  trap.Step([&] { c.output.SelectOutputWindow(c.optionsState.ColourDisplay); });
  c.buffers.ResizeBuffers(buffer::NewLines);
  c.bufferState.CurrentBuffer = buffer::EntryLine;

  if (!request.PracticePort.empty()) trap.Step([&] { PreparePractice(request.DataFolder); });
  bool settled = false;
  trap.Step([&] { settled = c.userFolder.Choose(request.DataFolder); });
  if (!settled) return false;
  trap.Step([&] { c.userFolder.SetFolders(); });
  trap.Step([&] { c.speechSettings.UseSavedSpeech(); });
  trap.Step([&] { c.saving.InitializeConfigs(); });
  trap.Step([&] { c.output.SelectOutputWindow(c.optionsState.ColourDisplay); });
  trap.Step([&] { c.output.ResizeForm(); });
  trap.Step([&] { c.sound.DSInit(); });  // PUMP
  trap.Step([&] { c.characters.ReadMudFile(); });
  if (!request.PracticePort.empty()) trap.Step([&] { AddPracticeCharacter(request.PracticePort); });
  trap.Step([&] { LoadStartScripts(); });
  trap.Step([&] { LoadFullImage(); });
  c.scriptState.DefiningBuffer = 0;
  trap.Step([&] { c.speechSettings.StartSpeech(); });
  if (c.platform.events.Ending()) return false;
  c.platform.face.ShowMain();
  trap.Step([&] { c.sessions.UpdateTitle(); });
  if (request.Connect.empty()) {
    if (!GameBegun()) c.upcalls.jobs.StartTimer1(timeraction::OpenCharacters, FirstTick);
  } else {
    trap.Step([&] { ConnectAtOnce(request.Connect); });
  }
  return !c.platform.events.Ending();
}

// A start script may connect a character of its own, and then there is nothing to choose.
bool StartOrder::GameBegun() const {
  const SessionState& sessions = house_.sessionState;
  for (int16 Index = 0; Index <= sessions.SessionHigh; ++Index)
    if (!sessions.SessionRef[Index].empty()) return true;
  return false;
}

// A newcomer is asked nothing: the practice game's own folder is filled from the shipped files and kept as new as they
// are, with speech set up.
void StartOrder::PreparePractice(const std::string& folder) {
  const StartHouse& c = house_;
  if (folder.empty()) return;
  Files& files = c.platform.files;
  files.CreateFolder(folder);
  Trap trap{c.upcalls.errors, "PreparePractice", {folder}};
  trap.Step([&] { RefreshShippedFiles(files, c.platform.places.AppFolder(), folder); });
  if (files.FileExists(folder + "/speech.ini")) return;
  constexpr int16 OwnVoices = 3;
  c.speechState.SpeechType = {0, OwnVoices, OwnVoices, OwnVoices, OwnVoices, OwnVoices, OwnVoices};
  // Words of the game and words about it should differ by ear, and typing should never wait for either.
  c.speechState.VoiceRate = {0, 2, 3, 2, 3, 3, 2};
  c.optionsState.UserDataFolder = folder + "/";
  c.speechSettings.SaveSpeech();
}

// The port is another one each time, so it is set anew; all else of the row is the player's.
void StartOrder::AddPracticeCharacter(const std::string& port) {
  SessionState& table = house_.sessionState;
  int16 row = FindCharacter(table, "practice");
  if (row == 0) {
    row = AddCharacter(table);
    table.MudName[row] = "Magpie Cross";
    table.CharacterRef[row] = "practice";
    table.CharacterName[row] = "practice";
    table.Notes[row] = "The game that comes with Corvid. It runs on this computer alone.";
  }
  table.HostName[row] = "127.0.0.1";
  table.Port[row] = port;
}

void StartOrder::LoadStartScripts() {
  const StartHouse& c = house_;
  int16 outchannel = CurrentSession;
  const std::string path = c.optionsState.UserDataFolder + "start.set";
  if (c.platform.files.FileExists(path)) c.buffers.LoadSet(path, 0, outchannel);
}

void StartOrder::LoadFullImage() {
  const StartHouse& c = house_;
  const std::string path = c.optionsState.UserDataFolder + "full.set";
  if (!c.platform.files.FileExists(path)) return;
  Prompter& ask = c.upcalls.prompter;
  int16 outchannel = CurrentSession;
  if (ask.MsgBox("Would you like to use the previously saved Full.set file?", box::YesNo, "Corvid") == box::ResultYes) {
    c.buffers.LoadSet(path, 0, outchannel);
  } else if (ask.MsgBox("Would you like to delete the previously saved Full.set file?", box::YesNo, "Delete") ==
             box::ResultYes) {
    c.platform.files.Remove(path);
  }
}

void StartOrder::ConnectAtOnce(const std::string& reference) {
  const StartHouse& c = house_;
  int16 options = option::Interactive;
  int16 outchannel = CurrentSession;
  std::string ErrorDescription;
  Parameters rvar;
  c.scriptState.CommandDepth = 0;
  c.upcalls.commands.ProcessCommand(c.optionsState.CommandChar + ("connect {" + reference + "}"), options,
                                    ErrorDescription, rvar, outchannel);
}

bool StartOrder::MayDisconnect() {
  const StartHouse& c = house_;
  for (int16 Index = 0; Index <= c.sessionState.SessionHigh; ++Index) {
    if (mandatory_ || !c.platform.sockets.Connected(Index)) continue;
    if (c.upcalls.prompter.MsgBox(LeaveWarning, box::YesNo, "Disconnect Verification ") != box::ResultYes &&
        !mandatory_)  // PUMP
      return false;
  }
  return true;
}

// False when the disk refused what was to be saved; the player has been told.
bool StartOrder::SaveCharacter(int16 Index) {
  const StartHouse& c = house_;
  const SessionState& sessions = c.sessionState;
  const int16 owner = c.scriptState.SocketOwner[Index];
  if (owner <= 0 || sessions.SessionRef[Index].empty()) return true;
  const std::string ref = sessions.SessionRef[Index];
  bool saved = true;
  if ((sessions.CharFlags[owner] & charflag::SimpleControl) != 0 &&
      MayKeep("Would you like to save any changes that you have made to " + ref + " or other settings?", "Corvid"))
    saved = c.saving.WriteAltMethod(owner, c.saving.CharacterFile(Index, "-char.set"), false);  // PUMP
  return SaveVariablesOf(Index, owner, ref) && saved;
}

bool StartOrder::SaveVariablesOf(int16 Index, int16 owner, const std::string& ref) {
  const StartHouse& c = house_;
  if ((c.sessionState.CharFlags[owner] & charflag::KeepVariables) != 0) return c.saving.SaveVariables(owner);
  const std::string variables = c.saving.CharacterFile(Index, "-var.set");
  if (!c.platform.files.FileExists(variables)) return true;
  if (MayKeep("Would you like to save your variables again for " + ref + "?", "Save Variables"))
    return c.saving.SaveVariables(owner);
  c.platform.files.Remove(variables);
  return true;
}

// A player who has gone cannot say no, and loses nothing.
bool StartOrder::MayKeep(const std::string& question, const std::string& title) {
  const StartHouse& c = house_;
  if (!c.platform.face.PlayerThere()) return true;
  return c.upcalls.prompter.MsgBox(question, box::YesNo, title) == box::ResultYes ||
         !c.platform.face.PlayerThere();  // PUMP
}

// What could not be saved ends with the program, so the player may stay and make room on the disk.
bool StartOrder::SaveCharacters() {
  const StartHouse& c = house_;
  bool saved = true;
  for (int16 Index = 0; Index <= c.sessionState.SessionHigh; ++Index) {
    Trap trap{c.upcalls.errors, "quit", {std::to_string(Index)}};
    trap.Step([&] { saved = SaveCharacter(Index) && saved; });
  }
  // What AutoSave would write by the way in the next minutes must not be lost with the end.
  if (c.optionsState.AutoSave) saved = c.saving.SaveChangedScripts("quit") && saved;
  if (saved || mandatory_) return true;
  return c.upcalls.prompter.MsgBox("Not everything could be saved. Would you like to leave all the same?", box::YesNo,
                                   "Corvid") == box::ResultYes ||
         mandatory_;  // PUMP
}

void StartOrder::quit(bool Mandatory) {
  const StartHouse& c = house_;
  mandatory_ = mandatory_ || Mandatory;  // also while an earlier call waits for an answer
  if (quitting_) return;
  quitting_ = true;
  if (!MayDisconnect() || !SaveCharacters()) {
    quitting_ = false;
    return;
  }
  Form_Unload();
  c.platform.events.End(0);
}

// Also in the midst of an earlier call that waits for an answer, which will not come.
void StartOrder::SaveAtOnce() {
  mandatory_ = true;
  quitting_ = true;
  SaveCharacters();
  Form_Unload();
}

void StartOrder::Form_Unload() {
  const StartHouse& c = house_;
  for (int16 Index = 0; Index <= c.sessionState.SessionHigh; ++Index) {
    Trap trap{c.upcalls.errors, "Form_Unload", {std::to_string(Index)}};
    trap.Step([&] {
      if (!c.platform.sockets.Connected(Index)) return;
      const int code = c.platform.sockets.Disconnect(Index);
      if (code != 0) c.upcalls.errors.ShowError("Unable to disconnect. Error " + std::to_string(code));
    });
  }
  c.logs.CloseAll();
}

}  // namespace corvid
