// SPDX-License-Identifier: GPL-3.0-or-later
// The list of characters with a player who takes one step after the other.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "core/scramble.h"
#include "dialogs/character_list.h"
#include "sessions/fixture.h"

namespace corvid {

using Answer = MemoryFace::Answer;

// Places of the form's controls.
constexpr int32 NameAt = 1, RefAt = 3, MudListAt = 5, MudAt = 7, HostAt = 9, PortAt = 11, NotesAt = 13, PasswordAt = 15,
                LoginAt = 16, KeepAt = 17, SimpleAt = 18;
constexpr int32 ListAt = 1;

const std::string Exit = "Exit  Esc", AddButton = "Add  Control-A", EditButton = "Edit/View  Control-E",
                  DeleteButton = "Delete  Del", OfflineButton = "Work Offline  Control-O";

class CharacterListTest : public SessionTest {
 protected:
  CharacterListTest() {
    memory.loop.Idle = [this] {
      if (dialog.GenFormCode == "CHARACTER1" && memory.face.OpenModel() != nullptr) lists.push_back(Items());
      if (steps.empty()) return memory.face.AnswerDialog();
      const std::function<void()> step = steps.front();
      steps.pop_front();
      step();
      return true;
    };
  }
  ~CharacterListTest() override {
    EXPECT_TRUE(steps.empty());
    EXPECT_EQ(memory.face.AnswersLeft(), 0U);
    EXPECT_EQ(Of("unanswered"), Texts{});
  }
  const std::vector<std::string>& Items() { return memory.face.OpenModel()->Controls.at(ListAt).Items; }
  const DialogControl& At(int32 place) { return memory.face.OpenModel()->Controls.at(static_cast<std::size_t>(place)); }
  void Press(int16 key, int16 shift = 0, int32 control = ListAt) {
    memory.face.OpenEvents()->DialogHappened(control, DialogEvent::KeyDown, key, shift);
    EXPECT_EQ(key, 0) << "the key does nothing else";
  }
  // What the player does next, before the answers that he Will give.
  void Then(std::function<void()> step) { steps.push_back(std::move(step)); }
  void Answers(const Answer& answer) {
    Then([this, answer] {
      memory.face.Will(answer);
      memory.face.AnswerDialog();
    });
  }
  void Presses(const std::string& button, int32 row = -1) {
    Answers({button, {}, row < 0 ? std::map<int32, int32>{} : std::map<int32, int32>{{ListAt, row}}, {}});
  }
  std::string File() { return Scramble(memory.files.ReadWhole("/data/Character.mud")); }
  Texts Boxes() { return Of("box"); }

  SpeechState speech;
  GenDialog dialog{platform, upcalls, speech};
  CharacterList list{script, options, state, characters, sessions, dialog, platform, upcalls};
  std::deque<std::function<void()>> steps;
  std::vector<std::vector<std::string>> lists;  // each list that was shown
};

}  // namespace corvid
