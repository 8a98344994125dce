// SPDX-License-Identifier: GPL-3.0-or-later
#include "script/trigger_state.h"

#include <algorithm>
#include <utility>

#include "core/fault.h"
#include "core/text.h"

namespace corvid {

namespace {

void CheckSlot(int32 slot) {
  if (slot < 0 || slot > TriggerTexts::Last)
    throw Fault(FaultKind::Index, "Piece " + std::to_string(slot) + " of a search string is outside 1 to 30");
}

[[noreturn]] void OutOfRange(int32 row) {
  throw Fault(FaultKind::Index, "Row " + std::to_string(row) + " is outside the table");
}

}  // namespace

const std::string& TriggerTexts::operator[](int32 slot) const {
  static const std::string empty;
  CheckSlot(slot);
  return slot <= Held() ? texts_[static_cast<std::size_t>(slot)] : empty;
}

std::string& TriggerTexts::operator[](int32 slot) {
  CheckSlot(slot);
  if (slot > Held()) texts_.resize(static_cast<std::size_t>(slot) + 1);
  return texts_[static_cast<std::size_t>(slot)];
}

void TriggerTexts::SwapBehind(TriggerTexts& other, int32 last) {
  const int32 held = std::max(Held(), other.Held());
  for (int32 slot = last + 1; slot <= held; ++slot) std::swap((*this)[slot], other[slot]);
}

std::string_view TriggerName(std::string_view searchText) {
  if (searchText.empty() || searchText.front() != '<') return searchText;
  return searchText.substr(1, searchText.find('>') - 1);
}

TriggerRows::TriggerRows() {
  Resize(0);
}

TriggerRows::TriggerRows(const TriggerRows& other) : version_(other.version_ + 1), sortedTo_(other.sortedTo_) {
  slots_.reserve(other.slots_.size());
  for (const Slot& slot : other.slots_) slots_.push_back({std::make_unique<TriggerRecord>(*slot.Record), slot.Name, 0});
}

TriggerRows& TriggerRows::operator=(const TriggerRows& other) {
  if (this == &other) return *this;
  const std::uint64_t version = std::max(version_, other.version_) + 1;
  *this = TriggerRows(other);
  version_ = version;
  return *this;
}

void TriggerRows::Check(int32 row) const {
  if (row < 0 || row > UBound()) OutOfRange(row);
}

void TriggerRows::Resize(int32 upper) {
  if (upper < 0) OutOfRange(upper);
  const std::size_t held = slots_.size();
  slots_.resize(static_cast<std::size_t>(upper) + 1);
  for (std::size_t i = held; i < slots_.size(); ++i) slots_[i].Record = std::make_unique<TriggerRecord>();
  sortedTo_ = std::min(sortedTo_, upper);
  ++version_;
}

TriggerRecord& TriggerRows::operator[](int32 row) {
  Slot& slot = SlotAt(row);
  slot.Name = 0;
  slot.Mark = 0;
  sortedTo_ = std::min(sortedTo_, row - 1);
  ++version_;
  return *slot.Record;
}

void TriggerRows::Swap(int32 row, int32 other) {
  std::swap(SlotAt(row), SlotAt(other));
  sortedTo_ = std::min(sortedTo_, std::min(row, other) - 1);
  ++version_;
}

void TriggerRows::Sort(int32 count) {
  count = std::min(count, UBound());
  sortedTo_ = std::min(sortedTo_, count);
  const auto before = [](const Slot& a, const Slot& b) { return a.Record->SortKey < b.Record->SortKey; };
  const auto first = slots_.begin() + 1;
  const auto sorted = std::is_sorted_until(first + std::max(sortedTo_ - 1, 0), first + count, before);
  const auto end = first + count;
  if (sorted != end) {
    if (end - sorted == 1) {  // one definition more: its place is searched, and the rows behind it move up
      std::rotate(std::upper_bound(first, sorted, *sorted, before), sorted, end);
    } else {
      std::stable_sort(sorted, end, before);
      std::inplace_merge(first, sorted, end, before);
    }
    ++version_;
  }
  sortedTo_ = count;
}

void TriggerRows::ClearMarks() {
  for (Slot& slot : slots_) slot.Mark = 0;
}

std::uint32_t TriggerRows::NameNumber(int32 row) const {
  const Slot& slot = SlotAt(row);
  if (slot.Name == 0) slot.Name = NumberOfName(TriggerName(slot.Record->SearchText));
  return slot.Name;
}

std::uint32_t TriggerRows::NumberOfName(std::string_view name) {
  std::uint32_t number = 2166136261U;
  for (const char c : name) number = (number ^ static_cast<unsigned char>(UpperChar(c))) * 16777619U;
  return number == 0 ? 1 : number;
}

}  // namespace corvid
