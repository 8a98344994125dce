// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/desktop/start_program.h"

#include <gtest/gtest.h>

#include <QByteArray>

#include "core/fault.h"

namespace corvid {
namespace {

using Words = std::vector<std::string>;

class StartProgram : public testing::Test {
 protected:
  StartProgram() {
    qunsetenv("VISUAL");
    qunsetenv("EDITOR");
  }
};

TEST_F(StartProgram, TakesQuotedWordsAndAFileWithBlanks) {
  EXPECT_EQ((Words{"ed it", "-x", "a b", "/home/me/my file.set"}),
            ProgramCommand("\"ed it\" -x \"a b\" ", "/home/me/my file.set"));
}

TEST_F(StartProgram, NoShellReadsIt) {
  EXPECT_EQ((Words{"edit;rm", "$HOME", "`x`"}), ProgramCommand("edit;rm $HOME `x`", ""));
}

TEST_F(StartProgram, TheDefaultIsTheSystemsEditor) {
  EXPECT_EQ((Words{"xdg-open", "f"}), ProgramCommand("Notepad.exe ", "f"));
  qputenv("EDITOR", "gedit -w");
  EXPECT_EQ((Words{"gedit", "-w", "f"}), ProgramCommand("Notepad.exe ", "f"));
  qputenv("VISUAL", "kate");
  EXPECT_EQ((Words{"kate", "f"}), ProgramCommand("notepad.EXE", "f"));
}

TEST_F(StartProgram, AMissingProgramIsAFault) {
  EXPECT_THROW(StartDetached("/no/such/program", "f"), Fault);
  EXPECT_THROW(StartDetached("  ", ""), Fault);
}

}  // namespace
}  // namespace corvid
