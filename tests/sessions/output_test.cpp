// SPDX-License-Identifier: GPL-3.0-or-later
#include "sessions/output.h"

#include "fixture.h"

namespace corvid {
namespace {

class OutputTest : public SessionTest {
 protected:
  TextModel& View() { return state.OutputWindow(0); }
  void UseColours() {
    options.ColourDisplay = true;
    output.SelectOutputWindow(true);
  }
};

// What a rich viewport was given, piece by piece: "text/colour/bold".
class Pieces : public TextObserver {
 public:
  void TextInserted(const TextModel&, int32, std::string_view text, int32 color, bool bold) override {
    All.push_back(std::string(text) + "/" + std::to_string(color) + (bold ? "/bold" : ""));
  }
  void TextRemoved(const TextModel&, int32, std::string_view) override {}
  void SelectionMoved(const TextModel&) override {}
  void StateChanged(const TextModel&) override {}
  std::vector<std::string> All;
};

TEST_F(OutputTest, MovesWaitingTextToTheEnd) {
  View().SetText("old\r\n");
  state.OutputBuffer[0] = "new\r\n";
  output.DisplayOutputBuffer(0);
  EXPECT_EQ(View().Text(), "old\r\nnew\r\n");
  EXPECT_EQ(View().SelStart(), 10);
  EXPECT_EQ(state.OutputBuffer[0], "");
}

TEST_F(OutputTest, LeavesTheCaretOfAReader) {
  View().SetText("old\r\n");
  View().SetSelStart(2);
  state.ReadPosition = true;
  state.OutputBuffer[0] = "new\r\n";
  output.DisplayOutputBuffer(0);
  EXPECT_EQ(View().SelStart(), 2);
}

TEST_F(OutputTest, LeavesASelectionAlone) {
  View().SetText("old\r\n");
  View().Select(0, 3);
  state.OutputBuffer[0] = "new\r\n";
  output.DisplayOutputBuffer(0);
  EXPECT_EQ(View().Text(), "old\r\n");
  EXPECT_EQ(state.OutputBuffer[0], "new\r\n");
  View().SetSelStart(0);
  output.DisplayOutputBuffer(0);
  EXPECT_EQ(View().Text(), "old\r\nnew\r\n");
}

TEST_F(OutputTest, DropsTheOldestQuarter) {
  options.OutputWindowSize = 5;
  std::string text(5000, 'a');
  View().SetText(text);
  output.CheckViewPortSize(0);
  EXPECT_EQ(View().Length(), 5000) << "exactly full is not too long";
  text += "b";
  View().SetText(text);
  View().SetSelStart(3000);
  output.CheckViewPortSize(0);
  EXPECT_EQ(View().Text(), text.substr(5001 - 3750));
  EXPECT_EQ(View().SelStart(), 3000 - (5001 - 3750));
  View().SetText(text);
  View().SetSelStart(100);
  output.CheckViewPortSize(0);
  EXPECT_EQ(View().SelStart(), 0);
}

TEST_F(OutputTest, DropsTheOldestWhenWaitingTextFillsTheWindow) {
  options.OutputWindowSize = 1;
  View().SetText(std::string(900, 'a'));
  View().SetSelStart(500);
  state.ReadPosition = true;
  state.OutputBuffer[0] = std::string(100, 'b');
  output.DisplayOutputBuffer(0);
  EXPECT_EQ(View().Length(), 1000) << "full";
  state.OutputBuffer[0] = "c";
  output.DisplayOutputBuffer(0);
  EXPECT_EQ(View().Text(), std::string(649, 'a') + std::string(100, 'b') + "c");
  EXPECT_EQ(View().SelStart(), 500 - 251) << "the reader stays where the text is";
}

TEST_F(OutputTest, ShowsWaitingTextInColours) {
  UseColours();
  state.OutputBuffer[0] = "a <RED>b < c\r\n";
  output.DisplayOutputBuffer(0);
  EXPECT_EQ(View().Text(), "a b < c\r\n");
  options.ColourDisplay = false;
  output.SelectOutputWindow(false);
  state.OutputBuffer[0] = "<RED>d\r\n";
  output.DisplayOutputBuffer(0);
  EXPECT_EQ(View().Text(), "a b < c\r\n<RED>d\r\n");
}

TEST_F(OutputTest, ReadsASizeOfAnyNumber) {
  options.OutputWindowSize = 2000000;
  View().SetText("a");
  output.CheckViewPortSize(0);
  EXPECT_EQ(View().Text(), "a");
}

TEST_F(OutputTest, BoundsWhatWaitsBehindASelection) {
  View().SetText("old");
  View().Select(0, 3);
  const std::string block(100000, 'x');
  for (int i = 0; i < 100; ++i) output.Queue(0, block);
  EXPECT_LT(state.OutputBuffer[0].size(), std::size_t{3} << 20);
  EXPECT_GT(state.OutputBuffer[0].size(), 30000U);
}

struct Written {
  const char* Text;
  std::vector<std::string> Pieces;
};

TEST_F(OutputTest, WritesColours) {
  UseColours();
  const Written cases[] = {
      {"", {}},
      {"plain", {"plain/-1"}},
      {"a <RED>b", {"a /-1", "b/255"}},
      {"<bright>x<Normal>y", {"x/-1/bold", "y/-1"}},
      {"<GREEN><BRIGHT>x", {"x/65280/bold"}},
      {"<RED><BRIGHT>a<NORMAL>b", {"a/255/bold", "b/255"}},  // the colour outlives the weight
      {"a <WHITE>b<RED BACKGROUND>c<DEFAULT>d", {"a /-1", "b/-1", "c/-1", "d/-1"}},
      {"a < b", {"a < b/-1"}},
      {"a < b > c", {"a < b > c/-1"}},
      {"a < b <RED>c", {"a < b /-1", "c/255"}},
      {"<sword> <<RED>x", {"<sword> </-1", "x/255"}},
      {"<>x", {"<>x/-1"}},
      {"<RED", {"<RED/-1"}},
      {"x<RED>", {"x/-1"}},
      {"<RED >x", {"<RED >x/-1"}},
  };
  for (const Written& c : cases) {
    TextModel& rich = *state.EditViewPortR[0];
    Pieces pieces;
    rich.SetText("");
    rich.SetSelColor(-1);
    rich.SetSelBold(false);
    rich.SetObserver(&pieces);
    output.DisplayColours(0, c.Text);
    rich.SetObserver(nullptr);
    EXPECT_EQ(pieces.All, c.Pieces) << c.Text;
  }
}

TEST_F(OutputTest, GoesOnInTheColourOfTheLastTag) {
  UseColours();
  output.DisplayColours(0, "<RED>a");
  Pieces pieces;
  state.EditViewPortR[0]->SetObserver(&pieces);
  output.DisplayColours(0, "b");
  state.EditViewPortR[0]->SetObserver(nullptr);
  EXPECT_EQ(pieces.All, (Texts{"b/255"}));
}

TEST_F(OutputTest, MovesTheTextWithTheFamily) {
  sessions.ResizeConnections(1);
  state.editViewportT[0]->SetText("zero");
  state.editViewportT[1]->SetText("one");
  options.OutputWindowSize = 99;
  output.SelectOutputWindow(true);
  EXPECT_TRUE(state.RichFamily);
  EXPECT_EQ(state.ViewEnd, 1 << 30);
  EXPECT_EQ(options.OutputWindowSize, 99);
  EXPECT_EQ(state.EditViewPortR[1]->Text(), "one");
  EXPECT_EQ(state.editViewportT[1]->Text(), "");
  EXPECT_TRUE(state.EditViewPortR[0]->Visible());
  EXPECT_FALSE(state.editViewportT[0]->Visible());
  output.SelectOutputWindow(false);
  EXPECT_EQ(state.ViewEnd, 62000);
  EXPECT_EQ(options.OutputWindowSize, 30);
  EXPECT_EQ(state.editViewportT[0]->Text(), "zero");
  EXPECT_FALSE(state.EditViewPortR[0]->Visible());
}

TEST_F(OutputTest, AppendsBehindALongTextThatCameOver) {
  UseColours();
  options.OutputWindowSize = 200;
  View().SetText(std::string(100000, 'a'));
  options.ColourDisplay = false;
  output.SelectOutputWindow(false);
  state.OutputBuffer[0] = "new";
  output.DisplayOutputBuffer(0);
  EXPECT_EQ(View().Text(), std::string(22497, 'a') + "new");
}

TEST_F(OutputTest, ShowsOneViewportAlone) {
  sessions.ResizeConnections(2);
  output.CurrentViewPort(1);
  EXPECT_FALSE(state.OutputWindow(0).Visible());
  EXPECT_TRUE(state.OutputWindow(1).Visible());
  EXPECT_FALSE(state.OutputWindow(2).Visible());
  for (int16 slot = 0; slot <= 2; ++slot) EXPECT_TRUE(state.OutputWindow(slot).Locked());
}

TEST_F(OutputTest, GivesNewViewportsTheColoursOfTheFirst) {
  state.editViewportT[0]->SetBackColor(5);
  state.editViewportT[0]->SetForeColor(6);
  state.EditViewPortR[0]->SetBackColor(7);
  state.EditViewPortR[0]->SetSelColor(8);
  sessions.ResizeConnections(1);
  EXPECT_EQ(state.editViewportT[1]->BackColor(), 5);
  EXPECT_EQ(state.editViewportT[1]->ForeColor(), 6);
  EXPECT_EQ(state.EditViewPortR[1]->BackColor(), 7);
  EXPECT_EQ(state.EditViewPortR[1]->SelColor(), 8);
}

TEST_F(OutputTest, SharesTheHeight) {
  options.OutputWindowPercent = 55;
  output.ResizeForm();
  EXPECT_EQ(Of("resize"), (Texts{"55"}));
}

}  // namespace
}  // namespace corvid
