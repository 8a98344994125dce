// SPDX-License-Identifier: GPL-3.0-or-later
#include "sessions/telnet.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvid {
namespace {

class Recorder : public TelnetEffects {
 public:
  bool Answer(std::string_view bytes) override {
    Answers.emplace_back(bytes);
    return Works;
  }
  void MspOffered() override { Msp = true; }
  void Bell() override { ++Bells; }
  std::vector<std::string> Answers;
  bool Works = true;
  bool Msp = false;
  int Bells = 0;
};

std::string Raw(std::initializer_list<int> codes) {
  std::string text;
  for (const int code : codes) text += static_cast<char>(code);
  return text;
}

constexpr int Iac = 255, Will = 251, Wont = 252, Do = 253, Dont = 254, Sb = 250, Se = 240;

struct Row {
  int Option;
  int ToWill;  // verb of the answer, 0 for none
  int ToDo;
};

class TelnetAnswers : public ::testing::TestWithParam<Row> {};

TEST_P(TelnetAnswers, AreThoseOfTheTable) {
  const Row row = GetParam();
  DecodedBlock block;
  const std::pair<int, int> asked[] = {{Will, row.ToWill}, {Do, row.ToDo}, {Wont, 0}, {Dont, 0}};
  for (const auto& [verb, answer] : asked) {
    Recorder recorder;
    ASSERT_TRUE(DecodeTelnet("a" + Raw({Iac, verb, row.Option}) + "b", block, recorder));
    EXPECT_EQ(block.Text, "ab");
    const std::vector<std::string> expected =
        answer == 0 ? std::vector<std::string>{} : std::vector<std::string>{Raw({Iac, answer, row.Option})};
    EXPECT_EQ(recorder.Answers, expected) << "verb " << verb << " option " << row.Option;
    EXPECT_EQ(recorder.Msp, row.Option == 90 && verb == Will);
  }
}

INSTANTIATE_TEST_SUITE_P(Options, TelnetAnswers,
                         ::testing::Values(Row{0, Do, Will}, Row{1, Do, Will}, Row{24, Do, Will}, Row{90, Do, 0},
                                           Row{3, Dont, Wont}, Row{31, Dont, Wont}, Row{86, Dont, Wont},
                                           Row{201, Dont, Wont}, Row{255, Dont, Wont}));

TEST(Telnet, RefusesEachTimeAnew) {
  Recorder recorder;
  DecodedBlock block;
  DecodeTelnet(Raw({Iac, Will, 86, Iac, Will, 86}), block, recorder);
  EXPECT_EQ(recorder.Answers, (std::vector<std::string>{Raw({Iac, Dont, 86}), Raw({Iac, Dont, 86})}));
}

TEST(Telnet, AnswersTheTerminalTypeAndLeavesTheRestOfASubnegotiationAsText) {
  Recorder recorder;
  DecodedBlock block;
  DecodeTelnet(Raw({Iac, Sb, 24, 1, Iac, Se}) + "x", block, recorder);
  EXPECT_EQ(recorder.Answers, (std::vector<std::string>{Raw({Iac, Sb, 24, 0}) + "dumb" + Raw({Iac, Se})}));
  EXPECT_EQ(block.Text, "x");
  DecodeTelnet(Raw({Iac, Sb, 201}) + "?Core.Hello {}" + Raw({Iac, Se}), block, recorder);
  EXPECT_EQ(recorder.Answers.size(), 1U);
  EXPECT_EQ(block.Text, "Core.Hello {}") << "one byte behind the option goes, the payload stays";
}

TEST(Telnet, TakesMissingBytesAsZero) {
  const std::pair<std::string, std::vector<std::string>> cases[] = {
      {Raw({Iac}), {}},
      {Raw({Iac, Will}), {Raw({Iac, Do, 0})}},
      {Raw({Iac, Do}), {Raw({Iac, 251, 0})}},
      {Raw({Iac, Sb}), {}},
      {Raw({Iac, Sb, 24}), {Raw({Iac, Sb, 24, 0}) + "dumb" + Raw({Iac, Se})}},
  };
  for (const auto& [bytes, answers] : cases) {
    Recorder recorder;
    DecodedBlock block;
    EXPECT_TRUE(DecodeTelnet(bytes, block, recorder));
    EXPECT_EQ(block.Text, "");
    EXPECT_EQ(recorder.Answers, answers);
  }
}

TEST(Telnet, KeepsADoubledIacAsOneCharacterAndDropsOtherVerbs) {
  Recorder recorder;
  DecodedBlock block;
  DecodeTelnet("a" + Raw({Iac, Iac}) + "b" + Raw({Iac, 249}) + "c" + Raw({Iac, Se}) + "d", block, recorder);
  EXPECT_EQ(block.Text,
            "a\xff"
            "bcd");
  EXPECT_TRUE(recorder.Answers.empty());
}

TEST(Telnet, DropsControlCodesAndRingsTheBell) {
  Recorder recorder;
  DecodedBlock block;
  std::string all;
  for (int code = 0; code < 32; ++code) all += static_cast<char>(code);
  DecodeTelnet(all + "\x7f\x80\xfe", block, recorder);
  EXPECT_EQ(block.Text, "\n\r\x1b\x7f\x80\xfe");
  EXPECT_EQ(recorder.Bells, 1);
  EXPECT_TRUE(block.HighBytes);
}

TEST(Telnet, FindsTheLastBreak) {
  Recorder recorder;
  DecodedBlock block;
  const std::pair<std::string, std::size_t> cases[] = {{"", 0},   {"abc", 0},     {"abc\r\n", 5},   {"abc\n>", 4},
                                                       {"\r", 1}, {"a\rb\nc", 4}, {"\x01\x02\n", 1}};
  for (const auto& [bytes, place] : cases) {
    DecodeTelnet(bytes, block, recorder);
    EXPECT_EQ(block.LastBreak, place) << bytes;
    EXPECT_FALSE(block.HighBytes);
  }
}

TEST(Telnet, EndsAtAnAnswerThatFails) {
  Recorder recorder;
  recorder.Works = false;
  DecodedBlock block;
  EXPECT_FALSE(DecodeTelnet("a" + Raw({Iac, Will, 1, Iac, Will, 1}) + "b", block, recorder));
  EXPECT_EQ(recorder.Answers.size(), 1U);
}

}  // namespace
}  // namespace corvid
