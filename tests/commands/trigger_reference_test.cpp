// SPDX-License-Identifier: GPL-3.0-or-later
// Two houses get the same scripts and the same bytes: one with the trigger engine, one that tests every row in turn and
// knows of no filter, no index and no compiled pattern. All that a player and a game could notice must be the same.
#include <optional>
#include <random>

#include "commands/fixture.h"
#include "core/pattern.h"

namespace corvid::test {

class House : public CommandTest {
 public:
  explicit House(bool rowByRow) : events_(*this, rowByRow) {
    MakeSession(1, "bob", true);
    MakeSession(2, "amy", true);
    script.CurrentSocket = 1;
    for (const int16 index : {int16{1}, int16{2}}) {
      sessions.MudFolder[index] = "/data/";
      logs.OpenLog(index);
    }
    memory.sockets.SetEvents(&events_);
  }
  ~House() override { memory.sockets.SetEvents(nullptr); }
  void TestBody() override {}

  void Type(int16 session, const std::string& line, int16 flags) {
    std::string problem;
    Parameters rvar;
    script.CommandDepth = 0;
    dispatcher.ProcessCommand(line, flags, problem, rvar, session);
    told_ += problem + "\n";
  }
  void Receive(int16 session, const std::string& bytes) { memory.sockets.Receive(session, bytes); }
  void ReceiveMeanwhile(int16 session, const std::string& bytes) {
    memory.loop.Post([this, session, bytes] { memory.sockets.Receive(session, bytes); });
  }
  void Pass(int milliseconds) { memory.loop.Pass(milliseconds); }
  void PassOver(std::size_t row) {
    if (script.TriggerCount == 0) return;
    int16& flags = script.Triggers[RowOf(row)].Flags;
    flags = static_cast<int16>(flags ^ triggerflag::PassedOver);
  }
  std::string SearchOf(std::size_t row) {
    if (script.TriggerCount == 0) return "x";
    return script.Triggers.Read(RowOf(row)).SearchText;
  }
  OptionsState& Options() { return options; }

  // All that can be noticed since the last call, and how the tables stand.
  std::string Notice() {
    std::string all = std::exchange(told_, {}) + memory.effects.Transcript();
    memory.effects.Clear();
    for (int32 row = 1; row <= script.TriggerCount; ++row) {
      const TriggerRecord& trigger = script.Triggers.Read(row);
      all += trigger.SortKey + trigger.SearchText + "{" + trigger.Class + "}" + std::to_string(trigger.Flags) + "\n";
    }
    for (int32 row = 1; row <= script.VariableCount; ++row)
      all += script.VariableNames[row] + std::to_string(script.VariableOwners[row]) + "=" + script.VariableValues[row] +
             "\n";
    for (const int16 index : {int16{1}, int16{2}}) {
      all += memory.sockets.TakeWritten(index) + sessions.OutputWindow(index).Text();
      all += std::to_string(sessions.GagFlags[index]) + " " + std::to_string(sessions.GagLines[index]) + "\n";
    }
    all += std::exchange(buffers.BufferText[buffer::ErrorLog], {});
    all += options.TriggerColourNeeded ? "colours" : "no colours";
    for (const std::string& name : memory.files.FileNames("/data/logs/"))
      all += memory.files.ReadWhole("/data/logs/" + name);
    if (memory.files.FileExists("/data/error.log")) {
      all += memory.files.ReadWhole("/data/error.log");
      memory.files.Remove("/data/error.log");
    }
    return all;
  }

 private:
  int32 RowOf(std::size_t number) const {
    return 1 + static_cast<int32>(number % static_cast<std::size_t>(script.TriggerCount));
  }

