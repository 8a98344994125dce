// SPDX-License-Identifier: GPL-3.0-or-later
#include "speech/speech_settings.h"

#include <algorithm>
#include <array>
#include <vector>

#include "core/fault.h"
#include "core/number.h"
#include "core/scramble.h"
#include "core/text.h"
#include "dialogs/gen_dialog.h"
#include "speech/speech.h"

namespace corvid {

namespace {

constexpr const char* SpeechFile = "speech.ini";
constexpr std::size_t FirstChannel = 1, LastChannel = 6;

// Fields of a channel's row, in the order of the file.
constexpr std::array<SpeechState::Channels SpeechState::*, 11> Fields{
    &SpeechState::SpeechType,      &SpeechState::VoiceIndex,
    &SpeechState::VoiceRate,       &SpeechState::VoiceVolume,
    &SpeechState::VoicePriority,   &SpeechState::InterruptOwn,
    &SpeechState::InterruptOthers, &SpeechState::NotInterruptedByOthers,
    &SpeechState::TypingEcho,      &SpeechState::NotInterruptedByControl,
    &SpeechState::SpeakLabels};

struct SpeechChoice {
  const char* Words;
  int16 Type;
};
constexpr std::array<SpeechChoice, 3> Choices{
    {{"No Speech", speechtype::None}, {"Screen Reader", speechtype::ScreenReader}, {"MS Sapi", speechtype::Engine}}};

bool ReadNumber(const std::string& text, int16& number) {
  if (!IsNumeric(text)) return false;
  try {
    number = ToInt16(Val(text));
    return true;
  } catch (const Fault&) {  // too large, be it by its exponent
    return false;
  }
}

// False for another layout; a Fault when the disk refuses.
bool ReadSettings(const Files& files, const OptionsState& options, SpeechState& speech) {
  return SpeechSettings::FromFileText(Scramble(files.ReadWhole(options.UserDataFolder + SpeechFile)), speech);
}

}  // namespace

bool SpeechSettings::StartSpeech() {
  const Reading reading = ReadSpeech();
  if (reading == Reading::Missing && !ChooseOnFirstRun()) return false;
  // A file that could not be read is not replaced, and its player still hears something.
  if (reading == Reading::Refused) return true;
  voices_.TTSSetup(speech_.SpeechType[FirstChannel]);
  voices_.ApplyVoices();
  return true;
}

void SpeechSettings::UseSavedSpeech() {
  try {
    if (HasSpeechFile() && ReadSettings(platform_.files, options_, speech_)) voices_.SpeakWhateverWorks(false);
  } catch (const Fault&) {
    // Told when speech itself is started: once is enough.
  }
}

bool SpeechSettings::ChooseOnFirstRun() {
  SetDefaults(speech_);
  upcalls_.prompter.MsgBox(
      "From the following screen, please select your default screen reader or select MS Sapi or \"None\" if you do not "
      "have one.",
      box::OkOnly, "Interim Speech");  // PUMP
  const int16 type = SelectScreenReader(voices_.WorkingType());
  if (platform_.events.Ending()) return false;
  for (std::size_t channel = FirstChannel; channel <= LastChannel; ++channel) speech_.SpeechType[channel] = type;
  voices_.TTSSetup(type);
  upcalls_.prompter.MsgBox(
      "Now you may want to go into the Tools and Preferences Menu, select Speech, and then fine tune and save your "
      "screen reading method.",
      box::OkOnly, "Next Step");  // PUMP
  SaveSpeech();
  return !platform_.events.Ending();
}

int16 SpeechSettings::SelectScreenReader(int16 initial) {
  if (dialog_.GDOpen) {
    platform_.face.Beep();
    return initial;
  }
  int32 row = 0;
  std::vector<std::string> words;
  for (const SpeechChoice& choice : Choices) {
    if (choice.Type == initial) row = static_cast<int32>(words.size());
    words.emplace_back(choice.Words);
  }
  int16 list = 0;
  constexpr int16 okButton = 1;
  constexpr int16 resultOk = 1, resultCancel = 2;
  dialog_.Form_Init("INITIALSPEECH", "Initial Speech Setting", [&](const DialogEventArgs& at) {
    if (at.Kind != ControlKind::Button || at.Event != DialogEvent::Click) return;
    row = dialog_.Control(ControlKind::List, list).ListIndex;
    dialog_.End(at.Index == okButton ? resultOk : resultCancel);
  });
  constexpr int32 below = -60, height = 300, listHeight = 900, width = 4000, margin = 200;
  dialog_.MakeLabel(margin, margin, height, width, "Initial Speech Type");
  list = dialog_.MakeList(below, 0, listHeight, width, words, row, "Options");
  dialog_.MakeCommand(below, 0, height, width, "OK", GenDialog::DefaultButton);
  dialog_.MakeCommand(below, 0, height, width, "Cancel", GenDialog::CancelButton);
  dialog_.ShowForm(margin, margin);  // PUMP
  if (dialog_.GDResult != resultOk) {
    upcalls_.screens.quit(true);
    return initial;
  }
  const bool chosen = row >= 0 && row < static_cast<int32>(Choices.size());
  return chosen ? Choices[static_cast<std::size_t>(row)].Type : initial;
}

// ---- the file ----

bool SpeechSettings::HasSpeechFile() const {
  return platform_.files.FileExists(options_.UserDataFolder + SpeechFile);
}

SpeechSettings::Reading SpeechSettings::ReadSpeech() {
  if (!HasSpeechFile()) return Reading::Missing;
  try {
    return ReadSettings(platform_.files, options_, speech_) ? Reading::Done : Reading::Missing;
  } catch (const Fault& fault) {
    upcalls_.errors.UnknownError(fault.what(), "ReadSpeech", {options_.UserDataFolder + SpeechFile});
    return Reading::Refused;
  }
}

bool SpeechSettings::SaveSpeech() {
  const std::string path = options_.UserDataFolder + SpeechFile;
  try {
    platform_.files.WriteWhole(path, Scramble(FileText(speech_)), Privacy::Private);
    return true;
  } catch (const Fault&) {
    upcalls_.prompter.MsgBox("Error creating file " + path, box::OkOnly | box::Exclamation, "Error");  // PUMP
    return false;
  }
}

std::string SpeechSettings::FileText(const SpeechState& speech) {
  std::string text = std::to_string(Fields.size()) + "\r\n";
  for (std::size_t channel = FirstChannel; channel <= LastChannel; ++channel) {
    for (std::size_t field = 0; field < Fields.size(); ++field) {
      text += (field == 0 ? "" : ",") + std::to_string((speech.*Fields[field])[channel]);
    }
    text += "\r\n";
  }
  return text;
}

bool SpeechSettings::FromFileText(const std::string& text, SpeechState& speech) {
  std::vector<std::string> lines = Split(Replace(text, "\r\n", "\n"), "\n");
  while (!lines.empty() && IsBlank(lines.back())) lines.pop_back();
  int16 count = 0;
  if (lines.size() != LastChannel + 1 || !ReadNumber(lines[0], count) || count != static_cast<int16>(Fields.size())) {
    return false;
  }
  SpeechState read = speech;
  for (std::size_t channel = FirstChannel; channel <= LastChannel; ++channel) {
    const std::vector<std::string> values = Split(lines[channel], ",");
    if (values.size() != Fields.size()) return false;
    for (std::size_t field = 0; field < Fields.size(); ++field) {
      if (!ReadNumber(values[field], (read.*Fields[field])[channel])) return false;
    }
  }
  speech = read;
  return true;
}

void SpeechSettings::SetDefaults(SpeechState& speech) {
  const std::string last = speech.LastSpoken;
  speech = SpeechState{};
  speech.LastSpoken = last;
}

}  // namespace corvid
