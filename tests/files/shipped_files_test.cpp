// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/shipped_files.h"

#include <gtest/gtest.h>

#include "platform/memory/memory_files.h"

namespace corvid {
namespace {

class ShippedFilesTest : public testing::Test {
 protected:
  ShippedFilesTest() {
    files.Put("/app/start.set", "; one\r\n");
    files.Put("/app/corvidhelp.txt", "help");
    files.Put("/app/Sounds/ding.wav", "RIFF1");
    files.Put("/app/examples/deep/fight.set", "#VAR a 1\r\n");
    files.CreateFolder("/data");
  }
  void Refresh() { RefreshShippedFiles(files, "/app/", "/data"); }
  std::string Own(const std::string& name) {
    return files.FileExists("/data/" + name) ? files.ReadWhole("/data/" + name) : "(none)";
  }
  MemoryFiles files;
};

TEST_F(ShippedFilesTest, FillAnEmptyFolder) {
  Refresh();
  EXPECT_EQ(Own("start.set"), "; one\r\n");
  EXPECT_EQ(Own("Sounds/ding.wav"), "RIFF1");
  EXPECT_EQ(Own("examples/deep/fight.set"), "#VAR a 1\r\n");
  EXPECT_EQ(Own("corvidhelp.txt"), "(none)") << "of the folder itself only scripts are the player's";
}

TEST_F(ShippedFilesTest, AreReplacedWhileThePlayerHasNotChangedThem) {
  Refresh();
  files.Put("/app/start.set", "; two\r\n");
  files.Put("/app/Sounds/ding.wav", "RIFF2");
  files.Put("/app/Sounds/new.wav", "RIFFN");
  Refresh();
  EXPECT_EQ(Own("start.set"), "; two\r\n");
  EXPECT_EQ(Own("Sounds/ding.wav"), "RIFF2");
  EXPECT_EQ(Own("Sounds/new.wav"), "RIFFN");
  files.Put("/app/start.set", "; three\r\n");
  Refresh();
  EXPECT_EQ(Own("start.set"), "; three\r\n") << "and the next time as well";
}

TEST_F(ShippedFilesTest, StayWhereThePlayerHasChangedThem) {
  Refresh();
  files.Put("/data/start.set", "; mine\r\n");
  files.Put("/app/start.set", "; two\r\n");
  files.Put("/app/examples/deep/fight.set", "#VAR a 2\r\n");
  Refresh();
  Refresh();
  EXPECT_EQ(Own("start.set"), "; mine\r\n");
  EXPECT_EQ(Own("examples/deep/fight.set"), "#VAR a 2\r\n") << "the others go on being kept new";
  files.Put("/data/start.set", "; one\r\n");
  Refresh();
  EXPECT_EQ(Own("start.set"), "; two\r\n") << "changed back, it is the shipped one again";
}

TEST_F(ShippedFilesTest, StayWhereNothingIsKnownOfThem) {
  files.Put("/data/start.set", "; of an older version, or of the player\r\n");
  files.Put("/data/Sounds/ding.wav", "RIFF1");
  Refresh();
  files.Put("/app/start.set", "; two\r\n");
  files.Put("/app/Sounds/ding.wav", "RIFF2");
  Refresh();
  EXPECT_EQ(Own("start.set"), "; of an older version, or of the player\r\n");
  EXPECT_EQ(Own("Sounds/ding.wav"), "RIFF2") << "it was as shipped when it was met first";
}

TEST_F(ShippedFilesTest, ComeBackWhenTheyAreGone) {
  Refresh();
  files.Remove("/data/start.set");
  Refresh();
  EXPECT_EQ(Own("start.set"), "; one\r\n");
}

TEST_F(ShippedFilesTest, OneThatFailsDoesNotKeepTheOthers) {
  files.Fail = [](const std::string& operation, const std::string& path) {
    return std::string(operation == "write" && path.ends_with("ding.wav") ? "no room" : "");
  };
  EXPECT_THROW(Refresh(), Fault);
  EXPECT_EQ(Own("start.set"), "; one\r\n");
  EXPECT_EQ(Own("examples/deep/fight.set"), "#VAR a 1\r\n");
  files.Fail = nullptr;
  Refresh();
  EXPECT_EQ(Own("Sounds/ding.wav"), "RIFF1");
  // A damaged record is no record.
  files.Put("/data/shipped.txt", std::string("\0\xff nonsense\n\r\r\n \n7", 16));
  files.Put("/app/start.set", "; two\r\n");
  Refresh();
  EXPECT_EQ(Own("start.set"), "; one\r\n");
}

TEST_F(ShippedFilesTest, NothingIsWrittenWhenNothingHasChanged) {
  Refresh();
  files.Fail = [](const std::string& operation, const std::string&) {
    return std::string(operation == "write" ? "nothing may be written" : "");
  };
  EXPECT_NO_THROW(Refresh());
}

}  // namespace
}  // namespace corvid
