// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/console_face.h"

#include <QAbstractEventDispatcher>
#include <QSocketNotifier>
#include <csignal>
#include <utility>
#include <vector>

#include "core/keys.h"
#include "core/text.h"
#include "platform/key_chars.h"
#include "platform/key_router.h"
#include "platform/qt/console_dialog.h"
#include "platform/qt/console_menu.h"
#include "platform/qt/console_output.h"
#include "platform/qt/dialog_wait.h"
#include "platform/qt/line_input.h"
#include "platform/qt/program_start.h"

namespace corvid {

namespace {

constexpr std::size_t MissedCodes = 2000;  // kept of what comes to a window that is not shown
constexpr std::size_t ShownCodes = 2000;   // of the text of a script window, from its end

constexpr const char* EntryName = "Entry";
constexpr int MostWindows = 100;  // passed on the way back to the entry line

// Prints what comes to the window that is shown, and what was missed of one that is shown anew.
class WindowWatch : public TextObserver {
 public:
  // came is set when something is shown.
  WindowWatch(ConsoleOutput& output, bool& came) : output_(output), came_(came) {}

  // What the session shows next is about its end: it gets lines of its own, behind a prompt as before what comes after.
  void SessionClosed() { closing_ = true; }

  void TextInserted(const TextModel& model, int32, std::string_view text, int32, bool) override {
    const bool own = std::exchange(closing_, false);
    if (model.Visible()) {
      came_ = true;
      own ? output_.Line(text) : output_.Stream(text);
      return;
    }
    if (own && !missed_.empty() && missed_.back() != '\n') missed_ += '\n';
    missed_ += text;
    if (own && missed_.back() != '\n') missed_ += '\n';
    if (missed_.size() <= 2 * MissedCodes) return;
    missed_.erase(0, missed_.size() - MissedCodes);
    missed_.erase(0, missed_.find('\n') + 1);  // from a whole line on, where there is one
  }
  void TextRemoved(const TextModel&, int32, std::string_view) override {}
  void SelectionMoved(const TextModel&) override {}
  void StateChanged(const TextModel& model) override {
    if (model.Visible() && !missed_.empty()) output_.Stream(std::exchange(missed_, {}));
  }

 private:
  ConsoleOutput& output_;
  bool& came_;
  std::string missed_;
  bool closing_ = false;
};

struct NumberedWatch {
  int16 Session;
  std::unique_ptr<WindowWatch> Watch;
};

}  // namespace

struct ConsoleFace::Parts {
  Parts(const QtEventLoop& loop, const Clock& clock, int in, int out)
      : output(out),
        writable(output.Descriptor(), QSocketNotifier::Write),
        dialog(output),
        wait(loop, clock, dialog.Driver()),
        keys(dialog.Driver(), clock),
        menu(output, keys),
        input(in, {[this](const std::string& line) { Handle(line); },
                   [this] { output.Line("That line was too long and is dropped."); }, [this] { Quit(); },
                   [this] { return keys.Free() && !(hooks.JobDue && hooks.JobDue()) && wait.Over(); }}) {
    writable.setEnabled(false);
    auto* dispatcher = QAbstractEventDispatcher::instance();
    QObject::connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, &context, [this] {
      TellWhereWeAre();
      Flush();
    });
    QObject::connect(dispatcher, &QAbstractEventDispatcher::awake, &context, [this] { Flush(); });
    QObject::connect(&writable, &QSocketNotifier::activated, &context, [this] { Flush(); });
  }

  void Quit() {
    gone = true;
    if (hooks.Quit) hooks.Quit();
  }

  void Flush() {
    const bool reads = output.Flush();
    writable.setEnabled(output.Waits());
    if (reads || std::exchange(broken, true)) return;
    QMetaObject::invokeMethod(
        &context, [this] { Quit(); }, Qt::QueuedConnection);
  }

