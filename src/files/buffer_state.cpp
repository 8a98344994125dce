// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/buffer_state.h"

namespace corvid {

namespace {

constexpr std::size_t LogLimit = 30000;  // an error log longer than this ...
constexpr int32 LogKept = 20000;         // ... keeps only so much of its end

}  // namespace

void ResizeBuffers(BufferState& buffers, int16 Buffer) {
  const int16 before = buffers.BufferCount;
  buffers.BufferText.Resize(Buffer);
  buffers.BufferCaret.Resize(Buffer);
  buffers.BufferFile.Resize(Buffer);
  buffers.BufferFlags.Resize(Buffer);
  buffers.BufferOwners.Resize(Buffer);
  buffers.BufferLoaded.Resize(Buffer);
  buffers.BufferCount = Buffer;
  constexpr int16 types[] = {0, buffer::EntryType, buffer::ErrorLogType, buffer::NewLinesType};
  for (auto n = static_cast<int16>(before + 1); n <= Buffer && n < buffer::FirstScript; ++n) {
    buffers.BufferFlags[n] = types[n];
  }
}

void AppendErrorLog(BufferState& buffers, const std::string& text) {
  if (buffers.BufferCount < buffer::ErrorLog) ResizeBuffers(buffers, buffer::NewLines);
  const bool shown = buffers.CurrentBuffer == buffer::ErrorLog;
  // While the log is shown, the entry box holds the newest state of its text.
  if (shown) buffers.BufferText[buffer::ErrorLog] = buffers.EntryBox.Text();
  std::string& log = buffers.BufferText[buffer::ErrorLog];
  if (log.size() > LogLimit) {
    log.erase(0, log.size() - static_cast<std::size_t>(LogKept));
    if (shown) buffers.EntryBox.KeepLast(LogKept);
  }
  buffers.BufferCaret[buffer::ErrorLog] = static_cast<int32>(log.size());
  log += text;
  if (shown) buffers.EntryBox.Append(text);
  buffers.BufferFlags[buffer::ErrorLog] = static_cast<int16>(buffers.BufferFlags[buffer::ErrorLog] | buffer::News);
}

void AppendNewLine(BufferState& buffers, const std::string& line) {
  if (buffers.BufferCount < buffer::NewLines) return;
  buffers.BufferText[buffer::NewLines] += line + "\r\n";
  buffers.BufferFlags[buffer::NewLines] |= buffer::Modified;
  if (buffers.CurrentBuffer == buffer::NewLines) buffers.EntryBox.Append(line + "\r\n");
}

}  // namespace corvid
