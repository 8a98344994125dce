// SPDX-License-Identifier: GPL-3.0-or-later
#include "speech/speech.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "core/fault.h"
#include "core/text.h"
#include "core/utf8.h"
#include "speech/punctuation.h"

namespace corvid {

namespace {

constexpr int SpellingPause = 400;            // milliseconds between characters
constexpr std::int64_t LongestNap = 1000000;  // milliseconds
constexpr int16 ByTheChosenWay = -1;          // to Speak: the type given to TTSSetup
constexpr int16 FirstVoice = Channel::Incoming;
constexpr int16 LoudestVolume = 100;
constexpr std::string_view StartProblem = "Error! Error initializing screen reader or MS SAPI.";  // title and text
constexpr std::int64_t EngineAgain = 2000;  // milliseconds between two looks for an engine that could not start, and
                                            // between two notices of it

bool IsChannel(int16 window) {
  return window >= 1 && window <= Speech::Channels;
}

std::size_t Slot(int16 window) {
  return static_cast<std::size_t>(window);
}

// Text that a screen reader finds in a window by itself.
bool ReadByScreenReader(int16 type) {
  constexpr int16 alsoReader = 2, alsoReaderToo = 4;
  return type == speechtype::ScreenReader || type == alsoReader || type == alsoReaderToo;
}

bool IsLineBreak(std::string_view text) {
  return text.starts_with('\r') || text.starts_with('\n');
}

template <typename Work>
void IgnoreFault(Work&& work) {
  try {
    work();
  } catch (const Fault&) {
    // A voice that is not there leaves the other settings to be made.
  }
}

}  // namespace

void Speech::SpeakOut(const std::string& text, int16 window, int16 spokenByWindow) {
  if (text.empty() || !IsChannel(window) || speech_.ChannelMuted[Slot(window)] != 0) return;
  const int16 type = speech_.SpeechType[Slot(window)];
  if (spokenByWindow != 0 && ReadByScreenReader(type)) return;
  Speak(text, type, window);
}

void Speech::Speak(const std::string& textstring, int16 tSpeechType, int16 voicetype) {
  if (IsBlank(textstring)) return;
  std::string text = textstring;  // LastSpoken itself may be spoken again
  const int16 channel = voicetype < 0 ? FirstVoice : voicetype;
  switch (IsChannel(channel) ? EffectiveType(tSpeechType < 0 ? type_ : tSpeechType) : speechtype::None) {
    case speechtype::ScreenReader:
      ReaderReady();  // one that is not there is told, and looked for again by what is said to it
      platform_.screenReader.Say(channel, text, false);
      break;
    case speechtype::Engine:
      if (EngineReady()) platform_.speechEngine.Speak(channel, text);
      break;
    default:
      break;
  }
  speech_.LastSpoken = std::move(text);
}

void Speech::StopSpeech() {
  for (int16 channel = 1; channel <= Channels; ++channel) {
    if (EffectiveType(type_) == speechtype::ScreenReader) {
      if (reader_ != Readiness::Untried) platform_.screenReader.Say(channel, "", true);
    } else if (engine_ == Readiness::Ready) {
      platform_.speechEngine.Purge(channel);
    }
  }
}

void Speech::StopSpeaking(int16 window) {
  if (!IsChannel(window)) return;
  const int16 type = EffectiveType(speech_.SpeechType[Slot(window)]);
  if (type == speechtype::ScreenReader && reader_ != Readiness::Untried) platform_.screenReader.Say(window, "", true);
  if (type == speechtype::Engine && engine_ == Readiness::Ready) platform_.speechEngine.Purge(window);
}

void Speech::StopSpeakingAll() {
  for (int16 channel = 1; channel <= Channels; ++channel) {
    if (speech_.NotInterruptedByControl[Slot(channel)] == 0) StopSpeaking(channel);
  }
}

// ---- making the ways to speak ready ----

void Speech::TTSSetup(int16 TTSType) {
  whateverWorks_ = false;
  type_ = wantedType_ = TTSType;
  if (type_ == speechtype::ScreenReader && reader_ == Readiness::Failed) reader_ = Readiness::Untried;
  if (type_ == speechtype::Engine && engine_ == Readiness::Failed) engine_ = Readiness::Untried;
  const bool failed =
      (type_ == speechtype::ScreenReader && !ReaderReady()) || (type_ == speechtype::Engine && !EngineReady());
  if (failed) type_ = speechtype::None;
}

// Each is made ready the first time that a channel needs it.
bool Speech::EngineReady() {
  const bool first = engine_ == Readiness::Untried;
  if (!StartEngine() && first) TellProblem(speechtype::Engine, platform_.speechEngine.Problem());
  return engine_ == Readiness::Ready;
}

bool Speech::ReaderReady() {
  const bool first = reader_ == Readiness::Untried;
  if (!StartReader() && first) TellProblem(speechtype::ScreenReader, platform_.screenReader.Problem());
  return reader_ == Readiness::Ready;
}

int16 Speech::WorkingType() {
  if (StartEngine()) return speechtype::Engine;
  return StartReader() ? speechtype::ScreenReader : speechtype::None;
}

// An engine without a sound device is looked for again while there is something to say: a player who plugs in
// headphones later is to hear it. The screen reader is not started again here, since that may keep the program waiting:
// it looks for its service by itself when there is something to say.
bool Speech::StartEngine() {
  if (engine_ == Readiness::Ready) return true;
  const std::int64_t now = platform_.clock.MonotonicMilliseconds();
  if (engine_ == Readiness::Failed && now < engineAgain_) return false;
  engine_ = platform_.speechEngine.Start() ? Readiness::Ready : Readiness::Failed;
  engineAgain_ = now + EngineAgain;
  if (engine_ == Readiness::Failed) return false;
  if (wantedType_ == speechtype::Engine) type_ = speechtype::Engine;
  ApplyVoices();
  return true;
}

bool Speech::StartReader() {
  if (reader_ == Readiness::Untried) {
    reader_ = platform_.screenReader.Start() ? Readiness::Ready : Readiness::Failed;
  } else if (reader_ == Readiness::Failed && platform_.screenReader.Problem().empty()) {
    reader_ = Readiness::Ready;
    if (wantedType_ == speechtype::ScreenReader) type_ = speechtype::ScreenReader;
  }
  return reader_ == Readiness::Ready;
}

int16 Speech::EffectiveType(int16 type) {
  if (!whateverWorks_ || type != speechtype::None) return type;
  const bool first = engine_ == Readiness::Untried || reader_ == Readiness::Untried;
  if (StartEngine()) return speechtype::Engine;
  if (StartReader()) return speechtype::ScreenReader;
  if (first) {
    const std::string problems = platform_.speechEngine.Problem() + " " + platform_.screenReader.Problem();
    TellProblem(speechtype::None, Trim(problems));
  }
  return speechtype::None;
}

// On the screen, since there is no voice to say it; the program goes on.
// A script that chooses the speech anew while the program starts tries it anew, and need not be told twice.
void Speech::TellProblem(int16 type, const std::string& problem) {
  const std::int64_t now = platform_.clock.MonotonicMilliseconds();
  const bool justTold = type == toldType_ && problem == toldProblem_ && now < tellAgain_;
  toldType_ = type;
  toldProblem_ = problem;
  tellAgain_ = now + EngineAgain;
  if (!justTold) platform_.face.Notice(std::string(StartProblem) + (problem.empty() ? "" : " " + problem));
}

// ---- voices ----

void Speech::SetSapiValues(int16 VoiceValue, int16 RateValue, int16 VolumeValue, int16 PriorityValue,
                           int16 VoiceChoice) {
  const int16 voice = VoiceChoice < 0 ? FirstVoice : VoiceChoice;
  if (!IsChannel(voice) || !EngineReady()) return;
  SpeechEngine& engine = platform_.speechEngine;
  IgnoreFault([&] { engine.SetVoice(voice, VoiceValue); });
  IgnoreFault([&] { engine.SetRate(voice, std::clamp(RateValue, SlowestRate, FastestRate)); });
  IgnoreFault([&] { engine.SetVolume(voice, std::clamp(VolumeValue, int16{0}, LoudestVolume)); });
  IgnoreFault([&] { engine.SetPriority(voice, PriorityValue); });
}

void Speech::ApplyVoices() {
  for (int16 channel = 1; channel <= Channels; ++channel) {
    const std::size_t slot = Slot(channel);
    if (speech_.SpeechType[slot] != speechtype::Engine) continue;
    SetSapiValues(speech_.VoiceIndex[slot], speech_.VoiceRate[slot], speech_.VoiceVolume[slot],
                  speech_.VoicePriority[slot], channel);
  }
}

void Speech::AdjustRate2(int16 Jump, int16& CurrentRate) {
  const int wanted = platform_.speechEngine.Rate(Channel::Incoming) + Jump;
  CurrentRate = static_cast<int16>(std::clamp<int>(wanted, SlowestRate, FastestRate));
  platform_.speechEngine.SetRate(Channel::Incoming, CurrentRate);
}

// ---- saying it again, spelling, waiting ----

void Speech::RepeatLastThingSpoken() {
  Speak(speech_.LastSpoken, ByTheChosenWay, Channel::Incoming);
}

void Speech::SpellLastThingSpoken() {
  const std::string kept = speech_.LastSpoken;
  for (std::size_t place = 0; place < kept.size();) {
    const std::size_t length = CharLength(kept, place);
    StopSpeech();
    // Kept: the codes of its line end are characters too, which pass without a word.
    Speak(SpokenCharacter(std::string_view(kept).substr(place, length)), ByTheChosenWay, Channel::Incoming);
    place += length;
    if (WaitForKey(SpellingPause)) break;
  }
  speech_.LastSpoken = kept;
}

void Speech::SpellWord(const std::string& phrase, int16 WType) {
  const std::string kept = speech_.LastSpoken;
  for (std::size_t place = 0; place < phrase.size();) {
    const std::string_view left = std::string_view(phrase).substr(place);
    // A caret that passes a line break would otherwise answer with silence.
    const bool lineBreak = IsLineBreak(left);
    const std::size_t length = left.starts_with("\r\n") ? 2 : CharLength(phrase, place);
    StopSpeaking(WType);
    SpeakOut(lineBreak ? "new line" : SpokenCharacter(left.substr(0, length)), WType, 0);
    place += length;
    if (place < phrase.size() && WaitForKey(SpellingPause)) break;
  }
  speech_.LastSpoken = kept;
}

void Speech::Waiter2(double secs) {
  constexpr double longest = 1e9;  // seconds; more would not fit a count of milliseconds
  PumpFor(std::llround(std::clamp(secs, 0.0, longest) * 1000), [] { return false; });
}

// True when a key was pressed, or the program ends, before the time was up.
bool Speech::WaitForKey(int milliseconds) {
  const int16 before = keyboard_.LastKeyCode;
  keyboard_.LastKeyCode = 0;
  if (!PumpFor(milliseconds, [this] { return keyboard_.LastKeyCode != 0; })) return true;
  keyboard_.LastKeyCode = before;
  return false;
}

// True when the whole time has passed before done, or the end of the program, came about. Counts on a clock that knows
// no midnight.
template <typename Done>
bool Speech::PumpFor(std::int64_t milliseconds, Done&& done) {
  const std::int64_t end = platform_.clock.MonotonicMilliseconds() + milliseconds;
  while (!done() && !platform_.events.Ending()) {
    const std::int64_t left = end - platform_.clock.MonotonicMilliseconds();
    if (left <= 0) return true;
    platform_.events.WaitEvents(static_cast<int>(std::min(left, LongestNap)));  // PUMP
  }
  return false;
}

}  // namespace corvid
