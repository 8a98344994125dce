// SPDX-License-Identifier: GPL-3.0-or-later
// Lists of folders that are kept for a moment.
#include <fcntl.h>
#include <sys/stat.h>

#include <fstream>

#include "files_fixture.h"

namespace corvid {
namespace {

class FolderListsTest : public PosixFilesTest {
 protected:
  FolderListsTest() {
    fs::create_directory(root + "Sounds");
    for (const char* name : {"Hit.wav", "Door1.wav", "Door2.wav"}) Make(name);
    now = Clock();
    SetFolderTime(now.tv_sec - 10);
  }
  static timespec Clock() {
    timespec time{};
    clock_gettime(CLOCK_REALTIME, &time);
    return time;
  }
  void Make(const std::string& name) { std::ofstream(root + "Sounds/" + name) << "x"; }
  void SetFolderTime(std::time_t seconds) {
    const timespec times[] = {{seconds, 0}, {seconds, 0}};
    utimensat(AT_FDCWD, (root + "Sounds").c_str(), times, 0);
  }
  bool Exists(const std::string& name) { return disk.FileExists(root + "Sounds/" + name); }
  std::size_t Names() { return disk.FileNames(root + "Sounds").size(); }

  timespec now{};
  PosixFiles disk{FolderLists([this] { return now; })};
};

TEST_F(FolderListsTest, AFolderIsListedOnceForManyQuestions) {
  for (int i = 0; i < 1000; ++i) {
    EXPECT_TRUE(Exists("HIT.WAV"));
    EXPECT_FALSE(Exists("nosuch.wav"));
    EXPECT_EQ(disk.Absolute(root + "Sounds/DOOR1.wav"), root + "Sounds/Door1.wav");
    EXPECT_EQ(Names(), 3U);
  }
  EXPECT_EQ(disk.Listings(), 1);
}

TEST_F(FolderListsTest, ANewFileIsFoundAndOneThatIsGoneIsNot) {
  EXPECT_EQ(Names(), 3U);
  Make("New.wav");
  EXPECT_TRUE(Exists("NEW.wav"));
  EXPECT_EQ(Names(), 4U);
  fs::remove(root + "Sounds/Hit.wav");
  EXPECT_FALSE(Exists("HIT.wav"));
  fs::rename(root + "Sounds/Door1.wav", root + "Sounds/Gate.wav");
  EXPECT_TRUE(Exists("GATE.wav"));
  EXPECT_FALSE(Exists("DOOR1.wav"));
  EXPECT_EQ(Names(), 3U);
}

// The folder's time may not tell a change from one shortly before it.
TEST_F(FolderListsTest, AListOfAFolderThatHasJustChangedIsNotTrusted) {
  SetFolderTime(now.tv_sec - 1);
  EXPECT_FALSE(Exists("NEW.wav"));
  Make("New.wav");
  SetFolderTime(now.tv_sec - 1);
  EXPECT_TRUE(Exists("NEW.wav"));
}

TEST_F(FolderListsTest, AListDoesNotGrowOld) {
  EXPECT_FALSE(Exists("NEW.wav"));
  Make("New.wav");
  SetFolderTime(now.tv_sec - 10);  // as on a disk that does not count
  EXPECT_FALSE(Exists("NEW.wav"));
  now.tv_sec += 6;
  EXPECT_TRUE(Exists("NEW.wav"));
  now.tv_sec -= 3600;  // the clock is set back
  Make("Late.wav");
  SetFolderTime(now.tv_sec - 10);
  EXPECT_TRUE(Exists("LATE.wav"));
}

TEST_F(FolderListsTest, AnotherFolderUnderTheNameIsListedAnew) {
  EXPECT_EQ(Names(), 3U);
  fs::rename(root + "Sounds", root + "Old");
  fs::create_directory(root + "Sounds");
  Make("only.wav");
  SetFolderTime(now.tv_sec - 10);
  EXPECT_EQ(Names(), 1U);
  fs::remove_all(root + "Sounds");
  EXPECT_FALSE(Exists("ONLY.wav"));
  EXPECT_EQ(KindOf([&] { Names(); }), FaultKind::PathNotFound);
}

TEST_F(FolderListsTest, WhereALinkLeadsIsLookedAtEachTime) {
  fs::create_symlink(root + "elsewhere.wav", root + "Sounds/link.wav");
  SetFolderTime(now.tv_sec - 10);
  EXPECT_EQ(Names(), 3U);
  files.WriteWhole(root + "elsewhere.wav", "x", Privacy::Shared);
  EXPECT_EQ(Names(), 4U);
}

}  // namespace
}  // namespace corvid
