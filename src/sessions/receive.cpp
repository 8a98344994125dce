// SPDX-License-Identifier: GPL-3.0-or-later
#include "sessions/receive.h"

#include <exception>
#include <utility>

#include "core/fault.h"
#include "core/text.h"
#include "core/utf8.h"
#include "script/statement_text.h"
#include "sessions/telnet.h"

namespace corvid {

namespace {

constexpr std::size_t ReadSize = 4096;
constexpr int HoldMilliseconds = 100;
constexpr std::size_t WrappedLine = 65;  // a spoken line at least as long is taken as wrapped by the server
constexpr float NoticeSeconds = 5;
constexpr float SecondsOfDay = 86400;

}  // namespace

// The texts of one call. Commands that a trigger runs can bring the next call before this one is done, so nothing of it
// is shared.
struct Receive::Work {
  std::string Bytes;
  DecodedBlock Block;
  LineVersions Line;
  std::string Shown;
  std::string BatchText;
  std::vector<std::string> Faults;
  bool Logged = false;
};

// Texts for one call out of the store, and back into it.
class Receive::Lease {
 public:
  explicit Lease(std::vector<std::unique_ptr<Work>>& idle) : idle_(idle) {
    if (idle_.empty()) {
      work_ = std::make_unique<Work>();
    } else {
      work_ = std::move(idle_.back());
      idle_.pop_back();
    }
    work_->BatchText.clear();
    work_->Logged = false;
  }
  ~Lease() {
    constexpr std::size_t kept = 4;  // deep calls are rare: their memory is given back
    if (idle_.size() < kept) idle_.push_back(std::move(work_));
  }
  Lease(const Lease&) = delete;
  Lease& operator=(const Lease&) = delete;
  Work& operator*() { return *work_; }

 private:
  std::vector<std::unique_ptr<Work>>& idle_;
  std::unique_ptr<Work> work_;
};

class Receive::Negotiation final : public TelnetEffects {
 public:
  Negotiation(Receive& receive, int16 index) : receive_(receive), index_(index) {}
  bool Answer(std::string_view bytes) override { return receive_.platform_.sockets.Write(index_, bytes) != -1; }
  void MspOffered() override { receive_.sessions_.MspOn[index_] = 1; }
  void Bell() override { receive_.platform_.face.Beep(); }

