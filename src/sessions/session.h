// SPDX-License-Identifier: GPL-3.0-or-later
// A session's life: opening, connecting, switching, closing, and the scripts and definitions that come and go with it.
#pragma once

#include <string>

#include "core/parameters.h"
#include "core/table.h"
#include "core/upcalls.h"
#include "platform/platform.h"
#include "script/options_state.h"
#include "script/script_state.h"
#include "sessions/character_file.h"
#include "sessions/logs.h"
#include "sessions/output.h"
#include "sessions/receive.h"
#include "sessions/session_state.h"

namespace corvid {

class Buffers;
class Saving;
class Scanner;
class Symbols;
struct BufferState;

namespace opening {  // flags of OpenMud and LoadCharacterSets
inline constexpr int16 Offline = 1, SkipSets = 2, AskBeforeLoading = 4;
}

class Sessions final : public SocketEvents {
 public:
  Sessions(ScriptState& script, OptionsState& options, SessionState& sessions, BufferState& buffers, Symbols& symbols,
           Scanner& scanner, Buffers& scriptFiles, Saving& saving, CharacterFile& characters, OutputWindows& output,
           Logs& logs, Receive& receive, Platform& platform, Upcalls& upcalls);

  // Opens a slot for a row of the character table, makes it the active session (CurrentSocket) and starts to connect,
  // or with Offline loads its scripts. 0 on success, -1 on failure; failures are told to the player. The sets of an
  // online session are loaded when the connection stands (FinishConnect). May pump events.
  int16 OpenMud(int16 MudIndex, int16 flags);
  // The part of connecting that comes after the connection stands, once for each connection: sets, "OnConnect",
  // "login", "SessionOff" and "SessionOn". Does nothing while the socket is not connected. May pump events.
  void FinishConnect(int16 Index);
  // Makes a slot the active session and binds a row to it (0: no character).
  void SetMud(int16 socket, int16 MudIndex);
  // Asks, then disconnects a connected session. May pump events.
  void CloseMud(int16 Index);
  // Disconnects at once, without a question and without the events of a server that closes. Never pumps.
  void DropConnection(int16 Index);
  // Finds a session by the beginning of its reference ("" and "NEXT": the next one; "GLOBAL": slot 0) and makes it the
  // active one. option::LookUpOnly returns it without switching; option::ConnectedOnly takes connected ones only.
  // Returns the session, also in DefChannel2; -1 with ErrorDescription "ER1" when there is none. May pump events.
  int16 SetCharacter(const std::string& CName, int16& options, std::string& ErrorDescription, Parameters& rvar,
                     int16& DefChannel2);
  // Loads the scripts of the session's character and opens its log. May pump events.
  void LoadCharacterSets(int16 Index, int16 flags);
  // Forgets all definitions and scripts of a character, after asking what to save. The tables keep blank rows until
  // CompressCommand. False, with everything still there, when the disk refused what was to be saved; the player has
  // been told. May pump events.
  bool RemoveCharacter(int16 ownedBy);
  // True while a session has the row's character; true while its connection stands or is being made.
  bool IsLoaded(int16 MudIndex) const;
  bool IsConnected(int16 MudIndex) const;
  // Forgets the character of a session that is not connected, clears its window and leaves the slot unused. False, with
  // the session as it was, when RemoveCharacter refused or it has been connected meanwhile. May pump events.
  bool UnloadSession(int16 Index);
  // To be called when the row was edited: its sessions go on under the new names, and keep their files in the folder of
  // the new Mud.
  void CharacterEdited(int16 MudIndex);
  // Makes i the highest slot: every per-session array, its socket and its viewports. 0 at the start. A socket that
  // cannot be made is told and the program goes on. May pump events then.
  void ResizeConnections(int16 i);
  // Title of the main window by the active session's state; the window comes forward.
  void UpdateTitle();
  // Writes the character table to its file. A failure is told to the player and the table stays. May pump events.
  void SaveCharacters() { characters_.writeMudFile(); }
  // Slot of a character, -1 for none.
  int16 FindChannel(int16 ownedBy) const;

  void OnConnect(int16 Index) override;
  void OnDisconnect(int16 Index) override;
  void OnRead(int16 Index) override;
  void OnError(int16 Index) override;

 private:
  static constexpr int16 NoSlot = -1;

  bool IsQuickConnect(int16 Index) const;
  bool SameCharacter(int16 slot, int16 MudIndex) const;
  int16 FindSlot(int16 MudIndex, int16 flags) const;
  bool RefuseConnected(int16 MudIndex, int16 flags);
  int16 TakeSlot(int16 MudIndex, int16 flags);
  void SetTarget(int16 MudIndex);
  void PrepareSlot(int16 slot, int16 MudIndex);
  bool StartConnecting(int16 slot);
  int16 FindSession(const std::string& name, int16 options) const;
  int16 NextSession(int16 options) const;
  void SwitchTo(int16 slot);
  void RunAlias(const std::string& name, int16 Index);
  void TellSwitch(int16 before, int16 now);
  void DisconnectAndTell(int16 Index);
  void ShowTitle();
  void NoteConnected(int16 Index);
  void NoteState(int16 Index, const std::string& state);
  std::string CharacterFolder(int16 MudIndex) const;
  std::string SetFile(int16 MudIndex, const std::string& ending) const;
  bool StillOwns(int16 Index, int16 MudIndex) const { return script_.SocketOwner[Index] == MudIndex; }
  void LoadSets(int16 Index, int16 flags);
  void Load(int16 Index, const std::string& path);
  void LoadOrCreate(int16 Index, const std::string& path, const std::string& firstLine);
  void LoadCharSet(int16 Index, const std::string& path, const std::string& firstLine, int16 flags);
  void LoadTabWords(int16 owner, const std::string& path);
  void PrepareLogsFolder();
  bool ScriptsChanged(int16 ownedBy) const;
  bool SaveChanges(int16 ownedBy);
  bool KeepVariables(int16 ownedBy);
  bool WriteVariables(int16 ownedBy);
  int16 Ask(const std::string& text, const std::string& title);

  ScriptState& script_;
  OptionsState& options_;
  SessionState& sessions_;
  BufferState& buffers_;
  Symbols& symbols_;
  Scanner& scanner_;
  Buffers& scriptFiles_;
  Saving& saving_;
  CharacterFile& characters_;
  OutputWindows& output_;
  Logs& logs_;
  Receive& receive_;
  Platform& platform_;
  Upcalls& upcalls_;
  Table<int16> openFlags_;      // flags of OpenMud, for the moment when the connection stands
  Table<int16> sessionBefore_;  // session that was active when the slot was opened
  Table<int32> openings_;       // how often the slot was opened: a step begun for an older opening ends
  std::string classOn_;         // reference whose class SetCharacter switched on last
};

}  // namespace corvid
