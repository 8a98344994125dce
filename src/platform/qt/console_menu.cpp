// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/console_menu.h"

#include <algorithm>
#include <utility>

#include "core/keys.h"
#include "core/text.h"
#include "platform/qt/console_choice.h"

namespace corvid {

namespace {

constexpr const char* EmptyList = "(The list is empty. /c or the next line closes it.)";
constexpr const char* TabWords = "ONETIME";  // the list in which the Delete key drops a row

}  // namespace

void ConsoleMenu::Show(const ListMenuView& menu) {
  menu_ = menu;
  open_ = true;
  firstRow_ = 0;
  ShowTitle();
  ShowRows();
  ShowHelp();
}

void ConsoleMenu::ShowTitle() {
  output_.Line("--- " + menu_.Title + " ---");
}

// Each once; a list without rows keeps it for the next one.
void ConsoleMenu::ShowHelp() {
  if (menu_.Items.empty()) return;
  if (!std::exchange(helped_, true))
    output_.Line("(A number or the beginning of the words chooses. /b goes back, /c closes.)");
  if (menu_.Name == TabWords && !std::exchange(deleteTold_, true))
    output_.Line("(/d and a number drops the word from the list.)");
}

void ConsoleMenu::ShowRows() {
  if (menu_.Items.empty()) output_.Line(EmptyList);
  const std::size_t end = std::min(menu_.Items.size(), firstRow_ + RowsAtOnce);
  for (std::size_t row = firstRow_; row < end; ++row)
    output_.Line(std::to_string(row + 1) + " " + menu_.Items[row] +
                 (static_cast<int32>(row) == menu_.Index ? " (chosen)" : ""));
  if (end < menu_.Items.size()) output_.Line("/m shows more.");
}

void ConsoleMenu::Select(int32 row) {
  menu_.Index = row;
  if (acting_ || row < 0 || row >= static_cast<int32>(menu_.Items.size())) return;
  output_.Line(std::to_string(row + 1) + " " + menu_.Items[static_cast<std::size_t>(row)]);
}

bool ConsoleMenu::Answer(const std::string& line) {
  const std::string word = Trim(line);
  if (Command(word)) return true;
  const int row = ChoiceOf(menu_.Items, line);
  if (row >= 0) {
    Press(row, keycode::Enter);  // PUMP
  } else if (!menu_.Items.empty()) {
    output_.Line("A list is open: type the number of a row, or /c to close the list.");
  } else if (word.starts_with('/') && !word.starts_with("//")) {
    output_.Line(EmptyList);
  } else {
    keys_.Press(keycode::Escape, 0);  // PUMP
    if (!open_) return false;
    output_.Line(EmptyList);
  }
  return true;
}

bool ConsoleMenu::Command(const std::string& line) {
  if (SameText(line, "/c")) {
    keys_.Press(keycode::Escape, 0);
  } else if (SameText(line, "/b")) {
    keys_.Press(keycode::Left, 0);
  } else if (SameText(line, "/?")) {
    firstRow_ = 0;
    ShowTitle();
    ShowRows();
  } else if (SameText(line, "/m")) {
    if (firstRow_ + RowsAtOnce < menu_.Items.size()) firstRow_ += RowsAtOnce;
    ShowRows();
  } else if (StartsWithText(line, "/d ")) {
    const int row = ChoiceOf(menu_.Items, line.substr(3));  // behind "/d "
    if (row < 0) return false;
    Press(row, keycode::Delete);
  } else {
    return false;
  }
  return true;
}

void ConsoleMenu::Press(int32 row, int16 KeyCode) {
  {
    const Acting acting(acting_);
    if (events_ != nullptr) events_->MenuClicked(row);
  }
  keys_.Press(KeyCode, 0);  // PUMP
}

}  // namespace corvid
