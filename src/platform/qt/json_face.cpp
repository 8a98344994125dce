// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/json_face.h"

#include <QAbstractEventDispatcher>
#include <csignal>
#include <utility>
#include <vector>

#include "core/keys.h"
#include "core/utf8.h"
#include "platform/key_router.h"
#include "platform/qt/dialog_wait.h"
#include "platform/qt/json_dialog.h"
#include "platform/qt/json_output.h"
#include "platform/qt/json_request.h"
#include "platform/qt/json_sounds.h"
#include "platform/qt/json_speech.h"
#include "platform/qt/line_input.h"

namespace corvid {

namespace {

class DisplayWatch : public TextObserver {
 public:
  DisplayWatch(JsonOutput& output, int16 session) : output_(output), session_(session) {}
  void TextInserted(const TextModel&, int32, std::string_view text, int32, bool) override {
    output_.Display(session_, text);
  }
  void TextRemoved(const TextModel&, int32, std::string_view) override {}
  void SelectionMoved(const TextModel&) override {}
  void StateChanged(const TextModel&) override {}

 private:
  JsonOutput& output_;
  int16 session_;
};

JsonObject TextState(const char* what, const TextModel& text) {
  JsonObject object;
  object.Text("what", what).Text("text", text.Text()).Number("start", text.SelStart());
  object.Number("length", text.SelLength()).Flag("locked", text.Locked());
  return object;
}

JsonRequest TooLong() {
  JsonRequest request;
  request.Text = "This line is longer than " + std::to_string(LineInput::LongestLine) + " bytes";
  return request;
}

const char* FocusName(MainFocus focus) {
  return focus == MainFocus::Entry ? "entry" : "output";
}

}  // namespace

struct JsonFace::Parts {
  Parts(QtEventLoop& eventLoop, const Clock& clock, const Options& options)
      : loop(eventLoop),
        output(options.Output, options.Events),
        engine(output),
        reader(output),
        sounds(output, clock),
        dialog(eventLoop, output,
               {[this] { return clipboard; }, [this](const std::string& text) { SetClipboard(text); }}),
        wait(eventLoop, clock, dialog.Driver()),
        keys(dialog.Driver(), clock),
        input(options.Input,
              {[this](const std::string& line) { Handle(ParseJsonRequest(line)); }, [this] { Handle(TooLong()); },
               [this] { InputEnds(); }, [this] { return keys.Free() && !JobDue() && wait.Over(); }}) {
    // Both come once a turn: before the loop sleeps, and when a loop that does not sleep comes round.
    auto* dispatcher = QAbstractEventDispatcher::instance();
    QObject::connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, &context, [this] { TurnEnds(); });
    QObject::connect(dispatcher, &QAbstractEventDispatcher::awake, &context, [this] { Flush(); });
  }

  bool JobDue() const { return hooks.JobDue && hooks.JobDue(); }

  bool Idle() const { return input.AllTaken() && (loop.Depth() == 0 || dialog.Waiting()) && !JobDue(); }

  void TurnEnds() {
    if (started && readyDue && Idle()) {
      readyDue = false;
      JsonObject fields;
      fields.Number("handled", input.Taken());
      if (dialog.Driver().IsOpen()) fields.Text("modal", dialog.Code());
      output.Print("ready", fields);
    }
    Flush();
  }

  void InputEnds() {
    TurnEnds();  // what was asked for is done
    Leave();
  }

  void Leave() {
    gone = true;
    if (hooks.Quit) hooks.Quit();
  }

  void Flush() {
    if (output.Flush() || broken) return;
    broken = true;  // nobody reads our events any more: the same as an input that ends
    QMetaObject::invokeMethod(
        &context, [this] { Leave(); }, Qt::QueuedConnection);
  }

  void Handle(const JsonRequest& request) {
    readyDue = true;
    using Kind = JsonRequest::Kind;
    switch (request.What) {
      case Kind::Error:
        output.Print("error", JsonObject().Text("text", request.Text));
        break;
      case Kind::Line:
        EnterLine(request.Text);
        break;
      case Kind::Key:
        keys.Press(request.KeyCode, request.Shift);
        break;
      case Kind::Down:
        keys.Down(request.KeyCode);
        break;
      case Kind::Up:
        keys.Up(request.KeyCode);
        break;
      case Kind::Type:
        Type(request.Text);
        break;
      case Kind::Wait:
        input.Pause(static_cast<int>(request.Seconds * 1000));
        break;
      case Kind::Get:
        output.Print("state", State(request));
        break;
      case Kind::Select:
        Select(request);
        break;
      case Kind::Clipboard:
        clipboard = request.Text;
        break;
      case Kind::Close:
        Close();
        break;
    }
    readyDue = true;  // a nested loop may have said it while this was still in work
  }

