// SPDX-License-Identifier: GPL-3.0-or-later
// Which of thousands of patterns can match a text at all: those whose literal pieces it holds. All are looked for in
// one walk over the text, so the time hardly grows with their number.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "core/types.h"

namespace corvid {

// Each pattern is filed under one gram: up to four codes of one of its literals, the rarest that it has, judged by the
// other patterns and by how often its letters are written. A gram met in the text is followed up by a comparison of the
// whole literal. Texts and literals are compared as they are: hand both over in upper case.
class LiteralFilter {
 public:
  void Clear();
  // Counts the grams of patterns to be added soon, so that the first of them is judged by the last as well.
  void Weigh(const std::vector<std::string>& literals);
  // Files id. False when there is no literal to file it under: it can then match any text.
  bool Add(int32 id, const std::vector<std::string>& literals);
  // Appends the ids whose literal stands in text; one may come more than once, and ids may change their order, but they
  // never become many more than were filed. An id that was filed and does not come cannot match.
  void Collect(std::string_view text, std::vector<int32>& ids) const;

 private:
  static constexpr std::size_t LongestGram = 4;

  struct Filed {
    int32 Id;
    int32 Next;  // the next under the same gram, -1 for none
    std::string Literal;
    std::size_t Place;  // of the gram in the literal
  };
  struct GramTable {
    std::vector<std::uint64_t> Bits;  // a bit for each hashed gram: most codes of a text are done with here
    std::unordered_map<std::uint32_t, int32> First;
  };

  std::uint16_t& Weight(std::uint32_t gram);
  void CollectGrams(std::size_t length, std::string_view text, std::vector<int32>& ids) const;
  void Follow(int32 filed, std::string_view text, std::size_t place, std::vector<int32>& ids) const;

  std::array<GramTable, LongestGram + 1> tables_;  // by the gram's length
  std::vector<Filed> filed_;
  std::vector<std::uint16_t> weights_;  // how many patterns have a gram, by its hash
};

}  // namespace corvid
