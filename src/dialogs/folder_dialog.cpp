// SPDX-License-Identifier: GPL-3.0-or-later
// Choosing a file by walking through folders.
#include "core/keys.h"
#include "core/pattern.h"
#include "core/text.h"
#include "dialogs/prompts.h"

namespace corvid {

namespace {

constexpr std::string_view FolderMark = " [folder]";
constexpr std::string_view UpItem = ".. [folder]";

std::string FolderOf(const std::string& path) {
  const std::size_t slash = path.find_last_of("/\\");
  return slash == std::string::npos ? std::string() : path.substr(0, slash + 1);
}

std::string WithSlash(std::string folder) {
  if (folder.empty() || (folder.back() != '/' && folder.back() != '\\')) folder += '/';
  return folder;
}

}  // namespace

std::vector<std::string> Prompts::FolderItems(const std::string& folder, const std::string& wildcard) const {
  std::vector<std::string> items{std::string(UpItem)};
  for (const std::string& name : platform_.files.FolderNames(folder)) items.push_back(name + std::string(FolderMark));
  const std::string pattern = wildcard == "*.*" ? "*" : Upper(wildcard);
  for (const std::string& name : platform_.files.FileNames(folder))
    if (Like(Upper(name), pattern)) items.push_back(name);
  return items;
}

void Prompts::FolderDialog2(const std::string& StartFile, const std::string& wildcard, int16 fOptions,
                            const std::string& title, std::string& ErrorDescription, std::string& filename,
                            const std::string& StartingFolder) {
  ChooseFile("FOLDER2", StartFile, wildcard, fOptions, title, ErrorDescription, filename, StartingFolder);
}

void Prompts::ChooseFile(const std::string& FormCode, const std::string& StartFile, const std::string& wildcard,
                         int16 fOptions, const std::string& title, std::string& ErrorDescription, std::string& filename,
                         const std::string& StartingFolder) {
  std::string folder = WithSlash(platform_.files.Absolute(StartingFolder));
  filename.clear();
  bool accepted = false;
  const auto fill = [&] {
    DialogControl& list = dialog_.Control(ControlKind::List, 1);
    try {
      list.Items = FolderItems(folder, wildcard);
    } catch (const Fault& fault) {
      upcalls_.errors.ShowError(fault.what());
      return;
    }
    list.ListIndex = 0;
    list.Caption = folder;
    dialog_.Refresh(ControlKind::List, 1);
    dialog_.SetFocus(ControlKind::List, 1);
  };
  // A file's row puts its name into the box, so that OK takes it; a folder's row takes away what a row has put there.
  std::string fromList;
  const auto rowMet = [&] {
    const DialogControl& list = dialog_.Control(ControlKind::List, 1);
    const std::string row = list.ListIndex < 0 ? "" : list.Items.at(static_cast<std::size_t>(list.ListIndex));
    std::string& name = dialog_.Control(ControlKind::TextBox, 1).Text;
    const bool isFolder = row.ends_with(FolderMark);
    if (isFolder && (fromList.empty() || name != fromList)) return;
    fromList = isFolder ? "" : row;
    name = fromList;
    dialog_.Refresh(ControlKind::TextBox, 1);
  };
  // True when the chosen row was a folder, which is then shown.
  const auto descend = [&] {
    const DialogControl& list = dialog_.Control(ControlKind::List, 1);
    if (list.ListIndex < 0) return false;
    const std::string& row = list.Items.at(static_cast<std::size_t>(list.ListIndex));
    if (!row.ends_with(FolderMark)) {
      dialog_.Control(ControlKind::TextBox, 1).Text = row;
      return false;
    }
    const std::string name = row.substr(0, row.size() - FolderMark.size());
    folder = WithSlash(platform_.files.Absolute(folder + name));
    fill();
    rowMet();
    return true;
  };
  const auto accept = [&] {
    const std::string& name = dialog_.Control(ControlKind::TextBox, 1).Text;
    const std::string path = name.find('/') == 0 ? name : folder + name;
    if ((fOptions & FileMayBeMissing) == 0 && wildcard != "*.*" && !platform_.files.FileExists(path)) {
      platform_.face.Beep();
      upcalls_.speaker.Answer("There is no such file", Channel::System);
      return;
    }
    filename = path;
    accepted = true;
    dialog_.End(1);
  };
  const auto handler = [&](const DialogEventArgs& at) {
    if (at.Kind == ControlKind::List && at.Event == DialogEvent::DoubleClick) {
      if (!descend()) accept();
    } else if (at.Kind == ControlKind::List && at.Event == DialogEvent::Click) {
      rowMet();
    } else if (at.Kind == ControlKind::Button && at.Event == DialogEvent::Click) {
      if (at.Index == 1) {
        accept();
      } else {
        dialog_.End(2);
      }
    } else if (at.Kind == ControlKind::List && at.Event == DialogEvent::KeyDown && at.KeyOrState == keycode::Enter) {
      at.KeyOrState = 0;
      if (!descend()) accept();
    }
  };
  try {
    const std::vector<std::string> items = FolderItems(folder, wildcard);
    dialog_.Form_Init(FormCode, title, handler);
    dialog_.MakeLabel(500, 500, 295, 2000, "File name");
    dialog_.MakeTextBox(0, -200, 295, 4000, StartFile);
    dialog_.MakeList(-300, 500, 3000, 6000, items, 0, folder);
    dialog_.MakeCommand(-400, 500, 400, 1200, "OK", GenDialog::DefaultButton);
    dialog_.MakeCommand(0, -400, 0, 0, "Cancel", GenDialog::CancelButton);
    dialog_.SetCommandButtons(1, 2);
  } catch (const Fault& fault) {
    ErrorDescription = fault.what();
    return;
  }
  dialog_.ShowForm(500, 500);
  if (!accepted) filename.clear();
}

void Prompts::FolderDialog(const std::string& StartFile, const std::string& wildcard, int16 fOptions,
                           const std::string& title, std::string& ErrorDescription, std::string& filename,
                           const std::string& userFolder) {
  ChooseFile("FOLDER", StartFile, wildcard, fOptions, title, ErrorDescription, filename,
             userFolder + FolderOf(StartFile));
}

}  // namespace corvid
