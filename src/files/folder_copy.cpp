// SPDX-License-Identifier: GPL-3.0-or-later
// Copying and searching folder trees: bounded, and never through a link.
#include "core/fault.h"
#include "core/pattern.h"
#include "core/text.h"
#include "files/user_folder.h"

namespace corvid {

namespace {

constexpr std::string_view StartScript = "start.set";
constexpr int FoldersPerPump = 200;  // a long search keeps the keys alive

std::string Inside(const std::string& folder, const std::string& name) {
  const bool closed = folder.ends_with('/') || folder.ends_with('\\');
  return folder + (closed ? "" : "/") + name;
}

bool IsDataFile(const std::string& name) {
  const std::string upper = Upper(name);
  return Like(upper, "*.SET") || Like(upper, "*.MUD") || Like(upper, "*.INI");
}

// Passwords lie in the character table.
bool IsPrivateFile(const std::string& name) {
  return EndsWithText(name, ".mud") || SameText(name, "speech.ini");
}

class FolderSearch {
 public:
  FolderSearch(Platform& platform, const std::string& name) : platform_(platform), name_(name) {}

  void Walk(const std::string& folder, int depth) {
    if (depth > UserFolder::MaxDepth || looked_ >= UserFolder::MaxFolders || platform_.events.Ending()) return;
    if (++looked_ % FoldersPerPump == 0) platform_.events.DoEvents();  // PUMP
    if (platform_.files.FileExists(Inside(folder, name_))) Found.push_back(folder);
    const std::vector<std::string> names = Names(folder);
    // Hidden folders last: caches must not use up the bound before the documents were seen.
    for (const bool hidden : {false, true}) {
      for (const std::string& name : names) {
        if (name.starts_with('.') == hidden) Walk(Inside(folder, name) + "/", depth + 1);
      }
    }
  }

  std::vector<std::string> Found;

 private:
  // A folder that may not be read has nothing for us.
  std::vector<std::string> Names(const std::string& folder) const {
    try {
      return platform_.files.FolderNames(folder);
    } catch (const Fault&) {
      return {};
    }
  }

  Platform& platform_;
  const std::string& name_;
  int looked_ = 0;
};

}  // namespace

std::vector<std::string> UserFolder::LocateFile(const std::string& name, const std::string& root) {
  FolderSearch search(platform_, name);
  if (platform_.files.FolderExists(root)) search.Walk(Inside(root, ""), 0);
  return search.Found;
}

void UserFolder::MoveDataFolder(const std::string& source, const std::string& target, std::string& ErrorDescription) {
  try {
    const std::vector<std::string> names = platform_.files.FileNames(source);
    for (const std::string& name : names) {
      if (IsDataFile(name) && !SameText(name, StartScript)) CopyFile(name, source, target);
    }
    for (const std::string& name : platform_.files.FolderNames(source)) {
      CopyFolderWhole(Inside(source, name), Inside(target, name), target, 1);
    }
    // Last: a folder that has it counts as filled, so a copy that broke off is offered again by the next start.
    for (const std::string& name : names) {
      if (SameText(name, StartScript)) CopyFile(name, source, target);
    }
  } catch (const Fault& fault) {
    ErrorDescription = fault.what();
  }
}

void UserFolder::CopyFile(const std::string& name, const std::string& source, const std::string& target) {
  if (IsPrivateFile(name)) {
    platform_.files.WriteWhole(Inside(target, name), platform_.files.ReadWhole(Inside(source, name)), Privacy::Private);
  } else {
    platform_.files.Copy(Inside(source, name), Inside(target, name));
  }
}

// keepOut is the folder that all is copied to: where it lies within the source it is not copied into itself.
void UserFolder::CopyFolderWhole(const std::string& source, const std::string& target, const std::string& keepOut,
                                 int depth) {
  const std::string from = platform_.files.Absolute(Inside(source, ""));
  const std::string out = platform_.files.Absolute(Inside(keepOut, ""));
  if (depth > MaxDepth || Inside(from, "") == Inside(out, "")) return;
  platform_.files.CreateFolder(target);
  for (const std::string& name : platform_.files.FileNames(source)) CopyFile(name, source, target);
  for (const std::string& name : platform_.files.FolderNames(source)) {
    CopyFolderWhole(Inside(source, name), Inside(target, name), keepOut, depth + 1);
  }
}

}  // namespace corvid
