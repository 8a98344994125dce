// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/buffers.h"

#include "core/fault.h"
#include "core/text.h"
#include "core/trap.h"
#include "script/scanner.h"
#include "script/symbols.h"

namespace corvid {

namespace {

constexpr int16 CheckRun = bufferoption::CheckOnly | bufferoption::Strict | bufferoption::SkipVariables;
constexpr std::string_view EndlessLoad = "recursive check - probable infinite loop detected";

// Lines with any line end, each ended by CR LF: the form in which scripts lie in memory.
std::string WithLineEnds(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size() + bytes.size() / 16);
  std::size_t i = 0;
  while (i < bytes.size()) {
    const std::size_t end = std::min(bytes.find_first_of("\r\n", i), bytes.size());
    text.append(bytes.substr(i, end - i)).append("\r\n");
    i = end + (bytes.substr(end, 2) == "\r\n" ? 2 : 1);
  }
  return text;
}

}  // namespace

// ---- loading ----

void Buffers::LoadSet(const std::string& filename, int16 inflags, int16& outchannel) {
  if (nestedOut_) return;
  if (nesting_ >= MaxNesting) {
    nestedOut_ = true;
    upcalls_.errors.ErrorReport(std::string(EndlessLoad), filename, 0, option::Interactive);
    return;
  }
  ++nesting_;
  Trap trap{upcalls_.errors, "Loadset", {filename, std::to_string(inflags)}};
  trap.Step([&] { LoadSteps(filename, inflags, outchannel); });
  if (--nesting_ == 0) nestedOut_ = false;
}

void Buffers::LoadSteps(const std::string& filename, int16 inflags, int16& outchannel) {
  const std::string path = AbsoluteName(filename);
  if (path.empty()) return;
  const bool optionsOnly = (inflags & load::OptionsOnly) != 0;
  const int16 number = OpenBuffers(path, buffer::Script);  // PUMP
  if (number < 1) return;
  if (outchannel == CurrentSession) outchannel = script_.CurrentSocket;
  const bool runs = (inflags & load::NoExecution) == 0;
  if (runs) loadedInPart_.insert(path);  // until it is through
  ReadInto(number, path);
  const bool known = outchannel >= 0 && outchannel <= script_.SocketOwner.UBound();
  buffers_.BufferOwners[number] = known ? script_.SocketOwner[outchannel] : script_.CurrentOwner;
  if (!optionsOnly) script_.DefiningBuffer = number;

  const int16 mode = runs ? bufferoption::Strict : CheckRun;
  const int32 position = scanner_.ExecuteBuffer(buffers_.BufferText[number], mode, outchannel);  // PUMP
  // The script may have closed its own buffer, or another file may be there by now.
  const bool there = Holds(number, path);
  if (position != 0) {
    AppendErrorLog(buffers_, "\r\n-- Error found in file " + path + "\r\n===============\r\n");
    if (there) LoadFailed(number, path, inflags, position);
  } else {
    if (runs) loadedInPart_.erase(path);
    if (there) SetFlags(number, 0, buffer::News);
    if (there && optionsOnly) return FreeSlot(number);
  }
  if (!there) return;
  if (options_.ScriptReadOnly) {
    SetFlags(number, buffer::ReadOnly, 0);
  } else {
    SetFlags(number, 0, buffer::ReadOnly);
  }
  if (buffers_.CurrentBuffer == number) {
    buffers_.EntryBox.SetLocked((buffers_.BufferFlags[number] & buffer::ReadOnly) != 0);
  }
}

bool Buffers::LoadedInPart(const std::string& filename) const {
  return !loadedInPart_.empty() && loadedInPart_.contains(AbsoluteName(filename));
}

void Buffers::ForgetLoad(const std::string& filename) {
  loadedInPart_.erase(AbsoluteName(filename));
}

void Buffers::ReadInto(int16 number, const std::string& path) {
  try {
    const std::string text = WithLineEnds(platform_.files.ReadWhole(path));
    buffers_.BufferLoaded[number] = text;
    SetBufferText(number, text);
  } catch (const Fault&) {
    // A reload that fails leaves the text of the first load alone.
    if (buffers_.BufferText[number].empty()) FreeSlot(number);
    throw;
  }
}

void Buffers::LoadFailed(int16 number, const std::string& path, int16 inflags, int32 position) {
  constexpr int16 closed = buffer::Inactive | buffer::ReadOnly;
  const bool optionsOnly = (inflags & load::OptionsOnly) != 0;
  SetFlags(number, static_cast<int16>(buffer::News | (optionsOnly ? closed : 0)), optionsOnly ? int16{0} : closed);
  if (Holds(number, path)) ShowBufferAt(number, position);
}

