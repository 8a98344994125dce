// SPDX-License-Identifier: GPL-3.0-or-later
// A definition that a dialog changed is changed in the script that made it, so that the next load makes it again.
#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include "core/keys.h"
#include "core/text.h"
#include "files/buffers.h"
#include "script/parsed_command.h"
#include "script/scanner.h"
#include "script/statement_text.h"

namespace corvid {

namespace {

struct Line {
  std::size_t Start = 0, End = 0;  // End is behind its line end
  std::string Text;                // without it
};

std::optional<Line> LineAt(const std::string& text, std::size_t start) {
  if (start >= text.size()) return std::nullopt;
  const std::size_t stop = std::min(text.find_first_of("\r\n", start), text.size());
  const std::size_t end = text.compare(stop, 2, "\r\n") == 0 ? stop + 2 : std::min(stop + 1, text.size());
  return Line{start, end, text.substr(start, stop - start)};
}

// A statement in the script, and where one of its commands lies within it.
struct Place {
  std::size_t Start = 0, End = 0;                // of the statement's lines, the last line end included
  std::string Statement;                         // joined, without comments
  std::string Comment;                           // comment behind a statement of one line
  std::size_t CommandStart = 0, CommandEnd = 0;  // within Statement
};

// The word without command character and "G", and whether it had the "G".
std::pair<std::string, bool> PlainWord(std::string_view word, char commandChar) {
  if (!word.empty() && word[0] == commandChar) word.remove_prefix(1);
  std::string plain = Upper(word);
  const bool everybodys = plain.size() > 1 && plain[0] == 'G' && !plain.starts_with("GAG");
  if (everybodys) plain.erase(0, 1);
  return {plain, everybodys};
}

// Shortest form that still means the command and not one that is tested before it.
std::size_t ShortestForm(std::string_view command) {
  if (command == "KEY" || command == "VARIABLE") return 1;
  if (command == "TRIGGER" || command == "CLASS" || command == "DIRECTION") return 2;
  if (command == "TAB") return 1;
  return std::min<std::size_t>(3, command.size());
}

bool SameCommand(std::string_view written, std::string_view wanted, char commandChar) {
  if (written.empty() || written[0] != commandChar) return false;
  const auto [word, everybodys] = PlainWord(written, commandChar);
  const auto [full, everybodysToo] = PlainWord(wanted, commandChar);
  return everybodys == everybodysToo && full.starts_with(word) && word.size() >= ShortestForm(full);
}

bool SameName(const std::string& command, const std::string& written, const std::string& wanted) {
  if (wanted.empty() || SameText(AddBraces(written), AddBraces(wanted))) return true;
  if (command != "KEY") return false;
  int16 shift = 0, code = 0, wantedShift = 0, wantedCode = 0;
  ParseKeystroke(written, shift, code);
  ParseKeystroke(wanted, wantedShift, wantedCode);
  return code != -1 && code == wantedCode && shift == wantedShift;
}

// The table's list may hold the session's class beside the one that stands in the script.
bool SameClass(const std::string& written, const std::string& wanted) {
  if (wanted.empty() || written.empty()) return true;
  return Upper("|" + wanted + "|").find(Upper("|" + written + "|")) != std::string::npos;
}

class DefinitionFinder {
 public:
  DefinitionFinder(Scanner& scanner, const OptionsState& options, const std::string& text, const OldDefinition& old)
      : scanner_(scanner), options_(options), text_(text), old_(old) {}

  std::optional<Place> Find() {
    std::size_t start = 0;
    while (start < text_.size()) {
      Place place = NextStatement(start);
      start = place.End;
      if (FindCommand(place)) return place;
    }
    return std::nullopt;
  }

 private:
  // Joins lines until the braces balance, as a load does.
  Place NextStatement(std::size_t start) {
    Place place;
    int depth = 0;
    int lines = 0;
    while (const std::optional<Line> line = LineAt(text_, start)) {
      start = line->End;
      std::string code = WithoutComment(line->Text);
      if (place.Statement.empty()) {
        place.Start = line->Start;
        lines = 0;
      }
      place.Comment = lines == 0 ? Trim(line->Text.substr(std::min(code.size(), line->Text.size()))) : "";
      ++lines;
      std::ranges::replace(code, '\t', ' ');
      depth += BraceCount(code);
      if (!IsBlank(code)) place.Statement += (place.Statement.empty() ? "" : "\r\n") + RTrim(code);
      place.End = start;
      if (depth <= 0 && !place.Statement.empty()) break;
    }
    if (place.End == 0) place.End = text_.size();
    return place;
  }

