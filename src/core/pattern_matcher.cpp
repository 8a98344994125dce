// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/pattern_matcher.h"

#include "core/text.h"

namespace corvid {

namespace {

constexpr std::uint32_t AnyCode = 256, AnyDigit = 257, FirstSet = 258;

std::uint32_t Code(char c) {
  return static_cast<unsigned char>(c);
}

}  // namespace

PatternMatcher::PatternMatcher(std::string_view pattern) : segments_(1) {
  for (std::size_t i = 0; i < pattern.size() && !malformed_; ++i) {
    std::vector<std::uint32_t>& places = segments_.back().Places;
    switch (pattern[i]) {
      case '*':
        segments_.emplace_back();
        break;
      case '?':
        places.push_back(AnyCode);
        break;
      case '#':
        places.push_back(AnyDigit);
        break;
      case '[': {
        const std::size_t close = pattern.find(']', i + 1);
        if (close == std::string_view::npos) {
          malformed_ = true;
        } else {
          AddSet(pattern.substr(i + 1, close - i - 1));
          i = close;
        }
        break;
      }
      default:
        places.push_back(Code(pattern[i]));
    }
  }
  FindLiterals();
}

// A "-" that is first or last stands for itself; so does "!" anywhere but first, and alone. No member at all takes no
// code.
void PatternMatcher::AddSet(std::string_view members) {
  if (members.empty()) return;
  std::vector<std::uint32_t>& places = segments_.back().Places;
  if (members.size() == 1) {
    places.push_back(Code(members.front()));
    return;
  }
  const bool inverted = members.front() == '!';
  if (inverted) members.remove_prefix(1);
  Set set;
  for (std::size_t i = 0; i < members.size(); ++i) {
    const std::uint32_t low = Code(members[i]);
    std::uint32_t high = low;
    if (i + 2 < members.size() && members[i + 1] == '-') {
      high = Code(members[i + 2]);
      if (high < low) malformed_ = true;
      i += 2;
    }
    for (std::uint32_t code = low; code <= high; ++code) set.set(code);
  }
  if (inverted) set.flip();
  places.push_back(FirstSet + static_cast<std::uint32_t>(sets_.size()));
  sets_.push_back(set);
}

void PatternMatcher::FindLiterals() {
  for (Segment& segment : segments_) {
    least_ += segment.size();
    std::string run;
    for (std::size_t i = 0; i <= segment.size(); ++i) {
      if (i < segment.size() && segment.Places[i] < AnyCode) {
        run += static_cast<char>(static_cast<unsigned char>(segment.Places[i]));
        continue;
      }
      if (run.empty()) continue;
      if (run.size() > segment.Literal.size()) {
        segment.Literal = run;
        segment.LiteralPlace = i - run.size();
      }
      literals_.push_back(std::move(run));
      run.clear();
    }
  }
}

bool PatternMatcher::Takes(std::uint32_t place, char c) const {
  if (place < AnyCode) return place == Code(c);
  if (place == AnyCode) return true;
  if (place == AnyDigit) return IsDigit(c);
  return sets_[place - FirstSet].test(Code(c));
}

bool PatternMatcher::TakesAt(const Segment& segment, std::string_view text, std::size_t place) const {
  if (segment.IsLiteral()) return text.compare(place, segment.size(), segment.Literal) == 0;
  for (std::size_t i = 0; i < segment.size(); ++i)
    if (!Takes(segment.Places[i], text[place + i])) return false;
  return true;
}

// The first place at or behind from where the segment fits; npos for none. Its literal piece, if it has one, leads from
// place to place.
std::size_t PatternMatcher::Find(const Segment& segment, std::string_view text, std::size_t from) const {
  while (from + segment.size() <= text.size()) {
    if (!segment.Literal.empty()) {
      const std::size_t found = text.find(segment.Literal, from + segment.LiteralPlace);
      if (found == std::string_view::npos) return found;
      from = found - segment.LiteralPlace;
      if (from + segment.size() > text.size()) return std::string_view::npos;
    }
    if (TakesAt(segment, text, from)) return from;
    ++from;
  }
  return std::string_view::npos;
}

// The first segment stands at the beginning, the last at the end; each between is taken as early as it can be, since
// an earlier place leaves the others all that a later one would.
bool PatternMatcher::Matches(std::string_view text) const {
  if (malformed_ || text.size() < least_) return false;
  const Segment& head = segments_.front();
  if (segments_.size() == 1) return text.size() == head.size() && TakesAt(head, text, 0);
  const Segment& tail = segments_.back();
  if (!TakesAt(head, text, 0) || !TakesAt(tail, text, text.size() - tail.size())) return false;
  const std::string_view middle = text.substr(0, text.size() - tail.size());
  std::size_t place = head.size();
  for (std::size_t i = 1; i + 1 < segments_.size(); ++i) {
    place = Find(segments_[i], middle, place);
    if (place == std::string_view::npos) return false;
    place += segments_[i].size();
  }
  return true;
}

}  // namespace corvid
