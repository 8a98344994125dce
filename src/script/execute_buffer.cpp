// SPDX-License-Identifier: GPL-3.0-or-later
// Running a whole script text: lines are joined until their braces balance, and each statement is carried out.
#include <exception>
#include <utility>

#include "core/text.h"
#include "core/upcalls.h"
#include "script/options_state.h"
#include "script/scanner.h"
#include "script/script_state.h"

namespace corvid {

class Scanner::BufferRun {
 public:
  BufferRun(Scanner& scanner, int16 options, int16& outchannel)
      : scanner_(scanner), options_(options), outchannel_(outchannel) {}

  int32 Run(std::string_view text) {
    try {
      return Walk(text);
    } catch (const std::exception&) {
      Report("Unidentified error when executing line or buffer");
      return FailurePosition();
    }
  }

 private:
  int32 Walk(std::string_view text) {
    int32 pointer = 0;
    do {
      const int32 start = pointer;
      const std::string_view line = ReadNextLine(text, pointer);
      if (!line.empty() && !TakeLine(line, start)) return FailurePosition();
    } while (pointer > 0);
    scanner_.commands_.SortTriggers();
    if (statement_.empty()) return 0;
    Report("Unbalanced braces.");
    return position_;
  }

  // False when the text ends here with an error, which is reported already.
  bool TakeLine(std::string_view raw, int32 start) {
    const std::string_view trimmed = TrimView(raw);
    if (!trimmed.empty() && trimmed.front() == scanner_.options_.CommentChar) return true;
    std::string line = scanner_.RemoveComments(std::string(raw));
    CountBraces(line);
    if (statement_.empty()) {
      position_ = start;
    } else {
      statement_ += "\r\n";
    }
    statement_ += RTrim(line);
    if (braces_ < 0) {
      Report("Unbalanced braces.");
      return false;
    }
    return braces_ != 0 || IsBlank(statement_) || RunStatement();
  }

  void CountBraces(std::string& line) {
    for (std::size_t i = 0; i < line.size(); ++i) {
      if (line[i] == scanner_.options_.EscapeChar) {
        ++i;
      } else if (line[i] == '\t') {
        line[i] = ' ';
      } else if (line[i] == '{') {
        ++braces_;
      } else if (line[i] == '}') {
        --braces_;
      }
    }
  }

  bool RunStatement() {
    const std::string text = LTrim(statement_);
    const bool isCommand = text.front() == scanner_.options_.CommandChar;
    if (!isCommand && (options_ & bufferoption::Strict) != 0) {
      Report("Invalid text found on line.");
      return false;
    }
    const bool setsVariable = isCommand && StartsWithText(std::string_view(text).substr(1), "VAR");
    if ((options_ & bufferoption::SkipVariables) == 0 || !setsVariable) {
      if (!Carry()) return false;
    }
    statement_.clear();
    return true;
  }

  bool Carry() {
    const bool check = (options_ & bufferoption::CheckOnly) != 0;
    int16 options = check ? option::Interactive | option::CheckOnly : option::Interactive;
    std::string errorDescription;
    Parameters rvar;
    scanner_.state_.CommandDepth = 0;
    scanner_.commands_.ProcessCommand(statement_, options, errorDescription, rvar, outchannel_);  // PUMP
    return errorDescription.empty();
  }

  void Report(const std::string& text) { scanner_.errors_.ErrorReport(text, statement_, 0, option::Interactive); }

  // Behind the line end in front of the statement.
  int32 FailurePosition() const { return position_ + 2; }

  Scanner& scanner_;
  int16 options_;
  int16& outchannel_;
  std::string statement_;
  int32 braces_ = 0;
  int32 position_ = 0;  // where the statement's first line begins
};

int32 Scanner::ExecuteBuffer(std::string bufString, int16 options, int16& outchannel) {
  const std::string text = std::move(bufString);  // ours: the caller's may change while commands run
  return BufferRun(*this, options, outchannel).Run(text);
}

}  // namespace corvid
