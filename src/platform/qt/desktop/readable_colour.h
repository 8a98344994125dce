// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>

#include "core/types.h"

namespace corvid {

// The colour of a blue-green-red value.
QColor ColourOf(int32 value);
// Contrast of two colours, 1 (none) to 21 (black and white), after the luminances that an eye sees.
double Contrast(const QColor& one, const QColor& other);
// colour, made darker or lighter until it can be read on background (contrast 4.5 at least). Games choose their colours
// for a black screen; bright yellow on a white window is lost to those who see little.
QColor ReadableColour(const QColor& colour, const QColor& background);

}  // namespace corvid