  std::string WithoutComment(const std::string& line) {
    const std::string trimmed = LTrim(line);
    if (trimmed.empty() || trimmed[0] == options_.CommentChar) return "";
    // A marker at the very start is a comment too; the scanner would log it as a fault.
    if (line.starts_with(options_.EndOfLineCommentChar)) return "";
    return scanner_.RemoveComments(line);
  }

  int BraceCount(const std::string& code) const {
    int count = 0;
    for (std::size_t i = 0; i < code.size(); ++i) {
      if (code[i] == options_.EscapeChar) {
        ++i;
      } else {
        count += code[i] == '{' ? 1 : code[i] == '}' ? -1 : 0;
      }
    }
    return count;
  }

  bool FindCommand(Place& place) {
    std::string rest = place.Statement;
    while (!IsBlank(rest)) {
      int16 part = 0;
      ParsedCommand parser;
      std::string error;
      std::string unprocessed;
      scanner_.ParseCommand(rest, part, parser, error, unprocessed, 0);
      if (!error.empty()) return false;
      place.CommandStart = place.Statement.size() - rest.size();
      const std::size_t behind = unprocessed.empty() ? 0 : unprocessed.size() + 1;
      place.CommandEnd = place.Statement.size() - std::min(behind, place.Statement.size());
      if (Matches(parser)) return true;
      if (unprocessed.size() >= rest.size()) return false;
      rest = unprocessed;
    }
    return false;
  }

  bool Matches(const ParsedCommand& parser) const {
    if (!SameCommand(parser[1], old_.Command, options_.CommandChar)) return false;
    const std::string command = PlainWord(old_.Command, options_.CommandChar).first;
    if (!SameName(command, parser[2], old_.Name)) return false;
    if (!old_.Commands.empty() && AddBraces(parser[3]) != AddBraces(old_.Commands)) return false;
    return SameClass(parser[4], old_.Class);
  }

  Scanner& scanner_;
  const OptionsState& options_;
  const std::string& text_;
  const OldDefinition& old_;
};

// The statement's lines with newLine in the command's place; an empty newLine takes the command out.
std::string Rewritten(const Place& place, const std::string& newLine) {
  std::string before = place.Statement.substr(0, place.CommandStart);
  std::string after = place.Statement.substr(place.CommandEnd);
  if (newLine.empty()) {
    if (!after.empty()) {
      after.erase(0, 1);  // the separator behind it
    } else if (!before.empty()) {
      before.pop_back();  // or the one in front
    }
  }
  std::string statement = before + newLine + after;
  if (IsBlank(statement)) return "";
  if (!place.Comment.empty()) statement += " " + place.Comment;
  return statement + "\r\n";
}

std::string Appended(std::string text, const std::string& newLine) {
  if (!text.empty() && !text.ends_with("\n")) text += "\r\n";
  return text + newLine + "\r\n";
}

}  // namespace

bool Buffers::UpdateBuffer(int16 BufferNumber, UpdateAction Action, const std::string& NewLine,
                           const std::string& filespec, const OldDefinition& old) {
  const int16 number = BufferNumber < 1 ? GetBufferNumber(filespec) : BufferNumber;
  if (number < 1 || number > buffers_.BufferCount || buffers_.BufferFlags[number] == 0) return false;
  if (number == buffers_.CurrentBuffer) SaveCurrentBuffer();
  std::string text = buffers_.BufferText[number];
  std::optional<Place> place;
  if (Action != UpdateAction::Append) place = DefinitionFinder(scanner_, options_, text, old).Find();
  if (place) {
    text.replace(place->Start, place->End - place->Start,
                 Rewritten(*place, Action == UpdateAction::Delete ? "" : NewLine));
  } else if (Action != UpdateAction::Delete) {
    text = Appended(text, NewLine);
  }
  if (text == buffers_.BufferText[number]) return false;
  SetBufferText(number, text);
  return true;
}

}  // namespace corvid
