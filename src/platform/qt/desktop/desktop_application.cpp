// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/desktop/desktop_application.h"

#include <QApplication>

namespace corvid {

DesktopApplication::DesktopApplication(int& argc, char** argv) {
  // Without it a program that was started before the screen reader stays invisible to it. It costs nothing while
  // nobody listens.
  qputenv("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1");
  application_ = std::make_unique<QApplication>(argc, argv);
  QApplication::setApplicationName("corvid");
  QApplication::setDesktopFileName("corvid");
  QApplication::setQuitOnLastWindowClosed(false);  // the program decides when it ends
}

DesktopApplication::~DesktopApplication() = default;

bool HasDisplay() {
  return !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ||
         !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
}

}  // namespace corvid
