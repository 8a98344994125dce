// SPDX-License-Identifier: GPL-3.0-or-later
// The program behind lines of JSON: everything real but window, voices and sound, which become events. docs/json-ui.md
// tells what goes in and comes out.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/clock.h"
#include "platform/face.h"
#include "platform/qt/event_loop.h"
#include "platform/sounds.h"
#include "platform/speech.h"

namespace corvid {

struct JsonSession {
  int16 Number = 0;
  std::string Reference;
  std::string State;  // "connected", "connecting" or "closed"
  bool Current = false;
};

struct JsonMenu {
  bool Open = false;
  std::string Name;
  std::vector<std::string> Items;
  int32 Index = -1;
};

// What "get" asks the program for.
class JsonQueries {
 public:
  virtual ~JsonQueries() = default;
  virtual TextModel& OutputText() = 0;  // the current viewport
  virtual std::vector<JsonSession> SessionList() const = 0;
  virtual JsonMenu MenuShown() const = 0;
  // False when there is no buffer of that number.
  virtual bool BufferShown(int16 number, std::string& name, std::string& text) const = 0;
};

// Wire, in main:
//   QtEventLoop loop(argc, argv);  SystemClock clock;
//   JsonFace face(loop, clock, {.Events = filter});   after a check with JsonFace::UnknownEvents(filter)
//   Platform platform{..., face.Engine(), face.Reader(), face, face.Sounds()};
//   ... build the program ...
//   face.Start({.Queries = &corvid, .JobDue = [..] { a job of Timer1 is pending }, .Quit = [..] { quit(true) }});
//   const int code = loop.Run();
//   face.NoteExit(code);
// The face is built before the program and destroyed after it; attached texts must not change once it is gone.
class JsonFace : public Face {
 public:
  struct Options {
    std::string Events;  // names of the events to print, joined by ","; empty for all
    int Input = 0;       // descriptors
    int Output = 1;
  };
  struct Hooks {
    JsonQueries* Queries = nullptr;
    std::function<bool()> JobDue;
    std::function<void()> Quit;  // the input has ended
  };

  JsonFace(QtEventLoop& loop, const Clock& clock, const Options& options);
  ~JsonFace() override;
  JsonFace(const JsonFace&) = delete;
  JsonFace& operator=(const JsonFace&) = delete;

  // Names in filter that are no event, joined by ", "; empty when all are known.
  static std::string UnknownEvents(const std::string& filter);

  void Start(Hooks hooks);  // begins to read; "ready" comes once the loop is idle
  void Leave();             // the player has gone, as at the end of the input
  void NoteExit(int code);  // prints "exit" and writes everything out
  SpeechEngine& Engine();   // prints "speech" with type 3 and "silence"
  ScreenReader& Reader();   // prints "speech" with type 1 and "silence"
  SoundOutput& Sounds();    // prints "sound"

  void SetEvents(FaceEvents* events) override;
  DialogView& Dialogs() override;
  void AttachEntry(TextModel& entry) override;
  void AttachViewport(int16 Index, bool colour, TextModel& viewport) override;
  void ShowMain() override;
  bool MainShown() const override;
  void SetTitle(const std::string& title) override;
  void BringForward() override {}
  void SetFocus(MainFocus focus) override;
  MainFocus Focus() const override;
  void ShowListMenu(const ListMenuView& menu) override;
  void SelectListRow(int32 /*row*/) override {}  // "get" tells it
  void CloseListMenu() override;
  void SetEntryLabel(const std::string& label) override;
  void ResizeForm(int16 /*percent*/) override {}
  void Beep() override;
  std::string ClipboardText() override;
  void SetClipboardText(const std::string& text) override;
  void StartProgram(const std::string& program, const std::string& file) override;  // told, not started
  void Notice(const std::string& text) override;
  bool PlayerThere() const override;
  void NoteSend(int16 session, const std::string& text) override;
  void NoteSession(int16 session, const std::string& state) override;
  void NoteCleared(int16 session) override;

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace corvid
