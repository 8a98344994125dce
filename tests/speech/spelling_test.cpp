// SPDX-License-Identifier: GPL-3.0-or-later
// Characters by their names, and words letter by letter.
#include <gtest/gtest.h>

#include <set>

#include "speech/punctuation.h"
#include "speech/speech.h"
#include "speech_house.h"

namespace corvid {
namespace {

using testing_speech::SpeechHouse;
using testing_speech::Texts;

TEST(Punctuation, HasItsSpokenNames) {
  const std::pair<const char*, const char*> names[] = {
      {" ", "space"},        {"!", "exclaim"},       {"\"", "quote"},     {"'", "apostrophe"},   {"(", "left parren"},
      {")", "right parren"}, {",", "comma"},         {"-", "dash"},       {".", "period"},       {":", "colan"},
      {";", "semi colan"},   {"<", "less"},          {">", "greater"},    {"?", "question"},     {"[", "left bracket"},
      {"\\", "back slash"},  {"]", "right bracket"}, {"{", "left brace"}, {"|", "vertical bar"}, {"}", "right brace"}};
  std::set<std::string> named;
  for (const auto& [character, name] : names) {
    EXPECT_EQ(SpokenCharacter(character), name);
    named.insert(character);
  }
  for (char c = 33; c < 127; ++c) {
    const std::string character(1, c);
    if (named.contains(character)) continue;
    EXPECT_EQ(SpokenCharacter(character), character);
  }
  EXPECT_EQ(SpokenCharacter("\xC3\xA9"), "\xC3\xA9");
}

TEST(Punctuation, HasARowForEachKeyAndAtMostNinetySeven) {
  EXPECT_LE(PunctuationTable().size(), 97u);
  std::set<int16> keys;
  std::set<std::string_view> characters;
  for (const PunctuationRow& row : PunctuationTable()) {
    EXPECT_TRUE(keys.insert(row.KeyCode).second) << row.KeyCode;
    EXPECT_TRUE(characters.insert(row.Text).second) << row.Text;
  }
  EXPECT_EQ(characters.size(), 95u);  // all that a US keyboard types
}

TEST(SayCharacter, TellsWhatAKeyTypes) {
  EXPECT_EQ(SayCharacter('A', 0), "a");
  EXPECT_EQ(SayCharacter('A', 1), "A");
  EXPECT_EQ(SayCharacter('7', 0), "7");
  EXPECT_EQ(SayCharacter('7', 1), "&");
  EXPECT_EQ(SayCharacter('0', 1), "right parren");
  EXPECT_EQ(SayCharacter(32, 0), "space");
  EXPECT_EQ(SayCharacter(186, 1), "colan");
  EXPECT_EQ(SayCharacter(222, 0), "apostrophe");
  EXPECT_EQ(SayCharacter('A', 2), "");
  EXPECT_EQ(SayCharacter(112, 0), "");
}

TEST(SpellWord, SpeaksEachCharacterWithAPauseBetween) {
  SpeechHouse house;
  house.AllChannels(3);
  house.ReadyBoth();
  house.state.LastSpoken = "kept";
  house.speech.SpellWord("a b\xC3\xA9", 2);
  EXPECT_EQ(house.Told("speech"), Texts({"2 a", "2 space", "2 b", "2 \xC3\xA9"}));
  EXPECT_EQ(house.Told("silence"), Texts({"2", "2", "2", "2"}));
  EXPECT_EQ(house.mem.clock.MonotonicMilliseconds(), 1200);  // none behind the last
  EXPECT_EQ(house.state.LastSpoken, "kept");
}

TEST(SpellWord, EndsAtAKey) {
  SpeechHouse house;
  house.AllChannels(3);
  house.keyboard.LastKeyCode = 65;  // the key before does not count
  auto timer = house.mem.loop.Create([&] { house.keyboard.LastKeyCode = 27; });
  timer->SetInterval(500);
  timer->SetEnabled(true);
  house.speech.SpellWord("abcdef", 2);
  EXPECT_EQ(house.Told("speech"), Texts({"2 a", "2 b"}));
}

TEST(SpellWord, LeavesTheLastKeyAsItWas) {
  SpeechHouse house;
  house.keyboard.LastKeyCode = 65;
  house.speech.SpellWord("ab", 2);
  EXPECT_EQ(house.keyboard.LastKeyCode, 65);
}

}  // namespace
}  // namespace corvid
