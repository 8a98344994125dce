// SPDX-License-Identifier: GPL-3.0-or-later
// TAB and CLASS alone: the lists that they show.
#include "core/keys.h"
#include "fixture.h"

namespace corvid::test {

class ListCommandTest : public CommandTest {
 protected:
  ListCommandTest() {
    MakeSession(1, "bob", true);
    script.CurrentSocket = 1;
  }
};

TEST_F(ListCommandTest, TheTabWordsOfTheCharacterAreShown) {
  Run("#TAB {crow|jay|magpie}");
  Run("#UNTAB jay");
  script.TabOwners[1] = 0;
  Run("#TAB rook");
  Effects();
  EXPECT_EQ(Run("#TAB"), "");
  EXPECT_EQ(Of("menu"), Lines{"ONETIME|magpie|rook"}) << "no free row, and none of somebody else's";
}

TEST_F(ListCommandTest, WithoutAWordTheListIsEmptyAndSaysSo) {
  EXPECT_EQ(Run("#TAB"), "");
  EXPECT_EQ(Effects(), (Lines{"menu ONETIME", "speech 5 The list is empty.", "beep"}));
  EXPECT_TRUE(menu.ListOpen);
  for (const int16 key : {keycode::Enter, keycode::Delete, keycode::Down, keycode::End, int16{'A'}})
    menus.ListKeyDown(key, 0);
  EXPECT_TRUE(menu.ListOpen);
  EXPECT_EQ(Of("speech"), Lines{}) << "no key finds anything in it";
  menus.ListKeyDown(keycode::Escape, 0);
  EXPECT_FALSE(menu.ListOpen);
}

TEST_F(ListCommandTest, AWordThatIsChosenGoesIntoTheEntryAndADroppedOneIsGone) {
  Run("#TAB {crow|jay};#TAB");
  menus.ListKeyDown(keycode::Delete, 0);
  EXPECT_EQ(menu.ListItems, Lines{"jay"});
  EXPECT_EQ(script.TabWords[1], "");
  menus.ListKeyDown(keycode::Enter, 0);
  EXPECT_EQ(buffers.EntryBox.Text(), "jay");
  EXPECT_EQ(script.TabWords[2], "jay");
}

TEST_F(ListCommandTest, TheClassesThatAreOnAreShownWithTheirOwner) {
  EXPECT_EQ(Run("#CLASS"), "");
  EXPECT_EQ(Effects(), Lines{"beep"}) << "none is on";
  symbols.CheckAndAddClass("fight", script.SocketOwner[1]);
  symbols.CheckAndAddClass("chat", 0);
  symbols.CheckAndAddClass("other", 77);
  EXPECT_EQ(Run("#CLASS"), "");
  EXPECT_EQ(Of("menu"), Lines{"CLASS|FIGHT Bob|CHAT Bob"});
  EXPECT_EQ(Run("#GCLASS"), "");
  EXPECT_EQ(Of("menu"), Lines{"CLASS|CHAT Global"});
}

TEST_F(ListCommandTest, WhenOnlyOthersHaveClassesNothingIsShown) {
  symbols.CheckAndAddClass("other", 77);
  EXPECT_EQ(Run("#CLASS"), "");
  EXPECT_EQ(Effects(), Lines{});
  EXPECT_FALSE(menu.ListOpen);
}

TEST_F(ListCommandTest, CheckingShowsNothing) {
  Run("#TAB crow;#CLASS a");
  Effects();
  for (const char* line : {"#TAB", "#CLASS"}) EXPECT_EQ(Run(line, option::CheckOnly), "");
  EXPECT_EQ(Effects(), Lines{});
}

}  // namespace corvid::test
