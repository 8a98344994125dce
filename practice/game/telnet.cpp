// SPDX-License-Identifier: GPL-3.0-or-later
#include "game/telnet.h"

namespace corvid::practice {

namespace telnet {

std::string Command(unsigned char verb, unsigned char option) {
  return {static_cast<char>(Iac), static_cast<char>(verb), static_cast<char>(option)};
}

std::string AskTerminalType() {
  return Command(Sb, TerminalType) + static_cast<char>(Send) + static_cast<char>(Iac) + static_cast<char>(Se);
}

}  // namespace telnet

void TelnetInput::Feed(std::string_view bytes, const TelnetSink& sink) {
  for (char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    switch (state_) {
      case State::Text:
        FeedText(byte, sink);
        break;
      case State::Command:
        FeedCommand(byte);
        break;
      case State::Option:
        state_ = State::Text;
        sink.Negotiation(verb_, byte);
        break;
      case State::SubOption:
        option_ = byte;
        state_ = State::SubText;
        break;
      case State::SubText:
        FeedSubnegotiation(byte);
        break;
      case State::SubCommand:
        if (byte == telnet::Se) {
          state_ = State::Text;
          sink.Subnegotiation(option_, payload_);
        } else {
          state_ = State::SubText;
          if (byte == telnet::Iac && payload_.size() < MaxSubnegotiation) payload_ += c;
        }
        break;
    }
  }
}

void TelnetInput::FeedText(unsigned char byte, const TelnetSink& sink) {
  if (byte == telnet::Iac) {
    state_ = State::Command;
    return;
  }
  const bool lfOfCrLf = byte == '\n' && afterCr_;
  afterCr_ = byte == '\r';
  if (byte == '\r' || byte == '\n') {
    if (!lfOfCrLf) EndLine(sink);
    return;
  }
  if (byte < 32 || byte == 127) return;
  if (line_.size() < MaxLine) {
    line_ += static_cast<char>(byte);
  } else {
    cut_ = true;
  }
}

void TelnetInput::FeedCommand(unsigned char byte) {
  // A doubled IAC stands for the code 255 as text. No word of this game needs it, so it is dropped like the others.
  state_ = State::Text;
  if (byte == telnet::Sb) {
    state_ = State::SubOption;
    payload_.clear();
    payloadSeen_ = 0;
  } else if (byte >= telnet::Will && byte < telnet::Iac) {
    verb_ = byte;
    state_ = State::Option;
  }
}

void TelnetInput::FeedSubnegotiation(unsigned char byte) {
  if (++payloadSeen_ > MaxUnended) {
    state_ = State::Text;
  } else if (byte == telnet::Iac) {
    state_ = State::SubCommand;
  } else if (payload_.size() < MaxSubnegotiation) {
    payload_ += static_cast<char>(byte);
  }
}

void TelnetInput::EndLine(const TelnetSink& sink) {
  // The line is moved out first: what it causes may ask for more input.
  const std::string line = std::move(line_);
  const bool cut = cut_;
  line_.clear();
  cut_ = false;
  sink.Line(line, cut);
}

}  // namespace corvid::practice
