// SPDX-License-Identifier: GPL-3.0-or-later
// Joins the program with the real system: one of the faces, sockets, files, voices.
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "app/command_line.h"
#include "app/corvid.h"
#include "app/front.h"
#include "core/version.h"

namespace {

int Complain(const std::string& problem) {
  std::fprintf(stderr, "corvid: %s\nTry corvid --help.\n", problem.c_str());
  return 2;
}

}  // namespace

int main(int argc, char** argv) {
  const corvid::CommandLine line = corvid::ParseCommandLine(std::vector<std::string>(argv + 1, argv + argc));
  if (!line.Problem.empty()) return Complain(line.Problem);
  if (line.Help) {
    std::fputs(corvid::HelpText().c_str(), stdout);
    return 0;
  }
  if (line.Version) {
    std::printf("Corvid %s\n", corvid::DottedVersion().c_str());
    return 0;
  }
  switch (line.Ui) {
    case corvid::FaceKind::Json:
      return corvid::RunJson(line, argc, argv);
    case corvid::FaceKind::Console:
      return corvid::RunConsole(line, argc, argv);
    case corvid::FaceKind::Desktop:
      break;
  }
  return corvid::RunDesktop(line, argc, argv);
}
