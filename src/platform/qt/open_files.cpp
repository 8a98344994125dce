// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/open_files.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <utility>

#include "core/fault.h"
#include "platform/qt/descriptor.h"

namespace corvid {

namespace {

constexpr mode_t NewMode = 0666;

// Opening a pipe waits for its other end, and reading a device may never end: O_NONBLOCK keeps the program out of both.
void NeedOrdinary(const Descriptor& file, const std::string& path) {
  if (!file.IsOrdinaryFile()) throw Fault(FaultKind::BadFile, path + ": is no ordinary file");
}

class GrowingFile : public AppendFile {
 public:
  GrowingFile(const std::string& path, std::optional<mode_t> mode)
      : file_(path, O_WRONLY | O_CREAT | O_APPEND | O_NONBLOCK, mode.value_or(NewMode)) {
    if (mode) fchmod(file_.Number(), *mode);
  }
  GrowingFile(const GrowingFile&) = delete;
  GrowingFile& operator=(const GrowingFile&) = delete;
  ~GrowingFile() override {
    try {
      Flush();
    } catch (const Fault&) {
      // Nobody is left to tell; who wants to know calls Flush before.
    }
  }
  void Write(std::string_view bytes) override {
    waiting_.append(bytes);
    if (waiting_.size() >= Enough) Flush();
  }
  void Flush() override {
    if (waiting_.empty()) return;
    std::string bytes;
    bytes.swap(waiting_);  // dropped when the disk refuses: a full disk must not fill the memory too
    const off_t before = file_.Size();
    try {
      file_.Write(bytes);
    } catch (const Fault&) {
      file_.CutBack(before, static_cast<off_t>(bytes.size()));
      throw;
    }
  }

 private:
  static constexpr std::size_t Enough = std::size_t{64} * 1024;
  Descriptor file_;
  std::string waiting_;
};

class FileForReading : public ReadFile {
 public:
  explicit FileForReading(const std::string& path) : file_(path, O_RDONLY | O_NONBLOCK) { NeedOrdinary(file_, path); }
  std::string Read(std::size_t most) override { return file_.Read(most); }

 private:
  Descriptor file_;
};

class FileOfPlaces : public RandomFile {
 public:
  FileOfPlaces(const std::string& path, int access) : file_(path, access | O_NONBLOCK, NewMode), path_(path) {
    NeedOrdinary(file_, path);
    readOnly_ = access == O_RDONLY;
  }
  std::int64_t Size() const override { return file_.Size(); }
  std::string ReadAt(std::int64_t place, std::size_t count) const override { return file_.ReadAt(place, count); }
  void WriteAt(std::int64_t place, std::string_view bytes) override {
    if (readOnly_) throw Fault(FaultKind::Permission, path_ + ": may only be read");
    const off_t before = file_.Size();
    try {
      file_.WriteAt(place, bytes);
    } catch (const Fault&) {
      file_.CutBack(before, place + static_cast<off_t>(bytes.size()) - before);
      throw;
    }
  }

 private:
  Descriptor file_;
  std::string path_;
  bool readOnly_ = false;
};

}  // namespace

std::unique_ptr<AppendFile> OpenGrowingFile(const std::string& real, std::optional<mode_t> mode) {
  return std::make_unique<GrowingFile>(real, mode);
}

std::unique_ptr<ReadFile> OpenFileForReading(const std::string& real) {
  return std::make_unique<FileForReading>(real);
}

std::unique_ptr<RandomFile> OpenFileOfPlaces(const std::string& real) {
  try {
    return std::make_unique<FileOfPlaces>(real, O_RDWR | O_CREAT);
  } catch (const Fault& fault) {
    if (fault.Kind != FaultKind::Permission) throw;
  }
  return std::make_unique<FileOfPlaces>(real, O_RDONLY);
}

}  // namespace corvid
