// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/keys.h"

#include <gtest/gtest.h>

namespace corvid {
namespace {

struct Pair {
  int16 code, shift;
};

Pair Parse(std::string_view text) {
  Pair pair{};
  ParseKeystroke(text, pair.shift, pair.code);
  return pair;
}

TEST(Keys, EveryNameBothWays) {
  struct Row {
    const char* name;
    int16 code;
  };
  for (const Row& row :
       {Row{"ENTER", 13},       Row{"TAB", 9},       Row{"SPACE", 32},    Row{"BACKSPACE", 8}, Row{"ESCAPE", 27},
        Row{"CAPS", 20},        Row{"PAGEUP", 33},   Row{"PAGEDOWN", 34}, Row{"END", 35},      Row{"HOME", 36},
        Row{"LEFT", 37},        Row{"UP", 38},       Row{"RIGHT", 39},    Row{"DOWN", 40},     Row{"INSERT", 45},
        Row{"DELETE", 46},      Row{"`", 192},       Row{"=", 187},       Row{",", 188},       Row{".", 190},
        Row{"/", 191},          Row{";", 186},       Row{"'", 222},       Row{"[", 219},       Row{"]", 221},
        Row{"\\", 220},         Row{"NUMLOCK", 144}, Row{"NUMPAD/", 111}, Row{"NUMPAD*", 106}, Row{"NUMPADDASH", 109},
        Row{"NUMPADPLUS", 107}, Row{"NumPad.", 110}, Row{"F1", 112},      Row{"F2", 113},      Row{"F9", 120},
        Row{"F10", 121},        Row{"F11", 122},     Row{"F12", 123}}) {
    EXPECT_EQ(Parse(row.name).code, row.code) << row.name;
    EXPECT_EQ(Keyname(row.code, 0), row.name);
  }
  for (int16 i = 0; i < 10; ++i) {
    EXPECT_EQ(Parse("NumPad" + std::to_string(i)).code, 96 + i);
    EXPECT_EQ(Keyname(static_cast<int16>(96 + i), 0), "NUMPAD" + std::to_string(i));
    EXPECT_EQ(Parse(std::to_string(i)).code, '0' + i);
    EXPECT_EQ(Keyname(static_cast<int16>('0' + i), 0), std::to_string(i));
  }
  for (char c = 'A'; c <= 'Z'; ++c) {
    EXPECT_EQ(Parse(std::string(1, c)).code, c);
    EXPECT_EQ(Keyname(c, 0), std::string(1, c));
  }
}

TEST(Keys, ReadsAnyCaseAndSecondSpellings) {
  EXPECT_EQ(Parse("pageUp").code, 33);
  EXPECT_EQ(Parse("q").code, 'Q');
  EXPECT_EQ(Parse("f5").code, 116);
  EXPECT_EQ(Parse("numpad+").code, 107);
  EXPECT_EQ(Parse("NUMPAD.").code, 110);
}

TEST(Keys, DashIsTheCodeOfYAndComesBackAsY) {
  EXPECT_EQ(Parse("DASH").code, 89);
  EXPECT_EQ(Keyname(89, 0), "Y");
}

TEST(Keys, ModifiersInAnyOrder) {
  struct Row {
    const char* text;
    int16 code, shift;
  };
  for (const Row& row : {Row{"Shift-F5", 116, 1}, Row{"ctrl-a", 65, 2}, Row{"CONTROL-a", 65, 2}, Row{"Alt-Up", 38, 4},
                         Row{"Alt-Control-Shift-9", 57, 7}, Row{"Shift-Alt-NumPad*", 106, 5}}) {
    const Pair pair = Parse(row.text);
    EXPECT_EQ(pair.code, row.code) << row.text;
    EXPECT_EQ(pair.shift, row.shift) << row.text;
  }
  EXPECT_EQ(Keyname(116, 7), "Shift-Control-Alt-F5");
  EXPECT_EQ(Keyname(65, 2), "Control-A");
}

TEST(Keys, WhatIsNoKeyNameIsMinusOne) {
  for (const char* text : {"",
                           "-",
                           "Shift",
                           "Shift-",
                           "Shift-Shift-A",
                           "Ctrl-Control-A",
                           "A-Shift",
                           "A-B",
                           "AB",
                           "1A",
                           "F0",
                           "F13",
                           "F123",
                           "FX",
                           "F1x",
                           "F-1",
                           "NUMPAD",
                           "NUMPAD10",
                           "NUMPADX",
                           " A",
                           "Meta-A",
                           "-A",
                           "Control--"}) {
    EXPECT_EQ(Parse(text).code, -1) << text;
  }
  EXPECT_EQ(Parse("F").code, 'F');
}

TEST(Keys, UnknownCodeGivesTheModifiersAlone) {
  EXPECT_EQ(Keyname(93, 0), "");
  EXPECT_EQ(Keyname(17, 2), "Control-");
  EXPECT_EQ(Keyname(-1, 5), "Shift-Alt-");
  EXPECT_EQ(Keyname(124, 0), "");
}

}  // namespace
}  // namespace corvid
