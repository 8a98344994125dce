// SPDX-License-Identifier: GPL-3.0-or-later
// What ALIAS, KEY and TRIGGER have in common.
#pragma once

#include <string>

namespace corvid {

struct CommandCall;

bool HoldsExpand(const std::string& text);  // the word "%EXPAND" in any case

// A body that begins with "%EXPAND" is expanded once, now. False when that failed. May pump events.
bool ExpandBodyNow(CommandCall& call, std::string& body);

// The classes of a new definition: those given, and the one that the session's definitions join now.
std::string ClassList(const CommandCall& call, const std::string& given);

// There is something new to save.
void MarkChanged(CommandCall& call);

}  // namespace corvid
