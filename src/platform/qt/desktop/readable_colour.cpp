// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/desktop/readable_colour.h"

#include <algorithm>
#include <cmath>

namespace corvid {

namespace {

constexpr double LeastContrast = 4.5;

double Linear(double part) {
  return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

double Luminance(const QColor& colour) {
  return 0.2126 * Linear(static_cast<double>(colour.redF())) + 0.7152 * Linear(static_cast<double>(colour.greenF())) +
         0.0722 * Linear(static_cast<double>(colour.blueF()));
}

QColor Mixed(const QColor& colour, const QColor& with, int share, int whole) {
  const auto part = [&](int a, int b) { return (a * (whole - share) + b * share) / whole; };
  return {part(colour.red(), with.red()), part(colour.green(), with.green()), part(colour.blue(), with.blue())};
}

}  // namespace

QColor ColourOf(int32 value) {
  const auto part = [&](int shift) { return (value >> shift) & 0xFF; };
  return {part(0), part(8), part(16)};
}

double Contrast(const QColor& one, const QColor& other) {
  const auto [low, high] = std::minmax({Luminance(one), Luminance(other)});  // values, not references to them
  return (high + 0.05) / (low + 0.05);
}

QColor ReadableColour(const QColor& colour, const QColor& background) {
  const QColor black(0, 0, 0);
  const QColor white(255, 255, 255);
  const QColor& far = Contrast(black, background) > Contrast(white, background) ? black : white;
  constexpr int Steps = 20;
  for (int share = 0; share < Steps; ++share) {
    const QColor tried = Mixed(colour, far, share, Steps);
    if (Contrast(tried, background) >= LeastContrast) return tried;
  }
  return far;
}

}  // namespace corvid
