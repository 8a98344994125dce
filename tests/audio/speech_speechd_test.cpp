// SPDX-License-Identifier: GPL-3.0-or-later
// The screen reader's speech against a service of the test's own, which can hang and die as it is told, and against the
// real one.
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <mutex>
#include <sstream>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "platform/speechd/speechd_reader.h"

namespace corvid {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

bool Until(const std::function<bool()>& condition, std::chrono::seconds limit = 10s) {
  const auto end = std::chrono::steady_clock::now() + limit;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(5ms);
  }
  return true;
}

// Answers the speech protocol on a socket file and writes down, per connection, what it is told: "incoming: text".
class FakeService {
 public:
  explicit FakeService(std::string path) : path_(std::move(path)) {
    listener_ = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path_.copy(address.sun_path, sizeof address.sun_path - 1);
    unlink(path_.c_str());
    if (bind(listener_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        listen(listener_, 20) != 0) {
      ADD_FAILURE() << "no socket at " << path_;
    }
    thread_ = std::thread([this] { Serve(); });
  }
  ~FakeService() {
    ending_ = true;
    thread_.join();
    for (const auto& [client, state] : clients_) close(client);
    close(listener_);
    unlink(path_.c_str());
  }
  FakeService(const FakeService&) = delete;
  FakeService& operator=(const FakeService&) = delete;

  std::vector<std::string> Told() {
    const std::lock_guard lock(mutex_);
    return told_;
  }
  bool WasTold(const std::string& line) {
    const std::vector<std::string> told = Told();
    return std::find(told.begin(), told.end(), line) != told.end();
  }
  std::atomic<bool> hang = false;  // takes everything, answers nothing
  std::atomic<bool> late = false;  // gives the answers that it kept to itself while it hung
  std::atomic<int> connections = 0;

 private:
  struct Client {
    std::string name;
    std::string unread;
    std::string unsent;  // while it hangs
    std::string text;
    bool speaking = false;
  };

  void Serve() {
    while (!ending_) {
      std::vector<pollfd> waiting{{listener_, POLLIN, 0}};
      for (const auto& [client, state] : clients_) waiting.push_back({client, POLLIN, 0});
      const int some = poll(waiting.data(), waiting.size(), 20);
      if (late.exchange(false)) {
        for (auto& [client, state] : clients_) Send(client, state);
      }
      if (some <= 0) continue;
      for (const pollfd& entry : waiting) {
        if (entry.revents == 0) continue;
        if (entry.fd == listener_) {
          clients_[accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC)];
          ++connections;
        } else {
          ReadFrom(entry.fd);
        }
      }
    }
  }
  void ReadFrom(int client) {
    char bytes[4096];
    const ssize_t count = read(client, bytes, sizeof bytes);
    if (count <= 0) {
      close(client);
      clients_.erase(client);
      return;
    }
    Client& state = clients_[client];
    state.unread.append(bytes, static_cast<std::size_t>(count));
    for (std::size_t end = 0; (end = state.unread.find("\r\n")) != std::string::npos;) {
      const std::string line = state.unread.substr(0, end);
      state.unread.erase(0, end + 2);
      const std::string answer = Answer(state, line);
      if (!answer.empty()) state.unsent += answer + "\r\n";
      if (!hang) Send(client, state);
    }
  }
  static void Send(int client, Client& state) {
    send(client, state.unsent.c_str(), state.unsent.size(), MSG_NOSIGNAL);
    state.unsent.clear();
  }
  std::string Answer(Client& client, const std::string& line) {
    if (client.speaking && line != ".") {
      client.text += (client.text.empty() ? "" : "\n") + line;
      return {};
    }
    if (client.speaking) {
      client.speaking = false;
      Write(client.name + ": " + std::exchange(client.text, ""));
      return "225-1\r\n225 OK MESSAGE QUEUED";
    }
    if (line.starts_with("SET SELF CLIENT_NAME")) {
      client.name = line.substr(line.rfind(':') + 1);
      client.name.erase(std::remove(client.name.begin(), client.name.end(), '"'), client.name.end());
      return "208 OK CLIENT NAME SET";
    }
    if (line.starts_with("SET SELF PRIORITY")) {
      if (line.find("MESSAGE") == std::string::npos && line.find("message") == std::string::npos) Write(line);
      return "202 OK PRIORITY SET";
    }
    if (line == "speak" || line == "SPEAK") {
      client.speaking = true;
      return "230 OK RECEIVING DATA";
    }
    if (line.starts_with("CHAR ")) {
      Write(client.name + " char: " + line.substr(5));
      return "225-1\r\n225 OK MESSAGE QUEUED";
    }
    Write(client.name + " " + line);
    return "210 OK CANCELED";
  }
  void Write(std::string line) {
    const std::lock_guard lock(mutex_);
    told_.push_back(std::move(line));
  }

  const std::string path_;
  int listener_ = -1;
  std::atomic<bool> ending_ = false;
  std::map<int, Client> clients_;
  std::mutex mutex_;
  std::vector<std::string> told_;
  std::thread thread_;
};

class Notices {
 public:
  SpeechdReader::Notice Callback() {
    return [this](std::string text) {
      const std::lock_guard lock(mutex_);
      texts_.push_back(std::move(text));
    };
  }
  std::size_t Count() {
    const std::lock_guard lock(mutex_);
    return texts_.size();
  }
  std::string Last() {
    const std::lock_guard lock(mutex_);
    return texts_.empty() ? "" : texts_.back();
  }

