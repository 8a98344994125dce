// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/console_menu.h"

#include <algorithm>
#include <utility>

#include "core/keys.h"
#include "core/text.h"
#include "platform/qt/console_choice.h"

namespace corvid {

void ConsoleMenu::Show(const ListMenuView& menu) {
  menu_ = menu;
  open_ = true;
  firstRow_ = 0;
  output_.Line("--- " + menu_.Title + " ---");
  ShowRows();
  if (!std::exchange(helped_, true))
    output_.Line("(A number or the beginning of the words chooses. /b goes back, /d and a number deletes, /c closes.)");
}

void ConsoleMenu::ShowRows() {
  if (menu_.Items.empty()) output_.Line("(The list is empty. /c closes it.)");
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

void ConsoleMenu::Answer(const std::string& line) {
  if (Command(Trim(line))) return;
  const int row = ChoiceOf(menu_.Items, line);
  if (row >= 0) return Press(row, keycode::Enter);
  output_.Line("A list is open: type the number of a row, or /c to close the list.");
}

bool ConsoleMenu::Command(const std::string& line) {
  if (SameText(line, "/c")) {
    keys_.Press(keycode::Escape, 0);
  } else if (SameText(line, "/b")) {
    keys_.Press(keycode::Left, 0);
  } else if (SameText(line, "/?")) {
    firstRow_ = 0;
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
