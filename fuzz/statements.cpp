// SPDX-License-Identifier: GPL-3.0-or-later
// Any text as a script, as one statement and as lines: cut into pieces, never more text than there was.
#include <string>

#include "fuzz.h"
#include "script/options_state.h"
#include "script/scanner.h"
#include "script/symbols.h"
#include "support_upcalls.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using corvid::fuzz::Require;
  const std::string text(corvid::fuzz::Text(data, size));
  corvid::EffectLog effects;
  corvid::RecordingRunner runner(effects);
  corvid::RecordingErrors errors(effects);
  corvid::ScriptState script;
  const corvid::OptionsState options;
  const corvid::Symbols symbols(script, runner);
  corvid::Scanner scanner(script, options, symbols, runner, errors);

  corvid::int32 pointer = 0;
  std::size_t lines = 0;
  while (pointer >= 0) {
    const corvid::int32 before = pointer;
    Require(corvid::ReadNextLine(text, pointer).size() <= size, "a line is a piece of the text");
    Require(pointer > before || pointer == -1, "the walk goes on");
    Require(++lines <= size + 1, "and ends");
  }

  corvid::int16 outchannel = 0;
  const corvid::int32 position = scanner.ExecuteBuffer(text, corvid::bufferoption::Strict, outchannel);
  Require(position >= 0 && static_cast<std::size_t>(position) <= size + 2, "the place of a failure is in the text");

  std::string rest = text;
  for (std::size_t statements = 0; !rest.empty(); ++statements) {
    Require(statements <= size, "statements come to an end");
    corvid::int16 part = 0;
    corvid::ParsedCommand parser;
    std::string error;
    std::string next;
    try {
      scanner.ParseCommand(rest, part, parser, error, next, 0);
    } catch (const corvid::Fault&) {
      break;  // more parts than a statement may have
    }
    if (!error.empty()) break;
    Require(next.size() < rest.size(), "the rest is shorter");
    rest = next;
  }
  return 0;
}
