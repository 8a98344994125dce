// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/desktop/text_mirror.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QCoreApplication>
#include <QScrollBar>
#include <QTextBlock>
#include <random>

#include "platform/qt/desktop/readable_colour.h"

namespace corvid {
namespace {

// A text and the window that shows it.
class Mirrored : public testing::Test {
 protected:
  void Show(TextWindow::Kind kind = TextWindow::Kind::Entry) {
    window = std::make_unique<TextWindow>(kind, "Entry", nullptr);
    text.SetLocked(kind == TextWindow::Kind::Output);
    mirror.ShowIn(window.get());
    window->resize(600, 300);
    window->show();
    QCoreApplication::processEvents();
  }

  std::string Shown() {
    mirror.Flush();
    return window->toPlainText().toStdString();
  }

  void Append(std::string_view added) {
    text.SetSelStart(text.Length());
    text.SetSelText(added);
  }

  QTextCursor Cursor() {
    mirror.Flush();
    return window->textCursor();
  }

  TextModel text;
  std::unique_ptr<TextWindow> window;
  TextMirror mirror{text, [] {}};
};

TEST_F(Mirrored, ShowsWhatIsAddedAndTypedAndTaken) {
  Show();
  Append("one\r\ntwo\r\n");
  EXPECT_EQ("one\ntwo\n", Shown());
  text.SetSelStart(4);  // between CR and LF
  text.SetSelStart(5);
  text.SetSelText("and ");
  EXPECT_EQ("one\nand two\n", Shown());
  text.Select(3, 5);
  text.SetSelText("");
  EXPECT_EQ("oneand two\n", Shown());
  text.SetText("");
  EXPECT_EQ("", Shown());
}

TEST_F(Mirrored, ShowsATextThatWasThereBefore) {
  Append("before\r\n");
  Show();
  EXPECT_EQ("before\n", Shown());
}

TEST_F(Mirrored, ACharacterThatComesInTwoPiecesIsOne) {
  Show();
  Append("caf\xC3");
  EXPECT_EQ("caf\u00C3", Shown());
  Append("\xA9");
  EXPECT_EQ("caf\u00E9", Shown());
  Append("\r");
  EXPECT_EQ("caf\u00E9\n", Shown());
  Append("\nnext");
  EXPECT_EQ("caf\u00E9\nnext", Shown());
}

TEST_F(Mirrored, DropsInFrontInTheMiddleOfLinesCharactersAndBreaks) {
  Show();
  Append("one\r\ncaf\xC3\xA9\r\nlast");
  EXPECT_EQ("one\ncaf\u00E9\nlast", Shown());
  text.KeepLast(text.Length() - 2);
  EXPECT_EQ("e\ncaf\u00E9\nlast", Shown());
  text.KeepLast(text.Length() - 2);  // between CR and LF
  EXPECT_EQ("\ncaf\u00E9\nlast", Shown());
  text.KeepLast(7);  // behind the first half of the e
  EXPECT_EQ("\u00A9\nlast", Shown());
  Append("!");
  EXPECT_EQ("\u00A9\nlast!", Shown());
}

TEST_F(Mirrored, BreakSplitByTheHeadKeepsPlacesRight) {
  Show();
  Append("ab\r\ncd\r\nef");
  mirror.Flush();
  text.KeepLast(7);  // "\ncd\r\nef"
  text.SetSelStart(5);
  EXPECT_EQ(4, Cursor().position());
  EXPECT_EQ("\ncd\nef", Shown());
}

TEST_F(Mirrored, TheCaretFollowsTheText) {
  Show();
  Append("one\r\ntwo \xF0\x9F\x90\xA6 three\r\n");
  text.SetSelStart(13);  // behind the bird
  EXPECT_EQ(1, Cursor().blockNumber());
  EXPECT_EQ(6, Cursor().positionInBlock());
  text.Select(13, 5);
  EXPECT_EQ(10, Cursor().anchor());
  EXPECT_EQ(4, Cursor().position());
}

TEST_F(Mirrored, WhatTheMouseSelectsIsTheTextsSelection) {
  Show();
  Append("one\r\ncaf\xC3\xA9 two\r\nthree");
  QTextCursor cursor = Cursor();
  cursor.setPosition(9);
  cursor.setPosition(4, QTextCursor::KeepAnchor);
  window->setTextCursor(cursor);
  EXPECT_EQ("caf\xC3\xA9 ", text.SelText());
  EXPECT_TRUE(text.CaretAtStart());
  EXPECT_EQ(4, Cursor().position());
  cursor.setPosition(12);
  window->setTextCursor(cursor);
  EXPECT_EQ(14, text.SelStart());
  EXPECT_EQ(0, text.SelLength());
}

TEST_F(Mirrored, ASelectionMadeWhileTextWaitsIsKept) {
  Show();
  Append("one\r\ntwo\r\n");
  QTextCursor cursor = Cursor();
  text.Append("three\r\n");
  text.KeepLast(text.Length() - 5);
  cursor.setPosition(4);
  cursor.setPosition(7, QTextCursor::KeepAnchor);
  window->setTextCursor(cursor);
  EXPECT_EQ("two", text.SelText());
  EXPECT_EQ("two\nthree\n", Shown());
  EXPECT_EQ("two", window->textCursor().selectedText().toStdString());
}

TEST_F(Mirrored, WhatAScreenReaderWritesIsInTheText) {
  Show();
  Append("one\r\ntwo\r\n");
  QTextCursor cursor = Cursor();
  cursor.setPosition(4);
  cursor.setPosition(7, QTextCursor::KeepAnchor);
  cursor.insertText(QString::fromUtf8("caf\xC3\xA9\nx"));
  EXPECT_EQ("one\r\ncaf\xC3\xA9\r\nx\r\n", text.Text());
  EXPECT_EQ("one\ncaf\u00E9\nx\n", Shown());
  Append("y");
  EXPECT_EQ("one\ncaf\u00E9\nx\ny", Shown());
}

TEST_F(Mirrored, WhatIsPastedComesWithTheTextsLineBreaks) {
  Show();
  Append("one ");
  mirror.Paste("a\nb");
  EXPECT_EQ("one a\r\nb", text.Text());
  text.SetLocked(true);
  mirror.Paste("more");
  EXPECT_EQ("one a\r\nb", text.Text());
}

TEST_F(Mirrored, ColoursAreReadableAndBoldIsBold) {
  Show(TextWindow::Kind::Output);
  text.SetSelColor(0xFFFF);  // yellow
  text.SetSelBold(true);
  Append("gold");
  text.SetSelColor(-1);
  text.SetSelBold(false);
  Append(" plain");
  mirror.Flush();
  QTextCursor cursor(window->document());
  cursor.setPosition(2);
  const QColor background = window->palette().color(QPalette::Base);
  EXPECT_EQ(QFont::Bold, cursor.charFormat().fontWeight());
  EXPECT_GE(Contrast(cursor.charFormat().foreground().color(), background), 4.5);
  cursor.setPosition(8);
  EXPECT_FALSE(cursor.charFormat().hasProperty(QTextFormat::ForegroundBrush));
}

TEST_F(Mirrored, AnInsertedCharacterIsTheOnlyChange) {
  Show();
  Append("aaa\r\nbbb\r\n");
  mirror.Flush();
  std::vector<std::array<int, 3>> changes;
  QObject::connect(window->document(), &QTextDocument::contentsChange, [&](int position, int removed, int added) {
    changes.push_back({position, removed, added});
  });
  text.SetSelStart(2);
  text.SetSelText("a");
  mirror.Flush();
  ASSERT_EQ(1U, changes.size());
  EXPECT_EQ((std::array<int, 3>{2, 0, 1}), changes[0]);
}

TEST_F(Mirrored, TheNewestTextIsSeen) {
  Show(TextWindow::Kind::Output);
  for (int i = 0; i < 200; ++i) {
    Append("line " + std::to_string(i) + "\r\n");
    if (i % 7 == 0) mirror.Flush();
  }
  mirror.Flush();
  EXPECT_EQ(window->verticalScrollBar()->maximum(), window->verticalScrollBar()->value());
  EXPECT_GT(window->verticalScrollBar()->value(), 100);
}

TEST_F(Mirrored, LongLinesAreFollowedAfterTheyWereMeasured) {
  Show(TextWindow::Kind::Output);
  for (int i = 0; i < 30; ++i) {
    Append(std::string(300, 'x') + "\r\n");
    mirror.Flush();
    QCoreApplication::processEvents();
    window->grab();
  }
  EXPECT_EQ(window->verticalScrollBar()->maximum(), window->verticalScrollBar()->value());
}

TEST_F(Mirrored, WhoScrollsBackIsLeftThere) {
  Show(TextWindow::Kind::Output);
  for (int i = 0; i < 100; ++i) Append("line\r\n");
  mirror.Flush();
  window->verticalScrollBar()->setValue(10);
  Append("more\r\n");
  mirror.Flush();
  EXPECT_EQ(10, window->verticalScrollBar()->value());
  window->verticalScrollBar()->setValue(window->verticalScrollBar()->maximum());
  Append("more\r\n");
  mirror.Flush();
  EXPECT_EQ(window->verticalScrollBar()->maximum(), window->verticalScrollBar()->value());
}

TEST_F(Mirrored, TheCaretOfTheEntryIsSeen) {
  Show();
  for (int i = 0; i < 50; ++i) Append("line\r\n");
  mirror.Flush();
  EXPECT_TRUE(window->viewport()->rect().intersects(window->cursorRect()));
}

TEST_F(Mirrored, AFloodIsCutBeforeItIsShown) {
  Show(TextWindow::Kind::Output);
  std::string line = "The quick brown fox jumps over the lazy dog.\r\n";
  for (int i = 0; i < 20000; ++i) {
    Append(line);
    if (text.Length() > 32000) text.KeepLast(24000);
  }
  while (Shown().size() != text.View().size() - static_cast<std::size_t>(window->document()->blockCount() - 1)) {
  }
  EXPECT_TRUE(window->toPlainText().endsWith("dog.\n"));
  EXPECT_LT(window->document()->blockCount(), 1000);
}

// Any edits in any order leave the window as the text says.
TEST_F(Mirrored, RandomEditsAgree) {
  Show();
  std::mt19937 random(20240611);
  const auto below = [&](int32 limit) { return static_cast<int32>(random() % static_cast<unsigned>(limit)); };
  const std::vector<std::string> pieces{"a",    "\r\n", "\n",    "\r",   "\xC3\xA9",   "\xF0\x9F\x90\xA6",
                                        "\xC3", "\xA9", "word ", "\x80", "x\r\ny\r\n", "\xE2\x80\xA9"};
  for (int step = 0; step < 6000; ++step) {
    const std::string& piece = pieces[static_cast<std::size_t>(below(static_cast<int32>(pieces.size())))];
    switch (below(6)) {
      case 0:
      case 1:
        text.Append(piece);
        break;
      case 2:
        text.SetSelStart(below(text.Length() + 1));
        text.SetSelText(piece);
        break;
      case 3:
        text.Select(below(text.Length() + 1), below(text.Length() + 1));
        break;
      case 4:
        text.SetSelStart(below(text.Length() + 1));
        text.SetSelLength(below(4));
        text.SetSelText("");
        break;
      default:
        if (text.Length() > 40) text.KeepLast(text.Length() - below(20));
    }
    if (below(3) != 0) continue;
    const std::u16string wanted = DisplayText(text.View());
    mirror.Flush();
    ASSERT_EQ(QString::fromStdU16String(wanted), window->toPlainText()) << "step " << step;
    ASSERT_EQ(UnitsBefore(text.View(), static_cast<std::size_t>(text.Caret())), window->textCursor().position())
        << "step " << step;
  }
}

TEST(ReadableColour, LeavesWhatCanBeRead) {
  EXPECT_EQ(QColor(0, 0, 128), ReadableColour(QColor(0, 0, 128), Qt::white));
  EXPECT_EQ(QColor(255, 255, 0), ReadableColour(QColor(255, 255, 0), Qt::black));
}

TEST(ReadableColour, MendsWhatCannot) {
  for (const QColor& colour : {QColor(255, 255, 0), QColor(255, 255, 255), QColor(0, 255, 0), QColor(0, 255, 255)})
    EXPECT_GE(Contrast(ReadableColour(colour, Qt::white), Qt::white), 4.5);
  EXPECT_GE(Contrast(ReadableColour(QColor(0, 0, 255), Qt::black), Qt::black), 4.5);
}

TEST(ColourOf, ReadsBlueGreenRed) {
  EXPECT_EQ(QColor(255, 0, 0), ColourOf(0xFF));
  EXPECT_EQ(QColor(0, 0, 255), ColourOf(0xFF0000));
}

}  // namespace
}  // namespace corvid
