// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/memory/memory_face.h"

#include "core/fault.h"

namespace corvid {

class MemoryFace::ViewportWatch : public TextObserver {
 public:
  ViewportWatch(MemoryFace& face, int16 index) : face_(face), index_(index) {}
  void TextInserted(const TextModel&, int32, std::string_view text, int32, bool) override {
    if (face_.RecordDisplay) face_.effects_.Add("display", std::to_string(index_) + " " + std::string(text));
  }
  void TextRemoved(const TextModel&, int32, std::string_view) override {}
  void SelectionMoved(const TextModel&) override {}
  void StateChanged(const TextModel&) override {}

 private:
  MemoryFace& face_;
  int16 index_;
};

void MemoryFace::AttachViewport(int16 Index, bool /*colour*/, TextModel& viewport) {
  watches_.push_back(std::make_unique<ViewportWatch>(*this, Index));
  viewport.SetObserver(watches_.back().get());
}

void MemoryFace::SetTitle(const std::string& title) {
  Title = title;
  effects_.Add("title", title);
}

void MemoryFace::SetFocus(MainFocus focus) {
  if (focus == focus_) return;
  focus_ = focus;
  effects_.Add("focus", focus == MainFocus::Entry ? "entry" : "output");
  if (Events != nullptr) Events->FocusChanged(focus);
}

void MemoryFace::ShowListMenu(const ListMenuView& menu) {
  Menu = menu;
  MenuOpen = true;
  std::string text = menu.Name;
  for (const std::string& item : menu.Items) text += "|" + item;
  effects_.Add("menu", text);
}

void MemoryFace::CloseListMenu() {
  MenuOpen = false;
  effects_.Add("menu-closed", Menu.Name);
}

void MemoryFace::SetClipboardText(const std::string& text) {
  Clipboard = text;
  effects_.Add("clipboard", text);
}

void MemoryFace::StartProgram(const std::string& program, const std::string& file) {
  effects_.Add("program", program + "|" + file);
}

void MemoryFace::NoteSend(int16 session, const std::string& text) {
  effects_.Add("send", std::to_string(session) + " " + text);
}

void MemoryFace::NoteSession(int16 session, const std::string& state) {
  effects_.Add("session", std::to_string(session) + " " + state);
}

void MemoryFace::OpenDialog(DialogModel& model, DialogEvents& events) {
  model_ = &model;
  dialogEvents_ = &events;
  std::string text = model.Code + " " + model.Title;
  for (const DialogControl& control : model.Controls)
    if (control.Kind == ControlKind::Label) text += "|" + control.Text;
  effects_.Add("dialog", text);
  if (model.FirstFocus >= 0) {
    FocusControl(model.FirstFocus);
    return;
  }
  for (std::size_t i = 0; i < model.Controls.size(); ++i) {
    const DialogControl& control = model.Controls[i];
    if (control.Kind == ControlKind::Label || !control.Enabled || !control.Visible) continue;
    FocusControl(static_cast<int32>(i));  // a window gives its first control the focus
    return;
  }
}

void MemoryFace::ControlChanged(int32 /*control*/) {}

void MemoryFace::FocusControl(int32 control) {
  int16 key = 0;
  int16 shift = 0;
  if (dialogEvents_ != nullptr) dialogEvents_->DialogHappened(control, DialogEvent::GotFocus, key, shift);
}

void MemoryFace::CloseDialog() {
  if (model_ != nullptr) effects_.Add("dialog-closed", model_->Code);
  model_ = nullptr;
  dialogEvents_ = nullptr;
}

bool MemoryFace::Press(const std::string& button) {
  int32 place = 0;
  for (const DialogControl& control : model_->Controls) {
    if (control.Kind == ControlKind::Button && (control.Text == button || control.Caption == button)) {
      int16 key = 0;
      int16 shift = 0;
      dialogEvents_->DialogHappened(place, DialogEvent::Click, key, shift);
      return true;
    }
    ++place;
  }
  return false;
}

bool MemoryFace::AnswerDialog() {
  if (model_ == nullptr) return false;
  if (answers_.empty()) {
    effects_.Add("unanswered", model_->Code + " " + model_->Title);
    dialogEvents_->DialogCloseRequested();
    // A box of Yes and No alone stays open when closed from outside: answer with the last button made.
    if (model_ != nullptr) {
      for (std::size_t i = model_->Controls.size(); i-- > 0;)
        if (model_->Controls[i].Kind == ControlKind::Button) return Press(model_->Controls[i].Text);
    }
    return true;
  }
  const Answer answer = answers_.front();
  answers_.pop_front();
  int16 key = 0;
  int16 shift = 0;
  const auto tell = [&](int32 place, DialogEvent event) {
    if (dialogEvents_ != nullptr) dialogEvents_->DialogHappened(place, event, key, shift);
  };
  for (const auto& [place, text] : answer.Texts) {
    model_->Controls.at(static_cast<std::size_t>(place)).Text = text;
    tell(place, DialogEvent::Change);
  }
  for (const auto& [place, row] : answer.Rows) {
    model_->Controls.at(static_cast<std::size_t>(place)).ListIndex = row;
    tell(place, DialogEvent::Click);
  }
  for (const auto& [place, value] : answer.Values) {
    model_->Controls.at(static_cast<std::size_t>(place)).Value = value;
    tell(place, DialogEvent::Click);
  }
  if (model_ != nullptr && !answer.Button.empty() && !Press(answer.Button))
    effects_.Add("unanswered", "no button " + answer.Button);
  return true;
}

bool MemorySpeech::Lives() const {
  if (Died == Death::Broken) throw Fault(FaultKind::Internal, "The voice has died");
  return Died == Death::None;
}

void MemorySpeech::Purge(int16 voice) {
  if (Lives()) effects_.Add("silence", std::to_string(voice));
}

void MemorySpeech::Speak(int16 voice, const std::string& text) {
  if (Lives()) effects_.Add("speech", std::to_string(voice) + " " + text);
}

void MemorySpeech::Say(int16 channel, const std::string& text, bool interrupt) {
  if (!Works || !Lives()) return;
  if (interrupt) effects_.Add("silence", std::to_string(channel));
  if (!text.empty()) effects_.Add("say", std::to_string(channel) + " " + text);
}

}  // namespace corvid
