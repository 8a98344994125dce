// SPDX-License-Identifier: GPL-3.0-or-later
// The routines behind the command table. Each is called with its parameters counted, in check mode too; what it answers
// stands in CommandCall::next.
#pragma once

namespace corvid {

struct CommandCall;

namespace handler {

void Direction(CommandCall& call);
void EndRecord(CommandCall& call);
void Erase(CommandCall& call);
void Pause(CommandCall& call);
void Record(CommandCall& call);
void Stop(CommandCall& call);
void UnPause(CommandCall& call);

void Pick(CommandCall& call);
void Prompt(CommandCall& call);

void Configure(CommandCall& call);

void AddItem(CommandCall& call);
void Alarm(CommandCall& call);
void Alias(CommandCall& call);
void Class(CommandCall& call);
void DelClass(CommandCall& call);
void GagLine(CommandCall& call);
void GagOn(CommandCall& call);
void Ignore(CommandCall& call);
void Key(CommandCall& call);
void Local(CommandCall& call);
void PassThru(CommandCall& call);
void Substitute(CommandCall& call);
void Tab(CommandCall& call);
void Trigger(CommandCall& call);
void UnAlarm(CommandCall& call);
void UnAlias(CommandCall& call);
void UnClass(CommandCall& call);
void UnGagLine(CommandCall& call);
void UnGagOn(CommandCall& call);
void UnKey(CommandCall& call);
void UnTab(CommandCall& call);
void UnTrigger(CommandCall& call);
void UnVariable(CommandCall& call);
void Variable(CommandCall& call);

void AutoMenu(CommandCall& call);
void Bell(CommandCall& call);
void Clipboard(CommandCall& call);
void Find(CommandCall& call);
void Quiet(CommandCall& call);
void Say(CommandCall& call);
void Send(CommandCall& call);
void SetSpeech(CommandCall& call);
void SysKey(CommandCall& call);
void Window(CommandCall& call);

void Abort(CommandCall& call);
void Break(CommandCall& call);
void Execute(CommandCall& call);
void ForAll(CommandCall& call);
void If(CommandCall& call);
void Math(CommandCall& call);
void Ok(CommandCall& call);
void Repeat(CommandCall& call);  // the number form
void Until(CommandCall& call);
void Wait(CommandCall& call);
void While(CommandCall& call);

void CloseFile(CommandCall& call);
void DelFile(CommandCall& call);
void File(CommandCall& call);
void Read(CommandCall& call);
void Write(CommandCall& call);

void Play(CommandCall& call);
void PlayControl(CommandCall& call);

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
