// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/files.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <optional>
#include <system_error>

#include "core/fault.h"
#include "core/text.h"
#include "platform/qt/descriptor.h"
#include "platform/qt/open_files.h"

namespace corvid {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t PieceBytes = std::size_t{64} * 1024;

bool Exists(const std::string& path) {
  struct stat facts {};
  return stat(path.c_str(), &facts) == 0;
}

bool IsFolder(const std::string& path) {
  struct stat facts {};
  return stat(path.c_str(), &facts) == 0 && S_ISDIR(facts.st_mode);
}

std::string WithoutLastSlash(std::string path) {
  while (path.size() > 1 && path.back() == '/') path.pop_back();
  return path;
}

// Opening for writing fails with "no such file" when it is the folder that is missing; that is the better news.
void NeedFolderOf(const std::string& path) {
  const std::string folder = fs::path(path).parent_path().string();
  if (!folder.empty() && !IsFolder(folder)) throw Fault(FaultKind::PathNotFound, folder + ": no such folder");
}

void SyncFolder(const std::string& folder) {
  const int number = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (number < 0) return;  // the file is written; only a power cut could still undo the rename
  fsync(number);
  close(number);
}

// Where the system can, a file without a name in the folder: a crash leaves nothing of it behind. -1 where it cannot.
int OpenNameless(const std::string& folder, mode_t mode) {
  if (access("/proc/self/fd", X_OK) != 0) return -1;  // it could never be given its name
  return open(folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, mode);
}

// What a process that died has left beside a file in the moment before it was put in its place.
void RemoveLeftovers(const std::string& path) {
  const fs::path whole(path);
  const std::string start = whole.filename().string() + ".new-";
  std::error_code ignored;
  for (fs::directory_iterator entry(whole.parent_path(), ignored), end; !ignored && entry != end;
       entry.increment(ignored)) {
    const std::string name = entry->path().filename().string();
    if (!name.starts_with(start)) continue;
    const std::string number = name.substr(start.size());
    if (number.empty() || number.size() > 9 || number.find_first_not_of("0123456789") != std::string::npos) continue;
    const auto process = static_cast<pid_t>(std::stol(number));
    const bool runs = process != getpid() && (kill(process, 0) == 0 || errno == EPERM);
    if (!runs) unlink(entry->path().c_str());
  }
}

// A file written beside the one that it is to replace; gone again unless it was put in its place.
class Replacement {
 public:
  Replacement(const std::string& path, mode_t mode)
      : path_(path),
        folder_(fs::path(path).parent_path().string()),
        beside_(path + ".new-" + std::to_string(getpid())),
        nameless_(OpenNameless(folder_, mode)),
        file_(nameless_ >= 0 ? nameless_ : OpenNamed(mode), beside_) {
    fchmod(file_.Number(), mode);  // past the umask: the mode is the old file's or a private one
  }
  Replacement(const Replacement&) = delete;
  Replacement& operator=(const Replacement&) = delete;
  ~Replacement() {
    if (!done_) unlink(beside_.c_str());
  }
  void Add(std::string_view bytes) { file_.Write(bytes); }
  void PutInPlace() {
    file_.Sync();
    if (nameless_ >= 0) GiveName();
    file_.Close();
    if (rename(beside_.c_str(), path_.c_str()) != 0) FailFor(errno, path_);
    done_ = true;
    SyncFolder(folder_);
  }

