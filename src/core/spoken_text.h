// SPDX-License-Identifier: GPL-3.0-or-later
// Making text fit for a voice. A voice gets short pieces without control codes, so that it can be stopped soon and
// never meets a code that it would read aloud or choke on.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace corvid {

// End of the piece of text that begins at start (below text.size()): at most maxBytes on (above 0), later only for a
// single character that is longer. A longer text is cut behind a sentence where possible, else behind a clause, else
// behind a word, else between two characters.
std::size_t SpokenPieceEnd(std::string_view text, std::size_t start, std::size_t maxBytes);

// The text as well-formed UTF-8 in which every control code is a blank.
std::string SpokenText(std::string_view text);

}  // namespace corvid
