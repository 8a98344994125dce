// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/desktop/text_window.h"

#include <QContextMenuEvent>
#include <QFontDatabase>
#include <QMimeData>
#include <algorithm>

namespace corvid {

namespace {

constexpr Qt::TextInteractionFlags Reading = Qt::TextSelectableByKeyboard | Qt::TextSelectableByMouse;

}  // namespace

TextWindow::TextWindow(Kind kind, const QString& name, QWidget* parent) : QPlainTextEdit(parent), kind_(kind) {
  setAccessibleName(name);
  setFont(ReadingFont());
  setUndoRedoEnabled(false);  // what is undone would be undone here alone
  setTabChangesFocus(true);
  setCursorWidth(2);
  setFrameShape(QFrame::StyledPanel);
  document()->setDocumentMargin(6);
  SetLocked(kind == Kind::Output);
  // A part of the text that is dragged away would be gone from the window alone.
  viewport()->setAcceptDrops(false);
}

void TextWindow::SetLocked(bool locked) {
  // Without these flags a read-only window has no caret to review with.
  setTextInteractionFlags(locked ? Reading : Qt::TextEditorInteraction);
  // Typing in the output goes on in the entry: composed characters too.
  setAttribute(Qt::WA_InputMethodEnabled);
}

// Its entries would edit the window and not the text.
void TextWindow::contextMenuEvent(QContextMenuEvent* event) {
  event->accept();
}

bool TextWindow::canInsertFromMimeData(const QMimeData* source) const {
  return kind_ == Kind::Entry && !isReadOnly() && source->hasText();
}

void TextWindow::insertFromMimeData(const QMimeData* source) {
  if (pasted_ && source->hasText()) pasted_(source->text().toStdString());
}

QVariant TextWindow::inputMethodQuery(Qt::InputMethodQuery query) const {
  if (query == Qt::ImEnabled) return true;
  return QPlainTextEdit::inputMethodQuery(query);
}

QFont ReadingFont() {
  constexpr int LeastPoints = 13;
  QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  font.setPointSize(std::max(font.pointSize() + 2, LeastPoints));
  return font;
}

}  // namespace corvid
