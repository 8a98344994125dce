// SPDX-License-Identifier: GPL-3.0-or-later
// Files and folders. Paths accept "/" and "\" alike; a name that does not exist as spelled is found without regard to
// case, part by part. Folders are given with or without their last "/". Failures are Faults (FileNotFound,
// PathNotFound, Permission, DiskFull, FileIo) whose text names the file and the system's reason.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/clock.h"

namespace corvid {

enum class Privacy { Shared, Private };  // Private files have mode 0600

// A file that grows at its end and stays open. Destruction writes what is buffered.
class AppendFile {
 public:
  virtual ~AppendFile() = default;
  virtual void Write(std::string_view bytes) = 0;  // Fault when the disk refuses; may buffer until Flush
  // Writes what is buffered, whole or not at all. What the disk refuses is dropped.
  virtual void Flush() = 0;
};

// A file that is read from its beginning on. Reading goes on where it ended: what is added to the file meanwhile is
// seen.
class ReadFile {
 public:
  virtual ~ReadFile() = default;
  virtual std::string Read(std::size_t most) = 0;  // the next bytes, at most so many; empty at the end
};

// A file that is read and written at any place, counted in bytes from 0.
class RandomFile {
 public:
  virtual ~RandomFile() = default;
  virtual std::int64_t Size() const = 0;
  virtual std::string ReadAt(std::int64_t place,
                             std::size_t count) const = 0;  // fewer bytes at the end, none behind it
  // Written when it returns; a gap between the end and place reads as zeros. A write behind the end that the disk
  // refuses leaves the file as long as it was.
  virtual void WriteAt(std::int64_t place, std::string_view bytes) = 0;
};

class Files {
 public:
  virtual ~Files() = default;
  virtual bool FileExists(const std::string& path) const = 0;
  virtual bool FolderExists(const std::string& path) const = 0;
  virtual std::string ReadWhole(const std::string& path) const = 0;
  // Replaces the file whole: written beside, flushed to the disk, renamed. After a failure the old file is as it was,
  // and after a crash either the old or the new one is there, with nothing half-written beside it.
  virtual void WriteWhole(const std::string& path, std::string_view bytes, Privacy privacy) = 0;
  virtual std::unique_ptr<AppendFile> OpenAppend(const std::string& path, Privacy privacy) = 0;
  // Ordinary files only: a device or a pipe of that name is a Fault of kind BadFile.
  virtual std::unique_ptr<ReadFile> OpenRead(const std::string& path) const = 0;
  // Makes the file if there is none. One that may only be read opens all the same, and refuses what is written.
  virtual std::unique_ptr<RandomFile> OpenRandom(const std::string& path) = 0;
  virtual void Remove(const std::string& path) = 0;
  virtual void Copy(const std::string& from, const std::string& to) = 0;            // overwrites; private stays private
  virtual void CreateFolder(const std::string& path) = 0;                           // parents too; existing is no error
  virtual std::vector<std::string> FileNames(const std::string& folder) const = 0;  // sorted, without the path
  virtual std::vector<std::string> FolderNames(const std::string& folder) const = 0;  // sorted, links not followed
  // Absolute form with "/" between the parts, spelled as on disk where it exists; empty for an empty path.
  virtual std::string Absolute(const std::string& path) const = 0;
  // The same of what is there, with links followed; empty where nothing is.
  virtual std::string RealPath(const std::string& path) const = 0;
};

// Where the program finds itself and its user: asked once at start.
class Places {
 public:
  virtual ~Places() = default;
  virtual std::string AppFolder() const = 0;        // shipped data, ends in "/"
  virtual std::string DocumentsFolder() const = 0;  // the user's documents, ends in "/"
  virtual std::string HomeFolder() const = 0;
  virtual std::string TempFolder() const = 0;  // empty when the system names none
};

// One text value per application, section and key, kept between runs.
class Settings {
 public:
  virtual ~Settings() = default;
  virtual std::string Get(const std::string& application, const std::string& section, const std::string& key) const = 0;
  virtual void Set(const std::string& application, const std::string& section, const std::string& key,
                   const std::string& value) = 0;
  virtual void Delete(const std::string& application, const std::string& section, const std::string& key) = 0;
};

}  // namespace corvid
