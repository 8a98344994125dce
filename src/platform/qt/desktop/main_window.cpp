// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/desktop/main_window.h"

#include <QCloseEvent>
#include <QLabel>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <utility>

#include "platform/qt/desktop/line_map.h"
#include "platform/qt/desktop/notice_label.h"

namespace corvid {

namespace {

constexpr int FirstWidth = 960;
constexpr int FirstHeight = 680;
constexpr int LeastLines = 2;  // of the entry, however small its share

}  // namespace

MainWindow::MainWindow(Hooks hooks)
    : hooks_(std::move(hooks)),
      notice_(new NoticeLabel(this)),
      outputs_(new QStackedWidget(this)),
      menu_(new MenuListWidget(hooks_.Menu, this)),
      label_(new QLabel(this)),
      entry_(MakeWindow(TextWindow::Kind::Entry, "Entry", this)),
      column_(new QVBoxLayout) {
  auto* body = new QWidget(this);  // only a window around a body has the role of one for a screen reader
  body->setLayout(column_);
  setCentralWidget(body);
  setWindowTitle("Corvid");
  resize(FirstWidth, FirstHeight);
  column_->setContentsMargins(10, 10, 10, 10);
  column_->setSpacing(6);
  column_->addWidget(notice_);
  column_->addWidget(outputs_);
  column_->addWidget(menu_, 0, Qt::AlignLeft);
  column_->addWidget(label_);
  column_->addWidget(entry_);
  label_->setTextFormat(Qt::PlainText);
  QFont font = label_->font();
  font.setPointSize(ReadingFont().pointSize());
  label_->setFont(font);
  notice_->setFont(font);
  hooks_.Watch(menu_);
  SetEntryLabel("Entry");
  const QFontMetrics metrics(entry_->font());
  entry_->setMinimumHeight(metrics.lineSpacing() * LeastLines + 18);
  outputs_->setMinimumHeight(metrics.lineSpacing() * LeastLines);
  ShareHeight(80);
  setFocusProxy(nullptr);
  entry_->setFocus();
}

MainWindow::~MainWindow() {
  entryMirror_.reset();
  mirrors_.clear();
}

TextWindow* MainWindow::MakeWindow(TextWindow::Kind kind, const QString& name, QWidget* parent) {
  auto* window = new TextWindow(kind, name, parent);
  window->installEventFilter(this);
  hooks_.Watch(window);
  return window;
}

void MainWindow::AttachEntry(TextModel& entry) {
  entryMirror_ = std::make_unique<TextMirror>(entry, [] {});
  entryMirror_->ShowIn(entry_);
}

void MainWindow::AttachViewport(TextModel& viewport) {
  mirrors_.push_back(nullptr);
  std::unique_ptr<TextMirror>& mirror = mirrors_.back();
  const std::size_t place = mirrors_.size() - 1;
  mirror = std::make_unique<TextMirror>(viewport, [this, place] { ShowViewport(*mirrors_[place]); });
  ShowViewport(*mirror);
}

// A viewport gets its window when it is shown for the first time: most never are.
void MainWindow::ShowViewport(TextMirror& mirror) {
  if (!mirror.Model().Visible()) return;
  const bool before = std::exchange(switching_, true);
  const bool focused = outputs_->currentWidget() != nullptr && outputs_->currentWidget() == focusWidget();
  if (mirror.Window() == nullptr) {
    TextWindow* window = MakeWindow(TextWindow::Kind::Output, "Output", outputs_);
    outputs_->addWidget(window);
    mirror.ShowIn(window);
  }
  if (outputs_->currentWidget() != mirror.Window()) {
    outputs_->setCurrentWidget(mirror.Window());
    QWidget::setTabOrder(mirror.Window(), entry_);
    if (focused) mirror.Window()->setFocus();
  }
  switching_ = before;
}

void MainWindow::SetEntryLabel(const std::string& label) {
  const QString name = QString::fromStdU16String(DisplayText(label));
  label_->setText(name);
  entry_->setAccessibleName(name);
}

void MainWindow::ShareHeight(int16 percent) {
  column_->setStretchFactor(outputs_, percent);
  column_->setStretchFactor(entry_, 100 - percent);
}

void MainWindow::TakeFocus(MainFocus focus) {
  if (menu_->IsOpen()) return;  // the list keeps it until it closes
  const bool before = std::exchange(switching_, true);
  QWidget* output = outputs_->currentWidget();
  if (focus == MainFocus::Entry || output == nullptr) {
    entry_->setFocus();
  } else {
    output->setFocus();
  }
  switching_ = before;
}

void MainWindow::ShowMenu(const ListMenuView& menu) {
  const bool before = std::exchange(switching_, true);
  menu_->Show(menu);
  switching_ = before;
}

void MainWindow::SelectMenuRow(int32 row) {
  menu_->Select(row);
}

void MainWindow::CloseMenu(MainFocus focus) {
  const bool before = std::exchange(switching_, true);
  menu_->Hide();
  TakeFocus(focus);
  switching_ = before;
}

void MainWindow::AddNotice(const std::string& text) {
  notice_->Add(text);
}

void MainWindow::closeEvent(QCloseEvent* event) {
  event->ignore();  // the program closes the window when it ends
  hooks_.CloseWanted();
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusIn && !switching_) {
    if (menu_->IsOpen()) hooks_.Menu.Left();
    if (watched == entry_) hooks_.FocusTaken(MainFocus::Entry);
    if (watched == outputs_->currentWidget()) hooks_.FocusTaken(MainFocus::Output);
  }
  return QWidget::eventFilter(watched, event);
}

}  // namespace corvid
