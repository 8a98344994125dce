// SPDX-License-Identifier: GPL-3.0-or-later
#include "script/script_editor.h"

#include "core/reading.h"
#include "core/text.h"
#include "core/upcalls.h"
#include "files/buffer_state.h"
#include "platform/face.h"
#include "script/options_state.h"
#include "script/scanner.h"
#include "script/script_state.h"

namespace corvid {

namespace {

// What a brace at this place adds to a count: 1, -1, or 0 when it is escaped or no brace.
int32 BraceAt(std::string_view text, std::size_t place, char escape) {
  const char c = text[place];
  if (c != '{' && c != '}') return 0;
  if (place > 0 && text[place - 1] == escape) return 0;
  return c == '{' ? 1 : -1;
}

}  // namespace

struct ScriptEditor::Line {
  std::string Text;
  int32 Braces = 0;
};

// A line as it runs: a comment is no part of it.
ScriptEditor::Line ScriptEditor::TakeLine(std::string_view text, int32 start) {
  const auto from = static_cast<std::size_t>(start);
  const auto to = static_cast<std::size_t>(LineEnd(text, start));
  Line line{std::string(text.substr(from, to - from)), 0};
  if (TrimView(line.Text).starts_with(options_.CommentChar)) return {};
  line.Text = scanner_.RemoveComments(line.Text);
  for (std::size_t i = 0; i < line.Text.size(); ++i) {
    if (line.Text[i] == '\t') line.Text[i] = ' ';
    line.Braces += BraceAt(line.Text, i, options_.EscapeChar);
  }
  return line;
}

std::string ScriptEditor::GetCommand() {
  if (buffers_.EntryBox.SelLength() > 0) return buffers_.EntryBox.SelText();
  const std::string text = buffers_.EntryBox.Text();
  int32 start = LineStart(text, buffers_.EntryBox.SelStart());
  auto [command, count] = TakeLine(text, start);
  const int32 direction = count < 0 ? -1 : 1;
  while (count * direction > 0) {
    start = FindNextLine(text, start, 1, direction);
    if (start < 0) break;
    const Line next = TakeLine(text, start);
    count += next.Braces;
    if (direction > 0) {
      command.append("\r\n").append(next.Text);
    } else {
      command.insert(0, next.Text + "\r\n");
    }
  }
  if (count == 0) return command;
  upcalls_.errors.ShowError(
      "Unbalanced braces in command, or you did not execute the command from the first or last line.");
  return "";
}

void ScriptEditor::ExecuteLine() {
  const std::string command = GetCommand();
  state_.DefiningBuffer = buffers_.CurrentBuffer;
  state_.CommandDepth = 0;
  if (command.empty()) return;
  int16 options = option::Interactive;
  int16 outchannel = CurrentSession;
  std::string ErrorDescription;
  Parameters rvar;
  upcalls_.commands.ProcessCommand(command, options, ErrorDescription, rvar, outchannel);  // PUMP
  if (ErrorDescription.empty()) upcalls_.speaker.Answer("OK", Channel::Incoming);
}

void ScriptEditor::FindOpposingBrace(TextModel& text) const {
  const std::string all = text.Text();
  auto place = static_cast<std::size_t>(text.SelStart());
  const char c = place < all.size() ? all[place] : ' ';
  int32 count = c == '{' ? 1 : c == '}' ? -1 : 0;
  const int32 direction = count;
  while (count != 0) {
    if (direction < 0 ? place == 0 : place + 1 >= all.size()) break;
    place = direction < 0 ? place - 1 : place + 1;
    count += BraceAt(all, place, options_.EscapeChar);
  }
  if (direction == 0 || count != 0) return face_.Beep();
  text.SetSelStart(static_cast<int32>(place));
}

}  // namespace corvid
