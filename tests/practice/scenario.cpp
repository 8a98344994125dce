// SPDX-License-Identifier: GPL-3.0-or-later
#include "practice/scenario.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "game/text.h"

namespace corvid::practice {

std::string Plain(std::string_view bytes) {
  std::string text;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const auto byte = static_cast<unsigned char>(bytes[i]);
    if (byte != telnet::Iac) {
      text += bytes[i];
    } else if (i + 1 < bytes.size()) {
      const auto verb = static_cast<unsigned char>(bytes[++i]);
      if (verb == telnet::Sb) i = bytes.find(static_cast<char>(telnet::Se), i);
      if (verb >= telnet::Will) ++i;
    }
  }
  return StripColours(text);
}

std::vector<std::string> Lines(std::string_view text) {
  std::vector<std::string> lines;
  while (true) {
    const std::size_t end = text.find("\r\n");
    lines.emplace_back(text.substr(0, end));
    if (end == std::string_view::npos) return lines;
    text.remove_prefix(end + 2);
  }
}

TestPlayer::TestPlayer(Game& ofGame, Millis& atTime) : Of(ofGame), Now(atTime), Id(ofGame.Connect(atTime)) {}

std::string TestPlayer::Bytes(std::string_view input) {
  Of.Input(Id, input, Now);
  return Of.TakeOutput(Id);
}

std::string TestPlayer::Type(const std::string& line) {
  std::string out = Bytes(line + "\r\n");
  while (Of.Pour(Id, 1024)) out += Of.TakeOutput(Id);
  return Plain(out);
}

std::string TestPlayer::Hear() {
  return Plain(Of.TakeOutput(Id));
}

void TestPlayer::LogIn(const std::string& name, bool sounds) {
  if (sounds) Bytes(telnet::Command(telnet::Do, telnet::Msp));
  Type(name);
  Type("word");
}

namespace {

void Expect(char kind, const std::string& wanted, const std::string& got, const std::string& cause) {
  const auto lines = Lines(got);
  const bool line = std::find(lines.begin(), lines.end(), wanted) != lines.end();
  const bool inside = got.find(wanted) != std::string::npos;
  const bool good = kind == '=' ? line : inside == (kind == '~');
  EXPECT_TRUE(good) << "after " << cause << "\nexpected " << kind << " " << wanted << "\ngot:\n" << got;
}

}  // namespace

void Play(std::uint64_t seed, const std::string& transcript) {
  Game game(seed);
  Millis now = 0;
  TestPlayer anna(game, now);
  anna.LogIn("Anna", true);
  std::string got;
  std::string cause = "the start";
  std::istringstream text(transcript);
  for (std::string row; std::getline(text, row);) {
    if (row.size() < 2) continue;
    const std::string rest = row.substr(2);
    if (row[0] == '>') {
      got = anna.Type(rest);
      cause = row;
    } else if (row[0] == '+') {
      now += std::stoll(rest);
      game.Advance(now);
      got = anna.Hear();
      cause += " and " + row;
    } else {
      Expect(row[0], rest, got, cause);
    }
  }
}

}  // namespace corvid::practice
