// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/memory/memory_files.h"

#include <algorithm>
#include <utility>

#include "core/fault.h"
#include "core/text.h"

namespace corvid {

namespace {

std::string Parent(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  return slash == 0 || slash == std::string::npos ? "/" : path.substr(0, slash);
}

// Names in the map that lie directly in folder (an absolute path without its last "/").
template <typename Names>
void DirectChildren(const Names& names, const std::string& folder, std::vector<std::string>& found) {
  const std::string start = folder == "/" ? "/" : folder + "/";
  for (const auto& name : names) {
    const std::string* path = nullptr;
    if constexpr (requires { name.first; })
      path = &name.first;
    else
      path = &name;
    if (path->size() > start.size() && path->starts_with(start) && path->find('/', start.size()) == std::string::npos)
      found.push_back(path->substr(start.size()));
  }
}

// Names are found in any case, and a "/" in one is not the end of it.
std::string SettingName(const std::string& application, const std::string& section, const std::string& key) {
  std::string name;
  for (const std::string* part : {&application, &section, &key})
    name += Replace(Replace(Upper(*part), "%", "%25"), "/", "%2F") + "/";
  return name;
}

}  // namespace

std::string MemoryFiles::Absolute(const std::string& path) const {
  if (path.empty()) return {};
  std::string result;
  for (const std::string& given : Split(Replace(path, "\\", "/"), "/")) {
    if (given.empty() || given == ".") continue;
    if (given == "..") {
      result = Parent(result.empty() ? "/" : result);
      if (result == "/") result.clear();
      continue;
    }
    std::vector<std::string> here;
    const std::string folder = result.empty() ? "/" : result;
    DirectChildren(files_, folder, here);
    DirectChildren(folders_, folder, here);
    std::string spelled = given;
    if (std::find(here.begin(), here.end(), given) == here.end()) {
      const auto other =
          std::find_if(here.begin(), here.end(), [&](const auto& name) { return SameText(name, given); });
      if (other != here.end()) spelled = *other;
    }
    result += "/" + spelled;
  }
  return result.empty() ? "/" : result;
}

void MemoryFiles::Ask(const std::string& operation, const std::string& path) const {
  const std::string reason = Fail ? Fail(operation, path) : std::string();
  if (!reason.empty()) throw Fault(FailKind, path + ": " + reason);
}

bool MemoryFiles::FileExists(const std::string& path) const {
  return !path.empty() && files_.contains(Absolute(path));
}
bool MemoryFiles::FolderExists(const std::string& path) const {
  return !path.empty() && folders_.contains(Absolute(path));
}

std::string MemoryFiles::ReadWhole(const std::string& path) const {
  Ask("read", Absolute(path));
  const auto found = files_.find(Absolute(path));
  if (found == files_.end()) throw Fault(FaultKind::FileNotFound, path + ": no such file");
  return found->second;
}

void MemoryFiles::WriteWhole(const std::string& path, std::string_view bytes, Privacy privacy) {
  const std::string absolute = Absolute(path);
  Ask("write", absolute);
  if (!folders_.contains(Parent(absolute))) throw Fault(FaultKind::PathNotFound, path + ": no such folder");
  if (bytes.size() > Room) throw Fault(FaultKind::DiskFull, path + ": No space left on device");
  Take(bytes.size());
  files_[absolute] = std::string(bytes);
  if (privacy == Privacy::Private) private_.insert(absolute);
}

class MemoryFiles::Appender : public AppendFile {
 public:
  Appender(MemoryFiles& files, std::string path) : files_(files), path_(std::move(path)) {}
  void Write(std::string_view bytes) override {
    files_.Ask("append", path_);
    const auto file = files_.files_.find(path_);
    if (file == files_.files_.end()) return;  // its folder has vanished: the system takes it and keeps nothing
    const std::string_view fitting = bytes.substr(0, files_.Room);
    file->second += fitting;
    files_.Take(fitting.size());
    waiting_ = true;
    if (fitting.size() < bytes.size()) throw Fault(FaultKind::DiskFull, path_ + ": No space left on device");
  }
  void Flush() override {
    if (std::exchange(waiting_, false)) files_.Ask("flush", path_);
  }

 private:
  MemoryFiles& files_;
  std::string path_;
  bool waiting_ = false;  // something was written since the last Flush
};

std::unique_ptr<AppendFile> MemoryFiles::OpenAppend(const std::string& path, Privacy privacy) {
  const std::string absolute = Absolute(path);
  Ask("append", absolute);
  if (folders_.contains(absolute)) throw Fault(FaultKind::Permission, absolute + ": is a folder");
  if (!folders_.contains(Parent(absolute))) throw Fault(FaultKind::PathNotFound, path + ": no such folder");
  files_.try_emplace(absolute);
  if (privacy == Privacy::Private) private_.insert(absolute);
  return std::make_unique<Appender>(*this, absolute);
}

class MemoryFiles::Reader : public ReadFile {
 public:
  Reader(const MemoryFiles& files, std::string path) : files_(files), path_(std::move(path)) {}
  std::string Read(std::size_t most) override {
    files_.Ask("read", path_);
    const auto found = files_.files_.find(path_);
    if (found == files_.files_.end() || place_ >= found->second.size()) return {};
    std::string bytes = found->second.substr(place_, most);
    place_ += bytes.size();
    return bytes;
  }

