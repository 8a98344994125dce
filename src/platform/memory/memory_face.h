// SPDX-License-Identifier: GPL-3.0-or-later
// A player without window, ears or hands: what is shown and spoken is recorded, dialogs are answered from a list.
#pragma once

#include <array>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/face.h"
#include "platform/memory/effects.h"
#include "platform/speech.h"

namespace corvid {

class MemoryFace : public Face, public DialogView {
 public:
  explicit MemoryFace(EffectLog& effects) : effects_(effects) {}

  void SetEvents(FaceEvents* events) override { Events = events; }
  DialogView& Dialogs() override { return *this; }
  void AttachEntry(TextModel& entry) override { EntryText = &entry; }
  void AttachViewport(int16 Index, bool colour, TextModel& viewport) override;
  void ShowMain() override { shown_ = true; }
  bool MainShown() const override { return shown_; }
  void SetTitle(const std::string& title) override;
  void BringForward() override { effects_.Add("forward", ""); }
  void SetFocus(MainFocus focus) override;
  MainFocus Focus() const override { return focus_; }
  void ShowListMenu(const ListMenuView& menu) override;
  void SelectListRow(int32 row) override { Menu.Index = row; }
  void CloseListMenu() override;
  void SetEntryLabel(const std::string& label) override { EntryLabel = label; }
  void ResizeForm(int16 percent) override { effects_.Add("resize", std::to_string(percent)); }
  void Beep() override { effects_.Add("beep", ""); }
  std::string ClipboardText() override { return Clipboard; }
  void SetClipboardText(const std::string& text) override;
  void StartProgram(const std::string& program, const std::string& file) override;
  void Notice(const std::string& text) override { effects_.Add("notice", text); }
  void NoteAnswer(const std::string& text) override { Answers.push_back(text); }
  void NoteSend(int16 session, const std::string& text) override;
  void NoteSession(int16 session, const std::string& state) override;
  void NoteCleared(int16 session) override { effects_.Add("cleared", std::to_string(session)); }

  void OpenDialog(DialogModel& model, DialogEvents& events) override;
  void ControlChanged(int32 control) override;
  void FocusControl(int32 control) override;
  void CloseDialog() override;

  // An answer to the next dialog that waits: words of the button to press, and values to give before it. An unknown
  // button fails the test through the effect "unanswered".
  struct Answer {
    std::string Button;
    std::map<int32, std::string> Texts;  // by place in Controls
    std::map<int32, int32> Rows;         // list rows
    std::map<int32, int16> Values;       // checks, options, scroll bars
  };
  void Will(const std::string& button) { answers_.push_back({button, {}, {}, {}}); }
  void Will(Answer answer) { answers_.push_back(std::move(answer)); }
  std::size_t AnswersLeft() const { return answers_.size(); }
  // Gives the open dialog its next answer; without one it is closed from outside and "unanswered" is recorded.
  bool AnswerDialog();
  DialogModel* OpenModel() { return model_; }
  DialogEvents* OpenEvents() { return dialogEvents_; }

  FaceEvents* Events = nullptr;
  TextModel* EntryText = nullptr;
  std::string Title;
  std::string EntryLabel;
  std::string Clipboard;
  std::vector<std::string> Answers;  // short ones, as a face writes them that is read with the fingers
  ListMenuView Menu;                 // as shown last
  bool MenuOpen = false;
  bool PlayerThere() const override { return Player; }
  bool Player = true;         // false: as when the input has ended
  bool RecordDisplay = true;  // effects "display" for text that reaches a viewport

 private:
  class ViewportWatch;
  bool Press(const std::string& button);

  EffectLog& effects_;
  bool shown_ = false;
  MainFocus focus_ = MainFocus::Entry;
  DialogModel* model_ = nullptr;
  DialogEvents* dialogEvents_ = nullptr;
  std::deque<Answer> answers_;
  std::vector<std::unique_ptr<TextObserver>> watches_;
};

// Voices and screen reader that write down what they would say.
class MemorySpeech : public SpeechEngine, public ScreenReader {
 public:
  explicit MemorySpeech(EffectLog& effects) : effects_(effects) {}
  bool Start() override { return Works; }
  std::string Problem() const override { return Works ? "" : "There is no voice in this test"; }
  std::vector<std::string> Voices() override { return VoiceNames; }
  void Speak(int16 voice, const std::string& text) override;
  void Purge(int16 voice) override;
  void SetVoice(int16 voice, int16 number) override { Set(voice).voice = number; }
  void SetRate(int16 voice, int16 rate) override { Set(voice).rate = rate; }
  void SetVolume(int16 voice, int16 volume) override { Set(voice).volume = volume; }
  void SetPriority(int16 voice, int16 priority) override { Set(voice).priority = priority; }
  int16 Rate(int16 voice) const override { return settings_.at(static_cast<std::size_t>(voice)).rate; }
  int16 Volume(int16 voice) const override { return settings_.at(static_cast<std::size_t>(voice)).volume; }
  void Say(int16 channel, const std::string& text, bool interrupt) override;

  struct VoiceSettings {
    int16 voice = 0, rate = 0, volume = 100, priority = 0;
  };
  VoiceSettings& Set(int16 voice) { return settings_.at(static_cast<std::size_t>(voice)); }

  bool Works = true;  // false before the start: there is no voice
  // Afterwards: Silent voices say nothing and tell nobody, Broken ones fail at each call.
  enum class Death { None, Silent, Broken };
  Death Died = Death::None;
  std::vector<std::string> VoiceNames{"Ann", "Ben", "Cem"};

 private:
  bool Lives() const;

  EffectLog& effects_;
  std::array<VoiceSettings, 7> settings_;
};

}  // namespace corvid
