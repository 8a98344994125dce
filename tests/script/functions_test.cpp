// SPDX-License-Identifier: GPL-3.0-or-later
#include "script/functions.h"

#include <gtest/gtest.h>

#include <set>

#include "core/number.h"
#include "library.h"
#include "script/lists.h"
#include "script/values.h"

namespace corvid {
namespace {

using testing_script::Library;
using testing_script::Script;

struct Row {
  const char* text;
  const char* result;
};

TEST_F(Library, Texts) {
  for (const Row& row : {
           Row{"%CHR(65)", "A"},
           Row{"%CHR(3+4)", "\x07"},
           Row{"%CHR(256)", "!! Bad ASCII value in CHR function"},
           Row{"%CHR(-1)", "!! Bad ASCII value in CHR function"},
           Row{"%CHR(64.5)", "@"},
           Row{"%COPY(abc,2)", "bc"},
           Row{"%COPY(abc,2,1)", "b"},
           Row{"%COPY(abc,2,)", "bc"},
           Row{"%COPY(abc,9)", ""},
           Row{"%COPY(abc,2,99)", "bc"},
           Row{"%COPY(abc,1,0)", ""},
           Row{"%COPY(abc,0)", "!! Error in one of the arguments in function COPY"},
           Row{"%COPY(abc,1,-1)", "!! Error in one of the arguments in function COPY"},
           Row{"%copy(abc,1+1)", "bc"},
           Row{"%COPY(abc,1.5)", "bc"},
           Row{"%COPY(abcd,2.5,1)", "b"},
           Row{"%COPY(abc,x)", "!! Argument 2 must be numeric in function COPY"},
           Row{"%COPY(abc,)", "!! Argument 2 must be numeric in function COPY"},
           Row{"%COPY(abc,1,x)", "!! Argument 3 must be numeric in function COPY"},
           Row{"%DELETE(abcde,2,3)", "a"},
           Row{"%DELETE(abcde,2,2)", "ade"},
           Row{"%DELETE(abcde,2,1)", "acde"},
           Row{"%DELETE(abcde,2,0)", "abcde"},
           Row{"%DELETE(abcde,1,99)", ""},
           Row{"%DELETE(abcde,9,1)", "abcde"},
           Row{"%DELETE(abcde,0,1)", "!! Error in one of the arguments in function DELETE"},
           Row{"%DELETE(abcde,3,-1)", "abbcde"},
           Row{"%DELETE(abcde,-2147483648,1)", "!! Error in one of the arguments in function DELETE"},
           Row{"%DELETE(abcde,2147483647,2147483647)", "abcde"},
           Row{"%DELETE(abcde,1,-5)", "!! Error in one of the arguments in function DELETE"},
           Row{"%IFWORD(B,a b c)", "1"},
           Row{"%IFWORD(d,a b c)", "0"},
           Row{"%IFWORD(b,abc)", "0"},
           Row{"%IFWORD(b,a|B|c,|)", "1"},
           Row{"%IFWORD(a b,x A B)", "1"},
           Row{"%LEFT(abc,2)", "ab"},
           Row{"%LEFT(abc,1)%RIGHT(xyz,1)", "a%RIGHT(xyz,1)"},  // the call behind a call is not looked at
           Row{"%LEFT(abc,9)", "abc"},
           Row{"%LEFT(abc,0)", ""},
           Row{"%LEFT(abc,-1)", "!! Error in one of the arguments in function LEFT"},
           Row{"%LEFT(abc,2.5)", "ab"},
           Row{"%LEFT(abc,2147483647)", "abc"},
           Row{"%LEFT(abc,2147483648)", "!! Error in one of the arguments in function LEFT"},
           Row{"%LEFT(abc,1E999)", "!! Error in one of the arguments in function LEFT"},
           Row{"%LEFT(abc)", "!! Wrong number of arguments for function LEFT"},
           Row{"%LENGTH()", "0"},
           Row{"%LENGTH(abc)", "3"},
           Row{"%LENGTH(\"a,b\")", "3"},
           Row{"<%LTRIM(  a ) >", "<a  >"},
           Row{"<%RTRIM(  a ) >", "<  a >"},
           Row{"<%TRIM(  a ) >", "<a >"},
           Row{"%NUMWORDS()", "1"},
           Row{"%NUMWORDS(,)", "1"},
           Row{"%NUMWORDS(x)", "1"},
           Row{"%NUMWORDS(a b  c)", "4"},
           Row{"%NUMWORDS(a|b,|)", "2"},
           Row{"%NUMWORDS(a||b,||)", "1"},
           Row{"%POS(B,abc)", "2"},
           Row{"%POS(x,abc)", "0"},
           Row{"%POS(,abc)", "1"},
           Row{"%POS(a,)", "0"},
           Row{"%PROPER(hELLO wORLD)", "Hello world"},
           Row{"%PROPER()", ""},
           Row{"%REPLACE(aXbXc,X,--)", "a--b--c"},
           Row{"%REPLACE(aXb,x,-)", "aXb"},
           Row{"%REPLACE(abc,,x)", "abc"},
           Row{"%RIGHT(abc,2)", "bc"},
           Row{"%RIGHT(abc,9)", "abc"},
           Row{"%RIGHT(abc,-1)", "!! Error in one of the arguments in function RIGHT"},
           Row{"%WORD(a b c, ,2)", "b"},
           Row{"%WORD(a b c, ,2.5)", "b"},
           Row{"%WORD(a b c, ,9)", "c"},
           Row{"%WORD(a b c, ,0)", "!! Error in one of the arguments in function WORD"},
           Row{"%WORD(a--b,--,2)", "b"},
           Row{"%WORD(a b,,2)", "a b"},
           Row{"%WORD(, ,1)", ""},
       })
    EXPECT_EQ(Explode(row.text), row.result) << row.text;
}

TEST_F(Library, Lists) {
  for (const Row& row : {
           Row{"%DELITEM(a|b|c,B)", "a|c"},
           Row{"%DELITEM(a|b|c,a)", "b|c"},
           Row{"%DELITEM(a|b|c,C)", "a|b"},
           Row{"%DELITEM(a,a)", ""},
           Row{"%DELITEM(a|b,x)", "a|b"},
           Row{"%DELITEM(ab|b,b)", "ab"},
           Row{"%DELITEM(a|b|a,a)", "b|a"},
           Row{"%DELITEM(,x)", ""},
           Row{"%DELNITEM(a|b|c,1)", "b|c"},
           Row{"%DELNITEM(a|b|c,2)", "a|c"},
           Row{"%DELNITEM(a|b|c,3)", "a|b"},
           Row{"%DELNITEM(a|b|c,4)", "!! Error in one of the arguments in function DELNITEM"},
           Row{"%DELNITEM(a|b|c,5)", "a|c"},
           Row{"%DELNITEM(a|b|c,6)", "a|b"},
           Row{"%DELNITEM(a|b|c,0)", "a|b|c"},
           Row{"%DELNITEM(a|b|c,-2)", "a|b|c"},
           Row{"%DELNITEM(a|b|c,2000000000)", "a|c"},
           Row{"%DELNITEM(a,1)", ""},
           Row{"%DELNITEM(a,2)", "!! Error in one of the arguments in function DELNITEM"},
           Row{"%DELNITEM(,1)", ""},
           Row{"%PUSH(a|b,c)", "c|a|b"},
           Row{"%PUSH(,c)", "c"},
           Row{"%PUSH(\"a|b\",\"c,d\")", "c,d|a|b"},
           Row{"%DELITEM(a||b,)", "a|b"},
           Row{"%REVERSELIST(a|b|c)", "c|b|a"},
           Row{"%REVERSELIST()", ""},
           Row{"%SORT(b|C|a,0)", "a|b|C"},
           Row{"%SORT(b|C|a,1)", "C|b|a"},
           Row{"%SORT(b|a|B|A,0)", "a|A|b|B"},
           Row{"%SORT(b|a|B|A,1)", "b|B|a|A"},
           Row{"%SORT(,0)", ""},
           Row{"%SORT(a,0)", "a"},
           Row{"%SORT(b|a,-1)", "b|a"},
           Row{"%SORT(b|a)", "!! Error in one of the arguments in function SORT"},
           Row{"%SORT(b|a,x)", "!! Error in one of the arguments in function SORT"},
       })
    EXPECT_EQ(Explode(row.text), row.result) << row.text;
}

TEST_F(Library, PopChangesTheVariable) {
  EXPECT_EQ(Explode("%POP(list)"), "a");
  EXPECT_EQ(Get("list"), "b|c");
  EXPECT_EQ(Explode("%POP(LIST) %POP(list)"), "b c");
  EXPECT_EQ(Get("list"), "");
  EXPECT_EQ(Explode("<%POP(list) >"), "< >");
  EXPECT_EQ(Explode("<%POP(nothing) >"), "< >");
  EXPECT_EQ(Get("nothing"), "(none)");
}

TEST_F(Library, Numbers) {
  for (const Row& row : {
           Row{"%CASE(2,a,b,c)", "b"},
           Row{"%CASE(1,a,b)", "a"},
           Row{"%CASE(0,a,b)", "0"},
           Row{"%CASE(1-1,a,b)", "0"},
           Row{"%CASE(2.5,a,b,c)", "b"},
           Row{"%CASE(3,a,b)", ""},
           Row{"%CASE(-1,a,b)", ""},
           Row{"%CASE(x,a,b)", "!! Argument 1 must be numeric in function CASE"},
           Row{"%CASE(1,a)", "!! Wrong number of arguments for function CASE"},
           Row{"%EVAL(1+2*3)", "7"},
           Row{"%EVAL(@x*2)", "10"},
           Row{"%EVAL((@name=\"bob\"))", "1"},
           Row{"%EVAL(1/0)", "!! Bad expression 1/0"},
           Row{"%EVAL(\"a,b\")", "!! Wrong number of arguments for function EVAL"},
           Row{"%IF(@x>3,big,small)", "big"},
           Row{"%IF(@x>7,big,small)", "small"},
           Row{"%IF((@name=\"bob\"),a,b)", "a"},
           Row{"%IF(hp,a,b)", "!! Undefined variable or unknown symbol in expression [HP] expression hp"},
           Row{"%IF(1,a)", "!! Wrong number of arguments for function IF"},
           Row{"%ISNUMBER(12)", "1"},
           Row{"%ISNUMBER( -1.5e3 )", "1"},
           Row{"%ISNUMBER(1x)", "0"},
           Row{"%ISNUMBER()", "0"},
           Row{"%MAX(1,2)", "2"},
           Row{"%MAX(-1.5,-2,1-4)", "-1.5"},
           Row{"%MAX(1)", "!! Wrong number of arguments for function MAX"},
           Row{"%MAX(1,x)", "!! Argument 2 must be numeric in function MAX"},
           Row{"%MAX(1,)", "!! Argument 2 must be numeric in function MAX"},
           Row{"%MAX(-3000000000,-3000000001)", "-2147483648"},
           Row{"%MIN(3,2.5)", "2.5"},
           Row{"%MIN(3000000000,3000000001)", "2147483648"},
           Row{"%MIN(1)", "!! Wrong number of arguments for function MIN"},
           Row{"%LEFT(abc,@x-4)", "a"},
       })
    EXPECT_EQ(Explode(row.text), row.result) << row.text;
}

TEST_F(Library, ConditionOnATextNeedsBrackets) {
  EXPECT_TRUE(Explode("%IF(@name=\"bob\",a,b)").starts_with("!! "));
  EXPECT_EQ(Explode("%IF((@name=\"bob\"),a,b)"), "a");
}

TEST_F(Library, RandomStaysInItsRange) {
  std::set<std::string> seen;
  for (int i = 0; i < 500; ++i) seen.insert(Explode("%RANDOM(2,4)"));
  EXPECT_EQ(seen, (std::set<std::string>{"2", "3", "4"}));
  for (int i = 0; i < 100; ++i) {
    const double number = Val(Explode("%RANDOM(-3,-1)"));
    EXPECT_GE(number, -3);
    EXPECT_LE(number, -1);
  }
  EXPECT_EQ(Explode("%RANDOM(7,7)"), "7");
  for (const char* tooWide : {"%RANDOM(1,1E300)", "%RANDOM(-1E300,1)", "%RANDOM(-3E38,3E38)"})
    EXPECT_EQ(Explode(tooWide), "!! Error in one of the arguments in function RANDOM") << tooWide;
}

TEST_F(Library, Program) {
  for (const Row& row : {
           Row{"%CONNECTED(x)|", "|"},  // replaced by the system variable of that name
           Row{"%DEFINED(X)", "1"},
           Row{"%DEFINED(nothing)", "0"},
           Row{"%ENDOFFILE(3)", "0"},
           Row{"%ENDOFFILE(4)", "1"},
           Row{"%ENDOFFILE(11)", "!! Error in one of the arguments in function ENDOFFILE"},
           Row{"%EXPAND(~@x)", "5"},
           Row{"%EXPAND(@note)", "about 5"},
           Row{"%EXPAND(%1)", ""},
           Row{"%EXPAND(~%LEFT~(abc~,1~))", "a"},
           Row{"%EXPAND(~%NOFUN~(~))", "!! Unknown function NOFUN"},
           Row{"%LASTLINE(1)", "line1"},
           Row{"%LASTLINE(2)", "line0"},
           Row{"%LASTLINE(3)", "line9"},
           Row{"%LASTLINE(10)", "line2"},
           Row{"%LASTLINE(12)", "line0"},
           Row{"%LASTLINE(0)", "line2"},
           Row{"%LASTLINE(2147483647)", "!! Error in one of the arguments in function LASTLINE"},
           Row{"%LASTLINE(-2147483648)", "!! Error in one of the arguments in function LASTLINE"},
           Row{"%LASTLINE(13)", "!! Error in one of the arguments in function LASTLINE"},
           Row{"%PICK(a:1|b:2)", "picked from a:1|b:2"},
           Row{"%SWITCHDIRECTION(n)", "S"},
           Row{"%SWITCHDIRECTION(Up)", "DOWN"},
           Row{"%SWITCHDIRECTION(s)", ""},
           Row{"%VAR(x)", "5"},
           Row{"%VAR(nothing)", ""},
           Row{"%CHARINFO(level)", "!! Invalid parameter in CharInfo function"},
           Row{"%NOFUN(x)", "!! Unknown function NOFUN"},
           Row{"%TRIM(a,b)", "!! Wrong number of arguments for function TRIM"},
       })
    EXPECT_EQ(Explode(row.text), row.result) << row.text;
}

TEST_F(Library, CharacterOfTheOwner) {
  EXPECT_EQ(Explode("%CHARINFO(name)", 2), "Frodo Baggins");
  EXPECT_EQ(Explode("%CHARINFO(Password)", 2), "ring");
  EXPECT_EQ(Explode("%CHARINFO(REFERENCE)", 2), "FRODO");
  EXPECT_EQ(Explode("%CHARINFO(MUDNAME)", 2), "Shire");
  EXPECT_EQ(Explode("%CHARINFO(CONNECTED)", 2), "0");  // the last session of that reference
  sockets.Open = {3};
  EXPECT_EQ(Explode("%CHARINFO(CONNECTED)", 2), "1");
  EXPECT_EQ(Explode("%CHARINFO(NAME)", 9), "!! Error in one of the arguments in function CHARINFO");
  sessions.CharacterRef[1] = "Sam";
  EXPECT_EQ(Explode("<%CHARINFO(CONNECTED) >", 1), "< >");
  sessions.SessionRef[0] = "sam";
  EXPECT_EQ(Explode("%CHARINFO(CONNECTED)", 1), "0") << "the start session counts";
}

TEST_F(Library, ConnectedAsksTheFirstSessionOfThatName) {
  const auto ask = [&](const std::string& reference) {
    FunctionArguments arguments;
    arguments[1] = reference;
    std::string error;
    return functions.ExecuteFunction("Connected", arguments, 1, error, 0, expansion);
  };
  EXPECT_EQ(ask("fro"), "1");
  EXPECT_EQ(ask("GANDALF"), "0");
  EXPECT_EQ(ask("sam"), "0");
  sessions.SessionRef[0] = "sam";
  sockets.Open.insert(0);
  EXPECT_EQ(ask("sam"), "0") << "the start session does not count";
  sockets.Open = {3};
  EXPECT_EQ(ask("frodo"), "0");
}

TEST_F(Library, VarAlwaysPutsTheAtSignInFront) {
  options.VariableChar = '$';
  EXPECT_EQ(Explode("%VAR(x)"), "@x");
}

TEST_F(Library, OwnersSeeTheirVariables) {
  Set("own", "1", 2);
  EXPECT_EQ(Explode("%DEFINED(own)", 2), "1");
  EXPECT_EQ(Explode("%DEFINED(own)", 1), "0");
  EXPECT_EQ(Explode("%DEFINED(x)", 1), "1");
  EXPECT_EQ(Explode("%VAR(own)", 2), "1");
}

TEST(Lists, ItemOperations) {
  EXPECT_EQ(CvSubString("A|B|C", "b", 1), "2");
  EXPECT_EQ(CvSubString("a|b|c", "b", 1), "0");
  EXPECT_EQ(CvSubString("A|B|A", "a", 2), "B");
  EXPECT_EQ(CvSubString("", "a", 1), "0");
  EXPECT_EQ(CvSubString("A", "a", 2), "");
}

TEST(Values, RangesAndTables) {
  std::string error;
  EXPECT_EQ(ValidValue("50", 4, 0, 100, error), 50);
  EXPECT_EQ(ValidValue("2.5", 4, 0, 100, error), 2);
  EXPECT_EQ(error, "");
  EXPECT_EQ(ValidValue("x", 4, 0, 100, error), 0);
  EXPECT_EQ(error, "Parameter 3 must be numeric");
  EXPECT_EQ(ValidValue("500", 5, 0, 100, error), 0);
  EXPECT_EQ(error, "Parameter 3 must be numeric");
  error.clear();
  EXPECT_EQ(ValidValue("500", 5, 0, 100, error), 0);
  EXPECT_EQ(error, "Parameter 4 must be in the range 0 and 100");
  for (const char* outside : {"-1", "100.5", "-0.1", "1E999", "-1E999"}) {
    error.clear();
    EXPECT_EQ(ValidValue(outside, 2, 0, 100, error), 0);
    EXPECT_EQ(error, "Parameter 1 must be in the range 0 and 100") << outside;
  }
  error.clear();
  EXPECT_EQ(ValidValue("", 2, 0, 100, error), 0);
  EXPECT_EQ(error, "Parameter 1 must be numeric");
  EXPECT_EQ(ConvertToInteger(32767), 32767);
  EXPECT_THROW(ConvertToInteger(32768), Fault);

  Script script;
  Table<std::string> table(4);
  table[1] = "one";
  table[3] = "Three";
  const auto find = [&](const char* text, int16 flags, const char* list = "") {
    return lookup(table, 4, text, list, flags, script.symbols, 0);
  };
  EXPECT_EQ(find("THREE", 0), 3);
  EXPECT_EQ(find("four", 0), 0);
  EXPECT_EQ(find("four", lookupflag::FreeRow), 2);
  EXPECT_EQ(find("three", lookupflag::ClassIsOn, "fight"), 0);
  script.symbols.CheckAndAddClass("fight", 0);
  EXPECT_EQ(find("three", lookupflag::ClassIsOn, "fight"), 3);
}

}  // namespace
}  // namespace corvid
