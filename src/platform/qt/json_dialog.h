// SPDX-License-Identifier: GPL-3.0-or-later
// The dialogs of the json face: printed when they open, driven by keys.
#pragma once

#include "platform/dialog_driver.h"
#include "platform/qt/event_loop.h"
#include "platform/qt/json_output.h"

namespace corvid {

class JsonDialog : public DialogView, private DialogEvents {
 public:
  JsonDialog(QtEventLoop& loop, JsonOutput& output, DialogDriver::Clipboard clipboard);

  DialogDriver& Driver() { return driver_; }
  const DialogDriver& Driver() const { return driver_; }
  // True while nothing but the loop that waits for this dialog runs.
  bool Waiting() const { return driver_.IsOpen() && loop_.Depth() <= depth_ + 1; }
  std::string Code() const;        // form code of the open dialog, or empty
  JsonObject Description() const;  // what is open, with all controls

  void OpenDialog(DialogModel& model, DialogEvents& events) override;
  void ControlChanged(int32 control) override { driver_.ControlChanged(control); }
  void FocusControl(int32 control) override { driver_.Focus(control); }
  void CloseDialog() override;

 private:
  void DialogHappened(int32 control, DialogEvent event, int16& key, int16& shift) override;
  void DialogCloseRequested() override;
  std::string Control(const DialogControl& control, bool focused) const;

  QtEventLoop& loop_;
  JsonOutput& output_;
  DialogDriver driver_;
  DialogEvents* engine_ = nullptr;
  int depth_ = 0;  // of the loop when the dialog opened
};

}  // namespace corvid
