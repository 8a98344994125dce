// SPDX-License-Identifier: GPL-3.0-or-later
// The store that remembers where the player's folder is: one that cannot be written, and one that cannot be read.
#include "running_program.h"

namespace corvid {
namespace {

constexpr const char* Default = "/home/player/Documents/Corvid/";
constexpr const char* Own = "/mine/";

class SettingsStore : public testing::Test {
 protected:
  SettingsStore() {
    for (const std::string folder : {Default, Own}) {
      files.Put(folder + "start.set", "; mine\r\n");
      files.Put(folder + "speech.ini", run.memory.files.ReadWhole("/data/speech.ini"));
    }
  }
  void Remember(const std::string& folder) { settings.Set("CORVID", "Filespec", "DefaultFolder", folder); }
  std::string Remembered() { return MemorySettings(settings).Get("CORVID", "Filespec", "DefaultFolder"); }
  bool Start(RunningProgram& program) {
    return program.corvid.Start({.DataFolder = {}, .Connect = {}, .PracticePort = {}});
  }
  void Play(RunningProgram& program) {
    program.Do("#MUD bob Aard aard.example 4000 Bob secret");
    program.Do("#CONNECT bob");
    EXPECT_TRUE(program.memory.sockets.Connected(1));
    program.memory.sockets.Receive(1, "Welcome!\r\n");
    EXPECT_EQ(program.memory.effects.Of("speech").back(), "1 Welcome!");
    EXPECT_TRUE(program.corvid.saving.SaveOptionsFile());
  }

  RunningProgram run;
  MemoryFiles& files = run.memory.files;
  MemorySettings& settings = run.memory.settings;
};

TEST_F(SettingsStore, ThatCannotBeWrittenIsToldAndTheFolderIsUsedAllTheSame) {
  settings.ReadOnly = true;
  ASSERT_TRUE(Start(run));
  EXPECT_EQ(run.Asked(), Texts());
  EXPECT_NE(run.ErrorLog().find("Error: the store is read-only in DefaultFolder"), std::string::npos) << run.ErrorLog();
  EXPECT_EQ(run.corvid.optionsState.UserDataFolder, Default);
  Play(run);
  for (const std::string name : {"Character.mud", "corvid.set", "Aard/bob-Char.set"})
    EXPECT_TRUE(run.Exists(Default + name)) << name;
  settings.ReadOnly = false;
  EXPECT_EQ(Remembered(), "");
  // The next run finds the same folder without it, with all that is in it, and remembers it if that can be done.
  RunningProgram next;
  next.memory.files = files;
  ASSERT_TRUE(Start(next));
  EXPECT_EQ(next.Asked(), Texts());
  EXPECT_EQ(next.corvid.optionsState.UserDataFolder, Default);
  EXPECT_GT(FindCharacter(next.corvid.sessionState, "bob"), 0);
  EXPECT_EQ(next.memory.settings.Get("CORVID", "Filespec", "DefaultFolder"), Default);
}

TEST_F(SettingsStore, ThatIsOnlyReadServesAFolderOfThePlayersOwn) {
  Remember(Own);
  settings.ReadOnly = true;
  ASSERT_TRUE(Start(run));
  EXPECT_EQ(run.ErrorLog(), "");
  EXPECT_EQ(run.corvid.optionsState.UserDataFolder, Own);
  Play(run);
  EXPECT_TRUE(run.Exists("/mine/Character.mud"));
  EXPECT_FALSE(run.Exists(Default + std::string("Character.mud")));
}

TEST_F(SettingsStore, ThatCannotBeReadIsToldAndForgetsNothing) {
  Remember(Own);
  files.Put("/mine/Aard/bob.set", "#alias {s} {score}\r\n");
  settings.Fails = true;
  ASSERT_TRUE(Start(run));
  EXPECT_NE(run.ErrorLog().find("the store is read-only"), std::string::npos) << run.ErrorLog();
  EXPECT_EQ(run.corvid.optionsState.UserDataFolder, Default);
  Play(run);
  settings.Fails = false;
  EXPECT_EQ(Remembered(), Own);
  EXPECT_EQ(run.Read("/mine/Aard/bob.set"), "#alias {s} {score}\r\n");
  RunningProgram next;
  next.memory.files = files;
  next.memory.settings = settings;
  ASSERT_TRUE(Start(next));
  EXPECT_EQ(next.corvid.optionsState.UserDataFolder, Own);
}

TEST_F(SettingsStore, ThatKeepsAFolderWhichIsGoneAsksAgainNextTime) {
  Remember("/gone/");
  settings.ReadOnly = true;
  run.memory.face.Will("No");
  run.memory.face.Will("Ok");
  EXPECT_FALSE(Start(run));
  EXPECT_EQ(run.Asked(),
            Texts({"MSGBOX Warning|The defined user data folder \"/gone/\" does not exist. Do you want to create the "
                   "folder?",
                   "MSGBOX No Corvid User Data Folder Defined|Come back when you are ready to continue."}));
  EXPECT_NE(run.ErrorLog().find("the store is read-only"), std::string::npos);
  EXPECT_EQ(Remembered(), "/gone/");
  EXPECT_FALSE(files.FolderExists("/gone"));
}

}  // namespace
}  // namespace corvid
