// SPDX-License-Identifier: GPL-3.0-or-later
// Adding, finding and removing what scripts define: variables, aliases, keys, triggers, tab words, classes. A row of
// the wanted owner shadows a global row of the same name; a global row is the fall-back.
#pragma once

#include <string>
#include <string_view>

#include "core/types.h"
#include "script/script_state.h"

namespace corvid {

class CommandRunner;

// Bits of WindowType: which table is meant.
namespace windowtype {
inline constexpr int32 Keys = 2, Aliases = 4, Triggers = 8, Abbreviations = 0x10, Variables = 0x1000, All = 0xFFFF;
}  // namespace windowtype

class Symbols {
 public:
  // As VDefault2: the default of a new variable is its value.
  static constexpr std::string_view DefaultIsValue = "\\\\\\";

  // commands is asked to sort the triggers after they were compressed.
  Symbols(ScriptState& state, CommandRunner& commands) : state_(state), commands_(commands) {}

  // Texts are taken by value: they may come from the tables that the call moves.
  // Adds or overwrites. A name that is not a letter and then letters or digits adds nothing and says nothing. Assigning
  // for a character to a name that only exists globally changes the global row. The default stays once it is there.
  void AddVariable(std::string vName2, std::string VValue, OwnerId Owner, std::string& ErrorDescription,
                   std::string VDefault2 = std::string(DefaultIsValue));
  // Adds or replaces; the owner of a replaced row stays. More rows than 16 bits count are a Fault of kind Overflow.
  void AddAlias(std::string aname2, std::string AValue, OwnerId Owner, std::string AClass, int16 ABuffer,
                std::string AOriginalCommand, std::string& ErrorDescription);
  void Addmacro(int16 kc, int16 ks, std::string kvalue, OwnerId Owner, std::string KClass, int16 KBuffer,
                std::string AOriginalCommand, std::string& ErrorDescription);

  // Row, or 0. vv receives the value of the row, empty when there is none; with an empty table it stays as it was.
  int32 FindVariable(std::string_view VN2, std::string& vv, OwnerId vo) const;
  int32 FindVariableRow(std::string_view VN2, OwnerId vo) const;  // the row alone: a value can be a list of megabytes
  // Row, or 0. With checkclass only rows whose class list is active for the wanted owner count.
  int16 FindAlias(std::string_view VN2, OwnerId vo, bool checkclass) const;
  int16 FindMacro(int16 kc, int16 ks, OwnerId ko, bool checkclass) const;

  void CheckAndAddClass(std::string_view class1, OwnerId Owner);  // switches a class on; "" and "0" do nothing
  void DeleteClass(std::string_view class1, OwnerId Owner);       // switches it off, for exactly that owner
  // True when every class of the list "A|B" is on, for Owner or globally; an empty list is always on. More than 11
  // classes are a Fault of kind Index.
  bool InClass(std::string_view class1, OwnerId Owner) const;
  static bool HasTooManyClasses(std::string_view class1);  // InClass faults

  // Removes the triggers of Owner whose search text, or its name in angle brackets, equals sString2; an empty sClass
  // stands for every class. With stype 2 nothing may follow the name's ">".
  void RemoveTrigger(int16 stype, OwnerId Owner, std::string_view sString2, std::string_view sClass,
                     std::string& ErrorDescription);
  void RemoveTabWords(OwnerId ownedBy);
  // These two blank rows only, by script buffer and by owner; call CompressCommand after them. Lookups pass over
  // blanked rows meanwhile. Directions stay: they belong to every walk, whoever told them.
  void RemoveCommands(int16 BufferNumber);
  void RemoveCharacter(OwnerId ownedBy);  // variables and tab words too; the latter are packed at once
  // Closes the gaps of the tables that the bits of WindowType name. Directions have no gaps: nothing takes one away.
  void CompressCommand(int32 WindowType);
  void resizeCommand(int32 WindowType, int32 Size);  // makes Size the highest row of one table

  // Fills the names of the system variables, their fixed values and the colour tables. Once, at start-up.
  void LoadSystemVariables();

 private:
  void CompressTriggers();
  void CompressKeys();
  void CompressAliases();
  void CompressVariables();
  bool IsClassOn(std::string_view name, OwnerId Owner) const;

  ScriptState& state_;
  CommandRunner& commands_;
};

}  // namespace corvid
