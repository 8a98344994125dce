// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/table.h"

#include <gtest/gtest.h>

#include <cstdio>

#include "core/parameters.h"
#include "core/version.h"

namespace corvid {
namespace {

TEST(Table, RowsAreCheckedAndKeptOnResize) {
  Table<std::string> table;
  EXPECT_EQ(table.UBound(), 0);
  table.Resize(2);
  table[2] = "two";
  table.Resize(4);
  EXPECT_EQ(table[2], "two");
  EXPECT_EQ(table[4], "");
  table.Resize(1);
  table.Resize(2);
  EXPECT_EQ(table[2], "");
  for (const int32 row : {-1, 3}) {
    try {
      table[row] = "x";
      ADD_FAILURE() << "no fault for row " << row;
    } catch (const Fault& fault) {
      EXPECT_EQ(fault.Number(), 9);
    }
  }
  EXPECT_THROW(table.Resize(-1), Fault);
}

TEST(Parameters, EmptyUntilSetAndChecked) {
  Parameters parameters;
  const Parameters& view = parameters;
  EXPECT_EQ(view[0], "");
  EXPECT_EQ(view[99], "");
  parameters.Set(99, "last");
  EXPECT_EQ(view[99], "last");
  EXPECT_EQ(view[1], "");
  EXPECT_THROW(view[100], Fault);
  EXPECT_THROW(parameters.Set(-1, "x"), Fault);
  parameters.Clear();
  EXPECT_EQ(view[99], "");
}

TEST(Version, DigitsFollowTheDottedForm) {
  int major = 0;
  int minor = 0;
  int patch = 0;
  ASSERT_EQ(std::sscanf(DottedVersion().c_str(), "%d.%d.%d", &major, &minor, &patch), 3);
  EXPECT_EQ(std::stoi(VersionDigits()), major * 100000 + minor * 1000 + patch);
  EXPECT_EQ(VersionDigits().size(), std::to_string(major).size() + 5);
}

}  // namespace
}  // namespace corvid
