// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/beep_gate.h"

#include <gtest/gtest.h>

namespace corvid {
namespace {

TEST(BeepGate, LetsOneBeepThroughForEachGap) {
  BeepGate gate(100);
  struct Row {
    int now;
    bool sounds;
  };
  for (const Row& row :
       {Row{0, true}, Row{0, false}, Row{99, false}, Row{100, true}, Row{150, false}, Row{199, false}, Row{900, true}})
    EXPECT_EQ(gate.Passes(row.now), row.sounds) << row.now;
}

TEST(BeepGate, AStormIsTenBeepsASecondAndNoneIsPutOff) {
  BeepGate gate(100);
  int sounded = 0;
  for (int now = 0; now < 1000; ++now) sounded += gate.Passes(now) ? 1 : 0;
  EXPECT_EQ(sounded, 10);
  EXPECT_TRUE(gate.Passes(5000)) << "what comes after the storm is heard at once";
}

}  // namespace
}  // namespace corvid
