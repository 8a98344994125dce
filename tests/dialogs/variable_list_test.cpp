// SPDX-License-Identifier: GPL-3.0-or-later
// The list of variables, by what a player sees and does.
#include "dialogs/variable_list.h"

#include <deque>

#include "core/keys.h"
#include "core/text.h"
#include "dialogs/prompts.h"
#include "sessions/fixture.h"

namespace corvid {
namespace {

constexpr int32 ListAt = 1;

class VariableListTest : public SessionTest {
 protected:
  // The questions of the list are dialogs too.
  struct Questions : SilentPrompter {
    Prompts* real = nullptr;
    int16 MsgBox(const std::string& text, int16 flags, const std::string& title) override {
      return real->MsgBox(text, flags, title);
    }
    std::string TextPrompt(const std::string& prompt, const std::string& title, int16 type,
                           const std::string& value) override {
      return real->TextPrompt(prompt, title, type, value);
    }
  };
  VariableListTest() {
    questions.real = &prompts;
    memory.loop.Idle = [this] {
      if (dialog.GenFormCode == "DEBUGVAR" && memory.face.OpenModel() != nullptr) {
        items = memory.face.OpenModel()->Controls.at(ListAt).Items;
        chosen = memory.face.OpenModel()->Controls.at(ListAt).ListIndex;
      }
      if (steps.empty()) return memory.face.AnswerDialog();
      const std::function<void()> step = steps.front();
      steps.pop_front();
      step();
      return true;
    };
    // Carries out what the list runs, with braces as the only syntax.
    runner.OnCommand = [this](const std::string& line, int16&, std::string& problem, Parameters&, int16&) {
      const bool global = line.starts_with("#G");
      const OwnerId owner = global ? OwnerId{0} : script.CurrentOwner;
      const std::string name = line.substr(line.find('{') + 1, line.find('}') - line.find('{') - 1);
      if (Refusal.empty() && line.find("UNVARIABLE") != std::string::npos) {
        script.VariableNames[symbols.FindVariableRow(name, owner)].clear();
        symbols.CompressCommand(windowtype::Variables);
      } else if (Refusal.empty()) {
        symbols.AddVariable(name, line.substr(line.rfind('{') + 1, line.rfind('}') - line.rfind('{') - 1), owner,
                            problem);
      }
      problem = Refusal;
      Refusal.clear();
    };
  }
  ~VariableListTest() override {
    EXPECT_TRUE(steps.empty());
    EXPECT_EQ(memory.face.AnswersLeft(), 0U);
    EXPECT_EQ(Of("unanswered"), Texts{});
  }
  void Variable(const std::string& name, const std::string& value, int16 owner) {
    std::string error;
    symbols.AddVariable(name, value, owner, error);
  }
  void Will(const std::string& button, int32 row = -1) {
    memory.face.Will({button, {}, row < 0 ? std::map<int32, int32>{} : std::map<int32, int32>{{ListAt, row}}, {}});
  }
  // The rows of the player's own.
  Texts Own() const {
    Texts own;
    for (const std::string& item : items)
      if (item.starts_with('@')) own.push_back(item);
    return own;
  }

