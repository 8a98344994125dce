// SPDX-License-Identifier: GPL-3.0-or-later
// Plain lines for a terminal, a braille display or a pipe: no colours, no cursor movement, nothing that a server could
// use to command the terminal.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/beep_gate.h"

namespace corvid {

// The text as well-formed UTF-8 with LF for each line break and no other control code than the tab.
std::string PlainText(std::string_view text);

// A reader that takes nothing for a second is left behind: the program goes on, and what it has to say waits. Of more
// than MostWaiting bytes the oldest lines go, and a line tells so.
class ConsoleOutput {
 public:
  static constexpr std::size_t MostWaiting = std::size_t{1} << 20;

  explicit ConsoleOutput(int descriptor, int patience = 1000);  // milliseconds
  ~ConsoleOutput();
  ConsoleOutput(const ConsoleOutput&) = delete;
  ConsoleOutput& operator=(const ConsoleOutput&) = delete;

  void Stream(std::string_view text);               // as it comes; a line may stay open, such as a prompt
  void Line(std::string_view text);                 // on lines of its own
  std::size_t Written() const { return written_; }  // grows with every text that was given
  bool AtLineStart() const { return atLineStart_; }
  void Typed() { atLineStart_ = true; }  // the player's Enter has ended the line
  void Bell();                           // only on a terminal, and rarely enough to be heard as beeps
  bool Flush();                          // false once nobody reads any more
  // True while text waits for a reader that takes nothing; Flush when Descriptor can be written again.
  bool Waits() const { return stalled_ && !waiting_.empty(); }
  int Descriptor() const { return own_ >= 0 ? own_ : descriptor_; }

 private:
  bool TakesMore() const;
  void DropOldest();

  int descriptor_;
  int own_ = -1;  // the same terminal or pipe, opened so that writing never waits; -1 where that is not to be had
  int patience_;
  bool terminal_;
  bool atLineStart_ = true;
  std::size_t written_ = 0;
  bool broken_ = false;
  bool stalled_ = false;  // the reader has taken nothing for as long as the patience lasts
  BeepGate bells_{25};    // milliseconds
  std::string waiting_;
};

}  // namespace corvid
