// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/console_output.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>

#include "core/utf8.h"

namespace corvid {

namespace {

constexpr std::size_t Much = std::size_t{64} * 1024;  // bytes that may gather before they are written out within a turn

long long Milliseconds() {
  using std::chrono::duration_cast;
  using std::chrono::milliseconds;
  return duration_cast<milliseconds>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

// The descriptor itself is shared with the shell and other programs, so it must not be told to write without waiting; a
// terminal or a pipe can be opened once more for that.
int OpenAgain(int descriptor) {
  struct stat kind {};
  if (fstat(descriptor, &kind) != 0 || (!S_ISFIFO(kind.st_mode) && isatty(descriptor) != 1)) return -1;
  const std::string path = "/proc/self/fd/" + std::to_string(descriptor);
  return open(path.c_str(), O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
}

}  // namespace

std::string PlainText(std::string_view text) {
  const std::string utf8 = ToUtf8(text);
  std::string result;
  result.reserve(utf8.size());
  for (std::size_t i = 0; i < utf8.size(); ++i) {
    const auto code = static_cast<unsigned char>(utf8[i]);
    if (utf8[i] == '\r') {
      if (i + 1 < utf8.size() && utf8[i + 1] == '\n') continue;
      result += '\n';
    } else if (code == 0xC2 && static_cast<unsigned char>(utf8[i + 1]) < 0xA0) {
      ++i;  // control codes above 127: terminals obey them too
    } else if (code >= 0x20 ? code != 0x7F : utf8[i] == '\n' || utf8[i] == '\t') {
      result += utf8[i];
    }
  }
  return result;
}

ConsoleOutput::ConsoleOutput(int descriptor, int patience)
    : descriptor_(descriptor), own_(OpenAgain(descriptor)), patience_(patience), terminal_(isatty(descriptor) == 1) {}

ConsoleOutput::~ConsoleOutput() {
  if (own_ >= 0) close(own_);
}

void ConsoleOutput::Stream(std::string_view text) {
  const std::string plain = PlainText(text);
  if (plain.empty()) return;
  waiting_ += plain;
  ++written_;
  atLineStart_ = plain.back() == '\n';
  if (waiting_.size() > Much) Flush();
}

void ConsoleOutput::Line(std::string_view text) {
  ++written_;
  if (!atLineStart_) waiting_ += '\n';
  waiting_ += PlainText(text);
  if (waiting_.empty() || waiting_.back() != '\n') waiting_ += '\n';
  atLineStart_ = true;
}

void ConsoleOutput::Bell() {
  if (terminal_ && bells_.Passes(Milliseconds())) waiting_ += '\a';
}

bool ConsoleOutput::Flush() {
  std::string_view rest = waiting_;
  while (!rest.empty() && !broken_) {
    const ssize_t count = write(Descriptor(), rest.data(), rest.size());
    if (count >= 0) {
      rest.remove_prefix(static_cast<std::size_t>(count));
      stalled_ = false;
    } else if (errno == EAGAIN) {
      stalled_ = stalled_ || !TakesMore();
      if (stalled_) break;
    } else if (errno != EINTR) {
      broken_ = true;
    }
  }
  waiting_.erase(0, broken_ ? waiting_.size() : waiting_.size() - rest.size());
  if (waiting_.size() > MostWaiting) DropOldest();
  return !broken_;
}

bool ConsoleOutput::TakesMore() const {
  pollfd ready{Descriptor(), POLLOUT, 0};
  return poll(&ready, 1, patience_) > 0;
}

void ConsoleOutput::DropOldest() {
  std::size_t from = waiting_.size() - MostWaiting / 2;
  from = std::min(waiting_.find('\n', from), waiting_.size() - 1) + 1;
  waiting_.replace(0, from, "\n(Text is left out here: nothing was reading it.)\n");
}

}  // namespace corvid
