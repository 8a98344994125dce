// SPDX-License-Identifier: GPL-3.0-or-later
// The real disk, in a folder of the test's own.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>

#include "core/fault.h"
#include "platform/qt/files.h"

namespace corvid {

namespace fs = std::filesystem;

inline FaultKind KindOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const Fault& fault) {
    EXPECT_NE(std::string(fault.what()), "");
    return fault.Kind;
  }
  ADD_FAILURE() << "no fault";
  return FaultKind::Internal;
}

class PosixFilesTest : public testing::Test {
 protected:
  PosixFilesTest() {
    std::string pattern = (fs::temp_directory_path() / "corvid-files-XXXXXX").string();
    root = std::string(mkdtemp(pattern.data())) + "/";
  }
  ~PosixFilesTest() override { fs::remove_all(root); }
  PosixFiles files;
  std::string root;
};

}  // namespace corvid
