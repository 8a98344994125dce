// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/character_form.h"

#include <array>

#include "core/text.h"

namespace corvid {

namespace {

struct FlagCheck {  // in order of creation
  int16 Flag;
  const char* Words;
};
constexpr std::array FlagChecks{
    FlagCheck{charflag::AutoLogin, "Auto Login"},
    FlagCheck{charflag::KeepVariables, "Keep Variable Values"},
    FlagCheck{charflag::SimpleControl, "Simple Script Control"},
};
constexpr int16 KnownFlags = charflag::AutoLogin | charflag::KeepVariables | charflag::SimpleControl;

// The name that quick connections have in place of a game's own: no character should live in a game of that name.
constexpr const char* QuickMud = "MUD";

}  // namespace

CharacterFields ReadCharacter(const CharacterTable& characters, int16 row) {
  return {characters.CharacterName[row], characters.CharacterRef[row], characters.MudName[row],
          characters.HostName[row],      characters.Port[row],         characters.Notes[row],
          characters.Password[row],      characters.CharFlags[row]};
}

void WriteCharacter(CharacterTable& characters, int16 row, const CharacterFields& fields) {
  characters.CharacterName[row] = fields.CharacterName;
  characters.CharacterRef[row] = fields.CharacterRef;
  characters.MudName[row] = fields.MudName;
  characters.HostName[row] = fields.HostName;
  characters.Port[row] = fields.Port;
  characters.Notes[row] = fields.Notes;
  characters.Password[row] = fields.Password;
  characters.CharFlags[row] =
      static_cast<int16>((characters.CharFlags[row] & ~KnownFlags) | (fields.CharFlags & KnownFlags));
}

bool CharacterForm::Ask(const std::string& title, TextBoxes first, CharacterFields& fields) {
  for (;;) {
    Build(title, fields);
    dialog_.SetFirstFocus(ControlKind::TextBox, first);
    DialogControl& field = dialog_.Control(ControlKind::TextBox, first);
    field.SelStart = 0;
    field.SelLength = static_cast<int32>(field.Text.size());  // what is typed takes the place of what was wrong
    dialog_.ShowForm(500, 500);                               // PUMP
    if (dialog_.GDResult != 0) return dialog_.GDResult == 1;
    if (platform_.events.Ending() || !platform_.face.PlayerThere()) return false;
  }
}

void CharacterForm::Build(const std::string& title, CharacterFields& fields) {
  muds_ = MudChoices(characters_);
  dialog_.Form_Init("CHARACTER2", title, [this, &fields](const DialogEventArgs& at) { Happened(at, fields); });
  const auto box = [&](const char* label, const std::string& text) {
    dialog_.MakeLabel(-200, 500, 295, 2500, label);
    dialog_.MakeTextBox(0, -200, 295, 4000, text);
  };
  box("Character Name", fields.CharacterName);
  box("Character Ref.", fields.CharacterRef);
  dialog_.MakeLabel(-300, 500, 295, 3000, "Select Mud");
  dialog_.MakeList(-100, 500, 1500, 6000, MudRows(muds_), MudRow(fields), "Mud List");
  box("Mud Name", fields.MudName);
  box("Host Name", fields.HostName);
  box("Port Number", fields.Port);
  dialog_.MakeLabel(-200, 500, 295, 3000, "Notes and Description");
  dialog_.MakeBox(-100, 500, 900, 6000, fields.Notes);
  dialog_.MakeLabel(-200, 500, 295, 2500, "Password");
  dialog_.MakePassword(0, -200, 295, 4000, fields.Password);
  for (const FlagCheck& check : FlagChecks)
    dialog_.MakeCheck(-200, 500, 295, 5000, (fields.CharFlags & check.Flag) != 0 ? 1 : 0, check.Words);
  dialog_.MakeCommand(-400, 500, 400, 1200, "OK", GenDialog::DefaultButton);
  dialog_.MakeCommand(0, -400, 400, 1200, "Cancel", GenDialog::CancelButton);
  dialog_.SetCommandButtons(1, 2);
}

// What stands in the fields is taken whenever the dialog goes, so that it can be shown again.
void CharacterForm::Happened(const DialogEventArgs& at, CharacterFields& fields) {
  if (at.Kind == ControlKind::Form && at.Event == DialogEvent::Unload) {
    Take(fields);
  } else if (at.Kind == ControlKind::Button && at.Event == DialogEvent::Click) {
    dialog_.End(at.Index);
  } else if (at.Kind == ControlKind::List && at.Event == DialogEvent::Click) {
    FillMud();
  }
}

void CharacterForm::FillMud() {
  const int32 row = dialog_.Control(ControlKind::List, 1).ListIndex;
  if (row < 0) return;
  const MudChoice& mud = muds_.at(static_cast<std::size_t>(row));
  if (!SameText(mud.MudName, QuickMud)) SetText(MudBox, mud.MudName);
  SetText(HostBox, mud.HostName);
  SetText(PortBox, mud.Port);
}

void CharacterForm::SetText(int16 box, const std::string& text) {
  DialogControl& field = dialog_.Control(ControlKind::TextBox, box);
  field.Text = text;
  field.SelStart = static_cast<int32>(text.size());
  field.SelLength = 0;
  dialog_.Refresh(ControlKind::TextBox, box);
}

void CharacterForm::Take(CharacterFields& fields) {
  const auto text = [&](int16 box) { return dialog_.Control(ControlKind::TextBox, box).Text; };
  fields.CharacterName = Trim(text(NameBox));
  fields.CharacterRef = Trim(text(ReferenceBox));
  fields.MudName = Trim(text(MudBox));
  fields.HostName = Trim(text(HostBox));
  fields.Port = Trim(text(PortBox));
  fields.Notes = dialog_.Control(ControlKind::Box, 1).Text;
  fields.Password = text(PasswordBox);
  fields.CharFlags = 0;
  for (std::size_t i = 0; i < FlagChecks.size(); ++i)
    if (dialog_.Control(ControlKind::Check, static_cast<int16>(i + 1)).Value == 1)
      fields.CharFlags = static_cast<int16>(fields.CharFlags | FlagChecks[i].Flag);
}

// The row of the character's own game, so that moving through the list is a choice and reaching it is none.
int32 CharacterForm::MudRow(const CharacterFields& fields) const {
  for (std::size_t i = 0; i < muds_.size(); ++i)
    if (SameText(muds_[i].HostName, fields.HostName) && muds_[i].Port == fields.Port) return static_cast<int32>(i);
  return -1;
}

}  // namespace corvid
