// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/gen_dialog.h"

#include <algorithm>

#include "core/reading.h"

namespace corvid {

GenDialog::GenDialog(Platform& platform, Upcalls& upcalls, SpeechState& speech)
    : platform_(platform), upcalls_(upcalls), speech_(speech) {}

void GenDialog::Form_Init(const std::string& FormCode, const std::string& FormTitle, Handler handler) {
  if (GDOpen) Unload();
  GDOpen = false;
  GDResult = 0;
  GenFormCode = FormCode;
  model_ = DialogModel{};
  model_.Code = FormCode;
  model_.Title = FormTitle;
  handler_ = std::move(handler);
  pendingCaption_.clear();
  lastTop_ = lastLeft_ = lastHeight_ = lastWidth_ = 0;
  rightEdge_ = bottomEdge_ = 0;
  closeResult_ = 0;
  openingText_.clear();
  lastLine_.clear();
  lastSelected_.clear();
}

void GenDialog::CalcNewPosition(int32& top, int32& left, int32& height, int32& width) const {
  const bool first = model_.Controls.empty();
  if (top < 0) {
    top = lastTop_ + lastHeight_ - top;
  } else if (top == 0 && !first) {
    top = lastTop_;
  }
  if (left < 0) {
    left = lastLeft_ + lastWidth_ - left;
  } else if (left == 0 && !first) {
    left = lastLeft_;
  }
  if (height == 0) height = lastHeight_;
  if (width == 0) width = lastWidth_;
}

void GenDialog::CalcMax(int32 top, int32 left, int32 height, int32 width) {
  rightEdge_ = std::max(rightEdge_, left + width);
  bottomEdge_ = std::max(bottomEdge_, top + height);
}

DialogControl& GenDialog::Add(ControlKind kind, int32 top, int32 left, int32 height, int32 width) {
  CalcNewPosition(top, left, height, width);
  CalcMax(top, left, height, width);
  lastTop_ = top;
  lastLeft_ = left;
  lastHeight_ = height;
  lastWidth_ = width;
  const auto same = std::count_if(model_.Controls.begin(), model_.Controls.end(),
                                  [&](const DialogControl& control) { return control.Kind == kind; });
  DialogControl& control = model_.Controls.emplace_back();
  control.Kind = kind;
  control.Index = static_cast<int16>(same + 1);
  control.Top = top;
  control.Left = left;
  control.Height = height;
  control.Width = width;
  if (kind != ControlKind::Label) {
    control.Caption = pendingCaption_;
    pendingCaption_.clear();
  }
  return control;
}

int16 GenDialog::MakeTextBox(int32 top, int32 left, int32 height, int32 width, const std::string& InitialValue) {
  DialogControl& control = Add(ControlKind::TextBox, top, left, height, width);
  control.Text = InitialValue;
  return control.Index;
}

int16 GenDialog::MakePassword(int32 top, int32 left, int32 height, int32 width, const std::string& InitialValue) {
  const int16 index = MakeTextBox(top, left, height, width, InitialValue);
  Control(ControlKind::TextBox, index).Masked = true;
  return index;
}

int16 GenDialog::MakeBox(int32 top, int32 left, int32 height, int32 width, const std::string& InitialValue) {
  DialogControl& control = Add(ControlKind::Box, top, left, height, width);
  control.Text = InitialValue;
  return control.Index;
}

int16 GenDialog::MakeLabel(int32 top, int32 left, int32 height, int32 width, const std::string& InitialValue) {
  DialogControl& control = Add(ControlKind::Label, top, left, height, width);
  control.Text = InitialValue;
  pendingCaption_ = InitialValue;
  return control.Index;
}

int16 GenDialog::MakeHScroll(int32 top, int32 left, int32 height, int32 width, int16 InitialValue, int16 MinVal,
                             int16 MaxVal, int16 SmallIncrement, int16 LargeIncrement) {
  DialogControl& control = Add(ControlKind::Scroll, top, left, height, width);
  control.Min = MinVal;
  control.Max = MaxVal;
  control.Value = std::clamp(InitialValue, std::min(MinVal, MaxVal), std::max(MinVal, MaxVal));
  control.SmallChange = SmallIncrement;
  control.LargeChange = LargeIncrement;
  return control.Index;
}

int16 GenDialog::MakeList(int32 top, int32 left, int32 height, int32 width,
                          const std::vector<std::string>& InitialValues, int32 StartPosition,
                          const std::string& caption) {
  DialogControl& control = Add(ControlKind::List, top, left, height, width);
  control.Items = InitialValues;
  const auto rows = static_cast<int32>(InitialValues.size());
  control.ListIndex = StartPosition >= 0 && StartPosition < rows ? StartPosition : -1;
  control.Selected.assign(InitialValues.size(), false);
  control.Caption = caption;
  return control.Index;
}

int16 GenDialog::MakeCommand(int32 top, int32 left, int32 height, int32 width, const std::string& InitialValue,
                             int16 GDOption) {
  DialogControl& control = Add(ControlKind::Button, top, left, height, width);
  control.Text = InitialValue;
  control.Caption = InitialValue;
  control.Default = (GDOption & DefaultButton) != 0;
  control.Cancel = (GDOption & CancelButton) != 0;
  return control.Index;
}

int16 GenDialog::MakeCheck(int32 top, int32 left, int32 height, int32 width, int16 InitialValue,
                           const std::string& caption) {
  DialogControl& control = Add(ControlKind::Check, top, left, height, width);
  control.Value = InitialValue;
  control.Caption = caption;
  return control.Index;
}

int16 GenDialog::MakeOption(int32 top, int32 left, int32 height, int32 width, int16 InitialValue,
                            const std::string& caption) {
  DialogControl& control = Add(ControlKind::Option, top, left, height, width);
  control.Value = InitialValue;
  control.Caption = caption;
  return control.Index;
}

void GenDialog::SetCommandButtons(int16 defaultButton, int16 Cancel) {
  for (DialogControl& control : model_.Controls) {
    if (control.Kind != ControlKind::Button) continue;
    control.Default = control.Index == defaultButton;
    control.Cancel = control.Index == Cancel;
  }
}

int32 GenDialog::PlaceOf(ControlKind kind, int16 index) const {
  for (std::size_t i = 0; i < model_.Controls.size(); ++i)
    if (model_.Controls[i].Kind == kind && model_.Controls[i].Index == index) return static_cast<int32>(i);
  throw Fault(FaultKind::Index, "The dialog has no such control");
}

DialogControl& GenDialog::Control(ControlKind kind, int16 index) {
  return model_.Controls[static_cast<std::size_t>(PlaceOf(kind, index))];
}

void GenDialog::SetFirstFocus(ControlKind kind, int16 index) {
  model_.FirstFocus = PlaceOf(kind, index);
}

void GenDialog::Refresh(ControlKind kind, int16 index) {
  if (GDOpen) platform_.face.Dialogs().ControlChanged(PlaceOf(kind, index));
}

void GenDialog::SetFocus(ControlKind kind, int16 index) {
  if (GDOpen) platform_.face.Dialogs().FocusControl(PlaceOf(kind, index));
}

void GenDialog::ShowForm(int32 RightMargin, int32 BottomMargin) {
  model_.Width = rightEdge_ + RightMargin;
  model_.Height = bottomEdge_ + BottomMargin;
  GDOpen = true;
  const unsigned mine = ++showing_;
  upcalls_.speaker.SpeakOut(model_.Title, Channel::System, 0);
  upcalls_.speaker.SpeakOut(openingText_, Channel::System, 0);
  platform_.face.Dialogs().OpenDialog(model_, *this);
  int16 none = 0;
  GDEvent(ControlKind::Form, 0, DialogEvent::Activate, none, none);
  while (GDOpen && showing_ == mine) {
    if (platform_.events.Ending() || !platform_.face.PlayerThere()) {
      Unload();
      break;
    }
    platform_.events.WaitEvents(-1);  // PUMP
  }
  if (showing_ != mine) GDResult = 0;  // another dialog has taken its place
}

void GenDialog::End(int16 result) {
  GDResult = result;
  Unload();
}

void GenDialog::Unload() {
  if (!GDOpen) return;
  int16 none = 0;
  GDEvent(ControlKind::Form, 0, DialogEvent::Unload, none, none);
  GDOpen = false;
  platform_.face.Dialogs().CloseDialog();
}

void GenDialog::DialogHappened(int32 control, DialogEvent event, int16& key, int16& shift) {
  if (!GDOpen) return;
  if (control < 0) {
    GDEvent(ControlKind::Form, 0, event, key, shift);
    return;
  }
  if (control >= static_cast<int32>(model_.Controls.size())) return;
  const DialogControl& met = model_.Controls[static_cast<std::size_t>(control)];
  GDEvent(met.Kind, met.Index, event, key, shift);
}

void GenDialog::DialogCloseRequested() {
  if (!GDOpen || closeResult_ == -1) return;
  if (closeResult_ > 0) {
    End(closeResult_);
    return;
  }
  for (const DialogControl& control : model_.Controls) {
    if (!control.Cancel) continue;
    int16 none = 0;
    GDEvent(ControlKind::Button, control.Index, DialogEvent::Click, none, none);
    return;
  }
  End(2);
}

}  // namespace corvid
