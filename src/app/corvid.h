// SPDX-License-Identifier: GPL-3.0-or-later
// The main object: it owns all state, builds every routine object from the ground up, and stands in for the higher
// floors towards the lower ones. Nothing else lives for the whole run.
#pragma once

#include <string>

#include "app/moving_tables.h"
#include "app/start_order.h"
#include "app/switchboard.h"
#include "commands/alarms.h"
#include "commands/control_state.h"
#include "commands/data_files.h"
#include "commands/dispatcher.h"
#include "commands/errors.h"
#include "commands/script_file_state.h"
#include "dialogs/character_list.h"
#include "dialogs/gen_dialog.h"
#include "dialogs/prompts.h"
#include "dialogs/quick_connect.h"
#include "dialogs/variable_list.h"
#include "files/buffers.h"
#include "files/saving.h"
#include "files/user_folder.h"
#include "input/keyboard.h"
#include "input/menus.h"
#include "script/expansion.h"
#include "script/expression.h"
#include "script/functions.h"
#include "script/scanner.h"
#include "script/symbols.h"
#include "sessions/session.h"
#include "sessions/sound_lines.h"
#include "sessions/timers.h"
#include "sessions/triggers.h"
#include "sound/music.h"
#include "sound/music_state.h"
#include "sound/sound.h"
#include "speech/speech.h"
#include "speech/speech_settings.h"
#include "speech/voice_keys.h"
#include "tools/debug_state.h"
#include "tools/debugger.h"

namespace corvid {

class Corvid : public Screens {
 public:
  explicit Corvid(const Platform& platform);
  ~Corvid() override;
  Corvid(const Corvid&) = delete;
  Corvid& operator=(const Corvid&) = delete;

  bool Start(const StartRequest& request) { return start.Form_Load(request); }

  // --- Screens ---
  void MaintainCharacters() override;
  void OpenDebugger();
  int16 SelectScreenReader() override;
  void quit(bool Mandatory) override { start.quit(Mandatory); }
  void InitializeConfigs() override;
  void SimulateEnter() override { keyboard.PressEnter(); }
  void ShowWindowAt(int16 buffer, int32 caret) override { buffers.ShowBufferAt(buffer, caret); }

#ifdef CORVID_STRESS
 private:
  MovingLoop movingLoop_;

 public:
#endif
  // --- state ---
  Platform platform;
  ScriptState scriptState;
  OptionsState optionsState;
  BufferState bufferState;
  SessionState sessionState;
  SpeechState speechState;
  KeyboardState keyboardState;
  MenuState menuState;
  ControlState controlState;
  ScriptFileState scriptFileState;
  MusicState musicState;
  DebugState debugState;

 private:
  Switchboard switchboard_;

 public:
  Upcalls upcalls;

  // --- routines, in floor order ---
  DataFiles dataFiles;  // the function library asks it too
  Symbols symbols;
  Scanner scanner;
  ExpressionEvaluator expressions;
  Functions functions;
  Expansion expansion;
  Sound sound;
  Music music;
  Buffers buffers;
  Saving saving;
  UserFolder userFolder;
  CharacterFile characters;
  OutputWindows output;
  Logs logs;
  TriggerEngine triggers;
  SoundLines soundLines;
  Receive receive;
  Sessions sessions;
  TimerRoutines timers;
  GenDialog dialog;
  Prompts prompts;
  CharacterList characterList;
  QuickConnect quickConnect;
  VariableList variableList;
  Speech speech;
  SpeechSettings speechSettings;
  VoiceKeys voiceKeys;
  Debugger debugger;
  Menus menus;
  Keyboard keyboard;
  Errors errors;
  Alarms alarms;

 private:
  CommandHouse house_;

 public:
  Dispatcher dispatcher;
  StartOrder start;
};

}  // namespace corvid
