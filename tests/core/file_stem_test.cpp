// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/text.h"

#include <gtest/gtest.h>

namespace corvid {
namespace {

TEST(FileStem, LeadsOutOfNoFolder) {
  EXPECT_EQ(FileStem(".."), "__");
  EXPECT_EQ(FileStem("."), "_");
  EXPECT_EQ(FileStem("a/b\\c\r\n"), "a_b_c__");
  EXPECT_EQ(FileStem("Bob 2"), "Bob 2");
  EXPECT_EQ(FileStem(""), "");
}

}  // namespace
}  // namespace corvid