bool Buffers::Holds(int16 number, const std::string& path) const {
  return number <= buffers_.BufferCount && buffers_.BufferFlags[number] != 0 &&
         SameText(buffers_.BufferFile[number], path);
}

std::string Buffers::AbsoluteName(const std::string& filename) const {
  if (filename.empty()) return "";
  const bool absolute = filename[0] == '/' || filename[0] == '\\' || (filename.size() > 1 && filename[1] == ':');
  return platform_.files.Absolute(absolute ? filename : options_.UserDataFolder + filename);
}

int16 Buffers::OpenBuffers(const std::string& filename, int16 flags) {
  const int16 loaded = GetBufferNumber(filename);
  if (loaded >= buffer::FirstScript && (flags & buffer::Script) != 0) {
    if (!SaveIfBufModified(loaded)) return -1;  // PUMP: the buffer may be gone
    if (Holds(loaded, filename)) return loaded;
  }
  const int16 number = FreeBuffer();
  buffers_.BufferText[number].clear();
  buffers_.BufferLoaded[number].clear();
  buffers_.BufferCaret[number] = 0;
  buffers_.BufferFile[number] = filename;
  buffers_.BufferOwners[number] = script_.CurrentOwner;
  buffers_.BufferFlags[number] = flags != 0 ? flags : buffer::Script;
  return number;
}

int16 Buffers::FreeBuffer() {
  for (int16 n = buffer::FirstScript; n <= buffers_.BufferCount; ++n) {
    if (buffers_.BufferFlags[n] == 0) return n;
  }
  if (buffers_.BufferCount < buffer::NewLines) ResizeBuffers(buffer::NewLines);
  if (buffers_.BufferCount == INT16_MAX) throw Fault(FaultKind::Overflow, "Too many script files are open");
  ResizeBuffers(static_cast<int16>(buffers_.BufferCount + 1));
  return buffers_.BufferCount;
}

void Buffers::FreeSlot(int16 number) {
  buffers_.BufferText[number].clear();
  buffers_.BufferLoaded[number].clear();
  buffers_.BufferFile[number].clear();
  buffers_.BufferCaret[number] = 0;
  buffers_.BufferOwners[number] = 0;
  buffers_.BufferFlags[number] = 0;
  if (script_.DefiningBuffer == number) script_.DefiningBuffer = 0;
  if (buffers_.CurrentBuffer == number) MoveBuffers(buffer::EntryLine);
}

// ---- saving ----

void Buffers::WriteBuffer(int16 BufferNumber) {
  if (buffers_.BufferFile[BufferNumber].empty()) return;
  platform_.files.WriteWhole(buffers_.BufferFile[BufferNumber], buffers_.BufferText[BufferNumber], Privacy::Shared);
  buffers_.BufferLoaded[BufferNumber] = buffers_.BufferText[BufferNumber];
  MarkModified(BufferNumber);
}

bool Buffers::SaveBuffer(int16 BufferNumber) {
  const std::string file = buffers_.BufferFile[BufferNumber];
  Trap trap{upcalls_.errors, "SaveBuffer", {std::to_string(BufferNumber), file}};
  if (trap.Step([&] { WriteBuffer(BufferNumber); })) return true;
  upcalls_.prompter.MsgBox("Error creating file " + file, box::OkOnly | box::Exclamation, "Error");  // PUMP
  return false;
}

void Buffers::SaveCurrentBuffer() {
  const int16 current = buffers_.CurrentBuffer;
  if (current < 1 || current > buffers_.BufferCount) return;
  buffers_.BufferCaret[current] = buffers_.EntryBox.SelStart();
  // What is shown of a read-only script is never taken over its text.
  if ((buffers_.BufferFlags[current] & buffer::ReadOnly) != 0) return;
  buffers_.BufferText[current] = buffers_.EntryBox.Text();
  MarkModified(current);
}

bool Buffers::SaveIfBufModified(int16 bufnum) {
  if (bufnum == buffers_.CurrentBuffer) SaveCurrentBuffer();
  const std::string file = buffers_.BufferFile[bufnum];
  if (file.empty() || !IsModified(bufnum)) return true;
  const int16 answer =
      upcalls_.prompter.MsgBox("The " + GetBufferName(bufnum) + " belonging to file " + ShortName(file) +
                                   " has been modified. Would you like to save this file?",
                               box::YesNoCancel, "Modified Buffer");  // PUMP
  if (answer == box::ResultCancel) return false;
  if (answer != box::ResultYes || !Holds(bufnum, file)) return true;
  return SaveBuffer(bufnum);
}

