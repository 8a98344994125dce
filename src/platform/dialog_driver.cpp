// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/dialog_driver.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "core/keys.h"
#include "core/list_rows.h"
#include "core/text.h"
#include "platform/control_text.h"

namespace corvid {

namespace {

bool IsText(const DialogControl& control) {
  return control.Kind == ControlKind::TextBox || control.Kind == ControlKind::Box;
}

int32 LastRow(const DialogControl& control) {
  return static_cast<int32>(control.Items.size()) - 1;
}

// The number of a typed character as a key press event has it: its code, or that of "?" for one beyond 16 bits.
int16 CharacterCode(const std::string& utf8) {
  if (utf8.empty()) return 0;
  const auto byte = [&](std::size_t i) { return static_cast<int32>(static_cast<unsigned char>(utf8[i])); };
  int32 code = byte(0);
  if (utf8.size() == 2) code = (byte(0) & 0x1F) << 6 | (byte(1) & 0x3F);
  if (utf8.size() == 3) code = (byte(0) & 0x0F) << 12 | (byte(1) & 0x3F) << 6 | (byte(2) & 0x3F);
  return utf8.size() > 3 || code > 0x7FFF ? int16{'?'} : static_cast<int16>(code);
}

}  // namespace

DialogDriver::DialogDriver(Clipboard clipboard) : clipboard_(std::move(clipboard)) {}

bool DialogDriver::CanFocus(const DialogControl& control) {
  return control.Kind != ControlKind::Label && control.Kind != ControlKind::Form && control.Enabled && control.Visible;
}

DialogControl* DialogDriver::At(int32 control) const {
  if (model_ == nullptr || control < 0 || control >= static_cast<int32>(model_->Controls.size())) return nullptr;
  return &model_->Controls[static_cast<std::size_t>(control)];
}

// False when the dialog is gone afterwards: whoever tells an event goes on only with true.
bool DialogDriver::Tell(int32 control, DialogEvent event, int16& key, int16& shift) {
  const unsigned serial = serial_;
  events_->DialogHappened(control, event, key, shift);
  return serial == serial_;
}

bool DialogDriver::Tell(int32 control, DialogEvent event) {
  int16 key = 0;
  int16 shift = 0;
  return Tell(control, event, key, shift);
}

int32 DialogDriver::FirstFocus(const DialogModel& model) {
  const auto count = static_cast<int32>(model.Controls.size());
  const auto can = [&](int32 at) { return CanFocus(model.Controls[static_cast<std::size_t>(at)]); };
  if (model.FirstFocus >= 0 && model.FirstFocus < count && can(model.FirstFocus)) return model.FirstFocus;
  for (int32 i = 0; i < count; ++i)
    if (can(i)) return i;
  return -1;
}

void DialogDriver::Open(DialogModel& model, DialogEvents& events) {
  Prepare(model, events);
  TakeFirstFocus();
}

void DialogDriver::Prepare(DialogModel& model, DialogEvents& events) {
  ++serial_;
  model_ = &model;
  events_ = &events;
  focus_ = -1;
  swallow_ = true;  // the character of the key that opened it
  if (watch_) watch_(true);
}

void DialogDriver::TakeFirstFocus() {
  if (model_ != nullptr && focus_ < 0) Focus(FirstFocus(*model_));
}

void DialogDriver::Close() {
  const bool wasOpen = IsOpen();
  ++serial_;
  model_ = nullptr;
  events_ = nullptr;
  focus_ = -1;
  swallow_ = true;  // the character of the key that closed it
  if (wasOpen && watch_) watch_(false);
}

void DialogDriver::ControlChanged(int32 control) {
  const DialogControl* changed = At(control);
  if (changed == nullptr || control != focus_ || CanFocus(*changed)) return;
  Focus(Neighbour(focus_, 1));  // the control under the player's hands has gone
}

void DialogDriver::Focus(int32 control) {
  const DialogControl* wanted = At(control);
  if (wanted == nullptr || !CanFocus(*wanted)) return;
  const int32 left = std::exchange(focus_, control);
  caretAtStart_ = false;
  if (left >= 0 && left != control && !Tell(left, DialogEvent::LostFocus)) return;
  if (focus_ == control) Tell(control, DialogEvent::GotFocus);
}

int32 DialogDriver::Neighbour(int32 from, int step) const {
  const auto count = static_cast<int32>(model_->Controls.size());
  int32 at = from;
  for (int32 i = 0; i < count; ++i) {
    at = (at + step + count) % count;
    if (CanFocus(model_->Controls[static_cast<std::size_t>(at)])) return at;
  }
  return -1;
}

int32 DialogDriver::FindButton(bool DialogControl::*which) const {
  if (model_ == nullptr) return -1;
  for (std::size_t i = 0; i < model_->Controls.size(); ++i) {
    const DialogControl& control = model_->Controls[i];
    if (control.Kind == ControlKind::Button && control.*which && CanFocus(control)) return static_cast<int32>(i);
  }
  return -1;
}

int32 DialogDriver::DefaultButton() const {
  return FindButton(&DialogControl::Default);
}
int32 DialogDriver::CancelButton() const {
  return FindButton(&DialogControl::Cancel);
}

void DialogDriver::RequestClose() {
  if (events_ != nullptr) events_->DialogCloseRequested();
}

void DialogDriver::KeyDown(int16 KeyCode, int16 Shift) {
  if (model_ == nullptr) return;
  swallow_ = false;
  int16 key = KeyCode;
  int16 shift = Shift;
  if (!Tell(focus_, DialogEvent::KeyDown, key, shift)) return;
  if (key == 0) {
    swallow_ = true;
    return;
  }
  DialogControl* control = At(focus_);
  if (key == keycode::Tab && (shift & (ControlBit | AltBit)) == 0) {
    swallow_ = true;
    Focus(Neighbour(focus_, (shift & ShiftBit) != 0 ? -1 : 1));
  } else if (key == keycode::Escape) {
    swallow_ = true;
    Press(CancelButton());
  } else if (key == keycode::Enter && (control == nullptr || control->Kind != ControlKind::Box)) {
    swallow_ = true;
    Press(control != nullptr && control->Kind == ControlKind::Button ? focus_ : DefaultButton());
  } else if (control != nullptr) {
    KeyEffect(*control, key, shift);
  }
}

void DialogDriver::KeyEffect(DialogControl& control, int16 KeyCode, int16 Shift) {
  const bool space = KeyCode == keycode::Space && (Shift & (ControlBit | AltBit)) == 0;
  switch (control.Kind) {
    case ControlKind::TextBox:
    case ControlKind::Box:
      TextKey(control, KeyCode, Shift);
      break;
    case ControlKind::List:
      if (space && control.MultiSelect) {
        swallow_ = true;
        ToggleMark(control);
      } else {
        ListKey(control, KeyCode);
      }
      break;
    case ControlKind::Check:
      if (space) SetValue(focus_, control.Value == 0 ? 1 : 0);
      break;
    case ControlKind::Option:
      if (space) {
        SetValue(focus_, 1);
      } else {
        OptionKey(control, KeyCode);
      }
      break;
    case ControlKind::Button:
      if (space) Press(focus_);
      break;
    case ControlKind::Scroll:
      ScrollKey(control, KeyCode);
      break;
    default:
      break;
  }
}

void DialogDriver::ListKey(const DialogControl& control, int16 KeyCode) {
  const std::optional<int32> row = RowByKey(KeyCode, control.ListIndex, LastRow(control));
  if (row && *row != control.ListIndex) ChooseRow(focus_, *row);
}

void DialogDriver::FindRow(const DialogControl& control, const std::string& character) {
  const int32 rows = LastRow(control) + 1;
  for (int32 step = 1; step <= rows; ++step) {
    const int32 row = (std::max(control.ListIndex, -1) + step) % rows;
    if (!StartsWithText(control.Items[static_cast<std::size_t>(row)], character)) continue;
    if (row != control.ListIndex) ChooseRow(focus_, row);
    return;
  }
}

void DialogDriver::OptionKey(DialogControl& control, int16 KeyCode) {
  int step = 0;
  if (KeyCode == keycode::Up || KeyCode == keycode::Left) step = -1;
  if (KeyCode == keycode::Down || KeyCode == keycode::Right) step = 1;
  if (step == 0) return;
  int32 at = focus_;
  for (std::size_t i = 0; i < model_->Controls.size(); ++i) {
    at = Neighbour(at, step);
    const DialogControl* other = At(at);
    if (other == nullptr || other == &control) return;
    if (other->Kind != ControlKind::Option || other->Group != control.Group) continue;
    const unsigned serial = serial_;
    Focus(at);
    if (serial == serial_) SetValue(at, 1);
    return;
  }
}

void DialogDriver::ScrollKey(const DialogControl& control, int16 KeyCode) {
  int32 value = control.Value;
  switch (KeyCode) {
    case keycode::Left:
    case keycode::Up:
      value -= control.SmallChange;
      break;
    case keycode::Right:
    case keycode::Down:
      value += control.SmallChange;
      break;
    case keycode::PageUp:
      value -= control.LargeChange;
      break;
    case keycode::PageDown:
      value += control.LargeChange;
      break;
    case keycode::Home:
      value = control.Min;
      break;
    case keycode::End:
      value = control.Max;
      break;
    default:
      return;
  }
  SetValue(focus_, static_cast<int16>(std::clamp(value, -32768, 32767)));
}

void DialogDriver::ToggleMark(DialogControl& control) {
  const int32 row = std::max(control.ListIndex, 0);  // before any row was met the first is under the player's hands
  if (row > LastRow(control)) return;
  control.Selected.resize(control.Items.size());
  MarkRow(focus_, row, !control.Selected[static_cast<std::size_t>(row)]);
}

void DialogDriver::TextKey(DialogControl& control, int16 KeyCode, int16 Shift) {
  ControlText text(control, caretAtStart_);
  if (KeyCode == keycode::Delete && Shift == 0) {
    if (text.DeleteForward()) Tell(focus_, DialogEvent::Change);
    return;
  }
  if (text.MoveKey(KeyCode, Shift) || Shift != ControlBit) return;
  if (KeyCode == 'A') text.SelectAll();
  const std::string selected = text.Selected();
  if ((KeyCode == 'C' || KeyCode == 'X') && clipboard_.Set && !selected.empty() && !control.Masked) {
    clipboard_.Set(selected);
    if (KeyCode == 'X' && text.DeleteBack()) Tell(focus_, DialogEvent::Change);
  } else if (KeyCode == 'V' && clipboard_.Get) {
    std::string pasted = clipboard_.Get();
    if (control.Kind == ControlKind::TextBox) pasted = pasted.substr(0, pasted.find_first_of("\r\n"));
    if (pasted.empty()) return;
    text.Insert(pasted);
    Tell(focus_, DialogEvent::Change);
  }
}

void DialogDriver::KeyTyped(const std::string& character) {
  if (model_ == nullptr || std::exchange(swallow_, false)) return;
  int16 key = CharacterCode(character);
  int16 shift = 0;
  if (!Tell(focus_, DialogEvent::KeyPress, key, shift) || key == 0) return;
  DialogControl* control = At(focus_);
  if (control == nullptr) return;
  if (IsText(*control)) {
    TypeInto(*control, character);
  } else if (control->Kind == ControlKind::List && character != "\b") {
    FindRow(*control, character);
  }
}

void DialogDriver::TypeInto(DialogControl& control, const std::string& character) {
  ControlText text(control, caretAtStart_);
  if (character == "\b") {
    if (!text.DeleteBack()) return;
  } else {
    text.Insert(character == "\r" ? "\r\n" : character);
  }
  Tell(focus_, DialogEvent::Change);
}

void DialogDriver::KeyUp(int16 KeyCode, int16 Shift) {
  if (model_ == nullptr) return;
  int16 key = KeyCode;
  int16 shift = Shift;
  Tell(focus_, DialogEvent::KeyUp, key, shift);
}

void DialogDriver::SetText(int32 control, const std::string& text) {
  DialogControl* edited = At(control);
  if (edited == nullptr || !IsText(*edited)) return;
  edited->Text = text;
  edited->SelStart = static_cast<int32>(text.size());
  edited->SelLength = 0;
  Tell(control, DialogEvent::Change);
}

void DialogDriver::ChooseRow(int32 control, int32 row) {
  DialogControl* list = At(control);
  if (list == nullptr || list->Kind != ControlKind::List || row < 0 || row > LastRow(*list)) return;
  list->ListIndex = row;
  Tell(control, DialogEvent::Click);
}

void DialogDriver::MarkRow(int32 control, int32 row, bool selected) {
  DialogControl* list = At(control);
  if (list == nullptr || list->Kind != ControlKind::List || row < 0 || row > LastRow(*list)) return;
  list->ListIndex = row;
  list->Selected.resize(list->Items.size());
  list->Selected[static_cast<std::size_t>(row)] = selected;
  Tell(control, DialogEvent::Click);
}

void DialogDriver::SetValue(int32 control, int16 value) {
  DialogControl* changed = At(control);
  if (changed == nullptr) return;
  if (changed->Kind == ControlKind::Scroll) {
    const auto [low, high] = std::minmax(changed->Min, changed->Max);
    value = std::clamp(value, low, high);
    if (value == changed->Value) return;
    changed->Value = value;
    Tell(control, DialogEvent::Change);
    return;
  }
  if (changed->Kind == ControlKind::Option) {
    if (value == 0) return;  // an option goes off when another goes on
    for (DialogControl& other : model_->Controls)
      if (other.Kind == ControlKind::Option && other.Group == changed->Group) other.Value = 0;
  } else if (changed->Kind != ControlKind::Check) {
    return;
  }
  changed->Value = value;
  Tell(control, DialogEvent::Click);
}

void DialogDriver::Press(int32 control) {
  const DialogControl* button = At(control);
  if (button == nullptr || button->Kind != ControlKind::Button || !CanFocus(*button)) return;
  Tell(control, DialogEvent::Click);
}

bool DialogDriver::Offer(int32 control, int16 KeyCode) {
  int16 key = KeyCode;
  int16 shift = 0;
  return At(control) != nullptr && (!Tell(control, DialogEvent::KeyDown, key, shift) || key == 0);
}

void DialogDriver::DoubleClick(int32 control) {
  const DialogControl* list = At(control);
  if (list == nullptr || list->Kind != ControlKind::List || !CanFocus(*list) || list->ListIndex < 0) return;
  Tell(control, DialogEvent::DoubleClick);
}

}  // namespace corvid
