// SPDX-License-Identifier: GPL-3.0-or-later
// What the tests of sessions and of their scripts share.
#pragma once

#include <string>

#include "commands/fixture.h"

namespace corvid::test {

class SessionCommandsTest : public CommandTest {
 protected:
  void PutFile(const std::string& name, const std::string& text) { memory.files.Put("/data/" + name, text); }
  // Scripts that alter a text for each event, so that a test sees what ran and for whom.
  void PutCharacter(const std::string& reference) { AddRow(reference); }
};

}  // namespace corvid::test
