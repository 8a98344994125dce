// SPDX-License-Identifier: GPL-3.0-or-later
// Help for writing scripts inside the program: the command at the caret is carried out from where it stands, and the
// partner of a brace is found.
#pragma once

#include <string>

#include "core/text_model.h"
#include "core/types.h"

namespace corvid {

class Face;
class Scanner;
struct BufferState;
struct OptionsState;
struct ScriptState;
struct Upcalls;

class ScriptEditor {
 public:
  ScriptEditor(ScriptState& state, const OptionsState& options, BufferState& buffers, Scanner& scanner, Face& face,
               Upcalls& upcalls)
      : state_(state), options_(options), buffers_(buffers), scanner_(scanner), face_(face), upcalls_(upcalls) {}

  // The command at the caret of the entry box: the selection, else the caret's line, with the lines below (or above,
  // from its last line) that its braces take in, without comments. Empty when the braces do not balance from there; the
  // player has been told.
  std::string GetCommand();
  // Carries it out; what it defines belongs to the buffer that is shown. "OK" is said when it went well. May pump
  // events.
  void ExecuteLine();
  // Moves the caret from a brace to its partner. Beeps, and leaves the caret, when there is none.
  void FindOpposingBrace(TextModel& text) const;

 private:
  struct Line;
  Line TakeLine(std::string_view text, int32 start);

  ScriptState& state_;
  const OptionsState& options_;
  BufferState& buffers_;
  Scanner& scanner_;
  Face& face_;
  Upcalls& upcalls_;
};

}  // namespace corvid
