// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/line_reader.h"

#include <utility>

#include "core/fault.h"

namespace corvid {

namespace {

constexpr std::size_t Piece = std::size_t{64} * 1024;

}  // namespace

LineReader::LineReader(std::unique_ptr<ReadFile> file) : file_(std::move(file)) {}

bool LineReader::Fill() {
  const std::string more = file_->Read(Piece);
  if (more.empty()) return false;
  ahead_.erase(0, start_);
  start_ = 0;
  ahead_ += more;
  return true;
}

void LineReader::SkipLineFeed() {
  if (!afterCarriageReturn_) return;
  if (start_ == ahead_.size() && !Fill()) return;
  if (ahead_[start_] == '\n') ++start_;
  afterCarriageReturn_ = false;
}

bool LineReader::AtEnd() {
  SkipLineFeed();
  return start_ == ahead_.size() && !Fill();
}

std::string LineReader::Next() {
  SkipLineFeed();
  std::size_t searched = 0;
  for (;;) {
    const std::size_t end = ahead_.find_first_of("\r\n", start_ + searched);
    if (end != std::string::npos) {
      std::string line = ahead_.substr(start_, end - start_);
      afterCarriageReturn_ = ahead_[end] == '\r';
      start_ = end + 1;
      return line;
    }
    searched = ahead_.size() - start_;
    if (searched > LongestLine) throw Fault(FaultKind::FileIo, "A line of the file is too long");
    if (Fill()) continue;
    std::string line = ahead_.substr(start_);
    start_ = ahead_.size();
    return line;
  }
}

}  // namespace corvid
