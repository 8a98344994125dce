// SPDX-License-Identifier: GPL-3.0-or-later
// The six speech channels: each is silent, spoken by the player's screen reader, or by a voice of its own.
#pragma once

#include <cstdint>
#include <string>

#include "core/types.h"
#include "core/upcalls.h"
#include "input/keyboard_state.h"
#include "platform/platform.h"
#include "speech/speech_state.h"

namespace corvid {

namespace speechtype {
inline constexpr int16 None = 0, ScreenReader = 1, Engine = 3;
}

class Speech : public Speaker {
 public:
  static constexpr int16 Channels = 6;
  static constexpr int16 SlowestRate = -10, FastestRate = 21;

  Speech(SpeechState& speech, KeyboardState& keyboard, Platform& platform)
      : speech_(speech), keyboard_(keyboard), platform_(platform) {}

  // Speaks on a channel as its settings say: not when it is muted, and not, with spokenByWindow non-zero, when a screen
  // reader reads the text from the window by itself. A channel outside 1 to 6 is silent.
  void SpeakOut(const std::string& text, int16 window, int16 spokenByWindow) override;
  // tSpeechType below 0: the type given to TTSSetup; voicetype below 0: channel 1. Blanks only are not spoken and leave
  // LastSpoken; any other text becomes LastSpoken, also when nothing speaks.
  void Speak(const std::string& textstring, int16 tSpeechType, int16 voicetype) override;
  void StopSpeech() override;                // all of the type given to TTSSetup
  void StopSpeaking(int16 window) override;  // one channel
  void StopSpeakingAll() override;           // the channels that the Control key may silence

  int16 ChosenType() const { return type_; }
  // Chooses the type for texts without one and makes it ready. What cannot be made ready is told once on the screen and
  // not used; a later call tries again, and so does speech on a channel of an engine that could not start. Ends
  // SpeakWhateverWorks.
  void TTSSetup(int16 TTSType);
  // While no type is chosen yet (the first run), channels of type 0 speak all the same: by the engine, else by the
  // screen reader. On from the start.
  void SpeakWhateverWorks(bool on) { whateverWorks_ = on; }

  // What could speak on this machine: the engine, else the screen reader, else nothing. Tells the player nothing.
  int16 WorkingType();
  // Voice, rate, volume and priority of a channel's voice; VoiceChoice below 0 means channel 1. A value the engine does
  // not take leaves the others to be set.
  void SetSapiValues(int16 VoiceValue, int16 RateValue, int16 VolumeValue, int16 PriorityValue, int16 VoiceChoice);
  void ApplyVoices();  // SetSapiValues for each channel that the engine speaks
  // Changes the rate of channel 1's voice by Jump, within its limits; CurrentRate receives it.
  void AdjustRate2(int16 Jump, int16& CurrentRate);

  // Speaks a phrase character by character on a channel, a line break as one, 0.4 seconds apart; a key press ends it.
  // LastSpoken stays. Pumps events between characters.
  void SpellWord(const std::string& phrase, int16 WType) override;
  // What was spoken last, once more, on channel 1 in the way chosen.
  void RepeatLastThingSpoken();
  // The same character by character, 0.4 seconds for each; a key press ends it. LastSpoken stays. Pumps events.
  void SpellLastThingSpoken();
  // Lets secs seconds pass while the rest of the program runs, over midnight as at any other time. Ends with the
  // program. Pumps events.
  void Waiter2(double secs);

 private:
  bool EngineReady();  // these two tell the player when it does not work; the next two do not
  bool ReaderReady();
  bool StartEngine();
  bool StartReader();
  int16 EffectiveType(int16 type);
  void TellProblem(int16 type, const std::string& problem);  // type: what failed; None for every way
  bool WaitForKey(int milliseconds);
  template <typename Done>
  bool PumpFor(std::int64_t milliseconds, Done&& done);

  enum class Readiness { Untried, Ready, Failed };

  SpeechState& speech_;
  KeyboardState& keyboard_;
  Platform& platform_;
  int16 type_ = speechtype::None;        // as TTSSetup keeps it
  int16 wantedType_ = speechtype::None;  // as it was given to TTSSetup
  bool whateverWorks_ = true;
  Readiness engine_ = Readiness::Untried;
  std::int64_t engineAgain_ = 0;  // when one that failed may be tried again, milliseconds of the clock
  int16 toldType_ = 0;            // of the last problem that the player was told
  std::string toldProblem_;
  std::int64_t tellAgain_ = 0;  // when the same one may be told again
  Readiness reader_ = Readiness::Untried;
};

}  // namespace corvid
