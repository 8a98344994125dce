// SPDX-License-Identifier: GPL-3.0-or-later
// A text file line by line, however long it is.
#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "platform/files.h"

namespace corvid {

class LineReader {
 public:
  // A longer line is a Fault of kind FileIo: a file without line ends must not fill the memory.
  static constexpr std::size_t LongestLine = std::size_t{64} * 1024 * 1024;

  explicit LineReader(std::unique_ptr<ReadFile> file);

  // Nothing is left to read. Asks the disk, so a file that has grown since goes on.
  bool AtEnd();
  // The next line without its end, which is CR LF, LF or CR; the last line may have none. Empty at the end of the file.
  std::string Next();

 private:
  bool Fill();
  void SkipLineFeed();

  std::unique_ptr<ReadFile> file_;
  std::string ahead_;  // read and not given out, from start_ on
  std::size_t start_ = 0;
  bool afterCarriageReturn_ = false;  // a line feed that follows belongs to the line that was given out
};

}  // namespace corvid
