// SPDX-License-Identifier: GPL-3.0-or-later
#include "script/search_string.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "core/text.h"
#include "script/options_state.h"
#include "script/script_state.h"
#include "script/statement_text.h"

namespace corvid {

namespace {

constexpr char EscapeMark = '\x7f';     // in front of an escaped code, which is raised by 128 meanwhile
constexpr char VariablePlace = '\x01';  // stands for a variable
constexpr std::size_t Nowhere = std::string::npos;

char Raised(char c) {
  return static_cast<char>(static_cast<unsigned char>(c) ^ 0x80U);
}

std::string WithoutName(const std::string& text) {
  const std::size_t close = text.find('>');
  return !text.empty() && text.front() == '<' && close != Nowhere ? text.substr(close + 1) : text;
}

// "[x]" is the literal x, for as long as there is one: what comes together may be another.
void OpenBrackets(std::string& text) {
  std::string opened;
  for (const char c : text) {
    opened += c;
    while (opened.size() >= 3 && opened.back() == ']' && opened[opened.size() - 3] == '[')
      opened.replace(opened.size() - 3, 3, 1, opened[opened.size() - 2]);
  }
  text = std::move(opened);
}

// One search string on its way.
class Conversion {
 public:
  Conversion(const std::string& original, char escape, TriggerRecord& record)
      : original_(original), escape_(escape), record_(record) {}

  std::string Run(std::string& ErrorDescription) {
    text_ = WithoutName(original_);
    constexpr int32 cleared = 10;
    for (int32 i = 1; i <= cleared; ++i) {
      if (i <= record_.Parts.Held()) record_.Parts[i].clear();
      if (i <= record_.Names.Held()) record_.Names[i].clear();
    }
    CodeEscapes();
    TakeVariables(ErrorDescription);
    if (!ErrorDescription.empty()) return "";
    CutParts();
    for (int32 i = 1; i <= record_.Parts.Held(); ++i) OpenBrackets(record_.Parts[i]);
    std::replace(text_.begin(), text_.end(), VariablePlace, '*');
    return escaped_ ? RemoveEscapeCoding(text_) : text_;
  }

 private:
  // Kept: behind an escaped pair the text goes on from the original, so that with a name in front as many characters
  // come again as the name is long. A code above 127 has no meaning to take away: it stands as it is.
  void CodeEscapes() {
    std::string coded;
    const std::string* source = &text_;
    std::size_t from = 0;
    while (true) {
      const std::size_t place = source->find(escape_, from);
      if (place == Nowhere || place + 1 >= source->size()) break;
      const char escaped = (*source)[place + 1];
      coded.append(*source, from, place - from);
      if (static_cast<unsigned char>(escaped) < 0x80U) {
        coded += EscapeMark;
        coded += Raised(escaped);
      } else {
        coded += escaped;
      }
      from = place + 2;
      source = &original_;
      escaped_ = true;
    }
    coded.append(*source, std::min(from, source->size()), Nowhere);
    text_ = std::move(coded);
  }

  void TakeVariables(std::string& ErrorDescription) {
    std::string taken;
    std::size_t from = 0;
    while (true) {
      const std::size_t place = text_.find('&', from);
      if (place == Nowhere || place + 1 >= text_.size()) break;
      const bool brace = text_[place + 1] == '{';
      const std::size_t start = place + (brace ? 2 : 1);
      std::size_t end = start;
      while (end < text_.size() && (IsLetter(text_[end]) || IsDigit(text_[end]))) ++end;
      if (brace && end >= text_.size()) {
        ErrorDescription = "Unbalanced braces in search string around variable";
        return;
      }
      if (brace && text_[end] != '}') {
        ErrorDescription = "Illegal character found in variable name within braces";
        return;
      }
      names_.push_back(text_.substr(start, end - start));
      taken.append(text_, from, place - from);
      taken += VariablePlace;
      from = end + (brace ? 1 : 0);
    }
    taken.append(text_, from, Nowhere);
    text_ = std::move(taken);
  }

  void CutParts() {
    for (std::size_t i = 0; i < text_.size(); ++i) {
      const char c = text_[i];
      if (bracket_ != Nowhere) {
        if (c == ']') CloseBracket(i);
      } else if (c == '?' || c == '#' || c == '*' || c == VariablePlace) {
        ClosePart(i, true);
        if (c == VariablePlace) NameNextPart();
      } else if (c == '[') {
        bracket_ = i;
      } else if (part_ == Nowhere) {
        part_ = i;
      }
    }
    ClosePart(text_.size(), true);
  }

  // A bracket around one character is that character; a wider one is a wildcard.
  void CloseBracket(std::size_t place) {
    const bool single = place - bracket_ <= 2;
    if (!single) {
      ClosePart(bracket_, false);  // Kept: in front of a wide bracket escapes stay coded.
    } else if (part_ == Nowhere) {
      part_ = bracket_;
    }
    bracket_ = Nowhere;
  }

  void ClosePart(std::size_t end, bool decode) {
    if (part_ == Nowhere) return;
    const std::string part = text_.substr(part_, end - part_);
    record_.Parts[++count_] = decode && escaped_ ? RemoveEscapeCoding(part) : part;
    part_ = Nowhere;
  }

  void NameNextPart() {
    if (named_ < names_.size()) record_.Names[count_ + 1] = names_[named_];
    ++named_;
  }

  const std::string& original_;
  const char escape_;
  TriggerRecord& record_;
  std::string text_;
  bool escaped_ = false;
  std::vector<std::string> names_;
  std::size_t named_ = 0;          // names that parts have got
  int32 count_ = 0;                // parts closed
  std::size_t part_ = Nowhere;     // where the open part begins
  std::size_t bracket_ = Nowhere;  // where the open bracket stands
};

// The colour's name as the tags have it; empty when there is none of this name.
std::string ColourName(const ScriptState& state, const std::string& word) {
  constexpr std::size_t first = 30, last = 39;
  for (std::size_t i = first; i <= last; ++i)
    if (!state.ColourNames[i].empty() && SameText(state.ColourNames[i], word)) return state.ColourNames[i];
  return "";
}

}  // namespace

std::string ConvertSearchString(ScriptState& state, const OptionsState& options, const std::string& instring2,
                                int16 Index, std::string& ErrorDescription) {
  return Conversion(instring2, options.EscapeChar, state.Triggers[Index]).Run(ErrorDescription);
}

std::string ConvertColourString(const ScriptState& state, const std::string& searchText,
                                std::string& ErrorDescription) {
  std::vector<std::string> words = Split(WithoutName(searchText), " ");
  if (words.empty()) words.emplace_back();
  std::string pattern = "*";
  std::size_t next = 0;
  const auto take = [&](std::string_view ending) {
    const std::string word = next < words.size() ? words[next] : "";
    const std::string name = ColourName(state, word);
    if (name.empty()) ErrorDescription = "Colour " + word + " not found in trigger search string.";
    pattern += "<" + name + std::string(ending) + ">*";
    ++next;
    return !name.empty();
  };
  if (SameText(words[0], "BRIGHT")) {
    pattern = "<BRIGHT>*";
    ++next;
  }
  if (!take("")) return "";
  if (next >= words.size()) return pattern;
  if (!SameText(words[next], "ON")) {
    ErrorDescription = "The \"ON\" word was expected in colour.";
    return "";
  }
  if (++next + 1 != words.size()) {
    ErrorDescription = "Expected colour at end of search string";
    return "";
  }
  return take(" BACKGROUND") ? pattern : "";
}

}  // namespace corvid