 private:
  int OpenNamed(mode_t mode) const {
    const int number = open(beside_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    if (number < 0) FailFor(errno, beside_);
    return number;
  }
  // A name cannot be taken from a file that has it, so the new one stands beside it for a moment.
  void GiveName() const {
    const std::string open = "/proc/self/fd/" + std::to_string(nameless_);
    if (linkat(AT_FDCWD, open.c_str(), AT_FDCWD, beside_.c_str(), AT_SYMLINK_FOLLOW) != 0) FailFor(errno, beside_);
  }

  std::string path_, folder_, beside_;
  int nameless_;
  Descriptor file_;
  bool done_ = false;
};

mode_t NewMode(Privacy privacy) {
  if (privacy == Privacy::Private) return S_IRUSR | S_IWUSR;
  const mode_t mask = umask(0);
  umask(mask);
  return static_cast<mode_t>(0666) & ~mask;
}

mode_t ModeFor(const std::string& path, Privacy privacy) {
  struct stat facts {};
  if (stat(path.c_str(), &facts) != 0) return NewMode(privacy);
  const mode_t mode = facts.st_mode & static_cast<mode_t>(0777);
  return privacy == Privacy::Private ? mode & static_cast<mode_t>(S_IRUSR | S_IWUSR) : mode;
}

// What is replaced is the file itself, also when its name is a link to it.
std::string BehindLinks(const std::string& path) {
  std::error_code error;
  const fs::path target = fs::canonical(path, error);
  return error ? path : target.string();
}

Replacement ReplacementOf(const std::string& real, Privacy privacy) {
  NeedFolderOf(real);
  if (IsFolder(real)) throw Fault(FaultKind::Permission, real + ": is a folder");
  // A file that its owner made read-only is meant to stay, though its folder would let us replace it.
  if (Exists(real) && access(real.c_str(), W_OK) != 0) FailFor(errno, real);
  RemoveLeftovers(real);
  return Replacement(real, ModeFor(real, privacy));
}

}  // namespace

// The name in folder that differs from name by case alone; of several the first in order. Empty when there is none.
std::string PosixFiles::OtherCase(const std::string& folder, const std::string& name) const {
  std::error_code ignored;
  for (const FolderEntry& entry : lists_.List(folder, ignored))
    if (SameText(entry.Name, name)) return entry.Name;
  return {};
}

// The path as it is on disk: absolute, "/" between the parts, each part as spelled where that exists and otherwise as
// the disk spells it in another case. Parts that exist in no spelling stay as given, so a new file is spelled so.
std::string PosixFiles::Resolve(const std::string& path) const {
  if (path.empty()) return {};
  std::string plain = path;
  std::replace(plain.begin(), plain.end(), '\\', '/');
  if (plain.find('\0') != std::string::npos) throw Fault(FaultKind::BadFile, "A file name cannot hold code 0");
  std::error_code ignored;
  const bool folder = plain.back() == '/';
  std::string whole = fs::absolute(plain, ignored).lexically_normal().string();
  if (Exists(whole)) return whole;
  std::string result = "/";
  for (const std::string& part : Split(whole, "/")) {
    if (part.empty()) continue;
    std::string next = result + part;
    if (!Exists(next)) {
      const std::string other = OtherCase(result, part);
      if (!other.empty()) next = result + other;
    }
    result = next + "/";
  }
  if (!folder && result.size() > 1) result.pop_back();
  return result;
}

std::vector<std::string> PosixFiles::Names(const std::string& folder, bool folders) const {
  const std::string path = WithoutLastSlash(Resolve(folder.empty() ? "." : folder));
  if (!IsFolder(path)) throw Fault(FaultKind::PathNotFound, path + ": no such folder");
  std::error_code error;
  const std::vector<FolderEntry>& entries = lists_.List(path, error);
  if (error) FailFor(error.value(), path);
  const auto wanted = [&](const FolderEntry& entry) {
    if (folders) return entry.Kind == EntryKind::Folder;
    std::error_code ignored;  // where a link leads can change without the folder
    return entry.Kind == EntryKind::File ||
           (entry.Kind == EntryKind::Link && fs::is_regular_file(fs::path(path) / entry.Name, ignored));
  };
  std::vector<std::string> names;
  for (const FolderEntry& entry : entries)
    if (wanted(entry)) names.push_back(entry.Name);
  return names;
}

bool PosixFiles::FileExists(const std::string& path) const {
  const std::string real = Resolve(path);
  return !real.empty() && Exists(real) && !IsFolder(real);
}

bool PosixFiles::FolderExists(const std::string& path) const {
  return IsFolder(Resolve(path));
}

std::string PosixFiles::ReadWhole(const std::string& path) const {
  const std::string real = Resolve(path);
  if (IsFolder(real)) throw Fault(FaultKind::Permission, real + ": is a folder");
  const Descriptor file(real, O_RDONLY | O_NONBLOCK);  // a pipe of that name must not hold the program
  std::string bytes;
  struct stat facts {};
  if (fstat(file.Number(), &facts) == 0 && facts.st_size > 0) bytes.reserve(static_cast<std::size_t>(facts.st_size));
  std::vector<char> piece(PieceBytes);
  for (;;) {
    const ssize_t count = read(file.Number(), piece.data(), piece.size());
    if (count == 0) return bytes;
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) FailFor(errno, real);
    bytes.append(piece.data(), static_cast<std::size_t>(count));
  }
}

