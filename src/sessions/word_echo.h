// SPDX-License-Identifier: GPL-3.0-or-later
// What is spoken of a text when the caret moves by words, or the selection grows.
#pragma once

#include <string>
#include <string_view>

#include "core/types.h"

namespace corvid {

struct WordEcho {
  std::string Word;
  std::string Line;            // line that the caret is on
  int32 Column = 0;            // codes of the line in front of the caret
  bool PassedWordEnd = false;  // the caret stands on a character that ends words
};

// The word at caret (from 0); on a character that ends words, the one before it. Empty for an empty text.
WordEcho EchoWord(std::string_view text, int32 caret);
// The part of now that was not selected before.
std::string NewlySelected(std::string_view before, std::string_view now);

}  // namespace corvid
