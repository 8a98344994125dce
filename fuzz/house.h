// SPDX-License-Identifier: GPL-3.0-or-later
// A started program in memory, for readers that need all of it. It lives in virtual time and ends by itself when a
// script would let it wait for ever.
#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "app/corvid.h"
#include "core/number.h"
#include "core/scramble.h"
#include "core/text.h"
#include "fuzz.h"
#include "platform/memory/memory_platform.h"

namespace corvid::fuzz {

struct House {
  // files are put into the data folder before the start.
  explicit House(const std::vector<std::pair<std::string, std::string>>& files = {}) {
    memory.face.RecordDisplay = false;
    memory.files.Put("/data/start.set", "; nothing\r\n");
    SpeechState speech;
    speech.SpeechType = {0, 3, 3, 3, 3, 3, 3};
    memory.files.Put("/data/speech.ini", Scramble(SpeechSettings::FileText(speech)));
    for (const auto& [name, text] : files) memory.files.Put("/data/" + name, text);
    memory.loop.BeforePump = [this] {
      if (++pumps > MostPumps) memory.loop.End(0);
    };
    started = corvid.Start({.DataFolder = "/data", .Connect = {}, .PracticePort = {}});
  }
  // Runs a line as if it were typed, and lets its jobs be done.
  void Do(const std::string& line) {
    int16 options = 0;
    int16 outchannel = CurrentSession;
    std::string error;
    Parameters rvar;
    corvid.scriptState.CommandDepth = 0;
    corvid.upcalls.commands.ProcessCommand(line, options, error, rvar, outchannel);
    Require(corvid.scriptState.CommandDepth >= 0, "the depth of nested lines");
    Calm();
  }
  void Calm() {
    pumps = 0;
    memory.effects.Clear();
  }

  static constexpr int MostPumps = 2000;
  int pumps = 0;
  bool started = false;
  MemoryPlatform memory;
  Corvid corvid{memory.All()};
};

// A script may well loop for a year; that is its author's affair and not worth a fuzzer's time. True for texts whose
// numbers and lists ask for few rounds in all. The scanner drops control codes, so that a number may hold some.
inline bool AsksForFewRounds(std::string_view bytes) {
  std::string text;
  for (const char c : bytes)
    if (static_cast<unsigned char>(c) >= ' ') text += c;
  double rounds = 1;
  std::size_t items = 1;
  std::size_t loops = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '|') ++items;
    if (StartsWithText(std::string_view(text).substr(i), "FO") ||
        StartsWithText(std::string_view(text).substr(i), "WH") ||
        StartsWithText(std::string_view(text).substr(i), "UN"))
      ++loops;
    if (!IsDigit(text[i]) || (i > 0 && IsDigit(text[i - 1]))) continue;
    std::size_t end = i;
    while (end < text.size() && (IsDigit(text[end]) || UpperChar(text[end]) == 'E' || UpperChar(text[end]) == 'D' ||
                                 text[end] == '+' || text[end] == '&' || text[end] == '.'))
      ++end;
    if (end - i > 3 || rounds > 100) return false;
    rounds *= 1 + Val(std::string_view(text).substr(i, end - i));
  }
  return rounds <= 100 && items <= 8 && loops <= 2;
}

}  // namespace corvid::fuzz
