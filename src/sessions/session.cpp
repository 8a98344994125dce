// SPDX-License-Identifier: GPL-3.0-or-later
// What holds for every session: its slot, its title, the events of its socket.
#include "sessions/session.h"

#include <cstdio>

#include "core/text.h"
#include "core/trap.h"
#include "files/buffers.h"
#include "files/saving.h"
#include "script/scanner.h"
#include "script/symbols.h"

namespace corvid {

namespace {

std::string DateTimeText(const DateTime& at) {
  char text[40];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", at.Year % 10000, at.Month, at.Day, at.Hour,
                at.Minute, at.Second);
  return text;
}

template <typename... Tables>
void ResizeAll(int16 i, Tables&... tables) {
  (tables.Resize(i), ...);
}

}  // namespace

Sessions::Sessions(ScriptState& script, OptionsState& options, SessionState& sessions, BufferState& buffers,
                   Symbols& symbols, Scanner& scanner, Buffers& scriptFiles, Saving& saving, CharacterFile& characters,
                   OutputWindows& output, Logs& logs, Receive& receive, Platform& platform, Upcalls& upcalls)
    : script_(script),
      options_(options),
      sessions_(sessions),
      buffers_(buffers),
      symbols_(symbols),
      scanner_(scanner),
      scriptFiles_(scriptFiles),
      saving_(saving),
      characters_(characters),
      output_(output),
      logs_(logs),
      receive_(receive),
      platform_(platform),
      upcalls_(upcalls) {}

void Sessions::ResizeConnections(int16 i) {
  const bool first = !sessions_.EditViewPortR[0];
  if (!first && i <= sessions_.EditViewPortR.UBound()) return;
  const int16 from = first ? int16{0} : static_cast<int16>(sessions_.EditViewPortR.UBound() + 1);
  ResizeAll(i, script_.SocketOwner, script_.CurrentClass, openFlags_, sessionBefore_, openings_);
  ResizeAll(i, sessions_.SessionMud, sessions_.SessionName, sessions_.SessionRef, sessions_.MudFolder,
            sessions_.TriggerEnabled, sessions_.AliasEnabled, sessions_.KeyEnabled, sessions_.LogEntriesEnabled,
            sessions_.MspOn, sessions_.Utf8Seen, sessions_.ScriptsLoaded, sessions_.LogOpen);
  ResizeAll(i, sessions_.PartialLine, sessions_.ReadTimerLoaded, sessions_.OutputBuffer, sessions_.GagFlags,
            sessions_.GagLines, sessions_.GagNotice, sessions_.TextArrived, sessions_.HistoryLines,
            sessions_.HistoryPos, sessions_.PassThruPattern, sessions_.WalkState, sessions_.WalkBuffer,
            sessions_.EditViewPortR, sessions_.editViewportT);
  int error = 0;
  for (int16 slot = from; slot <= i; ++slot) {
    sessions_.GagLines[slot] = -1;
    for (Table<char>* enabled :
         {&sessions_.TriggerEnabled, &sessions_.AliasEnabled, &sessions_.KeyEnabled, &sessions_.LogEntriesEnabled})
      (*enabled)[slot] = 1;
    output_.CreateViewports(slot);
    try {
      platform_.sockets.Create(slot);
    } catch (const Fault& fault) {
      error = fault.Number();
    }
  }
  sessions_.SessionHigh = i;
  if (first) output_.CurrentViewPort(script_.CurrentSocket);
  if (error != 0)
    upcalls_.errors.ShowError("Error initializing Socket Control, err = " + std::to_string(error));  // PUMP
}

void Sessions::SetMud(int16 socket, int16 MudIndex) {
  const bool known = MudIndex > 0 && MudIndex <= sessions_.CharacterCount;
  script_.CurrentSocket = socket;
  script_.CurrentOwner = known ? MudIndex : int16{0};
  script_.SocketOwner[socket] = script_.CurrentOwner;
  sessions_.SessionMud[socket] = known ? sessions_.MudName[MudIndex] : "";
  sessions_.SessionName[socket] = known ? sessions_.CharacterName[MudIndex] : "";
  sessions_.SessionRef[socket] = known ? sessions_.CharacterRef[MudIndex] : "";
  ShowTitle();  // first: what a console writes of a window that comes to the front stands under its title
  output_.CurrentViewPort(socket);
  auto& values = script_.SystemValues;
  values[sysvar::SOCKET] = std::to_string(socket);
  values[sysvar::CHAR] = sessions_.SessionName[socket];
  values[sysvar::MUDNAME] = sessions_.SessionMud[socket];
  values[sysvar::Reference] = sessions_.SessionRef[socket];
  values[sysvar::PASSWORD] = known ? sessions_.Password[MudIndex] : "";
  values[sysvar::MUDFOLDER] = sessions_.MudFolder[socket];
  values[sysvar::CONNECTED] = platform_.sockets.Connected(socket) ? "1" : "0";
}

