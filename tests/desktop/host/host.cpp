// SPDX-License-Identifier: GPL-3.0-or-later
// A small program behind the desktop window, for tests of the window alone. It prints what the window tells it.
//   F2 and F3 show a list menu, its longest item 10 or 300 characters long, F4 closes it.
//   F5 opens a dialog of every kind of control, F6 a message, F7 switches to the second output and back,
//   F8 writes coloured text, F9 pauses 60 ms within the key, Enter sends the entry to the output.
//   desktop_host --flood N   writes N lines as fast as the loop allows and prints how many a second.
#include <chrono>
#include <cstdio>
#include <cstring>
#include <string>

#include "core/keys.h"
#include "core/text_model.h"
#include "platform/qt/clock.h"
#include "platform/qt/desktop/desktop_application.h"
#include "platform/qt/desktop/desktop_face.h"
#include "platform/qt/event_loop.h"

namespace corvid {
namespace {

void Say(const std::string& text) {
  std::printf("%s\n", text.c_str());
  std::fflush(stdout);
}

class Host : public FaceEvents, public DialogEvents {
 public:
  Host(QtEventLoop& eventLoop, DesktopFace& desktopFace) : loop(eventLoop), face(desktopFace) {
    second.SetVisible(false);
    for (TextModel* output : {&first, &second}) output->SetLocked(true);
    face.AttachEntry(entry);
    face.AttachViewport(0, true, first);
    face.AttachViewport(1, true, second);
    face.SetEvents(this);
    face.SetEntryLabel("Entry");
    face.SetTitle("Corvid host");
    face.ResizeForm(70);
    face.ShowMain();
  }
  ~Host() override { face.SetEvents(nullptr); }
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;

  void KeyDown(int16 KeyCode, int16 Shift) override {
    Say("down " + std::to_string(KeyCode) + " " + std::to_string(Shift));
    switch (KeyCode) {
      case keycode::Tab:
        face.SetFocus(face.Focus() == MainFocus::Entry ? MainFocus::Output : MainFocus::Entry);
        break;
      case keycode::F1 + 1:
        face.ShowListMenu({"SHORT", "Short list", {"one", std::string(10, 'w'), "three"}, 0});
        break;
      case keycode::F1 + 2:
        face.ShowListMenu({"LONG", "Long list", {"one", std::string(300, 'w')}, 0});
        break;
      case keycode::F1 + 3:
        face.CloseListMenu();
        break;
      case keycode::F1 + 4:
        ShowAll();
        break;
      case keycode::F1 + 5:
        ShowMessage();
        break;
      case keycode::F1 + 6:
        second.SetVisible(!second.Visible());
        first.SetVisible(!second.Visible());
        break;
      case keycode::F1 + 7:
        Write("red", 0x0000FF, false);
        Write(" bold\r\n", -1, true);
        Write("caf\xe9 caf\xc3\xa9\r\n", 0xFF0000, false);
        break;
      case keycode::F1 + 8: {
        const auto end = clock.MonotonicMilliseconds() + 60;
        while (clock.MonotonicMilliseconds() < end) loop.WaitEvents(5);
        break;
      }
      case keycode::Left:
        entry.SetSelStart(entry.SelStart() - 1);
        break;
      default:
        break;
    }
  }
  void KeyTyped(const std::string& character) override {
    Say("typed " + (character == "\r" ? "enter" : character));
    if (character == "\r") {
      Write(entry.Text() + "\r\n", -1, false);
      entry.SetText("");
    } else if (character == "\b") {
      const int32 caret = entry.SelStart();
      if (entry.SelLength() == 0 && caret > 0) entry.Select(caret - 1, caret);
      entry.SetSelText("");
    } else {
      entry.SetSelText(character);
    }
  }
  void KeyUp(int16 KeyCode, int16 Shift) override {
    Say("up " + std::to_string(KeyCode) + " " + std::to_string(Shift));
  }
  void FocusChanged(MainFocus focus) override { Say(focus == MainFocus::Entry ? "focus entry" : "focus output"); }
  bool CloseRequested() override {
    Say("close");
    return true;
  }

  void Write(const std::string& text, int32 color, bool bold) {
    TextModel& output = second.Visible() ? second : first;
    output.SetSelColor(color);
    output.SetSelBold(bold);
    output.SetSelStart(output.Length());
    output.SetSelText(text);
    if (output.Length() > 60000) output.KeepLast(45000);
  }

