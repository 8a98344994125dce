// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/console_dialog.h"

#include <algorithm>
#include <utility>

#include "core/text.h"
#include "platform/control_text.h"
#include "platform/qt/console_choice.h"

namespace corvid {

namespace {

std::string Name(const DialogControl& control) {
  return control.Caption.empty() ? control.Text : control.Caption;
}

std::string RowCount(const DialogControl& list) {
  return std::to_string(list.Items.size()) + (list.Items.size() == 1 ? " row" : " rows");
}

const char* RowQuestion(const DialogControl& list) {
  return list.MultiSelect ? "Rows to mark or unmark?" : "Row?";
}

}  // namespace

const DialogControl& ConsoleDialog::At(int32 control) const {
  return driver_.Model()->Controls[static_cast<std::size_t>(control)];
}

std::vector<ConsoleDialog::Question> ConsoleDialog::Questions() const {
  std::vector<Question> questions;
  const auto& controls = driver_.Model()->Controls;
  const auto groupOf = [&](const Question& question) -> const DialogControl& { return At(question.Controls.front()); };
  for (std::size_t i = 0; i < controls.size(); ++i) {
    const DialogControl& control = controls[i];
    if (!DialogDriver::CanFocus(control) || control.Kind == ControlKind::Button) continue;
    const auto place = static_cast<int32>(i);
    const auto group = std::find_if(questions.begin(), questions.end(), [&](const Question& question) {
      return control.Kind == ControlKind::Option && groupOf(question).Kind == ControlKind::Option &&
             groupOf(question).Group == control.Group;
    });
    if (group != questions.end()) {
      group->Controls.push_back(place);
    } else {
      questions.push_back({{place}, false});
    }
  }
  const std::vector<int32> buttons = ButtonPlaces();
  if (!buttons.empty()) questions.push_back({buttons, true});
  return questions;
}

std::vector<int32> ConsoleDialog::ButtonPlaces() const {
  std::vector<int32> places;
  const auto& controls = driver_.Model()->Controls;
  for (std::size_t i = 0; i < controls.size(); ++i)
    if (controls[i].Kind == ControlKind::Button && DialogDriver::CanFocus(controls[i]))
      places.push_back(static_cast<int32>(i));
  return places;
}

void ConsoleDialog::OpenDialog(DialogModel& model, DialogEvents& events) {
  boxBegun_ = false;
  current_ = 0;
  driver_.Prepare(model, events);
  Introduce();
  const int32 first = DialogDriver::FirstFocus(model);
  if (first >= 0 && (first == model.FirstFocus || At(first).Kind != ControlKind::Button)) {
    FocusControl(first);
  } else {
    Ask(0);
  }
}

void ConsoleDialog::Introduce() {
  output_.Line("--- " + driver_.Model()->Title + " ---");
  told_.clear();
  const auto& controls = driver_.Model()->Controls;
  for (std::size_t i = 0; i < controls.size(); ++i) {
    if (controls[i].Kind != ControlKind::Label || !controls[i].Visible || IsBlank(controls[i].Text)) continue;
    // A label that only names the control behind it is said when that is asked for.
    if (i + 1 < controls.size() && controls[i + 1].Caption == controls[i].Text &&
        controls[i + 1].Kind != ControlKind::Button)
      continue;
    output_.Line(told_.emplace_back(controls[i].Text));
  }
  if (std::exchange(helped_, true)) return;
  output_.Line("(Enter keeps what is there, /c cancels, /? tells all again and how to answer.)");
}

void ConsoleDialog::ControlChanged(int32 control) {
  driver_.ControlChanged(control);
  if (!driver_.IsOpen() || acting_) return;
  const DialogControl& changed = At(control);
  if (changed.Kind == ControlKind::Label && changed.Visible) output_.Line(changed.Text);
}

void ConsoleDialog::FocusControl(int32 control) {
  if (!driver_.IsOpen()) return;
  const auto questions = Questions();
  for (std::size_t i = 0; i < questions.size(); ++i) {
    const auto& places = questions[i].Controls;
    if (std::find(places.begin(), places.end(), control) == places.end()) continue;
    current_ = i;
    driver_.Focus(control);
    if (driver_.IsOpen() && !acting_) Ask(i);
    return;
  }
}

void ConsoleDialog::AskAtFocus() {
  FocusControl(driver_.Focused());
}

void ConsoleDialog::CloseDialog() {
  driver_.Close();
  writtenAtClose_ = output_.Written();
}

bool ConsoleDialog::HasJustTold(const std::string& text) const {
  return !driver_.IsOpen() && output_.Written() == writtenAtClose_ &&
         std::find(told_.begin(), told_.end(), text) != told_.end();
}

// No number could answer a list without rows.
bool ConsoleDialog::CanAnswer(const Question& question) const {
  const DialogControl& first = At(question.Controls.front());
  return first.Kind != ControlKind::List || !first.Items.empty();
}

bool ConsoleDialog::AnyCanBeAnswered() const {
  const auto questions = Questions();
  return std::any_of(questions.begin(), questions.end(), [&](const Question& each) { return CanAnswer(each); });
}

// That question, or the next behind it that can be answered.
void ConsoleDialog::Ask(std::size_t question) {
  const auto questions = Questions();
  if (questions.empty()) return;
  current_ = std::min(question, questions.size() - 1);
  boxBegun_ = false;
  firstRow_ = 0;
  for (std::size_t passed = 0; !CanAnswer(questions[current_]); ++passed) {
    if (passed == questions.size()) return;
    Show(questions[current_], current_ + 1);
    current_ = (current_ + 1) % questions.size();
  }
  const Question& at = questions[current_];
  const bool inside = std::find(at.Controls.begin(), at.Controls.end(), driver_.Focused()) != at.Controls.end();
  if (!inside) {
    const int32 button = driver_.DefaultButton();
    const unsigned serial = driver_.Serial();
    {
      const Acting acting(acting_);
      driver_.Focus(at.Buttons && button >= 0 ? button : at.Controls.front());
    }
    if (serial != driver_.Serial()) return;
  }
  Show(at, current_ + 1);
}

void ConsoleDialog::AskAgain() {
  if (driver_.IsOpen()) Ask(current_);
}

// Behind an answer that is none: the rows of a long list would push it off the screen.
void ConsoleDialog::AskInShort() {
  if (!driver_.IsOpen()) return;
  const auto questions = Questions();
  const DialogControl* control = current_ < questions.size() ? &At(questions[current_].Controls.front()) : nullptr;
  if (control == nullptr || control->Kind != ControlKind::List || control->Items.size() <= FewRows) return AskAgain();
  output_.Line(std::to_string(current_ + 1) + ". " + Name(*control) + " (" + RowCount(*control) + ", /? shows them)");
  output_.Line(RowQuestion(*control));
}

// The question that is open comes last: it is the one that the player answers next.
void ConsoleDialog::TellAll() {
  output_.Line("Type the answer and Enter. Enter alone keeps what is there.");
  output_.Line("/c cancels, /b goes to the buttons, /1 goes to question 1, /e empties a text, /m shows more rows,");
  output_.Line("// at the start of a text is a / of the text.");
  Introduce();
  firstRow_ = 0;
  const auto questions = Questions();
  for (std::size_t i = 0; i < questions.size(); ++i)
    if (i != current_) Show(questions[i], i + 1);
  AskAgain();
}

void ConsoleDialog::Show(const Question& question, std::size_t number) {
  const DialogControl& first = At(question.Controls.front());
  if (question.Buttons) {
    ShowButtons();
  } else if (!CanAnswer(question)) {
    output_.Line(Name(first) + ": no rows.");
  } else if (question.Controls.size() > 1 || first.Kind == ControlKind::Option) {
    ShowOptions(question, number);
  } else {
    ShowText(first, number);
  }
}

void ConsoleDialog::ShowText(const DialogControl& control, std::size_t number) {
  const std::string start = std::to_string(number) + ". " + Name(control);
  switch (control.Kind) {
    case ControlKind::List:
      output_.Line(start + " (" + RowCount(control) + ")");
      ShowRows(control);
      output_.Line(RowQuestion(control));
      break;
    case ControlKind::Check:
      output_.Line(start + ": yes or no? (" +
                   (control.Value == 0   ? "no"
                    : control.Value == 1 ? "yes"
                                         : "greyed") +
                   ")");
      break;
    case ControlKind::Scroll:
      output_.Line(start + ": " + std::to_string(control.Min) + " to " + std::to_string(control.Max) + "? (" +
                   std::to_string(control.Value) + ")");
      break;
    case ControlKind::Box:
      if (!control.Text.empty()) output_.Line(control.Text);
      output_.Line(start + ": lines, and then a line with a point alone? (the point alone keeps what is there)");
      break;
    default:
      output_.Line(start + (start.back() == '?' || start.back() == ':' ? "" : "?") +
                   (control.Text.empty() ? "" : " (" + ShownText(control) + ")"));
  }
}

void ConsoleDialog::ShowRows(const DialogControl& control) {
  const std::size_t end = std::min(control.Items.size(), firstRow_ + RowsAtOnce);
  for (std::size_t row = firstRow_; row < end; ++row) {
    std::string line = std::to_string(row + 1) + " " + control.Items[row];
    if (static_cast<int32>(row) == control.ListIndex && !control.MultiSelect) line += " (chosen)";
    if (control.MultiSelect && row < control.Selected.size() && control.Selected[row]) line += " (marked)";
    output_.Line(line);
  }
  if (end < control.Items.size()) output_.Line("/m shows more.");
}

void ConsoleDialog::ShowOptions(const Question& question, std::size_t number) {
  for (std::size_t i = 0; i < question.Controls.size(); ++i) {
    const DialogControl& option = At(question.Controls[i]);
    output_.Line(std::to_string(i + 1) + " " + Name(option) + (option.Value != 0 ? " (chosen)" : ""));
  }
  output_.Line(std::to_string(number) + ". Which?");
}

void ConsoleDialog::ShowButtons() {
  std::string line;
  int number = 0;
  for (const int32 place : ButtonPlaces()) {
    if (number > 0) line += ", ";
    line += std::to_string(++number) + " " + At(place).Text;
    if (place == driver_.DefaultButton()) line += " (Enter)";
  }
  output_.Line(line + "?");
}

}  // namespace corvid
