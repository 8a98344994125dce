// SPDX-License-Identifier: GPL-3.0-or-later
// What a player's client sends, taken apart: typed lines, and the telnet negotiation between them.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace corvid::practice {

namespace telnet {
inline constexpr unsigned char Iac = 255, Dont = 254, Do = 253, Wont = 252, Will = 251, Sb = 250, Ga = 249, Se = 240;
inline constexpr unsigned char Echo = 1, TerminalType = 24, Msp = 90;
inline constexpr unsigned char Is = 0, Send = 1;  // of a terminal type subnegotiation

std::string Command(unsigned char verb, unsigned char option);  // IAC verb option
std::string AskTerminalType();                                  // IAC SB 24 SEND IAC SE
}  // namespace telnet

// What the bytes held, in their order. All of them are called from TelnetInput::Feed.
struct TelnetSink {
  std::function<void(const std::string& line, bool cut)> Line;  // cut: it was longer than MaxLine
  std::function<void(unsigned char verb, unsigned char option)> Negotiation;
  std::function<void(unsigned char option, const std::string& payload)> Subnegotiation;
};

// Bytes may come in any portions, and any bytes may come. Control codes are dropped, a line ends at LF, at CR, or at
// both; what is neither negotiation nor control code is passed on as it came.
class TelnetInput {
 public:
  static constexpr std::size_t MaxLine = 1000;          // codes of one line that are kept
  static constexpr std::size_t MaxSubnegotiation = 64;  // payload codes that are kept
  static constexpr std::size_t MaxUnended = 4096;       // a subnegotiation without an end is given up after so many

  void Feed(std::string_view bytes, const TelnetSink& sink);

 private:
  enum class State { Text, Command, Option, SubOption, SubText, SubCommand };

  void FeedText(unsigned char byte, const TelnetSink& sink);
  void FeedCommand(unsigned char byte);
  void FeedSubnegotiation(unsigned char byte);
  void EndLine(const TelnetSink& sink);

  State state_ = State::Text;
  unsigned char verb_ = 0;
  unsigned char option_ = 0;
  std::string payload_;
  std::size_t payloadSeen_ = 0;
  std::string line_;
  bool cut_ = false;
  bool afterCr_ = false;
};

}  // namespace corvid::practice
