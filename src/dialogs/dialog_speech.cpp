// SPDX-License-Identifier: GPL-3.0-or-later
// What a dialog says: each control as it gets the focus, each value as it changes.
#include <cmath>

#include "core/keys.h"
#include "core/number.h"
#include "core/reading.h"
#include "core/text.h"
#include "dialogs/gen_dialog.h"
#include "platform/control_text.h"

namespace corvid {

namespace {

// A screen reader reads controls by itself, so what is said of them is left to it.
constexpr int16 ReadByWindow = 1;

std::string Percentage(const DialogControl& scroll) {
  const double range = static_cast<double>(scroll.Max) - scroll.Min;
  const double share = range == 0 ? 0 : (static_cast<double>(scroll.Value) - scroll.Min) / range * 100;
  return NumberText(std::nearbyint(share)) + "%";
}

std::string Row(const DialogControl& list) {
  if (list.ListIndex < 0 || list.ListIndex >= static_cast<int32>(list.Items.size())) return {};
  return list.Items[static_cast<std::size_t>(list.ListIndex)];
}

std::string CheckWord(int16 value) {
  return value == 0 ? "Unchecked" : value == 1 ? "checked" : "greyed";
}

}  // namespace

void GenDialog::SayControl(const std::string& text) {
  upcalls_.speaker.SpeakOut(text, Channel::System, ReadByWindow);
}

void GenDialog::SayRow(const DialogControl& list) {
  SayControl(Row(list));
  if (list.MultiSelect && list.ListIndex >= 0)
    SayControl(list.Selected.at(static_cast<std::size_t>(list.ListIndex)) ? "selected" : "unselected");
}

void GenDialog::SpeakFocus(const DialogControl& control) {
  SayControl(control.Caption);
  switch (control.Kind) {
    case ControlKind::TextBox:
      SayControl(ShownText(control));
      break;
    case ControlKind::Box:
      SayControl(CurrentLine2(control.Text, control.SelStart + 1));
      break;
    case ControlKind::List:
      SayRow(control);
      break;
    case ControlKind::Check:
      SayControl(CheckWord(control.Value));
      break;
    case ControlKind::Option:
      SayControl(control.Value == 0 ? "unselected" : "selected");
      break;
    case ControlKind::Scroll:
      SayControl(Percentage(control));
      break;
    default:
      break;
  }
}

void GenDialog::SpeakChange(const DialogControl& control) {
  if (control.Kind == ControlKind::List) SayRow(control);
  if (control.Kind == ControlKind::Scroll) SayControl(Percentage(control));
  if (control.Kind == ControlKind::Check) SayControl(CheckWord(control.Value));
  if (control.Kind == ControlKind::Option) SayControl(control.Value == 0 ? "unselected" : "selected");
}

// Options of one group exclude each other.
void GenDialog::SelectOption(DialogControl& chosen) {
  for (DialogControl& control : model_.Controls) {
    if (control.Kind != ControlKind::Option || control.Group != chosen.Group) continue;
    const int16 value = &control == &chosen ? 1 : 0;
    if (control.Value == value) continue;
    control.Value = value;
    if (&control != &chosen) Refresh(ControlKind::Option, control.Index);
  }
}

void GenDialog::GDEvent(ControlKind Kind, int16 Index, DialogEvent Event, int16& KeyOrState, int16& Shift) {
  try {
    if (Event == DialogEvent::KeyDown) {
      if (KeyOrState == keycode::F4 && Shift == AltBit) {
        upcalls_.screens.quit(false);
        return;
      }
      if (speech_.InterruptOwn[Channel::System] != 0) upcalls_.speaker.StopSpeaking(Channel::System);
      if (PressByKey(Kind, KeyOrState, Shift)) return;
    }
    if (Event == DialogEvent::KeyUp && KeyOrState == keycode::Control && Shift == 0) upcalls_.speaker.StopSpeakingAll();
    if (Kind != ControlKind::Form) {
      DialogControl& control = Control(Kind, Index);
      if (Event == DialogEvent::GotFocus) SpeakFocus(control);
      if (Event == DialogEvent::Click && Kind == ControlKind::Option) SelectOption(control);
      const bool changed = Event == DialogEvent::Change || Event == DialogEvent::Scroll || Event == DialogEvent::Click;
      if (changed && Kind != ControlKind::Button) SpeakChange(control);
    }
    const Handler handler = handler_;  // it may open the next dialog, which brings its own
    const unsigned mine = showing_;
    if (handler) handler({Kind, Index, Event, KeyOrState, Shift});
    const bool edits = Kind == ControlKind::TextBox || Kind == ControlKind::Box;
    if (!edits || !GDOpen || showing_ != mine || KeyOrState == 0) return;
    if (Event == DialogEvent::KeyDown) SpeakKey(Control(Kind, Index), KeyOrState, Shift);
    if (Event == DialogEvent::KeyPress) EchoTyped(Control(Kind, Index), KeyOrState);
  } catch (const std::exception& fault) {
    upcalls_.errors.ErrorReport(fault.what(), GenFormCode, 0, 0);
  }
}

}  // namespace corvid
