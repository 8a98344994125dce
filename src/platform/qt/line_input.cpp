// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/line_input.h"

#include <poll.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <QTimer>
#include <array>
#include <cerrno>
#include <deque>
#include <utility>

namespace corvid {

struct LineInput::Reader {
  Reader(int number, Handlers calls)
      : descriptor(number), handlers(std::move(calls)), notifier(number, QSocketNotifier::Read) {
    notifier.setEnabled(false);
    pause.setSingleShot(true);
    pause.setTimerType(Qt::PreciseTimer);
    askAgain.setSingleShot(true);
    askAgain.setTimerType(Qt::PreciseTimer);
    askAgain.setInterval(1);
    QObject::connect(&notifier, &QSocketNotifier::activated, &context, [this] { ReadSome(); });
    QObject::connect(&pause, &QTimer::timeout, &context, [this] { Schedule(); });
    QObject::connect(&askAgain, &QTimer::timeout, &context, [this] { Schedule(); });
  }

  void ReadSome() {
    std::array<char, 65536> bytes;
    const ssize_t count = read(descriptor, bytes.data(), bytes.size());
    if (count < 0 && (errno == EINTR || errno == EAGAIN)) return;
    if (count <= 0) {
      atEnd = true;
      notifier.setEnabled(false);
      if (!partial.empty()) lines.push_back(std::exchange(partial, {}));
    } else {
      Cut(std::string_view(bytes.data(), static_cast<std::size_t>(count)));
    }
    if (lines.size() > Many) notifier.setEnabled(false);  // whoever writes them has to wait
    Schedule();
  }

  void Cut(std::string_view bytes) {
    for (;;) {
      const std::size_t lineFeed = bytes.find('\n');
      if (!dropping) partial.append(bytes.substr(0, lineFeed));
      if (partial.size() > LongestLine) {
        partial.clear();
        partial.shrink_to_fit();
        dropping = true;
        if (handlers.tooLong) handlers.tooLong();
      }
      if (lineFeed == std::string_view::npos) return;
      bytes.remove_prefix(lineFeed + 1);
      if (std::exchange(dropping, false)) continue;
      if (!partial.empty() && partial.back() == '\r') partial.pop_back();
      lines.push_back(std::exchange(partial, {}));
    }
  }

  void Schedule() {
    if (std::exchange(scheduled, true)) return;
    QMetaObject::invokeMethod(
        &context, [this] { TakeOne(); }, Qt::QueuedConnection);
  }

  void TakeOne() {
    scheduled = false;
    if (pause.isActive()) return;
    if (lines.empty() && !atEnd) return;
    if (handlers.mayTake && !handlers.mayTake()) {
      askAgain.start();
      return;
    }
    if (lines.empty()) {
      if (!std::exchange(ended, true) && handlers.end) handlers.end();
      return;
    }
    const std::string line = std::move(lines.front());
    lines.pop_front();
    ++taken;
    if (!atEnd && lines.size() <= Many) notifier.setEnabled(true);
    Schedule();  // before the handler: one that opens a dialog waits for the lines that answer it
    handlers.line(line);
  }

  bool BytesWait() const {
    pollfd one{descriptor, POLLIN, 0};
    return !atEnd && notifier.isEnabled() && poll(&one, 1, 0) > 0;
  }

  static constexpr std::size_t Many = 10000;
  int descriptor;
  Handlers handlers;
  std::deque<std::string> lines;
  std::string partial;
  bool dropping = false;
  bool atEnd = false;
  bool ended = false;
  bool scheduled = false;
  std::int64_t taken = 0;
  QSocketNotifier notifier;
  QTimer pause;
  QTimer askAgain;
  QObject context;  // declared last: its queued calls die before the rest
};

LineInput::LineInput(int descriptor, Handlers handlers)
    : reader_(std::make_unique<Reader>(descriptor, std::move(handlers))) {}

LineInput::~LineInput() = default;

void LineInput::Start() {
  reader_->notifier.setEnabled(true);
}

void LineInput::Pause(int milliseconds) {
  reader_->pause.start(milliseconds);
}

bool LineInput::AllTaken() const {
  return reader_->lines.empty() && !reader_->pause.isActive() && !reader_->BytesWait() &&
         (!reader_->atEnd || reader_->ended);
}

std::int64_t LineInput::Taken() const {
  return reader_->taken;
}

}  // namespace corvid
