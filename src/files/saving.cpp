// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/saving.h"

#include <algorithm>
#include <optional>

#include "core/fault.h"
#include "core/text.h"
#include "core/trap.h"
#include "files/buffers.h"
#include "files/option_rows.h"

namespace corvid {

namespace {

constexpr std::string_view OptionsFile = "corvid.set";
constexpr std::string_view FolderNote =
    "Attempt to change the UserPath, SoundsPath, or LogsPath values in CORVID.SET.  These commands have been removed "
    "from the Set file. ";
constexpr int16 DefaultMinLength = 20;
constexpr int16 DefaultPercent = 70;

// A line like "#Configure CommandChar {~#}": the character in front of the words, the one behind the brace, and what
// follows that one up to the last brace.
struct CharacterLine {
  char First = 0, Escape = 0;
  std::string Value;
};

std::optional<CharacterLine> ReadCharacterLine(std::string_view line, std::string_view words) {
  if (line.size() < words.size() + 2 || !SameText(line.substr(1, words.size()), words)) return std::nullopt;
  const std::string_view value = line.substr(words.size() + 1);
  return CharacterLine{line[0], value[0], std::string(value.substr(1, std::max<std::size_t>(value.rfind('}'), 1) - 1))};
}

std::string_view LineOf(std::string_view text, std::size_t number) {
  for (; number > 1; --number) {
    const std::size_t end = text.find('\n');
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  }
  return text.substr(0, text.find_first_of("\r\n"));
}

}  // namespace

void Saving::SaveOptions(std::string& text) const {
  for (const OptionRow* row : OptionTable::SavedRows()) {
    text += options_.CommandChar + OptionTable::SavedLine(*row, options_) + "\r\n";
  }
}

bool Saving::SaveOptionsFile() {
  std::string text;
  SaveOptions(text);
  return WriteFile(options_.UserDataFolder + std::string(OptionsFile), text);
}

void Saving::InitializeConfigs() {
  OptionTable::SetDefaults(options_);
  options_.TriggerColourNeeded = false;
  options_.AsciiMinLength = DefaultMinLength;
  options_.AsciiPercent = DefaultPercent;
  const std::string path = options_.UserDataFolder + std::string(OptionsFile);
  if (!platform_.files.FileExists(path)) return;
  TakeReadingCharacters(path);
  options_.LoadingOptions = true;
  options_.FolderChangeAttempted = false;
  int16 outchannel = CurrentSession;
  bufferFiles_.LoadSet(path, load::OptionsOnly, outchannel);  // PUMP
  options_.LoadingOptions = false;
  if (!options_.FolderChangeAttempted) return;
  options_.FolderChangeAttempted = false;
  upcalls_.prompter.MsgBox(std::string(FolderNote), box::OkOnly, "Note");  // PUMP
  SaveOptionsFile();
}

// The file begins with the characters it was written with; without them a changed command character could never be
// read back. One that is the comment character or the separator by default needs the file's own for these as well.
void Saving::TakeReadingCharacters(const std::string& path) {
  std::string text;
  try {
    text = platform_.files.ReadWhole(path);
  } catch (const Fault&) {
    return;  // the load that follows tells it
  }
  constexpr std::size_t commandLine = 1, escapeLine = 2, separatorLine = 3, commentLine = 6;
  const auto command = ReadCharacterLine(LineOf(text, commandLine), "Configure CommandChar {");
  if (!command) return;
  const auto escape = ReadCharacterLine(LineOf(text, escapeLine), "Configure EscapeChar {");
  const auto separator = ReadCharacterLine(LineOf(text, separatorLine), "Configure CommandSeparator {");
  const auto comment = ReadCharacterLine(LineOf(text, commentLine), "Configure CommentChar {");
  options_.CommandChar = command->First;
  if (escape && escape->First == command->First) options_.EscapeChar = escape->Escape;
  if (separator && options_.CommandSeparator.find(command->First) != std::string::npos) {
    options_.CommandSeparator = separator->Value;
  }
  if (comment && !comment->Value.empty() && options_.CommentChar == command->First) {
    options_.CommentChar = comment->Value[0];
  }
}

// Private: what a script remembers may be anything, passwords among it.
bool Saving::WriteFile(const std::string& filename, const std::string& text) {
  try {
    KeepBeside(filename);
    platform_.files.WriteWhole(filename, text, Privacy::Private);
    return true;
  } catch (const Fault&) {
    upcalls_.prompter.MsgBox("Error creating file " + filename, box::OkOnly | box::Exclamation, "Error");  // PUMP
    return false;
  }
}

// What could not be read, or failed on the way, is not in memory: the file that is written now lacks it.
void Saving::KeepBeside(const std::string& filename) {
  if (!bufferFiles_.LoadedInPart(filename) || !platform_.files.FileExists(filename)) return;
  const std::string stem = EndsWithText(filename, ".set") ? filename.substr(0, filename.size() - 4) : filename;
  platform_.files.Copy(filename, stem + ".bad");
  bufferFiles_.ForgetLoad(filename);
}

bool Saving::WriteAltMethod(OwnerId Owner, const std::string& filename, bool SaveVariables) {
  const int16 channel = FindChannel(Owner);
  const std::string ref = channel >= 0 ? sessions_.SessionRef[channel] : sessions_.CharacterRef[Owner];
  std::string text = options_.CommandChar + ("Char " + ref + "\r\n\r\n");
  if (SaveVariables) {
    Save(save::Variables, 0, text);
    Save(save::Variables, Owner, text);
    Save(save::Defaults, 0, text);
    Save(save::Defaults, Owner, text);
  }
  Save(save::Classes, 0, text);
  for (const OwnerId owner : {OwnerId{0}, Owner}) {
    for (const int16 kind : {save::Keys, save::Aliases, save::Triggers}) Save(kind, owner, text);
  }
  Save(save::TabWords, Owner, text);
  Save(save::Directions, Owner, text);
  return WriteFile(filename, text);
}

bool Saving::WriteImage(const std::string& filename) {
  std::string text = options_.CommandChar + std::string("KillAll\r\n");
  SaveOptions(text);
  for (const int16 kind :
       {save::Directions, save::Variables, save::Aliases, save::Keys, save::Triggers, save::Classes}) {
    Save(kind, 0, text);
  }
  for (int16 i = 0; i <= sessions_.SessionHigh; ++i) {
    const OwnerId owner = script_.SocketOwner[i];
    if (owner <= 0 || sessions_.SessionRef[i].empty()) continue;
    text += options_.CommandChar + ("OffLine " + sessions_.SessionRef[i] + " NoLoad\r\n\r\n");
    for (const int16 kind : {save::Variables, save::Keys, save::Aliases, save::Triggers, save::TabWords}) {
      Save(kind, owner, text);
    }
  }
  return WriteFile(filename, text);
}

bool Saving::SaveVariables(OwnerId ownedBy) {
  const int16 channel = FindChannel(ownedBy);
  if (channel < 0) return false;
  std::string text;
  Save(save::Variables, ownedBy, text);
  return WriteFile(CharacterFile(channel, "-var.set"), text);
}

void Saving::AutoSave() {
  if (!options_.AutoSave) return;
  Trap trap{upcalls_.errors, "AutoSave"};
  for (int16 i = 0; i <= sessions_.SessionHigh; ++i) {
    trap.Step([&] {
      const OwnerId owner = script_.SocketOwner[i];
      if (owner <= 0 || (sessions_.CharFlags[owner] & charflag::SimpleControl) == 0) return;
      WriteAltMethod(owner, CharacterFile(i, "-char.set"), false);  // PUMP
    });
  }
  SaveChangedScripts("AutoSave");
}

bool Saving::SaveChangedScripts(const std::string& procedure) {
  Trap trap{upcalls_.errors, procedure};
  bool saved = trap.Step([&] { bufferFiles_.SaveCurrentBuffer(); });
  for (int16 n = buffer::FirstScript; n <= buffers_.BufferCount; ++n) {
    saved = trap.Step([&] {
      if (bufferFiles_.IsModified(n)) bufferFiles_.WriteBuffer(n);
    }) && saved;
  }
  return saved;
}

std::string Saving::CharacterFile(int16 Index, const std::string& ending) const {
  return sessions_.MudFolder[Index] + FileStem(sessions_.SessionRef[Index]) + ending;
}

int16 Saving::FindChannel(OwnerId ownedBy) const {
  if (ownedBy <= 0) return -1;
  for (int16 i = 0; i <= sessions_.SessionHigh && i <= script_.SocketOwner.UBound(); ++i) {
    if (script_.SocketOwner[i] == ownedBy && !sessions_.SessionRef[i].empty()) return i;
  }
  return -1;
}

}  // namespace corvid
