// SPDX-License-Identifier: GPL-3.0-or-later
#include "speech/voice_keys.h"

#include <algorithm>
#include <cstdint>

#include "core/keys.h"
#include "speech/punctuation.h"
#include "speech/speech.h"

namespace corvid {

namespace {

constexpr int16 ByTheChosenWay = -1;  // to Speak: the type given to TTSSetup
constexpr int16 VolumeStep = 5, LoudestVolume = 100;

// While it lives, keys wait in TakenKeys and do nothing else. What they did before holds again afterwards.
class KeysTaken {
 public:
  explicit KeysTaken(KeyboardState& keyboard) : keyboard_(keyboard), before_(keyboard.KeysTaken) {
    keyboard_.KeysTaken = true;
    keyboard_.TakenKeys.clear();
  }
  ~KeysTaken() {
    keyboard_.KeysTaken = before_;
    keyboard_.TakenKeys.clear();
  }
  KeysTaken(const KeysTaken&) = delete;
  KeysTaken& operator=(const KeysTaken&) = delete;

 private:
  KeyboardState& keyboard_;
  bool before_;
};

enum class Way { None, Right, Left, Up, Down };

Way WayOf(int16 KeyCode) {
  switch (KeyCode) {
    case keycode::Right:
    case 'L':
      return Way::Right;
    case keycode::Left:
    case 'J':
      return Way::Left;
    case keycode::Up:
    case 'I':
      return Way::Up;
    case keycode::Down:
    case 'K':
      return Way::Down;
    default:
      return Way::None;
  }
}

}  // namespace

struct VoiceKeys::Adjuster {
  std::string_view Prompt;
  std::string_view Sample;
  int16 Step, Least, Most;
  bool UpRaises;
  void (SpeechEngine::*Set)(int16 voice, int16 value);
};

void VoiceKeys::AdjustVoice(int16& CurrentVoice) {
  if (speech_.ChosenType() != speechtype::Engine) return;
  const std::size_t voices = platform_.speechEngine.Voices().size();
  if (voices == 0) {
    upcalls_.prompter.MsgBox("No MS SAPI Voices were found.", box::OkOnly | box::Exclamation, "Error! ");  // PUMP
    return;
  }
  const auto last = static_cast<int16>(std::min<std::size_t>(voices, INT16_MAX) - 1);
  // Kept: through a list of voices the arrows lead downwards, the other way than for rate and volume.
  Adjust({"Use the arrows  to select voice. Press Enter when done.", "Here is the current voice", 1, 0, last, false,
          &SpeechEngine::SetVoice},
         CurrentVoice);
}

void VoiceKeys::AdjustRate(int16& CurrentRate) {
  Adjust({"Use the arrows to adjust rate. Press Enter when done.", "Here is the new rate.", 1, Speech::SlowestRate,
          Speech::FastestRate, true, &SpeechEngine::SetRate},
         CurrentRate);
}

void VoiceKeys::AdjustVolume(int16& CurrentVolume) {
  Adjust({"Use the arrows to adjust volume. Press Enter when done.", "Here is the new volume.", VolumeStep, 0,
          LoudestVolume, true, &SpeechEngine::SetVolume},
         CurrentVolume);
}

void VoiceKeys::Adjust(const Adjuster& adjuster, int16& value) {
  if (speech_.ChosenType() != speechtype::Engine) return;
  const KeysTaken taken(keyboard_);
  Say(adjuster.Prompt);
  int16 KeyCode = 0;
  int16 Shift = 0;
  while (NextKey(KeyCode, Shift)) {  // PUMP
    if (KeyCode == keycode::Enter || KeyCode == keycode::Escape) return;
    const Way way = WayOf(KeyCode);
    if (way == Way::None) continue;
    const bool towardsMore =
        adjuster.UpRaises ? way == Way::Up || way == Way::Right : way == Way::Down || way == Way::Left;
    const int wanted = value + (towardsMore ? adjuster.Step : -adjuster.Step);
    const auto next = static_cast<int16>(std::clamp<int>(wanted, adjuster.Least, adjuster.Most));
    if (next == value) continue;  // a limit: there is nothing new to hear
    value = next;
    (platform_.speechEngine.*adjuster.Set)(Channel::Incoming, value);
    speech_.StopSpeech();
    Say(adjuster.Sample);
  }
}

std::string VoiceKeys::EditBox(const std::string& message) {
  const KeysTaken taken(keyboard_);
  Say(message);
  std::string typed;
  int16 KeyCode = 0;
  int16 Shift = 0;
  while (NextKey(KeyCode, Shift)) {  // PUMP
    if (KeyCode == keycode::Enter) return typed;
    if (KeyCode == keycode::Escape) return {};
    if (KeyCode == keycode::Backspace && !typed.empty()) {
      Say(SpokenCharacter(typed.substr(typed.size() - 1)));
      typed.pop_back();
    } else if (KeyCode > keycode::Alt) {
      const std::string character = TypedCharacter(KeyCode, Shift);
      if (character.empty()) continue;
      Say(SpokenCharacter(character));
      typed += character;
    }
  }
  return {};
}

// False when no key will come any more: the program ends, or its player has gone.
bool VoiceKeys::NextKey(int16& KeyCode, int16& Shift) {
  while (keyboard_.TakenKeys.empty()) {
    if (platform_.events.Ending() || !platform_.face.PlayerThere()) return false;
    platform_.events.WaitEvents(-1);  // PUMP
  }
  const KeyPress key = keyboard_.TakenKeys.front();
  keyboard_.TakenKeys.erase(keyboard_.TakenKeys.begin());
  KeyCode = key.KeyCode;
  Shift = key.Shift;
  return true;
}

void VoiceKeys::Say(std::string_view text) {
  speech_.Speak(std::string(text), ByTheChosenWay, Channel::Incoming);
}

}  // namespace corvid
