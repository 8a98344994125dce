// SPDX-License-Identifier: GPL-3.0-or-later
// What every disk must do alike: the real one, and the one in memory that the other tests trust.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "core/fault.h"
#include "platform/memory/memory_files.h"
#include "platform/qt/files.h"

namespace corvid {
namespace {

struct RealDisk {
  RealDisk() {
    std::string pattern = (std::filesystem::temp_directory_path() / "corvid-disk-XXXXXX").string();
    Root = std::string(mkdtemp(pattern.data())) + "/";
  }
  RealDisk(const RealDisk&) = delete;
  RealDisk& operator=(const RealDisk&) = delete;
  ~RealDisk() { std::filesystem::remove_all(Root); }
  PosixFiles Disk;
  std::string Root;
};

struct DiskInMemory {
  DiskInMemory() { Disk.CreateFolder("/player"); }
  MemoryFiles Disk;
  std::string Root = "/player/";
};

template <typename Place>
class FilesContract : public testing::Test {
 protected:
  template <typename Action>
  FaultKind KindOf(Action action) {
    try {
      action();
    } catch (const Fault& fault) {
      return fault.Kind;
    }
    ADD_FAILURE() << "no fault";
    return FaultKind::Internal;
  }
  void Put(const std::string& name, const std::string& bytes) { files.WriteWhole(root + name, bytes, Privacy::Shared); }
  std::string Get(const std::string& name) { return files.ReadWhole(root + name); }

  Place place;
  Files& files = place.Disk;
  std::string root = place.Root;
};

using Disks = testing::Types<RealDisk, DiskInMemory>;
TYPED_TEST_SUITE(FilesContract, Disks);

TYPED_TEST(FilesContract, NamesAreFoundInAnyCaseAndBySeparatorsOfBothKinds) {
  this->files.CreateFolder(this->root + "Sub");
  this->Put("Sub/Data.TXT", "x");
  EXPECT_TRUE(this->files.FileExists(this->root + "sub\\data.txt"));
  EXPECT_FALSE(this->files.FileExists(this->root + "sub"));
  EXPECT_TRUE(this->files.FolderExists(this->root + "SUB/"));
  EXPECT_EQ(this->files.Absolute(this->root + "sub/./new.txt"), this->root + "Sub/new.txt");
  EXPECT_EQ(this->files.Absolute(this->root + "sub/../sub/DATA.txt"), this->root + "Sub/Data.TXT");
  this->Put("SUB/DATA.txt", "y");
  EXPECT_EQ(this->files.FileNames(this->root + "Sub"), std::vector<std::string>{"Data.TXT"});
}

TYPED_TEST(FilesContract, AReaderSeesWhatIsAdded) {
  this->Put("a", "abcdef");
  const auto reader = this->files.OpenRead(this->root + "A");
  EXPECT_EQ(reader->Read(4), "abcd");
  EXPECT_EQ(reader->Read(4), "ef");
  EXPECT_EQ(reader->Read(4), "");
  const auto end = this->files.OpenAppend(this->root + "a", Privacy::Shared);
  end->Write("gh");
  end->Flush();
  EXPECT_EQ(reader->Read(4), "gh");
}

TYPED_TEST(FilesContract, AFileGrowsAtItsEnd) {
  {
    const auto end = this->files.OpenAppend(this->root + "New", Privacy::Shared);
    EXPECT_EQ(this->Get("new"), "") << "it is made when it is opened";
    end->Write("one");
    end->Write(std::string("\0\r\n", 3));
  }
  EXPECT_EQ(this->Get("new"), std::string("one\0\r\n", 6));
  this->files.OpenAppend(this->root + "new", Privacy::Shared)->Write("two");
  EXPECT_EQ(this->Get("New"), std::string("one\0\r\ntwo", 9));
}

TYPED_TEST(FilesContract, PlacesAreWrittenAtOnceAndGapsAreZeros) {
  const auto places = this->files.OpenRandom(this->root + "r");
  EXPECT_EQ(places->Size(), 0);
  places->WriteAt(3, "abc");
  EXPECT_EQ(this->Get("r"), std::string("\0\0\0abc", 6));
  places->WriteAt(4, "XYZ");
  EXPECT_EQ(places->ReadAt(3, 99), "aXYZ");
  EXPECT_EQ(places->ReadAt(3, 2), "aX");
  EXPECT_EQ(places->ReadAt(7, 2), "");
  EXPECT_EQ(places->ReadAt(1000000, 2), "");
  EXPECT_EQ(places->Size(), 7);
}

TYPED_TEST(FilesContract, WhatIsNotThereOrIsAFolderIsAFault) {
  Files& disk = this->files;
  disk.CreateFolder(this->root + "folder");
  const std::string none = this->root + "none", folder = this->root + "folder", deep = this->root + "none/file";
  EXPECT_EQ(this->KindOf([&] { disk.ReadWhole(none); }), FaultKind::FileNotFound);
  EXPECT_EQ(this->KindOf([&] { disk.OpenRead(none); }), FaultKind::FileNotFound);
  EXPECT_EQ(this->KindOf([&] { disk.Remove(none); }), FaultKind::FileNotFound);
  EXPECT_EQ(this->KindOf([&] { disk.OpenRead(folder); }), FaultKind::Permission);
  EXPECT_EQ(this->KindOf([&] { disk.OpenRandom(folder); }), FaultKind::Permission);
  EXPECT_EQ(this->KindOf([&] { disk.OpenRandom(deep); }), FaultKind::PathNotFound);
  EXPECT_EQ(this->KindOf([&] { disk.OpenAppend(deep, Privacy::Shared); }), FaultKind::PathNotFound);
  EXPECT_EQ(this->KindOf([&] { disk.WriteWhole(deep, "x", Privacy::Shared); }), FaultKind::PathNotFound);
  EXPECT_EQ(this->KindOf([&] { disk.OpenAppend(folder, Privacy::Shared); }), FaultKind::Permission);
  EXPECT_THROW(disk.Remove(folder), Fault);
}

TYPED_TEST(FilesContract, AFileThatIsRemovedWhileItIsOpenHarmsNobody) {
  this->Put("a", "abc");
  const auto reader = this->files.OpenRead(this->root + "a");
  const auto end = this->files.OpenAppend(this->root + "a", Privacy::Shared);
  const auto places = this->files.OpenRandom(this->root + "a");
  this->files.Remove(this->root + "A");
  EXPECT_FALSE(this->files.FileExists(this->root + "a"));
  EXPECT_NO_THROW(reader->Read(9));
  EXPECT_NO_THROW(places->ReadAt(0, 9));
  EXPECT_NO_THROW(end->Write("x"));
  EXPECT_NO_THROW(end->Flush());
  EXPECT_NO_THROW(places->WriteAt(0, "x"));
}

}  // namespace
}  // namespace corvid
