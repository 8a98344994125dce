// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/speechd/speechd_reader.h"

#include <utility>

#include "core/spoken_text.h"
#include "platform/speechd/orca_service.h"
#include "platform/speechd/speechd_link.h"

namespace corvid {

namespace {

constexpr std::size_t PieceBytes = 2000;  // a longer text is handed over in pieces, so that a stop comes in between

bool IsBlank(const std::string& text) {
  return text.find_first_not_of(' ') == std::string::npos;
}

}  // namespace

// Orca first: it speaks as its player has set it up, and shows the text in braille.
struct ReaderRoutes {
  OrcaService orca;
  SpeechdLink speechd;

  std::string Connect(std::size_t channel) { return orca.Present() ? std::string() : speechd.Connect(channel); }
  std::string Say(std::size_t channel, const std::string& utf8) {
    return orca.Say(channel, utf8) ? std::string() : speechd.Say(channel, utf8);
  }
  std::string Stop(std::size_t channel) {
    orca.Stop(channel);
    return speechd.Stop(channel);
  }
};

SpeechdReader::SpeechdReader(Notice notice, SpeechdSettings settings)
    : notice_(std::move(notice)), settings_(settings), routes_(std::make_shared<ReaderRoutes>()) {}

SpeechdReader::~SpeechdReader() {
  if (!thread_.joinable()) return;
  {
    const std::lock_guard lock(mutex_);
    ending_ = true;
  }
  changed_.notify_all();
  thread_.join();
}

bool SpeechdReader::Start() {
  std::unique_lock lock(mutex_);
  connecting_ = true;
  waitedFor_ = true;
  if (!thread_.joinable()) thread_ = std::thread([this] { Work(); });
  changed_.notify_all();
  const bool answered = changed_.wait_for(lock, settings_.startLimit, [this] { return !connecting_; });
  waitedFor_ = false;
  return !answered || !dead_;
}

std::string SpeechdReader::Problem() const {
  const std::lock_guard lock(mutex_);
  return problem_;
}

void SpeechdReader::Say(int16 channel, const std::string& text, bool interrupt) {
  if (channel < 1 || static_cast<std::size_t>(channel) > ReaderChannels || !thread_.joinable()) return;
  const auto slot = static_cast<std::size_t>(channel);
  {
    const std::lock_guard lock(mutex_);
    if (interrupt) {
      std::erase_if(jobs_, [slot](const Job& job) { return job.channel == slot; });
      jobs_.push_front({.channel = slot, .stop = true});
    }
    if (!text.empty() && jobs_.size() < LongestQueue) jobs_.push_back({.channel = slot, .text = text});
  }
  changed_.notify_all();
}

void SpeechdReader::Work() {
  while (TakeTurn()) {
  }
  // The connections end on the thread that made them, and a service that does not let go is left behind.
  worker_.Run([routes = std::exchange(routes_, nullptr)]() mutable { routes = nullptr; }, settings_.callLimit);
}

// Waits for something to do and does it. False when the reader ends.
bool SpeechdReader::TakeTurn() {
  Job step;
  bool starting = false;
  {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return ending_ || connecting_ || !jobs_.empty(); });
    if (ending_) return false;
    starting = connecting_;
    if (starting) {
      step = {.channel = 1};
    } else if (!TakeStep(step)) {
      return true;
    }
  }
  if (!starting && !MayTry(step)) return true;
  const std::string problem = Perform(step);
  // A stop does nothing on a channel without a connection, so that it works says nothing about the service.
  if (!step.stop || !problem.empty()) NoteResult(problem);
  return true;
}

// Moves the next stop or piece of text out of the queue. False when it has nothing to be said.
bool SpeechdReader::TakeStep(Job& step) {
  Job& job = jobs_.front();
  step.channel = job.channel;
  step.stop = job.stop;
  if (!job.stop) {
    const std::size_t end = SpokenPieceEnd(job.text, job.position, PieceBytes);
    step.text = SpokenText(std::string_view(job.text).substr(job.position, end - job.position));
    job.position = end;
  }
  if (job.stop || job.position == job.text.size()) jobs_.pop_front();
  return step.stop || !IsBlank(step.text);
}

// False while a dead service is left alone.
bool SpeechdReader::MayTry(const Job& step) {
  const std::lock_guard lock(mutex_);
  if (!dead_) return true;
  if (step.stop) return false;
  if (std::chrono::steady_clock::now() >= nextTry_ && worker_.Stuck() < MostStuck) return true;
  jobs_.clear();
  return false;
}

// Does the step on the worker. An empty step connects. Gives what went wrong.
std::string SpeechdReader::Perform(const Job& step) {
  const auto problem = std::make_shared<std::string>();
  const bool returned = worker_.Run(
      [routes = routes_, step, problem] {
        if (step.stop) {
          *problem = routes->Stop(step.channel);
        } else if (step.text.empty()) {
          *problem = routes->Connect(step.channel);
        } else {
          *problem = routes->Say(step.channel, step.text);
        }
      },
      settings_.callLimit);
  if (returned) return *problem;
  routes_->speechd.Break();
  routes_ = std::make_shared<ReaderRoutes>();
  return "The speech service (speech-dispatcher) does not answer.";
}

void SpeechdReader::NoteResult(const std::string& problem) {
  bool reported = false;  // by Start
  {
    const std::lock_guard lock(mutex_);
    reported = connecting_ && waitedFor_;
    problem_ = problem;
    dead_ = !problem.empty();
    if (dead_) {
      jobs_.clear();
      nextTry_ = std::chrono::steady_clock::now() + settings_.retryInterval;
    }
    connecting_ = false;
  }
  changed_.notify_all();
  const bool news = !problem.empty() && !told_;
  told_ = !problem.empty();
  if (news && !reported && notice_) notice_(problem);
}

}  // namespace corvid