  void EnterLine(const std::string& text) {
    const int32 control = dialog.Driver().Focused();
    if (!dialog.Driver().IsOpen() && !menu.empty()) {
      output.Print("error", JsonObject().Text("text", "The menu " + menu + " is open; it takes keys, not lines"));
      return;
    }
    if (dialog.Driver().IsOpen()) {
      if (control >= 0)
        dialog.Driver().SetText(control,
                                dialog.Driver().Model()->Controls[static_cast<std::size_t>(control)].Text + text);
    } else if (entry != nullptr) {
      ChangeFocus(MainFocus::Entry);
      return keys.EnterLine(*entry, text);
    }
    keys.Press(keycode::Enter, 0);
  }

  void Type(const std::string& text) {
    for (std::size_t at = 0; at < text.size();) {
      const std::size_t length = CharLength(text, at);
      keys.Type(text.substr(at, length));  // PUMP
      at += length;
    }
  }

  void Select(const JsonRequest& request) {
    TextModel* text = request.Text == "entry" ? entry : OutputText();
    if (text == nullptr) return;
    text->SetSelStart(request.Start);
    text->SetSelLength(request.Length);
  }

  void Close() {
    if (dialog.Driver().IsOpen()) {
      dialog.Driver().RequestClose();
    } else if (events != nullptr && events->CloseRequested() && !loop.Ending()) {
      shown = false;
      if (hooks.Quit) hooks.Quit();
    }
  }

  TextModel* OutputText() const { return hooks.Queries == nullptr ? nullptr : &hooks.Queries->OutputText(); }

  JsonObject State(const JsonRequest& request) const {
    const std::string& what = request.Text;
    if (what == "entry" && entry != nullptr) return TextState("entry", *entry).Text("label", entryLabel);
    if (what == "output" && OutputText() != nullptr) return TextState("output", *OutputText());
    JsonObject object;
    object.Text("what", what);
    if (what == "title") object.Text("text", title);
    if (what == "focus") {
      if (dialog.Driver().IsOpen()) {
        object.Text("window", "dialog").Number("control", dialog.Driver().Focused());
      } else {
        object.Text("window", FocusName(focus));
      }
    }
    if (what == "dialog") {
      object.Flag("open", dialog.Driver().IsOpen());
      if (dialog.Driver().IsOpen()) object.Raw("dialog", dialog.Description().Done());
    }
    if (hooks.Queries != nullptr) AddQueried(object, request);
    return object;
  }

  void AddQueried(JsonObject& object, const JsonRequest& request) const {
    if (request.Text == "menu") {
      const JsonMenu list = hooks.Queries->MenuShown();
      object.Flag("open", list.Open).Text("name", list.Name).Raw("items", JsonTexts(list.Items));
      object.Number("index", list.Index);
    } else if (request.Text == "sessions") {
      std::vector<std::string> sessions;
      for (const JsonSession& session : hooks.Queries->SessionList()) {
        JsonObject one;
        one.Number("session", session.Number).Text("reference", session.Reference).Text("state", session.State);
        sessions.push_back(one.Flag("current", session.Current).Done());
      }
      object.Raw("sessions", JsonArray(sessions));
    } else if (request.Text == "buffer") {
      std::string name;
      std::string text;
      const bool found = hooks.Queries->BufferShown(request.Number, name, text);
      object.Number("number", request.Number).Flag("exists", found).Text("name", name).Text("text", text);
    }
  }

  void ChangeFocus(MainFocus wanted) {
    if (wanted == focus) return;
    focus = wanted;
    if (output.Wants("focus")) output.Print("focus", JsonObject().Text("window", FocusName(focus)));
    if (events != nullptr) events->FocusChanged(focus);
  }

  void SetClipboard(const std::string& text) {
    clipboard = ToUtf8(text);
    PrintText("clipboard", text);
  }

  void PrintText(const char* event, const std::string& text) {
    if (output.Wants(event)) output.Print(event, JsonObject().Text("text", text));
  }

