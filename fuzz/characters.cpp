// SPDX-License-Identifier: GPL-3.0-or-later
// Any text as the character table: refused, or read into rows that are written and read back the same.
#include "core/scramble.h"
#include "fuzz.h"
#include "sessions/character_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using corvid::fuzz::Require;
  const std::string text(corvid::fuzz::Text(data, size));
  Require(corvid::Scramble(corvid::Scramble(text)) == text, "the shift is its own inverse");
  corvid::CharacterTable table;
  if (!corvid::ParseCharacters(text, table)) {
    Require(table.CharacterCount == 0, "a refused text leaves the table alone");
    return 0;
  }
  const std::string written = corvid::FormatCharacters(table);
  corvid::CharacterTable again;
  Require(corvid::ParseCharacters(written, again), "what was written is read");
  Require(corvid::FormatCharacters(again) == written, "and reads the same");
  return 0;
}
