// SPDX-License-Identifier: GPL-3.0-or-later
#include "script/scanner.h"

#include "core/text.h"
#include "core/upcalls.h"
#include "script/options_state.h"
#include "script/script_state.h"
#include "script/symbols.h"

namespace corvid {

namespace {

// Cuts one statement, already without the braces around it, into parts.
class Cutter {
 public:
  Cutter(const OptionsState& options, std::string_view text, ParsedCommand& parser)
      : options_(options), text_(text), parser_(parser), current_(&parser[1]) {}

  // The error text, empty when all went well.
  std::string Run() {
    for (; position_ < text_.size() && error_.empty() && !ended_; ++position_) {
      if (depth_ == 0) {
        AtTop(text_[position_]);
      } else {
        InBraces(text_[position_]);
      }
    }
    if (!error_.empty()) return error_;
    if (current_->empty()) --part_;
    return depth_ != 0 ? "Unbalanced braces" : "";
  }

  int16 Parts() const { return part_; }
  std::string_view Rest() const { return text_.substr(position_); }  // behind the separator

 private:
  void AtTop(char c) {
    if (static_cast<unsigned char>(c) < ' ') return;
    if (c == options_.EscapeChar && NextIsOneOf(" {};")) {
      *current_ += text_[++position_];
      return;  // Kept: a part that begins so still counts as not begun.
    }
    // Kept: a separator of several characters never equals one character.
    if (c != options_.EscapeChar && options_.CommandSeparator == std::string_view(&c, 1)) {
      ended_ = true;
    } else if (c == '{') {
      ++depth_;
      keepBrace_ = !atStart_;
      if (keepBrace_) *current_ += c;
    } else if (c == '}') {
      error_ = "Unbalance braces";
    } else if (c == ' ') {
      if (!atStart_) BeginPart();
      return;
    } else {
      *current_ += c;
    }
    atStart_ = false;
  }

  void InBraces(char c) {
    if (c == options_.EscapeChar) {
      *current_ += c;
      if (position_ + 1 < text_.size()) *current_ += text_[++position_];
      return;
    }
    if (c == '}') {
      --depth_;
      // Kept: one flag for all levels, so the first inner brace clears it and the last one of the word is lost.
      const bool keep = depth_ > 0 || keepBrace_;
      if (keep) *current_ += c;
      if (keep) keepBrace_ = false;
      return;
    }
    if (c == '{') ++depth_;
    *current_ += c;
  }

  bool NextIsOneOf(std::string_view characters) const {
    return position_ + 1 < text_.size() && characters.find(text_[position_ + 1]) != std::string_view::npos;
  }

  void BeginPart() {
    ++part_;
    current_ = &parser_[part_];  // part 1001 faults here
    atStart_ = true;
  }

  const OptionsState& options_;
  std::string_view text_;
  ParsedCommand& parser_;
  std::string* current_;
  std::string error_;
  std::size_t position_ = 0;
  int32 depth_ = 0;
  int16 part_ = 1;
  bool atStart_ = true;     // at the start of a part and after blanks: a brace here groups and is dropped
  bool keepBrace_ = false;  // the open brace stood inside a word
  bool ended_ = false;
};

}  // namespace

void Scanner::ParseCommand(const std::string& inlineText, int16& part, ParsedCommand& parser,
                           std::string& ErrorDescription, std::string& UnprocessedPart, int16 options) {
  const std::string original{std::string_view(inlineText)};  // a copy: it may be the same text as UnprocessedPart
  std::string_view rest;
  ParseCommand(std::string_view(original), part, parser, ErrorDescription, rest, options);
  UnprocessedPart = rest;
}

void Scanner::ParseCommand(std::string_view inlineText, int16& part, ParsedCommand& parser,
                           std::string& ErrorDescription, std::string_view& UnprocessedPart, int16 options) {
  parser.Clear();
  part = 1;
  UnprocessedPart = {};
  std::string_view text = TrimView(inlineText);
  std::string error;
  if (!text.empty() && text.front() == '{') {
    text.remove_prefix(1);
    if (text.empty() || text.back() != '}') {
      error = "Expect trailing right brace (})";
    } else {
      text.remove_suffix(1);
    }
  }
  if (error.empty()) {
    Cutter cutter(options_, text, parser);
    error = cutter.Run();
    part = cutter.Parts();
    if (error.empty()) UnprocessedPart = cutter.Rest();
  }
  if (error.empty()) return;
  ErrorDescription = error;
  errors_.ErrorReport(ErrorDescription, std::string(inlineText), 0, options);
}

void Scanner::ExecuteAlias(std::string_view sString2, int16 SChannel, OwnerId SOwner) {
  const int16 row = symbols_.FindAlias(Upper(sString2), SOwner, true);
  if (row == 0) return;
  const std::string body = state_.AliasOriginals[row];
  state_.CommandDepth = 0;
  int16 options = 0;
  std::string errorDescription;  // reported below already
  Parameters rvar;
  commands_.ProcessCommand(body, options, errorDescription, rvar, SChannel);  // PUMP: row is dead from here
}

std::string Scanner::RemoveComments(const std::string& line) {
  const std::string& marker = options_.EndOfLineCommentChar;
  const std::size_t found = marker.empty() ? std::string::npos : line.find(marker);
  if (found == std::string::npos) return line;
  if (found == 0) {
    // Kept: the character before the marker is looked at, and here there is none.
    errors_.UnknownError("A comment in the first column has no character before it", "RemoveComments", {line});
    return "";
  }
  return line[found - 1] == options_.EscapeChar ? line : line.substr(0, found);
}

}  // namespace corvid
