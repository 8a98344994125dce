// SPDX-License-Identifier: GPL-3.0-or-later
// Stand-ins for the higher floors, for tests of a lower one: they record what they are asked.
#pragma once

#include <string>
#include <vector>

#include "core/fault.h"
#include "core/upcalls.h"
#include "platform/memory/effects.h"

namespace corvid {

// Speaks into the effects as "spoken" "5 text", with a mark where a screen reader would be left to read by itself.
class RecordingSpeaker : public Speaker {
 public:
  explicit RecordingSpeaker(EffectLog& effects) : effects_(effects) {}
  void SpeakOut(const std::string& text, int16 window, int16 spokenByWindow) override {
    if (text.empty()) return;
    effects_.Add("spoken", std::to_string(window) + (spokenByWindow != 0 ? "w " : " ") + text);
  }
  void Speak(const std::string& text, int16, int16 voice) override {
    if (Fails) throw Fault(FaultKind::Internal, "no voice");
    effects_.Add("spoken", std::to_string(voice) + " " + text);
  }
  void StopSpeech() override { effects_.Add("stop", "all"); }
  void StopSpeaking(int16 window) override { effects_.Add("stop", std::to_string(window)); }
  void StopSpeakingAll() override { effects_.Add("stop", "control"); }
  void SpellWord(const std::string& phrase, int16 WType) override {
    effects_.Add("spelled", std::to_string(WType) + " " + phrase);
  }
  bool Fails = false;  // Speak throws

 private:
  EffectLog& effects_;
};

class RecordingErrors : public ErrorSink {
 public:
  explicit RecordingErrors(EffectLog& effects) : effects_(effects) {}
  void ErrorReport(const std::string& ErrorDescription, const std::string& line, int, int16) override {
    effects_.Add("error", ErrorDescription + " in command: " + line);
  }
  void DisplayErrorFile(const std::string& ErrorDescription, int16 bufno) override {
    if (!ErrorDescription.empty()) effects_.Add("errorfile", std::to_string(bufno));
  }
  void ShowError(const std::string& text) override { effects_.Add("showerror", text); }
  void writeError(const std::string& text) override { effects_.Add("showerror", text); }
  void ErrorDisplay(const std::string& text) override { effects_.Add("showerror", text); }
  void UnknownError(const std::string& error, const std::string& procedure, const std::vector<std::string>&) override {
    effects_.Add("unknownerror", procedure + ": " + error);
  }

 private:
  EffectLog& effects_;
};

class RecordingScreens : public Screens {
 public:
  explicit RecordingScreens(EffectLog& effects) : effects_(effects) {}
  void MaintainCharacters() override { effects_.Add("screen", "characters"); }
  int16 SelectScreenReader() override { return 3; }
  void quit(bool Mandatory) override { effects_.Add("quit", Mandatory ? "mandatory" : "asked"); }
  void InitializeConfigs() override { effects_.Add("screen", "configs"); }
  void SimulateEnter() override { effects_.Add("screen", "enter"); }
  void ShowWindowAt(int16 buffer, int32 caret) override {
    effects_.Add("screen", "buffer " + std::to_string(buffer) + " at " + std::to_string(caret));
  }

 private:
  EffectLog& effects_;
};

class RecordingRunner : public CommandRunner {
 public:
  explicit RecordingRunner(EffectLog& effects) : effects_(effects) {}
  void ProcessCommand(const std::string& line, int16&, std::string&, Parameters&, int16&) override {
    effects_.Add("command", line);
  }
  void SortTriggers() override {}

 private:
  EffectLog& effects_;
};

class RecordingJobs : public TimerJobs {
 public:
  explicit RecordingJobs(EffectLog& effects) : effects_(effects) {}
  void StartTimer1(int16 action, int milliseconds) override {
    effects_.Add("job", std::to_string(action) + " in " + std::to_string(milliseconds));
  }

 private:
  EffectLog& effects_;
};

// A player who answers nothing.
class SilentPrompter : public Prompter {
 public:
  int16 MsgBox(const std::string&, int16, const std::string&) override { return 0; }
  std::string TextPrompt(const std::string&, const std::string&, int16, const std::string&) override { return {}; }
  std::string PickList(const std::string&) override { return {}; }
  bool ChooseFromList(const std::string&, const std::vector<std::string>&, int16&) override { return false; }
  std::string InputBox2(const std::string&, const std::string&, const std::string&) override { return {}; }
  void FolderDialog2(const std::string&, const std::string&, int16, const std::string&, std::string&, std::string&,
                     const std::string&) override {}
  std::string PickDrive(const std::string&) override { return {}; }
};

// Message boxes go to the real prompts, which need the table of calls before they exist; nothing else is answered.
class RelayedBoxes : public SilentPrompter {
 public:
  int16 MsgBox(const std::string& text, int16 flags, const std::string& title) override {
    return Real->MsgBox(text, flags, title);
  }
  Prompter* Real = nullptr;  // set before the first box
};

// All the higher floors at once.
struct RecordingFloors {
  explicit RecordingFloors(EffectLog& effects)
      : runner(effects), errors(effects), speaker(effects), screens(effects), jobs(effects) {}
  // The table of calls with another one to answer questions, or to do jobs.
  Upcalls With(Prompter& other) { return {runner, errors, speaker, other, screens, jobs}; }
  Upcalls With(TimerJobs& other) { return {runner, errors, speaker, prompter, screens, other}; }

  RecordingRunner runner;
  RecordingErrors errors;
  RecordingSpeaker speaker;
  SilentPrompter prompter;
  RecordingScreens screens;
  RecordingJobs jobs;
  Upcalls upcalls{runner, errors, speaker, prompter, screens, jobs};
};

}  // namespace corvid
