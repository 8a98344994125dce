// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/json_dialog.h"

#include <utility>

#include "platform/control_text.h"

namespace corvid {

namespace {

const char* KindName(ControlKind kind) {
  switch (kind) {
    case ControlKind::TextBox:
      return "text";
    case ControlKind::Option:
      return "option";
    case ControlKind::List:
      return "list";
    case ControlKind::Check:
      return "check";
    case ControlKind::Button:
      return "button";
    case ControlKind::Scroll:
      return "scroll";
    case ControlKind::Box:
      return "box";
    default:
      return "label";
  }
}

}  // namespace

JsonDialog::JsonDialog(QtEventLoop& loop, JsonOutput& output, DialogDriver::Clipboard clipboard)
    : loop_(loop), output_(output), driver_(std::move(clipboard)) {}

std::string JsonDialog::Code() const {
  return driver_.IsOpen() ? driver_.Model()->Code : std::string();
}

std::string JsonDialog::Control(const DialogControl& control, bool focused) const {
  JsonObject object;
  object.Text("kind", KindName(control.Kind)).Text("caption", control.Caption);
  switch (control.Kind) {
    case ControlKind::List:
      object.Number("value", control.ListIndex).Raw("items", JsonTexts(control.Items));
      if (control.MultiSelect) {
        std::vector<std::string> rows;
        for (std::size_t i = 0; i < control.Selected.size(); ++i)
          if (control.Selected[i]) rows.push_back(std::to_string(i));
        object.Raw("selected", JsonArray(rows));
      }
      break;
    case ControlKind::Check:
    case ControlKind::Option:
    case ControlKind::Scroll:
      object.Number("value", control.Value);
      break;
    default:
      object.Text("value", ShownText(control));
  }
  if (!control.Enabled || !control.Visible) object.Flag("enabled", false);
  return object.Flag("focus", focused).Done();
}

JsonObject JsonDialog::Description() const {
  JsonObject object;
  const DialogModel* model = driver_.Model();
  if (model == nullptr) return object;
  std::vector<std::string> controls;
  const int32 focus = driver_.Focused() >= 0 ? driver_.Focused() : DialogDriver::FirstFocus(*model);
  for (std::size_t i = 0; i < model->Controls.size(); ++i)
    controls.push_back(Control(model->Controls[i], static_cast<int32>(i) == focus));
  object.Text("code", model->Code).Text("title", model->Title).Raw("controls", JsonArray(controls));
  return object;
}

void JsonDialog::OpenDialog(DialogModel& model, DialogEvents& events) {
  engine_ = &events;
  depth_ = loop_.Depth();
  driver_.Prepare(model, *this);
  if (output_.Wants("dialog")) output_.Print("dialog", Description());
  driver_.TakeFirstFocus();
}

void JsonDialog::CloseDialog() {
  if (!driver_.IsOpen()) return;
  const std::string code = Code();
  driver_.Close();
  if (output_.Wants("dialog-closed")) output_.Print("dialog-closed", JsonObject().Text("code", code));
}

void JsonDialog::DialogHappened(int32 control, DialogEvent event, int16& key, int16& shift) {
  if (event == DialogEvent::GotFocus && output_.Wants("focus")) {
    const DialogControl& met = driver_.Model()->Controls[static_cast<std::size_t>(control)];
    output_.Print("focus",
                  JsonObject().Text("window", "dialog").Number("control", control).Text("caption", met.Caption));
  }
  engine_->DialogHappened(control, event, key, shift);
}

void JsonDialog::DialogCloseRequested() {
  engine_->DialogCloseRequested();
}

}  // namespace corvid
