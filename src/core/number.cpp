// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/number.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include "core/fault.h"
#include "core/text.h"

namespace corvid {

namespace {

std::size_t SkipDigits(std::string_view text, std::size_t position) {
  while (position < text.size() && IsDigit(text[position])) ++position;
  return position;
}

bool IsSign(std::string_view text, std::size_t position) {
  return position < text.size() && (text[position] == '+' || text[position] == '-');
}

// Length of the number at the start of the text; 0 when there is none. An exponent without digits is no part of it.
std::size_t NumberLength(std::string_view text) {
  const std::size_t start = IsSign(text, 0) ? 1 : 0;
  std::size_t end = SkipDigits(text, start);
  std::size_t digits = end - start;
  if (end < text.size() && text[end] == '.') {
    const std::size_t fraction = SkipDigits(text, end + 1);
    digits += fraction - end - 1;
    if (digits > 0) end = fraction;
  }
  if (digits == 0) return 0;
  if (end < text.size() && (text[end] == 'e' || text[end] == 'E')) {
    const std::size_t first = IsSign(text, end + 1) ? end + 2 : end + 1;
    const std::size_t last = SkipDigits(text, first);
    if (last > first) end = last;
  }
  return end;
}

// True when the exponent is what made the number unreadable by being too small rather than too large.
bool IsTiny(std::string_view number) {
  const std::size_t exponent = number.find_first_of("eE");
  if (exponent != std::string_view::npos) return exponent + 1 < number.size() && number[exponent + 1] == '-';
  return number.find_first_not_of("+-0") == number.find('.');
}

// A few plain digits, as most numbers of scripts are: added up in a fraction of the library's time.
bool IsShortWhole(std::string_view number) {
  constexpr std::size_t exact = 15;  // digits that any double holds
  return number.size() <= exact && SkipDigits(number, 0) == number.size();
}

double Convert(std::string_view number) {
  if (IsShortWhole(number)) {
    int64 value = 0;
    for (const char digit : number) value = value * 10 + (digit - '0');
    return static_cast<double>(value);
  }
  if (!number.empty() && number.front() == '+') number.remove_prefix(1);  // the library reads no plus sign
  double value = 0;
  const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
  if (error == std::errc::result_out_of_range) {
    if (IsTiny(number)) return 0;
    throw Fault(FaultKind::Overflow, "The number is too large");
  }
  return value;
}

template <typename Int>
Int RoundTo(double value) {
  const double rounded = std::nearbyint(value);  // the rounding mode is never changed: halves go to even
  if (!(rounded >= std::numeric_limits<Int>::min() && rounded <= std::numeric_limits<Int>::max()))
    throw Fault(FaultKind::Overflow, "The number does not fit");
  return static_cast<Int>(rounded);
}

}  // namespace

bool IsNumeric(std::string_view text) {
  const std::string_view number = TrimView(text);
  return !number.empty() && NumberLength(number) == number.size();
}

double Val(std::string_view text) {
  const std::size_t start = text.find_first_not_of(' ');
  if (start == std::string_view::npos) return 0;
  const std::string_view rest = text.substr(start);
  const std::size_t length = NumberLength(rest);
  return length == 0 ? 0 : Convert(rest.substr(0, length));
}

int16 ToInt16(double value) {
  return RoundTo<int16>(value);
}
int32 ToInt32(double value) {
  return RoundTo<int32>(value);
}

double ToNumber(std::string_view text) {
  if (!IsNumeric(text)) throw Fault(FaultKind::Type, "The text is no number");
  return Val(text);
}

float ToFloat(double value) {
  if (!(std::abs(value) <= static_cast<double>(std::numeric_limits<float>::max())))
    throw Fault(FaultKind::Overflow, "Overflow");
  return static_cast<float>(value);
}

int16 AddInt16(int16 a, int16 b) {
  return ToInt16(static_cast<double>(a) + b);
}

std::string NumberText(double value) {
  if (value == 0) return "0";  // a negative zero too
  std::array<char, 32> digits{};
  const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), value);
  std::string text(digits.data(), end);
  // Whole numbers are written out as long as they are exact; scripts compare them as text.
  constexpr double exact = 1e15;
  if (std::abs(value) < exact && std::trunc(value) == value) text = std::to_string(static_cast<std::int64_t>(value));
  return text;
}

std::string PrintedNumber(double value) {
  const std::string text = NumberText(value);
  return (text.front() == '-' ? text : " " + text) + " ";
}

}  // namespace corvid
