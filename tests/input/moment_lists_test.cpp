// SPDX-License-Identifier: GPL-3.0-or-later
// Lists that stand in a menu for a moment: words to complete, and classes.
#include "menu_fixture.h"

namespace corvid {

TEST_F(MenuTest, ATabWordReplacesTheSelectionAndStaysSelected) {
  Type("say crw to me");
  Entry().Select(4, 7);
  menus.ShowList({"crow", "Magpie"}, "ONETIME");
  Letter('C');
  EXPECT_EQ(Entry().Text(), "say crow to me");
  EXPECT_EQ(Entry().SelText(), "crow");
  EXPECT_EQ(Entry().Caret(), 8) << "with the caret behind it";
  EXPECT_FALSE(menu.ListOpen);
  Entry().SetSelStart(0);
  menus.ShowList({"a//b|c", "x"}, "ONETIME");
  Key(keycode::Enter, "\r");
  EXPECT_EQ(Entry().SelText(), "a//b|c") << "any word, as it is";
}

TEST_F(MenuTest, ATabWordLeavesAScriptThatIsOnlyReadAsItIs) {
  Type("look");
  Entry().SetLocked(true);
  menus.ShowList({"crow"}, "ONETIME");
  Key(keycode::Enter, "\r");
  EXPECT_EQ(Entry().Text(), "look");
  EXPECT_FALSE(menu.ListOpen);
}

TEST_F(MenuTest, DeleteDropsATabWordAndTheOthersStay) {
  menus.ShowList({"crow", "Mag@pie", "jay"}, "ONETIME");
  Key(keycode::Down);
  memory.effects.Clear();
  Key(keycode::Delete);
  EXPECT_EQ(Of("command"), Texts{"-2 #untab {Mag~@pie}"});
  EXPECT_EQ(menu.ListItems, (std::vector<std::string>{"crow", "jay"}));
  EXPECT_EQ(Item(), "jay");
  EXPECT_FALSE(menu.MenuDeleteKey);
  EXPECT_EQ(Entry().Text(), "");
  Key(keycode::Delete);
  Key(keycode::Delete);
  EXPECT_FALSE(menu.ListOpen) << "none is left";
}

TEST_F(MenuTest, AWordThatCannotBeDroppedStays) {
  menus.ShowList({"crow"}, "ONETIME");
  runner.OnCommand = [](const std::string&, int16&, std::string& problem, Parameters&, int16&) { problem = "disk"; };
  Key(keycode::Delete);
  EXPECT_EQ(menu.ListItems.size(), 1u);
  EXPECT_TRUE(menu.ListOpen);
}

TEST_F(MenuTest, AListThatCommandsReplaceMeanwhileIsLeftAlone) {
  menus.ShowList({"crow", "jay"}, "ONETIME");
  runner.OnCommand = [&](const std::string&, int16&, std::string&, Parameters&, int16&) {
    menus.ShowList({"A Bob"}, "CLASS");
  };
  Key(keycode::Delete);
  EXPECT_EQ(menu.CurrentMenu, "CLASS");
  EXPECT_EQ(menu.ListItems, std::vector<std::string>{"A Bob"});
}

TEST_F(MenuTest, AListThatIsOnlyReadCloses) {
  menus.ShowList({"FIGHT Bob", "CHAT Bob"}, "CLASS");
  EXPECT_EQ(Of("menu"), Texts{"CLASS|FIGHT Bob|CHAT Bob"});
  Key(keycode::Enter, "\r");
  EXPECT_FALSE(menu.ListOpen);
}

TEST_F(MenuTest, AListOfNothingTakesKeysWithoutHarm) {
  menus.SetupMenu({}, {}, 0, "ONETIME", 0);
  EXPECT_EQ(Spoken(), Texts{"5 The list is empty."}) << "or it would open without a word";
  for (const int16 key : {keycode::Down, keycode::Home, keycode::End, keycode::Enter, keycode::Delete}) Key(key);
  Letter('A');
  EXPECT_TRUE(menu.ListOpen);
  Key(keycode::Escape);
  EXPECT_FALSE(menu.ListOpen);
}

}  // namespace corvid
