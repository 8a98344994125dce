// SPDX-License-Identifier: GPL-3.0-or-later
// The flood is made for measuring clients, so it must not be the slower side: lines are joined from ready pieces.
#include <array>
#include <iterator>
#include <string_view>

#include "game/output.h"
#include "game/self.h"

namespace corvid::practice {

namespace {

constexpr int LinesToPrompt = 10;
constexpr std::size_t NumberWidth = 7;

struct FloodLine {
  std::string_view Colour;  // of the number
  std::string_view Text;    // with the number, a blank and the full stop 47 codes, or close to it
};

constexpr FloodLine FloodLines[] = {
    {"31", "a raven circles over the old clock tower"},  {"32", "the wind combs the grass of the orchard"},
    {"33", "coins clink on the counter of the shop"},    {"34", "still water mirrors the reeds, and you"},
    {"35", "Marta carries nine mugs in her two hands"},  {"36", "the bell hums long after it has been rung"},
    {"37", "dust dances in the light above the stair"},  {"1;31", "the boar grunts, and the brambles shake"},
    {"1;32", "Finch laughs at something far too small"}, {"1;33", "sparks fly from the anvil, one by one"},
};

std::array<char, NumberWidth> Digits(int number) {
  std::array<char, NumberWidth> digits{};
  for (std::size_t i = NumberWidth; i-- > 0; number /= 10) digits[i] = static_cast<char>('0' + number % 10);
  return digits;
}

void AppendLine(std::string& out, int number, bool colour) {
  const FloodLine& line = FloodLines[static_cast<std::size_t>(number) % std::size(FloodLines)];
  const auto digits = Digits(number);
  if (colour) out.append("\x1b[").append(line.Colour).append("m");
  out.append(digits.data(), digits.size());
  if (colour) out.append("\x1b[0m");
  out.append(" ").append(line.Text).append("\r\n");
}

}  // namespace

void PourFlood(Connection& who, std::size_t upTo) {
  FloodRun& flood = who.Flood;
  if (!flood.Running()) return;
  if (who.AtPrompt) who.Out += "\r\n";
  who.AtPrompt = false;
  who.Out.reserve(upTo + 1024);
  while (flood.Running() && who.Out.size() < upTo) {
    AppendLine(who.Out, ++flood.Sent, flood.Colour);
    // A prompt inside the flood is a line that the next line ends, as it would be in a busy game.
    if (flood.Sent % LinesToPrompt == 0) who.Out.append(flood.Prompt).append("\r\n");
  }
  if (flood.Running()) return;
  const int total = flood.Total;
  flood = {};
  SendLine(who, "flood done " + std::to_string(total));
}

}  // namespace corvid::practice
