// SPDX-License-Identifier: GPL-3.0-or-later
// The speech library: text in, samples out. It exists once in a process and serves one thread at a time.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "core/types.h"

namespace corvid {

class Synthesizer {
 public:
  struct Voice {
    std::string name;        // for the player
    std::string identifier;  // for the library
  };
  struct Piece {
    std::string text;        // UTF-8
    std::size_t voice = 0;   // index into Voices()
    int16 rate = 0;          // -10 to 21
    bool character = false;  // one character alone: named even where running text would pass over it
    bool last = false;       // followed by the pause at the end of a text
  };
  // Gets samples (mono, 16 bit, VoiceSampleRate) as they are made; false ends the piece at once.
  using Sink = std::function<bool(const int16* samples, std::size_t count)>;

  Synthesizer() = default;
  Synthesizer(const Synthesizer&) = delete;
  Synthesizer& operator=(const Synthesizer&) = delete;

  // Empty when the library is ready, else why not. May be tried again.
  std::string Open();
  // English voices first, since the games and the program speak English and number 0 is everybody's first voice; the
  // timbres of the first one behind them; then the other languages. Each group by name.
  const std::vector<Voice>& Voices() const { return voices_; }
  void Say(const Piece& piece, const Sink& sink);

 private:
  void ListVoices();

  std::vector<Voice> voices_;
  std::string current_;  // identifier of the voice that is set
};

// The rates -10 to 21 as words a minute: 81 to 881, 0 being 175, each step 8 percent.
int WordsPerMinute(int16 rate);

}  // namespace corvid
