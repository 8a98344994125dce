// SPDX-License-Identifier: GPL-3.0-or-later
// Every dialog of the program: built at run time from controls, shown modally, each control spoken as it gets the
// focus. A dialog has a form code ("TEXTPROMPT"); whoever opens it brings the routine that serves its events.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "core/upcalls.h"
#include "platform/dialog_view.h"
#include "platform/platform.h"
#include "sessions/timers.h"
#include "speech/speech_state.h"

namespace corvid {

// One event of one control, as a handler sees it.
struct DialogEventArgs {
  ControlKind Kind;
  int16 Index;  // from 1 within its kind; 0 for the form
  DialogEvent Event;
  int16& KeyOrState;  // key code of key events; 0 consumes the key
  int16& Shift;
};

class GenDialog : public DialogEvents, public DialogJobs {
 public:
  using Handler = std::function<void(const DialogEventArgs&)>;
  static constexpr int16 DefaultButton = 1, CancelButton = 2;  // bits of GDOption

  GenDialog(Platform& platform, Upcalls& upcalls, SpeechState& speech);

  // --- building: Form_Init, the Make calls in tab order, ShowForm ---
  // Starts a new dialog. One that is still open is unloaded first and ends with GDResult 0.
  void Form_Init(const std::string& FormCode, const std::string& FormTitle, Handler handler);
  // Positions and sizes are twips. A negative top is below the last control, a negative left beside it, by that many;
  // 0 keeps the last one's. Each returns the control's index, from 1 within its kind. A control whose call takes no
  // caption is captioned by the label made just before it.
  int16 MakeTextBox(int32 top, int32 left, int32 height, int32 width, const std::string& InitialValue);
  // A text box that shows and speaks stars.
  int16 MakePassword(int32 top, int32 left, int32 height, int32 width, const std::string& InitialValue);
  int16 MakeBox(int32 top, int32 left, int32 height, int32 width, const std::string& InitialValue);
  int16 MakeLabel(int32 top, int32 left, int32 height, int32 width, const std::string& InitialValue);
  int16 MakeHScroll(int32 top, int32 left, int32 height, int32 width, int16 InitialValue, int16 MinVal, int16 MaxVal,
                    int16 SmallIncrement, int16 LargeIncrement);
  int16 MakeList(int32 top, int32 left, int32 height, int32 width, const std::vector<std::string>& InitialValues,
                 int32 StartPosition, const std::string& caption);
  int16 MakeCommand(int32 top, int32 left, int32 height, int32 width, const std::string& InitialValue, int16 GDOption);
  int16 MakeCheck(int32 top, int32 left, int32 height, int32 width, int16 InitialValue, const std::string& caption);
  int16 MakeOption(int32 top, int32 left, int32 height, int32 width, int16 InitialValue, const std::string& caption);
  void SetCommandButtons(int16 defaultButton, int16 Cancel);  // by index; 0 for none
  void SetFirstFocus(ControlKind kind, int16 index);          // instead of the first control that can have it
  void SetOpeningText(const std::string& text) { openingText_ = text; }  // spoken behind the title
  // Shows the dialog and pumps events until it has been unloaded. It ends with GDResult 0 when the program ends or no
  // player is there to answer.
  void ShowForm(int32 RightMargin, int32 BottomMargin);

  // --- for handlers ---
  void End(int16 result);  // sets GDResult and unloads
  void Unload();
  DialogControl& Control(ControlKind kind, int16 index);  // Fault of kind Index when there is none
  void Refresh(ControlKind kind, int16 index);            // shows a control anew after its values were changed
  void SetFocus(ControlKind kind, int16 index);
  // What closing from outside answers: the result given, or nothing happens with -1. At first 0: the cancel button is
  // pressed where there is one, else the dialog ends with GDResult 2.
  void SetCloseResult(int16 result) { closeResult_ = result; }

  std::string GenFormCode;
  int16 GDResult = 0;
  bool GDOpen = false;
  const DialogModel& Model() const { return model_; }

  void DialogHappened(int32 control, DialogEvent event, int16& key, int16& shift) override;
  void DialogCloseRequested() override;

  // Speaks for an edit field when its caret has settled: 1 the word, 2 the line, 3 what was selected last.
  void SpeakField(bool textControl, int16 index, int16 job) override;

  // The dispatcher: speaks what the player has met, then asks the dialog's handler. A fault there is reported and the
  // dialog stays open. A key that a button's caption ends with ("Step F8", "Find   Ctrl-F") presses that button,
  // wherever the focus is.
  void GDEvent(ControlKind Kind, int16 Index, DialogEvent Event, int16& KeyOrState, int16& Shift);

 private:
  DialogControl& Add(ControlKind kind, int32 top, int32 left, int32 height, int32 width);
  void CalcNewPosition(int32& top, int32& left, int32& height, int32& width) const;
  void CalcMax(int32 top, int32 left, int32 height, int32 width);
  int32 PlaceOf(ControlKind kind, int16 index) const;
  void SpeakFocus(const DialogControl& control);
  void SpeakChange(const DialogControl& control);
  void SayControl(const std::string& text);
  void SayRow(const DialogControl& list);
  void SpeakKey(const DialogControl& field, int16 KeyCode, int16 Shift);
  void SpeakSpot(const DialogControl& field, int32 from, int32 to);
  void EchoTyped(const DialogControl& field, int16 code);
  bool SpeaksEditing() const;
  void SelectOption(DialogControl& chosen);
  bool PressByKey(ControlKind from, int16& KeyCode, int16 Shift);

  Platform& platform_;
  Upcalls& upcalls_;
  SpeechState& speech_;
  DialogModel model_;
  Handler handler_;
  std::string pendingCaption_;  // text of the label made last, for the control after it
  int32 lastTop_ = 0, lastLeft_ = 0, lastHeight_ = 0, lastWidth_ = 0;
  int32 rightEdge_ = 0, bottomEdge_ = 0;
  int16 closeResult_ = 0;
  std::string openingText_;
  std::string lastLine_;      // of the field whose words were spoken last
  std::string lastSelected_;  // what was selected when a selection was spoken last
  unsigned showing_ = 0;      // number of the dialog that is open: an outer ShowForm ends when it has changed
};

}  // namespace corvid
