// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/number.h"

#include <gtest/gtest.h>

#include <functional>

#include "core/fault.h"

namespace corvid {
namespace {

FaultKind KindOf(const std::function<void()>& call) {
  try {
    call();
  } catch (const Fault& fault) {
    return fault.Kind;
  }
  ADD_FAILURE() << "no fault";
  return FaultKind::Internal;
}

TEST(Number, WholeTextMustBeANumber) {
  for (const char* text : {"0", "12", "-3", "+4", " 5 ", "1.5", ".5", "5.", "1e3", "1E-3", "1.5e+2", "007", "  -0.25"})
    EXPECT_TRUE(IsNumeric(text)) << text;
  for (const char* text : {"", " ", ".", "-", "+", "1e", "1e+", "e5", "1x", "x1", "1 2", "1.2.3", "--1", "0x10", "inf",
                           "nan", "1,5", "\t1"})
    EXPECT_FALSE(IsNumeric(text)) << text;
}

TEST(Number, ValReadsLeadingDigits) {
  struct Row {
    const char* text;
    double value;
  };
  for (const Row& row :
       {Row{"12abc", 12}, Row{"  7", 7}, Row{"-3.5x", -3.5}, Row{"+2", 2}, Row{"", 0}, Row{"abc", 0}, Row{"1e", 1},
        Row{"1e2e3", 100}, Row{".", 0}, Row{".5.5", 0.5}, Row{"1 2", 1}, Row{"inf", 0}, Row{"1e-400", 0}, Row{"-", 0}})
    EXPECT_EQ(Val(row.text), row.value) << row.text;
  EXPECT_EQ(KindOf([] { Val("1e400"); }), FaultKind::Overflow);
  EXPECT_EQ(KindOf([] { Val(std::string(400, '9')); }), FaultKind::Overflow);
  EXPECT_EQ(Val("0." + std::string(400, '0') + "1"), 0);
}

TEST(Number, HalvesGoToEven) {
  EXPECT_EQ(ToInt16(0.5), 0);
  EXPECT_EQ(ToInt16(1.5), 2);
  EXPECT_EQ(ToInt16(2.5), 2);
  EXPECT_EQ(ToInt16(-2.5), -2);
  EXPECT_EQ(ToInt32(3.5), 4);
  EXPECT_EQ(ToInt32(-0.4), 0);
}

TEST(Number, WhatDoesNotFitIsAFault) {
  EXPECT_EQ(ToInt16(32767.4), 32767);
  EXPECT_EQ(ToInt16(-32768.5), -32768);
  EXPECT_EQ(KindOf([] { ToInt16(32767.5); }), FaultKind::Overflow);
  EXPECT_EQ(KindOf([] { ToInt16(-32769); }), FaultKind::Overflow);
  EXPECT_EQ(ToInt32(2147483647.0), 2147483647);
  EXPECT_EQ(KindOf([] { ToInt32(2147483648.0); }), FaultKind::Overflow);
  EXPECT_EQ(KindOf([] { ToInt32(0.0 / 0.0); }), FaultKind::Overflow);
  EXPECT_EQ(AddInt16(32000, 767), 32767);
  EXPECT_EQ(KindOf([] { AddInt16(32767, 1); }), FaultKind::Overflow);
  EXPECT_EQ(KindOf([] { AddInt16(-32768, -1); }), FaultKind::Overflow);
}

TEST(Number, TextThatIsNoNumberIsAFault) {
  EXPECT_EQ(ToNumber(" 12 "), 12);
  EXPECT_EQ(KindOf([] { ToNumber("12a"); }), FaultKind::Type);
  EXPECT_EQ(KindOf([] { ToNumber(""); }), FaultKind::Type);
}

TEST(Number, WritesTheShortestForm) {
  struct Row {
    double value;
    const char* text;
  };
  for (const Row& row : {Row{0, "0"}, Row{-0.0, "0"}, Row{5, "5"}, Row{-5, "-5"}, Row{0.5, "0.5"}, Row{0.1, "0.1"},
                         Row{100000, "100000"}, Row{123456789012, "123456789012"}, Row{1e300, "1e+300"}})
    EXPECT_EQ(NumberText(row.value), row.text);
  EXPECT_EQ(Val(NumberText(1.0 / 3)), 1.0 / 3);
  EXPECT_EQ(PrintedNumber(5), " 5 ");
  EXPECT_EQ(PrintedNumber(-5), "-5 ");
  EXPECT_EQ(PrintedNumber(0), " 0 ");
}

}  // namespace
}  // namespace corvid
