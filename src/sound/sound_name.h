// SPDX-License-Identifier: GPL-3.0-or-later
// What the name of a sound asks for: speech, a random choice, one of the kinds of file.
#pragma once

#include <functional>
#include <string>

#include "core/types.h"

namespace corvid {

// A whole number from 1 to highest, each with equal chance. highest is at least 1.
using RandomNumber = std::function<int16(int16 highest)>;
RandomNumber Chance();

enum class SoundKind { Buffered, StreamedOgg, Mp3 };

// Which pool plays a name (in upper case). "X.OGG!" is decoded whole, and loses what follows its ".OGG".
SoundKind KindOfSound(std::string& name);
// Replaces "*" and the 1 to 3 digits behind it by a number from 1 to theirs: "door*3.wav" is one of three doors. A name
// that ends in those digits stays as it is. False when other than 1 to 3 digits follow the "*".
bool ChooseNumbered(std::string& name, const RandomNumber& random);
// True for a name that is not looked for in the folders of sounds: with a drive, or from the root.
bool IsWholePath(const std::string& name);

}  // namespace corvid
