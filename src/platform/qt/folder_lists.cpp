// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/folder_lists.h"

#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <utility>

namespace corvid {

namespace fs = std::filesystem;

namespace {

// Some disks count a folder's time in steps of two seconds, so a list that is not older than this may miss a change.
constexpr double SettledSeconds = 3;
// Some (of telephones, of other systems) do not change it at all.
constexpr double LongestSeconds = 5;
constexpr std::size_t MostFolders = 32;

double Seconds(const timespec& from, const timespec& to) {
  return static_cast<double>(to.tv_sec - from.tv_sec) + static_cast<double>(to.tv_nsec - from.tv_nsec) / 1e9;
}

bool Same(const timespec& one, const timespec& other) {
  return one.tv_sec == other.tv_sec && one.tv_nsec == other.tv_nsec;
}

EntryKind KindOf(const fs::directory_entry& entry) {
  std::error_code ignored;
  if (entry.is_symlink(ignored)) return EntryKind::Link;
  if (entry.is_directory(ignored)) return EntryKind::Folder;
  return entry.is_regular_file(ignored) ? EntryKind::File : EntryKind::Other;
}

std::vector<FolderEntry> Read(const std::string& folder, std::error_code& error) {
  std::vector<FolderEntry> entries;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error))
    entries.push_back({entry->path().filename().string(), KindOf(*entry)});
  std::sort(entries.begin(), entries.end(),
            [](const FolderEntry& one, const FolderEntry& other) { return one.Name < other.Name; });
  return entries;
}

}  // namespace

FolderLists::FolderLists(Now now) : now_(std::move(now)) {}

timespec FolderLists::SystemNow() {
  timespec now{};
  clock_gettime(CLOCK_REALTIME, &now);
  return now;
}

bool FolderLists::Holds(const Kept& kept, const std::string& folder, const timespec& now) const {
  struct stat facts {};
  if (stat(folder.c_str(), &facts) != 0) return false;
  const double age = Seconds(kept.Listed, now);
  return facts.st_dev == kept.Device && facts.st_ino == kept.Number && Same(facts.st_mtim, kept.Changed) &&
         Seconds(kept.Changed, kept.Listed) >= SettledSeconds && age >= 0 && age <= LongestSeconds;
}

const std::vector<FolderEntry>& FolderLists::List(const std::string& folder, std::error_code& error) {
  error.clear();
  const std::string path = folder.size() > 1 && folder.ends_with('/') ? folder.substr(0, folder.size() - 1) : folder;
  const timespec now = now_();
  const auto known = kept_.find(path);
  if (known != kept_.end() && Holds(known->second, path, now)) return known->second.Entries;
  if (known == kept_.end() && kept_.size() >= MostFolders) kept_.clear();
  Kept& kept = kept_[path];
  // The time is taken first: a change while the folder is read makes the list one that does not hold.
  struct stat facts {};
  const bool there = stat(path.c_str(), &facts) == 0;
  kept = {{}, facts.st_dev, facts.st_ino, facts.st_mtim, now};
  ++listings_;
  kept.Entries = Read(path, error);
  if (error || !there) kept.Changed = kept.Listed;  // not to be used again
  return kept.Entries;
}

}  // namespace corvid
