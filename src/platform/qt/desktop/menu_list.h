// SPDX-License-Identifier: GPL-3.0-or-later
// The list over the entry line in which menus are shown. Keys never reach it: the program moves the selection, and a
// screen reader reads it as any list.
#pragma once

#include <QListWidget>
#include <functional>

#include "platform/face.h"

namespace corvid {

struct MenuListHooks {  // by the mouse, once the list's own event is over
  std::function<void(int32)> Clicked;
  std::function<void(int32)> DoubleClicked;
  std::function<void()> Left;  // another window took the focus
};

class MenuListWidget : public QListWidget {
 public:
  MenuListWidget(MenuListHooks hooks, QWidget* parent);

  bool IsOpen() const { return open_; }
  void Show(const ListMenuView& menu);  // and takes the focus
  QSize sizeHint() const override;      // as wide as its longest item; the window lets it be no wider than itself
  void Select(int32 row);
  void Hide();

 private:
  void Tell(const std::function<void(int32)>& hook, QListWidgetItem* item);
  void AnnounceRow();

  MenuListHooks hooks_;
  bool open_ = false;
  int longest_ = 0;  // characters of the longest item
};

}  // namespace corvid
