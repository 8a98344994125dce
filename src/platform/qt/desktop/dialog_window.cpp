// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/desktop/dialog_window.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QButtonGroup>
#include <QEvent>
#include <QHBoxLayout>
#include <QHash>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QSlider>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "platform/qt/desktop/dialog_controls.h"
#include "platform/qt/desktop/line_map.h"

namespace corvid {

namespace {

constexpr int LeastPoints = 12;  // of the font

}  // namespace

DialogWindow::DialogWindow(DialogDriver::Clipboard clipboard) : driver_(std::move(clipboard)) {}

DialogWindow::~DialogWindow() {
  delete dialog_.data();
}

DialogControl& DialogWindow::At(int32 control) const {
  return driver_.Model()->Controls[static_cast<std::size_t>(control)];
}

void DialogWindow::OpenDialog(DialogModel& model, DialogEvents& events) {
  engine_ = &events;
  driver_.Prepare(model, *this);
  Build(model);
  ShowAll();
  dialog_->show();
  dialog_->activateWindow();
  driver_.TakeFirstFocus();
}

void DialogWindow::Build(const DialogModel& model) {
  dialog_ = new QDialog(mainWindow_);
  dialog_->setWindowTitle(Shown(model.Title));
  dialog_->setAccessibleName(Shown(model.Title));
  dialog_->setModal(true);
  QFont font = dialog_->font();
  font.setPointSize(std::max(font.pointSize(), LeastPoints));
  dialog_->setFont(font);
  dialog_->installEventFilter(this);
  watch_(dialog_.data());
  auto* column = new QVBoxLayout(dialog_.data());
  column->setContentsMargins(18, 16, 18, 16);
  column->setSpacing(10);
  QLayout* buttons = nullptr;
  QHash<int, QButtonGroup*> groups;
  widgets_.clear();
  for (std::size_t i = 0; i < model.Controls.size(); ++i) {
    const DialogControl& control = model.Controls[i];
    QWidget* widget = MakeControl(control, dialog_.data());
    widgets_.push_back(widget);
    Place(control, widget, column, buttons);
    if (control.Kind == ControlKind::Option) {
      QButtonGroup*& group = groups[control.Group];
      if (group == nullptr) group = new QButtonGroup(dialog_.data());
      group->addButton(static_cast<QAbstractButton*>(widget));
    }
    widget->installEventFilter(this);
    watch_(widget);
    Connect(static_cast<int32>(i), widget);
    if (i > 0) QWidget::setTabOrder(widgets_[i - 1], widget);
  }
}

// One below the other in order of creation; buttons that follow each other stand in one row.
void DialogWindow::Place(const DialogControl& control, QWidget* widget, QVBoxLayout* column, QLayout*& buttons) {
  if (control.Kind != ControlKind::Button) {
    buttons = nullptr;
    column->addWidget(widget);
    return;
  }
  if (buttons == nullptr) {
    auto* row = new QHBoxLayout;
    row->setAlignment(Qt::AlignLeft);
    column->addLayout(row);
    buttons = row;
  }
  buttons->addWidget(widget);
}

void DialogWindow::Connect(int32 control, QWidget* widget) {
  switch (At(control).Kind) {
    case ControlKind::TextBox:
    case ControlKind::Box:
      return ConnectText(control, widget);
    case ControlKind::List:
      return ConnectList(control, widget);
    case ControlKind::Check:
    case ControlKind::Option:
    case ControlKind::Button:
      connect(static_cast<QAbstractButton*>(widget), &QAbstractButton::clicked, this, [this, control] {
        ByHand([&] {
          if (At(control).Kind == ControlKind::Button) {
            driver_.Press(control);
          } else {
            const bool on = At(control).Kind == ControlKind::Option || At(control).Value == 0;
            driver_.SetValue(control, on ? 1 : 0);
          }
        });
      });
      return;
    case ControlKind::Scroll:
      connect(static_cast<QSlider*>(widget), &QSlider::valueChanged, this,
              [this, control](int value) { ByHand([&] { driver_.SetValue(control, static_cast<int16>(value)); }); });
      return;
    default:
      return;
  }
}

void DialogWindow::ConnectText(int32 control, QWidget* widget) {
  if (auto* line = qobject_cast<QLineEdit*>(widget)) {
    connect(line, &QLineEdit::textChanged, this, [this, control](const QString& text) { TextEdited(control, text); });
    const auto selected = [this, control, line] {
      const bool any = line->hasSelectedText();
      Selected(control, any ? line->selectionStart() : line->cursorPosition(), any ? line->selectionLength() : 0);
    };
    connect(line, &QLineEdit::selectionChanged, this, selected);
    connect(line, &QLineEdit::cursorPositionChanged, this, selected);
  } else if (auto* box = qobject_cast<QPlainTextEdit*>(widget)) {
    connect(box, &QPlainTextEdit::textChanged, this, [this, control, box] { TextEdited(control, box->toPlainText()); });
    const auto selected = [this, control, box] {
      const QTextCursor cursor = box->textCursor();
      Selected(control, cursor.selectionStart(), cursor.selectionEnd() - cursor.selectionStart());
    };
    connect(box, &QPlainTextEdit::selectionChanged, this, selected);
    connect(box, &QPlainTextEdit::cursorPositionChanged, this, selected);
  }
}

void DialogWindow::ConnectList(int32 control, QWidget* widget) {
  auto* list = static_cast<QListWidget*>(widget);
  connect(list, &QListWidget::itemSelectionChanged, this, [this, control, list] {
    ByHand([&] {
      const unsigned serial = driver_.Serial();
      if (!At(control).MultiSelect) {
        if (list->currentRow() != At(control).ListIndex) driver_.ChooseRow(control, list->currentRow());
        return;
      }
      for (int row = 0; serial == driver_.Serial() && row < list->count(); ++row) {
        const std::vector<bool>& marks = At(control).Selected;
        const bool marked = static_cast<std::size_t>(row) < marks.size() && marks[static_cast<std::size_t>(row)];
        const bool wanted = list->item(row)->isSelected();
        if (marked != wanted) driver_.MarkRow(control, row, wanted);
      }
    });
  });
  connect(list, &QListWidget::itemDoubleClicked, this,
          [this, control] { ByHand([&] { driver_.DoubleClick(control); }); });
}

// Carries out what the mouse or a screen reader has done, and shows what became of it.
void DialogWindow::ByHand(const std::function<void()>& change) {
  if (showing_ || !driver_.IsOpen()) return;
  change();
  ShowAll();
}

void DialogWindow::TextEdited(int32 control, const QString& text) {
  if (showing_ || !driver_.IsOpen()) return;
  driver_.SetText(control, WithLineBreaks(text));
}

void DialogWindow::Selected(int32 control, int start, int length) {
  if (showing_ || !driver_.IsOpen()) return;
  DialogControl& edited = At(control);
  const auto place = [&](int units) { return static_cast<int32>(CodesBefore(edited.Text, units)); };
  edited.SelStart = place(start);
  edited.SelLength = place(start + length) - edited.SelStart;
}

void DialogWindow::Show(int32 control) {
  const auto at = static_cast<std::size_t>(control);
  if (control < 0 || !driver_.IsOpen() || at >= widgets_.size()) return;
  const bool before = std::exchange(showing_, true);
  ShowControl(At(control), widgets_[at]);
  showing_ = before;
}

void DialogWindow::ShowAll() {
  for (std::size_t i = 0; i < widgets_.size(); ++i) Show(static_cast<int32>(i));
}

void DialogWindow::ControlChanged(int32 control) {
  Show(control);
  driver_.ControlChanged(control);
}

void DialogWindow::FocusControl(int32 control) {
  driver_.Focus(control);
}

void DialogWindow::CloseDialog() {
  driver_.Close();
  for (QWidget* widget : widgets_) widget->disconnect(this);
  widgets_.clear();
  if (dialog_.isNull()) return;
  dialog_->hide();
  dialog_->deleteLater();  // not now: one of its own signals may be the reason
  dialog_.clear();
}

void DialogWindow::BringForward() {
  if (dialog_.isNull()) return;
  dialog_->raise();
  dialog_->activateWindow();
}

void DialogWindow::DialogHappened(int32 control, DialogEvent event, int16& key, int16& shift) {
  if (event == DialogEvent::Change || event == DialogEvent::Click) ShowAll();
  if (event == DialogEvent::GotFocus) TakeFocus(control);
  engine_->DialogHappened(control, event, key, shift);
}

void DialogWindow::DialogCloseRequested() {
  engine_->DialogCloseRequested();
}

void DialogWindow::TakeFocus(int32 control) {
  if (control < 0 || static_cast<std::size_t>(control) >= widgets_.size()) return;
  QWidget* widget = widgets_[static_cast<std::size_t>(control)];
  widget->setFocus(Qt::OtherFocusReason);
  const DialogControl& met = At(control);
  if (met.Kind == ControlKind::List && met.ListIndex >= 0)
    QTimer::singleShot(0, widget, [this, widget] { AnnounceRow(widget); });
}

// A list that gets the focus is read without its chosen row unless the row is told to have it.
void DialogWindow::AnnounceRow(QWidget* widget) const {
  const int row = static_cast<QListWidget*>(widget)->currentRow();
  if (!widget->hasFocus() || row < 0) return;
  QAccessibleEvent event(widget, QAccessible::Focus);
  event.setChild(row);
  QAccessible::updateAccessibility(&event);
}

bool DialogWindow::eventFilter(QObject* watched, QEvent* event) {
  if (watched == dialog_ && event->type() == QEvent::Close) {
    event->ignore();  // the program closes it when it answers
    driver_.RequestClose();
    return true;
  }
  if (event->type() != QEvent::FocusIn || !driver_.IsOpen()) return false;
  for (std::size_t i = 0; i < widgets_.size(); ++i) {
    const auto control = static_cast<int32>(i);
    if (widgets_[i] == watched && driver_.Focused() >= 0 && driver_.Focused() != control) driver_.Focus(control);
  }
  return false;
}

}  // namespace corvid