  QtEventLoop& loop;
  JsonOutput output;
  JsonEngine engine;
  JsonReader reader;
  JsonSounds sounds;
  JsonDialog dialog;
  DialogWait wait;
  KeyRouter keys;
  LineInput input;
  Hooks hooks;
  FaceEvents* events = nullptr;
  TextModel* entry = nullptr;
  std::vector<std::unique_ptr<DisplayWatch>> watches;
  MainFocus focus = MainFocus::Entry;
  std::string title, entryLabel, clipboard;
  std::string menu;  // name of the list menu that is open; empty: none
  bool shown = false;
  bool started = false;
  bool readyDue = true;
  bool broken = false;
  bool gone = false;
  QObject context;  // declared last: its queued calls die before the rest
};

JsonFace::JsonFace(QtEventLoop& loop, const Clock& clock, const Options& options)
    : parts_(std::make_unique<Parts>(loop, clock, options)) {
  std::signal(SIGPIPE, SIG_IGN);  // a reader that has gone is an end of input, not the death of the sessions
}

JsonFace::~JsonFace() = default;

std::string JsonFace::UnknownEvents(const std::string& filter) {
  return JsonOutput::UnknownEvents(filter);
}

void JsonFace::Start(Hooks hooks) {
  parts_->hooks = std::move(hooks);
  parts_->started = true;
  parts_->input.Start();
}

void JsonFace::Leave() {
  parts_->Leave();
}

void JsonFace::NoteExit(int code) {
  parts_->sounds.Finish();
  parts_->output.Print("exit", JsonObject().Number("code", code));
  parts_->output.Flush();
}

SpeechEngine& JsonFace::Engine() {
  return parts_->engine;
}
ScreenReader& JsonFace::Reader() {
  return parts_->reader;
}
SoundOutput& JsonFace::Sounds() {
  return parts_->sounds;
}

void JsonFace::SetEvents(FaceEvents* events) {
  parts_->events = events;
  parts_->keys.SetEvents(events);
}

DialogView& JsonFace::Dialogs() {
  return parts_->dialog;
}

void JsonFace::AttachEntry(TextModel& entry) {
  parts_->entry = &entry;
}

void JsonFace::AttachViewport(int16 Index, bool /*colour*/, TextModel& viewport) {
  if (!parts_->output.Wants("display")) return;  // not even told then
  parts_->watches.push_back(std::make_unique<DisplayWatch>(parts_->output, Index));
  viewport.SetObserver(parts_->watches.back().get());
}

void JsonFace::ShowMain() {
  parts_->shown = true;
}
bool JsonFace::MainShown() const {
  return parts_->shown;
}

void JsonFace::SetTitle(const std::string& title) {
  if (title == parts_->title) return;
  parts_->title = title;
  parts_->PrintText("title", title);
}

void JsonFace::SetFocus(MainFocus focus) {
  parts_->ChangeFocus(focus);
}
MainFocus JsonFace::Focus() const {
  return parts_->focus;
}
void JsonFace::ShowListMenu(const ListMenuView& menu) {
  parts_->menu = menu.Name;
  if (!parts_->output.Wants("menu")) return;
  JsonObject fields;
  fields.Text("name", menu.Name).Raw("items", JsonTexts(menu.Items)).Number("index", menu.Index);
  parts_->output.Print("menu", fields);
}

void JsonFace::CloseListMenu() {
  const std::string name = std::exchange(parts_->menu, {});
  if (parts_->output.Wants("menu-closed")) parts_->output.Print("menu-closed", JsonObject().Text("name", name));
}

void JsonFace::SetEntryLabel(const std::string& label) {
  parts_->entryLabel = label;
}

void JsonFace::Beep() {
  if (parts_->output.Wants("beep")) parts_->output.Beep();
}

std::string JsonFace::ClipboardText() {
  return parts_->clipboard;
}
void JsonFace::SetClipboardText(const std::string& text) {
  parts_->SetClipboard(text);
}

void JsonFace::StartProgram(const std::string& program, const std::string& file) {
  if (parts_->output.Wants("program"))
    parts_->output.Print("program", JsonObject().Text("program", program).Text("file", file));
}

void JsonFace::Notice(const std::string& text) {
  parts_->PrintText("notice", text);
}

bool JsonFace::PlayerThere() const {
  return !parts_->gone;
}

void JsonFace::NoteSend(int16 session, const std::string& text) {
  if (parts_->output.Wants("send"))
    parts_->output.Print("send", JsonObject().Number("session", session).Text("text", text));
}

void JsonFace::NoteSession(int16 session, const std::string& state) {
  if (parts_->output.Wants("session"))
    parts_->output.Print("session", JsonObject().Number("session", session).Text("state", state));
}

void JsonFace::NoteCleared(int16 session) {
  if (parts_->output.Wants("cleared")) parts_->output.Print("cleared", JsonObject().Number("session", session));
}

}  // namespace corvid