  DialogControl& Add(ControlKind kind, const std::string& caption) {
    DialogControl& control = model.Controls.emplace_back();
    control.Kind = kind;
    control.Caption = caption;
    if (kind == ControlKind::Button || kind == ControlKind::Label) control.Text = caption;
    return control;
  }
  void ShowAll() {
    model = DialogModel{};
    model.Code = "ALL";
    model.Title = "All kinds";
    Add(ControlKind::Label, "Name?");
    Add(ControlKind::TextBox, "Name?").Text = "old";
    Add(ControlKind::List, "Fruit").Items = {"apple", "banana", "cherry"};
    model.Controls.back().ListIndex = 1;
    DialogControl& marks = Add(ControlKind::List, "Marks");
    marks.Items = {"one", "two"};
    marks.MultiSelect = true;
    marks.Selected = {false, true};
    Add(ControlKind::Check, "Echo");
    Add(ControlKind::Option, "Reader").Value = 1;
    Add(ControlKind::Option, "Voices");
    DialogControl& rate = Add(ControlKind::Scroll, "Rate");
    rate.Min = -10;
    rate.Max = 21;
    Add(ControlKind::Box, "Notes").Text = "a\r\nb";
    Add(ControlKind::Button, "OK").Default = true;
    Add(ControlKind::Button, "Cancel").Cancel = true;
    Run();
  }
  void ShowMessage() {
    model = DialogModel{};
    model.Code = "MSGBOX";
    model.Title = "Question";
    Add(ControlKind::Label, "Do you wish to go on?");
    Add(ControlKind::Button, "Yes").Default = true;
    Add(ControlKind::Button, "No");
    model.FirstFocus = 1;
    Run();
  }
  void Run() {
    open = true;
    face.Dialogs().OpenDialog(model, *this);
    while (open && !loop.Ending()) loop.WaitEvents(-1);
  }
  void DialogHappened(int32 control, DialogEvent event, int16& key, int16& /*shift*/) override {
    if (event == DialogEvent::LostFocus || event == DialogEvent::KeyUp || event == DialogEvent::KeyPress) return;
    const DialogControl& met = model.Controls[static_cast<std::size_t>(control)];
    const char* name = event == DialogEvent::GotFocus  ? "got"
                       : event == DialogEvent::Change  ? "change"
                       : event == DialogEvent::Click   ? "click"
                       : event == DialogEvent::KeyDown ? "key"
                                                       : "double";
    std::string marks;
    for (const bool mark : met.Selected) marks += mark ? "+" : "-";
    Say(std::string("dialog ") + name + " " + met.Caption + " text=" + met.Text +
        " row=" + std::to_string(met.ListIndex) + marks + " value=" + std::to_string(met.Value) +
        (event == DialogEvent::KeyDown ? " key=" + std::to_string(key) : ""));
    if (model.Code == "MSGBOX" && event == DialogEvent::KeyDown && (key == 'Y' || key == 'N')) {
      key = 0;
      Close(key == 'Y' ? "Yes" : "No");
    }
    if (event == DialogEvent::Click && met.Kind == ControlKind::Button) Close(met.Text);
  }
  void DialogCloseRequested() override { Close("closed"); }
  void Close(const std::string& how) {
    Say("dialog end " + how);
    open = false;
    face.Dialogs().CloseDialog();
  }

  QtEventLoop& loop;
  DesktopFace& face;
  SystemClock clock;
  TextModel entry, first, second;
  DialogModel model;
  bool open = false;
};

void Flood(Host& host, QtEventLoop& loop, int lines) {
  while (!host.face.MainShown()) loop.WaitEvents(10);
  for (int i = 0; i < 20; ++i) loop.WaitEvents(5);
  const auto start = std::chrono::steady_clock::now();
  for (int i = 0; i < lines; ++i) {
    host.Write("You hit the ", -1, false);
    host.Write("orc " + std::to_string(i), 0x00FF00, true);
    host.Write(" and it screams as loud as it can.\r\n", 0x0000FF, false);
    if (i % 80 == 0) loop.DoEvents();  // one read of a socket
  }
  loop.DoEvents();
  const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
  Say("flood " + std::to_string(static_cast<int>(lines / time.count())) + " lines a second");
}

}  // namespace
}  // namespace corvid

int main(int argc, char** argv) {
  const corvid::DesktopApplication application(argc, argv);
  corvid::QtEventLoop loop(argc, argv);
  const corvid::SystemClock clock;
  corvid::DesktopFace face(loop, clock);
  corvid::Host host(loop, face);
  face.Start({.Quit = [&] { loop.End(0); }, .Focused = [](bool focused) { corvid::Say(focused ? "back" : "away"); }});
  if (argc == 3 && std::strcmp(argv[1], "--flood") == 0) {
    corvid::Flood(host, loop, std::stoi(argv[2]));
    return 0;
  }
  return loop.Run();
}
