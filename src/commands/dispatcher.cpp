// SPDX-License-Identifier: GPL-3.0-or-later
#include "commands/dispatcher.h"

#include <algorithm>
#include <exception>

#include "commands/command_table.h"
#include "core/number.h"
#include "core/text.h"
#include "script/scanner.h"
#include "tools/debugger.h"

namespace corvid {

struct Dispatcher::Line {
  const std::string& inlineText;
  int16& options;
  std::string& ErrorDescription;
  Parameters& rvar;
  int16& outchannel;
  ParsedCommand& P;
  std::string_view current;  // the commands that are still to come, from the running one on: a piece of inlineText
  std::string_view rest;
};

// Parts for one line, given back when the line ends in whatever way.
class Dispatcher::Frame {
 public:
  explicit Frame(Dispatcher& owner) : owner_(owner) {
    if (owner_.framesInUse_ == owner_.frames_.size()) owner_.frames_.push_back(std::make_unique<ParsedCommand>());
    ++owner_.framesInUse_;
  }
  ~Frame() { --owner_.framesInUse_; }
  Frame(const Frame&) = delete;
  Frame& operator=(const Frame&) = delete;
  ParsedCommand& Parts() { return *owner_.frames_[owner_.framesInUse_ - 1]; }

 private:
  Dispatcher& owner_;
};

namespace {

constexpr char ImplicitCommandChar = '#';  // Kept: whatever the command character is.

bool IsImplicitAssignment(const ParsedCommand& P, int16 part, char variableChar) {
  return part == 3 && P[2] == "=" && !P[1].empty() && P[1].front() == variableChar;
}

// The typed word in upper case behind the command character; a "G" in front that makes the command global is taken off.
std::string TypedWord(const std::string& first, bool& global) {
  std::string word = Upper(std::string_view(first).substr(1));
  global = word.starts_with('G') && !word.starts_with("GAG");
  if (global) word.erase(0, 1);
  return word;
}

const CommandRow* FindRow(const std::string& word, const std::string& first) {
  const CommandRow* row = CommandTable::Find(word);
  if (row != nullptr || word.empty() || !CommandTable::IsNumberGroup(word.front())) return row;
  return IsNumeric(std::string_view(first).substr(1)) ? &CommandTable::NumberForm() : nullptr;
}

}  // namespace

Dispatcher::Dispatcher(CommandHouse& house) : house_(house), text_(house) {}
Dispatcher::~Dispatcher() = default;

void Dispatcher::ProcessCommand(const std::string& inlineText, int16& options, std::string& ErrorDescription,
                                Parameters& rvar, int16& outchannel) {
  if (outchannel == CurrentSession) outchannel = house_.script.CurrentSocket;
  Frame frame(*this);
  Line line{inlineText, options, ErrorDescription, rvar, outchannel, frame.Parts(), {}, {}};
  try {
    if (!Enter(line)) return;
    Flow next = Flow::NextCommand;
    do {
      next = OneCommand(line);
      line.current = TrimView(line.rest);
    } while (next == Flow::NextCommand && !line.rest.empty());
  } catch (const std::exception& fault) {
    ErrorDescription = std::string("Bad parsing error - ") + fault.what();
    ReportError(line);
  }
}

void Dispatcher::SortTriggers() {
  TriggerTable& table = house_.script;
  if (table.TriggerCount < 2) return;
  table.Triggers.Sort(table.TriggerCount);
  int16 last = table.TriggerCount;
  while (last > 0 && table.Triggers.Read(last).SortKey == "ZZZ") --last;  // rows with this key leave the table
  if (last == table.TriggerCount) return;
  table.TriggerCount = last;
  table.Triggers.Resize(std::max<int16>(last, 1));
}

// False when there is nothing left to do.
bool Dispatcher::Enter(Line& line) {
  int16& depth = house_.script.CommandDepth;
  depth = AddInt16(depth, 1);
  if (depth > DepthLimit || framesInUse_ > FrameLimit) {
    line.current = line.inlineText;
    line.ErrorDescription = "recursive check - probable infinite loop detected";
    ReportError(line);
    return false;
  }
  if (!line.inlineText.empty() && line.inlineText.front() == house_.options.PassThruChar) {
    if ((line.options & option::CheckOnly) != 0) return false;
    CommandCall call{house_,    nullptr,         line.P, 0, line.options,   line.ErrorDescription,
                     line.rvar, line.outchannel, 0,      0, line.inlineText};
    line.current = call.current = line.inlineText;
    text_.SendVerbatim(call, line.inlineText.substr(1));
    Finish(line, call.next);
    return false;
  }
  line.current = TrimView(line.inlineText);
  return true;
}

Flow Dispatcher::OneCommand(Line& line) {
  int16 part = 0;
  house_.scanner.ParseCommand(line.current, part, line.P, line.ErrorDescription, line.rest, line.options);
  if (!line.ErrorDescription.empty()) return Flow::Leave;  // the scanner has told it
  // What is only looked at does not run, so there is nothing to stop at.
  if (house_.debugger.Active() && (line.options & option::CheckOnly) == 0) [[unlikely]]
    house_.debugger.BeforeCommand(
        {line.P, part, line.current, line.rvar, house_.script.SocketOwner[line.outchannel]});  // PUMP

  const OwnerId owner = house_.script.SocketOwner[line.outchannel];
  CommandCall call{house_,    nullptr,         line.P, part,  line.options,   line.ErrorDescription,
                   line.rvar, line.outchannel, owner,  owner, line.inlineText};
  call.current = line.current;
  if (IsImplicitAssignment(line.P, part, house_.options.VariableChar)) {
    line.P[2] = line.P[1].substr(1);
    line.P[1] = std::string(1, ImplicitCommandChar) + "VAR";
  }
  const std::string& first = line.P[1];
  if (first.empty() || first.front() != house_.options.CommandChar) {
    text_.Run(call);
  } else {
    Execute(call);
  }
  Finish(line, call.next);
  return call.next;
}

void Dispatcher::Execute(CommandCall& call) {
  bool global = false;
  const std::string word = TypedWord(call.P[1], global);
  if (global) call.definitionOwner = 0;
  call.row = FindRow(word, call.P[1]);
  if (call.row == nullptr) return call.fail("Bad command " + call.P[1]);
  if (!CommandTable::CountFits(*call.row, call.count())) return call.fail("Wrong number of parameters");
  call.row->Handler(call);
}

void Dispatcher::Finish(Line& line, Flow how) {
  if (how == Flow::Report) ReportError(line);
  if (how == Flow::Trace) Trace(line);
}

void Dispatcher::ReportError(const Line& line) {
  house_.upcalls.errors.ErrorReport(line.ErrorDescription, ShownLine(line.current, line.inlineText), 0, line.options);
}

void Dispatcher::Trace(const Line& line) {
  if ((line.options & option::Interactive) != 0 || line.ErrorDescription == " ") return;
  AppendErrorLog(house_.buffers, "\r\ntraced back to line: " + line.inlineText);
}

}  // namespace corvid
