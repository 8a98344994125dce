// SPDX-License-Identifier: GPL-3.0-or-later
// What waits to be shown, and the window's own changes on their way back. text_show.cpp is the way to the window.
#include "platform/qt/desktop/text_mirror.h"

#include <QScrollBar>
#include <QTextBlock>
#include <algorithm>
#include <utility>

namespace corvid {

namespace {

constexpr qint64 LeastPause = 10;  // milliseconds between two flushes
constexpr qint64 MostPause = 100;

std::int64_t Size(std::string_view text) {
  return static_cast<std::int64_t>(text.size());
}

}  // namespace

TextMirror::TextMirror(TextModel& model, std::function<void()> stateChanged)
    : model_(model), stateChanged_(std::move(stateChanged)) {
  model_.SetObserver(this);
  if (model_.Length() > 0) TextInserted(model_, 0, model_.View(), -1, false);
  timer_.setSingleShot(true);
  timer_.setTimerType(Qt::PreciseTimer);
  connect(&timer_, &QTimer::timeout, this, &TextMirror::Flush);
}

void TextMirror::ShowIn(TextWindow* window) {
  window_ = window;
  window_->SetPasted([this](const std::string& text) { Paste(text); });
  connect(window_, &QPlainTextEdit::cursorPositionChanged, this, &TextMirror::ReadSelection);
  connect(window_, &QPlainTextEdit::selectionChanged, this, &TextMirror::ReadSelection);
  connect(window_->document(), &QTextDocument::contentsChange, this, &TextMirror::ReadChange);
  WatchScrolling();
  ShowState();
  Flush();
}

// At once while little happens, so that a typed character is seen and read without delay.
void TextMirror::Schedule() {
  if (window_ == nullptr || timer_.isActive()) return;
  const qint64 wait = sinceFlush_.isValid() ? pause_ - sinceFlush_.elapsed() : 0;
  timer_.start(static_cast<int>(std::max<qint64>(wait, 0)));
}

// Stretches what waits so that it holds the codes from to to of the text, which were shown as they are.
void TextMirror::Grow(std::int64_t from, std::int64_t to) {
  if (!edited_) {
    edited_ = true;
    from_ = to_ = from;
    old_ = 0;
    runs_.clear();
  }
  old_ += std::max<std::int64_t>(from_ - from, 0) + std::max<std::int64_t>(to - to_, 0);
  from_ = std::min(from_, from);
  to_ = std::max(to_, to);
}

void TextMirror::OneLook(int32 color, bool bold) {
  runs_.assign(1, {to_ - from_, color, bold});
}

void TextMirror::DropRuns(std::int64_t count) {
  auto run = runs_.begin();
  while (run != runs_.end() && count >= run->Count) count -= (run++)->Count;
  if (run != runs_.end()) run->Count -= count;
  runs_.erase(runs_.begin(), run);
}

void TextMirror::TextInserted(const TextModel&, int32 position, std::string_view text, int32 color, bool bold) {
  if (importing_) return;
  if (edited_ && position == to_) {
    to_ += Size(text);
    if (!runs_.empty() && runs_.back().Color == color && runs_.back().Bold == bold) {
      runs_.back().Count += Size(text);
    } else {
      runs_.push_back({Size(text), color, bold});
    }
  } else {
    Grow(position, position);
    to_ += Size(text);
    OneLook(color, bold);
  }
  Schedule();
}

void TextMirror::TextRemoved(const TextModel&, int32 position, std::string_view removed) {
  if (importing_) return;
  const std::int64_t count = Size(removed);
  const bool waitsBehind = edited_ && old_ == 0 && headRemoved_ + from_ == map_.Length();
  if (position == 0 && (!edited_ || count <= from_)) {
    NoteHead(removed);
    headRemoved_ += count;
    from_ -= count;
    to_ -= count;
  } else if (position == 0 && waitsBehind) {  // all that is shown goes, and some that never was
    headRemoved_ = map_.Length();
    DropRuns(count - from_);
    to_ -= count;
    from_ = 0;
    edited_ = to_ > 0;
  } else {
    Grow(position, position + count);
    to_ -= count;
    OneLook(runs_.empty() ? -1 : runs_.back().Color, !runs_.empty() && runs_.back().Bold);
  }
  Schedule();
}

// The line that is now the first may have lost its beginning alone. A CR whose LF stays has not ended it.
void TextMirror::NoteHead(std::string_view removed) {
  std::size_t last = removed.find_last_of("\r\n");
  if (last != std::string_view::npos && last + 1 == removed.size() && removed.back() == '\r' &&
      model_.View().starts_with('\n'))
    last = last == 0 ? std::string_view::npos : removed.find_last_of("\r\n", last - 1);
  if (last == std::string_view::npos) {
    headPartial_ += removed;
  } else {
    headPartial_ = removed.substr(last + 1);
  }
}

void TextMirror::SelectionMoved(const TextModel&) {
  Schedule();
}

void TextMirror::StateChanged(const TextModel&) {
  ShowState();
  stateChanged_();
}

void TextMirror::Flush() {
  if (window_ == nullptr) return;
  timer_.stop();
  QElapsedTimer spent;
  spent.start();
  const int scrolled = window_->verticalScrollBar()->value();
  applying_ = true;
  ShowText();
  const bool caretMoved = ShowSelection();
  Scroll(scrolled, caretMoved);
  applying_ = false;
  pause_ = std::clamp(2 * spent.elapsed(), LeastPause, MostPause);
  sinceFlush_.restart();
  if (edited_) Schedule();
}

// Who looks on sees the newest text; who reads, or has scrolled back, is not pulled away from there.
void TextMirror::Scroll(int before, bool caretMoved) {
  QScrollBar* bar = window_->verticalScrollBar();
  if (!window_->isReadOnly()) {
    window_->ensureCursorVisible();
  } else if (caretMoved && window_->hasFocus()) {  // the caret has been brought into view
    readByKeys_ = true;
    follow_ = model_.Caret() == model_.Length();
  } else {
    if (!window_->hasFocus() && std::exchange(readByKeys_, false)) follow_ = true;
    bar->setValue(follow_ ? bar->maximum() : before);
  }
}

// Lines are measured when they are first drawn, so that the end moves away after the text was put in.
void TextMirror::WatchScrolling() {
  QScrollBar* bar = window_->verticalScrollBar();
  connect(bar, &QScrollBar::rangeChanged, this, [this, bar](int, int most) {
    const bool before = std::exchange(applying_, true);
    if (follow_ && window_->isReadOnly()) bar->setValue(most);
    applying_ = before;
  });
  connect(bar, &QScrollBar::valueChanged, this, [this, bar](int value) {
    if (!applying_) follow_ = value == bar->maximum();
  });
}

void TextMirror::ReadSelection() {
  if (applying_ || importing_) return;
  applying_ = true;
  ShowText();  // moves the window's selection along
  applying_ = false;
  const QTextCursor cursor = window_->textCursor();
  const int32 anchor = CodeOf(cursor.anchor());
  const int32 caret = CodeOf(cursor.position());
  if (cursor.hasSelection() || model_.SelLength() != 0 || model_.Caret() != caret) model_.Select(anchor, caret);
}

// A screen reader may write into the entry past the keyboard.
void TextMirror::ReadChange(int position, int removed, int added) {
  if (applying_ || importing_) return;
  const int end = window_->document()->characterCount() - 1;
  const bool inStep = !edited_ && headRemoved_ == 0;
  const int32 from = inStep ? CodeOf(position) : 0;
  const std::string fresh = inStep ? WindowText(position, std::min(position + added, end)) : WindowText(0, end);
  const std::string_view behind = model_.View().substr(static_cast<std::size_t>(from));
  const auto gone = static_cast<int32>(inStep ? CodesBefore(behind, removed) : behind.size());
  if (behind.substr(0, static_cast<std::size_t>(gone)) == fresh) return;
  importing_ = true;
  model_.Select(from, from + gone);
  model_.SetSelText(fresh);
  importing_ = false;
  edited_ = false;
  headRemoved_ = 0;
  headPartial_.clear();
  map_.Clear();
  map_.Append(model_.View());
}

void TextMirror::Paste(const std::string& text) {
  if (model_.Locked()) return;
  std::string lines;
  for (const char c : text) {
    if (c == '\n' && !lines.ends_with('\r')) lines += '\r';
    lines += c;
  }
  model_.SetSelText(lines);
}

}  // namespace corvid
