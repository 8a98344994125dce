// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/character_list.h"

#include <algorithm>
#include <array>

#include "core/text.h"
#include "core/trap.h"
#include "dialogs/outer_command.h"
#include "files/script_value.h"
#include "sessions/character_file.h"
#include "sessions/session.h"

namespace corvid {

namespace {

constexpr const char* ListTitle = "Mud Character List";
constexpr const char* DeleteTitle = "Delete Character";
constexpr const char* EmptyList = "There is no character yet. Control-A adds one.";

// GDResult of the list, by button. 0 is a list that another dialog has taken the place of.
constexpr int16 Connect = 1, Exit = 2, WorkOffline = 3, Add = 4, EditView = 6, Remove = 7;

struct ListButton {
  const char* Words;
  int16 Result;
};
constexpr std::array ListButtons{
    ListButton{"Connect", Connect},    ListButton{"Work Offline  Control-O", WorkOffline},
    ListButton{"Add  Control-A", Add}, ListButton{"Edit/View  Control-E", EditView},
    ListButton{"Delete  Del", Remove}, ListButton{"Exit  Esc", Exit},
};
constexpr int16 ConnectButton = 1, ExitButton = 6;

// A row that only keeps the host of a quick connection.
bool IsQuickConnection(const CharacterTable& characters, int16 row) {
  return characters.CharacterRef[row].empty() && characters.CharacterName[row] == "QUICKCONNECT";
}

bool IsEmpty(const CharacterFields& fields) {
  return (fields.CharacterName + fields.CharacterRef + fields.MudName + fields.HostName + fields.Port + fields.Notes +
          fields.Password)
      .empty();
}

// What an event of the list asks for; 0 for nothing.
int16 ResultOf(const DialogEventArgs& at) {
  if (at.Kind == ControlKind::Button && at.Event == DialogEvent::Click)
    return ListButtons.at(static_cast<std::size_t>(at.Index - 1)).Result;
  return at.Kind == ControlKind::List && at.Event == DialogEvent::DoubleClick ? Connect : int16{0};
}

}  // namespace

CharacterList::CharacterList(ScriptState& script, const OptionsState& options, SessionState& characters,
                             CharacterFile& file, Sessions& sessions, GenDialog& dialog, Platform& platform,
                             Upcalls& upcalls)
    : script_(script),
      options_(options),
      characters_(characters),
      file_(file),
      sessions_(sessions),
      dialog_(dialog),
      platform_(platform),
      upcalls_(upcalls),
      form_(dialog, characters, platform) {}

std::string CharacterList::Entry::Shown() const {
  return reference.empty() ? "<unnamed>" : reference;
}

std::vector<CharacterList::Entry> CharacterList::Entries() const {
  std::vector<Entry> entries;
  for (int16 row = 1; row <= characters_.CharacterCount; ++row)
    if (!IsClear(characters_, row) && !IsQuickConnection(characters_, row))
      entries.push_back({row, characters_.CharacterRef[row], characters_.MudName[row], characters_.CharacterName[row]});
  return entries;
}

std::vector<std::string> CharacterList::Rows(const std::vector<Entry>& entries) {
  std::vector<std::string> rows;
  rows.reserve(entries.size());
  for (const Entry& entry : entries) rows.push_back(entry.Shown() + " - " + entry.mud);
  return rows;
}

int32 CharacterList::PlaceOf(const std::vector<Entry>& entries, int16 row) const {
  for (std::size_t i = 0; i < entries.size(); ++i)
    if (entries[i].row == row) return static_cast<int32>(i);
  return 0;
}

// Where the entry's character stands now; 0 when it has gone.
int16 CharacterList::Find(const Entry& entry) const {
  const int16 row = entry.row;
  if (row == 0) return 0;
  if (row <= characters_.CharacterCount && !IsClear(characters_, row) &&
      SameText(characters_.CharacterRef[row], entry.reference))
    return row;
  return entry.reference.empty() ? int16{0} : FindCharacter(characters_, entry.reference);
}

void CharacterList::Tell(const std::string& text, const std::string& title) {
  upcalls_.prompter.MsgBox(text, box::OkOnly, title);  // PUMP
}

// Gives the button; place is the selected row before and after.
int16 CharacterList::ShowList(const std::vector<Entry>& entries, int32& place) {
  const auto handler = [&](const DialogEventArgs& at) {
    const int16 result = ResultOf(at);
    if (result == 0) return;
    place = dialog_.Control(ControlKind::List, 1).ListIndex;
    dialog_.End(result);
  };
  dialog_.Form_Init("CHARACTER1", ListTitle, handler);
  dialog_.MakeLabel(300, 500, 295, 3000, "Character References");
  dialog_.MakeList(-200, 500, 3000, 6000, Rows(entries), place, "Characters");
  for (const ListButton& button : ListButtons)
    dialog_.MakeCommand(button.Result == Connect ? -400 : 0, button.Result == Connect ? 500 : -200, 400, 2000,
                        button.Words, 0);
  dialog_.SetCommandButtons(ConnectButton, ExitButton);
  if (entries.empty()) {
    dialog_.SetOpeningText(EmptyList);
    platform_.face.Notice(EmptyList);  // for who reads with the fingers, or has no sound
  }
  dialog_.ShowForm(500, 500);  // PUMP
  return dialog_.GDResult;
}

void CharacterList::MaintainCharacters() {
  int16 selected = script_.CurrentOwner;
  for (int32 place = -1;;) {
    const std::vector<Entry> entries = Entries();
    const auto last = static_cast<int32>(entries.size()) - 1;
    place = std::min(place < 0 ? PlaceOf(entries, selected) : place, last);
    const int16 button = ShowList(entries, place);  // PUMP
    if (button != Connect && button != WorkOffline && button != Add && button != EditView && button != Remove) return;
    const Entry entry = place < 0 ? Entry{} : entries.at(static_cast<std::size_t>(place));
    bool leave = false;
    Trap trap{upcalls_.errors, "MaintainCharacters", {entry.Shown()}};
    trap.Step([&] { leave = Act(button, entry, selected); });  // PUMP
    if (leave) return;
    if (selected != 0) place = -1;
  }
}

// Does what a button of the list stands for. True when the list is to be left; selected becomes the row to go on with,
// 0 for the place where the player is.
bool CharacterList::Act(int16 button, const Entry& entry, int16& selected) {
  selected = 0;
  if (button == Add) {
    selected = Edit({});  // PUMP
  } else if (entry.row == 0) {
    Tell(EmptyList, ListTitle);  // PUMP
  } else if (Find(entry) == 0) {
    Tell("The character " + entry.Shown() + " is not in the list any more.", ListTitle);  // PUMP
  } else if (button == Remove) {
    Delete(entry);  // PUMP
  } else if (button == EditView) {
    selected = Edit(entry);  // PUMP
    if (selected == 0) selected = Find(entry);
  } else {
    return Play(entry, button);  // PUMP
  }
  return false;
}

// False when the list is to be shown again.
bool CharacterList::Play(const Entry& entry, int16 button) {
  if (entry.reference.empty()) {
    Tell("This character has no reference. Control-E lets you give it one, and then it can be played.", ListTitle);
    return false;
  }
  const std::string reference = ScriptValue(entry.reference, options_);
  const bool parted = reference.find(' ') != std::string::npos;
  const std::string command = button == Connect ? "connect {" + reference + "}"
                              : parted          ? "OFFLINE {" + reference + "}"
                                                : "OFFLINE " + reference;
  RunOuterCommand(script_, options_, upcalls_, command, option::Interactive);  // PUMP
  return true;
}

// What keeps the fields from being the character's; its text is empty when nothing does.
CharacterList::Problem CharacterList::ProblemOf(const CharacterFields& fields, int16 row) const {
  if (row == 0 && IsEmpty(fields)) return {"No field is filled in. Cancel leaves the form.", CharacterForm::NameBox};
  const std::string& reference = fields.CharacterRef;
  const auto atReference = [](const char* text) { return Problem{text, CharacterForm::ReferenceBox}; };
  if (reference.find(' ') != std::string::npos) return atReference("Character reference may not contain spaces.");
  if (reference.empty() && row != 0 && sessions_.IsLoaded(row))
    return atReference("The character is in use and needs its reference.");
  for (int16 other = 1; other <= characters_.CharacterCount; ++other)
    if (other != row && !reference.empty() && SameText(characters_.CharacterRef[other], reference))
      return atReference("Duplicate Character Reference found. Please select a unique name.");
  if (!fields.Port.empty() && !platform_.sockets.PortKnown(fields.Port))
    return {"The port must be a number from 1 to 65535, or the name of a service.", CharacterForm::PortBox};
  return {};
}

// Asks for the fields of a character, of a new one when the entry is none. Gives its row, 0 when nothing was written.
int16 CharacterList::Edit(const Entry& entry) {
  const std::string title = entry.row == 0 ? "Add Character" : "Edit Character";
  const int16 before = Find(entry);
  CharacterFields fields = before == 0 ? CharacterFields{} : ReadCharacter(characters_, before);
  for (Problem problem;;) {
    if (!form_.Ask(title, problem.box, fields)) return 0;  // PUMP
    problem = ProblemOf(fields, Find(entry));
    if (problem.text.empty()) break;
    Tell(problem.text, "Error");  // PUMP
  }
  int16 row = Find(entry);  // a character that has gone meanwhile is written anew
  if (row == 0) row = FreeRow();
  Store(row, fields);  // PUMP
  return row;
}

// A row that was cleared is used again once no slot names it, not even one whose session is over.
int16 CharacterList::FreeRow() {
  for (int16 row = 1; row <= characters_.CharacterCount; ++row) {
    bool named = false;
    for (int16 slot = 0; slot <= characters_.SessionHigh; ++slot) named = named || script_.SocketOwner[slot] == row;
    if (named || !IsClear(characters_, row)) continue;
    ClearCharacter(characters_, row);
    return row;
  }
  return AddCharacter(characters_);
}

void CharacterList::Store(int16 row, const CharacterFields& fields) {
  WriteCharacter(characters_, row, fields);
  sessions_.CharacterEdited(row);
  file_.writeMudFile();  // PUMP
}

void CharacterList::Delete(const Entry& entry) {
  const auto connected = [&] { return sessions_.IsConnected(Find(entry)); };
  const auto refuse = [&] {
    Tell(entry.Shown() + " is connected. Disconnect the character before you delete it.", DeleteTitle);  // PUMP
  };
  if (connected()) return refuse();
  const std::string& name = entry.name.empty() ? entry.Shown() : entry.name;
  if (upcalls_.prompter.MsgBox("Are you sure you want to delete " + name, box::YesNo, DeleteTitle) !=
      box::ResultYes)  // PUMP
    return;
  if (connected()) return refuse();
  if (!Unload(Find(entry))) return;  // PUMP
  const int16 row = Find(entry);
  if (row == 0) return;
  ClearCharacter(characters_, row);
  file_.writeMudFile();  // PUMP
}

// The scripts and variables of a character that goes are saved and forgotten as long as its row tells their names.
// False when the disk refused, or the character has been connected meanwhile.
bool CharacterList::Unload(int16 row) {
  for (int16 slot = 0; row != 0 && slot <= characters_.SessionHigh; ++slot)
    if (script_.SocketOwner[slot] == row && !characters_.SessionRef[slot].empty() &&
        !sessions_.UnloadSession(slot))  // PUMP
      return false;
  return true;
}

}  // namespace corvid