  SpeechState speech;
  Questions questions;
  Upcalls asking{runner, errors, speaker, questions, screens, jobs};
  GenDialog dialog{platform, asking, speech};
  Prompts prompts{dialog, speech, platform, asking};
  VariableList list{script, options, symbols, dialog, platform, asking};
  std::deque<std::function<void()>> steps;
  Texts items;
  int32 chosen = -1;
  std::string Refusal;  // error of the next command
};

TEST_F(VariableListTest, TheListHasItsControlsInOrder) {
  std::string form;
  steps.push_back([&] {
    const DialogModel& model = *memory.face.OpenModel();
    form = model.Code + "|" + model.Title;
    for (const DialogControl& control : model.Controls) form += "|" + control.Caption + "/" + control.Text;
    EXPECT_TRUE(model.Controls[2].Default);
    EXPECT_TRUE(model.Controls[6].Cancel);
  });
  Will("Cancel");
  list.MaintainVariables();
  EXPECT_EQ(form,
            "DEBUGVAR|View & Set Variables|/Variables|Variables/|Done/Done|Add/Add|Delete/Delete|"
            "Find   Ctrl-F/Find   Ctrl-F|Cancel/Cancel");
}

TEST_F(VariableListTest, RowsAreThoseOfTheCharacterInForceOfEverybodyAndOfTheSystem) {
  const int16 slot = Online("ann");
  const int16 owner = script.SocketOwner[slot];
  Variable("zoo", "1", owner);
  Variable("foe", "a rat\r\nand a cat", owner);
  Variable("Hp", "20", 0);
  Variable("other", "x", static_cast<int16>(owner + 1));
  Will("Done");
  list.MaintainVariables();
  EXPECT_EQ(Own(), (Texts{"@foe(Local) a rat  and a cat", "@Hp (Global) 20", "@zoo(Local) 1"}));
  EXPECT_EQ(items.size(), 3U + sysvar::Last);
  EXPECT_NE(std::find(items.begin(), items.end(), "%MUDNAME (Global) Mudann"), items.end());
  EXPECT_NE(std::find(items.begin(), items.end(), "%PASSWORD (Global) ******"), items.end()) << "never spoken";
  EXPECT_TRUE(items[3].starts_with('%')) << "the system's come behind";
  EXPECT_TRUE(std::is_sorted(items.begin() + 3, items.end(),
                             [](const std::string& a, const std::string& b) { return CompareText(a, b) < 0; }));
}

TEST_F(VariableListTest, AddingRunsTheCommandAndSelectsTheVariable) {
  Variable("zoo", "1", 0);
  Will("Add");
  memory.face.Will({"OK", {{1, " hp "}, {3, " 5 @x "}}, {}, {}});
  Will("Add");
  memory.face.Will({"OK", {{1, "foe"}, {3, "rat"}}, {}, {{4, 1}}});
  Will("Done");
  list.MaintainVariables();
  EXPECT_EQ(Of("command"), (Texts{"-2 #VARIABLE {hp} { 5 ~@x }", "-2 #GVARIABLE {foe} {rat}"}));
  EXPECT_EQ(items.at(static_cast<std::size_t>(chosen)), "@foe (Global) rat");
  EXPECT_EQ(Of("dialog")[1], "ADDVAR Add VARIABLE|Name|Value");
}

TEST_F(VariableListTest, TheFormHasItsControls) {
  std::string form;
  Will("Add");
  steps.push_back([&] { memory.face.AnswerDialog(); });
  steps.push_back([&] {
    for (const DialogControl& control : memory.face.OpenModel()->Controls)
      if (control.Kind != ControlKind::Label) form += control.Caption + "|";
  });
  Will("Cancel");
  Will("Done");
  list.MaintainVariables();
  EXPECT_EQ(form, "Name|Value|Make globally available to all Characters|OK|Cancel|");
}

TEST_F(VariableListTest, AnErrorIsToldAndTheInputIsThereAgain) {
  Refusal = "Something is wrong";
  Will("Add");
  memory.face.Will({"OK", {{1, "hp"}, {3, "5"}}, {}, {{4, 1}}});
  Will("Ok");
  memory.face.Will({"OK", {{1, "5hp"}}, {}, {}});
  Will("Ok");
  Will("Cancel");
  Will("Done");
  list.MaintainVariables();
  const Texts dialogs = Of("dialog");
  EXPECT_EQ(dialogs.at(2), "MSGBOX Error|Something is wrong");
  EXPECT_EQ(dialogs.at(4), "MSGBOX Error|The name of a variable begins with a letter and has only letters and digits.");
  EXPECT_EQ(Of("command").back(), "-2 #GVARIABLE {5hp} {5}") << "the value and the check were still there";
  EXPECT_EQ(script.VariableCount, 0);
}

TEST_F(VariableListTest, DeletingRunsTheCommandOfTheVariablesOwner) {
  const int16 slot = Online("ann");
  Variable("a", "1", script.SocketOwner[slot]);
  Variable("b", "2", 0);
  Variable("c", "3", 0);
  Will("Delete", 1);
  Will("Delete", 0);
  Will("Delete", 1);
  Will("Ok");
  Will("Done");
  list.MaintainVariables();
  EXPECT_EQ(Of("command"), (Texts{"-2 #GUNVARIABLE {b}", "-2 #UNVARIABLE {a}"}));
  EXPECT_EQ(Own(), Texts{"@c (Global) 3"});
  EXPECT_EQ(Of("dialog").at(3), "MSGBOX View & Set Variables|The variables of the system cannot be deleted.");
}

TEST_F(VariableListTest, FindGoesToTheNextRowThatHoldsTheText) {
  Variable("a", "rat", 0);
  Variable("b", "cat", 0);
  Variable("c", "Rat", 0);
  const auto find = [&](const std::string& text) {
    steps.push_back([&] {
      int16 key = 'F';
      int16 shift = ControlBit;
      memory.face.OpenEvents()->DialogHappened(ListAt, DialogEvent::KeyDown, key, shift);
      EXPECT_EQ(key, 0);
    });
    memory.face.Will({"OK", {{1, text}}, {}, {}});
    steps.push_back([&] { memory.face.AnswerDialog(); });
  };
  std::vector<int32> found;
  const auto note = [&] { steps.push_back([&] { found.push_back(chosen); }); };
  find("RAT");
  note();
  find("no such thing");
  memory.face.Will("Ok");
  steps.push_back([&] { memory.face.AnswerDialog(); });
  note();
  find("");
  note();
  memory.face.Will("Done");
  list.MaintainVariables();
  EXPECT_EQ(found, (std::vector<int32>{2, 2, 2}));
  EXPECT_EQ(Of("dialog").at(1), "TEXTPROMPT Find|String?");
}

TEST_F(VariableListTest, TheSelectedVariableStaysSelectedWhereverItGoes) {
  const int16 slot = Online("ann");
  Variable("mid", "1", script.SocketOwner[slot]);
  Variable("mid", "2", 0);
  std::vector<std::string> selected;
  const auto note = [&] { steps.push_back([&] { selected.push_back(items.at(static_cast<std::size_t>(chosen))); }); };
  Will("Add", 1);
  steps.push_back([&] { memory.face.AnswerDialog(); });
  steps.push_back([&] { Variable("aaa", "3", 0); });
  Will("Cancel");
  steps.push_back([&] { memory.face.AnswerDialog(); });
  note();
  Will("Add", 0);
  steps.push_back([&] { memory.face.AnswerDialog(); });
  memory.face.Will({"OK", {{1, "mid"}, {3, "9"}}, {}, {{4, 1}}});
  steps.push_back([&] { memory.face.AnswerDialog(); });
  note();
  Will("Add", 3);
  steps.push_back([&] { memory.face.AnswerDialog(); });
  memory.face.Will({"OK", {{1, "aaa"}, {3, "7"}}, {}, {}});
  steps.push_back([&] { memory.face.AnswerDialog(); });
  note();
  Will("Done");
  list.MaintainVariables();
  EXPECT_EQ(selected, (std::vector<std::string>{"@mid(Local) 1", "@mid (Global) 9", "@aaa (Global) 7"}));
}

TEST_F(VariableListTest, TheListFollowsWhatScriptsDoMeanwhile) {
  Variable("a", "1", 0);
  steps.push_back([&] {
    Variable("b", "2", 0);
    script.VariableNames[1].clear();
    memory.face.AnswerDialog();
  });
  runner.OnCommand = nullptr;
  Will("Delete");
  Will("Done");
  list.MaintainVariables();
  EXPECT_EQ(Own(), Texts{"@b (Global) 2"});
}

}  // namespace
}  // namespace corvid
