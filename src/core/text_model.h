// SPDX-License-Identifier: GPL-3.0-or-later
// A text with caret and selection: the entry line and every output viewport. It is the truth; a window, a console or a
// test only mirrors it, so that the program reads and writes text the same way behind every face.
#pragma once

#include <string>
#include <string_view>

#include "core/types.h"

namespace corvid {

class TextModel;

// Told of every change right after it happened.
class TextObserver {
 public:
  virtual ~TextObserver() = default;
  // color is a blue-green-red value, or -1 for "the window's own colour".
  virtual void TextInserted(const TextModel& model, int32 position, std::string_view text, int32 color, bool bold) = 0;
  virtual void TextRemoved(const TextModel& model, int32 position, std::string_view removed) = 0;
  virtual void SelectionMoved(const TextModel& model) = 0;  // SelStart or SelLength changed
  virtual void StateChanged(const TextModel& model) = 0;    // Visible, Locked or the colours changed
};

// Positions and lengths count 8-bit codes from 0; a line break is CR LF, two codes. Values outside the text are brought
// to its nearest end.
class TextModel {
 public:
  const std::string& Text() const;  // moves the text once after codes were dropped in front; View() never does
  std::string_view View() const { return std::string_view(text_).substr(dead_); }  // valid until the next change
  int32 Length() const { return static_cast<int32>(text_.size() - dead_); }
  void SetText(std::string_view text);  // caret to 0, selection gone
  int32 SelStart() const { return start_; }
  void SetSelStart(int32 start);  // drops the selection
  int32 SelLength() const { return length_; }
  void SetSelLength(int32 length);
  std::string SelText() const {
    return std::string(View().substr(static_cast<std::size_t>(start_), static_cast<std::size_t>(length_)));
  }
  void SetSelText(std::string_view text);  // replaces the selection; the caret goes behind what was put in
  // At the end, in time of the text alone; the caret and the selection stay.
  void Append(std::string_view text);
  // Drops all but the last count codes, in time of what goes; styles of the rest are the observer's. Caret and
  // selection stay with their text.
  void KeepLast(int32 count);
  void SetSelColor(int32 color) { color_ = color; }
  int32 SelColor() const { return color_; }
  void SetSelBold(bool bold) { bold_ = bold; }
  bool SelBold() const { return bold_; }
  // Which end of the selection moves with Shift and an arrow: true when the caret is at SelStart.
  bool CaretAtStart() const { return caretAtStart_; }
  void Select(int32 anchor, int32 caret);
  int32 Caret() const { return caretAtStart_ ? start_ : start_ + length_; }

  bool Visible() const { return visible_; }
  void SetVisible(bool visible);
  bool Locked() const { return locked_; }
  void SetLocked(bool locked);
  int32 BackColor() const { return backColor_; }
  int32 ForeColor() const { return foreColor_; }
  void SetBackColor(int32 color);  // blue-green-red, -1 the platform's own
  void SetForeColor(int32 color);

  void SetObserver(TextObserver* observer) { observer_ = observer; }  // not owned; nullptr for none

 private:
  struct Selection {
    int32 Start, Length;
    bool operator==(const Selection&) const = default;
  };
  Selection Current() const { return {start_, length_}; }
  int32 Inside(int32 position) const;
  void Compact() const;
  void DropDeadWhenMany();
  void Remove(int32 position, int32 count);
  void Insert(int32 position, std::string_view text);
  void MoveTo(int32 start, int32 length, bool caretAtStart);
  void TellIfMoved(Selection before) const;
  void TellState() const;

  // The first dead_ codes are dropped already: a viewport loses a line in front for each line that comes, and moving
  // two million codes each time would be the most costly thing of the program.
  mutable std::string text_;
  mutable std::size_t dead_ = 0;
  int32 start_ = 0;
  int32 length_ = 0;
  bool caretAtStart_ = false;
  int32 color_ = -1;
  bool bold_ = false;
  bool visible_ = true;
  bool locked_ = false;
  int32 backColor_ = -1;
  int32 foreColor_ = -1;
  TextObserver* observer_ = nullptr;
};

}  // namespace corvid
