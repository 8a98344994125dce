// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/version.h"

namespace corvid {

namespace {

std::string Padded(int number, std::size_t width) {
  const std::string digits = std::to_string(number);
  return std::string(digits.size() < width ? width - digits.size() : 0, '0') + digits;
}

}  // namespace

std::string DottedVersion() {
  return CORVID_VERSION;
}

std::string VersionDigits() {
  return std::to_string(CORVID_VERSION_MAJOR) + Padded(CORVID_VERSION_MINOR, 2) + Padded(CORVID_VERSION_PATCH, 3);
}

}  // namespace corvid