bool Sessions::IsQuickConnect(int16 Index) const {
  return sessions_.SessionName[Index] == "QUICKCONNECT";
}

void Sessions::ShowTitle() {
  const int16 active = script_.CurrentSocket;
  const std::string& reference = sessions_.SessionRef[active];
  if (platform_.sockets.Connected(active)) {
    // Kept: no closing bracket. Players' screen reader scripts look for this text.
    platform_.face.SetTitle("Corvid [" + (IsQuickConnect(active) ? sessions_.SessionMud[active] : reference));
  } else {
    platform_.face.SetTitle("Corvid " + reference + " [Not connected]");
  }
}

void Sessions::UpdateTitle() {
  ShowTitle();
  platform_.face.BringForward();
}

void Sessions::NoteState(int16 Index, const std::string& state) {
  platform_.face.NoteSession(Index, state);
}

int16 Sessions::FindChannel(int16 ownedBy) const {
  return saving_.FindChannel(ownedBy);
}

int16 Sessions::Ask(const std::string& text, const std::string& title) {
  return upcalls_.prompter.MsgBox(text, box::YesNo, title);
}

void Sessions::RunAlias(const std::string& name, int16 Index) {
  scanner_.ExecuteAlias(name, Index, script_.SocketOwner[Index]);  // PUMP
}

void Sessions::DisconnectAndTell(int16 Index) {
  const int error = platform_.sockets.Disconnect(Index);
  NoteState(Index, "closed");
  if (error != 0) upcalls_.errors.ShowError("Unable to disconnect.  Error " + std::to_string(error));  // PUMP
}

void Sessions::DropConnection(int16 Index) {
  platform_.sockets.Disconnect(Index);
  NoteState(Index, "closed");
  NoteConnected(Index);
}

void Sessions::CloseMud(int16 Index) {
  if (!platform_.sockets.Connected(Index)) return;
  const int32 opening = openings_[Index];
  if (Ask("You are currently connected to the Mud. If you disconnect without first exiting the Mud normally, you may "
          "lose your char's equipment or have ...",
          "Disconnect Verification ") == box::ResultNo)  // PUMP
    return;
  if (openings_[Index] != opening) return;                           // the answer was about another connection
  if (platform_.sockets.Connected(Index)) DisconnectAndTell(Index);  // PUMP
  NoteConnected(Index);
  UpdateTitle();
}

void Sessions::NoteConnected(int16 Index) {
  if (Index == script_.CurrentSocket)
    script_.SystemValues[sysvar::CONNECTED] = platform_.sockets.Connected(Index) ? "1" : "0";
}

void Sessions::OnConnect(int16 Index) {
  Trap trap{upcalls_.errors, "OnConnect", {std::to_string(Index)}};
  trap.Step([&] {
    NoteConnected(Index);
    NoteState(Index, "connected");
    UpdateTitle();
  });
  trap.Step([&] {
    const int16 row = script_.SocketOwner[Index];
    if (row > 0 && row <= sessions_.CharacterCount) sessions_.LastConnected[row] = DateTimeText(platform_.clock.Now());
    characters_.writeMudFile();  // PUMP
  });
  trap.Step([&] { FinishConnect(Index); });
}

void Sessions::OnDisconnect(int16 Index) {
  Trap trap{upcalls_.errors, "OnDisconnect", {std::to_string(Index)}};
  trap.Step([&] { DisconnectAndTell(Index); });
  trap.Step([&] { RunAlias("OnDisconnect", Index); });
  trap.Step([&] {
    NoteConnected(Index);
    if (Index == script_.CurrentSocket) UpdateTitle();
  });
  trap.Step([&] { output_.AppendNow(Index, "Connection to Mud was closed."); });
  trap.Step([&] { upcalls_.speaker.SpeakOut("Connection closed", Channel::System, 0); });
}

void Sessions::OnRead(int16 Index) {
  receive_.sockTelnet_OnRead(Index);
}

void Sessions::OnError(int16 Index) {
  Trap trap{upcalls_.errors, "OnError", {std::to_string(Index)}};
  trap.Step([&] {
    platform_.sockets.Disconnect(Index);
    NoteConnected(Index);
    NoteState(Index, "closed");
    UpdateTitle();
  });
  trap.Step([&] {
    const int16 row = script_.SocketOwner[Index];
    const bool known = row > 0 && row <= sessions_.CharacterCount;
    upcalls_.errors.ShowError("Unable to connect to " + (known ? sessions_.HostName[row] : std::string()));  // PUMP
  });
}

}  // namespace corvid
