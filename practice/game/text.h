// SPDX-License-Identifier: GPL-3.0-or-later
// Colours, wrapping and words: all that shapes a line before it is sent.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace corvid::practice {

// Parameters of the SGR escape sequence, named by what they paint. Together they use bold, the seven bright-enough
// colours and combinations, since a client has to know them all.
namespace ink {
inline constexpr std::string_view RoomName = "1;36";
inline constexpr std::string_view Exits = "32";
inline constexpr std::string_view Thing = "33";
inline constexpr std::string_view Person = "35";
inline constexpr std::string_view Foe = "31";
inline constexpr std::string_view Blow = "1;31";
inline constexpr std::string_view Miss = "37";
inline constexpr std::string_view Board = "34";
inline constexpr std::string_view Title = "1";
inline constexpr std::string_view Hint = "1;37";
inline constexpr std::string_view Chat = "36";
inline constexpr std::string_view Newbie = "1;32";
inline constexpr std::string_view Auction = "1;33";
inline constexpr std::string_view Tell = "1;35";
}  // namespace ink

std::string Paint(std::string_view colour, std::string_view text);  // text in the colour, then back to normal
std::string StripColours(std::string_view text);                    // without its SGR sequences

// Cuts text at blanks into lines of at most width codes, colours not counted; a longer word stands alone. "\n" always
// ends a line.
std::vector<std::string> Wrap(std::string_view text, std::size_t width);

std::string Lower(std::string_view text);        // A to Z only
std::string Capitalised(std::string_view text);  // first letter upper, others lower
std::string Trimmed(std::string_view text);      // without blanks at both ends
std::string TakeWord(std::string& text);         // cuts the first word and the blanks behind it off text
bool StartsWith(std::string_view text, std::string_view start);  // case-blind; an empty start is never one
std::string Joined(const std::vector<std::string>& parts);       // "a, b and c"
std::string Counted(int count, std::string_view noun);           // "1 coin", "2 coins"
// A whole number from 0 to limit, or -1 for anything else.
int ParseCount(std::string_view text, int limit);

}  // namespace corvid::practice
