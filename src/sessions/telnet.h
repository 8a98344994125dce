// SPDX-License-Identifier: GPL-3.0-or-later
// From the bytes of one read to text: telnet negotiation is answered, the rest of the control codes goes.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace corvid {

// What the scan brings about on its way.
class TelnetEffects {
 public:
  virtual ~TelnetEffects() = default;
  virtual bool Answer(std::string_view bytes) = 0;  // one write to the server; false ends the scan
  virtual void MspOffered() = 0;
  virtual void Bell() = 0;
};

struct DecodedBlock {
  std::string Text;
  std::size_t LastBreak = 0;  // place of the last CR or LF counted from 1, 0 for none
  bool HighBytes = false;     // a byte above 127 is among it
  bool DoubleFeeds = false;   // two LFs stand together in it
};

// A negotiation that the read cut off is not put together with the next one: its missing bytes count as 0. block is
// emptied first and keeps its memory. False when an answer failed.
bool DecodeTelnet(std::string_view bytes, DecodedBlock& block, TelnetEffects& effects);

}  // namespace corvid
