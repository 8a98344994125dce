// SPDX-License-Identifier: GPL-3.0-or-later
// Which triggers fire, in which order, and with what, against a reference that tests each row in turn and knows of no
// filter.
#include <algorithm>
#include <random>

#include "commands/fixture.h"
#include "core/pattern.h"

namespace corvid::test {

class TriggerPropertyTest : public CommandTest {
 protected:
  TriggerPropertyTest() {
    MakeSession(1, "bob", true);
    MakeSession(2, "amy", true);
    options.ColourTextTags = true;
    script.CurrentSocket = 1;
    script.CurrentOwner = 0;
  }

  std::size_t Dice(std::size_t sides) { return random_() % sides; }
  int32 AnyRow() { return 1 + static_cast<int32>(Dice(static_cast<std::size_t>(script.TriggerCount))); }
  std::string Pick(const Lines& from) { return from[Dice(from.size())]; }

  std::string RandomText(std::size_t longest, std::string_view codes) {
    std::string text;
    for (std::size_t i = Dice(longest + 1); i > 0; --i) text += codes[Dice(codes.size())];
    return text;
  }
  std::string RandomSearch() {
    std::string search;
    for (std::size_t i = 1 + Dice(4); i > 0; --i) {
      if (Dice(2) == 0) search += Pick({"*", "*", "?", "#", "[a-c]", "[!x]", "[", "[*]", "~*", "&v", "@p"});
      search += Pick({"", "a", "ab", "Orc", " says ", "the troll", "b1", "hits", RandomText(3, "abAB ")});
    }
    if (Dice(2) == 0) search += "*";
    return search.empty() ? "*" : search;
  }
  std::string RandomLine() {
    std::string line;
    for (std::size_t i = Dice(5); i > 0; --i) {
      if (Dice(5) == 0) line += "\x1b[" + Pick({"31", "1;31", "44", "0"}) + "m";
      line +=
          Pick({"a", "ab", "Orc", "ORC", " says ", "The troll", "the troll", "b1", "hits", RandomText(3, "abAB1*[ ")});
    }
    return line.empty() ? "a" : line;
  }

  void Type(const std::string& line) {
    int16 flags = option::Interactive;
    int16 channel = static_cast<int16>(1 + Dice(2));
    std::string problem;
    Parameters rvar;
    script.CommandDepth = 0;
    dispatcher.ProcessCommand(line, flags, problem, rvar, channel);
  }
  void ChangeSomething() {
    switch (Dice(8)) {
      case 0:
        Type("#CLASS {" + Pick({"k", "l", "m"}) + "} " + Pick({"ENABLE", "DISABLE"}));
        break;
      case 1:
        Type("#GCLASS {" + Pick({"k", "l"}) + "} " + Pick({"ENABLE", "DISABLE"}));
        break;
      case 2:
        if (script.TriggerCount > 0) Type("#UNTRIGGER {" + script.Triggers.Read(AnyRow()).SearchText + "}");
        break;
      case 3:
        if (script.TriggerCount > 0) {
          int16& flags = script.Triggers[AnyRow()].Flags;
          flags = static_cast<int16>(flags ^ triggerflag::PassedOver);
        }
        break;
      case 4:
        AddVariable("p", Pick({"a", "*b", "[", "Or?", ""}));
        break;
      default:
        Define();
    }
  }
  // Each trigger notes its number and its first two gaps.
  void Define() {
    const std::string number = std::to_string(++defined_);
    const bool colour = Dice(6) == 0;
    const std::string search = colour ? Pick({"Red", "Bright Red", "Default On Blue", "Red On Blue"}) : RandomSearch();
    std::string line = Dice(3) == 0 ? "#GTRIGGER" : "#TRIGGER";
    line += " {" + search + "} {#GVAR out {@out[" + number + ":%1:%2]}";
    if (Dice(12) == 0) line += ";#IF (1=2) {#SUB x}";
    if (Dice(15) == 0) line += ";#TRIGGER {new" + number + "*} {look}";
    line += "} {" + Pick({"", "", "k", "l", "k|l", "M"}) + "}";
    if (colour) line += " Color";
    if (!colour && Dice(3) == 0) line += " AnyCase";
    Type(line);
  }

  // --- the reference ---

