// SPDX-License-Identifier: GPL-3.0-or-later
#include "sessions/telnet.h"

#include <array>

namespace corvid {

namespace {

enum Code : unsigned char {
  Bel = 7,
  Lf = 10,
  Cr = 13,
  Esc = 27,
  Se = 0xF0,
  Sb = 0xFA,
  Will = 0xFB,
  Wont = 0xFC,
  Do = 0xFD,
  Dont = 0xFE,
  Iac = 0xFF
};
enum OptionCode : unsigned char { Binary = 0, Echo = 1, TerminalType = 24, Msp = 90 };

enum class ByteClass : unsigned char { Text, High, Break, Dropped, Bell, Command };

constexpr std::array<ByteClass, 256> MakeClasses() {
  std::array<ByteClass, 256> classes{};
  for (std::size_t code = 0; code < classes.size(); ++code)
    classes[code] = code < 32 ? ByteClass::Dropped : code < 128 ? ByteClass::Text : ByteClass::High;
  classes[Esc] = ByteClass::Text;
  classes[Cr] = classes[Lf] = ByteClass::Break;
  classes[Bel] = ByteClass::Bell;
  classes[Iac] = ByteClass::Command;
  return classes;
}
constexpr std::array<ByteClass, 256> Classes = MakeClasses();

// How the four negotiation verbs are answered. 0: not at all.
struct AnswerRow {
  int Option;  // -1: any other
  unsigned char ToWill;
  unsigned char ToDo;
  bool IsMsp;
};
constexpr AnswerRow Answers[] = {
    {Binary, Do, Will, false}, {Echo, Do, Will, false}, {TerminalType, Do, Will, false},
    {Msp, Do, 0, true},        {-1, Dont, Wont, false},
};

const AnswerRow& RowOf(unsigned char option) {
  const AnswerRow* row = Answers;
  while (row->Option >= 0 && row->Option != option) ++row;
  return *row;
}

std::string Bytes(std::initializer_list<unsigned char> codes) {
  std::string text;
  for (const unsigned char code : codes) text += static_cast<char>(code);
  return text;
}

bool Negotiate(unsigned char verb, unsigned char option, TelnetEffects& effects) {
  const AnswerRow& row = RowOf(option);
  if (verb == Will && row.IsMsp) effects.MspOffered();
  const unsigned char answer = verb == Will ? row.ToWill : verb == Do ? row.ToDo : 0;
  return answer == 0 || effects.Answer(Bytes({Iac, answer, option}));
}

// The scan of one block. Text goes over in runs.
class Scan {
 public:
  Scan(std::string_view bytes, DecodedBlock& block, TelnetEffects& effects)
      : bytes_(bytes), block_(block), effects_(effects) {}

  bool Run() {
    while (place_ < bytes_.size()) {
      // Locals only: this loop sees every byte that a game sends.
      const std::size_t start = place_;
      const std::string_view bytes = bytes_;
      std::size_t end = start;
      unsigned char seen = 0;
      for (; end < bytes.size(); ++end) {
        const auto code = static_cast<unsigned char>(bytes[end]);
        if (Classes[code] > ByteClass::High) break;
        seen |= code;
      }
      block_.HighBytes = block_.HighBytes || seen > 127;
      block_.Text.append(bytes.substr(start, end - start));
      place_ = end;
      if (place_ < bytes_.size() && !Special()) return false;
    }
    return true;
  }

 private:
  ByteClass ClassAt(std::size_t place) const { return Classes[static_cast<unsigned char>(bytes_[place])]; }

  // The next byte; behind the end of the read, the 0 that stands there.
  unsigned char Next() {
    const unsigned char code = place_ < bytes_.size() ? static_cast<unsigned char>(bytes_[place_]) : 0;
    ++place_;
    return code;
  }

  bool Special() {
    switch (ClassAt(place_)) {
      case ByteClass::Break:
        if (bytes_[place_] == '\n' && block_.Text.ends_with('\n')) block_.DoubleFeeds = true;
        block_.Text += bytes_[place_++];
        block_.LastBreak = block_.Text.size();
        return true;
      case ByteClass::Bell:
        ++place_;
        effects_.Bell();
        return true;
      case ByteClass::Command:
        ++place_;
        return Command();
      default:
        ++place_;
        return true;
    }
  }

  bool Command() {
    const unsigned char verb = Next();
    switch (verb) {
      case Iac:
        block_.Text += static_cast<char>(Iac);
        block_.HighBytes = true;
        return true;
      case Sb: {
        const unsigned char option = Next();
        Next();
        // Kept: the end of a subnegotiation is not looked for, its other bytes are text.
        return option != TerminalType || effects_.Answer(Bytes({Iac, Sb, TerminalType, 0}) + "dumb" + Bytes({Iac, Se}));
      }
      case Will:
      case Wont:
      case Do:
      case Dont:
        return Negotiate(verb, Next(), effects_);
      default:
        return true;
    }
  }

  std::string_view bytes_;
  DecodedBlock& block_;
  TelnetEffects& effects_;
  std::size_t place_ = 0;
};

}  // namespace

bool DecodeTelnet(std::string_view bytes, DecodedBlock& block, TelnetEffects& effects) {
  block.Text.clear();
  block.LastBreak = 0;
  block.HighBytes = block.DoubleFeeds = false;
  return Scan(bytes, block, effects).Run();
}

}  // namespace corvid
