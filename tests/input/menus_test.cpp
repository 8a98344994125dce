// SPDX-License-Identifier: GPL-3.0-or-later
// The menus, by their keys: what is heard, what is shown, what is done.
#include "menu_fixture.h"

namespace corvid {

TEST_F(MenuTest, ALoneAltOpensAndClosesTheMainMenu) {
  TapAlt();
  EXPECT_TRUE(menu.ListOpen);
  EXPECT_EQ(Of("menu"), Texts{"MAIN|File|Edit|Connect|Tools and Preferences|Windows|Help"});
  EXPECT_EQ(Spoken(), Texts{"1w File"}) << "the selected item is said";
  EXPECT_EQ(Of("stop").back(), "1") << "with interrupt";
  EXPECT_EQ(menu.MenuDepth, 1);
  memory.effects.Clear();
  TapAlt();
  EXPECT_FALSE(menu.ListOpen);
  EXPECT_EQ(Of("menu-closed"), Texts{"MAIN"});
  EXPECT_EQ(Spoken().size(), 1u) << "the entry says its name";
}

TEST_F(MenuTest, AScriptInTheEntryBoxHasAMenuOfItsOwn) {
  Edit("#alias a b");
  memory.effects.Clear();
  TapAlt();
  EXPECT_EQ(Spoken(), Texts{"5 Corvid does not have this menu yet: Script window menu"});
  EXPECT_FALSE(menu.ListOpen);
}

TEST_F(MenuTest, ArrowsMoveAndSayTheItem) {
  TapAlt();
  memory.effects.Clear();
  for (const int16 key : {keycode::Down, keycode::Down, keycode::Up, keycode::End, keycode::Down, keycode::Home,
                          keycode::PageDown, keycode::PageUp})
    Key(key);
  EXPECT_EQ(Spoken(),
            (Texts{"1w Edit", "1w Connect", "1w Edit", "1w Help", "1w Help", "1w File", "1w Help", "1w File"}));
  EXPECT_EQ(memory.face.Menu.Index, 0) << "the face shows the same row";
}

TEST_F(MenuTest, ALetterThatOneItemBeginsWithChoosesIt) {
  TapAlt();
  Letter('T');
  EXPECT_EQ(menu.CurrentMenu, "TOOLS");
  EXPECT_EQ(menu.MenuDepth, 2);
  EXPECT_EQ(menu.MenuStack[2], "MAIN//Tools and Preferences##3");
}

TEST_F(MenuTest, ALetterThatSeveralBeginWithGoesFromOneToTheNext) {
  OpenWalkMenu();
  Letter('S');
  EXPECT_EQ(Item(), "Stop Playback/Recording");
  Letter('S');
  EXPECT_EQ(Item(), "Slow Walk Option    Off");
  Letter('S');
  EXPECT_EQ(Item(), "Stop Playback/Recording");
  EXPECT_EQ(menu.CurrentMenu, "AUTOWALK");
  Letter('Z');
  EXPECT_EQ(Item(), "Stop Playback/Recording") << "none begins so";
  EXPECT_TRUE(menu.ListOpen);
}

TEST_F(MenuTest, EnterSpaceAndRightChoose) {
  for (const auto& [code, character] :
       {std::pair<int16, std::string>{keycode::Enter, "\r"}, {keycode::Space, " "}, {keycode::Right, ""}}) {
    TapAlt();
    for (int i = 0; i < 3; ++i) Key(keycode::Down);
    Key(code, character);
    EXPECT_EQ(menu.CurrentMenu, "TOOLS") << code;
    Key(keycode::Escape);
    EXPECT_FALSE(menu.ListOpen);
  }
  EXPECT_EQ(Entry().Text(), "") << "no key of the list reaches the entry";
  EXPECT_FALSE(timers.JobDue());
}

TEST_F(MenuTest, LeftGoesBackToTheItemItCameFrom) {
  OpenWalkMenu();
  EXPECT_EQ(menu.MenuDepth, 3);
  Key(keycode::Left);
  EXPECT_EQ(menu.CurrentMenu, "TOOLS");
  EXPECT_EQ(Item(), "Record Commands/Speed Walk");
  Key(keycode::Backspace, "\b");
  EXPECT_EQ(menu.CurrentMenu, "MAIN");
  EXPECT_EQ(Item(), "Tools and Preferences");
  EXPECT_EQ(Spoken().back(), "1w Tools and Preferences");
  Key(keycode::Left);
  EXPECT_FALSE(menu.ListOpen) << "the first menu closes";
}

TEST_F(MenuTest, AnItemThatIsNotBuiltSaysSoAndTheMenuStays) {
  TapAlt();
  Letter('F');
  EXPECT_EQ(Spoken().back(), "5 Corvid does not have this menu yet: File");
  EXPECT_EQ(memory.effects.Of("notice"), Texts{"Corvid does not have this menu yet: File"});
  EXPECT_TRUE(menu.ListOpen);
  EXPECT_EQ(menu.CurrentMenu, "MAIN");
}

TEST_F(MenuTest, TheDebuggerTakesThePlaceOfTheList) {
  TapAlt();
  menus.MenuRoutine("TOOLS//DE");
  EXPECT_EQ(memory.effects.Of("screen"), Texts{"debugger"});
  EXPECT_FALSE(menu.ListOpen);
}

TEST_F(MenuTest, ASelectionCodeCountsTwoCharactersInAnyCase) {
  menus.MenuRoutine("main//Toys");
  EXPECT_EQ(menu.CurrentMenu, "TOOLS");
  menus.MenuRoutine("tools//re");
  EXPECT_EQ(menu.CurrentMenu, "AUTOWALK");
  memory.effects.Clear();
  for (const char* nothing : {"", "MAIN", "MAIN//", "MAIN//Q", "MAIN//ZZ", "AUTOWALK//XX"}) menus.MenuRoutine(nothing);
  EXPECT_EQ(Spoken(), Texts{});
  menus.MenuRoutine("NOSUCH//00");
  EXPECT_EQ(Spoken(), Texts{"5 Corvid does not have this menu yet: NOSUCH"});
}

TEST_F(MenuTest, KeysBelongToTheListWhileItIsOpen) {
  Macro('T', 0, "#say taken");
  TapAlt();
  Letter('T');
  EXPECT_EQ(menu.CurrentMenu, "TOOLS");
  EXPECT_EQ(Of("command"), Texts{});
  Key(keycode::Tab);
  EXPECT_EQ(memory.face.Focus(), MainFocus::Entry);
  EXPECT_EQ(Entry().Text(), "");
  keys.KeyDown('V', ControlBit);
  EXPECT_TRUE(menu.ListOpen);
  keys.KeyDown(keycode::F4, AltBit);
  EXPECT_EQ(Of("quit"), Texts{"asked"}) << "but for the key that ends the program";
}

TEST_F(MenuTest, ATypedCharacterIsEchoedAndGoesNowhere) {
  speech.TypingEcho = {1, 1, 1, 1, 1, 1, 1};
  OpenWalkMenu();
  Letter('S');
  EXPECT_EQ(Of("spelled"), Texts{"2 s"});
  EXPECT_EQ(Entry().Text(), "");
}

TEST_F(MenuTest, TheOutputHasTheFocusAgainWhenItHadIt) {
  memory.face.SetFocus(MainFocus::Output);
  memory.effects.Clear();
  TapAlt();
  Key(keycode::Escape);
  EXPECT_TRUE(keyboard.OutputFocused);
  EXPECT_EQ(Spoken(), Texts{"1w File"}) << "the output says nothing: it had the focus all the time";
}

TEST_F(MenuTest, TheMouseSelectsAndChooses) {
  TapAlt();
  memory.effects.Clear();
  keys.MenuClicked(2);
  EXPECT_EQ(Spoken(), Texts{"1w Connect"});
  keys.MenuClicked(-1);
  keys.MenuClicked(6);
  EXPECT_EQ(Item(), "Connect");
  keys.MenuDoubleClicked(3);
  EXPECT_EQ(menu.CurrentMenu, "TOOLS");
  keys.MenuDoubleClicked(99);
  keys.MenuLeft();
  EXPECT_FALSE(menu.ListOpen);
  keys.MenuClicked(1);
  keys.MenuDoubleClicked(0);
  EXPECT_FALSE(menu.ListOpen);
}

TEST_F(MenuTest, EveryItemThatAKeyChoseIsAStepDownEvenWhereTheMenuStays) {
  OpenWalkMenu();
  Key(keycode::End);
  Key(keycode::Enter, "\r");
  EXPECT_EQ(menu.MenuDepth, 4);
  EXPECT_EQ(menu.MenuStack[4], "AUTOWALK//Slow Walk Option    Off##6");
  Key(keycode::Left);
  EXPECT_EQ(menu.CurrentMenu, "AUTOWALK");
  EXPECT_EQ(Item(), "Slow Walk Option    On");
  Key(keycode::Left);
  EXPECT_EQ(menu.CurrentMenu, "TOOLS");
}

TEST_F(MenuTest, AnItemKnowsWhetherAKeyChoseItAndWhichOne) {
  std::string seen;
  runner.OnCommand = [&](const std::string&, int16&, std::string&, Parameters&, int16&) {
    seen += menu.MenuActive ? "active " : "idle ";
    seen += menu.MenuDeleteKey ? "deleted " : "chosen ";
  };
  OpenWalkMenu();
  Key(keycode::Enter, "\r");
  OpenWalkMenu();
  Key(keycode::Delete);
  menus.MenuRoutine("AUTOWALK//BE");
  EXPECT_EQ(seen, "active chosen idle deleted idle chosen ");
  EXPECT_FALSE(menu.MenuActive);
  EXPECT_FALSE(menu.MenuDeleteKey);
}

TEST_F(MenuTest, AKeyWithinAKeyKeepsToItself) {
  std::string seen;
  const auto note = [&] {
    seen += std::string(menu.MenuActive ? "active " : "idle ") + (menu.MenuDeleteKey ? "deleted " : "chosen ");
  };
  bool nested = false;
  runner.OnCommand = [&](const std::string&, int16&, std::string&, Parameters&, int16&) {
    note();
    if (std::exchange(nested, true)) return;
    menus.ListKeyDown(keycode::Enter, 0);
    note();
  };
  OpenWalkMenu();
  Key(keycode::Delete);
  EXPECT_EQ(seen, "idle deleted active chosen idle deleted ");
}

TEST_F(MenuTest, AMenuIsFilledFromBothListsUpToTheLength) {
  menus.SetupMenu({"one"}, {"two", "three", "four"}, 2, "CLASS", 2);
  EXPECT_EQ(menu.ListItems, (std::vector<std::string>{"one", "two", "three"}));
  EXPECT_EQ(Item(), "three");
  menus.SetupMenu({"one"}, {}, 5, "CLASS", 7);
  EXPECT_EQ(Item(), "one") << "a row that is not there is the nearest that is";
}

TEST_F(MenuTest, TheTwinShowsAMenuInTheSameWay) {
  menus.xSetupmenu({"one"}, {"two", "three"}, 1, "CLASS", 1);
  EXPECT_EQ(Of("menu"), Texts{"CLASS|one|two"});
  EXPECT_EQ(Spoken(), Texts{"1w two"});
  EXPECT_EQ(menu.CurrentMenu, "CLASS");
}

TEST_F(MenuTest, AnAutomaticWalkIsNotSeenUntilItsLastMenu) {
  menus.OpenMenu("MAIN//00", "TOOLS|RECORD");
  EXPECT_EQ(Of("menu").size(), 1u);
  EXPECT_EQ(menu.CurrentMenu, "AUTOWALK");
  EXPECT_EQ(Spoken(), Texts{"1w Begin Recording"});
  EXPECT_EQ(menu.MenuDepth, 1) << "no key led here";
  Key(keycode::Left);
  EXPECT_FALSE(menu.ListOpen);
  memory.effects.Clear();
  bool active = true;
  runner.OnCommand = [&](const std::string&, int16&, std::string&, Parameters&, int16&) { active = menu.MenuActive; };
  menus.OpenMenu("MAIN//00", "tools|re|pause");
  EXPECT_FALSE(active);
  EXPECT_EQ(Of("menu"), Texts{});
  EXPECT_EQ(Of("command"), Texts{"-2 #Pause"});
  EXPECT_EQ(menu.MenuAutoPath, "");
}

TEST_F(MenuTest, AStepThatNoItemFitsIsReported) {
  menus.OpenMenu("MAIN//00", "TOOLS|nothing|more");
  EXPECT_EQ(Of("error"), Texts{"Auto-menu did not find matchingmenu item nothing in command: TOOLS"});
  EXPECT_EQ(menu.MenuAutoPath, "") << "what is shown next is no part of the walk";
  EXPECT_FALSE(menu.ListOpen);
  TapAlt();
  EXPECT_EQ(menu.CurrentMenu, "MAIN");
  EXPECT_TRUE(menu.ListOpen);
}

TEST_F(MenuTest, AFaultInAnItemIsLoggedAndTheProgramGoesOn) {
  OpenWalkMenu();
  runner.OnCommand = [](const std::string&, int16&, std::string&, Parameters&, int16&) {
    throw Fault(FaultKind::Internal, "broken");
  };
  Key(keycode::Enter, "\r");
  EXPECT_EQ(Of("unknownerror").size(), 1u);
  EXPECT_FALSE(menu.MenuActive);
  TapAlt();
  EXPECT_TRUE(menu.ListOpen);
}

}  // namespace corvid
