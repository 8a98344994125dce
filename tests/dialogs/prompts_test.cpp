// SPDX-License-Identifier: GPL-3.0-or-later
// Message boxes, prompts and lists, as a player meets them: what is said, what each answer gives.
#include "dialogs/prompts.h"

#include "core/keys.h"
#include "prompts_fixture.h"

namespace corvid {
namespace {

TEST_F(PromptsTest, MessageBoxSpeaksTitleAndTextBeforeItsButton) {
  memory.face.Will("Ok");
  EXPECT_EQ(prompts.MsgBox("The door is shut.", box::OkOnly, "Note"), box::ResultOk);
  EXPECT_EQ(Spoken(), (std::vector<std::string>{"5 Note", "5 The door is shut.", "5w Ok"}));
  EXPECT_FALSE(dialog.GDOpen);
}

struct BoxCase {
  int16 flags;
  const char* button;
  int16 result;
};

TEST_F(PromptsTest, EachButtonGivesItsResult) {
  for (const BoxCase& given :
       {BoxCase{box::OkOnly, "Ok", 1}, BoxCase{box::OkCancel, "Ok", 1}, BoxCase{box::OkCancel, "Cancel", 2},
        BoxCase{box::YesNo, "Yes", 6}, BoxCase{box::YesNo, "No", 7}, BoxCase{box::YesNoCancel, "Yes", 6},
        BoxCase{box::YesNoCancel, "No", 7}, BoxCase{box::YesNoCancel, "Cancel", 2}}) {
    memory.face.Will(given.button);
    EXPECT_EQ(prompts.MsgBox("?", given.flags, ""), given.result) << given.button << " of " << given.flags;
  }
}

TEST_F(PromptsTest, FirstLettersAnswerToo) {
  for (const auto& [flags, key, result] :
       std::vector<std::tuple<int16, char, int16>>{{box::OkOnly, 'O', box::ResultOk},
                                                   {box::YesNo, 'Y', box::ResultYes},
                                                   {box::YesNo, 'N', box::ResultNo},
                                                   {box::OkCancel, 'C', box::ResultCancel}}) {
    int16 left = key;
    memory.loop.Idle = [&, key = key] {
      left = Tell(1, DialogEvent::KeyDown, key);
      return true;
    };
    EXPECT_EQ(prompts.MsgBox("?", flags, ""), result) << key;
    EXPECT_EQ(left, 0) << "the key must not act twice";
  }
}

TEST_F(PromptsTest, RepeatMessageSaysItAgainAndStays) {
  int step = 0;
  memory.loop.Idle = [&] {
    const char* button = step++ == 0 ? "Repeat Message" : "Ok";
    Tell(PlaceOfButton(button), DialogEvent::Click);
    return true;
  };
  prompts.MsgBox("Hear me.", box::OkOnly, "Note");
  const auto spoken = Spoken();
  EXPECT_EQ(std::count(spoken.begin(), spoken.end(), "5 Hear me."), 2);
  EXPECT_EQ(memory.effects.Of("stop"), (std::vector<std::string>{"5"})) << "what is still being said of it";
  EXPECT_EQ(step, 2);
}

TEST_F(PromptsTest, ClosingFromOutsideCountsAsTheCautiousAnswer) {
  for (const auto& [flags, result] : std::vector<std::pair<int16, int16>>{{box::OkOnly, box::ResultOk},
                                                                          {box::OkCancel, box::ResultCancel},
                                                                          {box::YesNo, box::ResultNo},
                                                                          {box::YesNoCancel, box::ResultCancel}}) {
    memory.loop.Idle = [&] {
      memory.face.OpenEvents()->DialogCloseRequested();
      return true;
    };
    EXPECT_EQ(prompts.MsgBox("?", flags, ""), result) << flags;
  }
}

TEST_F(PromptsTest, EscapeHasAButtonUnlessOnlyYesAndNoAreThere) {
  for (const auto& [flags, cancel] : std::vector<std::pair<int16, std::string>>{
           {box::OkOnly, "Ok"}, {box::OkCancel, "Cancel"}, {box::YesNo, ""}, {box::YesNoCancel, "Cancel"}}) {
    std::string found;
    memory.loop.Idle = [&] {
      for (const DialogControl& control : memory.face.OpenModel()->Controls)
        if (control.Cancel) found = control.Text;
      Tell(1, DialogEvent::Click);
      return true;
    };
    prompts.MsgBox("?", flags, "");
    EXPECT_EQ(found, cancel) << flags;
  }
}

TEST_F(PromptsTest, SecondAndThirdDefaultHaveTheFocus) {
  for (const auto& [flags, words] :
       std::vector<std::pair<int16, std::string>>{{box::YesNoCancel, "Yes"},
                                                  {box::YesNoCancel | box::SecondDefault, "No"},
                                                  {box::YesNoCancel | box::ThirdDefault, "Cancel"}}) {
    memory.effects.Clear();
    memory.face.Will("No");
    prompts.MsgBox("?", flags, "");
    EXPECT_EQ(Spoken().back(), "5w " + words);
  }
}

TEST_F(PromptsTest, MessageLabelGrowsByALineForEachFortyCharacters) {
  for (const auto& [length, height] : std::vector<std::pair<std::size_t, int32>>{{10, 295}, {40, 590}, {85, 885}}) {
    int32 found = 0;
    memory.loop.Idle = [&] {
      found = memory.face.OpenModel()->Controls[0].Height;
      EXPECT_EQ(memory.face.OpenModel()->Controls[0].Width, 5000);
      Tell(1, DialogEvent::Click);
      return true;
    };
    prompts.MsgBox(std::string(length, 'x'), box::OkOnly, "");
    EXPECT_EQ(found, height) << length;
  }
}

TEST_F(PromptsTest, TextPromptBeepsSpeaksAndReturnsTheText) {
  memory.face.Will({"OK", {{1, "bob"}}, {}, {}});
  EXPECT_EQ(prompts.TextPrompt("Key Name?", "Keys", 5, "ann"), "bob");
  EXPECT_EQ(memory.effects.Of("beep").size(), 1U);
  EXPECT_EQ(Spoken()[0], "5 Keys");
  EXPECT_EQ(Spoken()[1], "5w Key Name?");
  EXPECT_EQ(Spoken()[2], "5w ann");
}

std::string Places(const DialogModel& model) {
  std::string text;
  for (const DialogControl& c : model.Controls) {
    for (const int32 number : {c.Top, c.Left, c.Height, c.Width}) text += std::to_string(number) + " ";
    text += c.Default ? "default|" : c.Cancel ? "cancel|" : "|";
  }
  return text + std::to_string(model.Width) + " " + std::to_string(model.Height);
}

TEST_F(PromptsTest, TextPromptAndChoiceStandWhereTheyShould) {
  std::string places;
  memory.loop.Idle = [&] {
    places = Places(*memory.face.OpenModel());
    Tell(PlaceOfButton("Cancel"), DialogEvent::Click);
    return true;
  };
  prompts.TextPrompt("Key Name?", "", 5, "");
  EXPECT_EQ(places,
            "500 500 295 2000 |500 2501 295 2000 |1295 5001 400 800 default|1295 6201 400 800 cancel|7501 2195");
  int16 row = 1;
  prompts.ChooseFromList("Pick one", {"a", "b"}, row);
  EXPECT_TRUE(places.find("|500 500 2500 4000 |3400 4000 400 1500 default|3400 5900 400 1500 cancel|") !=
              std::string::npos)
      << places;
  EXPECT_EQ(row, 1);
}

TEST_F(PromptsTest, PickDriveGivesTheRootThatIsChosen) {
  memory.files.CreateFolder("/media");
  memory.face.Will({"OK", {}, {{1, 2}}, {}});
  EXPECT_EQ(prompts.PickDrive("Select a drive"), "/media/");
  EXPECT_EQ(memory.effects.Of("dialog"), (std::vector<std::string>{"CHOOSELIST Select a drive|Select"}));
  memory.face.Will("Cancel");
  EXPECT_EQ(prompts.PickDrive("Select a drive"), "");
}

TEST_F(PromptsTest, TextPromptCancelledReturnsNothing) {
  memory.face.Will({"Cancel", {{1, "bob"}}, {}, {}});
  EXPECT_EQ(prompts.TextPrompt("Key Name?", "", 5, "ann"), "");
  EXPECT_EQ(dialog.GDResult, 2);
}

TEST_F(PromptsTest, SecondPromptClosesTheFirstWhichEndsWithNothing) {
  std::string inner = "unset";
  bool opened = false;
  memory.loop.Idle = [&] {
    if (!opened) {
      opened = true;
      inner = prompts.TextPrompt("Inner", "", 5, "");
      return true;
    }
    memory.face.Will({"OK", {{1, "answer"}}, {}, {}});
    return memory.face.AnswerDialog();
  };
  EXPECT_EQ(prompts.TextPrompt("Outer", "", 5, ""), "");
  EXPECT_EQ(inner, "answer");
  EXPECT_EQ(dialog.GDResult, 0);
}

TEST_F(PromptsTest, PickListOffersLabelsAndGivesValues) {
  struct Case {
    const char* list;
    int32 row;  // -1: as it was at first
    const char* value;
  };
  for (const Case& given :
       {Case{"red|green|blue", 1, "green"}, Case{"P:Which?|red:1|*green:2|blue:3", -1, "2"},
        Case{"a\\&1b:x\\&1y|c", 0, "x:y"}, Case{"*only", -1, "only"}, Case{"*a:1|*b:2|c:3", -1, "2"},
        Case{"a|:nameless|c", 1, "nameless"}, Case{"a|p|c", 1, "c"}, Case{"a:b:c|d", 0, "b:c"}, Case{"a:|b", 0, ""}}) {
    MemoryFace::Answer answer{"OK", {}, {}, {}};
    if (given.row >= 0) answer.Rows[1] = given.row;
    memory.face.Will(answer);
    EXPECT_EQ(prompts.PickList(given.list), given.value) << given.list;
  }
}

TEST_F(PromptsTest, PickListSpeaksItsPromptAndCaption) {
  memory.face.Will("Cancel");
  EXPECT_EQ(prompts.PickList("P:Which way?|north|south"), "");
  EXPECT_EQ(Spoken(), (std::vector<std::string>{"5 Select", "5 Which way?", "5w Variables", "5w north"}));
  memory.effects.Clear();
  memory.face.Will("Cancel");
  EXPECT_EQ(prompts.PickList("north|p:Which\\&1 way?"), "");
  EXPECT_EQ(Spoken(), (std::vector<std::string>{"5 Select", "5 Which: way?", "5w Variables", "5w north"}));
  memory.effects.Clear();
  memory.face.Will("Cancel");
  EXPECT_EQ(prompts.PickList("north|P"), "") << "without a value the label is the prompt";
  EXPECT_EQ(Spoken(), (std::vector<std::string>{"5 Select", "5 P", "5w Variables", "5w north"}));
}

TEST_F(PromptsTest, PickListWithoutChoicesAsksNothing) {
  EXPECT_EQ(prompts.PickList("P:Which way?"), "");
  EXPECT_EQ(prompts.PickList("P"), "");
  EXPECT_EQ(prompts.PickList(""), "");
  EXPECT_TRUE(memory.effects.Of("dialog").empty());
}

TEST_F(PromptsTest, PickListBehindAnOpenDialogOnlyBeeps) {
  std::string picked = "unset";
  memory.loop.Idle = [&] {
    picked = prompts.PickList("a|b");
    Tell(PlaceOfButton("Ok"), DialogEvent::Click);
    return true;
  };
  EXPECT_EQ(prompts.MsgBox("Open", box::OkOnly, ""), box::ResultOk);
  EXPECT_EQ(picked, "");
  EXPECT_EQ(memory.effects.Of("beep").size(), 1U);
}

TEST_F(PromptsTest, PickListStopsAtNinetyNineChoices) {
  std::string list = "c1";
  for (int i = 2; i <= 150; ++i) list += "|c" + std::to_string(i);
  std::size_t rows = 0;
  memory.loop.Idle = [&] {
    rows = memory.face.OpenModel()->Controls[1].Items.size();
    Tell(PlaceOfButton("Cancel"), DialogEvent::Click);
    return true;
  };
  prompts.PickList(list);
  EXPECT_EQ(rows, 99U);
}

TEST_F(PromptsTest, ChooseFromListGivesTheRow) {
  int16 row = 0;
  memory.face.Will({"OK", {}, {{1, 2}}, {}});
  EXPECT_TRUE(prompts.ChooseFromList("Pick one", {"a", "b", "c"}, row));
  EXPECT_EQ(row, 2);
  EXPECT_EQ(Spoken()[1], "5w Triggers");
  memory.face.Will("Cancel");
  EXPECT_FALSE(prompts.ChooseFromList("Pick one", {"a"}, row));
}

TEST_F(PromptsTest, InputBoxTakesItsMarkForNoDefault) {
  std::string shown = "unset";
  memory.loop.Idle = [&] {
    shown = memory.face.OpenModel()->Controls[1].Text;
    Tell(PlaceOfButton("Cancel"), DialogEvent::Click);
    return true;
  };
  prompts.InputBox2("Name?", "Title", "$%");
  EXPECT_EQ(shown, "");
  prompts.InputBox2("Name?", "Title", "bob");
  EXPECT_EQ(shown, "bob");
}

}  // namespace
}  // namespace corvid