 private:
  Receive& receive_;
  int16 index_;
};

Receive::Receive(ScriptState& script, OptionsState& options, SessionState& sessions, OutputWindows& output, Logs& logs,
                 LineTriggers& triggers, SoundLines& sounds, Platform& platform, Upcalls& upcalls)
    : script_(script),
      options_(options),
      sessions_(sessions),
      output_(output),
      logs_(logs),
      triggers_(triggers),
      sounds_(sounds),
      platform_(platform),
      upcalls_(upcalls),
      maker_(script, options) {}

Receive::~Receive() = default;

void Receive::Report(int16 Index, const std::string& error) {
  upcalls_.errors.UnknownError(error, "SockTelnet_OnRead", {std::to_string(Index)});
}

// A fault in one step of a line must cost the player no more than that step. A malformed pattern counts as no match.
template <typename Step>
void Receive::Try(int16 Index, Step&& step) {
  try {
    std::forward<Step>(step)();
  } catch (const Fault& fault) {
    if (fault.Kind != FaultKind::BadPattern) Report(Index, fault.what());
  } catch (const std::exception& fault) {
    Report(Index, fault.what());
  }
}

void Receive::ReadTimer_Timer(int16 Index) {
  ReadTimer[Index]->SetEnabled(false);
  sessions_.ReadTimerFired = true;
  sockTelnet_OnRead(Index);
}

void Receive::sockTelnet_OnRead(int16 Index) {
  const bool timerFired = std::exchange(sessions_.ReadTimerFired, false);
  Lease lease(idle_);
  Work& work = *lease;
  Try(Index, [&] {
    if (!sessions_.InjectedText.empty()) {
      work.Block.Text = std::exchange(sessions_.InjectedText, {});
      work.Block.Text += "\r\n";
      work.Block.DoubleFeeds = work.Block.Text.find("\n\n") != std::string::npos;
    } else {
      int readCount = 0;
      if (ReadBlock(Index, timerFired, work, readCount) == Flow::Leave) return;
      const std::size_t tail = work.Block.Text.size() - work.Block.LastBreak;
      if (readCount > 0 && work.Block.LastBreak > 0 && tail > 0 && tail < LongestHeldLine) HoldTail(Index, work);
      if (work.Block.HighBytes && !sessions_.Utf8Seen[Index] && IsMultiByteUtf8(work.Block.Text))
        sessions_.Utf8Seen[Index] = 1;
    }
    HandleBlock(Index, work);
  });
}

// Fills work.Block with what was held and what came. readCount is -1 when nothing came.
Receive::Flow Receive::ReadBlock(int16 Index, bool timerFired, Work& work, int& readCount) {
  std::string& held = sessions_.PartialLine[Index];
  const std::size_t heldLength = held.size();
  work.Bytes.resize(heldLength + ReadSize);
  readCount = platform_.sockets.Read(Index, work.Bytes.data() + heldLength, static_cast<int>(ReadSize));
  if (failing_.UBound() < Index) failing_.Resize(Index);
  if (failing_[Index]) return Flow::Leave;
  if (readCount == -1 && !timerFired) {
    TellFailure(Index, "Error receiving data from " + sessions_.SessionMud[Index] + " " + sessions_.SessionName[Index]);
    return Flow::Leave;
  }
  if (readCount != -1) sessions_.TextArrived[Index] = 1;
  held.copy(work.Bytes.data(), heldLength);
  held.clear();
  work.Bytes.resize(heldLength + static_cast<std::size_t>(readCount == -1 ? 0 : readCount));

  Negotiation negotiation(*this, Index);
  if (DecodeTelnet(work.Bytes, work.Block, negotiation)) return Flow::Goes;
  const std::string error = std::to_string(platform_.sockets.LastError(Index));
  if (!TellFailure(Index, "An error occurred during the write.  Error " + error)) return Flow::Leave;  // PUMP
  platform_.sockets.Disconnect(Index);
  if (Index == script_.CurrentSocket) script_.SystemValues[sysvar::CONNECTED] = "0";
  platform_.face.NoteSession(Index, "closed");
  return Flow::Leave;
}

// While the player reads the message, more of the same would open message upon message. False when another connection
// has begun in the slot meanwhile, as where a script connects again by itself.
bool Receive::TellFailure(int16 Index, const std::string& message) {
  failing_[Index] = 1;
  Try(Index, [&] { upcalls_.errors.ShowError(message); });  // PUMP
  return std::exchange(failing_[Index], char{0}) != 0;
}

void Receive::NewConnection(int16 Index) {
  if (Index <= failing_.UBound()) failing_[Index] = 0;
}

// Keeps what follows the last line break, along with that break, for the next read or the timer.
void Receive::HoldTail(int16 Index, Work& work) {
  const std::size_t lastBreak = work.Block.LastBreak;
  sessions_.PartialLine[Index].assign(work.Block.Text, lastBreak - 1, std::string::npos);
  work.Block.Text.resize(lastBreak);
  StartReadTimer(Index);
}

void Receive::StartReadTimer(int16 Index) {
  if (ReadTimer.UBound() < Index) ReadTimer.Resize(Index);
  if (!ReadTimer[Index]) {
    ReadTimer[Index] = platform_.timers.Create([this, Index] { ReadTimer_Timer(Index); });
    ReadTimer[Index]->SetInterval(HoldMilliseconds);
    if (Index != 0) sessions_.ReadTimerLoaded[Index] = 1;
  }
  ReadTimer[Index]->SetEnabled(true);
}

void Receive::HandleBlock(int16 Index, Work& work) {
  const int32 caret = sessions_.OutputWindow(Index).SelStart();
  std::string& text = work.Block.Text;
  if (work.Block.DoubleFeeds) text = Replace(std::move(text), "\n\n", "\r\n\r\n");
  int32 pointer = 0;
  do {  // the last line comes along with pointer -1, and counts: a prompt is such a line
    const std::string_view line = ReadNextLine(text, pointer);
    HandleLine(Index, line, work);
  } while (pointer > 0);
  FinishBlock(Index, caret, work);
}

void Receive::HandleLine(int16 Index, std::string_view line, Work& work) {
  if (options_.CompressOutput && IsBlank(line)) {
    Try(Index, [&] { SpeakBatch(work); });
    return;
  }
  if (SoundLines::IsSoundLine(line)) {
    Try(Index, [&] { sounds_.msp(line); });  // PUMP
    return;
  }
  work.Faults.clear();
  Try(Index, [&] { maker_.Make(line, work.Line, work.Faults); });
  for (const std::string& fault : work.Faults) Report(Index, fault);
  if (sessions_.LogOpen[Index] && options_.OutputLog) Try(Index, [&] { Log(Index, work); });
  if (sessions_.TriggerEnabled[Index] && triggers_.Any() && RunTriggers(Index, work) == LineFate::IsFinished) return;
  Try(Index, [&] { Display(Index, work); });
  Try(Index, [&] { Speak(Index, work); });
}

// Before the triggers: the log holds what the game sent, also where a trigger gags or rewrites it.
void Receive::Log(int16 Index, Work& work) {
  work.Logged = true;
  logs_.WriteLog(Index, work.Line.PlainLine);
}

LineFate Receive::RunTriggers(int16 Index, Work& work) {
  LineFate fate = LineFate::GoesOn;
  Try(Index, [&] { fate = triggers_.Fire(Index, work.Line); });  // PUMP
  return fate;
}

void Receive::Display(int16 Index, Work& work) {
  if (sessions_.GagLines[Index] >= 0) --sessions_.GagLines[Index];
  if ((sessions_.GagFlags[Index] & gag::AnyDisplay) != 0) {
    if (sessions_.GagLines[Index] < 1)
      sessions_.GagFlags[Index] = static_cast<int16>(sessions_.GagFlags[Index] & ~gag::LineDisplay);
    return;
  }
  const LineVersions& line = work.Line;
  work.Shown = options_.ColourTextTags || options_.ColourDisplay ? line.TaggedLine : line.PlainLine;
  if (!line.PlainLine.empty() || !options_.CompressOutput) work.Shown += "\r\n";
  if (options_.ColourDisplay && sessions_.OutputWindow(Index).SelLength() == 0) {
    output_.DisplayColours(Index, work.Shown);
  } else {
    output_.Queue(Index, work.Shown);
  }
}

void Receive::SpeakBatch(Work& work) {
  if (work.BatchText.empty()) return;
  upcalls_.speaker.SpeakOut(work.BatchText, Channel::Incoming, 0);
  work.BatchText.clear();
}

void Receive::Speak(int16 Index, Work& work) {
  const LineVersions& line = work.Line;
  if ((sessions_.GagFlags[Index] & gag::AnySpeech) == 0) {
    if (!IsBlank(line.PlainLine)) {
      int16& place = sessions_.HistoryPos[Index];
      place = place >= 9 ? int16{0} : static_cast<int16>(place + 1);
      sessions_.HistoryLines[Index][static_cast<std::size_t>(place)] = line.PlainLine;
    }
    if (Index == script_.CurrentSocket && options_.BatchSpeech) {
      work.BatchText += " ";
      work.BatchText += line.SpokenLine;
      if (line.SpokenLine.size() < WrappedLine) SpeakBatch(work);
    } else if (Index == script_.CurrentSocket) {
      upcalls_.speaker.SpeakOut(line.SpokenLine, Channel::Incoming, 0);
      work.BatchText.clear();
    }
  } else if (sessions_.GagLines[Index] < 1) {
    sessions_.GagFlags[Index] = static_cast<int16>(sessions_.GagFlags[Index] & ~gag::LineSpeech);
  }
  if (sessions_.GagFlags[Index] != 0 && sessions_.GagNotice[Index] > 0) NoticeGag(Index);
}

void Receive::NoticeGag(int16 Index) {
  const auto now = static_cast<float>(platform_.clock.SecondsSinceMidnight());
  float passed = now - sessions_.GagNotice[Index];
  if (passed < 0) passed += SecondsOfDay;
  if (passed <= NoticeSeconds) return;
  sessions_.GagNotice[Index] = now;
  upcalls_.speaker.Answer("Gagging is in effect.", Channel::Incoming);
}

void Receive::FinishBlock(int16 Index, int32 caret, Work& work) {
  Try(Index, [&] { SpeakBatch(work); });
  Try(Index, [&] {
    if (!sessions_.OutputBuffer[Index].empty() || !options_.ColourDisplay) {
      output_.DisplayOutputBuffer(Index);
      return;
    }
    TextModel& viewport = *sessions_.EditViewPortR[Index];
    if (viewport.SelLength() != 0) return;
    viewport.SetSelStart(caret);
    output_.CheckViewPortSize(Index);
  });
  if (work.Logged) Try(Index, [&] { logs_.Flush(Index); });
}

}  // namespace corvid
