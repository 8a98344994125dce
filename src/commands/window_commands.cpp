// SPDX-License-Identifier: GPL-3.0-or-later
// WINDOW and AUTOMENU: a script goes where the player could go.
#include <array>

#include "commands/command_call.h"
#include "commands/control_state.h"
#include "commands/handlers.h"
#include "core/text.h"
#include "files/buffers.h"
#include "input/menus.h"

namespace corvid {

namespace {

struct NamedBuffer {
  std::string_view Name;
  int16 Number;
};

constexpr std::array<NamedBuffer, 3> NamedBuffers{
    {{"ENTRY", buffer::EntryLine}, {"ERRORLOG", buffer::ErrorLog}, {"NEWLINES", buffer::NewLines}}};

// The number of a window, by its name or by a part of a loaded file's name; 0 for none. The folder does not count: a
// part of it would fit every file.
int16 BufferNamed(const BufferState& buffers, const std::string& text) {
  for (const NamedBuffer& named : NamedBuffers)
    if (SameText(named.Name, text)) return named.Number;
  const std::string wanted = Upper(text);
  for (int16 n = buffer::FirstScript; n <= buffers.BufferCount; ++n) {
    if (buffers.BufferFlags[n] == 0 || buffers.BufferFile[n].empty()) continue;
    if (Upper(Buffers::ShortName(buffers.BufferFile[n])).find(wanted) != std::string::npos) return n;
  }
  return 0;
}

}  // namespace

void handler::Window(CommandCall& call) {
  if (call.checkOnly() || !ExpandParameters(call)) return;
  CommandHouse& house = call.house;
  if (SameText(call.P[2], "OUTPUT")) {
    house.platform.face.SetFocus(MainFocus::Output);
    call.next = Flow::Leave;  // Kept: the rest of the line is not carried out.
    return;
  }
  const int16 number = BufferNamed(house.buffers, call.P[2]);
  if (number == 0) return call.fail("Window " + call.P[2] + " not found");
  if (number != house.buffers.CurrentBuffer) {
    house.scriptFiles.MoveBuffers(number);
    house.scriptFiles.SpeakWindowName();
  } else if (house.keyboard.OutputFocused) {
    house.platform.face.SetFocus(MainFocus::Entry);
  }
}

void handler::AutoMenu(CommandCall& call) {
  if (call.checkOnly() || !ExpandParameters(call)) return;
  // Kept: a name that has a path behind it is told as it was typed, and in upper case when it stands alone.
  const std::size_t bar = call.P[2].find('|');
  const bool walks = bar != std::string::npos;
  const std::string name = walks ? call.P[2].substr(0, bar) : Upper(call.P[2]);
  const std::string path = walks ? Upper(call.P[2].substr(bar + 1)) : "";
  const bool isMain = SameText(name, "MAIN");
  if (!isMain && !SameText(name, "WINDOW")) return call.fail("Bad menu name: " + name);
  call.house.menus.OpenMenu(isMain ? "MAIN//00" : "BUFFERMENU//00", path);  // PUMP
}

}  // namespace corvid