bool Buffers::CloseBuffer(int16 bufnum) {
  if (bufnum < buffer::FirstScript || bufnum > buffers_.BufferCount || buffers_.BufferFlags[bufnum] == 0) return false;
  const std::string file = buffers_.BufferFile[bufnum];
  if (buffers_.CurrentBuffer == bufnum && !FindNextBuffer()) platform_.face.Beep();
  if (!SaveIfBufModified(bufnum)) return false;  // PUMP
  if (!Holds(bufnum, file)) return true;
  symbols_.RemoveCommands(bufnum);
  symbols_.CompressCommand(windowtype::All);
  FreeSlot(bufnum);
  return true;
}

bool Buffers::IsModified(int16 Buffer) const {
  return buffers_.BufferText[Buffer] != buffers_.BufferLoaded[Buffer];
}

void Buffers::MarkModified(int16 Buffer) {
  if (Buffer < buffer::FirstScript) return;
  if (IsModified(Buffer)) {
    SetFlags(Buffer, buffer::Modified, 0);
  } else {
    SetFlags(Buffer, 0, buffer::Modified);
  }
}

void Buffers::SetFlags(int16 Buffer, int16 set, int16 clear) {
  buffers_.BufferFlags[Buffer] = static_cast<int16>((buffers_.BufferFlags[Buffer] & ~clear) | set);
}

void Buffers::SetBufferText(int16 Buffer, const std::string& text) {
  buffers_.BufferText[Buffer] = text;
  if (Buffer == buffers_.CurrentBuffer) {
    const int32 caret = buffers_.EntryBox.SelStart();
    buffers_.EntryBox.SetText(text);
    buffers_.EntryBox.SetSelStart(caret);
  }
  MarkModified(Buffer);
}

// ---- names and paging ----

std::string Buffers::GetBufferName(int16 Buffer) const {
  constexpr std::string_view names[] = {"Entry",      "Keys",    "Aliases",   "Triggers",
                                        "Dictionary", "Script ", "Error Log", "New Lines"};
  int type = 1;
  for (const std::string_view name : names) {
    if ((buffers_.BufferFlags[Buffer] & type) != 0) return std::string(name);
    type *= 2;
  }
  return "";
}

int16 Buffers::GetBufferNumber(const std::string& fn) const {
  if (fn.empty()) return 0;
  for (int16 n = 1; n <= buffers_.BufferCount; ++n) {
    if (SameText(buffers_.BufferFile[n], fn)) return n;
  }
  return 0;
}

void Buffers::ResizeBuffers(int16 Buffer) {
  corvid::ResizeBuffers(buffers_, Buffer);
}

void Buffers::MoveBuffers(int16 NewBuffer) {
  SaveCurrentBuffer();
  const std::string text = buffers_.BufferText[NewBuffer];
  buffers_.CurrentBuffer = NewBuffer;
  TextModel& entry = buffers_.EntryBox;
  entry.SetLocked(false);
  entry.SetText(text);
  entry.SetSelStart(buffers_.BufferCaret[NewBuffer]);
  entry.SetLocked((buffers_.BufferFlags[NewBuffer] & buffer::ReadOnly) != 0);
  platform_.face.SetEntryLabel(Trim(GetBufferName(NewBuffer)) + RTrim(" " + ShortName(buffers_.BufferFile[NewBuffer])));
}

bool Buffers::FindNextBuffer() {
  const int16 count = buffers_.BufferCount;
  int16 next = buffers_.CurrentBuffer;
  for (int16 step = 1; step < count; ++step) {
    next = static_cast<int16>(next % count + 1);
    if (buffers_.BufferFlags[next] == 0) continue;
    MoveBuffers(next);
    SpeakWindowName();
    return true;
  }
  return false;
}

void Buffers::SpeakWindowName() {
  const int16 current = buffers_.CurrentBuffer;
  upcalls_.speaker.SpeakOut(GetBufferName(current) + " " + ShortName(buffers_.BufferFile[current]), Channel::System, 0);
}

void Buffers::ShowBufferAt(int16 Buffer, int32 caret) {
  MoveBuffers(Buffer);
  SpeakWindowName();
  buffers_.EntryBox.SetSelStart(caret);
}

std::string Buffers::ShortName(std::string_view path) {
  const std::size_t slash = path.find_last_of("/\\");
  return std::string(slash == std::string_view::npos ? path : path.substr(slash + 1));
}

}  // namespace corvid
