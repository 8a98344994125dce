// SPDX-License-Identifier: GPL-3.0-or-later
// Shows a text of the program in a window and brings back what the mouse or a screen reader selects there. The text is
// the truth. What changes is gathered and shown once per turn of the event loop, and under a flood less often, so that
// a window never holds up the game.
#pragma once

#include <QElapsedTimer>
#include <QHash>
#include <QObject>
#include <QTextCharFormat>
#include <QTimer>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "core/text_model.h"
#include "platform/qt/desktop/line_map.h"
#include "platform/qt/desktop/text_window.h"

namespace corvid {

class TextMirror : public QObject, public TextObserver {
 public:
  // Becomes the model's observer for good: the model may go first, but not change once this is gone. stateChanged:
  // visible, locked or colours have.
  TextMirror(TextModel& model, std::function<void()> stateChanged);

  // The window to show it in, from now on. Until then nothing is shown and hardly anything kept.
  void ShowIn(TextWindow* window);
  TextWindow* Window() const { return window_; }
  TextModel& Model() const { return model_; }
  // Brings the window up to date now. A part may stay for the next turn when it is large.
  void Flush();
  // Puts text (UTF-8) in place of the selection, as a paste with the mouse does.
  void Paste(const std::string& text);

  void TextInserted(const TextModel& model, int32 position, std::string_view text, int32 color, bool bold) override;
  void TextRemoved(const TextModel& model, int32 position, std::string_view removed) override;
  void SelectionMoved(const TextModel& model) override;
  void StateChanged(const TextModel& model) override;

 private:
  // A stretch of one look at the end of what waits.
  struct Run {
    std::int64_t Count;
    int32 Color;
    bool Bold;
  };
  void Schedule();
  void Grow(std::int64_t from, std::int64_t to);
  void OneLook(int32 color, bool bold);
  void DropRuns(std::int64_t count);
  void NoteHead(std::string_view removed);
  void ShowText();
  void DropHead();
  void ShowFirstLine();
  bool GoesBehind() const;
  void AppendSome();
  void Rewrite();
  bool ShowSelection();
  void ShowState();
  void Scroll(int before, bool caretMoved);
  void WatchScrolling();
  void ReadSelection();
  void ReadChange(int position, int removed, int added);
  std::string WindowText(int from, int to) const;
  std::string_view Line(std::size_t line) const;
  int PositionOf(std::int64_t code) const;
  int32 CodeOf(int position) const;
  const QTextCharFormat& Format(const Run& run);

  TextModel& model_;
  std::function<void()> stateChanged_;
  TextWindow* window_ = nullptr;
  LineMap map_;  // of what the window shows

  // What the window does not show yet. First headRemoved_ codes go in front; then of the text, codes from_ to to_ stand
  // in place of old_ codes of the window's.
  std::int64_t headRemoved_ = 0;
  std::string headPartial_;  // the removed beginning of what is now the first line
  bool edited_ = false;
  std::int64_t from_ = 0, to_ = 0, old_ = 0;
  std::vector<Run> runs_;  // looks of from_ to to_

  QHash<qint64, QTextCharFormat> formats_;
  bool applying_ = false;    // the window changes by our own doing
  bool importing_ = false;   // the text changes by the window's doing
  bool follow_ = true;       // the end of the text is kept in view
  bool readByKeys_ = false;  // the view follows the caret until the window loses the focus
  QTimer timer_;
  QElapsedTimer sinceFlush_;
  qint64 pause_ = 0;  // milliseconds between two flushes
};

}  // namespace corvid
