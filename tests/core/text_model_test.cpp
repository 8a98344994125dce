// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/text_model.h"

#include <gtest/gtest.h>

#include <vector>

namespace corvid {
namespace {

// Mirrors the model as a window does and notes what it was told.
class Mirror : public TextObserver {
 public:
  void TextInserted(const TextModel& model, int32 position, std::string_view text, int32 color, bool bold) override {
    Text.insert(static_cast<std::size_t>(position), text);
    Color = color;
    Bold = bold;
    EXPECT_EQ(model.Text(), Text);
  }
  void TextRemoved(const TextModel& model, int32 position, std::string_view removed) override {
    EXPECT_EQ(model.Text().size(), Text.size() - removed.size());
    EXPECT_EQ(Text.substr(static_cast<std::size_t>(position), removed.size()), removed);
    Text.erase(static_cast<std::size_t>(position), removed.size());
  }
  void SelectionMoved(const TextModel&) override { ++Moves; }
  void StateChanged(const TextModel&) override { ++States; }
  std::string Text;
  int32 Color = 0;
  bool Bold = false;
  int Moves = 0;
  int States = 0;
};

class Model : public testing::Test {
 protected:
  Model() { model_.SetObserver(&mirror_); }
  ~Model() override { EXPECT_EQ(mirror_.Text, model_.View()); }
  void ExpectSelection(int32 start, int32 length) {
    EXPECT_EQ(model_.SelStart(), start);
    EXPECT_EQ(model_.SelLength(), length);
  }
  Mirror mirror_;
  TextModel model_;
};

TEST_F(Model, SetTextPutsTheCaretInFront) {
  model_.SetText("hello");
  model_.Select(1, 4);
  model_.SetText("other");
  ExpectSelection(0, 0);
  EXPECT_EQ(model_.Text(), "other");
  model_.SetText("");
  EXPECT_EQ(model_.Length(), 0);
}

TEST_F(Model, PositionsOutsideComeToTheNearestEnd) {
  model_.SetText("hello");
  model_.SetSelStart(-3);
  ExpectSelection(0, 0);
  model_.SetSelStart(63000);
  ExpectSelection(5, 0);
  model_.SetSelStart(3);
  model_.SetSelLength(99);
  ExpectSelection(3, 2);
  model_.SetSelLength(-1);
  ExpectSelection(3, 0);
  model_.Select(-5, 99);
  ExpectSelection(0, 5);
}

TEST_F(Model, SelectionKnowsItsMovingEnd) {
  model_.SetText("hello");
  model_.Select(1, 4);
  EXPECT_FALSE(model_.CaretAtStart());
  EXPECT_EQ(model_.Caret(), 4);
  const int moves = mirror_.Moves;
  model_.Select(4, 1);
  EXPECT_TRUE(model_.CaretAtStart());
  EXPECT_EQ(model_.Caret(), 1);
  EXPECT_EQ(model_.SelText(), "ell");
  EXPECT_EQ(mirror_.Moves, moves + 1);
  model_.SetSelStart(2);
  ExpectSelection(2, 0);
  EXPECT_FALSE(model_.CaretAtStart());
}

TEST_F(Model, SetSelTextReplacesAndStepsBehind) {
  model_.SetText("hello");
  model_.Select(4, 1);
  model_.SetSelText("XY");
  EXPECT_EQ(model_.Text(), "hXYo");
  ExpectSelection(3, 0);
  model_.SetSelText("");
  EXPECT_EQ(model_.Text(), "hXYo");
  model_.Select(0, 4);
  model_.SetSelText(model_.View().substr(1, 2));  // a piece of itself
  EXPECT_EQ(model_.Text(), "XY");
  ExpectSelection(2, 0);
}

TEST_F(Model, AppendLeavesTheSelection) {
  model_.SetText("ab");
  model_.Select(0, 2);
  model_.SetSelColor(0xFF00);
  model_.SetSelBold(true);
  model_.Append("cd");
  EXPECT_EQ(model_.Text(), "abcd");
  ExpectSelection(0, 2);
  EXPECT_EQ(mirror_.Color, 0xFF00);
  EXPECT_TRUE(mirror_.Bold);
  model_.SetSelStart(4);
  model_.Append("e");
  ExpectSelection(4, 0);
}

TEST_F(Model, KeepLastMovesTheSelectionWithItsText) {
  model_.SetText("0123456789");
  model_.Select(5, 8);
  model_.KeepLast(7);
  EXPECT_EQ(model_.Text(), "3456789");
  ExpectSelection(2, 3);
  EXPECT_EQ(model_.SelText(), "567");
  model_.KeepLast(3);
  ExpectSelection(0, 1);
  model_.KeepLast(1);
  ExpectSelection(0, 0);
  model_.KeepLast(5);
  EXPECT_EQ(model_.Text(), "9");
  model_.KeepLast(-1);
  EXPECT_EQ(model_.Text(), "");
}

TEST_F(Model, EditsAfterDroppingInFront) {
  model_.SetText(std::string(10000, 'x') + "hello");
  model_.KeepLast(5);
  model_.Append(" there");
  model_.SetSelStart(5);
  model_.SetSelText(",");
  EXPECT_EQ(model_.View(), "hello, there");
  model_.Select(0, 1);
  EXPECT_EQ(model_.SelText(), "h");
  model_.SetSelText("J");
  EXPECT_EQ(model_.Text(), "Jello, there");
}

TEST_F(Model, TellsOfStateOnlyWhenItChanges) {
  model_.SetVisible(true);
  model_.SetLocked(false);
  EXPECT_EQ(mirror_.States, 0);
  model_.SetVisible(false);
  model_.SetLocked(true);
  model_.SetBackColor(0);
  model_.SetForeColor(0xFFFFFF);
  model_.SetForeColor(0xFFFFFF);
  EXPECT_EQ(mirror_.States, 4);
  EXPECT_FALSE(model_.Visible());
  EXPECT_TRUE(model_.Locked());
  EXPECT_EQ(model_.BackColor(), 0);
  EXPECT_EQ(model_.ForeColor(), 0xFFFFFF);
  const int moves = mirror_.Moves;
  model_.SetSelStart(0);
  EXPECT_EQ(mirror_.Moves, moves);
}

// A viewport at its limit: each line in costs a line out. Moving the whole text each time would take minutes here.
TEST(TextModelFlood, LinesInAndOut) {
  TextModel model;
  const std::string line(45, 'x');
  for (int i = 0; i < 300000; ++i) {
    model.Append(line);
    model.Append("\r\n");
    model.KeepLast(2000000);
  }
  EXPECT_EQ(model.Length(), 2000000);
  EXPECT_TRUE(model.Text().ends_with("xx\r\n"));
}

}  // namespace
}  // namespace corvid
