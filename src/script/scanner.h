// SPDX-License-Identifier: GPL-3.0-or-later
// From script text to statements, and from a statement to its parts.
#pragma once

#include <string>
#include <string_view>

#include "core/types.h"
#include "script/parsed_command.h"
#include "script/statement_text.h"

namespace corvid {

class CommandRunner;
class ErrorSink;
class Symbols;
struct OptionsState;
struct ScriptState;

// Bits of options for ExecuteBuffer.
namespace bufferoption {
inline constexpr int16 CheckOnly = 1;      // statements are checked, nothing is carried out
inline constexpr int16 Strict = 2;         // a statement that is no command is an error
inline constexpr int16 SkipVariables = 4;  // statements that set variables are passed over
}  // namespace bufferoption

class Scanner {
 public:
  Scanner(ScriptState& state, const OptionsState& options, const Symbols& symbols, CommandRunner& commands,
          ErrorSink& errors)
      : state_(state), options_(options), symbols_(symbols), commands_(commands), errors_(errors) {}

  // Cuts the first statement of inlineText into parser[1] to parser[part]; UnprocessedPart is what follows its
  // separator. A failure is in ErrorDescription and already reported with options as flags. A statement of more than
  // 1000 parts is a Fault of kind Index.
  void ParseCommand(const std::string& inlineText, int16& part, ParsedCommand& parser, std::string& ErrorDescription,
                    std::string& UnprocessedPart, int16 options);

  // The same for a text that stays where it is: UnprocessedPart is then a piece of inlineText, so that a line of a
  // hundred thousand statements is not copied for each of them.
  void ParseCommand(std::string_view inlineText, int16& part, ParsedCommand& parser, std::string& ErrorDescription,
                    std::string_view& UnprocessedPart, int16 options);

  // Runs a whole text, statement by statement. Returns 0 when all went well, else a position near the failing
  // statement; the failure is reported already and later statements are not run. May pump events.
  int32 ExecuteBuffer(std::string bufString, int16 options, int16& outchannel);

  // Runs the original text of a named alias, if there is one; otherwise nothing. The program's own events ("OnConnect",
  // "login") reach scripts this way. May pump events.
  void ExecuteAlias(std::string_view sString2, int16 SChannel, OwnerId SOwner);

  // The line up to its end-of-line comment. Only the first marker counts; an escaped one keeps the whole line.
  std::string RemoveComments(const std::string& line);

 private:
  class BufferRun;

  ScriptState& state_;
  const OptionsState& options_;
  const Symbols& symbols_;
  CommandRunner& commands_;
  ErrorSink& errors_;
};

}  // namespace corvid
