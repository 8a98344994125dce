// SPDX-License-Identifier: GPL-3.0-or-later
// What is written to a terminal: plain text, and no wait for one that is stopped.
#include "platform/qt/console_output.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <thread>

namespace corvid {
namespace {

TEST(PlainTextTest, NothingCommandsTheTerminal) {
  EXPECT_EQ(PlainText("a\r\nb\rc\n\x1b[2J\x07\x08\x7f\xc2\x9b\x01\t|"), "a\nb\nc\n[2J\t|");
  EXPECT_EQ(PlainText("\xe9 \xc3\xa9 \xe2\x82"), "\xc3\xa9 \xc3\xa9 \xc3\xa2\xe2\x80\x9a");
}

// A pipe that nobody reads is what a terminal is that was stopped.
TEST(ConsoleOutputTest, AReaderThatStopsDoesNotStopTheProgram) {
  std::array<int, 2> out{};
  ASSERT_EQ(pipe(out.data()), 0);
  const auto readAll = [&] {
    fcntl(out[0], F_SETFL, O_NONBLOCK);
    std::string text;
    std::array<char, 4096> bytes{};
    for (ssize_t count = 0; (count = read(out[0], bytes.data(), bytes.size())) > 0;)
      text.append(bytes.data(), static_cast<std::size_t>(count));
    return text;
  };
  {
    ConsoleOutput output(out[1], 0);
    EXPECT_FALSE(output.Waits());
    for (int i = 0; i < 40000; ++i) output.Line("line " + std::to_string(i) + std::string(90, '.'));
    EXPECT_TRUE(output.Flush()) << "the reader is slow, not gone";
    EXPECT_TRUE(output.Waits());
    const std::string first = readAll();
    EXPECT_TRUE(first.starts_with("line 0.")) << first.substr(0, 20);
    std::string rest;
    while (output.Waits()) {
      EXPECT_TRUE(output.Flush());
      rest += readAll();
    }
    EXPECT_LT(rest.size(), ConsoleOutput::MostWaiting + 200000);
    EXPECT_NE(rest.find("\n(Text is left out here: nothing was reading it.)\nline "), std::string::npos);
    EXPECT_TRUE(rest.ends_with("line 39999" + std::string(90, '.') + "\n"));
    output.Line("again");
    EXPECT_TRUE(output.Flush());
    EXPECT_FALSE(output.Waits());
    EXPECT_EQ(readAll(), "again\n");
    EXPECT_EQ(fcntl(out[1], F_GETFL) & O_NONBLOCK, 0) << "the shell's own descriptor stays as it was";
  }
  close(out[1]);
  close(out[0]);
}

TEST(ConsoleOutputTest, AStormOfBellsIsOneOnATerminalAndNoneElsewhere) {
  std::array<int, 2> out{};
  ASSERT_EQ(pipe(out.data()), 0);
  fcntl(out[0], F_SETFL, O_NONBLOCK);
  const auto bells = [](int reading, int writing) {
    ConsoleOutput output(writing, 0);
    for (int i = 0; i < 1000; ++i) output.Bell();
    EXPECT_TRUE(output.Flush());
    std::array<char, 4096> bytes{};
    return static_cast<std::size_t>(std::max<ssize_t>(read(reading, bytes.data(), bytes.size()), 0));
  };
  EXPECT_EQ(bells(out[0], out[1]), 0U);
  close(out[0]);
  close(out[1]);
  const int terminal = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK);
  if (terminal < 0) return;  // a machine without pseudo terminals: what goes to no terminal is shown above
  ASSERT_EQ(grantpt(terminal), 0);
  ASSERT_EQ(unlockpt(terminal), 0);
  const int shown = open(ptsname(terminal), O_RDWR | O_NOCTTY);
  ASSERT_GE(shown, 0);
  const std::size_t rung = bells(terminal, shown);
  EXPECT_GE(rung, 1U);
  EXPECT_LE(rung, 20U) << "a busy machine may be so slow that there are more than one";
  close(shown);
  close(terminal);
}

TEST(ConsoleOutputTest, AReaderThatIsThereGetsEverything) {
  std::array<int, 2> out{};
  ASSERT_EQ(pipe(out.data()), 0);
  std::string text;
  std::thread reader([&] {
    std::array<char, 4096> bytes{};
    for (ssize_t count = 0; (count = read(out[0], bytes.data(), bytes.size())) > 0;)
      text.append(bytes.data(), static_cast<std::size_t>(count));
  });
  {
    ConsoleOutput output(out[1], 60000);
    for (int i = 0; i < 40000; ++i) output.Line("line " + std::to_string(i) + std::string(90, '.'));
    EXPECT_TRUE(output.Flush());
    EXPECT_FALSE(output.Waits());
  }
  close(out[1]);
  reader.join();
  close(out[0]);
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 40000);
}

}  // namespace
}  // namespace corvid
