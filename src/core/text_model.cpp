// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/text_model.h"

#include <algorithm>
#include <functional>

namespace corvid {

namespace {

std::size_t Size(int32 count) {
  return static_cast<std::size_t>(count);
}

bool PointsInto(std::string_view part, const std::string& whole) {
  return !std::less<>()(part.data(), whole.data()) && std::less<>()(part.data(), whole.data() + whole.size());
}

}  // namespace

const std::string& TextModel::Text() const {
  Compact();
  return text_;
}

int32 TextModel::Inside(int32 position) const {
  return std::clamp(position, 0, Length());
}

void TextModel::Compact() const {
  if (dead_ == 0) return;
  text_.erase(0, dead_);
  dead_ = 0;
}

// Moves the text only once as many codes are dead as live, so that the cost for each code is constant.
void TextModel::DropDeadWhenMany() {
  constexpr std::size_t few = 4096;
  if (dead_ > few && dead_ > text_.size() - dead_) Compact();
}

void TextModel::Remove(int32 position, int32 count) {
  if (count <= 0) return;
  // A copy: the observer may ask for the text, which moves it.
  const std::string removed = observer_ ? std::string(View().substr(Size(position), Size(count))) : std::string();
  if (position == 0) {
    dead_ += Size(count);
    DropDeadWhenMany();
  } else {
    text_.erase(dead_ + Size(position), Size(count));
  }
  const auto moved = [&](int32 place) { return place <= position ? place : std::max(position, place - count); };
  const int32 end = moved(start_ + length_);
  start_ = moved(start_);
  length_ = end - start_;
  if (observer_) observer_->TextRemoved(*this, position, removed);
}

void TextModel::Insert(int32 position, std::string_view text) {
  if (text.empty()) return;
  const std::string copy = PointsInto(text, text_) ? std::string(text) : std::string();
  if (!copy.empty()) text = copy;
  text_.insert(dead_ + Size(position), text);
  if (observer_) observer_->TextInserted(*this, position, text, color_, bold_);
}

void TextModel::MoveTo(int32 start, int32 length, bool caretAtStart) {
  start_ = Inside(start);
  length_ = std::clamp(length, 0, Length() - start_);
  caretAtStart_ = caretAtStart && length_ > 0;
}

void TextModel::TellIfMoved(Selection before) const {
  if (observer_ && !(before == Current())) observer_->SelectionMoved(*this);
}

void TextModel::TellState() const {
  if (observer_) observer_->StateChanged(*this);
}

void TextModel::SetText(std::string_view text) {
  const Selection before = Current();
  const std::string copy = PointsInto(text, text_) ? std::string(text) : std::string();
  if (!copy.empty()) text = copy;
  Remove(0, Length());
  Insert(0, text);
  MoveTo(0, 0, false);
  TellIfMoved(before);
}

void TextModel::SetSelStart(int32 start) {
  const Selection before = Current();
  MoveTo(start, 0, false);
  TellIfMoved(before);
}

void TextModel::SetSelLength(int32 length) {
  const Selection before = Current();
  MoveTo(start_, length, false);
  TellIfMoved(before);
}

void TextModel::SetSelText(std::string_view text) {
  const Selection before = Current();
  const std::string copy = PointsInto(text, text_) ? std::string(text) : std::string();
  if (!copy.empty()) text = copy;
  Remove(start_, length_);
  const int32 position = start_;
  Insert(position, text);
  MoveTo(position + static_cast<int32>(text.size()), 0, false);
  TellIfMoved(before);
}

void TextModel::Append(std::string_view text) {
  Insert(Length(), text);
}

void TextModel::KeepLast(int32 count) {
  const Selection before = Current();
  Remove(0, Length() - std::clamp(count, 0, Length()));
  TellIfMoved(before);
}

void TextModel::Select(int32 anchor, int32 caret) {
  const Selection before = Current();
  const bool wasAtStart = caretAtStart_;
  anchor = Inside(anchor);
  caret = Inside(caret);
  MoveTo(std::min(anchor, caret), std::max(anchor, caret) - std::min(anchor, caret), caret < anchor);
  if (before == Current() && wasAtStart != caretAtStart_ && observer_) observer_->SelectionMoved(*this);
  TellIfMoved(before);
}

void TextModel::SetVisible(bool visible) {
  if (visible_ == visible) return;
  visible_ = visible;
  TellState();
}

void TextModel::SetLocked(bool locked) {
  if (locked_ == locked) return;
  locked_ = locked;
  TellState();
}

void TextModel::SetBackColor(int32 color) {
  if (backColor_ == color) return;
  backColor_ = color;
  TellState();
}

void TextModel::SetForeColor(int32 color) {
  if (foreColor_ == color) return;
  foreColor_ = color;
  TellState();
}

}  // namespace corvid