  class RowByRow final : public LineTriggers {
   public:
    explicit RowByRow(House& house) : house_(house) {}
    bool Any() const override { return true; }
    LineFate Fire(int16 Index, LineVersions& line) override {
      for (int32 k = house_.script.TriggerCount; k >= 1; --k) {
        if (k > house_.script.TriggerCount)
          throw Fault(FaultKind::Index, "Trigger " + std::to_string(k) + " is gone: a trigger has removed others");
        try {
          if (!Matches(Index, k, line)) continue;
          if (const std::optional<LineFate> fate = Carry(Index, k, line)) return *fate;
        } catch (const Fault& fault) {
          house_.lateErrors.UnknownError(fault.what(), "SockTelnet_OnRead", {std::to_string(Index)});
        }
      }
      return LineFate::GoesOn;
    }

   private:
    static bool LikeOrNot(const std::string& text, const std::string& pattern) {
      try {
        return Like(text, pattern);
      } catch (const Fault&) {
        return false;
      }
    }
    bool Matches(int16 Index, int32 k, const LineVersions& line) {
      const TriggerRecord trigger = house_.script.Triggers.Read(k);
      const OwnerId owner = house_.script.SocketOwner[Index];
      if (trigger.Owner != 0 && trigger.Owner != owner) return false;
      if ((trigger.Flags & triggerflag::PassedOver) != 0 || trigger.Pattern.empty()) return false;
      if (!house_.symbols.InClass(trigger.Class, owner)) return false;
      std::string pattern = trigger.Pattern;
      if (pattern.find('@') != std::string::npos || pattern.find('%') != std::string::npos) {
        std::string error;
        pattern = house_.expansion.ExplodeVariable(pattern, error, Parameters(), 0, owner);
        if (!error.empty()) {
          error += " - Trigger search string " + trigger.Pattern;
          house_.lateErrors.ErrorReport(error, trigger.ActionText, 0, 0);
          house_.lateErrors.DisplayErrorFile(error, trigger.Buffer);
          return false;
        }
      }
      if ((trigger.Flags & triggerflag::Colour) != 0) {
        house_.options.TriggerColourNeeded = true;
        return LikeOrNot(line.TaggedLine, "*" + pattern);
      }
      if ((trigger.Flags & triggerflag::AnyCase) != 0) return LikeOrNot(Upper(line.PlainLine), Upper(pattern));
      return LikeOrNot(line.PlainLine, pattern);
    }
    void TakeParameters(const TriggerRecord& trigger, const std::string& plain, OwnerId owner, Parameters& params) {
      const bool anyCase = (trigger.Flags & triggerflag::AnyCase) != 0;
      const std::string line = anyCase ? Upper(plain) : plain;
      int16 count = 0;
      std::size_t from = 1;  // places count from 1, 0 is nowhere
      int32 i = 1;
      const auto take = [&](const std::string& gap) {
        params.Set(++count, gap);
        std::string error;
        if (i <= 30 && !trigger.Names[i].empty()) house_.symbols.AddVariable(trigger.Names[i], gap, owner, error);
      };
      for (; i <= 30 && !trigger.Parts[i].empty(); ++i) {
        const std::string part = anyCase ? Upper(trigger.Parts[i]) : trigger.Parts[i];
        const std::size_t found = from > line.size() ? 0 : line.find(part, from - 1) + 1;
        if (found > 1) take(plain.substr(from - 1, found - from));
        if (found > 0) from = found + part.size();
      }
      if (from <= plain.size()) take(plain.substr(from - 1));
    }
    std::optional<LineFate> Carry(int16 Index, int32 k, LineVersions& line) {
      const TriggerRecord trigger = house_.script.Triggers.Read(k);
      Parameters params;
      TakeParameters(trigger, line.PlainLine, house_.script.SocketOwner[Index], params);
      params.Set(0, line.PlainLine);
      house_.script.DefiningBuffer = trigger.Buffer;
      house_.script.CommandDepth = 0;
      int16 flags = 0;
      std::string error;
      house_.dispatcher.ProcessCommand(trigger.Action, flags, error, params, Index);
      if (params[0] == line.PlainLine) {
        if (!error.empty()) house_.lateErrors.DisplayErrorFile(error, trigger.Buffer);
        return std::nullopt;
      }
      line.PlainLine = params[0];
      if (line.PlainLine.empty() && house_.options.CompressOutput) return LineFate::IsFinished;
      line.SpokenLine = line.TaggedLine = line.PlainLine;
      return LineFate::GoesOn;
    }
    House& house_;
  };

