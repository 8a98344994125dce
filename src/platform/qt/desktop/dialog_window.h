// SPDX-License-Identifier: GPL-3.0-or-later
// The program's dialogs as windows. What a key does is the same behind every face (DialogDriver); this shows it, and
// brings in what the mouse and a screen reader do.
#pragma once

#include <QDialog>
#include <QObject>
#include <QPointer>
#include <functional>
#include <vector>

#include "platform/dialog_driver.h"

class QLayout;
class QVBoxLayout;
class QWidget;

namespace corvid {

class DialogWindow : public QObject, public DialogView, private DialogEvents {
 public:
  explicit DialogWindow(DialogDriver::Clipboard clipboard);
  ~DialogWindow() override;

  DialogDriver& Driver() { return driver_; }
  // The window that dialogs stand before; it destroys the open one with itself.
  void SetMainWindow(QWidget* window) { mainWindow_ = window; }
  // Told of each widget of a new dialog, so that its keys are taken.
  void SetWatch(std::function<void(QWidget*)> watch) { watch_ = std::move(watch); }
  // After a key: shows what it changed.
  void ShowAll();
  void BringForward();

  void OpenDialog(DialogModel& model, DialogEvents& events) override;
  void ControlChanged(int32 control) override;
  void FocusControl(int32 control) override;
  void CloseDialog() override;

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void DialogHappened(int32 control, DialogEvent event, int16& key, int16& shift) override;
  void DialogCloseRequested() override;
  void Build(const DialogModel& model);
  void Place(const DialogControl& control, QWidget* widget, QVBoxLayout* column, QLayout*& buttons);
  void Connect(int32 control, QWidget* widget);
  void ConnectText(int32 control, QWidget* widget);
  void ConnectList(int32 control, QWidget* widget);
  void ByHand(const std::function<void()>& change);
  void TextEdited(int32 control, const QString& text);
  void Selected(int32 control, int start, int length);
  void Show(int32 control);
  void TakeFocus(int32 control);
  void AnnounceRow(QWidget* widget) const;
  DialogControl& At(int32 control) const;

  QWidget* mainWindow_ = nullptr;
  std::function<void(QWidget*)> watch_;
  DialogDriver driver_;
  DialogEvents* engine_ = nullptr;
  QPointer<QDialog> dialog_;
  std::vector<QWidget*> widgets_;  // by place in the model
  bool showing_ = false;           // widgets change by our own doing
};

}  // namespace corvid
