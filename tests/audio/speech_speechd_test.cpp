// SPDX-License-Identifier: GPL-3.0-or-later
// The screen reader's speech against a service of the test's own, which can hang and die as it is told.
#include "speechd_rig.h"

namespace corvid {
namespace {

class Speechd : public PrivateFolders {
 protected:
  Speechd() {
    std::ofstream(Config() / "speechd.conf") << "DisableAutoSpawn\n";
    socketFile = (folder / "socket").string();
    setenv("SPEECHD_ADDRESS", ("unix_socket:" + socketFile).c_str(), 1);
  }
  std::string socketFile;
};

TEST_F(Speechd, SaysInOrderOverOneConnectionPerChannel) {
  FakeService service(socketFile);
  SpeechdReader reader(notices.Callback());
  ASSERT_TRUE(reader.Start()) << reader.Problem();
  EXPECT_EQ(service.connections, 1);
  reader.Say(1, "first line", false);
  reader.Say(5, "menu", false);
  reader.Say(1, "second line", false);
  ASSERT_TRUE(Until([&] { return service.Told().size() == 3; }));
  EXPECT_EQ(service.Told(),
            (std::vector<std::string>{"incoming: first line", "system: menu", "incoming: second line"}));
  EXPECT_EQ(service.connections, 2);
  EXPECT_EQ(notices.Count(), 0U);
}

TEST_F(Speechd, InterruptStopsItsOwnChannelOnly) {
  FakeService service(socketFile);
  SpeechdReader reader(notices.Callback());
  ASSERT_TRUE(reader.Start());
  reader.Say(1, "game text", false);
  reader.Say(2, "typed", false);
  reader.Say(2, "more", true);
  reader.Say(2, "", true);
  reader.Say(6, "", true);  // never spoke: nothing to stop
  reader.Say(1, "last", false);
  ASSERT_TRUE(Until([&] { return service.WasTold("incoming: last"); }));
  EXPECT_TRUE(service.WasTold("incoming: game text"));
  reader.Say(2, "spoken", false);
  ASSERT_TRUE(Until([&] { return service.WasTold("entry: spoken"); }));
  reader.Say(2, "", true);
  reader.Say(1, "end", false);
  ASSERT_TRUE(Until([&] { return service.WasTold("incoming: end"); }));
  EXPECT_TRUE(service.WasTold("entry CANCEL SELF"));
  for (const std::string& line : service.Told()) {
    EXPECT_TRUE(line.find("CANCEL") == std::string::npos || line == "entry CANCEL SELF") << line;
  }
}

TEST_F(Speechd, RepairsWhatItSays) {
  FakeService service(socketFile);
  SpeechdReader reader(notices.Callback());
  ASSERT_TRUE(reader.Start());
  reader.Say(1, "caf\xE9 caf\xC3\xA9", false);
  reader.Say(1,
             "a\x07\x1B"
             "b\r\n.\r\nc",
             false);
  reader.Say(1, ".", false);
  reader.Say(1, "> ", false);
  reader.Say(1, "  ", false);
  reader.Say(1, "\r\n", false);
  reader.Say(0, "no channel", false);
  reader.Say(7, "no channel", false);
  reader.Say(1, "end", false);
  ASSERT_TRUE(Until([&] { return service.WasTold("incoming: end"); }));
  EXPECT_EQ(service.Told(), (std::vector<std::string>{"incoming: caf\xC3\xA9 caf\xC3\xA9", "incoming: a  b  .  c",
                                                      "incoming char: .", "incoming: > ", "incoming: end"}));
}

TEST_F(Speechd, ALongTextGoesInPiecesAndCanBeStoppedInBetween) {
  FakeService service(socketFile);
  SpeechdReader reader(notices.Callback());
  ASSERT_TRUE(reader.Start());
  std::string text;
  while (text.size() < 5'000'000) text += "A sentence of some words. ";
  reader.Say(1, text, false);
  ASSERT_TRUE(Until([&] { return service.Told().size() > 2; }));
  reader.Say(1, "", true);
  reader.Say(2, "free again", false);
  ASSERT_TRUE(Until([&] { return service.WasTold("entry: free again"); }));
  EXPECT_TRUE(service.WasTold("incoming CANCEL SELF"));
  EXPECT_LT(service.Told().size(), 2000U);
}

TEST_F(Speechd, WithoutAServiceStartSaysWhy) {
  SpeechdReader reader(notices.Callback());
  EXPECT_FALSE(reader.Start());
  EXPECT_NE(reader.Problem().find("speech-dispatcher"), std::string::npos);
  EXPECT_EQ(notices.Count(), 0U);
  reader.Say(1, "nobody hears this", false);
}

TEST_F(Speechd, AServiceThatAnswersLateHoldsNobodyUpAndLosesNothing) {
  FakeService service(socketFile);
  service.hang = true;
  SpeechdReader reader(notices.Callback(), {.callLimit = 20s, .startLimit = 20ms, .retryInterval = 1s});
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_TRUE(reader.Start());
  reader.Say(1, "said before the service answers", false);
  EXPECT_LT(std::chrono::steady_clock::now() - begin, 10s);
  ASSERT_TRUE(Until([&] { return service.connections == 1; }));
  service.hang = false;
  service.late = true;
  EXPECT_TRUE(Until([&] { return service.WasTold("incoming: said before the service answers"); }));
  EXPECT_EQ(notices.Count(), 0U);
}

TEST_F(Speechd, AServiceThatHangsAtTheStartIsToldOnceAndHoldsNobodyUp) {
  FakeService service(socketFile);
  service.hang = true;
  SpeechdReader reader(notices.Callback(), {.callLimit = 300ms, .startLimit = 20ms, .retryInterval = 50ms});
  EXPECT_TRUE(reader.Start()) << "nothing is known yet";
  reader.Say(1, "lost", false);
  ASSERT_TRUE(Until([&] { return notices.Count() == 1; }));
  EXPECT_NE(notices.Last().find("does not answer"), std::string::npos);
  service.hang = false;
  EXPECT_TRUE(Until([&] {
    reader.Say(1, "hello", false);
    return service.WasTold("incoming: hello");
  }));
  EXPECT_EQ(notices.Count(), 1U);
}

TEST_F(Speechd, AFailureThatStartReportsIsNotToldAgain) {
  SpeechdReader reader(notices.Callback(), {.callLimit = 2000ms, .startLimit = 20s, .retryInterval = 10ms});
  EXPECT_FALSE(reader.Start());
  EXPECT_FALSE(reader.Start()) << "however often";
  for (int i = 0; i < 5; ++i) {
    reader.Say(1, "lost", false);
    std::this_thread::sleep_for(20ms);
  }
  EXPECT_EQ(notices.Count(), 0U);
}

TEST_F(Speechd, AServiceThatComesLaterIsFound) {
  SpeechdReader reader(notices.Callback(), {.callLimit = 2000ms, .retryInterval = 20ms});
  EXPECT_FALSE(reader.Start());
  FakeService service(socketFile);
  EXPECT_TRUE(Until([&] {
    reader.Say(1, "hello", false);
    return service.WasTold("incoming: hello");
  }));
  EXPECT_TRUE(Until([&] { return reader.Problem().empty(); }));
  EXPECT_EQ(notices.Count(), 0U);
}

TEST_F(Speechd, AServiceThatHangsIsToldOnceAndTriedAgain) {
  auto service = std::make_unique<FakeService>(socketFile);
  SpeechdReader reader(notices.Callback(), {.callLimit = 100ms, .retryInterval = 150ms});
  ASSERT_TRUE(reader.Start());
  reader.Say(1, "before", false);
  ASSERT_TRUE(Until([&] { return service->WasTold("incoming: before"); }));
  service->hang = true;
  reader.Say(1, "lost", false);
  ASSERT_TRUE(Until([&] { return notices.Count() == 1; }));
  EXPECT_NE(notices.Last().find("does not answer"), std::string::npos);
  EXPECT_EQ(reader.Problem(), notices.Last());
  // Tried again and again while texts come, but not told again.
  const int connectionsBefore = service->connections;
  EXPECT_TRUE(Until([&] {
    reader.Say(1, "lost", false);
    return service->connections > connectionsBefore + 1;
  }));
  EXPECT_EQ(notices.Count(), 1U);
  service->hang = false;
  EXPECT_TRUE(Until([&] {
    reader.Say(1, "back", false);
    return service->WasTold("incoming: back");
  }));
  EXPECT_TRUE(Until([&] { return reader.Problem().empty(); }));
  service->hang = true;
  reader.Say(1, "lost", false);
  EXPECT_TRUE(Until([&] { return notices.Count() == 2; })) << "a second death is told";
}

TEST_F(Speechd, NobodyWaitsForAServiceThatHangs) {
  auto service = std::make_unique<FakeService>(socketFile);
  SpeechdReader reader(notices.Callback(), {.callLimit = 30s, .retryInterval = 1s});
  ASSERT_TRUE(reader.Start());
  service->hang = true;
  const auto begin = std::chrono::steady_clock::now();
  for (int i = 0; i < 2000; ++i) reader.Say(static_cast<int16>(1 + i % 6), "lost", i % 10 == 0);
  EXPECT_LT(std::chrono::steady_clock::now() - begin, 10s);
  service = nullptr;  // the call that hangs fails now, or the reader's end would wait for it
}

TEST_F(Speechd, AServiceThatIsStartedAgainGoesUnnoticed) {
  auto service = std::make_unique<FakeService>(socketFile);
  SpeechdReader reader(notices.Callback());
  ASSERT_TRUE(reader.Start());
  reader.Say(1, "before", false);
  ASSERT_TRUE(Until([&] { return service->WasTold("incoming: before"); }));
  service = nullptr;
  service = std::make_unique<FakeService>(socketFile);
  reader.Say(1, "after", false);
  EXPECT_TRUE(Until([&] { return service->WasTold("incoming: after"); }));
  EXPECT_EQ(notices.Count(), 0U);
}

TEST_F(Speechd, AServiceThatDiesIsToldOnce) {
  auto service = std::make_unique<FakeService>(socketFile);
  SpeechdReader reader(notices.Callback(), {.callLimit = 2000ms, .retryInterval = 10ms});
  ASSERT_TRUE(reader.Start());
  reader.Say(1, "before", false);
  ASSERT_TRUE(Until([&] { return service->WasTold("incoming: before"); }));
  service = nullptr;
  reader.Say(1, "lost", false);
  ASSERT_TRUE(Until([&] { return notices.Count() == 1; }));
  for (int i = 0; i < 5; ++i) {
    reader.Say(1, "", true);
    reader.Say(1, "lost", false);
    std::this_thread::sleep_for(20ms);
  }
  EXPECT_EQ(notices.Count(), 1U);
}

TEST(TimedWorker, LeavesAStuckJobAndGoesOn) {
  const auto release = std::make_shared<std::atomic<bool>>(false);
  TimedWorker worker;
  EXPECT_FALSE(worker.Run([release] { release->wait(false); }, 10ms));
  EXPECT_EQ(worker.Stuck(), 1);
  const auto ran = std::make_shared<std::atomic<int>>(0);
  EXPECT_TRUE(worker.Run([ran] { ++*ran; }, 5s));
  EXPECT_TRUE(worker.Run([ran] { ++*ran; }, 5s));
  EXPECT_EQ(*ran, 2);
  *release = true;
  release->notify_all();
  EXPECT_TRUE(Until([&] { return worker.Stuck() == 0; }));
}

}  // namespace
}  // namespace corvid
