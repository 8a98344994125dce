// SPDX-License-Identifier: GPL-3.0-or-later
// What the tests of the commands for eye and ear share.
#pragma once

#include "commands/fixture.h"

namespace corvid::test {

class OutputCommandTest : public CommandTest {
 protected:
  Lines Said(const std::string& line) {
    EXPECT_EQ(Run(line), "");
    return Effects();
  }
  // A script file that is loaded as a buffer, from 4 up.
  void Loaded(int16 number, const std::string& path, const std::string& text = "") {
    scriptFiles.ResizeBuffers(number);
    buffers.BufferFile[number] = path;
    buffers.BufferFlags[number] = buffer::Script;
    buffers.BufferText[number] = buffers.BufferLoaded[number] = text;
  }
  TextModel& Entry() { return buffers.EntryBox; }
  TextModel& Viewport() { return sessions.OutputWindow(0); }
  std::string FoundLine() { return script.SystemValues[sysvar::FOUNDLINE]; }
};

}  // namespace corvid::test
