// SPDX-License-Identifier: GPL-3.0-or-later
// How the answers of the player change the dialog.
#include <algorithm>
#include <utility>

#include "core/keys.h"
#include "core/text.h"
#include "platform/qt/console_choice.h"
#include "platform/qt/console_dialog.h"

namespace corvid {

void ConsoleDialog::Answer(const std::string& line) {
  const auto questions = Questions();
  if (!AnyCanBeAnswered()) {
    driver_.RequestClose();  // nothing to answer: any line closes it
    return;
  }
  current_ = std::min(current_, questions.size() - 1);
  const Question& question = questions[current_];
  const bool isCommand = line.size() > 1 && line[0] == '/' && line[1] != '/';
  if (isCommand && !boxBegun_ && Command(line.substr(1))) return;
  const std::string text = line.rfind("//", 0) == 0 ? line.substr(1) : line;
  if (question.Buttons) {
    TakeButton(text);
  } else {
    Value(question, text);
  }
}

bool ConsoleDialog::Command(const std::string& word) {
  const auto questions = Questions();
  if (SameText(word, "c")) {
    if (driver_.CancelButton() >= 0) {
      Press(driver_.CancelButton());
    } else {
      output_.Line("This question has to be answered.");
      AskAgain();
    }
    return true;
  }
  if (SameText(word, "b")) {
    Ask(questions.size() - 1);
    return true;
  }
  if (word == "?") {
    TellAll();
    return true;
  }
  const DialogControl& control = At(questions[current_].Controls.front());
  if (SameText(word, "m") && control.Kind == ControlKind::List) {
    firstRow_ += RowsAtOnce;
    if (firstRow_ >= control.Items.size()) firstRow_ = 0;
    ShowRows(control);
    return true;
  }
  if (SameText(word, "e") && control.Kind == ControlKind::TextBox) {
    driver_.SetText(questions[current_].Controls.front(), "");
    AskAgain();
    return true;
  }
  const auto number = WholeNumber(word);
  if (!number || *number < 1 || *number > static_cast<int>(questions.size())) return false;
  Ask(static_cast<std::size_t>(*number - 1));
  return true;
}

void ConsoleDialog::Value(const Question& question, const std::string& line) {
  const int32 place = question.Controls.front();
  const DialogControl& control = At(place);
  const unsigned serial = driver_.Serial();
  bool understood = true;
  bool again = false;
  {
    const Acting acting(acting_);
    if (control.Kind == ControlKind::Box) {
      if (TakeBoxLine(control, place, line)) return;
    } else if (line.empty()) {
      // Enter alone keeps what is there.
    } else if (control.Kind == ControlKind::Option) {
      understood = TakeOption(question, line);
    } else if (control.Kind == ControlKind::List) {
      understood = control.MultiSelect ? MarkRows(control, place, line) : TakeRow(control, place, line);
      again = understood && serial == driver_.Serial() && RowLeadsOn(control, place);
    } else if (control.Kind == ControlKind::Check) {
      understood = TakeCheck(control, place, line);
    } else if (control.Kind == ControlKind::Scroll) {
      understood = TakeScroll(control, place, line);
    } else {
      driver_.SetText(place, line);
    }
  }
  if (serial != driver_.Serial()) return;
  if (again) {
    AskAgain();
  } else if (understood) {
    Next();
  } else {
    output_.Line("\"" + line + "\" is no answer here.");
    AskInShort();
  }
}

// True while more lines are to come.
bool ConsoleDialog::TakeBoxLine(const DialogControl& /*control*/, int32 place, const std::string& line) {
  if (line != ".") {
    if (!std::exchange(boxBegun_, true)) boxText_.clear();
    boxText_ += (boxText_.empty() ? "" : "\r\n") + line;
    return true;
  }
  if (std::exchange(boxBegun_, false)) driver_.SetText(place, std::exchange(boxText_, {}));
  return false;
}

bool ConsoleDialog::TakeRow(const DialogControl& control, int32 place, const std::string& line) {
  const int row = ChoiceOf(control.Items, line);
  if (row >= 0) driver_.ChooseRow(place, row);
  return row >= 0;
}

// A row that the dialog itself opens when Enter is pressed on it, as a folder among files: the list shows others then.
bool ConsoleDialog::RowLeadsOn(const DialogControl& control, int32 place) {
  return !control.MultiSelect && driver_.Offer(place, keycode::Enter);
}

bool ConsoleDialog::MarkRows(const DialogControl& control, int32 place, const std::string& line) {
  std::vector<int> rows;
  for (const std::string& part : Split(Trim(line), " ")) {
    const auto number = WholeNumber(part);
    if (!number || *number < 1 || *number > static_cast<int>(control.Items.size())) return false;
    rows.push_back(*number - 1);
  }
  const unsigned serial = driver_.Serial();
  for (const int row : rows) {
    const auto at = static_cast<std::size_t>(row);
    const bool marked = at < control.Selected.size() && control.Selected[at];
    driver_.MarkRow(place, row, !marked);
    if (serial != driver_.Serial()) return true;
  }
  TellMarks(control);
  return true;
}

void ConsoleDialog::TellMarks(const DialogControl& list) {
  std::string marked;
  for (std::size_t i = 0; i < list.Items.size() && i < list.Selected.size(); ++i)
    if (list.Selected[i]) marked += (marked.empty() ? "" : ", ") + std::to_string(i + 1);
  output_.Line(marked.empty() ? "No row is marked." : "Marked: " + marked);
}

bool ConsoleDialog::TakeCheck(const DialogControl& /*control*/, int32 place, const std::string& line) {
  static constexpr const char* Yes[] = {"y", "yes", "on", "1"};
  static constexpr const char* No[] = {"n", "no", "off", "0"};
  const auto isOneOf = [&](const auto& words) {
    return std::any_of(std::begin(words), std::end(words), [&](const char* word) { return SameText(line, word); });
  };
  if (isOneOf(Yes)) {
    driver_.SetValue(place, 1);
  } else if (isOneOf(No)) {
    driver_.SetValue(place, 0);
  } else {
    return false;
  }
  return true;
}

bool ConsoleDialog::TakeScroll(const DialogControl& control, int32 place, const std::string& line) {
  const auto number = WholeNumber(line);
  if (!number || *number < control.Min || *number > control.Max) return false;
  driver_.SetValue(place, static_cast<int16>(*number));
  return true;
}

bool ConsoleDialog::TakeOption(const Question& question, const std::string& line) {
  std::vector<std::string> names;
  for (const int32 place : question.Controls) names.push_back(At(place).Caption);
  const int chosen = ChoiceOf(names, line);
  if (chosen < 0) return false;
  const int32 place = question.Controls[static_cast<std::size_t>(chosen)];
  const unsigned serial = driver_.Serial();
  driver_.Focus(place);
  if (serial == driver_.Serial()) driver_.SetValue(place, 1);
  return true;
}

// The next question; behind the only one the default button, as Enter in a window would do. Where there is more to do
// with the answer than to take it or not, the buttons are asked for.
void ConsoleDialog::Next() {
  constexpr std::size_t takeOrLeave = 2;
  const auto questions = Questions();
  const bool only = questions.size() == 2 && questions.back().Buttons &&
                    questions.back().Controls.size() <= takeOrLeave &&
                    !At(questions.front().Controls.front()).MultiSelect;
  if (only && driver_.DefaultButton() >= 0) {
    Press(driver_.DefaultButton());
  } else {
    Ask((current_ + 1) % questions.size());
  }
}

void ConsoleDialog::TakeButton(const std::string& line) {
  const std::vector<int32> places = ButtonPlaces();
  if (line.empty() && driver_.DefaultButton() >= 0) {
    Press(driver_.DefaultButton());
    return;
  }
  std::vector<std::string> words;
  words.reserve(places.size());
  for (const int32 place : places) words.push_back(At(place).Text);
  const int chosen = line.empty() ? -1 : ChoiceOf(words, line);
  if (chosen >= 0) {
    Press(places[static_cast<std::size_t>(chosen)]);
    return;
  }
  output_.Line("Which button?");
  AskAgain();
}

void ConsoleDialog::Press(int32 button) {
  const unsigned serial = driver_.Serial();
  current_ = 0;
  {
    const Acting acting(acting_);
    driver_.Press(button);
  }
  if (serial != driver_.Serial()) return;
  if (Questions().size() == 1) Introduce();  // a message that is to be read once more
  AskAgain();                                // it stayed open: an error, or another page of it
}

}  // namespace corvid
