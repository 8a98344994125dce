// SPDX-License-Identifier: GPL-3.0-or-later
// The routines behind the command table. Each is called with its parameters counted, in check mode too; what it answers
// stands in CommandCall::next.
#pragma once

namespace corvid {

struct CommandCall;

namespace handler {

// Stands for a command whose family is not built yet, and says so with the command's name.
void NotBuilt(CommandCall& call);
void Erase(CommandCall& call);

void Configure(CommandCall& call);

void Character(CommandCall& call);
void Connect(CommandCall& call);
void Edit(CommandCall& call);
void KillAll(CommandCall& call);
void Load(CommandCall& call);
void Mud(CommandCall& call);
void Offline(CommandCall& call);
void Quit(CommandCall& call);
void Reload(CommandCall& call);
void Reset(CommandCall& call);
void Save(CommandCall& call);
void Unload(CommandCall& call);

}  // namespace handler
}  // namespace corvid
