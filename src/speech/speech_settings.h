// SPDX-License-Identifier: GPL-3.0-or-later
// How the channels speak, kept in "speech.ini", and the choice on the first run.
#pragma once

#include <string>

#include "core/types.h"
#include "core/upcalls.h"
#include "platform/platform.h"
#include "script/options_state.h"
#include "speech/speech_state.h"

namespace corvid {

class GenDialog;
class Speech;

class SpeechSettings {
 public:
  SpeechSettings(SpeechState& speech, OptionsState& options, GenDialog& dialog, Speech& voices, Platform& platform,
                 Upcalls& upcalls)
      : speech_(speech), options_(options), dialog_(dialog), voices_(voices), platform_(platform), upcalls_(upcalls) {}

  // The speech part of the start: reads the settings; where there are none, asks for the kind of speech, uses it for
  // all channels and saves it; then readies it and sets the voices. False: the player cancelled and the program ends.
  // May pump events.
  bool StartSpeech();

  // Before the speech part of the start: lets what is said until then be heard the way the player has saved, and
  // through whatever works where nothing is saved, or nothing that can be read.
  void UseSavedSpeech();

  enum class Reading { Done, Missing, Refused };
  // Done: the channels are set. Missing: no file, or one of another layout; Refused: the disk did not give it, which
  // went to UnknownError. In both the channels are as they were.
  Reading ReadSpeech();
  // Writes "speech.ini", scrambled and private. A refusal is told in a box "Error"; then the result is false and the
  // old file is as it was. May pump events then.
  bool SaveSpeech();
  bool HasSpeechFile() const;
  static void SetDefaults(SpeechState& speech);

  // Asks for the kind of speech: 0 none, 1 screen reader, 3 speech engine. initial is the one selected at first. Cancel
  // ends the program; with a dialog open already it only beeps; both give initial. Pumps events.
  int16 SelectScreenReader(int16 initial = 0);

  // The content of the file, not scrambled, and back. False for another layout; speech is then as it was.
  static std::string FileText(const SpeechState& speech);
  static bool FromFileText(const std::string& text, SpeechState& speech);

 private:
  bool ChooseOnFirstRun();

  SpeechState& speech_;
  OptionsState& options_;
  GenDialog& dialog_;
  Speech& voices_;
  Platform& platform_;
  Upcalls& upcalls_;
};

}  // namespace corvid
