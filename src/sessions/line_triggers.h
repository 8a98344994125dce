// SPDX-License-Identifier: GPL-3.0-or-later
// The place of the triggers in a line's way from the game to the player.
#pragma once

#include <string>

#include "core/types.h"

namespace corvid {

// The versions of one line. PlainLine has no escape sequences, TaggedLine has "<RED>" and the like in their place,
// SpokenLine is what is left for speech.
struct LineVersions {
  std::string PlainLine;
  std::string TaggedLine;
  std::string SpokenLine;
};

enum class LineFate { GoesOn, IsFinished };  // IsFinished: neither shown nor spoken

class LineTriggers {
 public:
  virtual ~LineTriggers() = default;
  // False lets a line pass without the cost of a look at the tables.
  virtual bool Any() const = 0;
  // Runs what matches the line of session Index; may replace all three texts. May pump events.
  virtual LineFate Fire(int16 Index, LineVersions& line) = 0;
};

// A program without triggers: every line goes on as it is.
class NoLineTriggers final : public LineTriggers {
 public:
  bool Any() const override { return false; }
  LineFate Fire(int16, LineVersions&) override { return LineFate::GoesOn; }
};

}  // namespace corvid
