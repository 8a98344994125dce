// SPDX-License-Identifier: GPL-3.0-or-later
#include "script/expression.h"

#include <gtest/gtest.h>

#include "script/options_state.h"

namespace corvid {
namespace {

class Expression : public testing::Test {
 protected:
  // "!! text" for a failure.
  std::string Evaluate(const std::string& text) {
    std::string error;
    const int32 value = evaluator_.EvaluateExpression(text, error);
    if (error.empty()) return std::to_string(value);
    EXPECT_EQ(value, 0);
    return "!! " + error;
  }
  OptionsState options_;
  ExpressionEvaluator evaluator_{options_};
};

struct Row {
  const char* text;
  const char* value;
};

TEST_F(Expression, Values) {
  for (const Row& row : {
           Row{"5", "5"},
           Row{" 5 ", "5"},
           Row{"1+2*3", "7"},
           Row{"(1+2)*3", "9"},
           Row{"3-(1+2)", "0"},
           Row{"2^3^2", "64"},
           Row{"2^-1*4", "2"},
           Row{"10-2-3", "5"},
           Row{"-5+3", "-2"},
           Row{"3*-2", "-6"},
           Row{"+5", "5"},
           Row{"3 - -2", "5"},
           Row{"3+ +2", "5"},
           Row{"(-5)", "-5"},
           Row{";5", "-5"},
           Row{"3* ;2", "-6"},
           Row{"7\\3", "1"},
           Row{"-7\\3", "-1"},
           Row{"7/2", "4"},
           Row{"5/2", "2"},
           Row{"-5/2", "-2"},
           Row{"1/3*3", "0"},
           Row{"12/4/3", "1"},
           Row{"2*3\\4", "2"},
           Row{"NOT 0", "1"},
           Row{"NOT 5", "0"},
           Row{"not 0", "1"},
           Row{"NOT (1=2)", "1"},
           Row{"1<2", "1"},
           Row{"2<1", "0"},
           Row{"2>1", "1"},
           Row{"2>=2", "1"},
           Row{"2<=1", "0"},
           Row{"1<>2", "1"},
           Row{"1<>1", "0"},
           Row{"1=1", "1"},
           Row{"1 AND 2", "1"},
           Row{"1AND0", "0"},
           Row{"1AND2", "1"},
           Row{"0OR3", "1"},
           Row{"(1)or(0)", "1"},
           Row{"1 XOR 1", "0"},
           Row{"0 XOR 7", "1"},
           Row{"1=1 AND 2>1 OR 0", "1"},
           Row{"0 AND 1 OR 1", "1"},
           Row{"\"abc\"=\"ABC\"", "1"},
           Row{"\"abc\"<>\"abd\"", "1"},
           Row{"\"abc\"<\"abd\"", "1"},
           Row{"\"10\"<\"9\"", "1"},
           Row{"10<9", "0"},
           Row{"\"10\"<9", "0"},
           Row{"5=\"5\"", "1"},
           Row{"5=\"5.0\"", "0"},
           Row{"\"1.5\"+1", "2"},
           Row{"\"1.5\"*2", "3"},
           Row{"\"abc\" =* \"A*\"", "1"},
           Row{"\"abc\"=*\"b*\"", "0"},
           Row{"125 =* \"#2#\"", "1"},
           Row{"\"x\"=*\"[a-z]\"", "1"},
           Row{"\"x\"=*\"[A-Z]\"", "1"},
           Row{"\"5\"+\"6\"", "56"},
           Row{"\"5\"+6", "11"},
           Row{"\"5\"-\"3\"", "2"},
           Row{"\"5\"-3", "2"},
           Row{"\"5\"+3", "8"},
           Row{"\"2.5\"*2=\"5\"", "1"},
           Row{"\"a\"+\"b\"=\"AB\"", "1"},
           Row{"\"b\">=\"A\"", "1"},
           Row{"\"b\"<=\"A\"", "0"},
           Row{"\"abc\"=*\"?b?\"", "1"},
           Row{"\"x\"=*\"[!a]\"", "1"},
           Row{"\"a\"=*\"[!a]\"", "0"},
           Row{"\"x1\"=*\"x#\" AND 1", "1"},
           Row{"1 OR 0 AND 0", "1"},
           Row{"1 XOR 1 OR 1", "0"},
           Row{"2+3=5", "1"},
           Row{"\"12\"", "12"},
           Row{"\"2.5\"", "2"},
           Row{"\"~\"\"=\"~\"\"", "1"},
           Row{"\"a b\"=\"A B\"", "1"},
           Row{"\"1\" AND \"1\"", "1"},
           Row{"NOT \"0\"", "1"},
           Row{"-\"5\"", "-5"},
           Row{"NOT \"\"", "1"},
           Row{"5+\"\"", "5"},
           Row{"\"5\"+\"\"", "50"},
           Row{"\"\"*5", "0"},
           Row{"5*\"\"", "0"},
           Row{"\"\"^2", "0"},
           Row{"5-\"\"", "5"},
           Row{"-\"\"", "0"},
           Row{"\"\"=\"\"", "1"},
           Row{"\"\"=0", "0"},
           Row{"2147483647", "2147483647"},
           Row{"65536*16384*2-1", "2147483647"},
       })
    EXPECT_EQ(Evaluate(row.text), row.value) << row.text;
}

TEST_F(Expression, Failures) {
  for (const Row& row : {
           Row{"", "Bad expression "},
           Row{"  ", "Bad expression   "},
           Row{"()", "Bad expression ()"},
           Row{"1 2", "Bad expression 1 2"},
           Row{"1+", "Bad expression 1+"},
           Row{"*1", "Bad expression *1"},
           Row{"(1+2)-3", "Bad expression (1+2)-3"},
           Row{"NOT -5", "Bad expression NOT -5"},
           Row{"--5", "Bad expression --5"},
           Row{"1 AND \"\"", "Bad expression 1 AND \"\""},
           Row{"\"abc\"", "Bad expression \"abc\""},
           Row{"\"abc\"<1", "Bad expression \"abc\"<1"},
           Row{"\"abc\"*1", "Bad expression \"abc\"*1"},
           Row{"\"a\"-\"b\"", "Bad expression \"a\"-\"b\""},
           Row{"\"\"-5", "Bad expression \"\"-5"},
           Row{"\"\"+5", "Bad expression \"\"+5"},
           Row{"\"\"/5", "Bad expression \"\"/5"},
           Row{"NOT \"x\"", "Bad expression NOT \"x\""},
           Row{"1/0", "Bad expression 1/0"},
           Row{"5/\"\"", "Bad expression 5/\"\""},
           Row{"5\\\"\"", "Bad expression 5\\\"\""},
           Row{"NOT NOT 1", "Bad expression NOT NOT 1"},
           Row{"1 NOT 2", "Bad expression 1 NOT 2"},
           Row{"1\\0", "Bad expression 1\\0"},
           Row{"0^-1", "Bad expression 0^-1"},
           Row{"10^400", "Bad expression 10^400"},
           Row{"100000/1", "Bad expression 100000/1"},
           Row{"3000000000\\2", "Bad expression 3000000000\\2"},
           Row{"3000000000", "Bad expression 3000000000"},
           Row{"\"a\"=*\"[\"", "Bad expression \"a\"=*\"[\""},
           Row{"HP", "Undefined variable or unknown symbol in expression [HP] expression HP"},
           Row{"hp > 3", "Undefined variable or unknown symbol in expression [HP] expression hp > 3"},
           Row{"1.5", "Undefined variable or unknown symbol in expression [.] expression 1.5"},
           Row{"1 = NOT0x", "Undefined variable or unknown symbol in expression [X] expression 1 = NOT0x"},
           Row{"1=NOT 0", "Undefined variable or unknown symbol in expression [=NOT] expression 1=NOT 0"},
           Row{"1\t+2", "Undefined variable or unknown symbol in expression [\t] expression 1\t+2"},
           Row{"1>-=2", "Undefined variable or unknown symbol in expression [-=] expression 1>-=2"},
           Row{"1/0 + x", "Undefined variable or unknown symbol in expression [X] expression 1/0 + x"},
           Row{"3*;2", "Undefined variable or unknown symbol in expression [*;] expression 3*;2"},
           Row{"1+x", "Undefined variable or unknown symbol in expression [+X] expression 1+x"},
           Row{"1)", "Unbalanced parentheses in expression 1)"},
           Row{"(1))+(", "Unbalanced parentheses in expression (1))+("},
           Row{"(1+2", "Bad expression syntax starting at [2] in expression (1+2"},
           Row{"(1", "Bad expression syntax starting at [1] in expression (1"},
           Row{"\"abc", "No matching ending quotation for string"},
           Row{"\"abc~\"", "No matching ending quotation for string"},
           Row{"1+\"", "No matching ending quotation for string"},
       })
    EXPECT_EQ(Evaluate(row.text), "!! " + std::string(row.value)) << row.text;
}

TEST_F(Expression, EmptyTextIsNoNumberWhenExplicit) {
  options_.Explicit = true;
  EXPECT_EQ(Evaluate("5+\"\""), "!! Bad expression 5+\"\"");
  EXPECT_EQ(Evaluate("NOT \"\""), "!! Bad expression NOT \"\"");
  EXPECT_EQ(Evaluate("\"\"*5"), "!! Bad expression \"\"*5");
  EXPECT_EQ(Evaluate("\"5\"+\"\""), "5");
}

TEST_F(Expression, EscapeCharacterIsAnOption) {
  options_.EscapeChar = '!';
  EXPECT_EQ(Evaluate("\"!\"\"=\"!\"\""), "1");
  EXPECT_EQ(Evaluate("\"~\"=\"~\""), "1");
}

TEST_F(Expression, FiftyDeepAndNoFurther) {
  EXPECT_EQ(Evaluate(std::string(50, '(') + "1" + std::string(50, ')')), "1");
  const std::string deeper = std::string(51, '(') + "1" + std::string(51, ')');
  EXPECT_EQ(Evaluate(deeper), "!! Bad expression " + deeper);
  std::string values = "1";
  for (int i = 2; i <= 50; ++i) values += " 1";
  EXPECT_EQ(Evaluate(values), "!! Bad expression " + values);
  std::string sum = "1";
  for (int i = 0; i < 5000; ++i) sum += "+1";
  EXPECT_EQ(Evaluate(sum), "5001");
}

TEST_F(Expression, AMegabyteIsOnlyLong) {
  const std::string text(1 << 20, '9');
  EXPECT_EQ(Evaluate(text), "!! Bad expression " + text);
  const std::string letters(1 << 20, 'x');
  EXPECT_TRUE(Evaluate(letters).starts_with("!! Undefined variable"));
}

}  // namespace
}  // namespace corvid
