// SPDX-License-Identifier: GPL-3.0-or-later
// How text reaches a session's viewport while the player may be reading in the middle of it.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/platform.h"
#include "script/options_state.h"
#include "script/script_state.h"
#include "sessions/session_state.h"

namespace corvid {

class OutputWindows {
 public:
  OutputWindows(ScriptState& script, OptionsState& options, SessionState& sessions, Platform& platform);

  // Makes both viewports of a slot, hidden and locked, and gives them to the face. Does nothing the second time.
  void CreateViewports(int16 Index);
  // Moves what waits in OutputBuffer to the viewport, unless the player holds a selection there.
  void DisplayOutputBuffer(int16 Index);
  // Adds text with colour tags to the rich viewport.
  void DisplayColours(int16 Index, std::string_view l2);
  // Drops the oldest part of a viewport that holds more than OutputWindowSize thousand characters.
  void CheckViewPortSize(int16 Index);
  void CurrentViewPort(int16 channel);     // shows this slot's viewport alone
  void SelectOutputWindow(bool IsColour);  // takes the rich or the plain family; texts move over
  void ResizeForm();                       // shares the window's height by OutputWindowPercent
  void ClearViewports(int16 Index);        // empties both, and OutputBuffer
  // Adds text at the end, past what waits in OutputBuffer; caret behind it, selection gone.
  void AppendNow(int16 Index, std::string_view text);

  // Adds text to OutputBuffer. While the player holds a selection the text waits; of more than a viewport can show by
  // far, the oldest goes.
  void Queue(int16 Index, std::string_view text);

 private:
  struct Tag {
    bool Weight;  // "BRIGHT" or "NORMAL", else a colour
    bool Bold;
    int32 Colour;  // blue-green-red; 0: no change
  };
  std::optional<Tag> FindTag(std::string_view word) const;

  ScriptState& script_;
  OptionsState& options_;
  SessionState& sessions_;
  Platform& platform_;
};

}  // namespace corvid
