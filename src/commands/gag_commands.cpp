// SPDX-License-Identifier: GPL-3.0-or-later
// What a session shows and heeds: GAGLINE, GAGON, IGNORE, PASSTHRU.
#include <array>

#include "commands/command_call.h"
#include "commands/handlers.h"
#include "core/number.h"
#include "core/text.h"

namespace corvid {

namespace {

// The bits that a "what" stands for; -1 for another word.
int16 GagBits(const std::string& what, int16 speech, int16 display) {
  if (SameText(what, "VOICE")) return speech;
  if (SameText(what, "DISPLAY")) return display;
  if (what.empty() || SameText(what, "ALL")) return static_cast<int16>(speech | display);
  return -1;
}

void ClearGags(CommandCall& call, int16 bits) {
  int16& flags = call.house.sessions.GagFlags[call.outchannel];
  flags = static_cast<int16>(flags & ~bits);
}

struct SwitchRow {
  std::string_view Word;
  Table<char> SessionState::*Field;
};

const std::array<SwitchRow, 4>& Switches() {
  static const std::array<SwitchRow, 4> rows{{{"TRIGGER", &SessionState::TriggerEnabled},
                                              {"ALIAS", &SessionState::AliasEnabled},
                                              {"KEY", &SessionState::KeyEnabled},
                                              {"LOGENTRIES", &SessionState::LogEntriesEnabled}}};
  return rows;
}

}  // namespace

void handler::GagLine(CommandCall& call) {
  if (call.checkOnly() || !ExpandParameters(call)) return;
  std::string count = "1";
  std::string what;
  if (call.count() == 1 && !IsNumeric(call.P[2])) {
    what = call.P[2];
  } else if (call.count() > 0) {
    count = call.P[2];
    what = call.P[3];
  }
  const int16 bits = GagBits(what, gag::LineSpeech, gag::LineDisplay);
  if (bits < 0) return call.fail("Bad GagLine parameter");
  if (!IsNumeric(count)) return call.fail("non-numeric number of lines to gag");
  SessionState& sessions = call.house.sessions;
  sessions.GagLines[call.outchannel] = ToInt16(Val(count));
  sessions.GagFlags[call.outchannel] = static_cast<int16>(sessions.GagFlags[call.outchannel] | bits);
}

void handler::UnGagLine(CommandCall& call) {
  if (!call.checkOnly()) ClearGags(call, gag::LineSpeech | gag::LineDisplay);
}

void handler::GagOn(CommandCall& call) {
  if (call.checkOnly() || !ExpandParameters(call)) return;
  const int16 bits = GagBits(call.P[2], gag::OnSpeech, gag::OnDisplay);
  if (bits < 0) return call.fail("Bad GagOn parameter");
  SessionState& sessions = call.house.sessions;
  sessions.GagFlags[call.outchannel] = static_cast<int16>(sessions.GagFlags[call.outchannel] | bits);
  sessions.GagNotice[call.outchannel] = static_cast<float>(call.house.platform.clock.SecondsSinceMidnight());
}

void handler::UnGagOn(CommandCall& call) {
  if (call.checkOnly()) return;
  ClearGags(call, gag::OnSpeech | gag::OnDisplay);
  call.house.sessions.GagNotice[call.outchannel] = 0;
}

void handler::Ignore(CommandCall& call) {
  if (call.checkOnly() || !ExpandParameters(call)) return;
  const bool ignored = SameText(call.P[3], "ON");
  if (!ignored && !SameText(call.P[3], "OFF")) return call.fail("The second parameter must be either On or Off");
  for (const SwitchRow& row : Switches()) {
    if (!SameText(call.P[2], row.Word)) continue;
    (call.house.sessions.*row.Field)[call.outchannel] = static_cast<char>(ignored ? 0 : 1);
    return;
  }
  if (!SameText(call.P[2], "DICTIONARY")) return call.fail("First parameter must be Trigger, Key, or alias");
  call.house.options.DictionaryEnabled = !ignored;
}

void handler::PassThru(CommandCall& call) {
  if (!call.checkOnly()) call.house.sessions.PassThruPattern[call.outchannel] = call.P[2];
}

}  // namespace corvid
