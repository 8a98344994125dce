// SPDX-License-Identifier: GPL-3.0-or-later
// A wildcard pattern, taken apart once so that many texts can be tested against it.
#pragma once

#include <bitset>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace corvid {

class PatternMatcher {
 public:
  PatternMatcher() : PatternMatcher(std::string_view()) {}  // matches the empty text
  explicit PatternMatcher(std::string_view pattern);

  // The same answer as Like(text, pattern), but a malformed pattern matches nothing. Never worse than pattern times
  // text in time, and no further back than the last "*".
  bool Matches(std::string_view text) const;
  // Pieces without a wildcard, as long as they go: every text that matches holds each of them.
  const std::vector<std::string>& Literals() const { return literals_; }

 private:
  using Set = std::bitset<256>;

  // What stands between two stars: each of its places takes one code of the text.
  struct Segment {
    std::vector<std::uint32_t> Places;  // a code, AnyCode, AnyDigit, or FirstSet and up for sets_
    std::string Literal;                // its longest piece without a wildcard
    std::size_t LiteralPlace = 0;       // and where in the segment that is
    std::size_t size() const { return Places.size(); }
    bool IsLiteral() const { return Literal.size() == Places.size(); }
  };

  void AddSet(std::string_view members);
  void FindLiterals();
  bool TakesAt(const Segment& segment, std::string_view text, std::size_t place) const;
  bool Takes(std::uint32_t place, char c) const;
  std::size_t Find(const Segment& segment, std::string_view text, std::size_t from) const;

  std::vector<Segment> segments_;  // one more than there are stars
  std::vector<Set> sets_;
  std::vector<std::string> literals_;
  std::size_t least_ = 0;  // codes that a text must have at least
  bool malformed_ = false;
};

}  // namespace corvid
