// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdio>
#include <cstdlib>

#include "app/front.h"

namespace corvid {

int RunDesktop(const CommandLine& line, int argc, char** argv) {
  (void)argv;
  (void)argc;
  (void)line;
  std::fputs("corvid: the desktop window is not built yet. Try --ui console.\n", stderr);
  return 1;
}

}  // namespace corvid