 private:
  std::mutex mutex_;
  std::vector<std::string> texts_;
};

// Folders of the test's own in place of the user's, so that no service of the user's is met, started or changed.
class PrivateFolders : public ::testing::Test {
 protected:
  PrivateFolders() {
    folder = fs::temp_directory_path() / ("corvid-speechd-" + std::to_string(getpid()));
    for (const char* name : Names) {
      if (const char* value = getenv(name)) before[name] = value;
      if (std::string_view(name).ends_with("ADDRESS")) continue;
      fs::create_directories(folder / name);
      fs::permissions(folder / name, fs::perms::owner_all);
      setenv(name, (folder / name).c_str(), 1);
    }
    unsetenv("SPEECHD_ADDRESS");
    unsetenv("DBUS_SESSION_BUS_ADDRESS");
    fs::create_directories(Config() / "modules");
  }
  ~PrivateFolders() override {
    for (const char* name : Names) {
      if (before.contains(name)) {
        setenv(name, before[name].c_str(), 1);
      } else {
        unsetenv(name);
      }
    }
    fs::remove_all(folder);
  }
  PrivateFolders(const PrivateFolders&) = delete;
  PrivateFolders& operator=(const PrivateFolders&) = delete;
  fs::path Config() const { return folder / "XDG_CONFIG_HOME" / "speech-dispatcher"; }

  static constexpr std::array<const char*, 6> Names{"HOME",           "XDG_RUNTIME_DIR", "XDG_CONFIG_HOME",
                                                    "XDG_CACHE_HOME", "SPEECHD_ADDRESS", "DBUS_SESSION_BUS_ADDRESS"};
  fs::path folder;
  std::map<std::string, std::string> before;
  Notices notices;
};

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

// The real service, in folders of its own, with a voice that writes what it is to say into a file.
class RealSpeechd : public PrivateFolders {
 protected:
  void SetUp() override {
    if (!fs::exists("/usr/bin/speech-dispatcher")) GTEST_SKIP() << "speech-dispatcher is not installed";
    const bool module = fs::exists("/usr/lib/speech-dispatcher-modules/sd_generic") ||
                        fs::exists("/usr/lib/x86_64-linux-gnu/speech-dispatcher-modules/sd_generic");
    if (!module) GTEST_SKIP() << "the generic module of speech-dispatcher is not installed";
    spoken = (folder / "spoken").string();
    std::ofstream(Config() / "speechd.conf")
        << "LogLevel 1\nCommunicationMethod \"unix_socket\"\nAudioOutputMethod \"alsa\"\n"
        << "AddModule \"log\" \"sd_generic\" \"log.conf\"\nDefaultModule log\nTimeout 20\n";
    std::ofstream(Config() / "modules" / "log.conf")
        << "GenericExecuteSynth \"printf '%s\\\\n' \\'$DATA\\' >> " << spoken << "\"\n"
        << "GenericCmdDependency \"printf\"\nAddVoice \"en\" \"male1\" \"any\"\n";
    std::ofstream(folder / "HOME" / ".asoundrc") << "pcm.!default { type null }\nctl.!default { type null }\n";
  }
  void TearDown() override { KillService(); }
  // The service that this test's reader has started, by the number it wrote down.
  int ServicePid() const {
    int pid = 0;
    std::ifstream(folder / "XDG_RUNTIME_DIR" / "speech-dispatcher" / "pid" / "speech-dispatcher.pid") >> pid;
    return pid;
  }
  void KillService() const {
    const int pid = ServicePid();
    if (pid <= 1) return;
    kill(pid, SIGTERM);
    EXPECT_TRUE(Until([pid] { return kill(pid, 0) != 0; }));
  }
  std::string Spoken() const {
    std::ostringstream text;
    text << std::ifstream(spoken).rdbuf();
    return text.str();
  }
  std::string spoken;
};

TEST_F(RealSpeechd, SpeaksEveryLineOfAFlood) {
  SpeechdReader reader(notices.Callback(), {.callLimit = 10s, .retryInterval = 1s});
  ASSERT_TRUE(reader.Start()) << reader.Problem();
  std::string expected;
  for (int i = 1; i <= 20; ++i) {
    reader.Say(static_cast<int16>(1 + i % 2), "line " + std::to_string(i), false);
    expected += "line " + std::to_string(i) + "\n";
  }
  EXPECT_TRUE(Until([&] { return Spoken().size() >= expected.size(); }, 30s));
  EXPECT_EQ(Spoken(), expected);
  EXPECT_EQ(notices.Count(), 0U) << notices.Last();
}

TEST_F(RealSpeechd, ADeadServiceIsStartedAgain) {
  SpeechdReader reader(notices.Callback(), {.callLimit = 10s, .retryInterval = 1s});
  ASSERT_TRUE(reader.Start()) << reader.Problem();
  reader.Say(1, "before", false);
  ASSERT_TRUE(Until([&] { return Spoken() == "before\n"; }, 30s));
  KillService();
  reader.Say(1, "after", false);
  EXPECT_TRUE(Until([&] { return Spoken() == "before\nafter\n"; }, 30s));
  EXPECT_EQ(notices.Count(), 0U) << notices.Last();
}

}  // namespace
}  // namespace corvid
