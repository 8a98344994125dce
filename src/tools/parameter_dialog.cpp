// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/parameter_dialog.h"

#include <string>
#include <utility>
#include <vector>

#include "core/parameters.h"
#include "dialogs/gen_dialog.h"

namespace corvid {

namespace {

std::string Row(std::size_t slot, const std::string& value) {
  return "%" + std::to_string(slot) + " " + value;
}

void ShowText(GenDialog& dialog, const std::string& text) {
  DialogControl& box = dialog.Control(ControlKind::TextBox, 1);
  box.Text = text;
  box.SelStart = box.SelLength = 0;
  dialog.Refresh(ControlKind::TextBox, 1);
}

}  // namespace

void MaintainParameters(GenDialog& dialog, Parameters& rvar) {
  std::vector<std::string> values;
  std::vector<std::string> rows;
  for (int16 slot = 0; slot < Parameters::Slots; ++slot) {
    values.push_back(rvar[slot]);
    rows.push_back(Row(static_cast<std::size_t>(slot), rvar[slot]));
  }
  std::size_t chosen = 0;
  const auto handler = [&](const DialogEventArgs& at) {
    if (at.Kind == ControlKind::Button && at.Event == DialogEvent::Click) {
      dialog.End(at.Index);
    } else if (at.Kind == ControlKind::List && at.Event == DialogEvent::Click) {
      chosen = static_cast<std::size_t>(dialog.Control(ControlKind::List, 1).ListIndex);
      ShowText(dialog, values.at(chosen));
    } else if (at.Kind == ControlKind::TextBox && at.Event == DialogEvent::Change) {
      values.at(chosen) = dialog.Control(ControlKind::TextBox, 1).Text;
    } else if (at.Kind == ControlKind::TextBox && at.Event == DialogEvent::LostFocus) {
      // Not at each letter: a screen reader would tell of a list that changes.
      dialog.Control(ControlKind::List, 1).Items.at(chosen) = Row(chosen, values.at(chosen));
      dialog.Refresh(ControlKind::List, 1);
    }
  };
  dialog.Form_Init("DEBUGPARAMS", "View & Modify Parameters", handler);
  dialog.MakeList(300, 500, 3500, 6000, rows, 0, "Parameters");
  dialog.MakeLabel(-300, 500, 295, 6000, "Value");
  dialog.MakeTextBox(-100, 500, 295, 6000, values.front());
  dialog.MakeCommand(-400, 500, 400, 1200, "OK", GenDialog::DefaultButton);
  dialog.MakeCommand(0, -400, 400, 1200, "Cancel", GenDialog::CancelButton);
  dialog.SetCommandButtons(1, 2);
  dialog.ShowForm(500, 500);  // PUMP
  if (dialog.GDResult != 1) return;
  for (int16 slot = 0; slot < Parameters::Slots; ++slot) {
    std::string& value = values[static_cast<std::size_t>(slot)];
    if (value != rvar[slot]) rvar.Set(slot, std::move(value));
  }
}

}  // namespace corvid