  // What the sockets tell goes where it always goes, but for the bytes of the game in the house without an engine.
  class Events final : public SocketEvents {
   public:
    Events(House& house, bool rowByRow) : house_(house), rowByRow_(rowByRow) {}
    void OnConnect(int16 Index) override { house_.sessionRoutines.OnConnect(Index); }
    void OnDisconnect(int16 Index) override { house_.sessionRoutines.OnDisconnect(Index); }
    void OnError(int16 Index) override { house_.sessionRoutines.OnError(Index); }
    void OnRead(int16 Index) override { (rowByRow_ ? house_.slowReceive_ : house_.receive).sockTelnet_OnRead(Index); }

   private:
    House& house_;
    bool rowByRow_;
  };

  std::string told_;
  RowByRow slow_{*this};
  corvid::Receive slowReceive_{script, options, sessions, windows, logs, slow_, soundLines, platform, upcalls};
  Events events_;
};

class TriggerReferenceTest : public ::testing::Test {
 protected:
  std::size_t Dice(std::size_t sides) { return random_() % sides; }
  std::string Pick(const Lines& from) { return from[Dice(from.size())]; }
  std::string RandomText(std::size_t longest, std::string_view codes) {
    std::string text;
    for (std::size_t i = Dice(longest + 1); i > 0; --i) text += codes[Dice(codes.size())];
    return text;
  }
  std::string Word() {
    return Pick({"a", "ab", "abc", "abcd", "Orc", "ORC", " says ", "The troll", "the troll", " hits you", "b1", "22",
                 "\xE9t\xE9", "na\xC3\xAFve", "x]", "*", RandomText(4, "abAB1\xE9\xC9 ")});
  }
  std::string Search() {
    if (Dice(3) == 0) return "*" + Word() + "*";
    std::string search;
    for (std::size_t i = 1 + Dice(4); i > 0; --i) {
      if (Dice(2) == 0)
        search += Pick({"*", "*", "*", "?", "#", "[a-c]", "[!x]", "[", "[*]", "[z-a]", "~*", "&v", "&{w}", "@p", "[]",
                        "%LEFT(a*"});
      search += Word();
    }
    if (Dice(3) == 0) search = "*" + search;
    if (Dice(2) == 0) search += "*";
    return search;
  }
  std::string Action(House& house) {
    const std::string number = std::to_string(++defined_);
    std::string body = "say " + number + " [%1][%2][%3]";
    for (std::size_t i = Dice(3); i > 0; --i) body += ";" + Meddling(house);
    return body;
  }
  std::string Meddling(House& house) {
    switch (Dice(16)) {
      case 0:
        return "#UNTRIGGER {" + house.SearchOf(random_()) + "}";
      case 1:
        return "#GUNTRIGGER {" + house.SearchOf(random_()) + "}";
      case 2:
        return "#GTRIGGER {" + Search() + "} {say new} {" + Pick({"", "k"}) + "}" + Pick({"", " AnyCase"});
      case 3:
        return "#TRIGGER {" + Search() + "} {say sub;#IF (0) {#SUB no}}";
      case 4:
        return "#GVAR p {" + Pick({"a", "*b*", "*", "Or?", "["}) + "}";
      case 5:
        return Pick({"#UNCLASS k", "#DELCLASS l", "#GUNCLASS k"});
      case 6:
        return "#SUB {" + Pick({"%0", "%0", "%0a", "other"}) + "}";
      case 7:
        return "#VAR e;#SUB {@e}";
      case 8:
        return "#GAGLINE " + Pick({"1", "2", "3"}) + Pick({"", " VOICE", " DISPLAY"});
      case 9:
        return "#WAIT 120";
      case 10:
        return "#TRIGGER {" + Pick({"Red", "Bright Red", "Green On Blue"}) + "} {say colour} {} Color";
      case 11:
        return "#NOSUCH";
      default:
        return Pick({"#CLASS ", "#GCLASS "}) + Pick({"k ", "l "}) + Pick({"ENABLE", "ENABLE", "DISABLE"});
    }
  }
  std::string Definition(House& house) {
    const bool colour = Dice(8) == 0;
    std::string line = Pick({"#TRIGGER {", "#GTRIGGER {"});
    line += colour ? Pick({"Red", "Bright Red", "Default On Blue", "Red On Blue", "Green"}) : Search();
    line += "} {" + Action(house) + "} {" + Pick({"", "", "", "k", "l", "k|l", "a|b|c|d|e|f|g|h|i|j|k|l"}) + "}";
    return line + (colour ? " Color" : Pick({"", "", " AnyCase"}));
  }
  std::string GameText() {
    std::string text;
    for (std::size_t lines = 1 + Dice(4); lines > 0; --lines) {
      for (std::size_t i = Dice(6); i > 0; --i) {
        if (Dice(5) == 0) text += "\x1b[" + Pick({"31", "1;31", "44", "32;44", "0", "38;5;196"}) + "m";
        text += Word();
      }
      text += Pick({"\r\n", "\r\n", "\n", "\r\n\r\n", ""});
    }
    return text;
  }

