// SPDX-License-Identifier: GPL-3.0-or-later
// Bringing a window up to date with its text. Changes stay as small as they are: a screen reader is told each one.
#include <QScrollBar>
#include <QTextBlock>
#include <algorithm>
#include <utility>

#include "core/utf8.h"
#include "platform/qt/desktop/readable_colour.h"
#include "platform/qt/desktop/text_mirror.h"

namespace corvid {

namespace {

constexpr std::int64_t MostAtOnce = std::int64_t{64} * 1024;  // codes shown in one turn

std::size_t Size(std::int64_t count) {
  return static_cast<std::size_t>(count);
}

std::u16string_view Units(const QString& text) {
  return {reinterpret_cast<const char16_t*>(text.utf16()), Size(text.size())};
}

QString Text(std::u16string_view units) {
  return QString(reinterpret_cast<const QChar*>(units.data()), static_cast<qsizetype>(units.size()));
}

QString TextBetween(QTextDocument* document, int from, int to) {
  QTextCursor cursor(document);
  cursor.setPosition(from);
  cursor.setPosition(to, QTextCursor::KeepAnchor);
  return cursor.selectedText().replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
}

std::size_t CommonStart(std::u16string_view a, std::u16string_view b, std::size_t most) {
  const std::size_t limit = std::min({a.size(), b.size(), most});
  std::size_t same = 0;
  while (same < limit && a[same] == b[same]) ++same;
  return same > 0 && QChar::isHighSurrogate(a[same - 1]) ? same - 1 : same;
}

std::size_t CommonEnd(std::u16string_view a, std::u16string_view b, std::size_t start) {
  const std::size_t limit = std::min(a.size(), b.size()) - start;
  std::size_t same = 0;
  while (same < limit && a[a.size() - same - 1] == b[b.size() - same - 1]) ++same;
  return same > 0 && QChar::isLowSurrogate(a[a.size() - same]) ? same - 1 : same;
}

// False when the text may have been cut in the middle of its last character or line break.
bool EndsWhole(std::string_view text) {
  if (text.empty()) return true;
  if (static_cast<unsigned char>(text.back()) < 0x80) return text.back() != '\r';
  return text.size() - PreviousChar(text, text.size()) > 1;
}

}  // namespace

void TextMirror::ShowText() {
  if (headRemoved_ > 0) DropHead();
  if (!edited_) return;
  if (GoesBehind()) {
    AppendSome();
  } else {
    Rewrite();
  }
}

void TextMirror::DropHead() {
  QTextCursor cursor(window_->document());
  const std::int64_t count = std::exchange(headRemoved_, 0);
  std::string partial = std::exchange(headPartial_, {});
  if (count >= map_.Length()) {
    cursor.select(QTextCursor::Document);
    cursor.removeSelectedText();
    map_.Clear();
    return;
  }
  const bool whole = EndsWhole(partial);
  while (!whole && !partial.empty() && (partial.back() == '\r' || static_cast<unsigned char>(partial.back()) >= 0x80))
    partial.pop_back();
  const QTextBlock block = window_->document()->findBlockByNumber(static_cast<int>(map_.LineOf(count)));
  cursor.setPosition(block.position() + UnitsBefore(partial, partial.size()), QTextCursor::KeepAnchor);
  cursor.removeSelectedText();
  map_.DropFront(count);
  if (!whole) ShowFirstLine();
}

// What was cut in the middle of a character or a line break looks different now.
void TextMirror::ShowFirstLine() {
  const std::int64_t stop = map_.StartOf(1);
  if (edited_ && (old_ != 0 || from_ != map_.Length() || stop >= from_)) {
    Grow(0, std::min(stop, from_));
    OneLook(-1, false);
    return;
  }
  const bool waits = std::exchange(edited_, false);
  const std::int64_t from = from_;
  const std::int64_t to = to_;
  const std::vector<Run> runs = std::exchange(runs_, {});
  Grow(0, stop);
  Rewrite();
  edited_ = waits;
  from_ = from;
  to_ = to;
  old_ = 0;
  runs_ = runs;
}

bool TextMirror::GoesBehind() const {
  return old_ == 0 && from_ == map_.Length() && WholePlace(model_.View(), Size(from_)) == Size(from_);
}

void TextMirror::AppendSome() {
  const std::string_view view = model_.View();
  std::int64_t end = to_;
  if (to_ - from_ > MostAtOnce)
    end = std::min(to_, static_cast<std::int64_t>(WholePlace(view, Size(from_ + MostAtOnce))));
  QTextCursor cursor(window_->document());
  cursor.movePosition(QTextCursor::End);
  cursor.beginEditBlock();
  std::int64_t at = from_;
  std::int64_t runEnd = from_;
  for (const Run& run : runs_) {
    runEnd += run.Count;
    const std::int64_t stop = std::min(end, static_cast<std::int64_t>(WholePlace(view, Size(runEnd))));
    if (stop <= at) continue;
    cursor.insertText(Text(DisplayText(view.substr(Size(at), Size(stop - at)))), Format(run));
    at = stop;
  }
  cursor.endEditBlock();
  map_.Append(view.substr(Size(from_), Size(end - from_)));
  DropRuns(end - from_);
  from_ = end;
  edited_ = from_ < to_;
}

// Compares the lines concerned with what is shown of them, and changes what differs.
void TextMirror::Rewrite() {
  const std::string_view view = model_.View();
  std::size_t first = map_.LineOf(from_);
  const std::size_t last = map_.LineOf(from_ + old_);
  if (first > 0 && from_ == map_.StartOf(first) && view[Size(from_ - 1)] == '\r') --first;
  const std::int64_t start = map_.StartOf(first);
  const std::int64_t stop = map_.StartOf(last + 1) + (to_ - from_) - old_;
  const std::string_view fresh = view.substr(Size(start), Size(stop - start));

  QTextDocument* document = window_->document();
  const int from = document->findBlockByNumber(static_cast<int>(first)).position();
  const QTextBlock behind = document->findBlockByNumber(static_cast<int>(last + 1));
  const int to = behind.isValid() ? behind.position() : document->characterCount() - 1;
  const QString shown = TextBetween(document, from, to);
  const std::u16string wanted = DisplayText(fresh);
  const std::size_t unchanged = Size(UnitsBefore(fresh, Size(from_ - start)));
  const std::size_t head = CommonStart(Units(shown), wanted, unchanged);
  const std::size_t tail = CommonEnd(Units(shown), wanted, head);

  QTextCursor cursor(document);
  cursor.setPosition(from + static_cast<int>(head));
  cursor.setPosition(to - static_cast<int>(tail), QTextCursor::KeepAnchor);
  const std::u16string_view put = std::u16string_view(wanted).substr(head, wanted.size() - head - tail);
  const Run look = runs_.empty() ? Run{0, -1, false} : runs_.back();
  if (cursor.hasSelection() || !put.empty()) cursor.insertText(Text(put), Format(look));
  map_.Replace(first, last, fresh);
  edited_ = false;
  runs_.clear();
}

// True when the window's caret or selection had to move.
bool TextMirror::ShowSelection() {
  const std::int64_t start = model_.SelStart();
  const std::int64_t end = start + model_.SelLength();
  const int anchor = PositionOf(model_.CaretAtStart() ? end : start);
  const int caret = PositionOf(model_.CaretAtStart() ? start : end);
  QTextCursor cursor = window_->textCursor();
  if (cursor.anchor() == anchor && cursor.position() == caret) return false;
  cursor.setPosition(anchor);
  cursor.setPosition(caret, QTextCursor::KeepAnchor);
  window_->setTextCursor(cursor);
  return true;
}

void TextMirror::ShowState() {
  if (window_ == nullptr) return;
  if (window_->isReadOnly() != model_.Locked()) window_->SetLocked(model_.Locked());
  QPalette palette = window_->parentWidget() == nullptr ? QPalette() : window_->parentWidget()->palette();
  if (model_.BackColor() >= 0) palette.setColor(QPalette::Base, ColourOf(model_.BackColor()));
  if (model_.ForeColor() >= 0)
    palette.setColor(QPalette::Text, ReadableColour(ColourOf(model_.ForeColor()), palette.color(QPalette::Base)));
  if (palette == window_->palette()) return;
  window_->setPalette(palette);
  formats_.clear();
}

const QTextCharFormat& TextMirror::Format(const Run& run) {
  const qint64 key = static_cast<qint64>(run.Color) * 2 + (run.Bold ? 1 : 0);
  const auto known = formats_.constFind(key);
  if (known != formats_.constEnd()) return *known;
  QTextCharFormat format;
  if (run.Bold) format.setFontWeight(QFont::Bold);
  if (run.Color >= 0)
    format.setForeground(ReadableColour(ColourOf(run.Color), window_->palette().color(QPalette::Base)));
  return *formats_.insert(key, format);
}

std::string TextMirror::WindowText(int from, int to) const {
  const QString shown = TextBetween(window_->document(), from, to);
  return QString(shown).replace(QLatin1String("\n"), QLatin1String("\r\n")).toStdString();
}

std::string_view TextMirror::Line(std::size_t line) const {
  const std::int64_t start = map_.StartOf(line);
  return model_.View().substr(Size(start), Size(map_.StartOf(line + 1) - start));
}

int TextMirror::PositionOf(std::int64_t code) const {
  code = std::min(code, map_.Length());
  const std::size_t line = map_.LineOf(code);
  const QTextBlock block = window_->document()->findBlockByNumber(static_cast<int>(line));
  return block.position() + UnitsBefore(Line(line), Size(code - map_.StartOf(line)));
}

int32 TextMirror::CodeOf(int position) const {
  const QTextBlock block = window_->document()->findBlock(position);
  const auto line = static_cast<std::size_t>(std::max(block.blockNumber(), 0));
  const std::size_t codes = CodesBefore(Line(line), position - block.position());
  return static_cast<int32>(map_.StartOf(line) + static_cast<std::int64_t>(codes));
}

}  // namespace corvid
