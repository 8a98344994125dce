// SPDX-License-Identifier: GPL-3.0-or-later
#include "script/expansion.h"

#include <gtest/gtest.h>

#include "fakes.h"
#include "script/function_library.h"

namespace corvid {
namespace {

using testing_script::Script;
using testing_script::Texts;

// LEFT gives its first argument up to the number in the second; FAIL fails; any other gives "name[a][b]" and, for a
// caller other than owner 0, "@owner".
class FakeFunctions : public FunctionLibrary {
 public:
  std::string ExecuteFunction(const std::string& functionName, FunctionArguments& parameter, int16 parameters,
                              std::string& ErrorDescription, OwnerId tempOwner, Expansion&) override {
    if (functionName == "LEFT") return parameter[1].substr(0, std::stoul(parameter[2]));
    if (functionName == "QUOTED") return "\"q\"";
    if (functionName == "FAIL") ErrorDescription = "failed";
    std::string result = functionName;
    for (int16 i = 1; i <= parameters; ++i) result += "[" + parameter[i] + "]";
    return tempOwner == 0 ? result : result + "@" + std::to_string(tempOwner);
  }
};

class Expand : public testing::Test, protected Script {
 protected:
  Expand() {
    symbols.LoadSystemVariables();
    state.SystemValues[sysvar::CHAR] = "Gandalf";
    state.SystemValues[sysvar::CONNECTED] = "1";
    Set("x", "5");
    Set("y", "6");
    Set("text", "abc");
    Set("empty", "");
    Set("quoted", "say \"hi\"");
    Set("more", "@x %1 ~~");
    Set("name", "x");
    Set("k", "IF");
    rvar.Set(0, "one two ");
    rvar.Set(1, "one");
    rvar.Set(2, "x");
    rvar.Set(99, "last");
  }
  std::string Explode(const std::string& text, int16 flags = 0, OwnerId owner = 0) {
    std::string error;
    std::string result = expansion.ExplodeVariable(text, error, rvar, flags, owner);
    if (error.empty()) return result;
    EXPECT_EQ(result, "");
    return "!! " + error;
  }
  FakeFunctions functions;
  int clipboardReads = 0;
  Expansion expansion{state, options, symbols, functions, [this] {
                        ++clipboardReads;
                        return std::string("copied");
                      }};
  Parameters rvar;
};

struct Row {
  const char* text;
  const char* result;
};

TEST_F(Expand, Values) {
  for (const Row& row : {
           Row{"", ""},
           Row{"plain text {}", "plain text {}"},
           Row{"@x@y", "56"},
           Row{"@x", "5"},
           Row{"@X.", "5."},
           Row{"@x_y", "5_y"},
           Row{"a@x b", "a5 b"},
           Row{"@nothing|", "|"},
           Row{"@", ""},
           Row{"@ x", " x"},
           Row{"%1 and %2", "one and x"},
           Row{"%0|", "one two |"},
           Row{"%99", "last"},
           Row{"%3|", "|"},
           Row{"%100", "%100"},
           Row{"%65537", "one"},
           Row{"%1E999", "%1E999"},
           Row{"%CHAR", "Gandalf"},
           Row{"%char!", "Gandalf!"},
           Row{"%FOO", "%FOO"},
           Row{"%FOO@x", "%FOO@x"},
           Row{"%FOO @x", "%FOO 5"},
           Row{"%x", "%x"},
           Row{"100%", "100%"},
           Row{"100% @x", "100% 5"},
           Row{"%%CHAR", "%%CHAR"},
           Row{"a%CRLF|", "a\r\n|"},
           Row{"@{name}", "x"},
           Row{"@{%2}", "5"},
           Row{"@{@name}", "5"},
           Row{"@{x}y", "5y"},
           Row{"%{1}0", "one0"},
           Row{"%{CHAR}s", "Gandalfs"},
           Row{"%{foo}@x", "%{foo}5"},
           Row{"@a{b}", "{b}"},
           Row{"%{@{name}}", "%{@{name}}"},
           Row{"@more", "@x %1 ~~"},
           Row{"a~@b", "a@b"},
           Row{"~~", "~"},
           Row{"a~", "a"},
           Row{"~%1", "%1"},
           Row{"~{~}", "{}"},
           Row{"@~x", "5"},
           Row{"%C~H~AR", "Gandalf"},
           Row{"%F~OO", "%F~OO"},
           Row{"@{x", "!! inappropriate use of braces with variables"},
           Row{"@{a{b}", "!! inappropriate use of braces with variables"},
           Row{"@{", "!! inappropriate use of braces with variables"},
       })
    EXPECT_EQ(Explode(row.text), row.result) << row.text;
}

TEST_F(Expand, UnknownVariableStaysWhenExplicit) {
  options.Explicit = true;
  EXPECT_EQ(Explode("@nothing"), "@nothing");
  EXPECT_EQ(Explode("@nothing@x @x"), "@nothing@x 5");
  EXPECT_EQ(Explode("@{nothing}@x"), "@{nothing}5");
  EXPECT_EQ(Explode("@LEFT(abc,1)"), "a");
  EXPECT_EQ(Explode("@x"), "5");
}

TEST_F(Expand, EmptyTablesWork) {
  state.VariableCount = 0;
  EXPECT_EQ(Explode("<@x>"), "<>");
}

TEST_F(Expand, OwnersSeeTheirVariables) {
  Set("hp", "seven", 7);
  Set("hp", "eight", 8);
  state.CurrentOwner = 8;
  EXPECT_EQ(Explode("@hp", 0, 7), "seven");
  EXPECT_EQ(Explode("@hp", 0, -1), "eight");
  EXPECT_EQ(Explode("@hp|", 0, 0), "|");
  EXPECT_EQ(Explode("%SHOW(@hp)", 0, 7), "SHOW[eight]@7");  // arguments belong to the current character
  EXPECT_EQ(Explode("%SHOW(a)", 0, -1), "SHOW[a]@8");
  Set("which", "hp", 8);
  Set("which", "x", 7);
  EXPECT_EQ(Explode("@{@which}", 0, 7), "seven");  // a name in braces too
}

TEST_F(Expand, ClipboardIsReadEachTime) {
  EXPECT_EQ(Explode("%CLIPBOARD %clipboard"), "copied copied");
  EXPECT_EQ(clipboardReads, 2);
}

TEST_F(Expand, ConfiguredCharacters) {
  options.VariableChar = '$';
  options.EscapeChar = '!';
  EXPECT_EQ(Explode("$x @x ~ !$x"), "5 @x ~ $x");
  EXPECT_EQ(Explode("%SHOW(@x,$x)"), "SHOW[@x][$x]");  // the argument test looks for "@" and "%" alone
  EXPECT_EQ(Explode("%SHOW($x%1)"), "SHOW[5one]");
  options.VariableChar = '%';
  EXPECT_EQ(Explode("%x"), "5");
  EXPECT_EQ(Explode("%CHAR|"), "|");
}

TEST_F(Expand, FunctionCalls) {
  for (const Row& row : {
           Row{"%LEFT(abc,1)", "a"},
           Row{"@LEFT(abc,1)", ""},
           Row{"%LEFT(abc,1)x", "ax"},
           Row{"%LEFT(abc,1) x", "a x"},
           Row{"%LEFT(abc,1)@x", "a@x"},
           Row{"%LEFT(abc,1) @x", "a 5"},
           Row{"%LEFT(abc,1)%LEFT(xyz,1)", "a%LEFT(xyz,1)"},
           Row{"%LEFT(abc,1){x}", "a{x}"},
           Row{"%CONNECTED(x)", "1"},
           Row{"%CONNECTED(x).", "1."},
           Row{"%CONNECTED(x)y", "CONNECTED[x]y"},
           Row{"%LEFT(abc,1)~@x", "a~@x"},   // an escaped character becomes part of the name that goes on
           Row{"%LEFT(abc,2)(xyz,1)", "x"},  // a second list calls again
           Row{"%1(x)", "one"},              // the parameter of that number replaces the result
           Row{"%SHOW()", "SHOW[]"},
           Row{"%SHOW(a, b ,c)", "SHOW[a][ b ][c]"},
           Row{"%show(a)", "show[a]"},
           Row{"%SHOW((a,b),c)", "SHOW[(a,b)][c]"},
           Row{"%SHOW(@x,%1,lit)", "SHOW[5][one][lit]"},
           Row{"%SHOW(%SHOW(@x),b)", "SHOW[SHOW[5]][b]"},
           Row{"%SHOW(@more)", "SHOW[@x %1 ~~]"},
           Row{"%SHOW(~@x)", "SHOW[@x]"},
           Row{"%SHOW(a~,b)", "SHOW[a,b]"},
           Row{"%SHOW(a~)b)", "SHOW[a)b]"},
           Row{"%SHOW(a~\"b)", "SHOW[a\"b]"},
           Row{"%LEFT(\"a,b\",1)", "a"},
           Row{"%SHOW(\"a,b\",1)", "SHOW[a,b][1]"},
           Row{"%SHOW( \"a)b\" ,1)", "SHOW[ a)b ][1]"},
           Row{"%SHOW(a\"b,c\")", "SHOW[a\"b][c\"]"},
           Row{"%SHOW(\"a\"b\"c)", "SHOW[ab\"c]"},
           Row{"%SHOW(\"@x\")", "SHOW[5]"},
           Row{"%EVAL(\"a,b\")", "EVAL[\"a][b\"]"},
           Row{"%eval(\"a,b\")", "eval[a,b]"},
           Row{"%{SHOW}(a)", "%{SHOW}(a)"},
           Row{"%(a)", "[a]"},
           Row{"%SHOW(a", "!! Unbalanced parentheses for argument list in function SHOW"},
           Row{"%SHOW(", "!! Unbalanced parentheses for argument list in function SHOW"},
           Row{"%SHOW((a)", "!! Unbalanced parentheses for argument list in function SHOW"},
           Row{"%SHOW(\"a)", "!! Unbalanced parentheses for argument list in function SHOW"},
           Row{"%FAIL(a)", "!! failed"},
           Row{"x %SHOW(%FAIL(a)) y", "!! failed"},
           Row{"@{%FAIL(a)}", "!! failed"},
       })
    EXPECT_EQ(Explode(row.text), row.result) << row.text;
}

TEST_F(Expand, ExpressionMode) {
  Set("num", "12");
  Set("padded", " 12 ");
  Set("frac", "1.5");
  for (const Row& row : {
           Row{"@num > 5", "12 > 5"},
           Row{"@frac", "1.5"},
           Row{"@padded|", " 12 |"},
           Row{"@text = 1", "\"abc\" = 1"},
           Row{"@empty=0", "\"\"=0"},
           Row{"@nothing=0", "\"\"=0"},
           Row{"@quoted", "say \"hi\""},
           Row{"@{@name}", "5"},  // a name in braces is no expression
           Row{"%1", "\"one\""},
           Row{"%CONNECTED", "1"},
           Row{"%FOO", "%FOO"},
           Row{"%SHOW(1)", "\"SHOW[1]\""},
           Row{"%LEFT(12,1) ", "\"1\" "},
           Row{"%QUOTED()", "\"q\""},
           Row{"%SHOW(@text)", "\"SHOW[\"abc\"]\""},
       })
    EXPECT_EQ(Explode(row.text, ExpressionMode), row.result) << row.text;
}

TEST_F(Expand, FirstArgumentOfAConditionIsAnExpression) {
  EXPECT_EQ(Explode("%IF(@text,@text)"), "IF[\"abc\"][abc]");
  EXPECT_EQ(Explode("%EVAL(@x+@text)"), "EVAL[5+\"abc\"]");
  EXPECT_EQ(Explode("%if(@text,@text)"), "if[abc][abc]");
  // A variable that just gave the text IF has the same effect on the next call.
  EXPECT_EQ(Explode("@k %SHOW(@text,@text)"), "IF SHOW[\"abc\"][abc]");
  EXPECT_EQ(Explode("@text %SHOW(@text,@text)"), "abc SHOW[abc][abc]");
}

TEST_F(Expand, TwentyArgumentsAndNoMore) {
  std::string call = "%SHOW(1";
  for (int i = 2; i <= 20; ++i) call += "," + std::to_string(i);
  EXPECT_TRUE(Explode(call + ")").ends_with("[19][20]"));
  EXPECT_THROW(Explode(call + ",21)"), Fault);
  EXPECT_EQ(Explode("@x"), "5");
}

TEST_F(Expand, NestingHasAnEndAndNoCrash) {
  std::string deep;
  for (int i = 0; i < 2000; ++i) deep += "@{";
  EXPECT_EQ(Explode(deep), "!! inappropriate use of braces with variables");
  std::string closed = deep + std::string(2000, '}');
  EXPECT_EQ(Explode(closed), "!! Variables and function calls are nested too deeply");
  EXPECT_EQ(Explode("@{@{@{x}}}"), "");
}

TEST_F(Expand, GameTextStaysData) {
  rvar.Set(1, ";#{}@x%CHAR~%LEFT(a,1)");
  EXPECT_EQ(Explode("got %1!"), "got ;#{}@x%CHAR~%LEFT(a,1)!");
  EXPECT_EQ(Explode("%SHOW(%1)"), "SHOW[;#{}@x%CHAR~%LEFT(a,1)]");
}

}  // namespace
}  // namespace corvid
