// SPDX-License-Identifier: GPL-3.0-or-later
// The whole program in memory: from the first start to a game that is played.
#include <gtest/gtest.h>

#include "app/corvid.h"
#include "core/keys.h"
#include "core/scramble.h"
#include "core/text.h"
#include "platform/memory/memory_platform.h"

namespace corvid {
namespace {

using Texts = std::vector<std::string>;

bool Holds(const std::vector<std::string>& texts, const std::string& wanted) {
  return std::find(texts.begin(), texts.end(), wanted) != texts.end();
}

class ProgramTest : public testing::Test {
 protected:
  MemoryPlatform memory;
  std::unique_ptr<Corvid> corvid = std::make_unique<Corvid>(memory.All());

  void SetUp() override { memory.files.Put("/app/start.set", "; nothing\r\n"); }

  // Starts on a prepared folder, so that nothing is asked.
  bool StartPractice(const std::string& connect = "practice") {
    StartRequest request;
    request.DataFolder = "/data";
    request.PracticePort = "5555";
    request.Connect = connect;
    return corvid->Start(request);
  }
  void Type(const std::string& line) {
    constexpr int16 SomeSign = 186;
    for (const char c : line) {
      const int16 key = IsLetter(c) || IsDigit(c) ? static_cast<int16>(UpperChar(c)) : SomeSign;
      memory.face.Events->KeyDown(key, 0);
      memory.face.Events->KeyTyped(std::string(1, c));
      memory.face.Events->KeyUp(key, 0);
    }
    memory.face.Events->KeyDown(keycode::Enter, 0);
    memory.face.Events->KeyTyped("\r");
    memory.face.Events->KeyUp(keycode::Enter, 0);
    memory.loop.Pass(5);
  }
};

TEST_F(ProgramTest, PracticeAsksNothingConnectsAndSpeaks) {
  ASSERT_TRUE(StartPractice());
  EXPECT_TRUE(memory.effects.Of("dialog").empty()) << memory.effects.Transcript();
  EXPECT_TRUE(memory.face.MainShown());
  EXPECT_EQ(memory.face.Title, "Corvid [practice");
  memory.sockets.Receive(1, "What is your name? ");
  EXPECT_TRUE(Holds(memory.effects.Of("speech"), "1 What is your name? ")) << memory.effects.Transcript();
  Type("bob");
  EXPECT_EQ(memory.sockets.TakeWritten(1), "bob\r\n");
  EXPECT_TRUE(memory.effects.Of("unanswered").empty());
}

TEST_F(ProgramTest, PracticeKeepsTheSpeechThatThePlayerHasSaved) {
  SpeechState own = corvid->speechState;
  own.SpeechType.fill(speechtype::Engine);
  own.VoiceRate.fill(9);
  const std::string saved = Scramble(SpeechSettings::FileText(own));
  memory.files.Put("/data/speech.ini", saved);
  ASSERT_TRUE(StartPractice());
  EXPECT_EQ(memory.files.ReadWhole("/data/speech.ini"), saved);
  EXPECT_EQ(corvid->speechState.VoiceRate[1], 9);
}

TEST_F(ProgramTest, TheSecondPracticeRunUsesTheSameCharacterOnItsNewPort) {
  ASSERT_TRUE(StartPractice());
  corvid->quit(true);
  EXPECT_TRUE(memory.loop.Ending());
  corvid.reset();
  MemoryFiles files = memory.files;
  MemoryPlatform second;
  second.files = files;
  Corvid again(second.All());
  StartRequest request;
  request.DataFolder = "/data";
  request.PracticePort = "6666";
  request.Connect = "practice";
  ASSERT_TRUE(again.Start(request));
  EXPECT_EQ(again.sessionState.CharacterCount, 2) << "the row of quick connections and the practice game";
  EXPECT_EQ(second.sockets.Port(1), "6666");
}

TEST_F(ProgramTest, FirstRunAsksForFilesAndSpeechThenRemembers) {
  memory.face.Will("No");                      // no previous installation
  memory.face.Will("Ok");                      // creating and transferring
  memory.face.Will("Ok");                      // successfully moved
  memory.face.Will("Ok");                      // from the following screen
  memory.face.Will({"OK", {}, {{1, 2}}, {}});  // MS Sapi, the third row
  memory.face.Will("Ok");                      // next step
  ASSERT_TRUE(corvid->Start({}));
  EXPECT_TRUE(memory.effects.Of("unanswered").empty()) << memory.effects.Transcript();
  EXPECT_EQ(memory.face.AnswersLeft(), 0U) << memory.effects.Transcript();
  EXPECT_EQ(corvid->optionsState.UserDataFolder, "/home/player/Documents/Corvid/");
  EXPECT_EQ(corvid->speechState.SpeechType[1], 3);
  EXPECT_EQ(corvid->speechState.SpeechType[6], 3);
  EXPECT_TRUE(memory.files.IsPrivate("/home/player/Documents/Corvid/speech.ini"));
  EXPECT_EQ(memory.settings.Get("CORVID", "Filespec", "DefaultFolder"), "/home/player/Documents/Corvid/");

  MemoryPlatform second;
  second.files = memory.files;
  second.settings = memory.settings;
  Corvid again(second.All());
  ASSERT_TRUE(again.Start({}));
  EXPECT_TRUE(second.effects.Of("dialog").empty()) << second.effects.Transcript();
}

TEST_F(ProgramTest, AsksInTheOrderOfItsSteps) {
  memory.files.Put("/app/full.set", "#CONFIGURE MarginBell 33\r\n");
  memory.files.Put("/app/corvid.set", "#Configure UserPath {/elsewhere/}\r\n");
  memory.files.Put("/app/start.set", "#CONFIGURE NoSuchOption 1\r\n");
  memory.face.Will("No");
  for (int i = 0; i < 4; ++i) memory.face.Will("Ok");  // moving, moved, the note, the error of the script
  memory.face.Will("No");                              // full.set is not used
  memory.face.Will("No");                              // nor deleted
  for (const char* button : {"Ok", "OK", "Ok"}) memory.face.Will(button);
  bool shown = true;
  memory.loop.BeforePump = [&] { shown = memory.face.MainShown(); };
  ASSERT_TRUE(corvid->Start({}));
  EXPECT_FALSE(shown) << "the window comes last";
  std::vector<std::string> titles;
  for (const std::string& dialog : memory.effects.Of("dialog")) titles.push_back(dialog.substr(0, dialog.find('|')));
  EXPECT_EQ(titles, (std::vector<std::string>{"MSGBOX Previous Installation Data Transfer", "MSGBOX Moving",
                                              "MSGBOX Move Complete", "MSGBOX Note", "MSGBOX Error! ", "MSGBOX Corvid",
                                              "MSGBOX Delete", "MSGBOX Interim Speech",
                                              "INITIALSPEECH Initial Speech Setting", "MSGBOX Next Step"}))
      << memory.effects.Transcript();
  EXPECT_TRUE(memory.face.MainShown());
  EXPECT_TRUE(memory.files.FileExists("/home/player/Documents/Corvid/full.set"));
}

TEST_F(ProgramTest, DialogsBeforeSpeechIsChosenAreSpokenAllTheSame) {
  memory.face.Will("No");
  memory.face.Will("Cancel");
  EXPECT_FALSE(corvid->Start({}));
  EXPECT_TRUE(Holds(memory.effects.Of("speech"), "5 Previous Installation Data Transfer"))
      << memory.effects.Transcript();
}

TEST_F(ProgramTest, QuitAsksWhileConnectedAndANoCancels) {
  ASSERT_TRUE(StartPractice());
  memory.face.Will("No");
  corvid->quit(false);
  EXPECT_FALSE(memory.loop.Ending());
  EXPECT_TRUE(corvid->platform.sockets.Connected(1));
  memory.face.Will("Yes");
  corvid->quit(false);
  EXPECT_TRUE(memory.loop.Ending());
  EXPECT_FALSE(corvid->platform.sockets.Connected(1));
}

TEST_F(ProgramTest, FullImageIsUsedOrDeletedAsThePlayerSays) {
  memory.files.Put("/data/full.set", "#CONFIGURE MarginBell 33\r\n");
  memory.face.Will("Yes");
  ASSERT_TRUE(StartPractice(""));
  EXPECT_EQ(corvid->optionsState.MarginBell, 33);
  EXPECT_TRUE(memory.files.FileExists("/data/full.set"));

  MemoryPlatform second;
  second.files = memory.files;
  Corvid again(second.All());
  second.face.Will("No");
  second.face.Will("Yes");
  StartRequest request;
  request.DataFolder = "/data";
  request.PracticePort = "1";
  ASSERT_TRUE(again.Start(request));
  EXPECT_FALSE(second.files.FileExists("/data/full.set"));
  EXPECT_EQ(again.optionsState.MarginBell, 74);
}

TEST_F(ProgramTest, OptionsSurviveARestart) {
  ASSERT_TRUE(StartPractice());
  Type("#CONFIGURE MarginBell 50");
  Type("#CONFIGURE CommandChar !");
  ASSERT_TRUE(corvid->saving.SaveOptionsFile());
  MemoryPlatform second;
  second.files = memory.files;
  Corvid again(second.All());
  StartRequest request;
  request.DataFolder = "/data";
  request.PracticePort = "1";
  ASSERT_TRUE(again.Start(request));
  EXPECT_EQ(again.optionsState.MarginBell, 50);
  EXPECT_EQ(again.optionsState.CommandChar, '!');
  EXPECT_TRUE(second.effects.Of("dialog").empty()) << second.effects.Transcript();
}

TEST_F(ProgramTest, DamagedCharacterFileLeavesOneRowAndIsReplacedByTheNextWrite) {
  memory.files.Put("/data/Character.mud", std::string("\x01\x02 no table", 11));
  memory.files.Put("/data/start.set", "; nothing\r\n");
  memory.files.Put("/data/speech.ini", Scramble(SpeechSettings::FileText(corvid->speechState)));
  StartRequest request;
  request.DataFolder = "/data";
  ASSERT_TRUE(corvid->Start(request));
  EXPECT_EQ(corvid->sessionState.CharacterCount, 1);
  EXPECT_EQ(corvid->sessionState.MudName[1], "QUICKCONNECT");
  EXPECT_EQ(corvid->sessionState.HostName[1], "QUICKCONNECT");
  EXPECT_EQ(corvid->sessionState.CharacterName[1], "QUICKCONNECT");
}

TEST_F(ProgramTest, WithoutAGameTheFirstTickOpensTheListOfCharacters) {
  ASSERT_TRUE(StartPractice(""));
  memory.effects.Clear();
  memory.face.Will("Exit  Esc");
  memory.loop.Pass(400);
  EXPECT_TRUE(memory.effects.Of("speech").empty());
  EXPECT_TRUE(memory.effects.Of("dialog").empty());
  memory.loop.Pass(200);
  EXPECT_EQ(memory.effects.Of("dialog"), Texts{"CHARACTER1 Mud Character List|Character References"});
  EXPECT_TRUE(Holds(memory.effects.Of("speech"), "5 practice - Magpie Cross")) << memory.effects.Transcript();
  EXPECT_EQ(memory.face.AnswersLeft(), 0U);
}

TEST_F(ProgramTest, WhoTypesAtOnceIsNotKeptByTheList) {
  ASSERT_TRUE(StartPractice(""));
  Type("#CONNECT practice");
  memory.loop.Pass(1000);
  EXPECT_EQ(memory.face.Title, "Corvid [practice");
  EXPECT_TRUE(memory.effects.Of("dialog").empty()) << memory.effects.Transcript();
}

TEST_F(ProgramTest, AStartScriptThatConnectsLeavesNothingToChoose) {
  memory.files.Put("/app/start.set", "#MUD bob Aard aard.example 4000 Bob secret\r\n#CONNECT bob\r\n");
  ASSERT_TRUE(StartPractice(""));
  EXPECT_EQ(memory.face.Title, "Corvid [bob");
  memory.loop.Pass(1000);
  EXPECT_TRUE(memory.effects.Of("dialog").empty()) << memory.effects.Transcript();
}

TEST_F(ProgramTest, ANewcomersFirstGameIsWrittenDownAndConnected) {
  constexpr int32 name = 1, reference = 3, mud = 7, host = 9, port = 11, password = 15;
  ASSERT_TRUE(StartPractice(""));
  memory.face.Will("Add  Control-A");
  memory.face.Will({"OK",
                    {{name, "Hero"},
                     {reference, "mine"},
                     {mud, "My Game"},
                     {host, "mud.example"},
                     {port, "4000"},
                     {password, "secret"}},
                    {},
                    {}});
  memory.face.Will("Connect");
  memory.loop.Pass(600);
  EXPECT_TRUE(memory.sockets.Connected(1));
  EXPECT_EQ(memory.sockets.Port(1), "4000");
  EXPECT_EQ(memory.face.Title, "Corvid [mine");
  EXPECT_TRUE(memory.files.FileExists("/data/My Game/mine.set"));
  EXPECT_TRUE(memory.files.IsPrivate("/data/Character.mud"));
  EXPECT_TRUE(memory.effects.Of("unanswered").empty()) << memory.effects.Transcript();
  for (const std::string& spoken : memory.effects.Of("speech"))
    EXPECT_EQ(spoken.find("secret"), std::string::npos) << spoken;
}

TEST_F(ProgramTest, TheMenuOffersTheListAndQuickConnections) {
  ASSERT_TRUE(StartPractice("practice"));
  memory.effects.Clear();
  memory.face.Will("Exit  Esc");
  Type("#AUTOMENU {Main|Connect|Character}");
  memory.face.Will({"Connect", {{3, "new.example"}, {5, "5000"}}, {}, {}});
  Type("#AUTOMENU {Main|Connect|Quick}");
  EXPECT_TRUE(memory.sockets.Connected(2));
  EXPECT_EQ(memory.face.Title, "Corvid [MUD");
  EXPECT_TRUE(memory.effects.Of("unanswered").empty()) << memory.effects.Transcript();
  memory.face.Will("Done");
  Type("#VARIABLE");
  EXPECT_EQ(memory.effects.Of("dialog").back(), "DEBUGVAR View & Set Variables|Variables");
}

TEST_F(ProgramTest, TheListOfVariablesSetsAndForgetsThem) {
  ASSERT_TRUE(StartPractice("practice"));
  const std::string value = "5 @x; say {me ~b %1";
  const ScriptState& script = corvid->scriptState;
  ASSERT_NE(script.CurrentOwner, 0);
  for (const bool global : {false, true}) {
    const OwnerId owner = global ? OwnerId{0} : script.CurrentOwner;
    Type("#GUNVARIABLE foe");
    Type("#VARIABLE foe own");
    Type("#GVARIABLE foe everybodys");
    memory.face.Will("Add");
    memory.face.Will({"OK", {{1, "foe"}, {3, value}}, {}, {{4, global ? 1 : 0}}});
    memory.face.Will("Done");
    Type("#VARIABLE");
    const int32 row = corvid->symbols.FindVariableRow("foe", owner);
    ASSERT_NE(row, 0);
    EXPECT_EQ(script.VariableValues[row], value);
    memory.face.Will("Add");  // the one that was set is selected now
    memory.face.Will({"OK", {{1, "foe"}, {3, "x"}}, {}, {{4, global ? 1 : 0}}});
    memory.face.Will("Delete");
    memory.face.Will("Done");
    Type("#VARIABLE");
    for (int32 each = 1; each <= script.VariableCount; ++each)
      EXPECT_FALSE(script.VariableNames[each] == "foe" && script.VariableOwners[each] == owner);
    EXPECT_NE(corvid->symbols.FindVariableRow("foe", global ? script.CurrentOwner : OwnerId{0}), 0);
  }
  EXPECT_TRUE(memory.effects.Of("unanswered").empty()) << memory.effects.Transcript();
}

TEST_F(ProgramTest, KillAllPutsTheWindowsBackAsTheOptionsSay) {
  ASSERT_TRUE(StartPractice());
  Type("#CONFIGURE ColourDisplay on");
  Type("#CONFIGURE OutputWindowSize 500");
  ASSERT_TRUE(corvid->sessionState.RichFamily);
  Type("#KILLALL");
  EXPECT_FALSE(corvid->sessionState.RichFamily);
  EXPECT_EQ(corvid->optionsState.OutputWindowSize, 30);
}

}  // namespace
}  // namespace corvid
