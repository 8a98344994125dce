// SPDX-License-Identifier: GPL-3.0-or-later
// The trigger table: one record a trigger, rows from 1 to the count.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/types.h"

namespace corvid {

namespace triggerflag {                     // bits of a trigger's Flags, beside BreakpointFlag
inline constexpr int16 PassedOver = 0x400;  // no line is tested against it
inline constexpr int16 Colour = 0x1000, AnyCase = 0x2000;
}  // namespace triggerflag

// Texts in slots 1 to 30; one that was never set is empty, and slot 0 is not used. Another slot is a Fault of kind
// Index. Most triggers have two or three, so only those are held.
class TriggerTexts {
 public:
  static constexpr int32 Last = 30;

  const std::string& operator[](int32 slot) const;
  std::string& operator[](int32 slot);
  // Exchanges what stands behind slot last.
  void SwapBehind(TriggerTexts& other, int32 last);
  int32 Held() const { return static_cast<int32>(texts_.size()) - 1; }  // no slot above this one is set

 private:
  std::vector<std::string> texts_;
};

struct TriggerRecord {  // an empty Pattern marks a deleted record until the table is compressed
  std::string Pattern;
  TriggerTexts Parts;  // literal pieces, in order
  TriggerTexts Names;  // variables that take the text in front of the piece of the same number
  std::string Class;
  int16 Buffer = 0;
  std::string Action;
  int16 Owner = 0;
  int16 Flags = 0;
  std::string SortKey;
  std::string SearchText;
  std::string ActionText;
};

// What a search text is removed by: the name of "<name>rest", any other text itself.
std::string_view TriggerName(std::string_view searchText);

// The rows. Whoever matches lines against thousands of triggers must learn cheaply what has changed, so the table
// tells: Version() grows with each change, and a row that was handed out for writing has lost its mark.
class TriggerRows {
 public:
  TriggerRows();
  TriggerRows(const TriggerRows& other);  // in new memory, and without marks
  TriggerRows(TriggerRows&&) = default;
  TriggerRows& operator=(const TriggerRows& other);
  TriggerRows& operator=(TriggerRows&&) = default;
  ~TriggerRows() = default;

  int32 UBound() const { return static_cast<int32>(slots_.size()) - 1; }  // highest row that may be named
  // Makes upper the highest row; contents are kept, new rows are empty. A negative bound is a Fault.
  void Resize(int32 upper);
  // A row outside 0..UBound() is a Fault of kind Index.
  TriggerRecord& operator[](int32 row);
  const TriggerRecord& operator[](int32 row) const { return Read(row); }
  const TriggerRecord& Read(int32 row) const { return *SlotAt(row).Record; }

  void Swap(int32 row, int32 other);                    // marks go along
  bool HoldsTextsBehind(int32 last, int32 row) const {  // Parts or Names in slots above last
    return Read(row).Parts.Held() > last || Read(row).Names.Held() > last;
  }
  // Puts rows 1 to count in ascending order of SortKey, byte by byte; equal keys keep their order. Cheap for a table in
  // order to which rows were added.
  void Sort(int32 count);

  std::uint64_t Version() const { return version_; }
  // For the matcher: a number that goes along with its row, 0 again once the row was handed out for writing.
  int32 Mark(int32 row) const { return SlotAt(row).Mark; }
  void SetMark(int32 row, int32 mark) { SlotAt(row).Mark = mark; }
  void ClearMarks();
  // A number of TriggerName(SearchText) without regard to case: rows with other numbers have other names.
  std::uint32_t NameNumber(int32 row) const;
  static std::uint32_t NumberOfName(std::string_view name);

 private:
  struct Slot {
    std::unique_ptr<TriggerRecord> Record;
    mutable std::uint32_t Name = 0;  // 0: not known yet
    int32 Mark = 0;
  };

  void Check(int32 row) const;
  const Slot& SlotAt(int32 row) const {
    Check(row);
    return slots_[static_cast<std::size_t>(row)];
  }
  Slot& SlotAt(int32 row) {
    Check(row);
    return slots_[static_cast<std::size_t>(row)];
  }

  std::vector<Slot> slots_;
  std::uint64_t version_ = 1;
  int32 sortedTo_ = 0;  // rows 1 to this are in order
};

struct TriggerTable {
  int16 TriggerCount = 0;
  int16 TriggerSequence = 0;  // grows by one for each trigger ever defined
  TriggerRows Triggers;
};

}  // namespace corvid
