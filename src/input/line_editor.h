// SPDX-License-Identifier: GPL-3.0-or-later
// The usual effect of editing keys on a text, the same behind every face: faces mirror the text and edit nothing.
#pragma once

#include <string>

#include "core/text_model.h"
#include "core/types.h"

namespace corvid {

class LineEditor {
 public:
  // Carries out a caret or deleting key (arrows, Home, End, pages, Delete, with Shift to select and Control for words
  // and ends). False when the key has no such effect. A locked text is read, not changed.
  static bool EditKey(TextModel& text, int16 KeyCode, int16 Shift);
  // Puts a typed character (UTF-8) in place of the selection; "\r" is a line break, "\b" deletes backward. A locked
  // text stays as it is.
  static void Type(TextModel& text, const std::string& character);
};

}  // namespace corvid
