// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/desktop/notice_label.h"

#include <QAccessible>
#include <QAccessibleWidget>

#include "platform/qt/desktop/line_map.h"

namespace corvid {

namespace {

constexpr int MostLines = 4;
constexpr const char* Name = "corvid-notice";

class NoticeAccess : public QAccessibleWidget {
 public:
  explicit NoticeAccess(QWidget* widget) : QAccessibleWidget(widget, QAccessible::Notification) {}
  QString text(QAccessible::Text what) const override {
    return what == QAccessible::Name ? static_cast<QLabel*>(widget())->text() : QAccessibleWidget::text(what);
  }
};

QAccessibleInterface* MakeAccess(const QString& /*kind*/, QObject* object) {
  if (object == nullptr || object->objectName() != QLatin1String(Name)) return nullptr;
  return new NoticeAccess(static_cast<QWidget*>(object));
}

}  // namespace

NoticeLabel::NoticeLabel(QWidget* parent) : QLabel(parent) {
  QAccessible::installFactory(&MakeAccess);
  setObjectName(Name);
  setTextFormat(Qt::PlainText);
  setWordWrap(true);
  setMargin(8);
  setFrameShape(QFrame::StyledPanel);
  setAutoFillBackground(true);
  QPalette colours = palette();
  colours.setColor(QPalette::Window, colours.color(QPalette::ToolTipBase));
  colours.setColor(QPalette::WindowText, colours.color(QPalette::ToolTipText));
  setPalette(colours);
  hide();
}

void NoticeLabel::Add(const std::string& text) {
  QStringList lines = this->text().isEmpty() ? QStringList() : this->text().split(QLatin1Char('\n'));
  const QString line = QString::fromStdU16String(DisplayText(text)).trimmed();
  if (line.isEmpty() || (!lines.isEmpty() && lines.back() == line)) return;
  lines << line;
  while (lines.size() > MostLines) lines.removeFirst();
  setText(lines.join(QLatin1Char('\n')));
  hide();  // only what appears is read out
  show();
}

}  // namespace corvid
