// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/user_folder.h"

#include <gtest/gtest.h>

#include "files_house.h"

namespace corvid {
namespace {

using testing_files::FilesHouse;
using testing_files::Texts;

constexpr const char* Standard = "/home/player/Documents/Corvid/";
const std::string Previous =
    "Previous Installation Data Transfer|Do you have a previous installation of Corvid from which you would like to "
    "recover scripts, sounds, MUDD login data, and settings stored on this computer?";
const std::string Moving =
    "Moving|now creating and transferring files to /home/player/Documents/Corvid/. This may take a minute. Press OK to "
    "continue, or Cancel to exit.";
const std::string Known =
    "Moving your Corvid datafiles and Folders|Do you know in which folder you previously saved your Corvid data files?";
const std::string Searching =
    "Search|Corvid will now search for possible previous Corvid data folders.  Press Enter to begin search. This make "
    "take a few minutes.";
const std::string Transferred =
    "Transfer Complete|Corvid has successfully copied your Corvid data files and folders to "
    "/home/player/Documents/Corvid/.";

void Ship(FilesHouse& house) {
  house.mem.files.Put("/app/start.set", "#alias {a} {b}\r\n");
  house.mem.files.Put("/app/readme.txt", "not copied");
  house.mem.files.Put("/app/Sounds/ding.wav", "wave");
  house.mem.files.Put("/app/help/one/text.txt", "help");
}
std::string Setting(FilesHouse& house) {
  return house.mem.settings.Get("CORVID", "Filespec", "DefaultFolder");
}
void SetSetting(FilesHouse& house, const std::string& folder) {
  house.mem.settings.Set("CORVID", "Filespec", "DefaultFolder", folder);
}

TEST(ChooseFolder, AFirstStartUsesTheDocumentsAndTheShippedFiles) {
  FilesHouse house;
  Ship(house);
  house.prompter.Will(box::ResultNo);
  house.prompter.Will(box::ResultOk);
  EXPECT_TRUE(house.folder.Choose(""));
  EXPECT_EQ(house.options.AppFolder, "/app/");
  EXPECT_EQ(house.options.UserDataFolder, Standard);
  EXPECT_EQ(Setting(house), Standard);
  EXPECT_EQ(house.Told("box"), Texts({Previous, Moving, "Move Complete|Files and folders successfully moved."}));
  EXPECT_EQ(house.File(std::string(Standard) + "start.set"), "#alias {a} {b}\r\n");
  EXPECT_EQ(house.File(std::string(Standard) + "Sounds/ding.wav"), "wave");
  EXPECT_EQ(house.File(std::string(Standard) + "help/one/text.txt"), "help");
  EXPECT_FALSE(house.mem.files.FileExists(std::string(Standard) + "readme.txt"));
  house.mem.effects.Clear();
  EXPECT_TRUE(house.folder.Choose(""));  // the second start asks nothing
  EXPECT_EQ(house.Told("box"), Texts());
}

TEST(ChooseFolder, CancelEndsTheProgram) {
  FilesHouse house;
  Ship(house);
  house.prompter.Will(box::ResultNo);
  house.prompter.Will(box::ResultCancel);
  EXPECT_FALSE(house.folder.Choose(""));
  EXPECT_FALSE(house.mem.files.FileExists(std::string(Standard) + "start.set"));
}

TEST(ChooseFolder, AMissingStoredFolderIsAskedAbout) {
  FilesHouse house;
  Ship(house);
  SetSetting(house, "/gone");
  const std::string question =
      "Warning|The defined user data folder \"/gone/\" does not exist. Do you want to create the folder?";
  house.prompter.Will(box::ResultNo);
  EXPECT_FALSE(house.folder.Choose(""));
  EXPECT_EQ(house.Told("box"),
            Texts({question, "No Corvid User Data Folder Defined|Come back when you are ready to continue."}));
  EXPECT_EQ(Setting(house), "");
  SetSetting(house, "/gone/");
  house.prompter.Will(box::ResultYes);
  house.prompter.Will(box::ResultNo);
  house.prompter.Will(box::ResultOk);
  EXPECT_TRUE(house.folder.Choose(""));
  EXPECT_EQ(house.options.UserDataFolder, "/gone/");
  EXPECT_TRUE(house.mem.files.FileExists("/gone/start.set"));
}

TEST(ChooseFolder, AGivenFolderIsNotStored) {
  FilesHouse house;
  house.mem.files.Put("/given/start.set", "");
  EXPECT_TRUE(house.folder.Choose("/given"));
  EXPECT_EQ(house.options.UserDataFolder, "/given/");
  EXPECT_EQ(Setting(house), "");
  EXPECT_EQ(house.Told("box"), Texts());
}

TEST(ChooseFolder, AStoreThatFailsIsToldAndTheDefaultIsFound) {
  FilesHouse house;
  house.mem.files.Put(std::string(Standard) + "start.set", "");
  house.mem.settings.Fails = true;
  EXPECT_TRUE(house.folder.Choose(""));
  EXPECT_EQ(house.options.UserDataFolder, Standard);
  EXPECT_EQ(house.Told("unknownerror"), Texts(2, "DefaultFolder: the store is read-only"));
}

TEST(ChooseFolder, AFolderThatCannotBeMadeEndsTheProgram) {
  FilesHouse house;
  house.mem.files.Fail = [](const std::string& operation, const std::string&) {
    return operation == "folder" ? "read-only" : "";
  };
  EXPECT_FALSE(house.folder.Choose(""));
  ASSERT_EQ(house.Told("box").size(), 1u);
  EXPECT_TRUE(house.Told("box")[0].starts_with(
      "Error|Error creating data folder (/home/player/Documents/Corvid/). /home/player/Documents/Corvid"))
      << house.Told("box")[0];
}

TEST(ChooseFolder, AFailedCopyIsToldAndEndsTheProgram) {
  FilesHouse house;
  Ship(house);
  house.mem.files.Fail = [](const std::string& operation, const std::string&) {
    return operation == "copy" ? "No space left on device" : "";
  };
  house.prompter.Will(box::ResultNo);
  house.prompter.Will(box::ResultOk);
  EXPECT_FALSE(house.folder.Choose(""));
  EXPECT_EQ(
      house.Told("box").back(),
      "Error|Error while transferring initial setup scripts, sounds, and settings. /app/Sounds/ding.wav: No space "
      "left on device");
}

TEST(ChooseFolder, ACopyThatBrokeOffIsOfferedAgainByTheNextStart) {
  FilesHouse house;
  Ship(house);
  house.mem.files.Fail = [](const std::string& operation, const std::string& path) {
    return operation == "copy" && path.ends_with("ding.wav") ? "No space left on device" : "";
  };
  for (int start = 0; start < 2; ++start) {
    house.prompter.Will(box::ResultNo);
    house.prompter.Will(box::ResultOk);
    EXPECT_EQ(house.folder.Choose(""), start == 1);
    EXPECT_EQ(house.Told("box").size(), 3u);
    EXPECT_EQ(house.mem.files.FileExists(std::string(Standard) + "start.set"), start == 1);
    EXPECT_EQ(house.mem.files.FileExists(std::string(Standard) + "Sounds/ding.wav"), start == 1);
    house.mem.files.Fail = nullptr;
    house.mem.effects.Clear();
  }
}

// --- data of an older installation ---

void PutOld(FilesHouse& house, const std::string& folder) {
  house.mem.files.Put(folder + "Start.set", "old " + folder);
  house.mem.files.Put(folder + "CHARACTER.MUD", "secret");
  house.mem.files.Put(folder + "speech.ini", "voices");
  house.mem.files.Put(folder + "notes.txt", "not copied");
  house.mem.files.Put(folder + "aardwolf/bob-Char.set", "#Char bob\r\n");
}

TEST(OldData, IsTakenFromTheFolderThePlayerKnows) {
  FilesHouse house;
  PutOld(house, "/old/");
  house.mem.files.CreateFolder("/wrong");
  house.prompter.Will(box::ResultYes);
  house.prompter.Will(box::ResultYes);
  house.prompter.Texts = {"/wrong", "/old/Start.set"};
  house.prompter.Will(box::ResultOk);
  EXPECT_TRUE(house.folder.Choose(""));
  EXPECT_EQ(house.Told("drive"), Texts({"Select a drive", "Select a drive"}));
  const std::string browser =
      "Select Folder - use arrows to move through the folders, and press OK to select|*.*|/home/player/Documents/";
  EXPECT_EQ(house.Told("folder"), Texts({browser, browser}));
  EXPECT_EQ(house.Told("box"),
            Texts({Previous, Known,
                   "Invalid Corvid data folder|The datafiles must have a start.set file.  This is probably not a "
                   "Corvid data folder.",
                   Moving, Transferred}));
  const std::string standard(Standard);
  EXPECT_EQ(house.File(standard + "start.set"), "old /old/");
  EXPECT_EQ(house.File(standard + "Character.mud"), "secret");
  EXPECT_TRUE(house.mem.files.IsPrivate(standard + "CHARACTER.MUD"));
  EXPECT_TRUE(house.mem.files.IsPrivate(standard + "speech.ini"));
  EXPECT_EQ(house.File(standard + "aardwolf/bob-Char.set"), "#Char bob\r\n");
  EXPECT_FALSE(house.mem.files.FileExists(standard + "notes.txt"));
}

TEST(OldData, ABrowserThatIsLeftLeadsBackToTheQuestion) {
  FilesHouse house;
  house.prompter.Will(box::ResultYes);  // old data
  house.prompter.Will(box::ResultYes);  // known, but then no folder is chosen
  house.prompter.Will(box::ResultNo);   // not known after all
  house.prompter.Will(box::ResultCancel);
  EXPECT_FALSE(house.folder.Choose(""));
  EXPECT_EQ(house.Told("box"), Texts({Previous, Known, Known, Searching}));
}

TEST(OldData, IsSearchedForAndTheOnlyFindIsTaken) {
  FilesHouse house;
  PutOld(house, "/home/player/games/corvid/");
  house.prompter.Will(box::ResultYes);
  house.prompter.Will(box::ResultNo);
  house.prompter.Will(box::ResultOk);
  house.prompter.Will(box::ResultOk);
  EXPECT_TRUE(house.folder.Choose(""));
  EXPECT_EQ(house.Told("box"), Texts({Previous, Known, Searching, Moving, Transferred}));
  EXPECT_EQ(house.File(std::string(Standard) + "start.set"), "old /home/player/games/corvid/");
}

TEST(OldData, OneOfSeveralIsChosen) {
  FilesHouse house;
  PutOld(house, "/opt/corvid/");
  PutOld(house, "/home/player/a:b/");
  for (const int16 answer : {box::ResultYes, box::ResultNo, box::ResultOk, box::ResultOk}) house.prompter.Will(answer);
  house.prompter.Texts = {"/home/player/a:b/"};
  EXPECT_TRUE(house.folder.Choose(""));
  EXPECT_EQ(house.Told("pick"), Texts({"P:More than one possible folder was found. Select the folder and press "
                                       "Enter|/opt/corvid/|/home/player/a\\&1b/|Cancel"}));
  EXPECT_EQ(house.File(std::string(Standard) + "start.set"), "old /home/player/a:b/");
}

TEST(OldData, CancelInTheListEndsTheProgram) {
  for (const char* answer : {"Cancel", ""}) {
    FilesHouse house;
    PutOld(house, "/opt/corvid/");
    PutOld(house, "/home/player/a/");
    for (const int16 box : {box::ResultYes, box::ResultNo, box::ResultOk}) house.prompter.Will(box);
    house.prompter.Texts = {answer};
    EXPECT_FALSE(house.folder.Choose(""));
  }
}

TEST(OldData, NothingFoundEndsTheProgram) {
  FilesHouse house;
  Ship(house);
  for (const int16 answer : {box::ResultYes, box::ResultNo, box::ResultOk}) house.prompter.Will(answer);
  EXPECT_FALSE(house.folder.Choose(""));
  EXPECT_EQ(house.Told("box").back(), "Search|No previous source Folder found. ");
}

// --- trees ---

TEST(LocateFile, WalksDepthFirstWithHiddenFoldersLast) {
  FilesHouse house;
  for (const char* name :
       {"/r/start.set", "/r/.cache/start.set", "/r/b/START.SET", "/r/a/deep/start.set", "/r/c/x.set"})
    house.mem.files.Put(name, "");
  EXPECT_EQ(house.folder.LocateFile("start.set", "/r"), Texts({"/r/", "/r/a/deep/", "/r/b/", "/r/.cache/"}));
  EXPECT_EQ(house.folder.LocateFile("start.set", "/nowhere"), Texts());
}

TEST(LocateFile, IsBoundedInDepth) {
  FilesHouse house;
  std::string path = "/r/";
  for (int i = 0; i < UserFolder::MaxDepth; ++i) path += "d/";
  house.mem.files.Put(path + "start.set", "");
  house.mem.files.Put(path + "d/start.set", "");
  EXPECT_EQ(house.folder.LocateFile("start.set", "/r"), Texts({path}));
}

TEST(LocateFile, KeepsTheEventsGoing) {
  FilesHouse house;
  for (int i = 0; i < 450; ++i) house.mem.files.CreateFolder("/r/" + std::to_string(i));
  int pumps = 0;
  house.mem.loop.BeforePump = [&] { ++pumps; };
  house.folder.LocateFile("start.set", "/r");
  EXPECT_EQ(pumps, 2);
}

TEST(MoveDataFolder, NeverCopiesTheTargetIntoItself) {
  FilesHouse house;
  house.mem.files.Put("/home/start.set", "s");
  house.mem.files.Put("/home/x/a.txt", "a");
  house.mem.files.CreateFolder("/home/Corvid");
  std::string error;
  house.folder.MoveDataFolder("/home/", "/home/Corvid/", error);
  EXPECT_EQ(error, "");
  EXPECT_EQ(house.File("/home/Corvid/start.set"), "s");
  EXPECT_EQ(house.File("/home/Corvid/x/a.txt"), "a");
  EXPECT_FALSE(house.mem.files.FolderExists("/home/Corvid/Corvid"));
}

TEST(MoveDataFolder, CopiesFoldersOfAnyDepth) {
  FilesHouse house;
  std::string deep;
  for (int level = 0; level < 60; ++level) deep += "d/";
  house.mem.files.Put("/old/start.set", "s");
  house.mem.files.Put("/old/" + deep + "last.wav", "deep");
  house.mem.files.Put("/old/a/one.txt", "1");
  house.mem.files.Put("/old/a/b/two.txt", "2");
  house.mem.files.Put("/old/a/c/three.txt", "3");
  std::string error;
  house.folder.MoveDataFolder("/old/", "/new/", error);
  EXPECT_EQ(error, "");
  EXPECT_EQ(house.File("/new/" + deep + "last.wav"), "deep");
  EXPECT_EQ(house.File("/new/a/one.txt"), "1");
  EXPECT_EQ(house.File("/new/a/b/two.txt"), "2");
  EXPECT_EQ(house.File("/new/a/c/three.txt"), "3");
}

TEST(MoveDataFolder, AFolderThatCannotBeCopiedIsToldAndTheStartScriptStaysOut) {
  FilesHouse house;
  house.mem.files.Put("/old/start.set", "s");
  house.mem.files.Put("/old/a/b/two.txt", "2");
  house.mem.files.Fail = [](const std::string& operation, const std::string& path) {
    return operation == "folder" && path.ends_with("/b") ? "File name too long" : "";
  };
  std::string error;
  house.folder.MoveDataFolder("/old/", "/new/", error);
  EXPECT_NE(error.find("File name too long"), std::string::npos);
  EXPECT_FALSE(house.mem.files.FileExists("/new/start.set")) << "the copy is offered again";
  EXPECT_EQ(house.File("/old/a/b/two.txt"), "2");
}

TEST(SetFolders, MakesThemAndTellsTheScripts) {
  FilesHouse house;
  house.options.AppFolder = "/app/";
  house.folder.SetFolders();
  EXPECT_EQ(house.options.SoundsFolder, "/data/Sounds/");
  EXPECT_EQ(house.options.LogsFolder, "/data/logs/");
  EXPECT_EQ(house.options.TempFolder, "/tmp/");
  EXPECT_TRUE(house.mem.files.FolderExists("/data/logs"));
  EXPECT_EQ(house.script.SystemValues[sysvar::INSTALLFOLDER], "/app/");
  EXPECT_EQ(house.script.SystemValues[sysvar::HOMEFOLDER], "/data/");
  EXPECT_EQ(house.script.SystemValues[sysvar::SOUNDSFOLDER], "/data/Sounds/");
  EXPECT_EQ(house.script.SystemValues[sysvar::LOGSFOLDER], "/data/logs/");
  house.mem.places.Temp = "";
  house.folder.SetFolders();
  EXPECT_EQ(house.options.TempFolder, "/data/");
}

TEST(SetFolders, GoesOnWhenOneCannotBeMade) {
  FilesHouse house;
  house.mem.files.Fail = [](const std::string& operation, const std::string& path) {
    return operation == "folder" && path == "/data/logs" ? "read-only" : "";
  };
  house.folder.SetFolders();
  ASSERT_EQ(house.Told("box").size(), 1u);
  EXPECT_TRUE(house.Told("box")[0].starts_with("Error|Error creating data folder (/data/logs/). "));
  EXPECT_TRUE(house.mem.files.FolderExists("/data/Sounds"));
}

}  // namespace
}  // namespace corvid
