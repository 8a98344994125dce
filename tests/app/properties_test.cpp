// SPDX-License-Identifier: GPL-3.0-or-later
// What must hold for any state and any stream: shown on generated ones, always the same for the same seed.
#include <algorithm>
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

// Any value, of the characters that mean something to the language. Blanks at a line's end, blank lines and tabs do not
// survive a script file, so that a value has none.
std::string AnyValue(Chance& chance) {
  constexpr std::string_view codes = "abc {}~@%;/\"|#\\:()<>0129\xE9\xC3";
  std::string value;
  for (std::size_t left = chance.Below(24); left > 0; --left) value += codes[chance.Below(codes.size())];
  return Trim(value);
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
  return rows;
}

TEST(Properties, AnyStateIsTheSameAfterItWasSavedAndLoaded) {
  for (unsigned seed = 1; seed <= 60; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    Chance chance(seed);
    RunningProgram first;
    first.StartAndConnect(0);
    const OwnerId owner = first.corvid.scriptState.SocketOwner[1];
    Define(first, chance, 0);
    Define(first, chance, owner);
    ASSERT_TRUE(first.corvid.saving.WriteImage("/data/full.set"));
    const Rows before = StateOf(first.corvid.scriptState);

    RunningProgram second;
    second.memory.files = first.memory.files;
    second.memory.face.Will("Yes");
    ASSERT_TRUE(second.Start());
    EXPECT_EQ(second.ErrorLog(), "");
    const Rows after = StateOf(second.corvid.scriptState);
    // The first session is the one that loads it here, so that its character has the same row of the table.
    for (const std::string& row : before) EXPECT_TRUE(after.contains(row)) << "lost: " << row;
    for (const std::string& row : after) EXPECT_TRUE(before.contains(row)) << "came: " << row;
    if (testing::Test::HasFailure()) {
      ADD_FAILURE() << first.Read("/data/full.set");
      return;
    }
  }
}

// ---- a stream cut anywhere ----

std::string AnyStream(Chance& chance) {
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
  std::string stream;
  for (std::size_t left = 5 + chance.Below(20); left > 0; --left) {
    for (std::size_t words = 1 + chance.Below(3); words > 0; --words) stream += chance.OneOf(pieces);
    stream += chance.OneOf(ends);
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
  bool operator==(const Outcome&) const = default;
};

// The stream in reads of chosen lengths. Each comes before an unfinished line would be shown as it stands; and since a
// line is held only behind the end of another one, a read that begins a line brings a line's end.
Outcome Receive(const std::string& stream, Chance* cuts) {
  RunningProgram run;
  run.StartAndConnect(0);
  // A line that is not yet finished is held only behind another one: the first read brings that.
  run.memory.sockets.Receive(1, "Welcome.\r\n");
  for (std::size_t place = 0; place < stream.size();) {
    std::size_t length = cuts == nullptr ? stream.size() : 1 + cuts->Below(30);
    const std::size_t last = place == 0 ? std::string::npos : stream.find_last_not_of('\x07', place - 1);  // bells pass
    const bool begins = last == std::string::npos || stream[last] == '\n';
    if (begins) length = std::max(length, stream.find('\n', place) + 1 - place);
    run.memory.sockets.Receive(1, stream.substr(place, length));
    place += length;
    if (cuts != nullptr) run.memory.loop.Pass(static_cast<int>(cuts->Below(99)));
  }
  run.memory.loop.Pass(300);
  run.corvid.logs.CloseAll();
  return {LogOf(run), run.corvid.sessionState.OutputWindow(1).Text()};
}

TEST(Properties, AStreamCutAnywhereGivesTheSameLogAndWindow) {
  for (unsigned seed = 1; seed <= 25; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    Chance chance(seed);
    const std::string stream = AnyStream(chance);
    const Outcome whole = Receive(stream, nullptr);
    for (int cutting = 0; cutting < 6; ++cutting) {
      const Outcome cut = Receive(stream, &chance);
      EXPECT_EQ(cut.Log, whole.Log);
      EXPECT_EQ(cut.Shown, whole.Shown);
      if (testing::Test::HasFailure()) return;
    }
  }
}

}  // namespace
}  // namespace corvid
