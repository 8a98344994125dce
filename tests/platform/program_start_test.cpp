// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/program_start.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvid {
namespace {

TEST(ProgramCommandTest, TheDefaultEditorIsThePlayers) {
  using Words = std::vector<std::string>;
  std::string visual;
  std::string editor;
  const auto environment = [&](const std::string& name) { return name == "VISUAL" ? visual : editor; };
  const auto all = [](const std::string&) { return true; };
  const auto none = [](const std::string&) { return false; };
  EXPECT_EQ(ProgramCommand("Notepad.exe ", "a.set", Terminal::Own, environment, all), (Words{"xdg-open", "a.set"}));
  editor = "nano -w";
  EXPECT_EQ(ProgramCommand("Notepad.exe ", "a.set", Terminal::Own, environment, all),
            (Words{"x-terminal-emulator", "-e", "nano", "-w", "a.set"}));
  EXPECT_EQ(ProgramCommand("Notepad.exe ", "a.set", Terminal::None, environment, all), Words{});
  visual = "gedit";
  EXPECT_EQ(ProgramCommand("notepad.exe", "a.set", Terminal::Own, environment, all), (Words{"gedit", "a.set"}));
  EXPECT_EQ(ProgramCommand("\"my editor\" -x", "a b", Terminal::Own, environment, all),
            (Words{"my editor", "-x", "a b"}));
  EXPECT_EQ(ProgramCommand("kate", "a", Terminal::Own, environment, none), Words{});
}

}  // namespace
}  // namespace corvid
