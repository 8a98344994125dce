// SPDX-License-Identifier: GPL-3.0-or-later
// What an item of a menu gets when it is chosen.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "core/types.h"
#include "input/menu_state.h"

namespace corvid {

class Buffers;
class CharacterList;
class GenDialog;
class QuickConnect;
class Sessions;
class VariableList;
struct BufferState;
struct KeyboardState;
struct OptionsState;
struct Platform;
struct ScriptState;
struct SessionState;
struct Upcalls;

// What menus work with; all of it belongs to the main object.
struct MenuHouse {
  MenuState& menu;
  ScriptState& script;
  OptionsState& options;
  BufferState& buffers;
  SessionState& sessions;
  KeyboardState& keyboard;
  Buffers& scriptFiles;
  GenDialog& dialog;
  Platform& platform;
  Upcalls& upcalls;
  Sessions& sessionRoutines;
  CharacterList& characters;
  QuickConnect& quickConnect;
  VariableList& variables;
  std::function<void()> DebugRoutine;  // the script debugger
};

// The list, as its items see it.
class MenuList {
 public:
  virtual ~MenuList() = default;
  // Shows VariantList and then the first MenuLength entries of StringList, ListIndex being selected. An automatic walk
  // that has steps left takes its next one instead, and nothing is shown. May pump events then.
  virtual void SetupMenu(const std::vector<std::string>& VariantList, const std::vector<std::string>& StringList,
                         int16 MenuLength, const std::string& MenuName, int32 ListIndex) = 0;
  // Its twin: the same by another name.
  void xSetupmenu(const std::vector<std::string>& VariantList, const std::vector<std::string>& StringList,
                  int16 MenuLength, const std::string& MenuName, int32 ListIndex) {
    SetupMenu(VariantList, StringList, MenuLength, MenuName, ListIndex);
  }
  virtual void CloseListBox() = 0;  // nothing happens when it is not open
  // Shows a menu ("MAIN//00") or does what an item stands for ("MAIN//FI"). May pump events.
  virtual void MenuRoutine(const std::string& FSelection) = 0;
  virtual void ShowAgain() = 0;  // the current menu, whose items have changed, with the same row selected
};

struct MenuCall {
  MenuHouse& house;
  MenuList& list;
  std::string Item;  // the whole row, as the list shows it
};

using MenuAction = void (*)(MenuCall& call);

// Runs a command as an outer source, its errors in a message box. The command character is put before it. True when it
// worked. May pump events.
bool RunMenuCommand(MenuHouse& house, const std::string& command, int16 moreOptions = 0);
// The same for an item that closes the list first and says words afterwards.
void RunAndSay(MenuCall& call, const std::string& command, const std::string& words);

namespace menuitem {

// CONNECT
void CharacterSetup(MenuCall& call);
void DisconnectCharacter(MenuCall& call);
void ConnectQuickly(MenuCall& call);
void Reconnect(MenuCall& call);
void ReloadScripts(MenuCall& call);

// EDIT
void EditVariables(MenuCall& call);

// AUTOWALK
void BeginRecording(MenuCall& call);
void FinishRecording(MenuCall& call);
void StopWalk(MenuCall& call);
void PauseWalk(MenuCall& call);
void UnPauseWalk(MenuCall& call);
void IgnoreLast(MenuCall& call);
void ToggleSlowWalk(MenuCall& call);
std::string SlowWalkState(const MenuHouse& house);

// TOOLS
void Debug(MenuCall& call);

// Lists of the moment
void TabWord(MenuCall& call);    // puts the word into the entry, or with the Delete key takes it out of the tab words
void JustClose(MenuCall& call);  // of a list that is only read

}  // namespace menuitem
}  // namespace corvid
