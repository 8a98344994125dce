// SPDX-License-Identifier: GPL-3.0-or-later
// An open file of the system, and what its refusals mean.
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace corvid {

// Throws the Fault for a system error number; its text names the file and the system's reason.
[[noreturn]] void FailFor(int error, const std::string& path);

// Closes itself. Each routine is a Fault when the system refuses.
class Descriptor {
 public:
  Descriptor(const std::string& path, int flags, mode_t mode = 0);
  Descriptor(int number, std::string path) : path_(std::move(path)), number_(number) {}  // takes an open one over
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor();

  void Write(std::string_view bytes);
  void WriteAt(off_t place, std::string_view bytes);
  std::string Read(std::size_t most);                        // empty at the end
  std::string ReadAt(off_t place, std::size_t count) const;  // fewer bytes at the end
  off_t Size() const;
  bool IsOrdinaryFile() const;
  // Takes off what a write behind the old end left, if nobody else has written there since.
  void CutBack(off_t size, off_t written);
  void Sync();
  void Close();
  int Number() const { return number_; }

 private:
  std::string path_;
  int number_ = -1;
};

}  // namespace corvid
