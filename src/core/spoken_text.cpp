// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/spoken_text.h"

#include "core/utf8.h"

namespace corvid {

namespace {

bool IsBlank(char code) {
  return code == ' ' || (code >= '\t' && code <= '\r');
}

bool IsOneOf(char code, std::string_view set) {
  return set.find(code) != std::string_view::npos;
}

// Last place in [first, last) behind which a blank follows one of the marks (any code when marks is empty), or 0.
std::size_t LastBreak(std::string_view text, std::size_t first, std::size_t last, std::string_view marks) {
  for (std::size_t at = last; at > first; --at) {
    if (IsBlank(text[at - 1]) && (marks.empty() || (at - 1 > first && IsOneOf(text[at - 2], marks)))) return at;
  }
  return 0;
}

}  // namespace

std::size_t SpokenPieceEnd(std::string_view text, std::size_t start, std::size_t maxBytes) {
  if (text.size() - start <= maxBytes) return text.size();
  const std::size_t limit = start + maxBytes;
  const std::size_t first = start + maxBytes / 4;  // a very short piece would sound chopped
  for (const std::string_view marks : {".!?\n", ",;:)", ""}) {
    const std::size_t cut = LastBreak(text, first, limit, marks);
    if (cut != 0) return cut;
  }
  std::size_t end = start + CharLength(text, start);
  while (end < limit) {
    const std::size_t next = end + CharLength(text, end);
    if (next > limit) break;
    end = next;
  }
  return end;
}

std::string SpokenText(std::string_view text) {
  std::string spoken = ToUtf8(text);
  for (std::size_t at = 0; at < spoken.size(); ++at) {
    const auto code = static_cast<unsigned char>(spoken[at]);
    if (code < 32 || code == 127) spoken[at] = ' ';
    if (code == 0xC2 && at + 1 < spoken.size() && static_cast<unsigned char>(spoken[at + 1]) < 0xA0) {
      spoken[at] = ' ';  // U+0080 to U+009F are control codes too
      spoken[at + 1] = ' ';
    }
  }
  return spoken;
}

}  // namespace corvid
