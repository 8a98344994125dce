// SPDX-License-Identifier: GPL-3.0-or-later
#include "sessions/line_maker.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>

#include "core/fault.h"
#include "core/number.h"
#include "core/text.h"
#include "core/utf8.h"

namespace corvid {

namespace {

constexpr char Escape = '\x1b';

enum class CharClass : unsigned char { Symbol, Letter, Digit, Space };

constexpr std::array<CharClass, 256> MakeClasses() {
  std::array<CharClass, 256> classes{};
  for (std::size_t c = 'A'; c <= 'Z'; ++c) classes[c] = classes[c + 32] = CharClass::Letter;
  for (std::size_t c = '0'; c <= '9'; ++c) classes[c] = CharClass::Digit;
  classes[' '] = CharClass::Space;
  return classes;
}
constexpr std::array<CharClass, 256> Classes = MakeClasses();

CharClass ClassOf(char c) {
  return Classes[static_cast<unsigned char>(c)];
}

// The counters are 16-bit ones of the language; a line that is longer than they reach is art or none at 32767 already.
int Counted(std::size_t count) {
  return static_cast<int>(std::min<std::size_t>(count, INT16_MAX));
}

// The usual colour number: one to three digits.
std::optional<int32> ShortNumber(std::string_view piece) {
  if (piece.empty() || piece.size() > 3 || !std::all_of(piece.begin(), piece.end(), IsDigit)) return std::nullopt;
  int32 number = 0;
  for (const char digit : piece) number = number * 10 + (digit - '0');
  return number;
}

}  // namespace

bool IsArt(std::size_t spokenLength, int symbols, int spaces, int minLength, int percent) {
  if (spokenLength < static_cast<std::size_t>(std::max(0, minLength))) return false;
  const double others = static_cast<double>(spokenLength) - spaces + 1;
  return symbols / others * 100 > percent;
}

// One line on its way.
class LineMaker::Run {
 public:
  Run(const LineMaker& maker, LineVersions& versions, std::vector<std::string>& faults)
      : script_(maker.script_),
        options_(maker.options_),
        line_(versions),
        faults_(faults),
        wantsTags_(options_.ColourTextTags || options_.ColourDisplay || options_.TriggerColourNeeded),
        spokenDiffers_(!options_.QuietChars.empty() || options_.RemoveAsciiArt == 2) {}

  void Make(std::string_view text) {
    std::size_t place = 0;
    while (place < text.size()) {
      const std::size_t escape = std::min(text.find(Escape, place), text.size());
      Text(text, place, escape);
      place = escape;
      if (place < text.size()) place = Sequence(text, place + 1);
    }
    if (!wantsTags_) line_.TaggedLine = line_.PlainLine;
    if (!spokenDiffers_) line_.SpokenLine = line_.PlainLine;
    if (options_.RemoveAsciiArt != 0 && IsArt(line_.SpokenLine.size(), Counted(symbols_), Counted(spaces_),
                                              options_.AsciiMinLength, options_.AsciiPercent))
      line_.SpokenLine.clear();
  }

 private:
  // What stands outside escape sequences.
  void Text(std::string_view line, std::size_t from, std::size_t to) {
    const std::string_view run = line.substr(from, to - from);
    line_.PlainLine.append(run);
    if (wantsTags_) line_.TaggedLine.append(run);
    if (spokenDiffers_) {
      for (std::size_t place = from; place < to;) place += Spoken(line, place);
    } else if (options_.RemoveAsciiArt == 1) {
      Count(run);
    }
  }

  void Count(std::string_view run) {
    std::size_t symbols = 0;  // locals only: this loop sees every character that a game shows
    std::size_t spaces = 0;
    for (const char c : run) {
      symbols += ClassOf(c) == CharClass::Symbol ? 1 : 0;
      spaces += ClassOf(c) == CharClass::Space ? 1 : 0;
    }
    symbols_ += symbols;
    spaces_ += spaces;
  }

  // One character of the spoken version; returns how many bytes it took.
  std::size_t Spoken(std::string_view line, std::size_t place) {
    const char c = line[place];
    switch (ClassOf(c)) {
      case CharClass::Letter:
        line_.SpokenLine += c;
        afterLetter_ = true;
        break;
      case CharClass::Space:
        ++spaces_;
        [[fallthrough]];
      case CharClass::Digit:
        line_.SpokenLine += c;
        afterLetter_ = false;
        break;
      case CharClass::Symbol:
        return SpokenSymbol(line, place);
    }
    return 1;
  }

