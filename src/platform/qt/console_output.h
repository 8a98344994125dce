// SPDX-License-Identifier: GPL-3.0-or-later
// Plain lines for a terminal, a braille display or a pipe: no colours, no cursor movement, nothing that a server could
// use to command the terminal.
#pragma once

#include <string>
#include <string_view>

namespace corvid {

// The text as well-formed UTF-8 with LF for each line break and no other control code than the tab.
std::string PlainText(std::string_view text);

class ConsoleOutput {
 public:
  explicit ConsoleOutput(int descriptor);

  void Stream(std::string_view text);    // as it comes; a line may stay open, such as a prompt
  void Line(std::string_view text);      // on lines of its own
  void Typed() { atLineStart_ = true; }  // the player's Enter has ended the line
  void Bell();                           // only on a terminal, and rarely enough to be heard as beeps
  bool Flush();                          // false once nobody reads any more

 private:
  int descriptor_;
  bool terminal_;
  bool atLineStart_ = true;
  bool broken_ = false;
  long long lastBell_ = 0;
  std::string waiting_;
};

}  // namespace corvid
