// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/breakpoints.h"

#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "core/keys.h"
#include "core/text.h"
#include "dialogs/gen_dialog.h"
#include "script/script_state.h"

namespace corvid {

namespace {

// A definition as the list shows it.
struct Listed {
  std::string Row;  // without the mark
  std::string Key;  // what it is known by when the table has moved
  bool Marked = false;
};

struct Words {
  const char* FormCode;
  const char* Title;
  const char* Label;
  const char* List;
  const char* Nothing;
};

constexpr Words TriggerWords{"DEBUGTRIG", "Debug Module- Select Trigger Breakpoints", "Select Triggers", "Triggers",
                             "No Triggers Found"};
constexpr Words AliasWords{"DEBUGALIAS", "Debug Module- Select Alias Breakpoints", "Select Alias", "Alias",
                           "No aliass Found"};  // Kept: the word.

constexpr int16 ClearAll = 1, Ok = 2;  // the buttons, which are GDResult
constexpr int16 Left = 3;

std::string RowText(const std::string& name, const std::string& inClass, OwnerId owner, const std::string& commands) {
  std::string row = name;
  if (!inClass.empty()) row += " Class: " + inClass;
  if (owner == 0) row += " [Global]";
  return row + " " + commands;
}

std::string KeyOf(const std::vector<std::string>& fields) {
  std::string key;
  for (const std::string& field : fields) key += std::to_string(field.size()) + ":" + field;
  return key;
}

// One table as the dialog sees it: rows from 1 to Count.
class MarkedTable {
 public:
  virtual ~MarkedTable() = default;
  virtual int32 Count() const = 0;
  virtual OwnerId Owner(int32 row) const = 0;
  virtual bool Used(int32 row) const = 0;
  virtual Listed List(int32 row) const = 0;
  virtual bool Marked(int32 row) const = 0;
  virtual void Mark(int32 row, bool marked) = 0;
};

int16 WithMark(int16 flags, bool marked) {
  return static_cast<int16>(marked ? flags | BreakpointFlag : flags & ~BreakpointFlag);
}

class TriggerMarks final : public MarkedTable {
 public:
  explicit TriggerMarks(TriggerTable& table) : table_(table) {}
  int32 Count() const override { return table_.TriggerCount; }
  OwnerId Owner(int32 row) const override { return At(row).Owner; }
  bool Used(int32 row) const override { return !At(row).Pattern.empty(); }
  Listed List(int32 row) const override {
    const TriggerRecord& at = At(row);
    return {RowText(at.SearchText, at.Class, at.Owner, at.ActionText),
            KeyOf({at.SearchText, at.Class, std::to_string(at.Owner), at.ActionText, at.SortKey}), Marked(row)};
  }
  bool Marked(int32 row) const override { return (At(row).Flags & BreakpointFlag) != 0; }
  void Mark(int32 row, bool marked) override {
    table_.Triggers[row].Flags = WithMark(At(row).Flags, marked);  // the matcher looks at the row anew
  }

 private:
  const TriggerRecord& At(int32 row) const { return table_.Triggers.Read(row); }
  TriggerTable& table_;
};

class AliasMarks final : public MarkedTable {
 public:
  explicit AliasMarks(AliasTable& table) : table_(table) {}
  int32 Count() const override { return table_.AliasCount; }
  OwnerId Owner(int32 row) const override { return table_.AliasOwners[row]; }
  bool Used(int32 row) const override { return !table_.AliasNames[row].empty(); }
  Listed List(int32 row) const override {
    const std::string& name = table_.AliasNames[row];
    const std::string& inClass = table_.AliasClasses[row];
    const std::string& commands = table_.AliasOriginals[row];
    // Scripts define their aliases anew all the time, with other commands and in other classes.
    return {RowText(name, inClass, Owner(row), commands), KeyOf({name, std::to_string(Owner(row))}), Marked(row)};
  }
  bool Marked(int32 row) const override { return (table_.AliasFlags[row] & BreakpointFlag) != 0; }
  void Mark(int32 row, bool marked) override { table_.AliasFlags[row] = WithMark(table_.AliasFlags[row], marked); }