  void Handle(const std::string& line) {
    TellWhereWeAre();
    output.Typed();
    if (StartsWithText(line, "/key ") && !dialog.TakesText()) {
      PressNamed(Trim(line.substr(5)));
    } else if (dialog.IsOpen()) {
      dialog.Answer(line);
    } else if (SameText(Trim(line), "/entry")) {
      GoToEntry();
    } else if ((!menu.IsOpen() || !menu.Answer(line)) && entry != nullptr) {
      ChangeFocus(MainFocus::Entry);
      const bool escaped = StartsWithText(line, "//key") || StartsWithText(line, "//entry");
      const std::string window = entryLabel;
      const bool intoScript = window != EntryName && !entry->Locked();
      keys.EnterLine(*entry, escaped ? line.substr(1) : line);  // PUMP
      if (intoScript && window == entryLabel) TellWayBack("That line went into " + window);
    }
  }

  // Before the player is waited for: what he types next may go elsewhere than he thinks.
  void TellWhereWeAre() {
    const bool since = std::exchange(came, false);
    if (entry == nullptr || dialog.IsOpen() || menu.IsOpen()) return;
    if (entryLabel == EntryName) return TellEntryLine();
    // Text of the game has pushed the way back off the screen. A prompt asks for an answer, so it is told behind each.
    if (since && !entry->Locked() && (remindDue || !output.AtLineStart())) {
      TellWayBack("You are typing into " + entryLabel);
      remindDue = false;
    }
  }

  // What was not typed here: a word chosen from a list, or what a command has put there.
  void TellEntryLine() {
    const std::string_view text = entry->View();
    const std::string_view line = text.substr(text.find_last_of('\n') + 1);
    if (line == toldEntry) return;
    toldEntry = line;
    if (!toldEntry.empty()) output.Line("In the entry line: " + toldEntry + "\n(What you type comes behind it.)");
  }

  void TellWayBack(const std::string& where) {
    output.Line(where + ". /entry leads back to the entry line.");
    remindDue = true;
    came = false;
  }

  // A script window cannot be read with the arrow keys here, so it is written out, and the way back is told.
  void ShowScriptWindow() {
    std::string text = entry->Text();
    const bool cut = text.size() > ShownCodes;
    if (cut) text.erase(0, text.find('\n', text.size() - ShownCodes) + 1);
    if (!IsBlank(text)) output.Line((cut ? "...\n" : "") + text);
    output.Line(entry->Locked() ? "This script cannot be changed. What you type goes to the entry line."
                                : "What you type goes into this window. /entry leads back to the entry line.");
    remindDue = true;
    came = false;
  }

  // The script windows stand in a circle.
  void GoToEntry() {
    passing = true;
    for (int step = 0; step < MostWindows && entryLabel != EntryName && !dialog.IsOpen(); ++step)
      keys.Press(keycode::Tab, ControlBit);
    passing = false;
    output.Line("Typing into: " + entryLabel);
  }

  // A line cannot hold a function key, so it is pressed by its name.
  void PressNamed(const std::string& name) {
    int16 shift = 0;
    int16 code = LoneKey(name);
    if (code == 0) ParseKeystroke(name, shift, code);
    if (code > 0) {
      const unsigned serial = dialog.Driver().Serial();
      keys.Press(code, shift);
      if (dialog.IsOpen() && serial == dialog.Driver().Serial()) dialog.AskAtFocus();
    } else {
      output.Line("\"" + name + "\" is no key name.");
    }
  }

  void ChangeFocus(MainFocus wanted) {
    if (wanted == focus) return;
    focus = wanted;
    if (events != nullptr) events->FocusChanged(focus);
  }

