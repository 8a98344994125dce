// SPDX-License-Identifier: GPL-3.0-or-later
// The real disk, in a folder of the test's own.
#include "platform/qt/files.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>

#include "files_fixture.h"
#include "platform/qt/clock.h"
#include "platform/qt/places.h"
#include "platform/qt/settings.h"

namespace corvid {
namespace {

int ModeOf(const std::string& path) {
  struct stat facts {};
  return stat(path.c_str(), &facts) == 0 ? static_cast<int>(facts.st_mode & 0777U) : -1;
}

TEST_F(PosixFilesTest, WritesWholeAndReadsBackEveryByte) {
  std::string bytes;
  for (int i = 0; i < 256; ++i) bytes += static_cast<char>(i);
  files.WriteWhole(root + "a.set", bytes, Privacy::Shared);
  EXPECT_EQ(files.ReadWhole(root + "a.set"), bytes);
  files.WriteWhole(root + "a.set", "", Privacy::Shared);
  EXPECT_EQ(files.ReadWhole(root + "a.set"), "");
  EXPECT_EQ(files.FileNames(root), std::vector<std::string>{"a.set"});
}

TEST_F(PosixFilesTest, PrivateFilesAreTheOwnersAlone) {
  files.WriteWhole(root + "Character.mud", "x", Privacy::Private);
  EXPECT_EQ(ModeOf(root + "Character.mud"), 0600);
  files.OpenAppend(root + "log.txt", Privacy::Private)->Write("x");
  EXPECT_EQ(ModeOf(root + "log.txt"), 0600);
}

TEST_F(PosixFilesTest, AReplacedFileKeepsItsMode) {
  files.WriteWhole(root + "a", "1", Privacy::Shared);
  chmod((root + "a").c_str(), 0640);
  files.WriteWhole(root + "a", "2", Privacy::Shared);
  EXPECT_EQ(ModeOf(root + "a"), 0640);
  chmod((root + "a").c_str(), 0644);
  files.WriteWhole(root + "a", "3", Privacy::Private);
  EXPECT_EQ(ModeOf(root + "a"), 0600);
}

TEST_F(PosixFilesTest, AFailedWriteLeavesTheOldFile) {
  files.WriteWhole(root + "a", "old", Privacy::Shared);
  EXPECT_EQ(KindOf([&] { files.WriteWhole(root + "none/a", "x", Privacy::Shared); }), FaultKind::PathNotFound);
  const std::string full = "/dev/full";
  if (fs::exists(full)) {
    EXPECT_EQ(KindOf([&] {
                auto log = files.OpenAppend(full, Privacy::Shared);
                log->Write("x");
                log->Flush();
              }),
              FaultKind::DiskFull);
  }
  EXPECT_EQ(files.ReadWhole(root + "a"), "old");
}

TEST_F(PosixFilesTest, ACopyOfAPrivateFileIsPrivate) {
  files.WriteWhole(root + "Character.mud", "x", Privacy::Private);
  files.Copy(root + "Character.mud", root + "other");
  EXPECT_EQ(ModeOf(root + "other"), 0600);
  files.WriteWhole(root + "a.set", "x", Privacy::Shared);
  chmod((root + "a.set").c_str(), 0644);
  files.Copy(root + "a.set", root + "b.set");
  EXPECT_EQ(ModeOf(root + "b.set") & 0600, 0600);
  EXPECT_EQ(files.ReadWhole(root + "b.set"), "x");
}

TEST_F(PosixFilesTest, WhatADeadProcessLeftIsTakenAway) {
  const pid_t dead = fork();
  ASSERT_GE(dead, 0);
  if (dead == 0) _exit(0);
  waitpid(dead, nullptr, 0);
  const std::string left = root + "Character.mud.new-" + std::to_string(dead);
  const std::string alive = root + "Character.mud.new-" + std::to_string(getppid());
  for (const std::string& name :
       {left, alive, root + "Character.mud.new-one", root + "other.new-" + std::to_string(dead)})
    std::ofstream(name) << "secret";
  files.WriteWhole(root + "Character.mud", "x", Privacy::Private);
  EXPECT_FALSE(fs::exists(left));
  EXPECT_TRUE(fs::exists(alive)) << "another Corvid writes it just now";
  EXPECT_TRUE(fs::exists(root + "Character.mud.new-one")) << "a file of the player's";
  EXPECT_TRUE(fs::exists(root + "other.new-" + std::to_string(dead)));
}

// A process that does nothing but save is killed at any moment, some hundred times.
TEST_F(PosixFilesTest, AProcessKilledWhileItSavesLeavesTheOldOrTheNewFileWhole) {
  const std::string path = root + "Character.mud";
  const std::string one(300000, '1');
  const std::string two(200000, '2');
  files.WriteWhole(path, one, Privacy::Private);
  unsigned seed = 20260115;
  int ones = 0;
  for (int round = 0; round < 200; ++round) {
    const pid_t writer = fork();
    ASSERT_GE(writer, 0);
    if (writer == 0) {
      for (int i = 0;; ++i) files.WriteWhole(path, i % 2 == 0 ? two : one, Privacy::Private);
    }
    seed = seed * 1664525U + 1013904223U;
    usleep(seed >> 20U);  // up to 4 milliseconds
    ASSERT_EQ(kill(writer, SIGKILL), 0);
    ASSERT_EQ(waitpid(writer, nullptr, 0), writer);
    const std::string found = files.ReadWhole(path);
    ASSERT_TRUE(found == one || found == two) << found.size() << " bytes in round " << round;
    ASSERT_EQ(ModeOf(path), 0600);
    if (found == one) ++ones;
    for (const std::string& name : files.FileNames(root)) EXPECT_EQ(ModeOf(root + name), 0600) << name;
  }
  EXPECT_GT(ones, 0);
  EXPECT_LT(ones, 200);
  files.WriteWhole(path, one, Privacy::Private);
  EXPECT_EQ(files.FileNames(root), std::vector<std::string>{"Character.mud"}) << "no leftovers";
}

TEST_F(PosixFilesTest, ALinkStaysALink) {
  files.WriteWhole(root + "real", "1", Privacy::Shared);
  fs::create_symlink("real", root + "link");
  files.WriteWhole(root + "link", "2", Privacy::Shared);
  EXPECT_TRUE(fs::is_symlink(root + "link"));
  EXPECT_EQ(files.ReadWhole(root + "real"), "2");
}

TEST_F(PosixFilesTest, NamesAreFoundInAnyCaseExactFirstPartByPart) {
  files.CreateFolder(root + "Scripts/Deep");
  files.WriteWhole(root + "Scripts/Deep/Start.SET", "upper", Privacy::Shared);
  EXPECT_EQ(files.ReadWhole(root + "SCRIPTS\\deep\\start.set"), "upper");
  files.WriteWhole(root + "scripts/deep/START.set", "changed", Privacy::Shared);
  EXPECT_EQ(files.FileNames(root + "Scripts/Deep/"), std::vector<std::string>{"Start.SET"});
  std::ofstream(root + "Scripts/Deep/start.set") << "exact";
  EXPECT_EQ(files.ReadWhole(root + "scripts/DEEP/start.set"), "exact");
  EXPECT_EQ(files.Absolute(root + "scripts\\deep"), root + "Scripts/Deep");
  EXPECT_EQ(files.Absolute(root + "scripts/New.set"), root + "Scripts/New.set");
  EXPECT_EQ(files.Absolute(root + "Scripts/x/../Deep/"), root + "Scripts/Deep/");
  EXPECT_EQ(files.Absolute(""), "");
}

TEST_F(PosixFilesTest, FoldersAreMadeListedAndToldApart) {
  files.CreateFolder(root + "b\\c");
  files.CreateFolder(root + "b/c/");
  files.CreateFolder(root + "a");
  files.WriteWhole(root + "z", "", Privacy::Shared);
  fs::create_directory_symlink(root + "a", root + "link");
  EXPECT_EQ(files.FolderNames(root), (std::vector<std::string>{"a", "b"}));
  EXPECT_EQ(files.FileNames(root), (std::vector<std::string>{"z"}));
  EXPECT_TRUE(files.FolderExists(root + "B/C"));
  EXPECT_FALSE(files.FileExists(root + "b"));
  EXPECT_TRUE(files.FileExists(root + "Z"));
  EXPECT_FALSE(files.FileExists(""));
  EXPECT_EQ(KindOf([&] { files.FileNames(root + "nothing"); }), FaultKind::PathNotFound);
}

TEST_F(PosixFilesTest, MissingFilesAndFoldersInTheirPlaceAreFaults) {
  EXPECT_EQ(KindOf([&] { files.ReadWhole(root + "none"); }), FaultKind::FileNotFound);
  EXPECT_EQ(KindOf([&] { files.Remove(root + "none"); }), FaultKind::FileNotFound);
  EXPECT_EQ(KindOf([&] { files.ReadWhole(root); }), FaultKind::Permission);
  EXPECT_EQ(KindOf([&] { files.WriteWhole(root, "x", Privacy::Shared); }), FaultKind::Permission);
  EXPECT_EQ(KindOf([&] { files.ReadWhole(std::string("a\0b", 3)); }), FaultKind::BadFile);
}

TEST_F(PosixFilesTest, ACopyIsWholeOrNotThere) {
  std::string large(200000, 'x');
  for (std::size_t at = 0; at < large.size(); at += 7) large[at] = static_cast<char>(at);
  files.WriteWhole(root + "large", large, Privacy::Shared);
  files.WriteWhole(root + "old", "kept", Privacy::Shared);
  files.Copy(root + "large", root + "copy");
  EXPECT_EQ(files.ReadWhole(root + "copy"), large) << "it takes several pieces";
  files.Copy(root + "copy", root + "copy");
  EXPECT_EQ(files.ReadWhole(root + "copy"), large) << "onto itself";
  ASSERT_EQ(mkfifo((root + "pipe").c_str(), 0600), 0);
  EXPECT_EQ(KindOf([&] { files.Copy(root + "pipe", root + "old"); }), FaultKind::BadFile);
  EXPECT_EQ(KindOf([&] { files.Copy(root + "none", root + "old"); }), FaultKind::FileNotFound);
  EXPECT_EQ(KindOf([&] { files.Copy(root + "old", root + "none/old"); }), FaultKind::PathNotFound);
  EXPECT_EQ(files.ReadWhole(root + "old"), "kept");
  EXPECT_EQ(files.FileNames(root), (std::vector<std::string>{"copy", "large", "old"}));
}

TEST_F(PosixFilesTest, CopyAndRemove) {
  files.WriteWhole(root + "a", "1", Privacy::Shared);
  files.Copy(root + "A", root + "b");
  files.Copy(root + "a", root + "b");
  EXPECT_EQ(files.ReadWhole(root + "b"), "1");
  files.Remove(root + "A");
  EXPECT_FALSE(files.FileExists(root + "a"));
}

TEST_F(PosixFilesTest, ALogGrowsAtItsEnd) {
  { files.OpenAppend(root + "log", Privacy::Private)->Write("one\r\n"); }
  const auto log = files.OpenAppend(root + "log", Privacy::Private);
  log->Write("two\r\n");
  EXPECT_EQ(files.ReadWhole(root + "log"), "one\r\n");
  log->Flush();
  EXPECT_EQ(files.ReadWhole(root + "log"), "one\r\ntwo\r\n");
}

TEST_F(PosixFilesTest, AFileIsReadPieceByPieceAndSeesWhatIsAdded) {
  files.WriteWhole(root + "Data.txt", "abcdef", Privacy::Shared);
  const auto file = files.OpenRead(root + "data.TXT");
  EXPECT_EQ(file->Read(4), "abcd");
  EXPECT_EQ(file->Read(4), "ef");
  EXPECT_EQ(file->Read(4), "");
  const auto more = files.OpenAppend(root + "data.txt", Privacy::Shared);
  more->Write("gh");
  more->Flush();
  EXPECT_EQ(file->Read(4), "gh");
  EXPECT_EQ(file->Read(4), "");
}

TEST_F(PosixFilesTest, PlacesAreWrittenAtOnceAndGapsAreZeros) {
  const auto file = files.OpenRandom(root + "Records.dat");
  EXPECT_EQ(file->Size(), 0);
  EXPECT_EQ(file->ReadAt(0, 5), "");
  file->WriteAt(4, "abc");
  EXPECT_EQ(files.ReadWhole(root + "records.dat"), std::string("\0\0\0\0abc", 7));
  EXPECT_EQ(file->Size(), 7);
  file->WriteAt(5, "X");
  EXPECT_EQ(file->ReadAt(4, 10), "aXc");
  EXPECT_EQ(file->ReadAt(4, 2), "aX");
  EXPECT_EQ(file->ReadAt(7, 2), "");
  EXPECT_EQ(file->ReadAt(INT64_MAX / 2, 2), "");
  EXPECT_EQ(files.OpenRandom(root + "RECORDS.DAT")->Size(), 7) << "the file that is there";
}

TEST_F(PosixFilesTest, OpenFilesAreOrdinaryFiles) {
  files.CreateFolder(root + "folder");
  EXPECT_EQ(KindOf([&] { files.OpenRead(root + "none"); }), FaultKind::FileNotFound);
  EXPECT_EQ(KindOf([&] { files.OpenRead(root + "folder"); }), FaultKind::Permission);
  EXPECT_EQ(KindOf([&] { files.OpenRead(root + ".."); }), FaultKind::Permission);
  EXPECT_EQ(KindOf([&] { files.OpenRandom(root + "folder"); }), FaultKind::Permission);
  EXPECT_EQ(KindOf([&] { files.OpenRandom(root + "none/file"); }), FaultKind::PathNotFound);
  EXPECT_EQ(KindOf([&] { files.OpenRead("/dev/zero"); }), FaultKind::BadFile);
  EXPECT_EQ(KindOf([&] { files.OpenRandom("/dev/null"); }), FaultKind::BadFile);
  // A pipe without another end would hold the program for ever.
  ASSERT_EQ(mkfifo((root + "pipe").c_str(), 0600), 0);
  EXPECT_EQ(KindOf([&] { files.OpenRead(root + "pipe"); }), FaultKind::BadFile);
  EXPECT_EQ(KindOf([&] { files.OpenRandom(root + "pipe"); }), FaultKind::BadFile);
  EXPECT_EQ(KindOf([&] { files.OpenAppend(root + "pipe", Privacy::Shared); }), FaultKind::FileIo);
}

TEST_F(PosixFilesTest, AFileThatMayOnlyBeReadIsReadAllTheSame) {
  files.WriteWhole(root + "a", "abc", Privacy::Shared);
  chmod((root + "a").c_str(), 0444);
  const auto file = files.OpenRandom(root + "a");
  EXPECT_EQ(file->ReadAt(0, 9), "abc");
  if (geteuid() != 0) {
    EXPECT_EQ(KindOf([&] { file->WriteAt(0, "x"); }), FaultKind::Permission);
  }
}

// A limit on the size of files refuses in the middle of a write, as a full disk does.
class SizeLimit {
 public:
  explicit SizeLimit(rlim_t size) {
    getrlimit(RLIMIT_FSIZE, &before_);
    handler_ = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{size, before_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  SizeLimit(const SizeLimit&) = delete;
  SizeLimit& operator=(const SizeLimit&) = delete;
  ~SizeLimit() {
    setrlimit(RLIMIT_FSIZE, &before_);
    std::signal(SIGXFSZ, handler_);
  }

 private:
  rlimit before_{};
  void (*handler_)(int) = nullptr;
};

TEST_F(PosixFilesTest, ADiskThatIsFullInTheMiddleKeepsNoHalfWrite) {
  const auto grown = files.OpenAppend(root + "log", Privacy::Shared);
  grown->Write("whole line\r\n");
  grown->Flush();
  const auto places = files.OpenRandom(root + "records");
  places->WriteAt(0, "first record");
  {
    const SizeLimit limit(20);
    grown->Write("this line does not fit");
    EXPECT_EQ(KindOf([&] { grown->Flush(); }), FaultKind::FileIo);
    EXPECT_EQ(KindOf([&] { places->WriteAt(12, "this does not fit"); }), FaultKind::FileIo);
  }
  EXPECT_EQ(files.ReadWhole(root + "log"), "whole line\r\n");
  EXPECT_EQ(files.ReadWhole(root + "records"), "first record");
  grown->Write("next\r\n");
  grown->Flush();
  EXPECT_EQ(files.ReadWhole(root + "log"), "whole line\r\nnext\r\n");
}

TEST_F(PosixFilesTest, SettingsKeepAwkwardNamesAndValues) {
  FileSettings settings(files, root + "config/settings");
  EXPECT_EQ(settings.Get("CORVID", "Filespec", "DefaultFolder"), "");
  settings.Set("CORVID", "Filespec", "DefaultFolder", "/home/a b=c%41/\xc3\xa9");
  settings.Set("A/B", "C=D", "E\nF", "line\r\nbreak%");
  settings.Set("CORVID", "filespec", "defaultfolder", "/second/");
  EXPECT_EQ(settings.Get("CORVID", "Filespec", "DefaultFolder"), "/second/");
  EXPECT_EQ(settings.Get("A/B", "C=D", "E\nF"), "line\r\nbreak%");
  EXPECT_EQ(ModeOf(root + "config/settings"), 0600);
  settings.Delete("A/B", "C=D", "E\nF");
  EXPECT_EQ(settings.Get("A/B", "C=D", "E\nF"), "");
  EXPECT_EQ(files.ReadWhole(root + "config/settings"), "CORVID/filespec/defaultfolder=/second/\n");
}

TEST_F(PosixFilesTest, TheProgramFindsItsData) {
  files.CreateFolder(root + "tree/share");
  files.CreateFolder(root + "tree/build/debug/src/app");
  files.WriteWhole(root + "tree/CMakePresets.json", "{}", Privacy::Shared);
  files.WriteWhole(root + "tree/build/debug/CMakeCache.txt", "", Privacy::Shared);
  EXPECT_EQ(QtPlaces(root + "tree/build/debug/src/app/corvid").AppFolder(), root + "tree/share/");
  EXPECT_EQ(QtPlaces("/opt/corvid/bin/corvid").AppFolder(), "/opt/corvid/share/corvid/");
  // Installed below a build folder, the program still takes what was installed with it.
  files.CreateFolder(root + "tree/build/debug/there/share/corvid");
  EXPECT_EQ(QtPlaces(root + "tree/build/debug/there/bin/corvid").AppFolder(),
            root + "tree/build/debug/there/share/corvid/");
}

TEST(SystemClockTest, AgreesWithItself) {
  const SystemClock clock;
  const DateTime now = clock.Now();
  EXPECT_GE(now.Year, 2024);
  EXPECT_TRUE(now.Month >= 1 && now.Month <= 12);
  EXPECT_GE(clock.SecondsSinceMidnight(), 0.0);
  EXPECT_LT(clock.SecondsSinceMidnight(), 86401.0);
  const auto before = clock.MonotonicMilliseconds();
  EXPECT_LE(before, clock.MonotonicMilliseconds());
}

}  // namespace
}  // namespace corvid
