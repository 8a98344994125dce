// SPDX-License-Identifier: GPL-3.0-or-later
#include "game/arguments.h"

#include <charconv>

namespace corvid::practice {

namespace {

template <typename Number>
bool ParseNumber(const std::string& text, Number& number) {
  const char* end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, number);
  return result.ec == std::errc() && result.ptr == end;
}

// Stores the value of an option that has one, or writes Error.
void StoreValue(Arguments& arguments, const std::string& option, const std::string& value) {
  if (option == "--port") {
    if (!ParseNumber(value, arguments.Port)) arguments.Error = "--port needs a number from 0 to 65535, not " + value;
  } else if (option == "--seed") {
    std::uint64_t seed = 0;
    if (!ParseNumber(value, seed)) {
      arguments.Error = "--seed needs a whole number from 0 up, not " + value;
    } else {
      arguments.Seed = seed;
    }
  } else {
    arguments.Record = value;
    if (value.empty()) arguments.Error = "--record needs the name of a file";
  }
}

}  // namespace

Arguments ParseArguments(const std::vector<std::string>& words) {
  Arguments arguments;
  for (std::size_t i = 0; i < words.size() && arguments.Error.empty(); ++i) {
    const std::string& word = words[i];
    if (word == "--parent-exits") {
      arguments.ParentExits = true;
    } else if (word == "--help") {
      arguments.Help = true;
    } else if (word != "--port" && word != "--seed" && word != "--record") {
      arguments.Error = "unknown argument " + word;
    } else if (i + 1 == words.size()) {
      arguments.Error = word + " needs a value";
    } else {
      StoreValue(arguments, word, words[++i]);
    }
  }
  return arguments;
}

std::string UsageText() {
  return "usage: corvid-practice [--port N] [--parent-exits] [--seed N] [--record FILE]\n"
         "  --port N        listen on this port of 127.0.0.1; 0, the default, takes a free one\n"
         "  --parent-exits  end when standard input ends\n"
         "  --seed N        make all chances follow from this number\n"
         "  --record FILE   write what is sent, byte for byte: the first connection to FILE,\n"
         "                  the others to FILE.2, FILE.3 and so on\n"
         "The port is printed on standard output as \"port N\".\n";
}

}  // namespace corvid::practice