  static bool SlowLike(const std::string& text, const std::string& pattern) {
    try {
      return Like(text, pattern);
    } catch (const Fault&) {
      return false;
    }
  }
  bool Fits(const TriggerRecord& trigger, OwnerId owner, const std::string& plain, const std::string& tagged) {
    if ((trigger.Owner != 0 && trigger.Owner != owner) || (trigger.Flags & triggerflag::PassedOver) != 0) return false;
    if (trigger.Pattern.empty() || !symbols.InClass(trigger.Class, owner)) return false;
    std::string pattern = trigger.Pattern;
    if (pattern.find_first_of("@%") != std::string::npos) {
      std::string error;
      pattern = expansion.ExplodeVariable(pattern, error, Parameters(), 0, owner);
      if (!error.empty()) return false;
    }
    if ((trigger.Flags & triggerflag::Colour) != 0) return SlowLike(tagged, "*" + pattern);
    if ((trigger.Flags & triggerflag::AnyCase) != 0) return SlowLike(Upper(plain), Upper(pattern));
    return SlowLike(plain, pattern);
  }
  static Lines SlowGaps(const TriggerRecord& trigger, const std::string& plain) {
    const bool anyCase = (trigger.Flags & triggerflag::AnyCase) != 0;
    const std::string line = anyCase ? Upper(plain) : plain;
    Lines gaps;
    std::size_t from = 1;  // counted from 1 here
    for (int32 i = 1; i <= 30 && !trigger.Parts[i].empty(); ++i) {
      const std::string part = anyCase ? Upper(trigger.Parts[i]) : trigger.Parts[i];
      const std::size_t found = from <= line.size() ? line.find(part, from - 1) + 1 : 0;
      if (found == 0) continue;
      if (found > 1) gaps.push_back(plain.substr(from - 1, found - from));
      from = found + part.size();
    }
    if (from <= plain.size()) gaps.push_back(plain.substr(from - 1));
    gaps.resize(std::max<std::size_t>(gaps.size(), 2));
    return gaps;
  }
  // What the numbers of the triggers will be noted as. Commands here change nothing that later tests of the same line
  // ask for, but for new triggers at the top of the table.
  std::string Expected(int16 session, const LineVersions& line) {
    std::string out;
    const OwnerId owner = script.SocketOwner[session];
    for (int32 k = script.TriggerCount; k >= 1; --k) {
      const TriggerRecord& trigger = script.Triggers.Read(k);
      if (!Fits(trigger, owner, line.PlainLine, line.TaggedLine)) continue;
      const std::size_t number = trigger.Action.find("@out[");
      if (number == std::string::npos) continue;
      const std::size_t colon = trigger.Action.find(':', number);
      const Lines gaps = SlowGaps(trigger, line.PlainLine);
      out += trigger.Action.substr(number + 4, colon - number - 3) + gaps[0] + ":" + gaps[1] + "]";
    }
    return out;
  }

  // The walk as it is told: row by row, whatever the commands do to the table. False when it meets its end.
  bool SlowFire(int16 session, LineVersions& line) {
    for (int32 k = script.TriggerCount; k >= 1; --k) {
      if (k > script.TriggerCount) return false;
      const TriggerRecord trigger = script.Triggers.Read(k);
      if (!Fits(trigger, script.SocketOwner[session], line.PlainLine, line.TaggedLine)) continue;
      Parameters params;
      params.Set(0, line.PlainLine);
      const Lines gaps = SlowGaps(trigger, line.PlainLine);
      for (std::size_t i = 0; i < gaps.size(); ++i) params.Set(static_cast<int32>(i) + 1, gaps[i]);
      script.DefiningBuffer = trigger.Buffer;
      script.CommandDepth = 0;
      int16 flags = 0;
      int16 channel = session;
      std::string problem;
      dispatcher.ProcessCommand(trigger.Action, flags, problem, params, channel);
      if (params[0] == line.PlainLine) continue;
      line.PlainLine = line.TaggedLine = line.SpokenLine = params[0];
      return true;
    }
    return true;
  }
  bool Fire(int16 session, LineVersions& line) {
    try {
      triggers.Fire(session, line);
    } catch (const Fault& fault) {
      EXPECT_EQ(fault.Kind, FaultKind::Index);
      return false;
    }
    return true;
  }
  // A trigger that notes its number and changes what the other triggers of the line depend on.
  void DefineMeddler() {
    const std::string number = std::to_string(++defined_);
    std::string body = "#GVAR out {@out[" + number + ":%1:%2]}";
    for (std::size_t i = Dice(5); i > 0; --i) body += ";" + Meddling(number);
    const std::string start = Dice(2) == 0 ? "#GTRIGGER {" : "#TRIGGER {";
    Type(start + EasySearch() + "} {" + body + "} {" + Pick({"", "", "k", "l", "k|l"}) + "}" + Pick({"", " AnyCase"}));
  }
  std::string EasySearch() { return Dice(3) == 0 ? RandomSearch() : "*" + RandomText(2, "abrhO ") + "*"; }
  std::string Meddling(const std::string& number) {
    const std::string other = script.TriggerCount > 0 ? script.Triggers.Read(AnyRow()).SearchText : "x";
    switch (Dice(9)) {
      case 0:
        return "#UNTRIGGER {" + other + "}";
      case 1:
        return "#GUNTRIGGER {" + other + "}";
      case 2:
        return "#GTRIGGER {" + EasySearch() + "} {#GVAR out {@out[new" + number + "]}} {" + Pick({"", "k"}) + "}";
      case 3:
        return "#GTRIGGER {" + EasySearch() + "} {#GVAR out {@out[sub" + number + "]};#IF (0) {#SUB no}}";
      case 4:
        return "#GVAR p {" + Pick({"a", "*b*", "*", "Or?"}) + "}";
      case 5:
        return Pick({"#UNCLASS k", "#DELCLASS l", "#GUNCLASS k"});
      case 6:
        return "#SUB {" + Pick({"%0", "%0", "%0a"}) + "}";
      default:
        return Pick({"#CLASS ", "#GCLASS "}) + Pick({"k ", "l "}) + Pick({"ENABLE", "ENABLE", "DISABLE"});
    }
  }
  std::string Table() {
    std::string table;
    for (int32 row = 1; row <= script.TriggerCount; ++row)
      table += script.Triggers.Read(row).SearchText + "{" + script.Triggers.Read(row).Class + "}\n";
    return table;
  }