  // One thing that happens, to both alike.
  void Step(House& one, House& other) {
    const auto session = static_cast<int16>(1 + Dice(2));
    const auto type = [&](const std::string& line) {
      const int16 flags = Dice(6) == 0 ? int16{0} : option::Interactive;
      one.Type(session, line, flags);
      other.Type(session, line, flags);
    };
    switch (Dice(20)) {
      case 0:
      case 1:
      case 2:
        return type(Definition(one));
      case 3:
        return type(Meddling(one));
      case 4: {
        const std::size_t row = random_();
        one.PassOver(row);
        other.PassOver(row);
        return;
      }
      case 5: {
        bool OptionsState::*const choice = std::vector{&OptionsState::ColourTextTags, &OptionsState::CompressOutput,
                                                       &OptionsState::BatchSpeech}[Dice(3)];
        one.Options().*choice = other.Options().*choice = Dice(2) == 0;
        return;
      }
      case 6: {
        const auto milliseconds = static_cast<int>(Dice(150));
        one.Pass(milliseconds);
        other.Pass(milliseconds);
        return;
      }
      case 7: {
        const std::string bytes = GameText();
        one.ReceiveMeanwhile(session, bytes);
        other.ReceiveMeanwhile(session, bytes);
        return;
      }
      default: {
        const std::string bytes = GameText();
        const std::size_t cut = Dice(3) == 0 ? Dice(bytes.size() + 1) : bytes.size();
        for (const std::string& piece : {bytes.substr(0, cut), bytes.substr(cut)}) {
          if (piece.empty()) continue;
          one.Receive(session, piece);
          other.Receive(session, piece);
        }
      }
    }
  }

  std::mt19937 random_{23};
  int defined_ = 0;
};

TEST_F(TriggerReferenceTest, FiltersAreNeverNoticed) {
  int fired = 0;
  int steps = 0;
  for (int round = 0; round < 30; ++round) {
    House engine(false);
    House reference(true);
    engine.Options().ColourTextTags = reference.Options().ColourTextTags = false;
    for (std::size_t i = round % 5 == 0 ? 200 : Dice(20); i > 0; --i) {
      const std::string line = Definition(engine);
      for (House* house : {&engine, &reference}) house->Type(static_cast<int16>(1 + i % 2), line, option::Interactive);
    }
    for (int step = 0; step < 80; ++step, ++steps) {
      Step(engine, reference);
      const std::string expected = reference.Notice();
      ASSERT_EQ(engine.Notice(), expected) << "round " << round << " step " << step;
      fired += expected.find("\nwire ") == std::string::npos ? 0 : 1;
    }
  }
  EXPECT_GT(fired, steps / 8);
}

}  // namespace corvid::test