 private:
  const MemoryFiles& files_;
  std::string path_;
  std::size_t place_ = 0;
};

std::unique_ptr<ReadFile> MemoryFiles::OpenRead(const std::string& path) const {
  const std::string absolute = Absolute(path);
  Ask("read", absolute);
  if (folders_.contains(absolute)) throw Fault(FaultKind::Permission, absolute + ": is a folder");
  if (!files_.contains(absolute)) throw Fault(FaultKind::FileNotFound, absolute + ": no such file");
  return std::make_unique<Reader>(*this, absolute);
}

class MemoryFiles::RandomPlaces : public RandomFile {
 public:
  RandomPlaces(MemoryFiles& files, std::string path) : files_(files), path_(std::move(path)) {}
  std::int64_t Size() const override { return static_cast<std::int64_t>(Bytes().size()); }
  std::string ReadAt(std::int64_t place, std::size_t count) const override {
    files_.Ask("read", path_);
    const std::string& bytes = Bytes();
    return place < Size() ? bytes.substr(static_cast<std::size_t>(place), count) : std::string();
  }
  void WriteAt(std::int64_t place, std::string_view bytes) override {
    files_.Ask("write", path_);
    std::string& all = files_.files_[path_];
    const std::size_t end = static_cast<std::size_t>(place) + bytes.size();
    if (all.size() < end) all.resize(end);
    all.replace(static_cast<std::size_t>(place), bytes.size(), bytes);
  }

 private:
  const std::string& Bytes() const { return files_.files_[path_]; }
  MemoryFiles& files_;
  std::string path_;
};

std::unique_ptr<RandomFile> MemoryFiles::OpenRandom(const std::string& path) {
  const std::string absolute = Absolute(path);
  Ask("random", absolute);
  if (folders_.contains(absolute)) throw Fault(FaultKind::Permission, absolute + ": is a folder");
  if (!folders_.contains(Parent(absolute))) throw Fault(FaultKind::PathNotFound, path + ": no such folder");
  files_.try_emplace(absolute);
  return std::make_unique<RandomPlaces>(*this, absolute);
}

void MemoryFiles::Remove(const std::string& path) {
  Ask("remove", Absolute(path));
  if (files_.erase(Absolute(path)) == 0) throw Fault(FaultKind::FileNotFound, path + ": no such file");
}

void MemoryFiles::Copy(const std::string& from, const std::string& to) {
  Ask("copy", Absolute(from));
  WriteWhole(to, ReadWhole(from), IsPrivate(from) ? Privacy::Private : Privacy::Shared);
}

void MemoryFiles::CreateFolder(const std::string& path) {
  std::string absolute = Absolute(path);
  if (folders_.contains(absolute)) return;
  Ask("folder", absolute);
  for (; absolute != "/"; absolute = Parent(absolute)) folders_.insert(absolute);
}

std::vector<std::string> MemoryFiles::FileNames(const std::string& folder) const {
  std::vector<std::string> found;
  DirectChildren(files_, Absolute(folder), found);
  std::sort(found.begin(), found.end());
  return found;
}

std::vector<std::string> MemoryFiles::FolderNames(const std::string& folder) const {
  std::vector<std::string> found;
  DirectChildren(folders_, Absolute(folder), found);
  std::sort(found.begin(), found.end());
  return found;
}

void MemoryFiles::Take(std::size_t bytes) {
  if (Room != std::string::npos) Room -= bytes;
}

void MemoryFiles::Vanish(const std::string& folder) {
  const std::string absolute = Absolute(folder);
  std::erase_if(files_, [&](const auto& file) { return file.first.starts_with(absolute + "/"); });
  std::erase_if(folders_, [&](const auto& name) { return name == absolute || name.starts_with(absolute + "/"); });
}

std::string MemoryFiles::RealPath(const std::string& path) const {
  const std::string absolute = Absolute(path);
  const auto link = Links.find(absolute);
  if (link != Links.end()) return link->second;
  return files_.contains(absolute) || folders_.contains(absolute) ? absolute : std::string();
}

void MemoryFiles::Put(const std::string& path, const std::string& bytes) {
  auto fail = std::move(Fail);
  Fail = nullptr;
  CreateFolder(Parent(Absolute(path)));
  files_[Absolute(path)] = bytes;
  Fail = std::move(fail);
}

void MemorySettings::Ask(bool writes) const {
  if (Fails || (writes && ReadOnly)) throw Fault(FaultKind::Permission, "the store is read-only");
}

std::string MemorySettings::Get(const std::string& application, const std::string& section,
                                const std::string& key) const {
  Ask(false);
  const auto found = values_.find(SettingName(application, section, key));
  return found == values_.end() ? std::string() : found->second;
}

void MemorySettings::Set(const std::string& application, const std::string& section, const std::string& key,
                         const std::string& value) {
  Ask(true);
  values_[SettingName(application, section, key)] = value;
}

void MemorySettings::Delete(const std::string& application, const std::string& section, const std::string& key) {
  Ask(true);
  values_.erase(SettingName(application, section, key));
}

}  // namespace corvid
