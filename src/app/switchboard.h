// SPDX-License-Identifier: GPL-3.0-or-later
// The calls that go up the house, each passed on in a line to whoever serves it. It is the one object that lower floors
// may hold before the higher ones exist.
#pragma once

#include <string>
#include <vector>

#include "core/upcalls.h"
#include "platform/face.h"

namespace corvid {

class Switchboard : public CommandRunner, public ErrorSink, public Speaker, public Prompter, public TimerJobs {
 public:
  // Who serves; set by the main object before anything is called.
  CommandRunner* Commands = nullptr;
  ErrorSink* Errors = nullptr;
  Speaker* Voice = nullptr;
  Face* Screen = nullptr;
  Prompter* Questions = nullptr;
  TimerJobs* Jobs = nullptr;

  void ProcessCommand(const std::string& inlineText, int16& options, std::string& ErrorDescription, Parameters& rvar,
                      int16& outchannel) override {
    Commands->ProcessCommand(inlineText, options, ErrorDescription, rvar, outchannel);
  }
  void SortTriggers() override { Commands->SortTriggers(); }

  void ErrorReport(const std::string& ErrorDescription, const std::string& line, int errorCode, int16 flags) override {
    Errors->ErrorReport(ErrorDescription, line, errorCode, flags);
  }
  void DisplayErrorFile(const std::string& ErrorDescription, int16 bufno) override {
    Errors->DisplayErrorFile(ErrorDescription, bufno);
  }
  void ShowError(const std::string& strError) override { Errors->ShowError(strError); }
  void writeError(const std::string& ErrMes) override { Errors->writeError(ErrMes); }
  void ErrorDisplay(const std::string& mes) override { Errors->ErrorDisplay(mes); }
  void UnknownError(const std::string& error, const std::string& procedure,
                    const std::vector<std::string>& parameters) override {
    Errors->UnknownError(error, procedure, parameters);
  }

  void SpeakOut(const std::string& text, int16 window, int16 spokenByWindow) override {
    Voice->SpeakOut(text, window, spokenByWindow);
  }
  void Answer(const std::string& text, int16 window) override {
    Screen->NoteAnswer(text);
    Voice->Answer(text, window);
  }
  void Speak(const std::string& textstring, int16 tSpeechType, int16 voicetype) override {
    Voice->Speak(textstring, tSpeechType, voicetype);
  }
  void StopSpeech() override { Voice->StopSpeech(); }
  void StopSpeaking(int16 window) override { Voice->StopSpeaking(window); }
  void StopSpeakingAll() override { Voice->StopSpeakingAll(); }
  void SpellWord(const std::string& phrase, int16 WType) override { Voice->SpellWord(phrase, WType); }

  int16 MsgBox(const std::string& text, int16 flags, const std::string& title) override {
    return Questions->MsgBox(text, flags, title);
  }
  std::string TextPrompt(const std::string& prompt, const std::string& title, int16 WType,
                         const std::string& DefVal) override {
    return Questions->TextPrompt(prompt, title, WType, DefVal);
  }
  std::string PickList(const std::string& list) override { return Questions->PickList(list); }
  bool ChooseFromList(const std::string& PromptString, const std::vector<std::string>& CList,
                      int16& position2) override {
    return Questions->ChooseFromList(PromptString, CList, position2);
  }
  std::string InputBox2(const std::string& message, const std::string& title, const std::string& startString) override {
    return Questions->InputBox2(message, title, startString);
  }
  void FolderDialog2(const std::string& StartFile, const std::string& wildcard, int16 fOptions,
                     const std::string& title, std::string& ErrorDescription, std::string& filename,
                     const std::string& StartingFolder) override {
    Questions->FolderDialog2(StartFile, wildcard, fOptions, title, ErrorDescription, filename, StartingFolder);
  }
  std::string PickDrive(const std::string& title) override { return Questions->PickDrive(title); }

  void StartTimer1(int16 action, int milliseconds) override { Jobs->StartTimer1(action, milliseconds); }
};

}  // namespace corvid
