// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/descriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "core/fault.h"

namespace corvid {

void FailFor(int error, const std::string& path) {
  FaultKind kind = FaultKind::FileIo;
  switch (error) {
    case ENOENT:
      kind = FaultKind::FileNotFound;
      break;
    case ENOTDIR:
      kind = FaultKind::PathNotFound;
      break;
    case EACCES:
    case EPERM:
    case EROFS:
      kind = FaultKind::Permission;
      break;
    case ENOSPC:
    case EDQUOT:
      kind = FaultKind::DiskFull;
      break;
    default:
      break;
  }
  throw Fault(kind, path + ": " + std::generic_category().message(error));
}

Descriptor::Descriptor(const std::string& path, int flags, mode_t mode) : path_(path) {
  do {
    number_ = open(path.c_str(), flags | O_CLOEXEC, mode);
  } while (number_ < 0 && errno == EINTR);
  if (number_ < 0) FailFor(errno, path);
}

Descriptor::~Descriptor() {
  if (number_ >= 0) close(number_);
}

void Descriptor::Write(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = write(number_, bytes.data(), bytes.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) FailFor(errno, path_);
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
}

void Descriptor::WriteAt(off_t place, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = pwrite(number_, bytes.data(), bytes.size(), place);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) FailFor(errno, path_);
    bytes.remove_prefix(static_cast<std::size_t>(count));
    place += count;
  }
}

std::string Descriptor::Read(std::size_t most) {
  std::string bytes(most, '\0');
  ssize_t count = 0;
  do {
    count = read(number_, bytes.data(), bytes.size());
  } while (count < 0 && errno == EINTR);
  if (count < 0) FailFor(errno, path_);
  bytes.resize(static_cast<std::size_t>(count));
  return bytes;
}

std::string Descriptor::ReadAt(off_t place, std::size_t count) const {
  std::string bytes(count, '\0');
  std::size_t have = 0;
  while (have < count) {
    const ssize_t got = pread(number_, bytes.data() + have, count - have, place + static_cast<off_t>(have));
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) FailFor(errno, path_);
    if (got == 0) break;
    have += static_cast<std::size_t>(got);
  }
  bytes.resize(have);
  return bytes;
}

off_t Descriptor::Size() const {
  struct stat facts {};
  if (fstat(number_, &facts) != 0) FailFor(errno, path_);
  return facts.st_size;
}

bool Descriptor::IsOrdinaryFile() const {
  struct stat facts {};
  return fstat(number_, &facts) == 0 && S_ISREG(facts.st_mode);
}

void Descriptor::CutBack(off_t size, off_t written) {
  struct stat facts {};
  if (fstat(number_, &facts) != 0 || !S_ISREG(facts.st_mode)) return;
  if (facts.st_size <= size || facts.st_size > size + written) return;
  // A disk that refuses even this keeps the piece; the refusal of the write is what the caller is told.
  if (ftruncate(number_, size) != 0) return;
}

void Descriptor::Sync() {
  if (fsync(number_) != 0 && errno != EINVAL) FailFor(errno, path_);
}

void Descriptor::Close() {
  const int number = number_;
  number_ = -1;
  if (close(number) != 0 && errno != EINTR) FailFor(errno, path_);
}

}  // namespace corvid
