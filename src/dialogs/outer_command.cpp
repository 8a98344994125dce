// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/outer_command.h"

namespace corvid {

std::string RunOuterCommand(ScriptState& script, const OptionsState& options, Upcalls& upcalls,
                            const std::string& command, int16 flags) {
  std::string ErrorDescription;
  Parameters rvar;
  int16 outchannel = CurrentSession;
  script.CommandDepth = 0;
  upcalls.commands.ProcessCommand(options.CommandChar + command, flags, ErrorDescription, rvar, outchannel);  // PUMP
  return ErrorDescription;
}

}  // namespace corvid
