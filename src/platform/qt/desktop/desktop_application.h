// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

class QApplication;

namespace corvid {

// The application object of a program with windows; sets what a screen reader needs to find them. To be made first in
// main, before QtEventLoop, and destroyed last. argc and argv must live as long. Without a display Qt ends the process:
// ask HasDisplay before.
class DesktopApplication {
 public:
  DesktopApplication(int& argc, char** argv);
  ~DesktopApplication();
  DesktopApplication(const DesktopApplication&) = delete;
  DesktopApplication& operator=(const DesktopApplication&) = delete;

 private:
  std::unique_ptr<QApplication> application_;
};

// True when a screen can be expected: a display of X or Wayland, or a platform named by the environment.
bool HasDisplay();

}  // namespace corvid
