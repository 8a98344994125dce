// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "platform/files.h"
#include "platform/qt/folder_lists.h"

namespace corvid {

// The real disk, for one thread. Holds nothing but short-lived lists of folders.
class PosixFiles : public Files {
 public:
  explicit PosixFiles(FolderLists lists = FolderLists()) : lists_(std::move(lists)) {}
  bool FileExists(const std::string& path) const override;
  bool FolderExists(const std::string& path) const override;
  std::string ReadWhole(const std::string& path) const override;
  void WriteWhole(const std::string& path, std::string_view bytes, Privacy privacy) override;
  std::unique_ptr<AppendFile> OpenAppend(const std::string& path, Privacy privacy) override;
  std::unique_ptr<ReadFile> OpenRead(const std::string& path) const override;
  std::unique_ptr<RandomFile> OpenRandom(const std::string& path) override;
  void Remove(const std::string& path) override;
  void Copy(const std::string& from, const std::string& to) override;
  void CreateFolder(const std::string& path) override;
  std::vector<std::string> FileNames(const std::string& folder) const override;
  std::vector<std::string> FolderNames(const std::string& folder) const override;
  std::string Absolute(const std::string& path) const override;
  std::string RealPath(const std::string& path) const override;

  int Listings() const { return lists_.Listings(); }  // how often a folder was listed from the disk

 private:
  std::string Resolve(const std::string& path) const;
  std::string OtherCase(const std::string& folder, const std::string& name) const;
  std::vector<std::string> Names(const std::string& folder, bool folders) const;

  mutable FolderLists lists_;
};

}  // namespace corvid
