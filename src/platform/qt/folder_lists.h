// SPDX-License-Identifier: GPL-3.0-or-later
// What folders hold, listed from the disk and remembered for a while: a game that names a sound in every line must not
// have the folder listed for each. For one thread.
#pragma once

#include <ctime>
#include <functional>
#include <map>
#include <string>
#include <system_error>
#include <vector>

namespace corvid {

enum class EntryKind { File, Folder, Link, Other };

struct FolderEntry {
  std::string Name;
  EntryKind Kind;
};

class FolderLists {
 public:
  using Now = std::function<timespec()>;  // time of day
  explicit FolderLists(Now now = SystemNow);

  // What is in the folder now, sorted by name. A list is used again while the folder's time on the disk stands still,
  // for a few seconds at most, and only when that time lies so far back that a change since would show in it. Valid
  // until the next call. What cannot be read is told in error, and the entries before it are given.
  const std::vector<FolderEntry>& List(const std::string& folder, std::error_code& error);

  int Listings() const { return listings_; }  // how often a folder was listed from the disk

 private:
  struct Kept {
    std::vector<FolderEntry> Entries;
    unsigned long Device = 0, Number = 0;  // which folder it was
    timespec Changed{};                    // the folder's time
    timespec Listed{};
  };
  static timespec SystemNow();
  bool Holds(const Kept& kept, const std::string& folder, const timespec& now) const;

  Now now_;
  std::map<std::string, Kept> kept_;
  int listings_ = 0;
};

}  // namespace corvid
