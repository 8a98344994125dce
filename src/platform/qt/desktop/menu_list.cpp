// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/desktop/menu_list.h"

#include <QAccessible>
#include <QScrollBar>
#include <QTimer>
#include <algorithm>
#include <utility>

#include "platform/qt/desktop/dialog_controls.h"
#include "platform/qt/desktop/text_window.h"

namespace corvid {

namespace {

constexpr int MostRows = 12;  // seen at once

}  // namespace

MenuListWidget::MenuListWidget(MenuListHooks hooks, QWidget* parent) : QListWidget(parent), hooks_(std::move(hooks)) {
  setFont(ReadingFont());
  setUniformItemSizes(true);
  setSelectionMode(QAbstractItemView::SingleSelection);
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setVisible(false);
  QObject::connect(this, &QListWidget::itemClicked, this,
                   [this](QListWidgetItem* item) { Tell(hooks_.Clicked, item); });
  QObject::connect(this, &QListWidget::itemDoubleClicked, this,
                   [this](QListWidgetItem* item) { Tell(hooks_.DoubleClicked, item); });
}

// What is chosen may close this list or show others rows in it: not while it is still in its own event.
void MenuListWidget::Tell(const std::function<void(int32)>& hook, QListWidgetItem* item) {
  const int32 chosen = row(item);
  QTimer::singleShot(0, this, [hook, chosen] { hook(chosen); });
}

void MenuListWidget::Show(const ListMenuView& menu) {
  open_ = true;
  clear();
  longest_ = 0;
  for (const std::string& item : menu.Items) {
    addItem(Shown(item));
    longest_ = std::max(longest_, static_cast<int>(Shown(item).size()));
  }
  setAccessibleName(Shown(menu.Title));
  const int rows = std::clamp(count(), 1, MostRows);
  setFixedHeight(std::max(sizeHintForRow(0), fontMetrics().lineSpacing()) * rows + 2 * frameWidth());
  updateGeometry();
  setCurrentRow(menu.Index);
  setVisible(true);
  setFocus();
  QTimer::singleShot(0, this, [this] { AnnounceRow(); });
}

QSize MenuListWidget::sizeHint() const {
  const int text = (longest_ + 1) * fontMetrics().horizontalAdvance('M');  // the font has one width for all
  const int bar = count() > MostRows ? verticalScrollBar()->sizeHint().width() : 0;
  return {text + bar + 2 * frameWidth(), height()};
}

void MenuListWidget::Select(int32 row) {
  setCurrentRow(row);
}

void MenuListWidget::Hide() {
  open_ = false;
  setVisible(false);
  clear();
}

// A list that gets the focus is read without its chosen row unless the row is told to have it.
void MenuListWidget::AnnounceRow() {
  if (!hasFocus() || currentRow() < 0) return;
  QAccessibleEvent event(this, QAccessible::Focus);
  event.setChild(currentRow());
  QAccessible::updateAccessibility(&event);
}

}  // namespace corvid
