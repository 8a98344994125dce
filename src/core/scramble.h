// SPDX-License-Identifier: GPL-3.0-or-later
// The byte shift under which private files lie on disk: each code plus 128, line ends as they are. It hides a password
// from a glance, nothing more. It is its own inverse.
#pragma once

#include <string>
#include <string_view>

namespace corvid {

// Works line by line. Lines end in CR LF only, since a shifted code can be CR or LF alone; the line ends stay.
std::string Scramble(std::string_view text);

}  // namespace corvid
