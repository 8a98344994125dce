// SPDX-License-Identifier: GPL-3.0-or-later
// The one place where a line of script or typed text is carried out: the entry line, keys, triggers, alarms, menus,
// dialogs and script files all end here.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "commands/command_call.h"
#include "commands/game_text.h"
#include "core/upcalls.h"

namespace corvid {

class Dispatcher final : public CommandRunner {
 public:
  // Levels of ProcessCommand that may stand inside each other.
  static constexpr int16 DepthLimit = 12;
  // The same over event pumps, where each outer source counts from 0: an alarm that waits for its own successor would
  // otherwise use up the stack.
  static constexpr std::size_t FrameLimit = 300;

  explicit Dispatcher(CommandHouse& house);
  ~Dispatcher() override;

  // Carries out inlineText, which may hold several commands. outchannel CurrentSession becomes the session in the
  // foreground; commands that change session write the new one back. An outer source sets CommandDepth to 0 first; a
  // level that is not given back by its caller stays counted. inlineText must not be a row of a table: it is read again
  // when an error is told. Never throws: an unexpected fault is reported as "Bad parsing error - ". May pump events.
  void ProcessCommand(const std::string& inlineText, int16& options, std::string& ErrorDescription, Parameters& rvar,
                      int16& outchannel) override;
  void SortTriggers() override;

 private:
  struct Line;
  class Frame;

  bool Enter(Line& line);
  Flow OneCommand(Line& line);
  void Execute(CommandCall& call);
  void Finish(Line& line, Flow how);
  void ReportError(const Line& line);
  void Trace(const Line& line);

  CommandHouse& house_;
  GameText text_;
  // Parts of the running lines, innermost last. They are kept for the next line: a script runs through here thousands
  // of times a second.
  std::vector<std::unique_ptr<ParsedCommand>> frames_;
  std::size_t framesInUse_ = 0;
};

}  // namespace corvid
