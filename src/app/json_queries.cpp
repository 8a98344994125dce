// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/json_queries.h"

namespace corvid {

std::vector<JsonSession> ProgramQueries::SessionList() const {
  std::vector<JsonSession> list;
  const SessionState& sessions = corvid_.sessionState;
  for (int16 Index = 0; Index <= sessions.SessionHigh; ++Index) {
    const bool current = Index == corvid_.scriptState.CurrentSocket;
    if (sessions.SessionRef[Index].empty() && !current && !corvid_.platform.sockets.Connected(Index)) continue;
    const char* state = corvid_.platform.sockets.Connected(Index)    ? "connected"
                        : corvid_.platform.sockets.Connecting(Index) ? "connecting"
                                                                     : "closed";
    list.push_back({Index, sessions.SessionRef[Index], state, current});
  }
  return list;
}

JsonMenu ProgramQueries::MenuShown() const {
  const MenuState& menu = corvid_.menuState;
  if (!menu.ListOpen) return {};
  return {true, menu.CurrentMenu, menu.ListItems, menu.ListIndex};
}

bool ProgramQueries::BufferShown(int16 number, std::string& name, std::string& text) const {
  const BufferState& buffers = corvid_.bufferState;
  if (number < 1 || number > buffers.BufferCount) return false;
  name = corvid_.buffers.GetBufferName(number);
  // What is shown is edited in the entry box; the stored text follows when another buffer is shown.
  text = number == buffers.CurrentBuffer ? buffers.EntryBox.Text() : buffers.BufferText[number];
  return true;
}

}  // namespace corvid