void PosixFiles::WriteWhole(const std::string& path, std::string_view bytes, Privacy privacy) {
  Replacement replacement = ReplacementOf(BehindLinks(Resolve(path)), privacy);
  replacement.Add(bytes);
  replacement.PutInPlace();
}

std::unique_ptr<AppendFile> PosixFiles::OpenAppend(const std::string& path, Privacy privacy) {
  const std::string real = Resolve(path);
  NeedFolderOf(real);
  if (IsFolder(real)) throw Fault(FaultKind::Permission, real + ": is a folder");
  std::optional<mode_t> mode;
  if (privacy == Privacy::Private) mode = ModeFor(real, privacy);
  return OpenGrowingFile(real, mode);
}

std::unique_ptr<ReadFile> PosixFiles::OpenRead(const std::string& path) const {
  const std::string real = Resolve(path);
  if (IsFolder(real)) throw Fault(FaultKind::Permission, real + ": is a folder");
  return OpenFileForReading(real);
}

std::unique_ptr<RandomFile> PosixFiles::OpenRandom(const std::string& path) {
  const std::string real = Resolve(path);
  NeedFolderOf(real);
  if (IsFolder(real)) throw Fault(FaultKind::Permission, real + ": is a folder");
  return OpenFileOfPlaces(real);
}

void PosixFiles::Remove(const std::string& path) {
  const std::string real = Resolve(path);
  if (IsFolder(real)) throw Fault(FaultKind::Permission, real + ": is a folder");
  if (unlink(real.c_str()) != 0) FailFor(errno, real);
}

void PosixFiles::Copy(const std::string& from, const std::string& to) {
  // What only its owner may read stays so, under whatever name.
  struct stat facts {};
  const bool known = stat(Resolve(from).c_str(), &facts) == 0;
  const bool shared = known && (facts.st_mode & static_cast<mode_t>(S_IRWXG | S_IRWXO)) != 0;
  const std::unique_ptr<ReadFile> source = OpenRead(from);
  Replacement copy = ReplacementOf(BehindLinks(Resolve(to)), shared ? Privacy::Shared : Privacy::Private);
  // In pieces: a player's recordings may be larger than the memory.
  for (std::string piece = source->Read(PieceBytes); !piece.empty(); piece = source->Read(PieceBytes)) copy.Add(piece);
  copy.PutInPlace();
}

void PosixFiles::CreateFolder(const std::string& path) {
  const std::string real = WithoutLastSlash(Resolve(path));
  std::error_code error;
  fs::create_directories(real, error);
  if (error) FailFor(error.value(), real);
}

std::vector<std::string> PosixFiles::FileNames(const std::string& folder) const {
  return Names(folder, false);
}

std::vector<std::string> PosixFiles::FolderNames(const std::string& folder) const {
  return Names(folder, true);
}

std::string PosixFiles::Absolute(const std::string& path) const {
  return Resolve(path);
}

std::string PosixFiles::RealPath(const std::string& path) const {
  std::error_code error;
  const fs::path real = fs::canonical(Resolve(path), error);
  return error ? std::string() : real.string();
}

}  // namespace corvid
