// SPDX-License-Identifier: GPL-3.0-or-later
// Feeds files, and all files of folders, to a fuzz program that was built without a fuzzer; and, since a corpus holds
// few of the accidents of a line, each file also cut short at many places, and with one byte after another changed.
// With "--places N" in front there are at most N such places in a file, for readers that take their time.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <string_view>

#include "fuzz.h"

namespace {

void Feed(const std::string& bytes) {
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

int Replay(const std::filesystem::path& path, std::size_t mostPlaces) {
  std::ifstream file(path, std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(file), {}};
  std::cout << path.filename().string() << ": " << bytes.size() << " bytes" << std::endl;
  Feed(bytes);
  constexpr std::size_t mostBytes = std::size_t{1} << 20;  // of a long file, fewer places
  const std::size_t step = std::max(bytes.size() / mostPlaces, bytes.size() * bytes.size() / mostBytes) + 1;
  for (std::size_t place = 0; place < bytes.size(); place += step) {
    Feed(bytes.substr(0, place));
    std::string changed = bytes;
    changed[place] = static_cast<char>(~static_cast<unsigned char>(changed[place]));
    Feed(changed);
  }
  return 1;
}

}  // namespace

int main(int count, char** names) {
  constexpr std::size_t usualPlaces = 400;
  std::size_t places = usualPlaces;
  int files = 0;
  for (int i = 1; i < count; ++i) {
    if (std::string_view(names[i]) == "--places" && i + 1 < count) {
      places = std::stoul(names[++i]);
      continue;
    }
    if (!std::filesystem::is_directory(names[i])) {
      files += Replay(names[i], places);
      continue;
    }
    for (const auto& entry : std::filesystem::directory_iterator(names[i]))
      if (entry.is_regular_file()) files += Replay(entry.path(), places);
  }
  std::cout << files << " files" << std::endl;
  return files == 0 ? 1 : 0;  // a test that reads nothing proves nothing
}
