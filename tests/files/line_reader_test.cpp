// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/line_reader.h"

#include <gtest/gtest.h>

#include <vector>

#include "core/fault.h"

namespace corvid {
namespace {

// Gives its bytes out in pieces of the given size; more can be added behind them.
class Pieces : public ReadFile {
 public:
  Pieces(std::string& bytes, std::size_t size) : bytes_(bytes), size_(size) {}
  std::string Read(std::size_t most) override {
    std::string piece = bytes_.substr(std::min(place_, bytes_.size()), std::min(most, size_));
    place_ += piece.size();
    return piece;
  }

 private:
  std::string& bytes_;
  std::size_t size_;
  std::size_t place_ = 0;
};

using Lines = std::vector<std::string>;

Lines Read(std::string bytes, std::size_t size) {
  LineReader reader(std::make_unique<Pieces>(bytes, size));
  Lines lines;
  while (!reader.AtEnd()) lines.push_back(reader.Next());
  EXPECT_EQ(reader.Next(), "");
  return lines;
}

TEST(LineReader, EveryLineEndWhereverThePiecesBreak) {
  struct Row {
    const char* Bytes;
    Lines Wanted;
  };
  for (const Row& row : {
           Row{"", {}},
           Row{"one", {"one"}},
           Row{"one\r\n", {"one"}},
           Row{"one\r\ntwo", {"one", "two"}},
           Row{"one\ntwo\n", {"one", "two"}},
           Row{"one\rtwo\r", {"one", "two"}},
           Row{"\r\n\r\n", {"", ""}},
           Row{"\n\r", {"", ""}},
           Row{"a\r\r\nb\n\nc", {"a", "", "b", "", "c"}},
           Row{" a \xe9 \r\n", {" a \xe9 "}},
       })
    for (const std::size_t size : {1U, 2U, 3U, 100U}) EXPECT_EQ(Read(row.Bytes, size), row.Wanted) << row.Bytes << size;
}

TEST(LineReader, AFileThatGrowsGoesOn) {
  std::string bytes = "one\r";
  LineReader reader(std::make_unique<Pieces>(bytes, 100));
  EXPECT_EQ(reader.Next(), "one");
  EXPECT_TRUE(reader.AtEnd());
  bytes += "\n";
  EXPECT_TRUE(reader.AtEnd());
  bytes += "two\r\n";
  EXPECT_FALSE(reader.AtEnd());
  EXPECT_EQ(reader.Next(), "two");
  EXPECT_TRUE(reader.AtEnd());
}

// A file that never ends, such as one that is written faster than it is read.
class Endless : public ReadFile {
 public:
  std::string Read(std::size_t most) override { return std::string(most, 'x'); }
};

TEST(LineReader, ALineWithoutEndIsAFault) {
  LineReader reader(std::make_unique<Endless>());
  EXPECT_FALSE(reader.AtEnd());
  EXPECT_THROW(reader.Next(), Fault);
}

}  // namespace
}  // namespace corvid
