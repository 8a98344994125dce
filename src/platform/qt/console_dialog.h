// SPDX-License-Identifier: GPL-3.0-or-later
// Any dialog as questions, one line each. docs/console.md tells the player how to answer.
#pragma once

#include <string>
#include <vector>

#include "platform/dialog_driver.h"
#include "platform/qt/console_output.h"

namespace corvid {

class ConsoleDialog : public DialogView {
 public:
  explicit ConsoleDialog(ConsoleOutput& output) : output_(output) {}

  bool IsOpen() const { return driver_.IsOpen(); }
  DialogDriver& Driver() { return driver_; }
  void Answer(const std::string& line);  // what the player typed while a dialog is open; may close it
  bool TakesText() const { return driver_.IsOpen() && boxBegun_; }  // in the midst of lines that belong together
  void AskAtFocus();                                                // a key has been pressed in the open dialog
  // True while such a text of a dialog that has just been closed is the last that was written, but for its questions.
  bool HasJustTold(const std::string& text) const;

  void OpenDialog(DialogModel& model, DialogEvents& events) override;
  void ControlChanged(int32 control) override;
  void FocusControl(int32 control) override;
  void CloseDialog() override;

 private:
  static constexpr std::size_t RowsAtOnce = 20;
  static constexpr std::size_t FewRows = 5;  // shown again behind an answer that is none
  // What is asked for at once: one control, or all options of a group. The buttons are asked for last, together.
  struct Question {
    std::vector<int32> Controls;
    bool Buttons = false;
  };
  std::vector<Question> Questions() const;
  std::vector<int32> ButtonPlaces() const;
  const DialogControl& At(int32 control) const;

  bool CanAnswer(const Question& question) const;
  bool AnyCanBeAnswered() const;
  void Introduce();
  void Ask(std::size_t question);
  void AskAgain();
  void AskInShort();
  void TellAll();
  void Show(const Question& question, std::size_t number);
  void ShowText(const DialogControl& control, std::size_t number);
  void ShowRows(const DialogControl& control);
  void ShowOptions(const Question& question, std::size_t number);
  void ShowButtons();

  bool Command(const std::string& line);
  void Value(const Question& question, const std::string& line);
  bool TakeBoxLine(const DialogControl& control, int32 place, const std::string& line);
  bool TakeRow(const DialogControl& control, int32 place, const std::string& line);
  bool RowLeadsOn(const DialogControl& control, int32 place);
  void TellMarks(const DialogControl& list);
  bool MarkRows(const DialogControl& control, int32 place, const std::string& line);
  bool TakeCheck(const DialogControl& control, int32 place, const std::string& line);
  bool TakeScroll(const DialogControl& control, int32 place, const std::string& line);
  bool TakeOption(const Question& question, const std::string& line);
  void TakeButton(const std::string& line);
  void Next();
  void Press(int32 button);

  ConsoleOutput& output_;
  DialogDriver driver_;
  std::size_t current_ = 0;         // question that is open
  std::size_t firstRow_ = 0;        // of the rows shown last
  std::vector<std::string> told_;   // texts of the dialog that stand for themselves
  std::size_t writtenAtClose_ = 0;  // Written() of the output
  std::string boxText_;             // lines of a multi-line box so far
  bool boxBegun_ = false;
  bool acting_ = false;  // an answer is in work: what changes is shown behind it
  bool helped_ = false;  // how to answer was told once
};

}  // namespace corvid
