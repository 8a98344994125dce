// SPDX-License-Identifier: GPL-3.0-or-later
// Lists of the language: items in one text, separated by "|". An empty text is an empty list.
#pragma once

#include <string>
#include <string_view>

#include "core/types.h"

namespace corvid {

// Action 1: the position from 1 of the first item equal to SString in upper case, "0" if none. Action 2: the list
// without all such items. Items are compared as they stand, so mString should be in upper case.
std::string CvSubString(std::string_view mString, std::string_view SString, int16 Action);
// The items in ascending order without regard to case, or descending if Reverse is not 0; equal ones keep their order.
std::string SortStringList(std::string_view s, int16 Reverse);
std::string ReverseList(std::string_view list);
// The list without its first item equal to item, without regard to case.
std::string DeleteItem(const std::string& list, const std::string& item);
// The list without its item at position, from 1; unchanged below 1. A position past the end wraps around; a wrap to the
// very front, and any position past a single item, is a Fault.
std::string DeleteNthItem(const std::string& list, int32 position);

}  // namespace corvid
