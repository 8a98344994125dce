// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/key_router.h"

#include <array>
#include <utility>

#include "core/keys.h"
#include "core/utf8.h"
#include "platform/key_chars.h"

namespace corvid {

namespace {

// Longer than any pause that a key handler makes between the halves of a key.
constexpr std::int64_t PatienceMilliseconds = 100;

constexpr std::array<int16, 3> ModifierKeys{keycode::Shift, keycode::Control, keycode::Alt};

}  // namespace

// Notes that a key is in work, and what was in work before when it is done.
class KeyRouter::Work {
 public:
  explicit Work(KeyRouter& router)
      : router_(router),
        oldSerial_(std::exchange(router.workSerial_, router.dialog_.Serial())),
        oldStart_(std::exchange(router.workStart_, router.clock_.MonotonicMilliseconds())) {
    ++router_.working_;
  }
  Work(const Work&) = delete;
  Work& operator=(const Work&) = delete;
  ~Work() {
    --router_.working_;
    router_.workSerial_ = oldSerial_;
    router_.workStart_ = oldStart_;
  }

 private:
  KeyRouter& router_;
  unsigned oldSerial_;
  std::int64_t oldStart_;
};

bool KeyRouter::Free() const {
  return working_ == 0 || dialog_.Serial() != workSerial_ ||
         clock_.MonotonicMilliseconds() - workStart_ >= PatienceMilliseconds;
}

void KeyRouter::KeyDown(int16 KeyCode) {
  held_ = static_cast<int16>(held_ | ModifierBit(KeyCode));
  target_ = dialog_.Serial();
  if (dialog_.IsOpen()) {
    dialog_.KeyDown(KeyCode, held_);
  } else if (events_ != nullptr) {
    events_->KeyDown(KeyCode, held_);
  }
}

// The character goes where its key went, or nowhere: a key that closed a dialog must not type into the entry.
void KeyRouter::KeyTyped(const std::string& character) {
  if (target_ != dialog_.Serial()) return;
  if (dialog_.IsOpen()) {
    dialog_.KeyTyped(character);
  } else if (events_ != nullptr) {
    events_->KeyTyped(character);
  }
}

void KeyRouter::KeyUp(int16 KeyCode) {
  held_ = static_cast<int16>(held_ & ~ModifierBit(KeyCode));
  if (dialog_.IsOpen()) {
    dialog_.KeyUp(KeyCode, held_);
  } else if (events_ != nullptr) {
    events_->KeyUp(KeyCode, held_);
  }
}

// A key that waits for an answer, or for time to pass, has its modifiers down no more: the keys that answer are not
// Alt+Tab or Control+Enter.
void KeyRouter::LetGo() {
  const int16 modifiers = std::exchange(borrowed_, int16{0});
  for (auto modifier = ModifierKeys.rbegin(); modifier != ModifierKeys.rend(); ++modifier)
    if ((ModifierBit(*modifier) & modifiers) != 0) KeyUp(*modifier);
}

void KeyRouter::Down(int16 KeyCode) {
  const Work work(*this);
  LetGo();
  KeyDown(KeyCode);
}

void KeyRouter::Up(int16 KeyCode) {
  const Work work(*this);
  KeyUp(KeyCode);
}

void KeyRouter::Press(int16 KeyCode, int16 Shift) {
  const Work work(*this);
  LetGo();
  const int16 own = ModifierBit(KeyCode);
  const auto missing = static_cast<int16>(Shift & ~held_ & ~own);
  for (const int16 modifier : ModifierKeys)
    if ((ModifierBit(modifier) & missing) != 0) KeyDown(modifier);
  borrowed_ = missing;
  KeyDown(KeyCode);
  const std::string character = CharacterOf(KeyCode, held_);
  if (!character.empty()) KeyTyped(character);
  KeyUp(KeyCode);
  LetGo();
}

void KeyRouter::EnterLine(TextModel& entry, const std::string& line) {
  const Work work(*this);  // the next line waits for the whole of this one
  if (entry.Locked() && events_ != nullptr) {
    // A blank leads to the entry line and is taken away again. The program drops the first when the key before it was
    // one that it took for itself.
    for (int blank = 0; blank < 2 && entry.Locked(); ++blank) events_->KeyTyped(" ");  // PUMP
    if (entry.Locked()) return;
    if (entry.Text().ends_with(' ')) entry.Select(entry.Length() - 1, entry.Length());
  } else {
    entry.SetSelStart(entry.Length());
  }
  entry.SetSelText(line);
  Press(keycode::Enter, 0);
}

void KeyRouter::Pressed(int16 KeyCode, int16 Shift, const std::string& text) {
  const Work work(*this);
  held_ = Shift;
  KeyDown(KeyCode);
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t length = CharLength(text, at);
    KeyTyped(text.substr(at, length));  // PUMP
    at += length;
  }
}

void KeyRouter::Released(int16 KeyCode, int16 Shift) {
  const Work work(*this);
  held_ = Shift;
  KeyUp(KeyCode);
}

void KeyRouter::Type(const std::string& character) {
  const Keystroke key = KeyOf(character);
  if (key.KeyCode != CharacterKey) {
    Press(key.KeyCode, key.Shift);
    return;
  }
  const Work work(*this);
  LetGo();
  KeyDown(key.KeyCode);
  KeyTyped(character);
  KeyUp(key.KeyCode);
}

}  // namespace corvid
