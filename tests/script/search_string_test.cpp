// SPDX-License-Identifier: GPL-3.0-or-later
#include "script/search_string.h"

#include <gtest/gtest.h>

#include "core/fault.h"
#include "fakes.h"

namespace corvid {
namespace {

using testing_script::Script;
using testing_script::Texts;

struct Converted {
  std::string Pattern;
  Texts Parts;
  Texts Names;
  std::string Error;
};

Texts Filled(const TriggerTexts& texts) {
  Texts filled;
  for (int32 i = 1; i <= texts.Held(); ++i) filled.push_back(texts[i]);
  while (!filled.empty() && filled.back().empty()) filled.pop_back();
  return filled;
}

Converted Convert(const std::string& search, char escape = '~') {
  Script script;
  script.options.EscapeChar = escape;
  script.state.Triggers.Resize(1);
  Converted result;
  result.Pattern = ConvertSearchString(script.state, script.options, search, 1, result.Error);
  result.Parts = Filled(script.state.Triggers.Read(1).Parts);
  result.Names = Filled(script.state.Triggers.Read(1).Names);
  return result;
}

struct Row {
  std::string search, pattern;
  Texts parts;
  Texts names = {};
};

TEST(ConvertSearchString, Table) {
  for (const Row& row : {
           Row{"", "", {}},
           Row{"hello", "hello", {"hello"}},
           Row{"* says *", "* says *", {" says "}},
           Row{"* says &msg", "* says *", {" says "}, {"", "msg"}},
           Row{"&who says &msg", "* says *", {" says "}, {"who", "msg"}},
           Row{"&{who}x says &{m2}.", "*x says *.", {"x says ", "."}, {"who", "m2"}},
           Row{"&all", "*", {}, {"all"}},
           Row{"&a&b", "**", {}, {"b"}},
           Row{"You see [A-C]*", "You see [A-C]*", {"You see "}},
           Row{"a[*]b", "a[*]b", {"a*b"}},
           Row{"[*] hi", "[*] hi", {"* hi"}},
           Row{"x[]y", "x[]y", {"x[]y"}},
           Row{"[[x]]", "[[x]]", {"]"}},
           Row{"a?b#c*d", "a?b#c*d", {"a", "b", "c", "d"}},
           Row{"hp [0-9] of *", "hp [0-9] of *", {"hp ", " of "}},
           Row{"a[bc", "a[bc", {"a[bc"}},
           Row{"*[bc", "*[bc", {}},
           Row{"AT&T", "AT*", {"AT"}, {"", "T"}},
           Row{"end &", "end &", {"end &"}},
           Row{"& x", "* x", {" x"}},
           Row{"<chat>* shouts", "* shouts", {" shouts"}},
           Row{"<chat", "<chat", {"<chat"}},
           Row{"<>x", "x", {"x"}},
           // An escaped wildcard is literal for the parts and stays one in the pattern.
           Row{"~*", "*", {"*"}},
           Row{"a~*b*", "a*b*", {"a*b"}},
           Row{"~?~#", "?#", {"?#"}},
           Row{"~&x", "&x", {"&x"}},
           Row{"~~x", "~x", {"~x"}},
           Row{"x~", "x~", {"x~"}},
           Row{"~[x]", "[x]", {"x"}},
           Row{"~[y~[~]~]z", "[y[]]z", {"yz"}},
           Row{"a[~x]b", "a[x]b", {"a", "b"}},
           Row{"&", "&", {"&"}},
           // What is written in another alphabet has no meaning to take away.
           Row{"a~\xA3*b~\xDB", "a\xA3*b\xDB", {"a\xA3", "b\xDB"}},
           Row{"~*\xA6x", "*\xA6x", {"*\xA6x"}},
           Row{"~*a[bc]d",
               "*a[bc]d",
               {"\x7f\xAA"
                "a",
                "d"}},
           Row{"~*a*b", "*a*b", {"*a", "b"}},
           // The code that marks an escape goes wherever it stands, and only where something was escaped.
           Row{"a\x7f~*b\x7f", "a*b", {"a*b"}},
           Row{"a\x7f*b", "a\x7f*b", {"a\x7f", "b"}},
           // Behind a name in front, the text after an escape begins again as many characters earlier.
           Row{"<x>a~*b", "a*a*b", {"a*a*b"}},
           Row{"<x>~*~*c", "*>**c", {"*>**c"}},
       }) {
    SCOPED_TRACE(row.search);
    const Converted result = Convert(row.search);
    EXPECT_EQ(result.Error, "");
    EXPECT_EQ(result.Pattern, row.pattern);
    EXPECT_EQ(result.Parts, row.parts);
    EXPECT_EQ(result.Names, row.names);
  }
}

TEST(ConvertSearchString, BracesAroundAVariableMustClose) {
  EXPECT_EQ(Convert("x &{name").Error, "Unbalanced braces in search string around variable");
  EXPECT_EQ(Convert("x &{").Error, "Unbalanced braces in search string around variable");
  EXPECT_EQ(Convert("x &{na me}").Error, "Illegal character found in variable name within braces");
  EXPECT_EQ(Convert("x &{na me}").Pattern, "");
}

TEST(ConvertSearchString, FollowsTheEscapeCharacter) {
  EXPECT_EQ(Convert("a!*b*", '!').Parts, (Texts{"a*b"}));
  EXPECT_EQ(Convert("a~*b*", '!').Parts, (Texts{"a~", "b"}));
}

TEST(ConvertSearchString, HasRoomForThirtyParts) {
  std::string search = "p";
  for (int i = 1; i < 30; ++i) search += "*p";
  EXPECT_EQ(Convert(search).Parts.size(), 30U);
  try {
    Convert(search + "*p");
    FAIL() << "the thirty-first part has no place";
  } catch (const Fault& fault) {
    EXPECT_EQ(fault.Kind, FaultKind::Index);
  }
}

TEST(ConvertSearchString, ClearsTenPartsOfItsRow) {
  Script script;
  script.state.Triggers.Resize(1);
  for (const int32 i : {1, 10, 11}) {
    script.state.Triggers[1].Parts[i] = "old";
    script.state.Triggers[1].Names[i] = "old";
  }
  std::string error;
  ConvertSearchString(script.state, script.options, "new*", 1, error);
  const TriggerRecord& record = script.state.Triggers.Read(1);
  EXPECT_EQ(record.Parts[1], "new");
  EXPECT_EQ(record.Parts[10], "");
  EXPECT_EQ(record.Parts[11], "old");
  EXPECT_EQ(record.Names[10], "");
  EXPECT_EQ(record.Names[11], "old");
}

// Anything slower than in proportion to the length would keep a player waiting for minutes.
TEST(ConvertSearchString, AMegabyteIsConvertedAtOnce) {
  const auto times = [](std::string_view piece) {
    std::string text;
    while (text.size() < std::size_t{1} << 20) text += piece;
    return text;
  };
  EXPECT_EQ(Convert("<n>" + times("~a")).Error, "");
  EXPECT_EQ(Convert(times("[x]")).Parts.at(0).find_first_not_of('x'), std::string::npos);
  EXPECT_EQ(Convert(times("[") + "x]").Error, "");
  EXPECT_EQ(Convert(times("&")).Names.size(), 0U);
  EXPECT_EQ(Convert(times("&a")).Names, Texts{"a"});
  EXPECT_EQ(Convert(times("&{a}")).Pattern.find_first_not_of('*'), std::string::npos);
}

struct ColourRow {
  std::string search, pattern, error;
};

TEST(ConvertColourString, Table) {
  Script script;
  script.symbols.LoadSystemVariables();
  for (const ColourRow& row : {
           ColourRow{"Bright Red On Blue", "<BRIGHT>*<RED>*<BLUE BACKGROUND>*", ""},
           ColourRow{"red", "*<RED>*", ""},
           ColourRow{"bright white", "<BRIGHT>*<WHITE>*", ""},
           ColourRow{"default on default", "*<DEFAULT>*<DEFAULT BACKGROUND>*", ""},
           ColourRow{"<alarm>red", "*<RED>*", ""},
           ColourRow{"Pink", "", "Colour Pink not found in trigger search string."},
           ColourRow{"Bright", "", "Colour  not found in trigger search string."},
           ColourRow{"", "", "Colour  not found in trigger search string."},
           ColourRow{"Normal", "", "Colour Normal not found in trigger search string."},
           ColourRow{"Red Foo", "", "The \"ON\" word was expected in colour."},
           ColourRow{"Red On", "", "Expected colour at end of search string"},
           ColourRow{"Red On Blue Green", "", "Expected colour at end of search string"},
           ColourRow{"Red On Pink", "", "Colour Pink not found in trigger search string."},
       }) {
    std::string error;
    EXPECT_EQ(ConvertColourString(script.state, row.search, error), row.pattern) << row.search;
    EXPECT_EQ(error, row.error) << row.search;
  }
  for (const char* name : {"BLACK", "RED", "GREEN", "YELLOW", "BLUE", "MAGENTA", "CYAN", "WHITE", "DEFAULT"}) {
    std::string error;
    EXPECT_EQ(ConvertColourString(script.state, name, error), std::string("*<") + name + ">*");
  }
}

}  // namespace
}  // namespace corvid
