// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <string>

#include "core/spoken_text.h"
#include "platform/espeak/speech_queue.h"

namespace corvid {
namespace {

constexpr auto Queued = SpeechPriority::Queued;
constexpr auto Ahead = SpeechPriority::Ahead;
constexpr auto Over = SpeechPriority::Over;

class Queue : public ::testing::Test {
 protected:
  void Add(std::size_t voice, SpeechPriority priority) {
    Utterance utterance{.sequence = ++sequence, .settings = {}, .text = "x"};
    utterance.settings.priority = priority;
    EXPECT_TRUE(queue.Add(voice, std::move(utterance)));
  }
  // The voices that may be heard now, "1 4".
  std::string Heard() {
    std::string heard;
    const auto sounding = queue.Sounding();
    for (std::size_t voice = 1; voice <= EngineVoices; ++voice) {
      if (sounding[voice]) heard += (heard.empty() ? "" : " ") + std::to_string(voice);
    }
    return heard;
  }
  SpeechQueue queue;
  std::uint64_t sequence = 0;
};

TEST_F(Queue, NobodyAtFirst) {
  EXPECT_EQ(Heard(), "");
}

TEST_F(Queue, QueuedTextsFollowEachOtherOverAllVoices) {
  Add(2, Queued);
  Add(1, Queued);
  Add(2, Queued);
  EXPECT_EQ(Heard(), "2");
  queue.Finish(2);
  EXPECT_EQ(Heard(), "1");
  queue.Finish(1);
  EXPECT_EQ(Heard(), "2");
  queue.Finish(2);
  EXPECT_EQ(Heard(), "");
}

TEST_F(Queue, AheadGoesBeforeWhatIsQueuedWhichGoesOnAfterwards) {
  Add(1, Queued);
  Add(2, Queued);
  EXPECT_EQ(Heard(), "1");
  Add(5, Ahead);
  Add(4, Ahead);
  EXPECT_EQ(Heard(), "5");
  queue.Finish(5);
  EXPECT_EQ(Heard(), "4");
  queue.Finish(4);
  EXPECT_EQ(Heard(), "1");
}

TEST_F(Queue, OverIsHeardAtOnce) {
  Add(1, Queued);
  Add(2, Ahead);
  Add(3, Over);
  Add(4, Over);
  EXPECT_EQ(Heard(), "2 3 4");
  queue.Finish(3);
  queue.Finish(2);
  EXPECT_EQ(Heard(), "1 4");
}

TEST_F(Queue, AVoiceKeepsItsOwnOrder) {
  Add(1, Queued);
  Add(1, Over);
  Add(1, Ahead);
  Add(2, Queued);
  EXPECT_EQ(Heard(), "1");
  queue.Finish(1);
  EXPECT_EQ(Heard(), "1 2");
  queue.Finish(1);
  EXPECT_EQ(Heard(), "1");  // its text of priority ahead holds up voice 2
}

TEST_F(Queue, AQueuedTextWaitsForAnOlderOneThatItsOwnVoiceHoldsUp) {
  Add(2, Over);
  Add(2, Queued);
  Add(1, Queued);
  EXPECT_EQ(Heard(), "2");
  queue.Finish(2);
  EXPECT_EQ(Heard(), "2");
  queue.Finish(2);
  EXPECT_EQ(Heard(), "1");
}

TEST_F(Queue, ATextAheadThatHasBegunKeepsItsTurn) {
  Add(2, Over);
  Add(2, Ahead);
  Add(3, Ahead);
  EXPECT_EQ(Heard(), "2 3");
  queue.Finish(2);
  EXPECT_EQ(Heard(), "3");
  queue.Finish(3);
  EXPECT_EQ(Heard(), "2");
}

TEST_F(Queue, ClearingAVoiceLetsTheNextOneGoOn) {
  Add(1, Queued);
  Add(2, Queued);
  Add(1, Queued);
  Add(3, Ahead);
  EXPECT_EQ(Heard(), "3");
  queue.Clear(3);
  EXPECT_EQ(Heard(), "1");
  queue.Clear(1);
  EXPECT_EQ(Heard(), "2");
  EXPECT_EQ(queue.First(1), nullptr);
  queue.Clear(2);
  EXPECT_EQ(Heard(), "");
}

TEST_F(Queue, IsBounded) {
  for (std::size_t i = 0; i < SpeechQueue::LongestQueue; ++i) Add(1, Queued);
  EXPECT_FALSE(queue.Add(1, {.sequence = ++sequence, .settings = {}, .text = "x"}));
  Add(2, Queued);
  queue.Clear(1);
  EXPECT_EQ(Heard(), "2");
}

// The pieces of a text at the given length, separated by "/".
std::string Pieces(const std::string& text, std::size_t length) {
  std::string pieces;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = SpokenPieceEnd(text, at, length);
    EXPECT_GT(end, at);
    pieces += (at == 0 ? "" : "/") + text.substr(at, end - at);
    at = end;
  }
  return pieces;
}

TEST(SpokenText, IsCutWhereAVoiceWouldPause) {
  EXPECT_EQ(Pieces("short", 10), "short");
  EXPECT_EQ(Pieces("It is. He was, I know", 14), "It is. /He was, I know");
  EXPECT_EQ(Pieces("one, two three", 12), "one, /two three");
  EXPECT_EQ(Pieces("one two three", 12), "one two /three");
  EXPECT_EQ(Pieces("abcdefghij", 4), "abcd/efgh/ij");
  EXPECT_EQ(Pieces("a\xC3\xA9\xC3\xA9\xC3\xA9", 4), "a\xC3\xA9/\xC3\xA9\xC3\xA9");  // never inside a character
  EXPECT_EQ(Pieces("\xF0\x9F\x98\x80\xF0\x9F\x98\x80", 2), "\xF0\x9F\x98\x80/\xF0\x9F\x98\x80");
}

TEST(SpokenText, IsWellFormedWithoutControlCodes) {
  EXPECT_EQ(SpokenText("plain"), "plain");
  EXPECT_EQ(SpokenText(std::string("a\0b\x07\x1B[0m\x7F\r\n", 10)), "a b  [0m  ");
  EXPECT_EQ(SpokenText("caf\xE9"), "caf\xC3\xA9");
  EXPECT_EQ(SpokenText("caf\xC3\xA9"), "caf\xC3\xA9");
  EXPECT_EQ(SpokenText("a\xC2\x85z"), "a  z");
}

}  // namespace
}  // namespace corvid
