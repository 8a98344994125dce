// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/corvid.h"

#include "core/trap.h"

namespace corvid {

#ifdef CORVID_STRESS
Corvid::Corvid(const Platform& outside)
    : movingLoop_(outside.events, scriptState),
      platform{outside.clock,        movingLoop_,    outside.timers,   outside.sockets,
               outside.files,        outside.places, outside.settings, outside.speechEngine,
               outside.screenReader, outside.face,   outside.sounds},
#else
Corvid::Corvid(const Platform& outside)
    : platform(outside),
#endif
      upcalls{switchboard_, switchboard_, switchboard_, switchboard_, *this, switchboard_},
      dataFiles(scriptFileState, optionsState, platform.files),
      symbols(scriptState, switchboard_),
      scanner(scriptState, optionsState, symbols, switchboard_, switchboard_),
      expressions(optionsState),
      functions({scriptState, symbols, expressions, sessionState, platform.sockets, switchboard_,
                 [this](int32 number) { return dataFiles.AtEnd(number); }}),
      expansion(scriptState, optionsState, symbols, functions, [this] { return platform.face.ClipboardText(); }),
      sound(optionsState, platform, upcalls),
      music(musicState, scriptState, sound, platform, upcalls),
      buffers(bufferState, scriptState, optionsState, symbols, scanner, platform, upcalls),
      saving(scriptState, sessionState, bufferState, optionsState, buffers, platform, upcalls),
      userFolder(optionsState, scriptState, platform, upcalls),
      characters(sessionState, optionsState, platform, upcalls),
      output(scriptState, optionsState, sessionState, platform),
      logs(optionsState, sessionState, platform),
      triggers(scriptState, optionsState, debugState, symbols, expansion, upcalls),
      soundLines(optionsState, sound, platform),
      receive(scriptState, optionsState, sessionState, output, logs, triggers, soundLines, platform, upcalls),
      sessions(scriptState, optionsState, sessionState, bufferState, symbols, scanner, buffers, saving, characters,
               output, logs, receive, platform, upcalls),
      timers(scriptState, optionsState, sessionState, bufferState, keyboardState, platform, upcalls),
      dialog(platform, upcalls, speechState),
      prompts(dialog, speechState, platform, upcalls),
      characterList(scriptState, optionsState, sessionState, characters, sessions, dialog, platform, upcalls),
      quickConnect(
          sessionState, characters, dialog, upcalls, [this](int16 row) { sessions.OpenMud(row, 0); },
          [this](int16 row) { return sessions.IsLoaded(row); }),
      variableList(scriptState, optionsState, symbols, dialog, platform, upcalls),
      speech(speechState, keyboardState, platform),
      speechSettings(speechState, optionsState, dialog, speech, platform, upcalls),
      voiceKeys(speech, keyboardState, platform, upcalls),
      debugger({debugState, scriptState, sessionState, expansion, expressions, receive, dialog, platform, upcalls,
                [this] { variableList.MaintainVariables(); }}),
      menus({menuState, scriptState, optionsState, bufferState, sessionState, keyboardState, buffers, dialog, platform,
             upcalls, sessions, characterList, quickConnect, variableList, [this] { OpenDebugger(); }}),
      keyboard({scriptState, optionsState, bufferState, sessionState, speechState, keyboardState}, symbols, scanner,
               buffers, saving, timers, menus, platform, upcalls),
      errors(bufferState, scriptState, optionsState, platform, upcalls),
      alarms(controlState, scriptState, platform, upcalls),
      house_{scriptState, optionsState, bufferState, sessionState, keyboardState, controlState, symbols,
             scanner,     expansion,    expressions, buffers,      sessions,      output,       logs,
             alarms,      dataFiles,    platform,    upcalls,      speechState,   speech,       menus,
             sound,       musicState,   music,       debugger,     variableList},
      dispatcher(house_),
      start({scriptState, optionsState, bufferState, sessionState, speechState, symbols, buffers, saving, userFolder,
             characters, output, logs, sessions, speechSettings, sound, platform, upcalls}) {
  switchboard_.Commands = &dispatcher;
  switchboard_.Errors = &errors;
  switchboard_.Voice = &speech;
  switchboard_.Screen = &platform.face;
  switchboard_.Questions = &prompts;
  switchboard_.Jobs = &timers;
  prompts.AskByVoice = [this](const std::string& message, std::string& answer) {
    if (speech.ChosenType() != speechtype::Engine) return false;
    answer = voiceKeys.EditBox(message);  // PUMP
    return true;
  };
  timers.SetDialogJobs(&dialog);
  platform.sockets.SetEvents(&sessions);
  platform.face.AttachEntry(bufferState.EntryBox);
  platform.face.SetEvents(&keyboard);
}

Corvid::~Corvid() {
  platform.face.SetEvents(nullptr);
  platform.sockets.SetEvents(nullptr);
}

// The first job of the start. Who types at once knows where to go, and the list would take the keys of the next line.
void Corvid::MaintainCharacters() {
  if (!timers.JobDue()) characterList.MaintainCharacters();  // PUMP
}

// From the menu no command is running that could have parameters.
void Corvid::OpenDebugger() {
  Parameters none;
  debugger.DebugRoutine(none);  // PUMP
}

// The windows follow the options that hold afterwards.
void Corvid::InitializeConfigs() {
  saving.InitializeConfigs();  // PUMP
  output.SelectOutputWindow(optionsState.ColourDisplay);
  output.ResizeForm();
}

int16 Corvid::SelectScreenReader() {
  return speechSettings.SelectScreenReader();
}

}  // namespace corvid