  ConsoleOutput output;
  QSocketNotifier writable;  // on while text waits for its reader
  ConsoleDialog dialog;
  DialogWait wait;
  KeyRouter keys;
  ConsoleMenu menu;
  LineInput input;
  Hooks hooks;
  FaceEvents* events = nullptr;
  TextModel* entry = nullptr;
  std::vector<NumberedWatch> watches;
  MainFocus focus = MainFocus::Entry;
  std::string title, clipboard;
  std::string entryLabel = EntryName;
  std::string toldEntry;   // what the player knows of the unfinished line of the entry
  bool came = false;       // a session has shown something since the player was waited for
  bool remindDue = false;  // the player has not been told again that a script takes what he types
  bool passing = false;    // through windows that are not to be written out
  bool shown = false;
  bool broken = false;
  bool gone = false;
  QObject context;  // declared last: its queued calls die before the rest
};

ConsoleFace::ConsoleFace(QtEventLoop& loop, const Clock& clock, int input, int output)
    : parts_(std::make_unique<Parts>(loop, clock, input, output)) {
  std::signal(SIGPIPE, SIG_IGN);  // a reader that has gone is an end of input, not the death of the sessions
}

ConsoleFace::~ConsoleFace() = default;

void ConsoleFace::Start(Hooks hooks) {
  parts_->hooks = std::move(hooks);
  parts_->input.Start();
}

void ConsoleFace::Leave() {
  parts_->Quit();
}

void ConsoleFace::Finish() {
  parts_->output.Flush();
}

void ConsoleFace::SetEvents(FaceEvents* events) {
  parts_->events = events;
  parts_->keys.SetEvents(events);
  parts_->menu.SetEvents(events);
}

DialogView& ConsoleFace::Dialogs() {
  return parts_->dialog;
}
void ConsoleFace::AttachEntry(TextModel& entry) {
  parts_->entry = &entry;
}

void ConsoleFace::AttachViewport(int16 Index, bool /*colour*/, TextModel& viewport) {
  parts_->watches.push_back({Index, std::make_unique<WindowWatch>(parts_->output, parts_->came)});
  viewport.SetObserver(parts_->watches.back().Watch.get());
}

void ConsoleFace::NoteSession(int16 session, const std::string& state) {
  if (state != "closed") return;
  for (const NumberedWatch& each : parts_->watches)
    if (each.Session == session) each.Watch->SessionClosed();
}

void ConsoleFace::ShowMain() {
  parts_->shown = true;
}
bool ConsoleFace::MainShown() const {
  return parts_->shown;
}

void ConsoleFace::SetTitle(const std::string& title) {
  if (title == parts_->title) return;
  parts_->title = title;
  parts_->output.Line("=== " + title);
}

void ConsoleFace::SetFocus(MainFocus focus) {
  parts_->ChangeFocus(focus);
}
MainFocus ConsoleFace::Focus() const {
  return parts_->focus;
}

void ConsoleFace::ShowListMenu(const ListMenuView& menu) {
  parts_->menu.Show(menu);
}
void ConsoleFace::SelectListRow(int32 row) {
  parts_->menu.Select(row);
}
void ConsoleFace::CloseListMenu() {
  parts_->menu.Close();
}

void ConsoleFace::SetEntryLabel(const std::string& label) {
  if (label == parts_->entryLabel) return;
  parts_->entryLabel = label;
  if (parts_->passing) return;
  parts_->output.Line("Typing into: " + label);
  if (label != EntryName && parts_->entry != nullptr) parts_->ShowScriptWindow();
}

void ConsoleFace::Beep() {
  parts_->output.Bell();
}
std::string ConsoleFace::ClipboardText() {
  return parts_->clipboard;
}
void ConsoleFace::SetClipboardText(const std::string& text) {
  parts_->clipboard = text;
}

void ConsoleFace::StartProgram(const std::string& program, const std::string& file) {
  StartDetachedProgram(program, file, Terminal::None);
}

void ConsoleFace::Notice(const std::string& text) {
  if (!parts_->dialog.HasJustTold(text)) parts_->output.Line(text);
}

void ConsoleFace::NoteAnswer(const std::string& text) {
  parts_->output.Line(Trim(text));
}

bool ConsoleFace::PlayerThere() const {
  return !parts_->gone;
}

}  // namespace corvid
