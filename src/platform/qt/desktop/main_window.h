// SPDX-License-Identifier: GPL-3.0-or-later
// The one window: notices when there are any, the output, and below it the entry under its name.
#pragma once

#include <QMainWindow>
#include <functional>
#include <memory>
#include <vector>

#include "core/text_model.h"
#include "core/types.h"
#include "platform/face.h"
#include "platform/qt/desktop/menu_list.h"
#include "platform/qt/desktop/text_mirror.h"

class QLabel;
class QStackedWidget;
class QVBoxLayout;

namespace corvid {

class NoticeLabel;

class MainWindow : public QMainWindow {
 public:
  struct Hooks {
    std::function<void(QWidget*)> Watch;        // of each window whose keys are to be taken
    std::function<void(MainFocus)> FocusTaken;  // by the mouse, the window system or a screen reader
    std::function<void()> CloseWanted;
    MenuListHooks Menu;
  };
  explicit MainWindow(Hooks hooks);
  ~MainWindow() override;

  void AttachEntry(TextModel& entry);
  void AttachViewport(TextModel& viewport);
  void SetEntryLabel(const std::string& label);
  void ShareHeight(int16 percent);  // of the output
  void TakeFocus(MainFocus focus);
  void AddNotice(const std::string& text);
  void ShowMenu(const ListMenuView& menu);
  void SelectMenuRow(int32 row);
  void CloseMenu(MainFocus focus);  // which gets the focus

 protected:
  void closeEvent(QCloseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void ShowViewport(TextMirror& mirror);
  TextWindow* MakeWindow(TextWindow::Kind kind, const QString& name, QWidget* parent);

  Hooks hooks_;
  NoticeLabel* notice_;
  QStackedWidget* outputs_;
  MenuListWidget* menu_;
  QLabel* label_;
  TextWindow* entry_;
  QVBoxLayout* column_;
  std::unique_ptr<TextMirror> entryMirror_;
  std::vector<std::unique_ptr<TextMirror>> mirrors_;
  bool switching_ = false;  // the focus moves by our own doing
};

}  // namespace corvid
