// SPDX-License-Identifier: GPL-3.0-or-later
#include "sessions/output.h"

#include <algorithm>
#include <optional>

#include "core/text.h"

namespace corvid {

namespace {

constexpr int32 RichViewEnd = 1 << 30;
constexpr int32 PlainViewEnd = 62000;
constexpr int32 PlainWindowSize = 30;

// Writes at the caret, in place of what is selected there.
void Write(TextModel& viewport, std::string_view text) {
  if (!text.empty()) viewport.SetSelText(text);
}

// ViewEnd stands for the end of text also where more text than that has come over from the other family.
void GoToEnd(TextModel& viewport, int32 viewEnd) {
  viewport.SetSelStart(std::max(viewEnd, viewport.Length()));
}

void MoveText(TextModel& from, TextModel& to) {
  if (from.Length() == 0) return;
  to.SetText(from.View());
  to.SetSelStart(from.SelStart());
  from.SetText("");
}

}  // namespace

OutputWindows::OutputWindows(ScriptState& script, OptionsState& options, SessionState& sessions, Platform& platform)
    : script_(script), options_(options), sessions_(sessions), platform_(platform) {}

void OutputWindows::CreateViewports(int16 Index) {
  if (sessions_.EditViewPortR[Index]) return;
  sessions_.EditViewPortR[Index] = std::make_unique<TextModel>();
  sessions_.editViewportT[Index] = std::make_unique<TextModel>();
  for (auto* family : {&sessions_.EditViewPortR, &sessions_.editViewportT}) {
    TextModel& viewport = *(*family)[Index];
    viewport.SetLocked(true);
    viewport.SetVisible(false);
    if (Index == 0) continue;
    // Colours that the player chose hold for sessions opened later too.
    const TextModel& first = *(*family)[0];
    viewport.SetBackColor(first.BackColor());
    viewport.SetForeColor(first.ForeColor());
    viewport.SetSelColor(first.SelColor());
  }
  platform_.face.AttachViewport(Index, true, *sessions_.EditViewPortR[Index]);
  platform_.face.AttachViewport(Index, false, *sessions_.editViewportT[Index]);
}

void OutputWindows::DisplayOutputBuffer(int16 Index) {
  std::string& waiting = sessions_.OutputBuffer[Index];
  TextModel& viewport = sessions_.OutputWindow(Index);
  if (waiting.empty() || viewport.SelLength() != 0) return;
  const int32 remembered = viewport.SelStart();
  GoToEnd(viewport, sessions_.ViewEnd);
  if (options_.ColourDisplay) {
    DisplayColours(Index, waiting);
  } else {
    viewport.SetSelLength(0);
    viewport.SetSelText(waiting);
  }
  if (sessions_.ReadPosition) viewport.SetSelStart(remembered);
  CheckViewPortSize(Index);
  waiting.clear();
}

std::optional<OutputWindows::Tag> OutputWindows::FindTag(std::string_view word) const {
  if (SameText(word, "BRIGHT")) return Tag{true, true, 0};
  if (SameText(word, "NORMAL")) return Tag{true, false, 0};
  constexpr std::size_t first = 30;
  constexpr std::size_t last = 49;
  for (std::size_t i = first; i <= last; ++i) {
    const std::string& name = script_.ColourNames[i];
    if (!name.empty() && SameText(word, name)) return Tag{false, false, script_.ColourValues[i]};
  }
  return std::nullopt;
}

void OutputWindows::DisplayColours(int16 Index, std::string_view l2) {
  if (l2.empty()) return;
  TextModel& viewport = *sessions_.EditViewPortR[Index];
  GoToEnd(viewport, sessions_.ViewEnd);
  viewport.SetSelLength(0);
  std::size_t written = 0;  // what stands before this place is in the viewport
  std::size_t open = l2.find('<');
  std::size_t close = 0;  // first ">" behind open; looked for again only once it is passed
  while (open != std::string_view::npos) {
    if (close <= open) close = l2.find('>', open + 1);
    if (close == std::string_view::npos) break;
    const std::optional<Tag> tag = FindTag(l2.substr(open + 1, close - open - 1));
    if (tag) {
      Write(viewport, l2.substr(written, open - written));
      written = close + 1;
      if (tag->Weight) {
        viewport.SetSelBold(tag->Bold);
      } else if (tag->Colour != 0) {
        viewport.SetSelColor(tag->Colour);
      }
      open = l2.find('<', written);
    } else {
      open = l2.find('<', open + 1);  // no tag, but the next "<" may begin one
    }
  }
  Write(viewport, l2.substr(written));
}

void OutputWindows::CheckViewPortSize(int16 Index) {
  TextModel& viewport = sessions_.OutputWindow(Index);
  const std::int64_t most = static_cast<std::int64_t>(options_.OutputWindowSize) * 1000;
  const std::int64_t length = viewport.Length();
  if (length <= most) return;
  const std::int64_t kept = most * 3 / 4;
  const std::int64_t caret = viewport.SelStart() - (length - kept);
  viewport.KeepLast(static_cast<int32>(kept));
  viewport.SetSelStart(static_cast<int32>(std::max<std::int64_t>(0, caret)));
}

void OutputWindows::CurrentViewPort(int16 channel) {
  for (int16 slot = 0; slot <= sessions_.SessionHigh; ++slot) {
    if (!sessions_.EditViewPortR[slot]) continue;
    const bool shown = slot == channel;
    sessions_.EditViewPortR[slot]->SetVisible(shown && sessions_.RichFamily);
    sessions_.editViewportT[slot]->SetVisible(shown && !sessions_.RichFamily);
  }
}

void OutputWindows::SelectOutputWindow(bool IsColour) {
  sessions_.RichFamily = IsColour;
  sessions_.ViewEnd = IsColour ? RichViewEnd : PlainViewEnd;
  if (!IsColour) options_.OutputWindowSize = PlainWindowSize;
  for (int16 slot = 0; slot <= sessions_.SessionHigh; ++slot) {
    if (!sessions_.EditViewPortR[slot]) continue;
    TextModel& rich = *sessions_.EditViewPortR[slot];
    TextModel& plain = *sessions_.editViewportT[slot];
    if (IsColour) {
      MoveText(plain, rich);
    } else {
      MoveText(rich, plain);
    }
  }
  CurrentViewPort(script_.CurrentSocket);
}

void OutputWindows::ResizeForm() {
  platform_.face.ResizeForm(options_.OutputWindowPercent);
}

void OutputWindows::ClearViewports(int16 Index) {
  sessions_.OutputBuffer[Index].clear();
  sessions_.EditViewPortR[Index]->SetText("");
  sessions_.editViewportT[Index]->SetText("");
  platform_.face.NoteCleared(Index);
}

void OutputWindows::AppendNow(int16 Index, std::string_view text) {
  TextModel& viewport = sessions_.OutputWindow(Index);
  GoToEnd(viewport, sessions_.ViewEnd);
  viewport.SetSelLength(0);
  viewport.SetSelText(text);
  CheckViewPortSize(Index);
}

void OutputWindows::Queue(int16 Index, std::string_view text) {
  std::string& waiting = sessions_.OutputBuffer[Index];
  waiting += text;
  // What a viewport can never show again need not wait for it.
  const std::size_t shown = static_cast<std::size_t>(std::max<int32>(0, options_.OutputWindowSize)) * 1000;
  constexpr std::size_t spare = std::size_t{1} << 20;
  if (waiting.size() > 4 * shown + 2 * spare) waiting.erase(0, waiting.size() - 2 * shown - spare);
}

}  // namespace corvid
