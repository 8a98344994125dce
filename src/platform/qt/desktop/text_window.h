// SPDX-License-Identifier: GPL-3.0-or-later
// A text as a window shows it, the entry or an output. It changes nothing by itself: keys are taken before it gets
// them, and what the mouse or a screen reader wants to change is told.
#pragma once

#include <QPlainTextEdit>
#include <functional>
#include <string>

namespace corvid {

class TextWindow : public QPlainTextEdit {
 public:
  enum class Kind { Entry, Output };
  TextWindow(Kind kind, const QString& name, QWidget* parent);

  // Text (UTF-8) that was dropped here or pasted with the mouse.
  void SetPasted(std::function<void(const std::string&)> pasted) { pasted_ = std::move(pasted); }
  // A locked entry is read, not written.
  void SetLocked(bool locked);

 protected:
  void contextMenuEvent(QContextMenuEvent* event) override;
  bool canInsertFromMimeData(const QMimeData* source) const override;
  void insertFromMimeData(const QMimeData* source) override;
  QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;

 private:
  Kind kind_;
  std::function<void(const std::string&)> pasted_;
};

// The font of both windows: of even width, since maps and tables of games need it, and a good deal larger than menus.
QFont ReadingFont();

}  // namespace corvid
