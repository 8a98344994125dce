// SPDX-License-Identifier: GPL-3.0-or-later
// What a test of the real platform needs around it.
#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <string>

#include "platform/qt/event_loop.h"

namespace corvid {

// Qt's loop with the arguments of a program, which it keeps by reference.
struct QtProgram {
  int argc = 1;
  char name[5] = "test";
  char* argv[2] = {name, nullptr};
  QtEventLoop loop{argc, argv};
};

// What a face reads from and writes to. Neither the input nor the output may be more than a pipe holds.
class Pipes {
 public:
  explicit Pipes(const std::string& input) {
    EXPECT_EQ(pipe(in_.data()), 0);
    EXPECT_EQ(pipe(out_.data()), 0);
    fcntl(out_[1], F_SETPIPE_SZ, 1 << 20);
    EXPECT_EQ(write(in_[1], input.data(), input.size()), static_cast<ssize_t>(input.size()));
  }
  Pipes(const Pipes&) = delete;
  Pipes& operator=(const Pipes&) = delete;
  ~Pipes() {
    EndInput();
    EndOutput();
    close(in_[0]);
    close(out_[0]);
  }
  int In() const { return in_[0]; }
  int Out() const { return out_[1]; }
  // Nothing more is typed.
  void EndInput() { End(in_[1]); }
  // All that was written, once nobody will write any more.
  std::string Written() {
    EndOutput();
    std::string text;
    std::array<char, 4096> bytes{};
    for (ssize_t count = 0; (count = read(out_[0], bytes.data(), bytes.size())) > 0;)
      text.append(bytes.data(), static_cast<std::size_t>(count));
    return text;
  }

 private:
  void EndOutput() { End(out_[1]); }
  static void End(int& descriptor) {
    if (descriptor >= 0) close(descriptor);
    descriptor = -1;
  }
  std::array<int, 2> in_{};
  std::array<int, 2> out_{};
};

}  // namespace corvid
