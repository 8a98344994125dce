// SPDX-License-Identifier: GPL-3.0-or-later
#include "input/line_editor.h"

#include <algorithm>

#include "core/keys.h"
#include "core/reading.h"

namespace corvid {

namespace {

constexpr int32 PageLines = 22;

// The caret one line up or down, in the same column where the line is long enough.
int32 LineAway(const std::string& text, int32 caret, int32 direction) {
  const int32 column = caret - LineStart(text, caret);
  int32 start = FindNextLine(text, caret, 1, direction);
  if (start < 0) {
    if (direction < 0) return caret;
    // Below the last line break there is one line more, empty or not.
    const int32 end = LineEnd(text, caret);
    start = NextCharacter(text, end);
    if (start == end) return caret;
  }
  return std::min(start + column, LineEnd(text, start));
}

// Where a caret key leads; -1 when the key moves no caret.
int32 Target(const std::string& text, int32 caret, int16 KeyCode, bool control) {
  const auto end = static_cast<int32>(text.size());
  switch (KeyCode) {
    case keycode::Left:
      return control ? PreviousWord(text, caret) : PreviousCharacter(text, caret);
    case keycode::Right:
      return control ? NextWord(text, caret) : NextCharacter(text, caret);
    case keycode::Up:
      return LineAway(text, caret, -1);
    case keycode::Down:
      return LineAway(text, caret, 1);
    case keycode::Home:
      return control ? 0 : LineStart(text, caret);
    case keycode::End:
      return control ? end : LineEnd(text, caret);
    case keycode::PageUp:
      return std::max<int32>(0, FindNextLine(text, caret, PageLines, -1));
    case keycode::PageDown:  // Kept: below the last page the caret goes to the start of the text.
      return std::max<int32>(0, FindNextLine(text, caret, PageLines, 1));
    default:
      return -1;
  }
}

void DeleteForward(TextModel& text, bool word) {
  if (text.SelLength() == 0) {
    const int32 caret = text.SelStart();
    const int32 to = word ? NextWord(text.Text(), caret) : NextCharacter(text.Text(), caret);
    text.Select(caret, to);
  }
  text.SetSelText("");
}

void DeleteBackward(TextModel& text) {
  if (text.SelLength() == 0) text.Select(PreviousCharacter(text.Text(), text.SelStart()), text.SelStart());
  text.SetSelText("");
}

}  // namespace

bool LineEditor::EditKey(TextModel& text, int16 KeyCode, int16 Shift) {
  if ((Shift & AltBit) != 0) return false;
  const bool control = (Shift & ControlBit) != 0;
  const bool select = (Shift & ShiftBit) != 0;
  if (KeyCode == keycode::Delete && !select) {
    if (!text.Locked()) DeleteForward(text, control);
    return true;
  }
  const int32 target = Target(text.Text(), text.Caret(), KeyCode, control);
  if (target < 0) return false;
  if (!select) {
    text.SetSelStart(target);
    return true;
  }
  const int32 anchor = text.CaretAtStart() ? text.SelStart() + text.SelLength() : text.SelStart();
  text.Select(anchor, target);
  return true;
}

void LineEditor::Type(TextModel& text, const std::string& character) {
  if (text.Locked()) return;
  if (character == "\b") {
    DeleteBackward(text);
  } else if (character == "\r" || character == "\n") {
    text.SetSelText("\r\n");
  } else if (!character.empty() && static_cast<unsigned char>(character[0]) >= 32) {
    text.SetSelText(character);
  }
}

}  // namespace corvid
