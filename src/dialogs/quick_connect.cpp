// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/quick_connect.h"

#include "core/keys.h"
#include "core/text.h"

namespace corvid {

namespace {

constexpr const char* QuickMud = "MUD";
constexpr const char* QuickName = "QUICKCONNECT";

}  // namespace

QuickConnect::QuickConnect(SessionState& sessions, CharacterFile& characters, GenDialog& dialog, Upcalls& upcalls,
                           std::function<void(int16 row)> open, std::function<bool(int16 row)> inUse)
    : sessions_(sessions),
      characters_(characters),
      dialog_(dialog),
      upcalls_(upcalls),
      open_(std::move(open)),
      inUse_(std::move(inUse)) {}

// The question takes the place of the list, so the list is shown anew whatever the answer.
void QuickConnect::AskDelete(const MudChoice& mud) {
  if (TellInUse(mud)) return;  // PUMP
  const int16 answer = upcalls_.prompter.MsgBox(
      "Are you sure you want to delete " + mud.MudName + " " + mud.HostName + " and all characters used in this Mud?",
      box::YesNo, "Delete Character");  // PUMP
  if (answer != box::ResultYes || TellInUse(mud)) return;
  for (int16 row = 1; row <= sessions_.CharacterCount; ++row)
    if (IsOfMud(sessions_, row, mud)) ClearCharacter(sessions_, row);
  characters_.writeMudFile();  // PUMP
}

// A session reads its character's row as long as it lives.
bool QuickConnect::TellInUse(const MudChoice& mud) {
  for (int16 row = 1; row <= sessions_.CharacterCount; ++row) {
    if (!IsOfMud(sessions_, row, mud) || !inUse_(row)) continue;
    const std::string& reference = sessions_.CharacterRef[row];
    upcalls_.prompter.MsgBox((reference.empty() ? mud.MudName : reference) +
                                 " is in use. Disconnect and unload the character before you delete it.",
                             box::OkOnly, "Delete Character");  // PUMP
    return true;
  }
  return false;
}

void QuickConnect::Connect(const MudChoice& choice) {
  int16 row = 0;
  for (int16 at = 1; at <= sessions_.CharacterCount && row == 0; ++at) {
    if (sessions_.MudName[at] == QuickMud && sessions_.CharacterName[at] == QuickName && IsOfMud(sessions_, at, choice))
      row = at;
  }
  if (row == 0) {
    row = AddCharacter(sessions_);
    sessions_.MudName[row] = QuickMud;
    sessions_.CharacterName[row] = QuickName;
    sessions_.HostName[row] = choice.HostName;
    sessions_.Port[row] = choice.Port;
  }
  open_(row);
}

void QuickConnect::Show() {
  std::vector<MudChoice> choices;
  MudChoice chosen;
  int32 toDelete = -1;
  const auto fromList = [&] {
    const int32 row = dialog_.Control(ControlKind::List, 1).ListIndex;
    if (row < 0) return false;
    chosen = choices.at(static_cast<std::size_t>(row));
    dialog_.End(FromList);
    return true;
  };
  const auto handler = [&](const DialogEventArgs& at) {
    if (at.Kind == ControlKind::Button && at.Event == DialogEvent::Click) {
      if (at.Index != 1) {
        dialog_.End(2);
        return;
      }
      const std::string host = Trim(dialog_.Control(ControlKind::TextBox, 1).Text);
      const std::string port = Trim(dialog_.Control(ControlKind::TextBox, 2).Text);
      if (host.empty() && port.empty() && fromList()) return;
      chosen = {QuickMud, host, port};
      dialog_.End(1);
    } else if (at.Kind == ControlKind::List && at.Event == DialogEvent::DoubleClick) {
      fromList();
    } else if (at.Kind == ControlKind::List && at.Event == DialogEvent::KeyDown && at.KeyOrState == keycode::Delete) {
      at.KeyOrState = 0;
      toDelete = dialog_.Control(ControlKind::List, 1).ListIndex;
      if (toDelete >= 0) dialog_.End(0);
    }
  };
  for (;;) {
    toDelete = -1;
    choices = MudChoices(sessions_);
    dialog_.Form_Init(QuickName, "Quick Connect", handler);
    dialog_.MakeLabel(300, 500, 295, 3000, "Select Mud");
    dialog_.MakeList(-200, 500, 2500, 6000, MudRows(choices), 0, "Mud List");
    dialog_.MakeLabel(-300, 500, 295, 1500, "Host Name");
    dialog_.MakeTextBox(0, -200, 295, 4000, "");
    dialog_.MakeLabel(-200, 500, 295, 1500, "Port Number");
    dialog_.MakeTextBox(0, -200, 295, 1500, "");
    dialog_.MakeCommand(-400, 500, 400, 1500, "Connect", GenDialog::DefaultButton);
    dialog_.MakeCommand(0, -400, 400, 1800, "Cancel    Esc", GenDialog::CancelButton);
    dialog_.SetCommandButtons(1, 2);
    dialog_.ShowForm(500, 500);
    if (toDelete < 0) break;
    AskDelete(choices.at(static_cast<std::size_t>(toDelete)));
  }
  if (dialog_.GDResult != 1 && dialog_.GDResult != FromList) return;
  if (chosen.HostName.empty()) return upcalls_.errors.ShowError("A host name is needed to connect.");
  if (chosen.Port.empty()) return upcalls_.errors.ShowError("A port number is needed to connect.");
  Connect(chosen);
}

}  // namespace corvid
