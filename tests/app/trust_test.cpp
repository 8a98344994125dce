// SPDX-License-Identifier: GPL-3.0-or-later
// A game may say anything. Whatever a script does with its words, they stay words: they are not run, not expanded, and
// lead out of no folder. And what is private is readable by its owner alone.
#include "core/text.h"
#include "running_program.h"

namespace corvid {
namespace {

constexpr const char* Hostile[] = {
    "x;#QUIT",       "#QUIT",         "@gold %PASSWORD %0", "{x} {y", "}",  "~;#QUIT", "//", ">raw",
    "bob::#QUIT",    "*:#QUIT",       "%EXPAND(#QUIT)",     "\"",     "|a", "",        " ",  "%99999(",
    "\r\n#QUIT\r\n", "\xFF\xFB\x01x", "$(reboot)`reboot`",
};

class CapturedText : public testing::TestWithParam<const char*> {
 protected:
  void SetUp() override {
    run.StartAndConnect(0);
    run.Do("#VAR gold 12");
    run.memory.sockets.TakeWritten(1);
  }
  // A line of a script that runs with the words of a game as its %0 and %1.
  std::string Run(const std::string& line) {
    int16 options = 0;
    int16 outchannel = CurrentSession;
    std::string error;
    Parameters words;
    words.Set(0, GetParam());
    words.Set(1, GetParam());
    run.corvid.scriptState.CommandDepth = 0;
    run.corvid.upcalls.commands.ProcessCommand(line, options, error, words, outchannel);
    EXPECT_FALSE(run.Ended()) << line;
    return error;
  }

