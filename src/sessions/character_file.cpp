// SPDX-License-Identifier: GPL-3.0-or-later
#include "sessions/character_file.h"

#include <array>
#include <optional>
#include <utility>

#include "core/fault.h"
#include "core/number.h"
#include "core/scramble.h"
#include "core/text.h"

namespace corvid {

namespace {

constexpr std::size_t TextFields = 7;
constexpr int16 MostCharacters = INT16_MAX - 1;  // a walk over all rows must be able to step behind the last

void ResizeTable(CharacterTable& table, int16 count) {
  table.CharacterCount = count;
  table.MudName.Resize(count);
  table.HostName.Resize(count);
  table.Notes.Resize(count);
  table.Port.Resize(count);
  table.CharacterName.Resize(count);
  table.CharacterRef.Resize(count);
  table.Password.Resize(count);
  table.CharFlags.Resize(count);
  table.LastConnected.Resize(count);
}

std::string Quoted(const std::string& text) {
  return "\"" + Replace(text, "\"", "\"\"") + "\"";
}

// Walks over the text, field by field.
class RecordReader {
 public:
  explicit RecordReader(std::string_view text) : text_(text) {}

  bool AtEnd() {
    while (StartsWith("\r\n")) place_ += 2;
    return place_ >= text_.size();
  }

  // A text in double quotes. A quote inside it is doubled; one that stands alone is taken as it is, unless a comma or
  // the line's end follows.
  std::optional<std::string> Text() {
    if (!StartsWith("\"")) return std::nullopt;
    ++place_;
    std::string value;
    while (place_ < text_.size()) {
      const char c = text_[place_++];
      if (c == '"' && StartsWith("\"")) {
        ++place_;
      } else if (c == '"' && (StartsWith(",") || LineEnd())) {
        return value;
      }
      value += c;
    }
    return std::nullopt;
  }

  // Whatever stands before the next comma or the line's end.
  std::string Bare() {
    const std::size_t start = place_;
    while (place_ < text_.size() && text_[place_] != ',' && !StartsWith("\r\n")) ++place_;
    return Trim(text_.substr(start, place_ - start));
  }

  bool Comma() {
    if (!StartsWith(",")) return false;
    ++place_;
    return true;
  }

  std::string Date() {
    if (!StartsWith("\"")) return Bare();
    return Text().value_or("");
  }

  bool LineEnd() const { return place_ >= text_.size() || StartsWith("\r\n"); }

 private:
  bool StartsWith(std::string_view start) const { return text_.substr(place_, start.size()) == start; }