  std::mt19937 random_{11};
  int defined_ = 0;
};

TEST_F(TriggerPropertyTest, FiltersNeverChangeWhichTriggersFire) {
  const LineMaker maker(script, options);
  int fired = 0;
  for (int round = 0; round < 40; ++round) {
    for (std::size_t i = Dice(40); i > 0; --i) Define();
    for (int step = 0; step < 120; ++step) {
      if (Dice(3) == 0) ChangeSomething();
      LineVersions line;
      std::vector<std::string> faults;
      maker.Make(RandomLine(), line, faults);
      const auto session = static_cast<int16>(1 + Dice(2));
      const std::string expected = Expected(session, line);
      AddVariable("out", "");
      const LineVersions before = line;
      triggers.Fire(session, line);
      ASSERT_EQ(Variable("out"), expected) << before.TaggedLine;
      ASSERT_EQ(line.PlainLine, before.PlainLine);
      fired += expected.empty() ? 0 : 1;
      memory.effects.Clear();
    }
    script.TriggerCount = 0;
    script.Triggers.Resize(0);
  }
  EXPECT_GT(fired, 1000);
}

// Each line runs twice from the same tables: row by row, then through the filters.
TEST_F(TriggerPropertyTest, WhateverTheCommandsChangeTheWalkIsTheSame) {
  const LineMaker maker(script, options);
  AddVariable("p", "a");
  int fired = 0;
  int ended = 0;
  int replaced = 0;
  for (int step = 0; step < 2000; ++step) {
    if (step % 8 == 0) {
      script.TriggerCount = 0;
      script.Triggers.Resize(0);
    }
    for (std::size_t i = Dice(6); i > 0; --i) DefineMeddler();
    LineVersions line;
    std::vector<std::string> faults;
    maker.Make(RandomLine(), line, faults);
    const auto session = static_cast<int16>(1 + Dice(2));
    AddVariable("out", "");
    const ScriptState before = script;
    LineVersions expected = line;
    const bool expectedWhole = SlowFire(session, expected);
    const std::string expectedOut = Variable("out");
    const std::string expectedTable = Table();
    script = before;
    const std::string plain = line.PlainLine;
    ASSERT_EQ(Fire(session, line), expectedWhole) << step << " " << plain;
    ASSERT_EQ(Variable("out"), expectedOut) << step << " " << plain;
    ASSERT_EQ(Table(), expectedTable) << step << " " << plain;
    ASSERT_EQ(line.PlainLine, expected.PlainLine);
    fired += expectedOut.empty() ? 0 : 1;
    ended += expectedWhole ? 0 : 1;
    replaced += line.PlainLine == plain ? 0 : 1;
    memory.effects.Clear();
    ClearErrorLog();
  }
  EXPECT_GT(fired, 500);
  EXPECT_GT(ended, 20);
  EXPECT_GT(replaced, 20);
}

}  // namespace corvid::test
