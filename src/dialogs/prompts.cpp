// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/prompts.h"

#include <algorithm>

#include "core/keys.h"
#include "core/text.h"

namespace corvid {

namespace {

constexpr int32 MessageWidth = 5000;  // twips
constexpr int32 LineHeight = 295;     // twips for each 40 characters of a message
constexpr int32 CharactersPerLine = 40;
constexpr int16 ButtonMask = 0xF;

struct BoxButton {
  const char* Words;
  char Key;
  int16 Result;
};

constexpr BoxButton OkButton{"Ok", 'O', box::ResultOk};
constexpr BoxButton CancelButton{"Cancel", 'C', box::ResultCancel};
constexpr BoxButton YesButton{"Yes", 'Y', box::ResultYes};
constexpr BoxButton NoButton{"No", 'N', box::ResultNo};

std::vector<BoxButton> ButtonsOf(int16 flags) {
  switch (flags & ButtonMask) {
    case box::OkCancel:
      return {OkButton, CancelButton};
    case box::YesNoCancel:
      return {YesButton, NoButton, CancelButton};
    case box::YesNo:
      return {YesButton, NoButton};
    default:
      return {OkButton};
  }
}

std::size_t DefaultOf(int16 flags, std::size_t count) {
  const std::size_t wanted = (flags & box::ThirdDefault) != 0 ? 2 : (flags & box::SecondDefault) != 0 ? 1 : 0;
  return std::min(wanted, count - 1);
}

// What Escape answers: Cancel where there is one, OK where there is nothing else, nothing for Yes and No.
int16 EscapeButton(const std::vector<BoxButton>& buttons) {
  for (std::size_t i = 0; i < buttons.size(); ++i)
    if (buttons[i].Result == box::ResultCancel) return static_cast<int16>(i + 1);
  return buttons.size() == 1 ? int16{1} : int16{0};
}

bool IsClick(const DialogEventArgs& at, ControlKind kind) {
  return at.Kind == kind && at.Event == DialogEvent::Click;
}

}  // namespace

Prompts::Prompts(GenDialog& dialog, SpeechState& speech, Platform& platform, Upcalls& upcalls)
    : dialog_(dialog), speech_(speech), platform_(platform), upcalls_(upcalls) {}

int16 Prompts::MsgBox(const std::string& text, int16 flags, const std::string& title) {
  const std::vector<BoxButton> buttons = ButtonsOf(flags);
  const auto count = static_cast<int16>(buttons.size());
  int16 answer = 0;
  const auto handler = [&](const DialogEventArgs& at) {
    if (IsClick(at, ControlKind::Button)) {
      if (at.Index > count) {
        upcalls_.speaker.StopSpeaking(Channel::System);
        upcalls_.speaker.SpeakOut(text, Channel::System, 0);
        return;
      }
      answer = buttons[static_cast<std::size_t>(at.Index - 1)].Result;
      dialog_.End(answer);
    } else if (at.Event == DialogEvent::KeyDown && (at.Shift & ControlBit) == 0) {
      for (const BoxButton& button : buttons) {
        if (at.KeyOrState != button.Key) continue;
        at.KeyOrState = 0;
        answer = button.Result;
        dialog_.End(answer);
        return;
      }
    }
  };
  dialog_.Form_Init("MSGBOX", title, handler);
  const int32 lines = 1 + static_cast<int32>(text.size()) / CharactersPerLine;
  dialog_.MakeLabel(500, 500, LineHeight * lines, MessageWidth, text);
  const std::size_t chosen = DefaultOf(flags, buttons.size());
  // The default button comes first in the tab order, so that it has the focus when the box opens.
  for (int16 i = 0; i < count; ++i)
    dialog_.MakeCommand(i == 0 ? -400 : 0, i == 0 ? 500 : -400, 400, 1200, buttons[static_cast<std::size_t>(i)].Words,
                        0);
  dialog_.MakeCommand(0, -400, 400, 1800, "Repeat Message", 0);
  dialog_.SetCommandButtons(static_cast<int16>(chosen + 1), EscapeButton(buttons));
  const int16 escape = EscapeButton(buttons);
  dialog_.SetCloseResult(escape == 0 ? box::ResultNo : buttons[static_cast<std::size_t>(escape - 1)].Result);
  dialog_.SetFirstFocus(ControlKind::Button, static_cast<int16>(chosen + 1));
  dialog_.SetOpeningText(text);
  dialog_.ShowForm(500, 500);
  if (answer != 0) return answer;
  return dialog_.GDResult != 0 ? dialog_.GDResult : (escape == 0 ? box::ResultNo : box::ResultCancel);
}

std::string Prompts::TextPrompt(const std::string& prompt, const std::string& title, int16 /*WType*/,
                                const std::string& DefVal) {
  platform_.face.Beep();
  dialog_.GDResult = 0;
  std::string answer;
  const auto handler = [&](const DialogEventArgs& at) {
    if (!IsClick(at, ControlKind::Button)) return;
    if (at.Index == 1) answer = dialog_.Control(ControlKind::TextBox, 1).Text;
    dialog_.End(at.Index);
  };
  dialog_.Form_Init("TEXTPROMPT", title, handler);
  dialog_.MakeLabel(500, 500, 295, 2000, prompt);
  dialog_.MakeTextBox(0, -1, 0, 0, "");
  dialog_.MakeCommand(-500, -500, 400, 800, "OK", GenDialog::DefaultButton);
  dialog_.MakeCommand(0, -400, 0, 0, "Cancel", GenDialog::CancelButton);
  dialog_.SetCommandButtons(1, 2);
  dialog_.Control(ControlKind::TextBox, 1).Text = DefVal;
  dialog_.ShowForm(500, 500);
  return dialog_.GDResult == 1 ? answer : std::string();
}

std::string Prompts::PickList(const std::string& list) {
  if (dialog_.GDOpen) {
    platform_.face.Beep();
    return {};
  }
  constexpr std::size_t MostChoices = 99;
  std::string prompt;
  std::vector<std::string> labels;
  std::vector<std::string> values;
  int32 start = 0;
  for (const std::string& item : Split(list, "|")) {
    if (labels.size() == MostChoices) break;
    const std::size_t colon = item.find(':');
    std::string label = item.substr(0, colon);
    std::string value = colon == std::string::npos ? label : item.substr(colon + 1);
    if (SameText(label, "P")) {
      prompt = Replace(value, "\\&1", ":");
      continue;
    }
    if (label.starts_with('*')) {
      label.erase(0, 1);
      if (colon == std::string::npos) value = label;
      start = static_cast<int32>(labels.size());
    }
    labels.push_back(Replace(label, "\\&1", ":"));
    values.push_back(Replace(value, "\\&1", ":"));
  }
  if (labels.empty()) return {};
  int32 row = -1;
  const auto handler = [&](const DialogEventArgs& at) {
    const bool accept = (IsClick(at, ControlKind::Button) && at.Index == 1) ||
                        (at.Kind == ControlKind::List && at.Event == DialogEvent::DoubleClick);
    if (accept) {
      row = dialog_.Control(ControlKind::List, 1).ListIndex;
      dialog_.End(1);
    } else if (IsClick(at, ControlKind::Button)) {
      dialog_.End(2);
    }
  };
  std::size_t longest = prompt.size();
  for (const std::string& label : labels) longest = std::max(longest, label.size());
  const int32 width = std::clamp<int32>(static_cast<int32>(longest) * 110, 2000, 12000);
  dialog_.Form_Init("PICK", "Select", handler);
  dialog_.MakeLabel(500, 500, 295, width, prompt);
  dialog_.MakeList(-200, 500, 2500, width, labels, start, "Variables");
  dialog_.MakeCommand(-400, 500, 400, 1200, "OK", GenDialog::DefaultButton);
  dialog_.MakeCommand(0, -400, 0, 0, "Cancel", GenDialog::CancelButton);
  dialog_.SetCommandButtons(1, 2);
  dialog_.SetOpeningText(prompt);
  dialog_.ShowForm(500, 500);
  if (dialog_.GDResult != 1 || row < 0) return {};
  return values.at(static_cast<std::size_t>(row));
}

bool Prompts::ChooseFromList(const std::string& PromptString, const std::vector<std::string>& CList, int16& position2) {
  platform_.face.Beep();
  const auto handler = [&](const DialogEventArgs& at) {
    const bool accept = (IsClick(at, ControlKind::Button) && at.Index == 1) ||
                        (at.Kind == ControlKind::List && at.Event == DialogEvent::DoubleClick);
    if (accept) {
      position2 = static_cast<int16>(dialog_.Control(ControlKind::List, 1).ListIndex);
      dialog_.End(1);
    } else if (IsClick(at, ControlKind::Button)) {
      dialog_.End(2);
    }
  };
  dialog_.Form_Init("CHOOSELIST", PromptString, handler);
  dialog_.MakeLabel(200, 500, 295, 4000, "Select");
  // Kept: the list says "Triggers" whatever it offers.
  dialog_.MakeList(500, 500, 2500, 4000, CList, position2, "Triggers");
  dialog_.MakeCommand(-400, 4000, 400, 1500, "OK", GenDialog::DefaultButton);
  dialog_.MakeCommand(0, -400, 400, 1500, "Cancel", GenDialog::CancelButton);
  dialog_.SetCommandButtons(1, 2);
  dialog_.ShowForm(500, 500);
  return dialog_.GDResult == 1;
}

std::string Prompts::InputBox2(const std::string& message, const std::string& title, const std::string& startString) {
  std::string answer;
  if (AskByVoice && AskByVoice(message, answer)) return answer;  // PUMP
  const std::string start = startString == "$%" ? std::string() : startString;
  return TextPrompt(message, title, 0, start);
}

std::string Prompts::PickDrive(const std::string& title) {
  // This system has one tree of folders: the choice is where in it to begin.
  std::vector<std::string> roots{platform_.places.HomeFolder(), "/"};
  for (const char* mounts : {"/media/", "/mnt/"})
    if (platform_.files.FolderExists(mounts)) roots.emplace_back(mounts);
  int16 row = 0;
  if (!ChooseFromList(title, roots, row) || row < 0) return {};
  return roots.at(static_cast<std::size_t>(row));
}

}  // namespace corvid
