// SPDX-License-Identifier: GPL-3.0-or-later
// The questions that any part of the program may ask: message boxes, a line of text, a choice from a list, a file.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "core/upcalls.h"
#include "dialogs/gen_dialog.h"
#include "platform/platform.h"
#include "speech/speech_state.h"

namespace corvid {

class Prompts : public Prompter {
 public:
  Prompts(GenDialog& dialog, SpeechState& speech, Platform& platform, Upcalls& upcalls);

  int16 MsgBox(const std::string& text, int16 flags, const std::string& title) override;
  std::string TextPrompt(const std::string& prompt, const std::string& title, int16 WType,
                         const std::string& DefVal) override;
  std::string PickList(const std::string& list) override;
  bool ChooseFromList(const std::string& PromptString, const std::vector<std::string>& CList,
                      int16& position2) override;
  std::string InputBox2(const std::string& message, const std::string& title, const std::string& startString) override;
  void FolderDialog2(const std::string& StartFile, const std::string& wildcard, int16 fOptions,
                     const std::string& title, std::string& ErrorDescription, std::string& filename,
                     const std::string& StartingFolder) override;
  std::string PickDrive(const std::string& title) override;
  // The same with the folder of the player's files to begin with.
  void FolderDialog(const std::string& StartFile, const std::string& wildcard, int16 fOptions, const std::string& title,
                    std::string& ErrorDescription, std::string& filename, const std::string& userFolder);

  // How InputBox2 asks a player whose chosen speech is the built-in voices: without a window. False when it is another;
  // answer is the text typed otherwise. Left empty, a dialog asks. May pump events.
  std::function<bool(const std::string& message, std::string& answer)> AskByVoice;

  static constexpr int16 FileMayBeMissing = 1;  // bit of fOptions: the name of a new file is accepted

 private:
  void ChooseFile(const std::string& FormCode, const std::string& StartFile, const std::string& wildcard,
                  int16 fOptions, const std::string& title, std::string& ErrorDescription, std::string& filename,
                  const std::string& StartingFolder);
  std::vector<std::string> FolderItems(const std::string& folder, const std::string& wildcard) const;

  GenDialog& dialog_;
  SpeechState& speech_;
  Platform& platform_;
  Upcalls& upcalls_;
};

}  // namespace corvid
