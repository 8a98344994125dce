// SPDX-License-Identifier: GPL-3.0-or-later
// The menu of connections, and what of the menu Edit is shown in dialogs.
#include "core/upcalls.h"
#include "dialogs/character_list.h"
#include "dialogs/quick_connect.h"
#include "dialogs/variable_list.h"
#include "input/menu_call.h"
#include "platform/platform.h"
#include "script/script_state.h"
#include "sessions/session.h"

namespace corvid {

namespace {

// To another session, or to the place without a character where there is none.
void LeaveSession(MenuHouse& house) {
  for (const char* next : {"NEXT", "GLOBAL"}) {
    int16 options = option::Interactive;
    int16 session = CurrentSession;
    std::string problem;
    Parameters rvar;
    house.sessionRoutines.SetCharacter(next, options, problem, rvar, session);  // PUMP
    if (problem.empty()) return;
  }
}

}  // namespace

void menuitem::CharacterSetup(MenuCall& call) {
  call.list.CloseListBox();
  call.house.characters.MaintainCharacters();  // PUMP
}

void menuitem::ConnectQuickly(MenuCall& call) {
  call.list.CloseListBox();
  call.house.quickConnect.Show();  // PUMP
}

void menuitem::Reconnect(MenuCall& call) {
  call.list.CloseListBox();
  RunMenuCommand(call.house, "connect");  // PUMP
}

void menuitem::ReloadScripts(MenuCall& call) {
  RunAndSay(call, "reload", "Reloaded.");  // PUMP
}

// The player may refuse either question. What happens meanwhile may give the session to another character.
void menuitem::DisconnectCharacter(MenuCall& call) {
  MenuHouse& house = call.house;
  const int16 session = house.script.CurrentSocket;
  const int16 owner = house.script.SocketOwner[session];
  const auto connected = [&] { return house.platform.sockets.Connected(session); };
  if (!connected()) return house.upcalls.speaker.Answer("Character not connected. ", Channel::Incoming);
  call.list.CloseListBox();
  house.sessionRoutines.CloseMud(session);  // PUMP
  if (connected() || house.script.SocketOwner[session] != owner) return;
  const int16 answer = house.upcalls.prompter.MsgBox(
      "Would you like to close the character's  window and unload triggers, aliases, keys, and other settings from "
      "memory? ",
      box::YesNo, "Close Character");  // PUMP
  if (answer != box::ResultYes || house.script.SocketOwner[session] != owner) return;
  if (!house.sessionRoutines.UnloadSession(session)) return;       // PUMP
  if (house.script.CurrentSocket == session) LeaveSession(house);  // PUMP
}

void menuitem::EditVariables(MenuCall& call) {
  call.list.CloseListBox();
  call.house.variables.MaintainVariables();  // PUMP
}

}  // namespace corvid
