// SPDX-License-Identifier: GPL-3.0-or-later
// Where the files of a player lie, as the surroundings of the program tell it.
#include "platform/qt/places.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>

namespace corvid {
namespace {

class PlacesTest : public testing::Test {
 protected:
  PlacesTest() {
    for (const char* name : {"HOME", "TMPDIR", "XDG_CONFIG_HOME", "XDG_STATE_HOME"}) {
      const char* value = std::getenv(name);
      if (value != nullptr) before_[name] = value;
      unsetenv(name);
    }
  }
  ~PlacesTest() override {
    for (const char* name : {"HOME", "TMPDIR", "XDG_CONFIG_HOME", "XDG_STATE_HOME"}) {
      const auto value = before_.find(name);
      if (value == before_.end()) {
        unsetenv(name);
      } else {
        setenv(name, value->second.c_str(), 1);
      }
    }
  }
  static void Set(const char* name, const std::string& value) { setenv(name, value.c_str(), 1); }

  const QtPlaces places{"/opt/corvid/bin/corvid"};

 private:
  std::map<std::string, std::string> before_;
};

TEST_F(PlacesTest, AreBelowTheHomeFolderWhereNothingElseIsSet) {
  Set("HOME", "/home/bob");
  EXPECT_EQ(places.HomeFolder(), "/home/bob/");
  EXPECT_EQ(places.DocumentsFolder(), "/home/bob/Documents/");
  EXPECT_EQ(SettingsFile(places), "/home/bob/.config/corvid/settings");
  EXPECT_EQ(StateFolder(places), "/home/bob/.local/state/corvid/");
  EXPECT_EQ(places.TempFolder(), "") << "none is named";
}

TEST_F(PlacesTest, FollowTheVariables) {
  Set("HOME", "/home/bob/");
  Set("TMPDIR", "/quick");
  Set("XDG_CONFIG_HOME", "/settings");
  Set("XDG_STATE_HOME", "/state/");
  EXPECT_EQ(places.HomeFolder(), "/home/bob/");
  EXPECT_EQ(places.TempFolder(), "/quick/");
  EXPECT_EQ(SettingsFile(places), "/settings/corvid/settings");
  EXPECT_EQ(StateFolder(places), "/state/corvid/");
}

TEST_F(PlacesTest, AVariableThatIsNotAbsoluteCountsAsMissing) {
  Set("HOME", "/home/bob");
  Set("XDG_CONFIG_HOME", "settings");
  Set("XDG_STATE_HOME", "./state");
  EXPECT_EQ(SettingsFile(places), "/home/bob/.config/corvid/settings");
  EXPECT_EQ(StateFolder(places), "/home/bob/.local/state/corvid/");
}

TEST_F(PlacesTest, TheDocumentsLieWhereTheDesktopHasPutThem) {
  const std::filesystem::path folder = std::filesystem::path(testing::TempDir()) / "places";
  std::filesystem::create_directories(folder);
  std::ofstream(folder / "user-dirs.dirs") << "XDG_DOCUMENTS_DIR=\"$HOME/Dokumente\"\n";
  Set("HOME", "/home/bob");
  Set("XDG_CONFIG_HOME", folder.string());
  EXPECT_EQ(places.DocumentsFolder(), "/home/bob/Dokumente/");
  std::filesystem::remove_all(folder);
}

}  // namespace
}  // namespace corvid
