// SPDX-License-Identifier: GPL-3.0-or-later
// What scripts say, show, find and set: each command as a player or a script gives it.
#include "output_fixture.h"

namespace corvid::test {

// ---- SAY ----

TEST_F(OutputCommandTest, SaySpeaksAndShowsOnTheChannelOfItsKeyword) {
  const struct {
    const char* Keywords;
    Lines Effects;
    const char* Entry;
  } cases[] = {
      {"", {"display 0 hi\r\n", "speech 1 hi\r\n"}, ""},
      {"Incoming", {"display 0 hi\r\n", "speech 1 hi\r\n"}, ""},
      {"output", {"display 0 hi\r\n", "speech 3 hi\r\n"}, ""},
      {"ENTRY", {"speech 2 hi\r\n"}, "hi\r\n"},
      {"Edit", {"speech 4 hi\r\n"}, "hi\r\n"},
      {"System", {"box User Note|hi\r\n", "speech 5 hi\r\n"}, ""},
      {"VoiceOnly", {"speech 6 hi\r\n"}, ""},
      {"NoVoice", {"display 0 hi\r\n"}, ""},
      {"NoDisplay", {"speech 1 hi\r\n"}, ""},
      {"NoReturn", {"display 0 hi", "speech 1 hi"}, ""},
      {"Current", {"display 0 hi\r\n", "speech 1 hi\r\n"}, ""},
      {"NoVoice|Output", {"display 0 hi\r\n"}, ""},
      {"NoVoice|NoDisplay", {"speech 1 hi\r\n"}, ""},  // the last flag stands alone
      {"NoDisplay|NoVoice", {"display 0 hi\r\n"}, ""},
      {"NoReturn|NoVoice", {"display 0 hi\r\n"}, ""},
      {"Output|Edit|Incoming", {"display 0 hi\r\n", "speech 1 hi\r\n"}, ""},
      {"|Output||NoVoice|", {"display 0 hi\r\n"}, ""},  // empty words count for nothing
      {"VoiceOnly|NoVoice", {}, ""},
  };
  for (const auto& at : cases) {
    Entry().SetText("");
    EXPECT_EQ(Said("#SAY {hi} {" + std::string(at.Keywords) + "}"), at.Effects) << at.Keywords;
    EXPECT_EQ(Entry().Text(), at.Entry) << at.Keywords;
  }
}

TEST_F(OutputCommandTest, SayRefusesAnyOtherKeywordAndSaysNothing) {
  for (const char* keyword : {"Loud", "Out", "Output|x", " Output"}) {
    EXPECT_EQ(Run("#SAY {hi} {" + std::string(keyword) + "}"),
              "Only the keywords Output, Entry, System, Edit, or Incoming and NoVoice or NoDisplay and NoReturn and "
              "CURRENT are allowed as the second parameter")
        << keyword;
    EXPECT_EQ(Effects(), (Lines{"speech 1 error", "beep"})) << keyword;
  }
}

TEST_F(OutputCommandTest, SayExpandsItsParameters) {
  AddVariable("who", "Bob");
  AddVariable("how", "NoVoice");
  EXPECT_EQ(Said("#SAY {hi @who} @how"), Lines{"display 0 hi Bob\r\n"});
  AddVariable("none", "");
  EXPECT_EQ(Said("#SAY @none"), (Lines{"display 0 \r\n", "speech 1 \r\n"}));
}

TEST_F(OutputCommandTest, SayInTheBackgroundIsOnlyShown) {
  MakeSession(1, "bob", true);
  ASSERT_EQ(script.CurrentSocket, 0);
  int16 flags = 0;
  int16 background = 1;
  std::string problem;
  Parameters rvar;
  dispatcher.ProcessCommand("#SAY hi", flags, problem, rvar, background);
  EXPECT_EQ(Effects(), Lines{"display 1 hi\r\n"});
  dispatcher.ProcessCommand("#SAY hi Current", flags, problem, rvar, background);
  EXPECT_EQ(Effects(), (Lines{"display 1 hi\r\n", "speech 1 hi\r\n"}));
  EXPECT_EQ(problem, "");
}

TEST_F(OutputCommandTest, SayWaitsWhileThePlayerHoldsASelection) {
  Run("#SAY abc NoVoice");
  Viewport().Select(0, 2);
  Effects();
  EXPECT_EQ(Said("#SAY def"), Lines{"speech 1 def\r\n"});
  EXPECT_EQ(sessions.OutputBuffer[0], "def\r\n");
  Viewport().SetSelStart(0);
  EXPECT_EQ(Said("#SAY ghi NoVoice"), Lines{"display 0 def\r\nghi\r\n"});
}

TEST_F(OutputCommandTest, SayIntoTheEntryKeepsWhatStandsThere) {
  Entry().SetText("look");
  Entry().Select(0, 2);  // selected text is not replaced
  Run("#SAY {-} {Entry|NoReturn}");
  EXPECT_EQ(Entry().Text(), "lo-ok");
  EXPECT_EQ(Entry().SelStart(), 3);
  // A script that stands in the box gets the text of both channels, and the entry line behind it none.
  Loaded(4, "/data/hunt.set", "#VAR a 1");
  scriptFiles.MoveBuffers(4);
  Run("#SAY {; } {Edit|NoReturn};#SAY {+} {Entry|NoReturn}");
  EXPECT_EQ(Entry().Text(), "; +#VAR a 1");
  EXPECT_EQ(Entry().SelStart(), 3);
  Entry().SetLocked(true);  // a script that cannot be changed is not
  Run("#SAY {x} {Edit|NoReturn};#SAY {x} {Entry|NoReturn}");
  EXPECT_EQ(Entry().Text(), "; +#VAR a 1");
  scriptFiles.MoveBuffers(buffer::EntryLine);
  EXPECT_EQ(Entry().Text(), "lo-ok");
  EXPECT_EQ(Entry().SelStart(), 3);
}

// ---- SEND ----

TEST_F(OutputCommandTest, SendGivesTheGameAFileLineByLine) {
  MakeSession(0, "bob", true);
  memory.files.Put("/data/a.txt", "first @x;\r\n\r\n#second\r\n");
  EXPECT_EQ(Run("#SEND a.txt"), "");
  EXPECT_EQ(memory.sockets.TakeWritten(0), "first @x;\r\n\r\n#second\r\n");
  EXPECT_EQ(Run("#SEND {a.txt} {say } {, friend @x}"), "");
  EXPECT_EQ(memory.sockets.TakeWritten(0), "say first @x;, friend @x\r\nsay , friend @x\r\nsay #second, friend @x\r\n");
  Effects();
  EXPECT_EQ(Run("#SEND none.txt;#BELL"), "Error finding file /data/none.txt");
  EXPECT_EQ(Effects(), (Lines{"speech 1 error", "beep"})) << "reported, and the rest of the line does not run";
}

TEST_F(OutputCommandTest, SendTakesASuffixThatEndsALineAsTheLineEnd) {
  MakeSession(0, "bob", true);
  memory.files.Put("/data/a.txt", "one\r\ntwo\r\n");
  options.LineTerminator = "\n\r";
  const struct {
    std::string Suffix, Sent;
  } cases[] = {{"\r", "say one\rsay two\r"},
               {"!\t", "say one!\tsay two!\t"},
               {"\r!", "say one\r!\n\rsay two\r!\n\r"},
               {"\x0e", "say one\x0e\n\rsay two\x0e\n\r"},
               {"\xe9", "say one\xe9\n\rsay two\xe9\n\r"},
               {"%CHAR(13)", "say one%CHAR(13)\n\rsay two%CHAR(13)\n\r"}};  // the parameters stay as they stand
  for (const auto& at : cases) {
    EXPECT_EQ(Run("#SEND {a.txt} {say } {" + at.Suffix + "}"), "") << at.Suffix;
    EXPECT_EQ(memory.sockets.TakeWritten(0), at.Sent) << at.Suffix;
    EXPECT_EQ(options.LineTerminator, "\n\r");
  }
  EXPECT_NE(Run("#SEND {none.txt} {} {\r}"), "");
  EXPECT_EQ(options.LineTerminator, "\n\r") << "after an error too";
}

// ---- SETSPEECH ----

TEST_F(OutputCommandTest, SetSpeechSetsTheChannel) {
  const struct {
    const char* Name;
    std::size_t Channel;
  } channels[] = {{"Incoming", 1}, {"ENTRY", 2}, {"output", 3}, {"Edit", 4}, {"System", 5}, {"VoiceOnly", 6}};
  for (const auto& at : channels) {
    const std::string start = "#SETSPEECH " + std::string(at.Name) + " ";
    for (const char* reader : {"Jaws", "WindowEyes", "SystemAccess", "ScreenReader"}) {
      voices.SpeechType[at.Channel] = 3;
      EXPECT_EQ(Said(start + reader), Lines());
      EXPECT_EQ(voices.SpeechType[at.Channel], 1) << reader;
    }
    EXPECT_EQ(Said(start + "none"), Lines());
    EXPECT_EQ(voices.SpeechType[at.Channel], 0);
    EXPECT_EQ(Said(start + "off"), Lines{"silence " + std::to_string(at.Channel)});
    EXPECT_NE(voices.ChannelMuted[at.Channel], 0);
    EXPECT_EQ(Said(start + "on"), Lines());
    EXPECT_EQ(voices.ChannelMuted[at.Channel], 0);
    EXPECT_EQ(Said(start + "stop"), Lines{"silence " + std::to_string(at.Channel)});
  }
  EXPECT_EQ(Said("#SETSPEECH all stop"), Lines{"silence all"});
}

TEST_F(OutputCommandTest, SetSpeechGivesTheVoiceItsValues) {
  voices.VoicePriority[3] = 2;
  EXPECT_EQ(Said("#SETSPEECH Output Sapi 2 80 50"), Lines());
  EXPECT_EQ(voices.SpeechType[3], 3);
  EXPECT_EQ(voices.VoiceIndex[3], 2);
  EXPECT_EQ(voices.VoiceVolume[3], 80);
  EXPECT_EQ(voices.VoiceRate[3], 5);
  const MemorySpeech::VoiceSettings& engine = memory.speech.Set(3);
  EXPECT_EQ(engine.voice, 2);
  EXPECT_EQ(engine.rate, 5);
  EXPECT_EQ(engine.volume, 80);
  EXPECT_EQ(engine.priority, 2);
  EXPECT_EQ(memory.speech.Set(1).rate, 0) << "the others are left alone";
  // given, on the engine's scale: rate / 3.2 + 0.5, rounded with halves to even, minus 11
  const int16 rates[][2] = {{1, -10}, {2, -10}, {4, -9}, {8, -8},  {32, -1},
                            {33, 0},  {48, 5},  {64, 9}, {99, 20}, {100, 21}};
  for (const auto& [given, stored] : rates) {
    Run("#SETSPEECH Entry Sapi 0 100 " + std::to_string(given));
    EXPECT_EQ(voices.VoiceRate[2], stored) << given;
  }
}

TEST_F(OutputCommandTest, SetSpeechChecksItsParameters) {
  const std::pair<const char*, const char*> cases[] = {
      {"Output", "Wrong number of parameters"},
      {"Output On 1", "Wrong number of parameters"},
      {"Output On 1 2 3", "Wrong number of parameters"},
      {"Output Sapi", "Wrong number of parameters"},
      {"Output Sapi 1 2", "Wrong number of parameters"},
      {"Output Loud", "Parameter 2 must be either On, Off, Stop, None, Sapi, or ScreenReader "},
      {"Output Sapi x 80 50", "Parameter 3 must be numeric"},
      {"Output Sapi 101 80 50", "Parameter 3 must be in the range 0 and 100"},
      {"Output Sapi 1 x 50", "Parameter 4 must be numeric"},
      {"Output Sapi 1 101 50", "Parameter 4 must be in the range 0 and 100"},
      {"Output Sapi 1 80 0", "Parameter 5 must be in the range 1 and 100"},
      {"Output Sapi 1 80 x", "Parameter 5 must be numeric"},
      {"Output Sapi x 101 0", "Parameter 3 must be numeric"},  // the first is told
  };
  for (const auto& [parameters, message] : cases) {
    EXPECT_EQ(Run("#SETSPEECH " + std::string(parameters)), message) << parameters;
    EXPECT_EQ(Effects(), (Lines{"speech 1 error", "beep"})) << parameters;
    EXPECT_EQ(voices.VoiceIndex[3], 0) << parameters;
    EXPECT_EQ(voices.VoiceVolume[3], 100) << parameters;
  }
}

TEST_F(OutputCommandTest, SetSpeechChoosesTheEngineBeforeItChecksTheValues) {
  for (const char* values : {"x 70 50", "1 101 50", "1 70 0"}) {
    voices.SpeechType[3] = 1;
    EXPECT_NE(Run("#SETSPEECH Output Sapi " + std::string(values)), "") << values;
    EXPECT_EQ(voices.SpeechType[3], 3) << values;
    EXPECT_EQ(voices.VoiceRate[3], 0) << values;
    EXPECT_EQ(memory.speech.Set(3).voice, 0) << values;
    EXPECT_EQ(memory.speech.Set(3).volume, 100) << values;
  }
}

TEST_F(OutputCommandTest, SetSpeechGoesOnWithTheChannelNamedLast) {
  const std::string complaint =
      "First parameter must be either Incoming, Output, Edit, Entry, System, or VoiceOnly in command: ";
  EXPECT_EQ(Run("#SETSPEECH nobody none"), "");  // none was named yet: nothing to set
  EXPECT_EQ(Of("speech"), Lines{"1 error"});
  Run("#SETSPEECH Edit On");
  voices.SpeechType = {0, 3, 3, 3, 3, 3, 3};
  ClearErrorLog();
  EXPECT_EQ(Run("#SETSPEECH User None;#BELL"), "");
  EXPECT_EQ(Effects(), (Lines{"speech 1 error", "beep", "beep"})) << "told, and the rest of the line runs";
  EXPECT_EQ(voices.SpeechType, (SpeechState::Channels{0, 3, 3, 3, 0, 3, 3}));
  EXPECT_NE(ErrorLog().find("First parameter must be"), std::string::npos);
  EXPECT_NE(ErrorLog().find("#SETSPEECH User None;#BELL"), std::string::npos);
  EXPECT_EQ(Run("#SETSPEECH all none"), "") << "ALL knows STOP only";
  EXPECT_EQ(voices.SpeechType[4], 0);
  // A wrong channel and a wrong setting are told both.
  ClearErrorLog();
  EXPECT_EQ(Run("#SETSPEECH User Loud"), "Parameter 2 must be either On, Off, Stop, None, Sapi, or ScreenReader ");
  EXPECT_NE(ErrorLog().find("First parameter must be"), std::string::npos);
}

// ---- AUTOMENU ----

TEST_F(OutputCommandTest, AutoMenuOpensAMenuOrWalksThroughThem) {
  EXPECT_EQ(Run("#AUTOMENU main"), "");
  EXPECT_TRUE(menu.ListOpen);
  EXPECT_EQ(menu.CurrentMenu, "MAIN");
  EXPECT_EQ(menu.MenuDepth, 1);
  EXPECT_EQ(Run("#AUTOMENU {Main|Tools|record}"), "");
  EXPECT_EQ(menu.CurrentMenu, "AUTOWALK");
  menus.CloseListBox();
  Effects();
  EXPECT_EQ(Run("#AUTOMENU {main|tools|nowhere|x}"), "");
  EXPECT_EQ(Effects(), (Lines{"speech 1 error", "beep"}));
  EXPECT_NE(ErrorLog().find("Auto-menu did not find matchingmenu item NOWHERE"), std::string::npos);
  EXPECT_FALSE(menu.ListOpen);
  EXPECT_EQ(menu.MenuAutoPath, "") << "the next menu is opened by hand";
  EXPECT_EQ(Run("#AUTOMENU Window"), "");
  EXPECT_EQ(Of("speech"), Lines{"5 Corvid does not have this menu yet: Script window menu"});
  EXPECT_EQ(Run("#AUTOMENU {files|x}"), "Bad menu name: files") << "as typed, where a path follows";
  EXPECT_EQ(Run("#AUTOMENU files"), "Bad menu name: FILES");
}

// ---- BELL, CLIPBOARD, QUIET, SYSKEY ----

TEST_F(OutputCommandTest, BellBeeps) {
  EXPECT_EQ(Said("#BELL"), Lines{"beep"});
  EXPECT_EQ(Run("#BELL x"), "Wrong number of parameters");
}

TEST_F(OutputCommandTest, ClipboardTakesTheExpandedText) {
  AddVariable("a", "deep");
  EXPECT_EQ(Said("#CLIPBOARD {the @a well}"), Lines{"clipboard the deep well"});
  EXPECT_EQ(memory.face.Clipboard, "the deep well");
  EXPECT_EQ(Said("#SAY %CLIPBOARD NoDisplay"), Lines{"speech 1 the deep well\r\n"});
}

TEST_F(OutputCommandTest, QuietTakesTheCharactersAsTheyStand) {
  AddVariable("a", "zz");
  EXPECT_EQ(Said("#QUIET {*@a!}"), Lines());
  EXPECT_EQ(options.QuietChars, (std::vector<int16>{'*', '@', 'a', '!'}));
  EXPECT_EQ(Said("#QUIET -"), Lines());
  EXPECT_EQ(options.QuietChars, std::vector<int16>{'-'});
  EXPECT_EQ(Said("#QUIET {\xE2\x80\xA2}"), Lines());
  EXPECT_EQ(options.QuietChars, std::vector<int16>{0x2022}) << "one character, however many bytes it takes";
  EXPECT_EQ(Said("#QUIET {} {};#BELL"), Lines{"beep"});
  EXPECT_TRUE(options.QuietChars.empty());
  Run("#QUIET *");
  EXPECT_EQ(Run("#QUIET"), "Wrong number of parameters");
  EXPECT_EQ(Run("#QUIET {}"), "Wrong number of parameters") << "empty braces at the end are no parameter";
  EXPECT_EQ(options.QuietChars, std::vector<int16>{'*'}) << "a parameter left out is a slip";
}

TEST_F(OutputCommandTest, QuietCharactersAreNotSpokenOfWhatTheGameSends) {
  MakeSession(0, "bob", true);
  Run("#CONFIGURE RemoveAsciiArt 0");
  Run("#QUIET {*\xE2\x80\xA2}");
  Effects();
  memory.sockets.Receive(0, "*news* \xE2\x80\xA2 \xE2\x80\x93\r\n");
  EXPECT_EQ(Of("speech"), Lines{"1   news      \xE2\x80\x93\xE2\x80\x93"});
}

TEST_F(OutputCommandTest, SysKeyKnowsOneWord) {
  Entry().SetText("typed");
  EXPECT_EQ(Said("#SYSKEY Clear_line"), Lines());
  EXPECT_EQ(Entry().Text(), "typed");
  EXPECT_EQ(Run("#SYSKEY"), "Unknown Syskey parameter");
  EXPECT_EQ(Run("#SYSKEY EXECUTE_LINE"), "Unknown Syskey parameter");
  AddVariable("w", "CLEAR_LINE");
  Effects();
  EXPECT_EQ(Said("#SYSKEY @w"), Lines{});
  EXPECT_EQ(Run("#SYSKEY other", option::CheckOnly), "Unknown Syskey parameter") << "checked too";
  EXPECT_EQ(Run("#SYSKEY CLEAR_LINE", option::CheckOnly), "");
}

// ---- all of them ----

TEST_F(OutputCommandTest, CheckingCarriesOutNothing) {
  Entry().SetText("cat");
  options.QuietChars = {'*'};
  for (const char* line :
       {"#SAY hi", "#SAY hi nonsense", "#SETSPEECH Output Off", "#SETSPEECH x y", "#SETSPEECH Output Sapi 1 2 3",
        "#FIND cat", "#FIND cat nonsense", "#WINDOW errorlog", "#WINDOW nowhere", "#WINDOW output",
        "#AUTOMENU {main|x}", "#AUTOMENU nonsense", "#BELL", "#CLIPBOARD x", "#QUIET x", "#SEND a.txt"}) {
    EXPECT_EQ(Run(line, option::CheckOnly), "") << line;
    EXPECT_EQ(Effects(), Lines()) << line;
  }
  EXPECT_EQ(Entry().SelStart(), 0);
  EXPECT_EQ(buffers.CurrentBuffer, 1);
  EXPECT_EQ(options.QuietChars, std::vector<int16>{'*'});
  EXPECT_EQ(voices.ChannelMuted[3], 0);
  EXPECT_FALSE(menu.ListOpen);
}

TEST_F(OutputCommandTest, ParametersAreCountedInCheckModeToo) {
  for (const char* line : {"#SAY",
                           "#SAY a b c",
                           "#SEND",
                           "#SEND a b c d",
                           "#SETSPEECH",
                           "#SETSPEECH a",
                           "#SETSPEECH a b c",
                           "#SETSPEECH a b c d e f",
                           "#FIND",
                           "#FIND a b c",
                           "#SYSKEY a b",
                           "#WINDOW",
                           "#WINDOW a b",
                           "#AUTOMENU",
                           "#AUTOMENU a b",
                           "#BELL a",
                           "#CLIPBOARD",
                           "#CLIPBOARD a b",
                           "#QUIET",
                           "#QUIET a b"}) {
    for (const int16 mode : {int16{0}, option::CheckOnly})
      EXPECT_EQ(Run(line, mode), "Wrong number of parameters") << line;
  }
}

}  // namespace corvid::test
