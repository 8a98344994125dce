// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/practice.h"

#include <filesystem>
#include <system_error>

#include "core/text.h"

namespace corvid {

namespace {

constexpr int StartLimit = 10000;  // milliseconds
constexpr std::string_view PortWord = "port ";

// The build tree has src/app/corvid and practice/corvid-practice; an installed program has bin and libexec.
std::string FindGame(const std::filesystem::path& own) {
  const std::filesystem::path folder = own.parent_path();
  for (const std::filesystem::path& path : {folder / "../../practice/corvid-practice",
                                            folder / "../libexec/corvid/corvid-practice", folder / "corvid-practice"}) {
    std::error_code none;
    if (std::filesystem::is_regular_file(path, none)) return path.lexically_normal().string();
  }
  return {};
}

}  // namespace

std::string PracticeGame::Start(const std::string& ownProgram) {
  const std::string game = FindGame(ownProgram);
  if (game.empty()) return "The practice game is not installed beside " + ownProgram + ".";
  std::string problem = child_.Start(game, {"--parent-exits"}, StartLimit);
  if (!problem.empty()) return problem;
  if (!child_.FirstLine().starts_with(PortWord)) return "The practice game answered \"" + child_.FirstLine() + "\".";
  port_ = child_.FirstLine().substr(PortWord.size());
  return {};
}

}  // namespace corvid
