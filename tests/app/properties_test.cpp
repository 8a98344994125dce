// SPDX-License-Identifier: GPL-3.0-or-later
// What must hold for any state and any stream: shown on generated ones, always the same for the same seed.
#include <algorithm>
#include <map>
#include <random>
#include <set>

#include "core/keys.h"
#include "core/text.h"
#include "running_program.h"

namespace corvid {
namespace {

class Chance {
 public:
  explicit Chance(unsigned seed) : random_(seed) {}
  std::size_t Below(std::size_t limit) { return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random_); }
  template <typename List>
  auto OneOf(const List& list) {
    return list[Below(std::size(list))];
  }

 private:
  std::mt19937 random_;
};

// ---- saving and loading ----

constexpr const char* Bodies[] = {"kill %1",       "look;score",  "#if {@hp > 5} {flee} {stay;look}", "say ~{odd~}",
                                  "#wait 1;north", "#var a {%0}", "get all from %1;put all in bag",   ">raw"};
constexpr const char* Keys[] = {"F5", "F6", "Control-F7", "Shift-F8", "NumPad8"};
constexpr const char* Classes[] = {"", "fight", "walk", "quiet"};
constexpr const char* Searches[] = {"*shouts*",      "&who tells you '&what'",
                                    "<mark>*gold*",  "a[b-d]?e#",
                                    "~*odd~[",       "*@friend*",
                                    "[!x]*",         "{braced} *",
                                    "100%",          "a;b",
                                    "&{one}&{two}",  "a ~} and ~{ b",
                                    "* / \\ | \"q\""};
constexpr const char* Ends[] = {"", " of two", "'s", "-x", ";y", "~~"};
constexpr const char* Backwards[] = {"back", "go out", "north", ""};
constexpr const char* Colours[] = {"Red", "Bright Green", "Yellow On Blue", "bright default on white"};
// Of each kind one that replaces the line, since such triggers stand apart.
constexpr const char* TriggerBodies[] = {"look", "#SUBSTITUTE {%1}", "#GAGLINE;get %1", "#IF (1=2) {#SU x} {say %1}"};

// Any value, of the characters that mean something to the language. Blanks at a line's end, blank lines and tabs do not
// survive a script file, so that a value has none.
std::string AnyValue(Chance& chance) {
  constexpr std::string_view codes = "abc {}~@%;/\"|#\\:()<>0129\xE9\xC3";
  std::string value;
  for (std::size_t left = chance.Below(24); left > 0; --left) value += codes[chance.Below(codes.size())];
  return Trim(value);
}

// A flag is kept only behind a class: without one it would be read as the class. The same search text has the same
// class always: a trigger without a class takes the place of one that has it, so of two only the later one can be kept.
std::string AnyTrigger(Chance& chance, OwnerId owner) {
  const std::string start = owner == 0 ? "#GTRIGGER {" : "#TRIGGER {";
  const std::string body = std::string("} {") + chance.OneOf(TriggerBodies) + "}";
  if (chance.Below(4) == 0) return start + chance.OneOf(Colours) + body + " fight COLOR";
  const std::size_t which = chance.Below(std::size(Searches));
  const std::string flag = which % 3 == 0 ? " walk AnyCase" : std::string(" {") + Classes[which % 4] + "}";
  return start + Searches[which] + body + flag;
}

void Define(RunningProgram& run, Chance& chance, OwnerId owner) {
  std::string error;
  Symbols& symbols = run.corvid.symbols;
  const std::string mark = owner == 0 ? "g" : "c";
  for (std::size_t i = chance.Below(12); i > 0; --i) {
    const std::string value = AnyValue(chance);
    symbols.AddVariable(mark + "var" + std::to_string(chance.Below(50)), value, owner, error, AnyValue(chance));
  }
  for (std::size_t i = chance.Below(6); i > 0; --i) {
    const std::string body = chance.OneOf(Bodies);
    symbols.AddAlias(mark + "alias" + std::to_string(chance.Below(20)), body, owner, chance.OneOf(Classes), 0, body,
                     error);
  }
  for (std::size_t i = chance.Below(4); i > 0; --i) {
    int16 shift = 0;
    int16 code = 0;
    ParseKeystroke(chance.OneOf(Keys), shift, code);
    const std::string body = chance.OneOf(Bodies);
    symbols.Addmacro(code, shift, body, owner, chance.OneOf(Classes), 0, body, error);
  }
  EXPECT_EQ(error, "");
  for (std::size_t i = chance.Below(8); i > 0; --i) run.Do(AnyTrigger(chance, owner));
}

// A class that is on, the words of a game's character, and its directions where they are kept (the image keeps those of
// all characters).
void DefineWords(RunningProgram& run, Chance& chance, OwnerId directionsOf) {
  for (std::size_t i = chance.Below(5); i > 0; --i)
    run.Do("#TAB {word" + std::to_string(chance.Below(9)) + chance.OneOf(Ends) + "}");
  for (std::size_t i = chance.Below(5); i > 0; --i)
    run.Do((directionsOf == 0 ? "#GDIRECTION {d" : "#DIRECTION {d") + std::to_string(chance.Below(9)) + "} {" +
           chance.OneOf(Backwards) + "}");
  if (chance.Below(2) == 0) run.Do("#GCLASS walk enable");
}

using Rows = std::set<std::string>;

// The file does not tell an empty default from none, and none is the value.
std::string DefaultOf(const ScriptState& state, int32 row) {
  return state.VariableDefaults[row].empty() ? state.VariableValues[row] : state.VariableDefaults[row];
}

Rows StateOf(const ScriptState& state) {
  Rows rows;
  const auto add = [&](std::initializer_list<std::string> fields) {
    std::string row;
    for (const std::string& field : fields) row += field + "\x1F";
    rows.insert(row);
  };
  for (int32 i = 1; i <= state.VariableCount; ++i)
    add({"variable", Upper(state.VariableNames[i]), state.VariableValues[i], DefaultOf(state, i),
         std::to_string(state.VariableOwners[i])});
  for (int16 i = 1; i <= state.AliasCount; ++i)
    add({"alias", Upper(state.AliasNames[i]), state.AliasValues[i], Upper(state.AliasClasses[i]),
         std::to_string(state.AliasOwners[i])});
  for (int16 i = 1; i <= state.MacroCount; ++i)
    add({"key", std::to_string(state.MacroKeyCodes[i]), std::to_string(state.MacroShifts[i]), state.MacroValues[i],
         Upper(state.MacroClasses[i]), std::to_string(state.MacroOwners[i])});
  for (int16 i = 1; i <= state.ClassCount; ++i)
    if (state.ClassOwners[i] == 0) add({"class", Upper(state.ClassNames[i])});
  for (int16 i = 1; i <= state.TabWordCount; ++i)
    add({"tab word", state.TabWords[i], std::to_string(state.TabOwners[i])});
  for (int16 i = 1; i <= state.AbbreviationCount; ++i)
    add({"direction", state.Directions[i], state.OppositeDirections[i], std::to_string(i)});
  // Their order matters, and is kept among those of the same owner.
  std::map<int16, int> places;
  for (int16 i = 1; i <= state.TriggerCount; ++i) {
    const TriggerRecord& trigger = state.Triggers.Read(i);
    if (trigger.Pattern.empty()) continue;
    add({"trigger", std::to_string(trigger.Owner), std::to_string(++places[trigger.Owner]), trigger.Pattern,
         trigger.SearchText, trigger.ActionText, trigger.Action, Upper(trigger.Class), std::to_string(trigger.Flags)});
  }
  return rows;
}

void ExpectSame(const Rows& before, const Rows& after) {
  for (const std::string& row : before) EXPECT_TRUE(after.contains(row)) << "lost: " << row;
  for (const std::string& row : after) EXPECT_TRUE(before.contains(row)) << "came: " << row;
}

TEST(Properties, AnyStateIsTheSameAfterItWasSavedAndLoaded) {
  std::set<std::string> kinds;
  for (unsigned seed = 1; seed <= 60; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    Chance chance(seed);
    RunningProgram first;
    first.StartAndConnect(0);
    const OwnerId owner = first.corvid.scriptState.SocketOwner[1];
    Define(first, chance, 0);
    Define(first, chance, owner);
    DefineWords(first, chance, 0);
    first.corvid.upcalls.commands.SortTriggers();
    ASSERT_TRUE(first.corvid.saving.WriteImage("/data/full.set"));
    const Rows before = StateOf(first.corvid.scriptState);
    for (const std::string& row : before) kinds.insert(row.substr(0, row.find('\x1F')));

    RunningProgram second;
    second.memory.files = first.memory.files;
    second.memory.face.Will("Yes");
    ASSERT_TRUE(second.Start());
    EXPECT_EQ(second.ErrorLog(), "");
    const Rows after = StateOf(second.corvid.scriptState);
    // The first session is the one that loads it here, so that its character has the same row of the table.
    ExpectSame(before, after);
    if (testing::Test::HasFailure()) {
      ADD_FAILURE() << first.Read("/data/full.set");
      return;
    }
  }
  EXPECT_EQ(kinds, Rows({"variable", "alias", "key", "tab word", "direction", "trigger", "class"}));
}

Rows WithoutVariables(Rows rows) {
  std::erase_if(rows, [](const std::string& row) { return row.starts_with("variable"); });
  return rows;
}

// What a character keeps without a script of its own, but for variables, which have a file of their own: saved as the
// program ends, loaded by the next connection.
TEST(Properties, ACharactersFileBringsBackItsWholeState) {
  for (unsigned seed = 1; seed <= 40; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    Chance chance(seed + 1000);
    RunningProgram first;
    first.StartAndConnect(0);
    const OwnerId owner = first.corvid.scriptState.SocketOwner[1];
    Define(first, chance, 0);
    Define(first, chance, owner);
    DefineWords(first, chance, owner);
    first.corvid.upcalls.commands.SortTriggers();
    const std::string path = "/data/Aard/bob-Char.set";
    ASSERT_TRUE(first.corvid.saving.WriteAltMethod(owner, path, false));
    const Rows before = WithoutVariables(StateOf(first.corvid.scriptState));

    RunningProgram second;
    second.memory.files = first.memory.files;
    second.memory.files.Remove("/data/Aard/bob.Tab");  // the words are to come from the one file
    ASSERT_TRUE(second.Start());
    second.Do("#MUD bob Aard aard.example 4000 Bob secret");
    second.Do("#CONNECT bob");
    EXPECT_EQ(second.ErrorLog(), "");
    ExpectSame(before, WithoutVariables(StateOf(second.corvid.scriptState)));
    if (testing::Test::HasFailure()) {
      ADD_FAILURE() << first.Read(path);
      return;
    }
  }
}

// ---- a stream cut anywhere ----

// What a server sends, in pieces that are not cut: a code of text, or a whole negotiation.
using Stream = std::vector<std::string>;

void AddText(Stream& stream, std::string_view text) {
  for (const char code : text) stream.emplace_back(1, code);
}

// A doubled 0xFF is no part of it: the code that it stands for would be looked at again when its line is held.
Stream AnyStream(Chance& chance) {
  constexpr std::string_view pieces[] = {"Bob shouts hello",
                                         "\x1B[1;31mred\x1B[0m and plain",
                                         "You see a door.",
                                         "\xC3\xA9t\xC3\xA9 au caf\xE9",
                                         "<10hp 5gold> ",
                                         "+----------------------+",
                                         "  indented",
                                         "tab\there",
                                         "100% @home {x} <RED>",
                                         "a",
                                         "\x07"
                                         "bell",
                                         "a long line that a server has wrapped somewhere in the middle of it"};
  constexpr std::string_view ends[] = {"\r\n", "\r\n", "\r\n", "\n", "\r\n\r\n", "\n\n"};
  constexpr std::string_view negotiations[] = {"\xFF\xFB\x01", "\xFF\xFD\x18", "\xFF\xFB\x5A",    "\xFF\xFD\xC9",
                                               "\xFF\xFC\x01", "\xFF\xF9",     "\xFF\xFA\x18\x01"};
  Stream stream;
  const auto negotiate = [&] {
    if (chance.Below(3) == 0) stream.emplace_back(chance.OneOf(negotiations));
  };
  for (std::size_t left = 5 + chance.Below(20); left > 0; --left) {
    for (std::size_t words = 1 + chance.Below(3); words > 0; --words) {
      AddText(stream, chance.OneOf(pieces));
      negotiate();
    }
    AddText(stream, chance.OneOf(ends));
    negotiate();
  }
  return stream;
}

std::string LogOf(RunningProgram& run) {
  std::string text;
  for (const std::string& name : run.memory.files.FileNames("/data/logs")) text += run.Read("/data/logs/" + name);
  return text;
}

struct Outcome {
  std::string Log;
  std::string Shown;
  std::string Answered;  // to the server
  bool operator==(const Outcome&) const = default;
};

Outcome Receive(const std::vector<std::string>& reads, Chance* pauses) {
  RunningProgram run;
  run.StartAndConnect(0);
  // A line that is not yet finished is held only behind another one: the first read brings that.
  run.memory.sockets.Receive(1, "Welcome.\r\n");
  for (const std::string& read : reads) {
    run.memory.sockets.Receive(1, read);
    if (pauses != nullptr) run.memory.loop.Pass(static_cast<int>(pauses->Below(99)));
  }
  run.memory.loop.Pass(300);
  run.corvid.logs.CloseAll();
  return {LogOf(run), run.corvid.sessionState.OutputWindow(1).Text(), run.memory.sockets.TakeWritten(1)};
}

bool IsText(const std::string& piece) {
  return piece.size() == 1 && piece[0] != '\x07';  // bells pass
}

// The stream in reads of chosen lengths. Each comes before an unfinished line would be shown as it stands; and since a
// line is held only behind the end of another one, a read that begins a line brings a line's end.
std::vector<std::string> Cut(const Stream& stream, Chance& chance) {
  std::vector<std::string> reads;
  bool begins = true;
  for (std::size_t place = 0; place < stream.size();) {
    std::size_t length = 1 + chance.Below(30);
    bool ended = !begins;
    std::string read;
    while (place < stream.size() && (length > 0 || !ended)) {
      const std::string& piece = stream[place++];
      read += piece;
      if (length > 0) --length;
      if (piece == "\n") ended = true;
      if (IsText(piece)) begins = piece == "\n";
    }
    reads.push_back(read);
  }
  return reads;
}

std::string Joined(const std::vector<std::string>& pieces) {
  std::string text;
  for (const std::string& piece : pieces) text += piece;
  return text;
}

TEST(Properties, AStreamCutAnywhereGivesTheSameLogWindowAndAnswers) {
  for (unsigned seed = 1; seed <= 25; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    Chance chance(seed);
    const Stream stream = AnyStream(chance);
    const Outcome whole = Receive({Joined(stream)}, nullptr);
    for (int cutting = 0; cutting < 6; ++cutting) {
      const Outcome cut = Receive(Cut(stream, chance), &chance);
      EXPECT_EQ(cut.Log, whole.Log);
      EXPECT_EQ(cut.Shown, whole.Shown);
      EXPECT_EQ(cut.Answered, whole.Answered);
      if (testing::Test::HasFailure()) return;
    }
  }
}

// The bytes that a read must have behind it for its last negotiation to be whole; the reader takes zeros for them.
std::size_t MissingAtEnd(const std::string& read) {
  std::size_t place = 0;
  while (place < read.size()) {
    std::size_t length = 1;
    if (read[place] == '\xFF') {
      const auto verb = static_cast<unsigned char>(place + 1 < read.size() ? read[place + 1] : '\0');
      length = verb == 0xFA ? 4 : verb >= 0xFB && verb <= 0xFE ? 3 : 2;
    }
    place += length;
  }
  return place - read.size();
}

// Cut inside of a negotiation: the piece that came counts with zeros behind it, what comes later is text.
TEST(Properties, ACutNegotiationIsNotReassembled) {
  int cutInside = 0;
  for (unsigned seed = 1; seed <= 60; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    Chance chance(seed);
    Stream stream = AnyStream(chance);
    // Reads end at lines, so that nothing but the negotiation is cut.
    std::vector<std::string> reads(1);
    std::string asTaken;
    for (const std::string& piece : stream) {
      const bool inside = piece.size() > 1 && reads.back().ends_with("\n") && chance.Below(2) == 0;
      if (inside) {
        const std::size_t length = 1 + chance.Below(piece.size() - 1);
        reads.back() += piece.substr(0, length);
        reads.push_back(piece.substr(length));
        ++cutInside;
      } else {
        reads.back() += piece;
      }
    }
    for (const std::string& read : reads) asTaken += read + std::string(MissingAtEnd(read), '\0');
    const Outcome cut = Receive(reads, nullptr);
    const Outcome whole = Receive({asTaken}, nullptr);
    EXPECT_EQ(cut.Log, whole.Log);
    EXPECT_EQ(cut.Shown, whole.Shown);
    EXPECT_EQ(cut.Answered, whole.Answered);
    if (testing::Test::HasFailure()) return;
  }
  EXPECT_GT(cutInside, 50);
}

}  // namespace
}  // namespace corvid
