// SPDX-License-Identifier: GPL-3.0-or-later
// CONFIGURE: sets one option, and carries out what the new value means for windows, colours and folders.
#include <array>
#include <optional>

#include "commands/command_call.h"
#include "commands/handlers.h"
#include "core/text.h"
#include "files/option_rows.h"
#include "sessions/output.h"

namespace corvid {

namespace {

constexpr int16 FirstColour = 30, LastColour = 37;  // codes whose names are colour names
constexpr int16 DefaultForeground = 39;
constexpr int32 PlatformColour = -1;  // what "Standard" means: the window's own

constexpr std::string_view BadColour =
    "Valid colour names are: Standard, Black, White, Blue, Red, green, yellow, cyan, magenta";

std::optional<int32> ColourOf(const ScriptState& script, const std::string& name) {
  for (int16 code = FirstColour; code <= LastColour; ++code) {
    const auto slot = static_cast<std::size_t>(code);
    if (Upper(script.ColourNames[slot]) == name) return script.BaseColours[slot];
  }
  if (name == "STANDARD") return PlatformColour;
  return std::nullopt;
}

// Both families of viewports are coloured, so that the colours hold when the display changes between them.
void ApplyBackground(CommandHouse& house, int32 colour) {
  for (int16 i = 0; i <= house.sessions.SessionHigh; ++i) {
    house.sessions.EditViewPortR[i]->SetBackColor(colour);
    house.sessions.editViewportT[i]->SetBackColor(colour);
  }
  house.buffers.EntryBox.SetBackColor(colour);
  house.script.ColourValues[FirstColour] = colour;  // black text stays readable on what was black
}

void ApplyForeground(CommandHouse& house, int32 colour) {
  for (int16 i = 0; i <= house.sessions.SessionHigh; ++i) {
    house.sessions.EditViewPortR[i]->SetSelColor(colour);
    house.sessions.editViewportT[i]->SetForeColor(colour);
  }
  house.buffers.EntryBox.SetForeColor(colour);
  house.script.ColourValues[LastColour] = colour;
  house.script.ColourValues[DefaultForeground] = colour;
  house.script.BaseColours[DefaultForeground] = colour;
}

void SetColour(CommandCall& call, const OptionRow& row, const OptionValue& value) {
  const std::optional<int32> colour = ColourOf(call.house.script, value.Text);
  if (!colour) return call.fail(std::string(BadColour));
  OptionTable::Store(row, value, call.house.options);
  if (row.Effect == OptionEffect::BackgroundColour) return ApplyBackground(call.house, *colour);
  ApplyForeground(call.house, *colour);
}

struct FolderRow {
  OptionEffect Effect;
  std::string OptionsState::*Folder;
  int16 SystemVariable;
};

constexpr std::array folderRows{
    FolderRow{OptionEffect::UserFolder, &OptionsState::UserDataFolder, sysvar::HOMEFOLDER},
    FolderRow{OptionEffect::SoundsFolder, &OptionsState::SoundsFolder, sysvar::SOUNDSFOLDER},
    FolderRow{OptionEffect::LogsFolder, &OptionsState::LogsFolder, sysvar::LOGSFOLDER},
};

void SetFolder(CommandCall& call, const OptionRow& row, const std::string& value) {
  OptionsState& options = call.house.options;
  // A saved options file that moved the folders would leave the player without the files that it was saved with.
  if (options.LoadingOptions) {
    options.FolderChangeAttempted = true;
    return;
  }
  for (const FolderRow& folder : folderRows) {
    if (folder.Effect != row.Effect) continue;
    Files& files = call.house.platform.files;
    if (value.empty() || !files.FolderExists(value))
      return call.fail("The folder \"" + value + std::string(row.BadType) + options.*folder.Folder);
    std::string path = files.Absolute(value);
    if (!path.ends_with('/')) path += '/';
    options.*folder.Folder = path;
    call.house.script.SystemValues[static_cast<std::size_t>(folder.SystemVariable)] = path;
  }
}

void SetOption(CommandCall& call, const OptionRow& row, const OptionValue& value) {
  CommandHouse& house = call.house;
  switch (row.Effect) {
    case OptionEffect::BackgroundColour:
    case OptionEffect::ForegroundColour:
      return SetColour(call, row, value);
    case OptionEffect::UserFolder:
    case OptionEffect::SoundsFolder:
    case OptionEffect::LogsFolder:
      return SetFolder(call, row, value.Text);
    case OptionEffect::SelectOutputWindow:
      if (OptionTable::Read(row, house.options).Number != value.Number)
        house.windows.SelectOutputWindow(value.Number != 0);
      return OptionTable::Store(row, value, house.options);
    case OptionEffect::ResizeForm:
      OptionTable::Store(row, value, house.options);
      return house.windows.ResizeForm();
    case OptionEffect::None:
      return OptionTable::Store(row, value, house.options);
  }
}

// A saved line terminator such as "%char(10)" is read before the expansion: functions may not be there to expand it.
bool TakeRawTerminator(CommandCall& call) {
  std::string terminator;
  if (!SameText(call.P[2], "LINETERMINATOR") || !OptionTable::ReadRawTerminator(call.P[3], terminator)) return false;
  call.house.options.LineTerminator = terminator;
  return true;
}

}  // namespace

void handler::Configure(CommandCall& call) {
  if (call.checkOnly() || TakeRawTerminator(call)) return;
  if (!ExpandParameters(call)) return;
  const OptionRow* row = OptionTable::Find(call.P[2]);
  if (row == nullptr) return call.fail("Bad configuration parameter");
  OptionValue value;
  std::string problem = OptionTable::Test(*row, call.P[3], value);
  if (!problem.empty()) return call.fail(std::move(problem));
  SetOption(call, *row, value);
}

}  // namespace corvid
