// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/shipped_files.h"

#include <cstdint>
#include <map>
#include <optional>
#include <vector>

#include "core/fault.h"
#include "core/text.h"
#include "files/user_folder.h"
#include "platform/files.h"

namespace corvid {

namespace {

constexpr std::string_view RecordName = "shipped.txt";
constexpr std::string_view Heading =
    "; How the files of this folder came with Corvid. It replaces only those still so.";

// Length and hash (64-bit FNV-1a) of a text: the same for the same bytes in every version of the program.
std::string MarkOf(std::string_view bytes) {
  constexpr std::uint64_t start = 14695981039346656037U, prime = 1099511628211U;
  std::uint64_t hash = start;
  for (const char c : bytes) hash = (hash ^ static_cast<unsigned char>(c)) * prime;
  return std::to_string(bytes.size()) + "-" + std::to_string(hash);
}

class Refresh {
 public:
  Refresh(Files& files, const std::string& source, const std::string& target)
      : files_(files), source_(Closed(source)), target_(Closed(target)) {}

  void Run() {
    Try([&] { ReadRecord(); });
    const std::string before = RecordText();
    Try([&] {
      for (const std::string& name : files_.FileNames(source_))
        if (EndsWithText(name, ".set")) File(name);
      for (const std::string& name : files_.FolderNames(source_)) Folder(name + "/", 1);
    });
    if (RecordText() != before)
      Try([&] { files_.WriteWhole(target_ + std::string(RecordName), RecordText(), Privacy::Shared); });
    if (problem_) throw Fault(*problem_);
  }

 private:
  static std::string Closed(const std::string& folder) { return folder.ends_with('/') ? folder : folder + "/"; }

  template <typename Work>
  void Try(Work&& work) {
    try {
      work();
    } catch (const Fault& fault) {
      if (!problem_) problem_ = fault;
    }
  }

  void Folder(const std::string& name, int depth) {
    if (depth > UserFolder::MaxDepth) return;
    Try([&] {
      files_.CreateFolder(target_ + name);
      for (const std::string& file : files_.FileNames(source_ + name)) File(name + file);
      for (const std::string& folder : files_.FolderNames(source_ + name)) Folder(name + folder + "/", depth + 1);
    });
  }

  void File(const std::string& name) {
    Try([&] {
      const std::string shipped = files_.ReadWhole(source_ + name);
      const std::string mark = MarkOf(shipped);
      if (files_.FileExists(target_ + name)) {
        const std::string own = MarkOf(files_.ReadWhole(target_ + name));
        const auto known = marks_.find(name);
        if (own != mark && (known == marks_.end() || known->second != own)) return;  // the player's own by now
        if (own != mark) files_.WriteWhole(target_ + name, shipped, Privacy::Shared);
      } else {
        files_.WriteWhole(target_ + name, shipped, Privacy::Shared);
      }
      marks_[name] = mark;
    });
  }

  void ReadRecord() {
    const std::string path = target_ + std::string(RecordName);
    if (!files_.FileExists(path)) return;
    for (const std::string& line : Split(Replace(files_.ReadWhole(path), "\r\n", "\n"), "\n")) {
      const std::size_t blank = line.find(' ');
      if (line.starts_with(';') || blank == std::string::npos) continue;
      marks_[line.substr(blank + 1)] = line.substr(0, blank);
    }
  }

  std::string RecordText() const {
    std::string text = std::string(Heading) + "\r\n";
    for (const auto& [name, mark] : marks_) text.append(mark).append(" ").append(name).append("\r\n");
    return text;
  }

  Files& files_;
  const std::string source_, target_;
  std::map<std::string, std::string> marks_;  // by name, as they were shipped last
  std::optional<Fault> problem_;
};

}  // namespace

void RefreshShippedFiles(Files& files, const std::string& source, const std::string& target) {
  Refresh(files, source, target).Run();
}

}  // namespace corvid
