// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/quick_connect.h"

#include <algorithm>

#include "core/keys.h"
#include "core/text.h"

namespace corvid {

namespace {

constexpr const char* QuickMud = "MUD";
constexpr const char* QuickName = "QUICKCONNECT";

}  // namespace

QuickConnect::QuickConnect(SessionState& sessions, CharacterFile& characters, GenDialog& dialog, Upcalls& upcalls,
                           std::function<void(int16 row)> open)
    : sessions_(sessions), characters_(characters), dialog_(dialog), upcalls_(upcalls), open_(std::move(open)) {}

std::vector<std::string> QuickConnect::FillList() {
  choices_.clear();
  names_.clear();
  std::vector<std::string> items;
  for (int16 row = 1; row <= sessions_.CharacterCount; ++row) {
    const Choice choice{sessions_.HostName[row], sessions_.Port[row]};
    if (choice.host.empty() || choice.port.empty()) continue;
    const bool known = std::any_of(choices_.begin(), choices_.end(), [&](const Choice& other) {
      return SameText(other.host, choice.host) && other.port == choice.port;
    });
    if (known) continue;
    choices_.push_back(choice);
    names_.push_back(sessions_.MudName[row]);
    items.push_back(sessions_.MudName[row] + " " + choice.host + " Port " + choice.port);
  }
  return items;
}

// The question takes the place of the list, so the list is shown anew whatever the answer.
bool QuickConnect::AskDelete(int32 row) {
  const Choice choice = choices_.at(static_cast<std::size_t>(row));
  const std::string mud = names_.at(static_cast<std::size_t>(row));
  const int16 answer = upcalls_.prompter.MsgBox(
      "Are you sure you want to delete " + mud + " " + choice.host + " and all characters used in this Mud?",
      box::YesNo, "Delete Character");
  if (answer != box::ResultYes) return false;
  for (int16 at = 1; at <= sessions_.CharacterCount; ++at) {
    if (!SameText(sessions_.HostName[at], choice.host) || sessions_.Port[at] != choice.port) continue;
    for (Table<std::string>* column : {&sessions_.MudName, &sessions_.HostName, &sessions_.Notes, &sessions_.Port,
                                       &sessions_.CharacterName, &sessions_.CharacterRef, &sessions_.Password})
      (*column)[at].clear();
    sessions_.CharFlags[at] = 0;
    sessions_.LastConnected[at].clear();
  }
  characters_.writeMudFile();
  return true;
}

void QuickConnect::Connect(const Choice& choice) {
  int16 row = 0;
  for (int16 at = 1; at <= sessions_.CharacterCount && row == 0; ++at) {
    if (sessions_.MudName[at] == QuickMud && sessions_.CharacterName[at] == QuickName &&
        SameText(sessions_.HostName[at], choice.host) && sessions_.Port[at] == choice.port)
      row = at;
  }
  if (row == 0) {
    row = AddCharacter(sessions_);
    sessions_.MudName[row] = QuickMud;
    sessions_.CharacterName[row] = QuickName;
    sessions_.HostName[row] = choice.host;
    sessions_.Port[row] = choice.port;
  }
  open_(row);
}

void QuickConnect::Show() {
  Choice chosen;
  int32 toDelete = -1;
  const auto fromList = [&] {
    const int32 row = dialog_.Control(ControlKind::List, 1).ListIndex;
    if (row < 0) return false;
    chosen = choices_.at(static_cast<std::size_t>(row));
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
      if (host.empty() && fromList()) return;
      chosen = {host, port};
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
    const std::vector<std::string> items = FillList();
    dialog_.Form_Init(QuickName, "Quick Connect", handler);
    dialog_.MakeLabel(300, 500, 295, 3000, "Select Mud");
    dialog_.MakeList(-200, 500, 2500, 6000, items, 0, "Mud List");
    dialog_.MakeLabel(-300, 500, 295, 1500, "Host Name");
    dialog_.MakeTextBox(0, -200, 295, 4000, "");
    dialog_.MakeLabel(-200, 500, 295, 1500, "Port Number");
    dialog_.MakeTextBox(0, -200, 295, 1500, "");
    dialog_.MakeCommand(-400, 500, 400, 1500, "Connect", GenDialog::DefaultButton);
    dialog_.MakeCommand(0, -400, 400, 1800, "Cancel    Esc", GenDialog::CancelButton);
    dialog_.SetCommandButtons(1, 2);
    dialog_.ShowForm(500, 500);
    if (toDelete < 0) break;
    AskDelete(toDelete);
  }
  if (dialog_.GDResult != 1 && dialog_.GDResult != FromList) return;
  if (chosen.host.empty()) {
    upcalls_.errors.ShowError("A host name is needed to connect.");
    return;
  }
  Connect(chosen);
}

}  // namespace corvid
