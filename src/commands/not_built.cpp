// SPDX-License-Identifier: GPL-3.0-or-later
#include "commands/command_call.h"
#include "commands/command_table.h"
#include "commands/handlers.h"

namespace corvid::handler {

void NotBuilt(CommandCall& call) {
  if (call.checkOnly()) return;
  const std::string_view keyword = call.row->Keyword;
  const std::string name = keyword.empty() ? "a repeat count" : std::string(keyword);
  call.fail("Corvid does not have this command yet: " + name);
}

}  // namespace corvid::handler
