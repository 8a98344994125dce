// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/list_rows.h"

#include <gtest/gtest.h>

#include "core/keys.h"

namespace corvid {
namespace {

TEST(ListRows, EachKeyLeadsToItsRow) {
  struct Row {
    int16 key;
    int32 from, last, to;
  };
  for (const auto& [key, from, last, to] : {Row{keycode::Up, 3, 20, 2},
                                            {keycode::Left, 3, 20, 2},
                                            {keycode::Up, 0, 20, 0},
                                            {keycode::Down, 3, 20, 4},
                                            {keycode::Right, 3, 20, 4},
                                            {keycode::Down, 20, 20, 20},
                                            {keycode::PageUp, 15, 20, 5},
                                            {keycode::PageUp, 4, 20, 0},
                                            {keycode::PageDown, 4, 20, 14},
                                            {keycode::PageDown, 15, 20, 20},
                                            {keycode::Home, 9, 20, 0},
                                            {keycode::End, 9, 20, 20},
                                            {keycode::Down, -1, 20, 0}}) {
    EXPECT_EQ(RowByKey(key, from, last), to) << Keyname(key, 0) << " from " << from;
  }
}

TEST(ListRows, OtherKeysAndEmptyListsMoveNowhere) {
  EXPECT_EQ(RowByKey('A', 3, 20), std::nullopt);
  EXPECT_EQ(RowByKey(keycode::Enter, 3, 20), std::nullopt);
  EXPECT_EQ(RowByKey(keycode::Home, 0, -1), std::nullopt);
}

}  // namespace
}  // namespace corvid