  // A character of several bytes stays whole: half of one would be spoken as something else.
  std::size_t SpokenSymbol(std::string_view line, std::size_t place) {
    const std::size_t length = CharLength(line, place);
    std::string_view symbol = line.substr(place, length);
    if (!options_.QuietChars.empty()) {
      if (IsQuiet(symbol)) symbol = " ";
      line_.SpokenLine += symbol;  // Kept: with quiet characters a symbol stands here twice.
    }
    if (options_.RemoveAsciiArt == 2) {
      WrittenSymbol(line, place, symbol.front());
      return length;
    }
    line_.SpokenLine += symbol;
    if (options_.RemoveAsciiArt == 1) {
      symbols_ += length;
    } else {
      afterLetter_ = false;
    }
    return length;
  }

  bool IsQuiet(std::string_view symbol) const {
    const std::vector<int16>& quiet = options_.QuietChars;
    const std::u16string codes = ToUtf16(symbol);
    return std::all_of(codes.begin(), codes.end(), [&](char16_t code) {
      return std::find(quiet.begin(), quiet.end(), static_cast<int16>(code)) != quiet.end();
    });
  }

  // Of symbols, only those that belong to writing are spoken.
  void WrittenSymbol(std::string_view line, std::size_t place, char c) {
    if (std::string_view("-%.',!?").find(c) != std::string_view::npos) {
      line_.SpokenLine += afterLetter_ ? c : ' ';
      afterLetter_ = false;
    } else if (c == '$' && place + 1 < line.size()) {
      // Kept: meant for an amount of money, but no code sorts behind "=0" and not behind "9".
      const std::string_view next = line.substr(place + 1, 1);
      if (next > "=0" && next <= "9") line_.SpokenLine += '$';
    }
  }

  // An escape sequence whose first code is at place; returns the place behind it. Any letter ends it, and one that the
  // line's end cuts off is lost.
  std::size_t Sequence(std::string_view line, std::size_t place) {
    afterLetter_ = false;
    const std::size_t start = place;
    while (place < line.size() && ClassOf(line[place]) != CharClass::Letter) ++place;
    if (place < line.size() && wantsTags_ && UpperChar(line[place]) == 'M') Tags(line.substr(start, place - start));
    return place + 1;
  }

  void Tags(std::string_view numbers) {
    if (!numbers.empty() && numbers.front() == '[') numbers.remove_prefix(1);
    while (!numbers.empty()) {
      const std::size_t end = std::min(numbers.find(';'), numbers.size());
      try {
        Tag(numbers.substr(0, end));
      } catch (const Fault& fault) {
        if (faults_.size() < MostFaultsOfALine) faults_.emplace_back(fault.what());
      }
      numbers.remove_prefix(std::min(end + 1, numbers.size()));
    }
  }

  void Tag(std::string_view piece) {
    std::optional<int32> number = ShortNumber(piece);
    if (!number && IsNumeric(piece)) number = ToInt32(Val(piece));
    if (!number) return;
    if (*number < 0 || *number >= static_cast<int32>(script_.ColourNames.size()))
      throw Fault(FaultKind::Index, "Colour " + std::to_string(*number) + " is outside 0 to 99");
    const std::string& name = script_.ColourNames[static_cast<std::size_t>(*number)];
    if (!name.empty()) line_.TaggedLine.append("<").append(name).append(">");
  }

  const ScriptState& script_;
  const OptionsState& options_;
  LineVersions& line_;
  std::vector<std::string>& faults_;
  const bool wantsTags_;
  const bool spokenDiffers_;
  bool afterLetter_ = false;
  std::size_t symbols_ = 0;
  std::size_t spaces_ = 0;
};

void LineMaker::Make(std::string_view line, LineVersions& versions, std::vector<std::string>& faults) const {
  versions.PlainLine.clear();
  versions.TaggedLine.clear();
  versions.SpokenLine.clear();
  if (!line.empty()) Run(*this, versions, faults).Make(line);
}

}  // namespace corvid