  RunningProgram run;
};

TEST_P(CapturedText, IsSentAsItIs) {
  EXPECT_EQ(Run("say [%1]"), "");
  EXPECT_EQ(run.memory.sockets.TakeWritten(1), "say [" + std::string(GetParam()) + "]\r\n");
}

TEST_P(CapturedText, IsKeptAsItIs) {
  EXPECT_EQ(Run("#VAR heard {%0}"), "");
  EXPECT_EQ(run.Variable("HEARD") == "(none)" ? run.Variable("heard") : run.Variable("HEARD"), GetParam());
  EXPECT_EQ(Run("say [@heard]"), "");
  EXPECT_EQ(run.memory.sockets.TakeWritten(1), "say [" + std::string(GetParam()) + "]\r\n");
}

TEST_P(CapturedText, RunsNothingInAConditionOrALoop) {
  Run("#IF {%0 = 1} {yes} {no}");
  Run("#FORALL {%0} {item}");
  Run("#IF {%LENGTH(%0) > 2} {yes} {no}");
  const std::string sent = run.memory.sockets.TakeWritten(1);
  for (const std::string& line : Split(sent, "\r\n"))
    EXPECT_TRUE(line.empty() || line == "yes" || line == "no" || line == "item") << line;
}

INSTANTIATE_TEST_SUITE_P(Words, CapturedText, testing::ValuesIn(Hostile));

TEST(CapturedWords, AreRunOnlyWhereAScriptAsksForIt) {
  RunningProgram run;
  run.StartAndConnect(0);
  run.Do("#VAR heard {look}");
  run.memory.sockets.TakeWritten(1);
  run.Do("#EXECUTE {@heard}");
  EXPECT_EQ(run.memory.sockets.TakeWritten(1), "look\r\n");
}

TEST(Private, IsWhatHoldsPasswordsOrWhatAGameSaid) {
  RunningProgram run;
  run.StartAndConnect(charflag::KeepVariables | charflag::SimpleControl);
  run.Define("gold", "12");
  run.memory.sockets.Receive(1, "one\r\n");
  run.corvid.upcalls.errors.UnknownError("an error", "a routine", {});
  run.corvid.speechSettings.SaveSpeech();
  run.corvid.saving.WriteImage("/data/full.set");
  run.memory.face.Will("Yes");
  run.corvid.quit(true);
  Texts expected = {"/data/Character.mud", "/data/speech.ini",       "/data/error.log",
                    "/data/full.set",      "/data/Aard/bob-var.set", "/data/Aard/bob-char.set"};
  for (const std::string& name : run.memory.files.FileNames("/data/logs")) expected.push_back("/data/logs/" + name);
  EXPECT_EQ(expected.size(), 7U);
  for (const std::string& path : expected) {
    EXPECT_TRUE(run.Exists(path)) << path;
    EXPECT_TRUE(run.memory.files.IsPrivate(path)) << path;
  }
}

TEST(Private, PasswordsLieScrambledInTheirFileAlone) {
  RunningProgram run;
  run.StartAndConnect(charflag::KeepVariables | charflag::SimpleControl);
  run.corvid.saving.WriteImage("/data/full.set");
  run.memory.face.Will("Yes");
  run.corvid.quit(true);
  for (const std::string& folder : {std::string("/data/"), std::string("/data/Aard/"), std::string("/data/logs/")})
    for (const std::string& name : run.memory.files.FileNames(folder))
      EXPECT_EQ(run.Read(folder + name).find("secret"), std::string::npos) << folder + name;
  EXPECT_NE(Scramble(run.Read("/data/Character.mud")).find("\"secret\""), std::string::npos);
}

TEST(Password, IsKnownToEveryScriptThatRuns) {
  RunningProgram run;
  run.StartAndConnect(0);
  run.Do("say %PASSWORD and %CHARINFO(Password)");
  EXPECT_EQ(run.memory.sockets.TakeWritten(1), "say secret and secret\r\n");
}

TEST(Password, ThatIsTypedStandsInTheLogUnlessThePlayerKeepsItOut) {
  RunningProgram run;
  run.StartAndConnect(0);
  const auto log = [&] {
    std::string text;
    for (const std::string& name : run.memory.files.FileNames("/data/logs")) text += run.Read("/data/logs/" + name);
    return text;
  };
  run.Do("my own secret");
  EXPECT_NE(log().find("my own secret\r\n"), std::string::npos);
  run.Do("#IGNORE LogEntries On");
  run.Do("another secret");
  EXPECT_EQ(log().find("another"), std::string::npos);
  run.Do("#IGNORE LogEntries Off");
  run.Do("#CONFIGURE OutputLog false");
  run.Do("a third secret");
  run.memory.sockets.Receive(1, "Your password is a third secret.\r\n");
  EXPECT_EQ(log().find("third"), std::string::npos);
  EXPECT_EQ(run.memory.sockets.TakeWritten(1), "my own secret\r\nanother secret\r\na third secret\r\n");
}

TEST(Saved, WordsOfAGameComeBackAsTheyWere) {
  for (const std::string word : {"100%", "@gold", "a~b", "{", "};#QUIT", "~;", "//x", "%PASSWORD"}) {
    RunningProgram first;
    first.StartAndConnect(0);
    ScriptState& script = first.corvid.scriptState;
    const OwnerId owner = script.SocketOwner[1];
    script.TabWordCount = script.AbbreviationCount = 1;
    script.TabWords.Resize(1);
    script.TabOwners.Resize(1);
    script.TabWords[1] = word;
    script.TabOwners[1] = owner;
    first.corvid.symbols.resizeCommand(windowtype::Abbreviations, 1);
    script.Directions[1] = script.OppositeDirections[1] = Upper(word);
    script.AbbreviationOwners[1] = owner;
    ASSERT_TRUE(first.corvid.saving.WriteAltMethod(owner, "/data/Aard/bob-Char.set", false));

    RunningProgram second;
    second.memory.files = first.memory.files;
    second.StartAndConnect(0);
    EXPECT_FALSE(second.Ended());
    EXPECT_EQ(second.ErrorLog(), "") << word;
    const ScriptState& loaded = second.corvid.scriptState;
    ASSERT_EQ(loaded.TabWordCount, 1) << word;
    EXPECT_EQ(loaded.TabWords[1], word);
    ASSERT_EQ(loaded.AbbreviationCount, 1) << word;
    EXPECT_EQ(loaded.OppositeDirections[1], Upper(word));
  }
}

}  // namespace
}  // namespace corvid
