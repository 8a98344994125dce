// SPDX-License-Identifier: GPL-3.0-or-later
// Small rules for the text of scripts that need no state.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/types.h"

namespace corvid {

// The next line without its end, as a piece of text. pointer starts at 0 and is left on the last character of the line,
// counted from 1; it is -1 when the text is used up, which the last line without an end reports along with itself. LF,
// CR and CR LF end a line; an empty line between two others is reported once.
std::string_view ReadNextLine(std::string_view text, int32& pointer);

// The words between blanks, each without one trailing character of ,!?.:;"
std::vector<std::string> SplitLine(std::string_view inlineText);
// The text in braces, unless it begins with "{" and ends with "}" already.
std::string AddBraces(std::string_view instring);
// What lies between the double quotes around the trimmed text; without them the text as it stands.
std::string RemoveQuotes(std::string_view instring);
// Search strings carry an escaped character as byte 127 and the character plus 128; this gives the character back.
std::string RemoveEscapeCoding(std::string_view instring2);
bool IsWhiteSpace(std::string_view text);  // no code above 32; true for an empty text

}  // namespace corvid
