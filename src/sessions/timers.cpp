// SPDX-License-Identifier: GPL-3.0-or-later
#include "sessions/timers.h"

#include <algorithm>
#include <utility>

#include "core/reading.h"
#include "core/text.h"
#include "core/trap.h"
#include "sessions/word_echo.h"

namespace corvid {

namespace {

constexpr int WindowMilliseconds = 50;  // between two looks whether the main window is there
constexpr int16 ReadByWindow = 1;       // a screen reader follows the caret by itself
constexpr int16 FieldFamily = 1000;     // a dialog job is family * 1000 + index * 10 + job
constexpr int16 FieldIndex = 10;

}  // namespace

TimerRoutines::TimerRoutines(ScriptState& script, OptionsState& options, SessionState& sessions, BufferState& buffers,
                             KeyboardState& keyboard, Platform& platform, Upcalls& upcalls)
    : script_(script),
      options_(options),
      sessions_(sessions),
      buffers_(buffers),
      keyboard_(keyboard),
      platform_(platform),
      upcalls_(upcalls) {}

TimerRoutines::~TimerRoutines() = default;

bool TimerRoutines::MustRun(int16 action) {
  return action == timeraction::RunEntryLine || action == timeraction::OpenCharacters;
}

void TimerRoutines::StartTimer1(int16 action, int milliseconds) {
  while (!jobs_.empty() && !MustRun(jobs_.back().Action)) jobs_.pop_back();
  jobs_.push_back({action, milliseconds, action == timeraction::RunEntryLine ? keyboard_.EntryLine : std::string()});
  if (jobs_.size() == 1) StartNext();
}

bool TimerRoutines::JobDue() const {
  return std::any_of(jobs_.begin(), jobs_.end(),
                     [](const Job& job) { return job.Action != timeraction::OpenCharacters; });
}

void TimerRoutines::StartNext() {
  keyboard_.TimerAction = jobs_.empty() ? int16{0} : jobs_.front().Action;
  if (jobs_.empty()) return;
  if (!Timer1) Timer1 = platform_.timers.Create([this] { Timer1_Timer(); });
  Timer1->SetInterval(jobs_.front().Milliseconds);
  Timer1->SetEnabled(true);
}

void TimerRoutines::Timer1_Timer() {
  if (Timer1) Timer1->SetEnabled(false);
  if (jobs_.empty()) return;
  if (jobs_.front().Action == timeraction::OpenCharacters && !platform_.face.MainShown()) {
    jobs_.front().Milliseconds = WindowMilliseconds;
    StartNext();
    return;
  }
  const Job job = std::move(jobs_.front());
  jobs_.pop_front();
  StartNext();
  Trap trap{upcalls_.errors, "Timer1", {std::to_string(job.Action)}};
  trap.Step([&] { Run(job); });  // PUMP
}

void TimerRoutines::Run(const Job& job) {
  switch (job.Action) {
    case timeraction::SpeakWord:
      return SpeakWord();
    case timeraction::SpeakLine:
      return SpeakLine();
    case timeraction::SpeakSelection:
      return SpeakSelection();
    case timeraction::PlaceCaret:
      return buffers_.EntryBox.SetSelStart(caretAfterPaste_);
    case timeraction::RunEntryLine:
      return RunEntryLine(job.Line);
    case timeraction::OpenCharacters:
      return upcalls_.screens.MaintainCharacters();
    default:
      if (job.Action >= timeraction::FirstDialogJob) RunDialogJob(job.Action);
  }
}

void TimerRoutines::RunDialogJob(int16 action) {
  if (dialogJobs_ == nullptr) return;
  const int rest = action % FieldFamily;
  const int job = rest % FieldIndex;
  if (job < timeraction::SpeakWord || job > timeraction::PlaceCaret) return;
  dialogJobs_->SpeakField(action / FieldFamily == 1, static_cast<int16>(rest / FieldIndex), static_cast<int16>(job));
}

void TimerRoutines::RunEntryLine(const std::string& line) {
  script_.DefiningBuffer = 0;
  script_.CommandDepth = 0;
  int16 options = option::Interactive;
  std::string ErrorDescription;
  Parameters rvar;
  int16 outchannel = CurrentSession;
  upcalls_.commands.ProcessCommand(line, options, ErrorDescription, rvar, outchannel);  // PUMP
  if (!ErrorDescription.empty() || Trim(line).substr(0, 1) != std::string(1, options_.CommandChar)) return;
  AppendNewLine(buffers_, line);
}

TextModel& TimerRoutines::ReadText() {
  return sessions_.ReadPosition ? sessions_.OutputWindow(script_.CurrentSocket) : buffers_.EntryBox;
}

int16 TimerRoutines::XWindowType() const {
  if (sessions_.ReadPosition) return Channel::Output;
  return buffers_.CurrentBuffer == buffer::EntryLine ? Channel::Entry : Channel::Edit;
}

// A new line is spoken whole; within a line, the word that the caret came upon.
void TimerRoutines::SpeakWord() {
  const TextModel& text = ReadText();
  const WordEcho echo = EchoWord(text.View(), text.SelStart());
  const bool newLine = !keyboard_.PendingFilter.empty() && echo.Line != keyboard_.PendingFilter;
  keyboard_.PendingFilter = echo.Line;
  if (echo.PassedWordEnd && !sessions_.ReadPosition && echo.Column == options_.MarginBell) platform_.face.Beep();
  upcalls_.speaker.SpeakOut(newLine ? echo.Line : echo.Word, XWindowType(), ReadByWindow);
}

void TimerRoutines::SpeakLine() {
  const TextModel& text = ReadText();
  const std::string line = CurrentLine(text.View(), text.SelStart() + 1);
  const std::size_t indent = std::min(line.find_first_not_of(' '), line.size());
  const int16 channel = XWindowType();
  if (options_.SpeakIndent && indent > 0)
    upcalls_.speaker.SpeakOut("Indent " + std::to_string(indent), channel, ReadByWindow);
  upcalls_.speaker.SpeakOut(line, channel, ReadByWindow);
}

void TimerRoutines::SpeakSelection() {
  const std::string selected = ReadText().SelText();
  const std::string before = std::exchange(keyboard_.PendingWord, selected);
  upcalls_.speaker.SpeakOut(NewlySelected(before, selected), XWindowType(), ReadByWindow);
}

}  // namespace corvid
