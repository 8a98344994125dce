// SPDX-License-Identifier: GPL-3.0-or-later
// A disk in memory that fails on demand.
#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>

#include "core/fault.h"
#include "platform/files.h"

namespace corvid {

class MemoryFiles : public Files {
 public:
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

  // Asked before each operation ("read", "write", "append", "random", "remove", "copy", "folder") with the path; a
  // non-empty answer is the reason for which it fails, as a Fault of kind FileIo. An open file asks again at each use.
  std::function<std::string(const std::string& operation, const std::string& path)> Fail;
  FaultKind FailKind = FaultKind::FileIo;  // kind of the Faults that Fail brings about
  // Bytes that the disk still takes: a whole file either fits or is not written, a log takes what fits.
  std::size_t Room = std::string::npos;
  // The folder goes with all that is in it, as when a network drive is lost. A log that is open goes on into nothing.
  void Vanish(const std::string& folder);
  bool IsPrivate(const std::string& path) const { return private_.contains(Absolute(path)); }
  std::map<std::string, std::string> Links;  // what a path leads to; only RealPath knows of them
  // Puts a file there, with its folders, whatever Fail says.
  void Put(const std::string& path, const std::string& bytes);

 private:
  class Appender;
  class Reader;
  class RandomPlaces;
  void Ask(const std::string& operation, const std::string& path) const;
  void Take(std::size_t bytes);

  std::map<std::string, std::string> files_;
  std::set<std::string> folders_{"/"};
  std::set<std::string> private_;
};

class MemoryPlaces : public Places {
 public:
  std::string AppFolder() const override { return "/app/"; }
  std::string DocumentsFolder() const override { return "/home/player/Documents/"; }
  std::string HomeFolder() const override { return "/home/player/"; }
  std::string TempFolder() const override { return Temp; }
  std::string Temp = "/tmp/";
};

class MemorySettings : public Settings {
 public:
  bool Fails = false;     // every operation is a Fault of kind Permission
  bool ReadOnly = false;  // Set and Delete are
  std::string Get(const std::string& application, const std::string& section, const std::string& key) const override;
  void Set(const std::string& application, const std::string& section, const std::string& key,
           const std::string& value) override;
  void Delete(const std::string& application, const std::string& section, const std::string& key) override;

 private:
  void Ask(bool writes) const;
  std::map<std::string, std::string> values_;
};

}  // namespace corvid
