// SPDX-License-Identifier: GPL-3.0-or-later
#include "script/literal_filter.h"

#include <algorithm>
#include <bit>
#include <limits>

#include "core/text.h"

namespace corvid {

namespace {

constexpr int FilterBits = 17;
constexpr int WeightBits = 15;
constexpr std::uint32_t Spread = 0x9E3779B1U;

std::uint32_t Hash(std::uint32_t gram, int bits) {
  return (gram * Spread) >> (32 - bits);
}

std::uint32_t Gram(std::string_view text, std::size_t place, std::size_t length) {
  std::uint32_t gram = 0;
  for (std::size_t i = 0; i < length; ++i)
    gram |= static_cast<std::uint32_t>(static_cast<unsigned char>(text[place + i])) << (8 * i);
  return gram;
}

// About how many halvings a letter is worth in written English; a blank says least.
int Rarity(char c) {
  constexpr std::string_view byFrequency = "ETAOINSHRDLUCMFWYPVBGKJQXZ";
  if (c == ' ') return 2;
  const std::size_t rank = byFrequency.find(UpperChar(c));
  if (rank != std::string_view::npos) return 3 + static_cast<int>(rank / 4);
  return IsDigit(c) ? 6 : 7;
}

std::size_t GramLength(const std::vector<std::string>& literals, std::size_t longest) {
  std::size_t length = 0;
  for (const std::string& literal : literals) length = std::max(length, literal.size());
  return std::min(length, longest);
}

std::size_t LeaveOneOfEach(std::vector<int32>& ids) {
  std::sort(ids.begin(), ids.end());
  ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
  return ids.size();
}

}  // namespace

void LiteralFilter::Clear() {
  *this = LiteralFilter();
}

std::uint16_t& LiteralFilter::Weight(std::uint32_t gram) {
  if (weights_.empty()) weights_.resize(std::size_t{1} << WeightBits);
  return weights_[Hash(gram, WeightBits)];
}

void LiteralFilter::Weigh(const std::vector<std::string>& literals) {
  const std::size_t length = GramLength(literals, LongestGram);
  if (length == 0) return;
  for (const std::string& literal : literals) {
    for (std::size_t place = 0; place + length <= literal.size(); ++place) {
      std::uint16_t& weight = Weight(Gram(literal, place, length));
      if (weight < std::numeric_limits<std::uint16_t>::max()) ++weight;
    }
  }
}

bool LiteralFilter::Add(int32 id, const std::vector<std::string>& literals) {
  const std::size_t length = GramLength(literals, LongestGram);
  if (length == 0) return false;
  int best = std::numeric_limits<int>::min();
  const std::string* chosen = nullptr;
  std::size_t chosenPlace = 0;
  for (const std::string& literal : literals) {
    for (std::size_t place = 0; place + length <= literal.size(); ++place) {
      int worth = -static_cast<int>(std::bit_width(Weight(Gram(literal, place, length))));
      for (std::size_t i = 0; i < length; ++i) worth += Rarity(literal[place + i]);
      if (worth <= best) continue;
      best = worth;
      chosen = &literal;
      chosenPlace = place;
    }
  }
  const std::uint32_t gram = Gram(*chosen, chosenPlace, length);
  GramTable& table = tables_[length];
  if (table.Bits.empty()) table.Bits.resize((std::size_t{1} << FilterBits) / 64);
  const std::uint32_t bit = Hash(gram, FilterBits);
  table.Bits[bit / 64] |= std::uint64_t{1} << (bit % 64);
  const auto [first, isNew] = table.First.try_emplace(gram, -1);
  filed_.push_back({id, first->second, *chosen, chosenPlace});
  first->second = static_cast<int32>(filed_.size()) - 1;
  return true;
}

void LiteralFilter::Collect(std::string_view text, std::vector<int32>& ids) const {
  for (std::size_t length = 1; length <= LongestGram; ++length)
    if (!tables_[length].Bits.empty()) CollectGrams(length, text, ids);
}

void LiteralFilter::CollectGrams(std::size_t length, std::string_view text, std::vector<int32>& ids) const {
  if (text.size() < length) return;
  const GramTable& table = tables_[length];
  const std::uint64_t* const bits = table.Bits.data();
  const auto unused = static_cast<int>(8 * (LongestGram - length));
  // A line of a thousand equal codes would bring each of its patterns a thousand times.
  const std::size_t slack = 2 * filed_.size() + 64;
  std::size_t mostIds = ids.size() + slack;
  std::uint32_t window = 0;  // the last four codes, the newest on top
  const auto slide = [&](char c) {
    window = (window >> 8) | (static_cast<std::uint32_t>(static_cast<unsigned char>(c)) << 24);
  };
  for (std::size_t i = 0; i + 1 < length; ++i) slide(text[i]);
  for (std::size_t last = length - 1; last < text.size(); ++last) {
    slide(text[last]);
    const std::uint32_t gram = window >> unused;
    const std::uint32_t bit = Hash(gram, FilterBits);
    if (((bits[bit / 64] >> (bit % 64)) & 1) == 0) continue;
    const auto found = table.First.find(gram);
    if (found == table.First.end()) continue;
    Follow(found->second, text, last + 1 - length, ids);
    if (ids.size() > mostIds) mostIds = LeaveOneOfEach(ids) + slack;
  }
}

void LiteralFilter::Follow(int32 filed, std::string_view text, std::size_t place, std::vector<int32>& ids) const {
  while (filed >= 0) {
    const Filed& entry = filed_[static_cast<std::size_t>(filed)];
    if (place >= entry.Place && text.compare(place - entry.Place, entry.Literal.size(), entry.Literal) == 0)
      ids.push_back(entry.Id);
    filed = entry.Next;
  }
}

}  // namespace corvid
