// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/desktop/dialog_controls.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <algorithm>

#include "platform/qt/desktop/line_map.h"

namespace corvid {

namespace {

constexpr int TwipsPerPixel = 15;  // a twip is 1/1440 inch
constexpr int32 MostWidth = 900;   // pixels

int Pixels(int32 twips, int32 least, int32 most) {
  return static_cast<int>(std::clamp(twips / TwipsPerPixel, least, most));
}

// "&" would underline the character behind it and make it a key.
QString Words(const std::string& text) {
  return Shown(text).replace(QLatin1String("&"), QLatin1String("&&"));
}

QWidget* MakeLabel(const DialogControl& control, QWidget* parent) {
  auto* label = new QLabel(parent);
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  label->setMinimumWidth(Pixels(control.Width, 0, MostWidth));
  return label;
}

QWidget* MakeList(const DialogControl& control, QWidget* parent) {
  auto* list = new QListWidget(parent);
  list->setSelectionMode(control.MultiSelect ? QAbstractItemView::MultiSelection : QAbstractItemView::SingleSelection);
  list->setUniformItemSizes(true);
  list->setMinimumSize(Pixels(control.Width, 260, MostWidth), Pixels(control.Height, 120, 500));
  return list;
}

QWidget* MakeSlider(const DialogControl& control, QWidget* parent) {
  auto* slider = new QSlider(Qt::Horizontal, parent);
  const auto [low, high] = std::minmax(control.Min, control.Max);
  slider->setRange(low, high);
  slider->setSingleStep(control.SmallChange);
  slider->setPageStep(control.LargeChange);
  slider->setMinimumWidth(Pixels(control.Width, 200, MostWidth));
  return slider;
}

QWidget* MakeBox(const DialogControl& control, QWidget* parent) {
  auto* box = new QPlainTextEdit(parent);
  box->setUndoRedoEnabled(false);
  box->setContextMenuPolicy(Qt::NoContextMenu);
  box->setMinimumSize(Pixels(control.Width, 260, MostWidth), Pixels(control.Height, 60, 400));
  return box;
}

QWidget* MakeLine(const DialogControl& control, QWidget* parent) {
  auto* line = new QLineEdit(parent);
  line->setContextMenuPolicy(Qt::NoContextMenu);
  line->setMinimumWidth(Pixels(control.Width, 260, MostWidth));
  if (control.Masked) {
    line->setEchoMode(QLineEdit::Password);
    line->setStyleSheet(QStringLiteral("lineedit-password-character: 42"));  // a star
  }
  return line;
}

QWidget* MakeButton(QWidget* parent) {
  auto* button = new QPushButton(parent);
  button->setAutoDefault(false);
  return button;
}

QWidget* Make(const DialogControl& control, QWidget* parent) {
  switch (control.Kind) {
    case ControlKind::TextBox:
      return MakeLine(control, parent);
    case ControlKind::Box:
      return MakeBox(control, parent);
    case ControlKind::List:
      return MakeList(control, parent);
    case ControlKind::Check:
      return new QCheckBox(parent);
    case ControlKind::Option:
      return new QRadioButton(parent);
    case ControlKind::Scroll:
      return MakeSlider(control, parent);
    case ControlKind::Button:
      return MakeButton(parent);
    default:
      return MakeLabel(control, parent);
  }
}

// Start and end of the selection in units of the shown text.
std::pair<int, int> Selection(const DialogControl& control) {
  const auto place = [&](int32 code) {
    return UnitsBefore(control.Text, static_cast<std::size_t>(std::max<int32>(code, 0)));
  };
  return {place(control.SelStart), place(control.SelStart + control.SelLength)};
}

void ShowLine(const DialogControl& control, QLineEdit& line) {
  const QString text = Shown(control.Text);
  if (line.text() != text) line.setText(text);
  const auto [start, end] = Selection(control);
  if (start != end) {
    if (line.selectionStart() != start || line.selectionLength() != end - start) line.setSelection(start, end - start);
  } else if (line.hasSelectedText() || line.cursorPosition() != start) {
    line.deselect();
    line.setCursorPosition(start);
  }
}

void ShowBox(const DialogControl& control, QPlainTextEdit& box) {
  const QString text = Shown(control.Text);
  if (box.toPlainText() != text) box.setPlainText(text);
  const auto [start, end] = Selection(control);
  QTextCursor cursor = box.textCursor();
  if (cursor.selectionStart() == start && cursor.selectionEnd() == end) return;
  cursor.setPosition(start);
  cursor.setPosition(end, QTextCursor::KeepAnchor);
  box.setTextCursor(cursor);
}

bool SameRows(const DialogControl& control, const QListWidget& list) {
  if (list.count() != static_cast<int>(control.Items.size())) return false;
  for (int row = 0; row < list.count(); ++row)
    if (list.item(row)->text() != Shown(control.Items[static_cast<std::size_t>(row)])) return false;
  return true;
}

void ShowList(const DialogControl& control, QListWidget& list) {
  if (!SameRows(control, list)) {
    list.clear();
    QStringList rows;
    for (const std::string& item : control.Items) rows << Shown(item);
    list.addItems(rows);
  }
  if (!control.MultiSelect) {
    if (list.currentRow() != control.ListIndex) list.setCurrentRow(control.ListIndex);
    return;
  }
  if (list.currentRow() != control.ListIndex) list.setCurrentRow(control.ListIndex, QItemSelectionModel::NoUpdate);
  for (int row = 0; row < list.count(); ++row) {
    const auto at = static_cast<std::size_t>(row);
    list.item(row)->setSelected(at < control.Selected.size() && control.Selected[at]);
  }
}

void ShowCheck(const DialogControl& control, QCheckBox& check) {
  check.setText(Words(control.Caption));
  check.setTristate(control.Value == 2);
  check.setCheckState(control.Value == 0 ? Qt::Unchecked : control.Value == 1 ? Qt::Checked : Qt::PartiallyChecked);
}

void ShowValue(const DialogControl& control, QWidget* widget) {
  switch (control.Kind) {
    case ControlKind::TextBox:
      return ShowLine(control, static_cast<QLineEdit&>(*widget));
    case ControlKind::Box:
      return ShowBox(control, static_cast<QPlainTextEdit&>(*widget));
    case ControlKind::List:
      return ShowList(control, static_cast<QListWidget&>(*widget));
    case ControlKind::Check:
      return ShowCheck(control, static_cast<QCheckBox&>(*widget));
    case ControlKind::Option: {
      auto& option = static_cast<QRadioButton&>(*widget);
      option.setText(Words(control.Caption));
      if (control.Value != 0) option.setChecked(true);  // the others of its group go off
      return;
    }
    case ControlKind::Scroll:
      return static_cast<QSlider&>(*widget).setValue(control.Value);
    case ControlKind::Button: {
      auto& button = static_cast<QPushButton&>(*widget);
      button.setText(Words(control.Text));
      if (button.isDefault() != control.Default) button.setDefault(control.Default);
      return;
    }
    default:
      return static_cast<QLabel&>(*widget).setText(Shown(control.Text));
  }
}

}  // namespace

QWidget* MakeControl(const DialogControl& control, QWidget* parent) {
  QWidget* widget = Make(control, parent);
  if (control.Kind != ControlKind::Label) widget->setFocusPolicy(Qt::StrongFocus);
  return widget;
}

void ShowControl(const DialogControl& control, QWidget* widget) {
  const QString name = Shown(control.Kind == ControlKind::Label ? control.Text : control.Caption);
  if (widget->accessibleName() != name) widget->setAccessibleName(name);
  ShowValue(control, widget);
  if (widget->isEnabled() != control.Enabled) widget->setEnabled(control.Enabled);
  if (widget->isHidden() == control.Visible) widget->setVisible(control.Visible);
}

QString Shown(const std::string& text) {
  return QString::fromStdU16String(DisplayText(text));
}

std::string WithLineBreaks(const QString& text) {
  return QString(text).replace(QLatin1String("\n"), QLatin1String("\r\n")).toStdString();
}

}  // namespace corvid
