// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/variable_list.h"

#include <algorithm>
#include <array>

#include "core/text.h"
#include "core/trap.h"
#include "dialogs/outer_command.h"
#include "files/script_value.h"
#include "script/symbols.h"

namespace corvid {

namespace {

constexpr const char* ListTitle = "View & Set Variables";

// GDResult of the list, by button.
constexpr int16 Done = 1, Cancel = 2, AddOne = 3, Remove = 4, FindText = 6;

struct ListButton {
  const char* Words;
  int16 Result;
};
constexpr std::array ListButtons{ListButton{"Done", Done}, ListButton{"Add", AddOne}, ListButton{"Delete", Remove},
                                 ListButton{"Find   Ctrl-F", FindText}, ListButton{"Cancel", Cancel}};
constexpr int16 DoneButton = 1, CancelButton = 5;

std::string OneLine(const std::string& value) {
  std::string line = value;
  std::replace_if(
      line.begin(), line.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
  return line;
}

// Kept: there is a blank before "(Global)" and none before "(Local)".
std::string Row(char sign, const std::string& name, bool global, const std::string& value) {
  return sign + name + (global ? " (Global)" : "(Local)") + " " + OneLine(value);
}

}  // namespace

VariableList::VariableList(ScriptState& script, const OptionsState& options, const Symbols& symbols, GenDialog& dialog,
                           Platform& platform, Upcalls& upcalls)
    : script_(script), options_(options), symbols_(symbols), dialog_(dialog), platform_(platform), upcalls_(upcalls) {}

std::vector<VariableList::Entry> VariableList::OwnEntries() const {
  std::vector<Entry> entries;
  for (int32 row = 1; row <= script_.VariableCount; ++row) {
    const OwnerId owner = script_.VariableOwners[row];
    const std::string& name = script_.VariableNames[row];
    if (name.empty() || (owner != 0 && owner != script_.CurrentOwner)) continue;
    entries.push_back({name, owner == 0, false, Row('@', name, owner == 0, script_.VariableValues[row])});
  }
  std::sort(entries.begin(), entries.end(),
            [](const Entry& a, const Entry& b) { return CompareText(a.row, b.row) < 0; });
  return entries;
}

// The player's own come first.
std::vector<VariableList::Entry> VariableList::Entries() const {
  std::vector<Entry> entries = OwnEntries();
  const auto own = static_cast<std::ptrdiff_t>(entries.size());
  for (std::size_t i = 0; i < script_.SystemNames.size(); ++i) {
    const std::string& name = script_.SystemNames.at(i);
    if (name.empty()) continue;
    std::string value = i == sysvar::CLIPBOARD ? platform_.face.ClipboardText() : script_.SystemValues.at(i);
    if (i == sysvar::PASSWORD) value.assign(value.size(), '*');
    entries.push_back({name, true, true, Row('%', name, true, value)});
  }
  std::sort(entries.begin() + own, entries.end(),
            [](const Entry& a, const Entry& b) { return CompareText(a.row, b.row) < 0; });
  return entries;
}

void VariableList::Tell(const std::string& text, const std::string& title) {
  upcalls_.prompter.MsgBox(text, box::OkOnly, title);  // PUMP
}

std::string VariableList::Run(const std::string& command) {
  return RunOuterCommand(script_, options_, upcalls_, command, 0);  // PUMP
}

// Gives the button; place is the selected row before and after.
int16 VariableList::ShowList(const std::vector<Entry>& entries, int32& place) {
  std::vector<std::string> rows;
  rows.reserve(entries.size());
  for (const Entry& entry : entries) rows.push_back(entry.row);
  const auto handler = [&](const DialogEventArgs& at) {
    if (at.Kind != ControlKind::Button || at.Event != DialogEvent::Click) return;
    place = dialog_.Control(ControlKind::List, 1).ListIndex;
    dialog_.End(ListButtons.at(static_cast<std::size_t>(at.Index - 1)).Result);
  };
  dialog_.Form_Init("DEBUGVAR", ListTitle, handler);
  dialog_.MakeLabel(300, 500, 295, 3000, "Variables");
  dialog_.MakeList(-200, 500, 4000, 8000, rows, place, "Variables");
  for (const ListButton& button : ListButtons)
    dialog_.MakeCommand(button.Result == Done ? -400 : 0, button.Result == Done ? 500 : -300, 400, 1500, button.Words,
                        0);
  dialog_.SetCommandButtons(DoneButton, CancelButton);
  dialog_.ShowForm(500, 500);  // PUMP
  return dialog_.GDResult;
}

void VariableList::MaintainVariables() {
  Entry selected;
  for (int32 place = 0;;) {
    const std::vector<Entry> entries = Entries();
    place = PlaceOf(entries, selected, place);
    const int16 button = ShowList(entries, place);  // PUMP
    if (button != AddOne && button != Remove && button != FindText) return;
    selected = place < 0 ? Entry{} : entries.at(static_cast<std::size_t>(place));
    Trap trap{upcalls_.errors, "MaintainVariables", {selected.name}};
    trap.Step([&] {
      if (button == AddOne) {
        Add(selected);  // PUMP
      } else if (button == FindText) {
        Find(entries, place, selected);  // PUMP
      } else {
        Delete(selected);  // PUMP
      }
    });
  }
}

// The row of the variable that was selected, wherever scripts have moved it meanwhile; of one that has gone, the place
// where it was.
int32 VariableList::PlaceOf(const std::vector<Entry>& entries, const Entry& selected, int32 place) {
  for (std::size_t i = 0; i < entries.size(); ++i)
    if (entries[i].system == selected.system && entries[i].global == selected.global &&
        SameText(entries[i].name, selected.name))
      return static_cast<int32>(i);
  return std::min(std::max(place, 0), static_cast<int32>(entries.size()) - 1);
}

void VariableList::Find(const std::vector<Entry>& entries, int32 place, Entry& selected) {
  const std::string wanted = Upper(upcalls_.prompter.TextPrompt("String?", "Find", 0, ""));  // PUMP
  if (wanted.empty()) return;
  for (auto row = static_cast<std::size_t>(place) + 1; row < entries.size(); ++row) {
    if (Upper(entries[row].row).find(wanted) == std::string::npos) continue;
    selected = entries[row];
    return;
  }
  Tell("Not found.", "Find");  // PUMP
}

void VariableList::Delete(const Entry& entry) {
  if (entry.system) return Tell("The variables of the system cannot be deleted.", ListTitle);             // PUMP
  const std::string problem = Run((entry.global ? "GUNVARIABLE {" : "UNVARIABLE {") + entry.name + "}");  // PUMP
  if (!problem.empty()) Tell(problem, "Error");                                                           // PUMP
}

// What was set is selected: the variable for everybody, where there is one and the character has none of its own.
void VariableList::Add(Entry& selected) {
  NewVariable variable;
  while (AskNew(variable)) {                       // PUMP
    const std::string problem = Define(variable);  // PUMP
    if (problem.empty()) {
      const int32 row = symbols_.FindVariableRow(variable.Name, variable.Global ? OwnerId{0} : script_.CurrentOwner);
      selected = {variable.Name, row == 0 || script_.VariableOwners[row] == 0, false, ""};
      return;
    }
    Tell(problem, "Error");  // PUMP
  }
}

// The error text, empty when it worked.
std::string VariableList::Define(const NewVariable& variable) {
  std::string problem = Run((variable.Global ? "GVARIABLE {" : "VARIABLE {") + ScriptValue(variable.Name, options_) +
                            "} {" + ScriptValue(variable.Value, options_) + "}");  // PUMP
  if (!problem.empty()) return problem;
  const OwnerId owner = variable.Global ? OwnerId{0} : script_.CurrentOwner;
  if (symbols_.FindVariableRow(variable.Name, owner) != 0) return {};
  return "The name of a variable begins with a letter and has only letters and digits.";
}

void VariableList::TakeNew(NewVariable& variable) {
  variable.Name = Trim(dialog_.Control(ControlKind::TextBox, 1).Text);
  variable.Value = dialog_.Control(ControlKind::TextBox, 2).Text;
  variable.Global = dialog_.Control(ControlKind::Check, 1).Value == 1;
}

// A dialog that comes between takes nothing away: the form is shown again with what stood in it.
bool VariableList::AskNew(NewVariable& variable) {
  const auto handler = [&](const DialogEventArgs& at) {
    if (at.Kind == ControlKind::Form && at.Event == DialogEvent::Unload) TakeNew(variable);
    if (at.Kind == ControlKind::Button && at.Event == DialogEvent::Click) dialog_.End(at.Index);
  };
  for (;;) {
    dialog_.Form_Init("ADDVAR", "Add VARIABLE", handler);
    dialog_.MakeLabel(500, 500, 295, 1500, "Name");
    dialog_.MakeTextBox(0, -200, 295, 4000, variable.Name);
    dialog_.MakeLabel(-200, 500, 295, 1500, "Value");
    dialog_.MakeTextBox(0, -200, 295, 4000, variable.Value);
    dialog_.MakeCheck(-200, 500, 295, 6000, variable.Global ? 1 : 0, "Make globally available to all Characters");
    dialog_.MakeCommand(-400, 500, 400, 1200, "OK", GenDialog::DefaultButton);
    dialog_.MakeCommand(0, -400, 400, 1200, "Cancel", GenDialog::CancelButton);
    dialog_.SetCommandButtons(1, 2);
    dialog_.ShowForm(500, 500);  // PUMP
    if (dialog_.GDResult != 0) return dialog_.GDResult == 1;
    if (platform_.events.Ending() || !platform_.face.PlayerThere()) return false;
  }
}

}  // namespace corvid
