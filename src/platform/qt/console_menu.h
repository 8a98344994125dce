// SPDX-License-Identifier: GPL-3.0-or-later
// A list menu on the console: numbered rows, one of which the player names. docs/console.md tells how.
#pragma once

#include <string>

#include "platform/face.h"
#include "platform/key_router.h"
#include "platform/qt/console_output.h"

namespace corvid {

class ConsoleMenu {
 public:
  ConsoleMenu(ConsoleOutput& output, KeyRouter& keys) : output_(output), keys_(keys) {}
  void SetEvents(FaceEvents* events) { events_ = events; }

  void Show(const ListMenuView& menu);  // opens the list, or shows other rows
  void Select(int32 row);
  void Close() { open_ = false; }
  bool IsOpen() const { return open_; }
  // What the player typed while the list is open; may close it. False when the line is not for the list: one without
  // rows has nothing to choose, and a line that is no command of the list closes it.
  bool Answer(const std::string& line);

 private:
  static constexpr std::size_t RowsAtOnce = 20;
  void ShowTitle();
  void ShowRows();
  void ShowHelp();
  bool Command(const std::string& line);
  void Press(int32 row, int16 KeyCode);

  ConsoleOutput& output_;
  KeyRouter& keys_;
  FaceEvents* events_ = nullptr;
  ListMenuView menu_;
  bool open_ = false;
  bool acting_ = false;      // an answer is in work: the row it selects need not be told
  bool helped_ = false;      // how to answer was told once
  bool deleteTold_ = false;  // and so was how to drop a row
  std::size_t firstRow_ = 0;
};

}  // namespace corvid
