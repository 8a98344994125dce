// SPDX-License-Identifier: GPL-3.0-or-later
// A connected session whose server is the test.
#pragma once

#include <string>

#include "fixture.h"

namespace corvid {

class ReceiveTest : public SessionTest {
 protected:
  ReceiveTest() {
    Slot = Online("bob");
    options.OutputLog = true;
  }
  std::string LogText() {
    std::string all;
    for (const std::string& name : memory.files.FileNames("/data/logs"))
      if (name.starts_with("bob")) all += memory.files.ReadWhole("/data/logs/" + name);
    return all;
  }
  int16 Slot = 0;
};

}  // namespace corvid
