// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/utf8.h"

#include <array>

namespace corvid {

namespace {

constexpr char32_t FirstOfPlane1 = 0x10000;

// Codes 0x80 to 0x9F of Windows-1252. Its five unassigned codes stand for the control character of the same number.
constexpr std::array<char16_t, 32> Windows1252{0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                               0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                               0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                               0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

unsigned ByteAt(std::string_view text, std::size_t position) {
  return static_cast<unsigned char>(text[position]);
}

struct Lead {
  std::size_t Length = 1;  // 1 for a byte that begins no multi-byte character
  unsigned LowSecond = 0x80;
  unsigned HighSecond = 0xBF;
};

// The bounds of the second byte keep out overlong forms, surrogates and what lies above U+10FFFF.
Lead ReadLead(unsigned byte) {
  if (byte >= 0xC2 && byte <= 0xDF) return {2};
  if (byte == 0xE0) return {3, 0xA0, 0xBF};
  if (byte == 0xED) return {3, 0x80, 0x9F};
  if (byte >= 0xE1 && byte <= 0xEF) return {3};
  if (byte == 0xF0) return {4, 0x90, 0xBF};
  if (byte >= 0xF1 && byte <= 0xF3) return {4};
  if (byte == 0xF4) return {4, 0x80, 0x8F};
  return {};
}

void AppendUtf8(std::string& result, char32_t code) {
  const auto tail = [&](unsigned shift) { result += static_cast<char>(0x80 | ((code >> shift) & 0x3F)); };
  if (code < 0x80) {
    result += static_cast<char>(code);
  } else if (code < 0x800) {
    result += static_cast<char>(0xC0 | (code >> 6));
    tail(0);
  } else {  // Windows-1252 holds nothing beyond
    result += static_cast<char>(0xE0 | (code >> 12));
    tail(6);
    tail(0);
  }
}

char32_t Decode(std::string_view text, std::size_t position, std::size_t length) {
  const unsigned first = ByteAt(text, position);
  if (length == 1) return first >= 0x80 && first <= 0x9F ? Windows1252[first - 0x80] : first;
  char32_t code = first & (0x7FU >> length);
  for (std::size_t i = 1; i < length; ++i) code = (code << 6) | (ByteAt(text, position + i) & 0x3F);
  return code;
}

bool IsAscii(std::string_view text) {
  for (char c : text)
    if ((static_cast<unsigned char>(c) & 0x80) != 0) return false;
  return true;
}

}  // namespace

std::size_t CharLength(std::string_view text, std::size_t position) {
  if (position >= text.size()) return 1;
  const Lead lead = ReadLead(ByteAt(text, position));
  if (lead.Length == 1 || position + lead.Length > text.size()) return 1;
  const unsigned second = ByteAt(text, position + 1);
  if (second < lead.LowSecond || second > lead.HighSecond) return 1;
  for (std::size_t i = 2; i < lead.Length; ++i)
    if ((ByteAt(text, position + i) & 0xC0) != 0x80) return 1;
  return lead.Length;
}

std::size_t PreviousChar(std::string_view text, std::size_t position) {
  if (position > text.size()) position = text.size();
  if (position == 0) return 0;
  for (std::size_t length = 2; length <= 4 && length <= position; ++length)
    if (CharLength(text.substr(0, position), position - length) == length) return position - length;
  return position - 1;
}

std::string ToUtf8(std::string_view text) {
  if (IsAscii(text)) return std::string(text);
  std::string result;
  result.reserve(text.size() + text.size() / 8);
  for (std::size_t i = 0; i < text.size();) {
    const std::size_t length = CharLength(text, i);
    if (length == 1) {
      AppendUtf8(result, Decode(text, i, 1));
    } else {
      result.append(text.substr(i, length));
    }
    i += length;
  }
  return result;
}

std::u16string ToUtf16(std::string_view text) {
  std::u16string result;
  result.reserve(text.size());
  for (std::size_t i = 0; i < text.size();) {
    const std::size_t length = CharLength(text, i);
    const char32_t code = Decode(text, i, length);
    if (code >= FirstOfPlane1) {
      result += static_cast<char16_t>(0xD800 + ((code - FirstOfPlane1) >> 10));
      result += static_cast<char16_t>(0xDC00 + ((code - FirstOfPlane1) & 0x3FF));
    } else {
      result += static_cast<char16_t>(code);
    }
    i += length;
  }
  return result;
}

bool IsMultiByteUtf8(std::string_view text) {
  bool found = false;
  for (std::size_t i = 0; i < text.size();) {
    const std::size_t length = CharLength(text, i);
    if (length > 1) found = true;
    if (length == 1 && ByteAt(text, i) > 127) return false;
    i += length;
  }
  return found;
}

std::string ToWire(std::string_view utf8) {
  std::string result;
  result.reserve(utf8.size());
  for (std::size_t i = 0; i < utf8.size();) {
    const std::size_t length = CharLength(utf8, i);
    const char32_t code = length == 1 ? ByteAt(utf8, i) : Decode(utf8, i, length);
    if (code <= 0xFF) {
      result += static_cast<char>(code);
    } else {
      result.append(utf8.substr(i, length));
    }
    i += length;
  }
  return result;
}

}  // namespace corvid
