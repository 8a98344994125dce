// SPDX-License-Identifier: GPL-3.0-or-later
// The tests of the window's parts need the toolkit's application object.
#include <gtest/gtest.h>

#include <QByteArray>

#include "platform/qt/desktop/desktop_application.h"

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  qputenv("QT_QPA_PLATFORM", "offscreen");  // also while the tests are only listed
  const corvid::DesktopApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