  std::string_view text_;
  std::size_t place_ = 0;
};

// False for what is no 16-bit number, be it by its exponent.
bool ReadFlags(const std::string& text, int16& flags) {
  if (!IsNumeric(text)) return false;
  try {
    flags = ToInt16(Val(text));
    return true;
  } catch (const Fault&) {
    return false;
  }
}

bool ReadRecord(RecordReader& reader, CharacterTable& table) {
  std::array<std::string, TextFields> texts;
  for (std::string& text : texts) {
    std::optional<std::string> value = reader.Text();
    if (!value || !reader.Comma()) return false;
    text = std::move(*value);
  }
  int16 flags = 0;
  if (!ReadFlags(reader.Bare(), flags)) return false;
  const std::string date = reader.Comma() ? reader.Date() : "";
  if (!reader.LineEnd()) return false;

  const int16 row = AddCharacter(table);
  const std::array<Table<std::string>*, TextFields> columns{&table.MudName, &table.HostName,      &table.Notes,
                                                            &table.Port,    &table.CharacterName, &table.CharacterRef,
                                                            &table.Password};
  for (std::size_t i = 0; i < TextFields; ++i) (*columns[i])[row] = std::move(texts[i]);
  table.CharFlags[row] = flags;
  table.LastConnected[row] = date;
  return true;
}

}  // namespace

std::string FormatCharacters(const CharacterTable& table) {
  std::string text;
  for (int16 row = 1; row <= table.CharacterCount; ++row) {
    for (const Table<std::string>* column : {&table.MudName, &table.HostName, &table.Notes, &table.Port,
                                             &table.CharacterName, &table.CharacterRef, &table.Password})
      text += Quoted((*column)[row]) + ",";
    text += std::to_string(table.CharFlags[row]) + "," + Quoted(table.LastConnected[row]) + "\r\n";
  }
  return text;
}

bool ParseCharacters(std::string_view text, CharacterTable& table) {
  CharacterTable read;
  RecordReader reader(text);
  while (!reader.AtEnd())
    if (read.CharacterCount == MostCharacters || !ReadRecord(reader, read)) return false;
  table = std::move(read);
  return true;
}

int16 AddCharacter(CharacterTable& table) {
  if (table.CharacterCount == MostCharacters) throw Fault(FaultKind::Overflow, "The table of characters is full");
  ResizeTable(table, AddInt16(table.CharacterCount, 1));
  return table.CharacterCount;
}

int16 FindCharacter(const CharacterTable& table, std::string_view reference) {
  for (int16 row = 1; row <= table.CharacterCount; ++row)
    if (SameText(table.CharacterRef[row], reference)) return row;
  return 0;
}

void ClearCharacter(CharacterTable& table, int16 row) {
  for (Table<std::string>* column : {&table.MudName, &table.HostName, &table.Notes, &table.Port, &table.CharacterName,
                                     &table.CharacterRef, &table.Password, &table.LastConnected})
    (*column)[row].clear();
  table.CharFlags[row] = 0;
}

bool IsClear(const CharacterTable& table, int16 row) {
  for (const Table<std::string>* column : {&table.MudName, &table.HostName, &table.Notes, &table.Port,
                                           &table.CharacterName, &table.CharacterRef, &table.Password})
    if (!(*column)[row].empty()) return false;
  return true;
}

CharacterFile::CharacterFile(SessionState& sessions, OptionsState& options, Platform& platform, Upcalls& upcalls)
    : sessions_(sessions), options_(options), platform_(platform), upcalls_(upcalls) {}

bool CharacterFile::ReadMudFile() {
  const std::string path = options_.UserDataFolder + "Character.mud";
  CharacterTable& table = sessions_;
  bool read = false;
  if (platform_.files.FileExists(path)) {
    try {
      read = ParseCharacters(Scramble(platform_.files.ReadWhole(path)), table) && table.CharacterCount > 0;
      if (!read) upcalls_.errors.UnknownError("The character file is damaged", "ReadMudFile", {path});
    } catch (const Fault& fault) {
      upcalls_.errors.UnknownError(fault.what(), "ReadMudFile", {path});
    }
    unreadable_ = !read && !KeepBeside();
  }
  if (!read) {
    ResizeTable(table, 0);
    const int16 row = AddCharacter(table);
    table.MudName[row] = table.HostName[row] = table.CharacterName[row] = "QUICKCONNECT";
  }
  for (int16 row = 1; row <= table.CharacterCount; ++row)
    if (table.CharacterName[row] == "QUICKCONNECT" && table.MudName[row] == "MUD")
      sessions_.ConnectHost = table.HostName[row];
  return read;
}

// The next connection writes the table, so that a player with a damaged file would lose it for good.
bool CharacterFile::KeepBeside() {
  try {
    platform_.files.WriteWhole(options_.UserDataFolder + "Character.bad",
                               platform_.files.ReadWhole(options_.UserDataFolder + "Character.mud"), Privacy::Private);
    return true;
  } catch (const Fault&) {
    return false;
  }
}

void CharacterFile::writeMudFile() {
  // The file is replaced whole by the platform, so that passwords never lie in the clear on the disk, not even for the
  // moment that a scratch file would exist.
  try {
    if (unreadable_ && !KeepBeside()) throw Fault(FaultKind::FileIo, "The old file is not kept");
    unreadable_ = false;
    platform_.files.WriteWhole(options_.UserDataFolder + "Character.mud", Scramble(FormatCharacters(sessions_)),
                               Privacy::Private);
  } catch (const Fault&) {
    upcalls_.errors.ShowError("Error opening Character.mud file in " + options_.UserDataFolder);
  }
}

}  // namespace corvid
