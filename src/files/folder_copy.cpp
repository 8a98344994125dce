// SPDX-License-Identifier: GPL-3.0-or-later
// Copying and searching folder trees, never through a link.
#include <utility>

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
      CopyFolderWhole(source, target, name);
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
  if (IsPrivateFile(name)) {  // a table that is read whole at each start
    platform_.files.WriteWhole(Inside(target, name), platform_.files.ReadWhole(Inside(source, name)), Privacy::Private);
  } else {
    platform_.files.Copy(Inside(source, name), Inside(target, name));
  }
}

// The folders still to be copied stand in a list, so that their depth is bounded by what the system can name alone.
// target is the folder that all is copied to: where it lies within the source it is not copied into itself.
void UserFolder::CopyFolderWhole(const std::string& source, const std::string& target, const std::string& name) {
  const std::string out = platform_.files.Absolute(Inside(target, ""));
  std::vector<std::string> left{name};  // relative to both
  while (!left.empty()) {
    const std::string folder = std::move(left.back());
    left.pop_back();
    const std::string from = Inside(source, folder), to = Inside(target, folder);
    if (Inside(platform_.files.Absolute(from + "/"), "") == Inside(out, "")) continue;
    platform_.files.CreateFolder(to);
    for (const std::string& file : platform_.files.FileNames(from)) CopyFile(file, from, to);
    for (const std::string& inner : platform_.files.FolderNames(from)) left.push_back(Inside(folder, inner));
  }
}

}  // namespace corvid
