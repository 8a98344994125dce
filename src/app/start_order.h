// SPDX-License-Identifier: GPL-3.0-or-later
// The beginning and the end of the program: what is loaded in which order, and what is asked and saved before it goes.
#pragma once

#include <string>

#include "core/types.h"

namespace corvid {

class Buffers;
class CharacterFile;
class Logs;
class OutputWindows;
class Saving;
class Sessions;
class Sound;
class SpeechSettings;
class Symbols;
class UserFolder;
struct BufferState;
struct OptionsState;
struct Platform;
struct ScriptState;
struct SessionState;
struct SpeechState;
struct Upcalls;

// What the start and the end of the program work with; all of it belongs to the main object.
struct StartHouse {
  ScriptState& scriptState;
  OptionsState& optionsState;
  BufferState& bufferState;
  SessionState& sessionState;
  SpeechState& speechState;
  Symbols& symbols;
  Buffers& buffers;
  Saving& saving;
  UserFolder& userFolder;
  CharacterFile& characters;
  OutputWindows& output;
  Logs& logs;
  Sessions& sessions;
  SpeechSettings& speechSettings;
  Sound& sound;
  const Platform& platform;
  Upcalls& upcalls;
};

struct StartRequest {
  std::string DataFolder;    // empty: the stored one, or a new one
  std::string Connect;       // reference to connect at once; empty: none
  std::string PracticePort;  // port of the practice game on this machine; empty: none
};

class StartOrder {
 public:
  explicit StartOrder(const StartHouse& house) : house_(house) {}

  // Builds the state in its fixed order and shows the main window. False: the program must end, and the player has been
  // told why. May pump events.
  bool Form_Load(const StartRequest& request);
  // Ends the program. Unless Mandatory the player is asked about open connections and may refuse; scripts and variables
  // are saved as each character wants it, and where the disk does not take them the player may refuse as well. May pump
  // events.
  void quit(bool Mandatory);
  // Saves what a mandatory quit saves, asks nothing and pumps nothing: for a program that is being ended under the
  // player, in whatever it was just doing. The face must tell that no player is there.
  void SaveAtOnce();
  // Closes connections and logs. Each step runs, whatever the others do.
  void Form_Unload();

 private:
  bool GameBegun() const;
  void PreparePractice(const std::string& folder);
  void AddPracticeCharacter(const std::string& port);
  void LoadStartScripts();
  void LoadFullImage();
  bool MayDisconnect();
  bool SaveCharacters();
  bool SaveCharacter(int16 Index);
  bool SaveVariablesOf(int16 Index, int16 owner, const std::string& ref);
  bool MayKeep(const std::string& question, const std::string& title);
  void ConnectAtOnce(const std::string& reference);

  StartHouse house_;
  bool quitting_ = false;
  bool mandatory_ = false;
};

}  // namespace corvid