 private:
  AliasTable& table_;
};

bool IsListed(const MarkedTable& table, int32 row, OwnerId inForce) {
  return table.Used(row) && (table.Owner(row) == 0 || table.Owner(row) == inForce);
}

std::vector<Listed> RowsOf(const MarkedTable& table, OwnerId inForce) {
  std::vector<std::pair<std::string, Listed>> rows;
  for (int32 row = 1; row <= table.Count(); ++row) {
    if (!IsListed(table, row, inForce)) continue;
    Listed listed = table.List(row);
    std::string order = Upper(listed.Row);
    rows.emplace_back(std::move(order), std::move(listed));
  }
  std::stable_sort(rows.begin(), rows.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
  std::vector<Listed> listed;
  listed.reserve(rows.size());
  for (auto& row : rows) listed.push_back(std::move(row.second));
  return listed;
}

// The player's choice, or Left as GDResult and nothing chosen.
int16 Choose(GenDialog& dialog, const Words& words, std::vector<Listed>& rows) {
  std::vector<std::string> items;
  std::vector<bool> marks;
  items.reserve(rows.size());
  for (const Listed& row : rows) {
    items.push_back((row.Marked ? "[Breakpoint] " : "") + row.Row);
    marks.push_back(row.Marked);
  }
  if (items.empty()) {
    items.emplace_back(words.Nothing);
    marks.push_back(false);
  }
  const auto handler = [&](const DialogEventArgs& at) {
    if (at.Kind == ControlKind::Button && at.Event == DialogEvent::Click) {
      marks = dialog.Control(ControlKind::List, 1).Selected;
      dialog.End(at.Index);
    } else if (at.Event == DialogEvent::KeyDown && at.KeyOrState == keycode::Escape) {
      at.KeyOrState = 0;
      dialog.End(Left);
    }
  };
  dialog.Form_Init(words.FormCode, words.Title, handler);
  dialog.MakeLabel(300, 500, 295, 8000, words.Label);
  dialog.MakeList(-100, 500, 3500, 8000, items, 0, words.List);
  DialogControl& list = dialog.Control(ControlKind::List, 1);
  list.MultiSelect = true;
  list.Selected = marks;
  dialog.MakeCommand(-400, 500, 400, 1500, "Clear All", 0);
  dialog.MakeCommand(0, -400, 400, 1500, "OK", GenDialog::DefaultButton);
  dialog.SetCommandButtons(Ok, 0);
  dialog.SetCloseResult(Left);
  dialog.ShowForm(500, 500);  // PUMP
  for (std::size_t i = 0; i < rows.size(); ++i) rows[i].Marked = i < marks.size() && marks[i];
  return dialog.GDResult;
}

// The table may be another one by now, so each row is known by what it says.
void WriteMarks(MarkedTable& table, OwnerId inForce, const std::vector<Listed>& rows) {
  std::multimap<std::string, bool> chosen;
  for (const Listed& row : rows) chosen.emplace(row.Key, row.Marked);
  for (int32 row = 1; row <= table.Count(); ++row) {
    if (!IsListed(table, row, inForce)) continue;
    const auto found = chosen.find(table.List(row).Key);
    if (found == chosen.end()) continue;
    if (found->second != table.Marked(row)) table.Mark(row, found->second);
    chosen.erase(found);
  }
}

void ClearMarks(MarkedTable& table) {
  for (int32 row = 1; row <= table.Count(); ++row)
    if (table.Marked(row)) table.Mark(row, false);
}

void Select(GenDialog& dialog, const Words& words, MarkedTable& table, OwnerId inForce) {
  std::vector<Listed> rows = RowsOf(table, inForce);
  const int16 button = Choose(dialog, words, rows);  // PUMP
  if (button == Ok) WriteMarks(table, inForce, rows);
  if (button == ClearAll) ClearMarks(table);
}

}  // namespace

void SelectTriggerBreakpoints(GenDialog& dialog, ScriptState& script) {
  TriggerMarks table(script);
  Select(dialog, TriggerWords, table, script.CurrentOwner);
}

void SelectAliasBreakpoints(GenDialog& dialog, ScriptState& script) {
  AliasMarks table(script);
  Select(dialog, AliasWords, table, script.CurrentOwner);
}

}  // namespace corvid
