// SPDX-License-Identifier: GPL-3.0-or-later
#include "script/lists.h"

#include <algorithm>
#include <vector>

#include "core/fault.h"
#include "core/text.h"

namespace corvid {

namespace {

std::string Join(const std::vector<std::string>& items) {
  std::string list;
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (i > 0) list += '|';
    list += items[i];
  }
  return list;
}

}  // namespace

std::string CvSubString(std::string_view mString, std::string_view SString, int16 Action) {
  constexpr int16 findItem = 1;
  const std::string wanted = Upper(SString);
  std::vector<std::string> items = Split(mString, "|");
  if (Action == findItem) {
    const auto found = std::find(items.begin(), items.end(), wanted);
    return found == items.end() ? "0" : std::to_string(found - items.begin() + 1);
  }
  items.erase(std::remove(items.begin(), items.end(), wanted), items.end());
  return Join(items);
}

std::string SortStringList(std::string_view s, int16 Reverse) {
  std::vector<std::string> items = Split(s, "|");
  std::stable_sort(items.begin(), items.end(), [&](const std::string& a, const std::string& b) {
    const int sign = CompareText(a, b);
    return Reverse == 0 ? sign < 0 : sign > 0;
  });
  return Join(items);
}

std::string ReverseList(std::string_view list) {
  std::vector<std::string> items = Split(list, "|");
  std::reverse(items.begin(), items.end());
  return Join(items);
}

std::string DeleteItem(const std::string& list, const std::string& item) {
  const std::size_t start = Upper("|" + list + "|").find(Upper("|" + item + "|"));
  if (start == std::string::npos) return list;
  const std::size_t end = start + item.size();
  if (end >= list.size()) return start == 0 ? "" : list.substr(0, start - 1);
  return list.substr(0, start) + list.substr(end + 1);
}

std::string DeleteNthItem(const std::string& list, int32 position) {
  if (list.empty() || position < 1) return list;
  std::vector<std::size_t> bars;
  for (std::size_t bar = list.find('|'); bar != std::string::npos; bar = list.find('|', bar + 1)) bars.push_back(bar);
  // Kept: the walk from bar to bar starts again in front behind the last one, so positions past the end wrap around.
  const std::size_t step = static_cast<std::size_t>(position - 1) % (bars.size() + 1);
  const bool found = step < bars.size();
  if (position == 1) return found ? list.substr(bars[0] + 1) : "";
  if (step == 0) throw Fault(FaultKind::Index, "The list has no such item");
  return list.substr(0, bars[step - 1]) + (found ? list.substr(bars[step]) : "");
}

}  // namespace corvid
