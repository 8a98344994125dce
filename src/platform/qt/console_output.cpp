// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/console_output.h"

#include <unistd.h>

#include <cerrno>
#include <chrono>

#include "core/utf8.h"

namespace corvid {

namespace {

constexpr long long BellGapMilliseconds = 25;
constexpr std::size_t Much = std::size_t{64} * 1024;  // bytes that may gather before they are written out within a turn

long long Milliseconds() {
  using std::chrono::duration_cast;
  using std::chrono::milliseconds;
  return duration_cast<milliseconds>(std::chrono::steady_clock::now().time_since_epoch()).count();
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

ConsoleOutput::ConsoleOutput(int descriptor) : descriptor_(descriptor), terminal_(isatty(descriptor) == 1) {}

void ConsoleOutput::Stream(std::string_view text) {
  const std::string plain = PlainText(text);
  if (plain.empty()) return;
  waiting_ += plain;
  atLineStart_ = plain.back() == '\n';
  if (waiting_.size() > Much) Flush();
}

void ConsoleOutput::Line(std::string_view text) {
  if (!atLineStart_) waiting_ += '\n';
  waiting_ += PlainText(text);
  if (waiting_.empty() || waiting_.back() != '\n') waiting_ += '\n';
  atLineStart_ = true;
}

void ConsoleOutput::Bell() {
  const long long now = Milliseconds();
  if (!terminal_ || now - lastBell_ < BellGapMilliseconds) return;
  lastBell_ = now;
  waiting_ += '\a';
}

bool ConsoleOutput::Flush() {
  std::string_view rest = waiting_;
  while (!rest.empty() && !broken_) {
    const ssize_t count = write(descriptor_, rest.data(), rest.size());
    if (count >= 0) {
      rest.remove_prefix(static_cast<std::size_t>(count));
    } else if (errno != EINTR && errno != EAGAIN) {
      broken_ = true;
    }
  }
  waiting_.clear();
  return !broken_;
}

}  // namespace corvid
