// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/end_signals.h"

#include <fcntl.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <array>
#include <csignal>
#include <utility>

namespace corvid {

namespace {

constexpr std::array<int, 3> Requests{SIGTERM, SIGINT, SIGHUP};

// A signal handler can only write to a pipe; the event loop reads its other end. It has no way to get at an object,
// which is why these two numbers stand here.
std::array<int, 2> signalPipe{-1, -1};

extern "C" void OnEndSignal(int) {
  const char byte = 1;
  const ssize_t ignored = write(signalPipe[1], &byte, 1);
  static_cast<void>(ignored);
}

}  // namespace

struct EndSignals::Parts {
  explicit Parts(std::function<void()> calls) : asked(std::move(calls)) {}

  void Catch() {
    struct sigaction action {};
    action.sa_handler = OnEndSignal;
    // The second of its kind finds the system's own answer: a program that hangs can still be ended.
    action.sa_flags = SA_RESTART | static_cast<int>(SA_RESETHAND);
    for (std::size_t i = 0; i < Requests.size(); ++i) {
      sigaction(Requests[i], nullptr, &before[i]);
      if (before[i].sa_handler != SIG_IGN) sigaction(Requests[i], &action, nullptr);
    }
  }

  std::function<void()> asked;
  std::array<struct sigaction, Requests.size()> before{};
  std::unique_ptr<QSocketNotifier> notifier;
  QObject context;  // declared last: its queued calls die before the rest
};

EndSignals::EndSignals(std::function<void()> asked) : parts_(std::make_unique<Parts>(std::move(asked))) {
  if (pipe2(signalPipe.data(), O_CLOEXEC | O_NONBLOCK) != 0) return;
  Parts& parts = *parts_;
  parts.notifier = std::make_unique<QSocketNotifier>(signalPipe[0], QSocketNotifier::Read);
  QObject::connect(parts.notifier.get(), &QSocketNotifier::activated, &parts.context, [&parts] {
    parts.notifier->setEnabled(false);
    // Not from inside the notifier's own event: what is asked for may wait.
    QMetaObject::invokeMethod(
        &parts.context, [&parts] { parts.asked(); }, Qt::QueuedConnection);
  });
  parts.Catch();
}

EndSignals::~EndSignals() {
  if (!parts_->notifier) return;
  for (std::size_t i = 0; i < Requests.size(); ++i) sigaction(Requests[i], &parts_->before[i], nullptr);
  parts_->notifier.reset();
  for (int& end : signalPipe) close(std::exchange(end, -1));
}

}  // namespace corvid
