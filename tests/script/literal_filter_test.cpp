// SPDX-License-Identifier: GPL-3.0-or-later
#include "script/literal_filter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>

namespace corvid {
namespace {

using Texts = std::vector<std::string>;

std::set<int32> Found(const LiteralFilter& filter, const std::string& text) {
  std::vector<int32> ids;
  filter.Collect(text, ids);
  return {ids.begin(), ids.end()};
}

TEST(LiteralFilter, FindsLiteralsOfEveryLengthAtEveryPlace) {
  LiteralFilter filter;
  EXPECT_TRUE(filter.Add(1, {"A"}));
  EXPECT_TRUE(filter.Add(2, {"BC"}));
  EXPECT_TRUE(filter.Add(3, {"DEF"}));
  EXPECT_TRUE(filter.Add(4, {"GHIJ"}));
  EXPECT_TRUE(filter.Add(5, {"X", " SAYS HELLO"}));
  EXPECT_FALSE(filter.Add(6, {}));
  EXPECT_EQ(Found(filter, ""), std::set<int32>{});
  EXPECT_EQ(Found(filter, "A"), (std::set<int32>{1}));
  EXPECT_EQ(Found(filter, "BC"), (std::set<int32>{2}));
  EXPECT_EQ(Found(filter, "xBC"), (std::set<int32>{2}));
  EXPECT_EQ(Found(filter, "DEF"), (std::set<int32>{3}));
  EXPECT_EQ(Found(filter, "GHIJ"), (std::set<int32>{4}));
  EXPECT_EQ(Found(filter, "AGHIJDEFBC"), (std::set<int32>{1, 2, 3, 4}));
  EXPECT_EQ(Found(filter, "BOB SAYS HELLO"), (std::set<int32>{1, 5}));
  EXPECT_EQ(Found(filter, "BOB SAYS HELL"), (std::set<int32>{1}));
  EXPECT_EQ(Found(filter, "X"), std::set<int32>{}) << "only its best literal is looked for";
  filter.Clear();
  EXPECT_EQ(Found(filter, "AGHIJDEFBC"), std::set<int32>{});
}

// An id that does not come cannot match: every literal that is in the text must have been found.
TEST(LiteralFilter, NeverLosesOne) {
  std::mt19937 random(3);
  const auto word = [&](std::size_t longest) {
    std::string text;
    for (std::size_t i = random() % longest; i > 0; --i) text += static_cast<char>("ABC \xE9"[random() % 5]);
    return text;
  };
  for (int round = 0; round < 300; ++round) {
    LiteralFilter filter;
    std::vector<Texts> all;
    for (int32 id = 0; id < 30; ++id) {
      Texts literals;
      for (std::size_t i = random() % 3; i > 0; --i)
        if (std::string text = word(7); !text.empty()) literals.push_back(text);
      all.push_back(literals);
      if (random() % 2 == 0) filter.Weigh(literals);
    }
    for (int32 id = 0; id < 30; ++id)
      ASSERT_EQ(filter.Add(id, all[static_cast<std::size_t>(id)]), !all[static_cast<std::size_t>(id)].empty());
    for (int line = 0; line < 20; ++line) {
      const std::string text = word(30);
      const std::set<int32> found = Found(filter, text);
      for (int32 id = 0; id < 30; ++id) {
        const Texts& literals = all[static_cast<std::size_t>(id)];
        const bool holdsAll =
            !literals.empty() && std::all_of(literals.begin(), literals.end(),
                                             [&](const auto& piece) { return text.find(piece) != std::string::npos; });
        ASSERT_TRUE(!holdsAll || found.count(id) == 1) << text;
      }
    }
  }
}

TEST(LiteralFilter, ManyOccurrencesBringFewIds) {
  LiteralFilter filter;
  for (int32 id = 0; id < 500; ++id) filter.Add(id, {"AAAA"});
  filter.Add(500, {"AAAAB"});
  std::vector<int32> ids{7, 501};
  filter.Collect(std::string(4000, 'A') + "B", ids);
  EXPECT_LT(ids.size(), 3000U);
  const std::set<int32> different(ids.begin(), ids.end());
  EXPECT_EQ(different.size(), 502U);
  EXPECT_EQ(*different.rbegin(), 501);
}

TEST(LiteralFilter, PatternsThatShareAWordAreToldApartByTheRest) {
  LiteralFilter filter;
  std::vector<Texts> all;
  for (int i = 0; i < 1000; ++i) all.push_back({" WAVES TO NUMBER " + std::to_string(i) + " OF ALL"});
  for (const Texts& literals : all) filter.Weigh(literals);
  for (int32 i = 0; i < 1000; ++i) filter.Add(i, all[static_cast<std::size_t>(i)]);
  std::vector<int32> ids;
  filter.Collect("BOB WAVES TO NUMBER 537 OF ALL", ids);
  EXPECT_EQ(ids, std::vector<int32>{537});
}

}  // namespace
}  // namespace corvid
