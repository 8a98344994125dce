// SPDX-License-Identifier: GPL-3.0-or-later
// The player's screen reader: through its own service where it has one, else through the speech service that it speaks
// with (speech-dispatcher).
#pragma once

#include <array>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include "platform/speech.h"
#include "platform/speechd/timed_worker.h"

namespace corvid {

struct ReaderRoutes;

struct SpeechdSettings {
  std::chrono::milliseconds callLimit{2000};  // a service that takes longer counts as dead
  std::chrono::milliseconds startLimit{300};  // how long Start waits for an answer; the service itself starts in 200
  std::chrono::milliseconds retryInterval{5000};  // a dead service is tried again at the first text after this
};

// Texts are handed over by threads of its own, so a service that hangs stops nobody. While the service is dead, texts
// are dropped.
class SpeechdReader : public ScreenReader {
 public:
  // Told once each time the service dies, with a text for the player. Called on the reader's thread: it must hand the
  // text over to its own thread and return.
  using Notice = std::function<void(std::string)>;

  explicit SpeechdReader(Notice notice, SpeechdSettings settings = {});
  ~SpeechdReader() override;
  SpeechdReader(const SpeechdReader&) = delete;
  SpeechdReader& operator=(const SpeechdReader&) = delete;

  // Connects, which starts the service if need be. The one call that waits, startLimit at most: a service that has not
  // answered by then counts as there, texts wait for it, and the notice tells if it stays silent. After a failure Say
  // goes on trying. The notice is not called for a failure that Start reports.
  bool Start() override;
  std::string Problem() const override;
  void Say(int16 channel, const std::string& text, bool interrupt) override;

 private:
  struct Job {
    std::size_t channel = 0;
    bool stop = false;
    std::string text{};
    std::size_t position = 0;  // what lies before it has been handed over
  };
  // More than anybody will hear; what comes on top is dropped.
  static constexpr std::size_t LongestQueue = 10'000;
  static constexpr int MostStuck = 3;  // threads in calls that do not return

  void Work();
  bool TakeTurn();
  bool TakeStep(Job& step);
  bool MayTry(const Job& step);
  std::string Perform(const Job& step);
  void NoteResult(const std::string& problem);

  const Notice notice_;
  const SpeechdSettings settings_;

  // The reader's thread's alone.
  TimedWorker worker_;
  std::shared_ptr<ReaderRoutes> routes_;
  bool told_ = false;
  std::chrono::steady_clock::time_point nextTry_;

  mutable std::mutex mutex_;  // guards what follows
  std::condition_variable changed_;
  std::deque<Job> jobs_;
  std::string problem_;
  bool connecting_ = false;  // the first connection is being made
  bool waitedFor_ = false;   // Start waits for it
  bool dead_ = false;
  bool ending_ = false;
  std::thread thread_;  // the event thread's
};

}  // namespace corvid
