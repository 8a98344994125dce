// SPDX-License-Identifier: GPL-3.0-or-later
// The small commands that reach the player or the game: SEND, BELL, CLIPBOARD, QUIET and SYSKEY.
#include <utility>

#include "commands/command_call.h"
#include "commands/file_operations.h"
#include "commands/handlers.h"
#include "core/text.h"
#include "core/utf8.h"

namespace corvid {

namespace {

constexpr unsigned char FirstOfText = 14;  // a code below it can end a line

// Another end of lines for a while; the player's own comes back however that ends.
class OwnLineEnd {
 public:
  OwnLineEnd(std::string& lineEnd, std::string meanwhile)
      : lineEnd_(lineEnd), before_(std::exchange(lineEnd, std::move(meanwhile))) {}
  ~OwnLineEnd() { lineEnd_ = std::move(before_); }
  OwnLineEnd(const OwnLineEnd&) = delete;
  OwnLineEnd& operator=(const OwnLineEnd&) = delete;

 private:
  std::string& lineEnd_;
  std::string before_;
};

}  // namespace

// Kept: the parameters go as they stand, so that a file is sent as it is.
void handler::Send(CommandCall& call) {
  if (call.checkOnly()) return;
  const std::string suffix = call.P[4];
  const bool suffixEndsLine = !suffix.empty() && static_cast<unsigned char>(suffix.back()) < FirstOfText;
  std::string& terminator = call.house.options.LineTerminator;
  const OwnLineEnd lineEnd(terminator, suffixEndsLine ? "" : terminator);
  const std::string file = call.P[2];
  const std::string prefix = call.P[3];
  FileOperations(call.house)
      .Run(fileoperation::Send, file, call.ErrorDescription, prefix, suffix, call.outchannel);  // PUMP
  if (!call.ErrorDescription.empty()) call.next = Flow::Report;
}

void handler::Bell(CommandCall& call) {
  if (!call.checkOnly()) call.house.platform.face.Beep();
}

void handler::Clipboard(CommandCall& call) {
  if (call.checkOnly() || !ExpandParameters(call)) return;
  call.house.platform.face.SetClipboardText(call.P[2]);
}

void handler::Quiet(CommandCall& call) {
  if (call.checkOnly()) return;
  std::vector<int16>& codes = call.house.options.QuietChars;
  codes.clear();
  for (const char16_t code : ToUtf16(call.P[2])) codes.push_back(static_cast<int16>(code));
}

void handler::SysKey(CommandCall& call) {
  if (!ExpandParameters(call)) return;
  // Kept: the one word there is does nothing here; keys that are bound to it act in the entry line.
  if (call.count() == 0 || !SameText(call.P[2], "CLEAR_LINE")) call.fail("Unknown Syskey parameter");
}

}  // namespace corvid
