// SPDX-License-Identifier: GPL-3.0-or-later
#include "commands/definition_rules.h"

#include "commands/command_call.h"
#include "core/text.h"

namespace corvid {

namespace {

constexpr std::size_t ExpandPlaces = 3;  // in which "%EXPAND" at the start of a body counts

std::size_t ExpandPlace(const std::string& text) {
  return Upper(text).find("%EXPAND");
}

}  // namespace

bool HoldsExpand(const std::string& text) {
  return ExpandPlace(text) != std::string::npos;
}

bool ExpandBodyNow(CommandCall& call, std::string& body) {
  return ExpandPlace(body) >= ExpandPlaces || ExpandText(call, body);
}

std::string ClassList(const CommandCall& call, const std::string& given) {
  const std::string& current = call.house.script.CurrentClass[call.outchannel];
  if (current.empty()) return given;
  if (given.empty()) return current;
  const std::string wrapped = "|" + Upper(given) + "|";
  if (wrapped.find("|" + Upper(current) + "|") != std::string::npos) return given;
  return current + "|" + given;
}

void MarkChanged(CommandCall& call) {
  call.house.sessions.ScriptChanged.at(static_cast<std::size_t>(call.outchannel)) = true;
}

}  // namespace corvid
