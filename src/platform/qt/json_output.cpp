// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/json_output.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>

#include "core/text.h"

namespace corvid {

namespace {

constexpr std::array<std::string_view, 21> Events{"ready",   "exit",        "state", "error", "speech", "silence",
                                                  "display", "cleared",     "send",  "beep",  "dialog", "dialog-closed",
                                                  "menu",    "menu-closed", "focus", "title", "sound",  "clipboard",
                                                  "program", "session",     "notice"};
constexpr std::size_t Always = 4;  // the first four are printed whatever the filter says
constexpr std::size_t Much =
    std::size_t{256} * 1024;  // bytes that may gather before they are written out within a turn

}  // namespace

JsonOutput::JsonOutput(int descriptor, const std::string& filter) : descriptor_(descriptor), all_(filter.empty()) {
  for (const std::string& name : Split(filter, ",")) wanted_.insert(Trim(name));
  for (std::size_t i = 0; i < Always; ++i) wanted_.emplace(Events[i]);
}

std::string JsonOutput::UnknownEvents(const std::string& filter) {
  std::string unknown;
  for (const std::string& part : Split(filter, ",")) {
    const std::string name = Trim(part);
    if (name == "none" || std::find(Events.begin(), Events.end(), name) != Events.end()) continue;
    unknown += (unknown.empty() ? "" : ", ") + name;
  }
  return unknown;
}

bool JsonOutput::Wants(std::string_view event) const {
  return all_ || wanted_.find(event) != wanted_.end();
}

void JsonOutput::Print(std::string_view event, const JsonObject& fields) {
  EndDisplay();
  lastWasBeep_ = false;
  const std::string body = fields.Done();
  waiting_.append("{\"event\":\"").append(event).append("\"");
  if (body.size() > 2) waiting_.append(",").append(body, 1, body.size() - 2);
  waiting_.append("}\n");
  if (waiting_.size() > Much) Flush();
}

void JsonOutput::EndDisplay() {
  if (display_.empty()) return;
  std::string text;
  text.swap(display_);
  Print("display", JsonObject().Number("session", displaySession_).Text("text", text));
}

void JsonOutput::Display(int16 session, std::string_view text) {
  if (text.empty()) return;
  if (session != displaySession_ || display_.size() > Much) EndDisplay();
  displaySession_ = session;
  display_ += text;
  lastWasBeep_ = false;
}

void JsonOutput::Beep() {
  if (lastWasBeep_) return;
  Print("beep", JsonObject());
  lastWasBeep_ = true;
}

bool JsonOutput::Flush() {
  EndDisplay();
  std::string_view rest = waiting_;
  while (!rest.empty() && !broken_) {
    const ssize_t count = write(descriptor_, rest.data(), rest.size());
    if (count >= 0) {
      rest.remove_prefix(static_cast<std::size_t>(count));
    } else if (errno == EAGAIN) {  // an output that does not wait is waited for here
      pollfd ready{descriptor_, POLLOUT, 0};
      poll(&ready, 1, -1);
    } else if (errno != EINTR) {
      broken_ = true;
    }
  }
  waiting_.clear();
  lastWasBeep_ = false;
  return !broken_;
}

}  // namespace corvid
