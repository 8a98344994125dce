// SPDX-License-Identifier: GPL-3.0-or-later
// Showing and speaking text. What passes through the program stays as the bytes that came; only here, at the edges, is
// it read as characters: well-formed UTF-8 as such, any other byte as Windows-1252.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace corvid {

// Length in bytes of the character that starts at position (1 to 4; 1 for a byte that is no well-formed UTF-8).
std::size_t CharLength(std::string_view text, std::size_t position);
// Start of the character that ends just before position (position above 0).
std::size_t PreviousChar(std::string_view text, std::size_t position);
// The text as well-formed UTF-8, whatever came. NUL and other control codes stay.
std::string ToUtf8(std::string_view text);
std::u16string ToUtf16(std::string_view text);
// True when the text holds at least one well-formed multi-byte character and no ill-formed byte above 127.
bool IsMultiByteUtf8(std::string_view text);
// Typed text (UTF-8) for a server that does not speak UTF-8: a character up to U+00FF becomes the byte of its code,
// any other stays UTF-8.
std::string ToWire(std::string_view utf8);

}  // namespace corvid
