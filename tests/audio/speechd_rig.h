// SPDX-License-Identifier: GPL-3.0-or-later
// A speech service of the test's own, which can hang and die as it is told, and folders for the real one.
#pragma once

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

namespace fs = std::filesystem;
using namespace std::chrono_literals;

inline bool Until(const std::function<bool()>& condition, std::chrono::seconds limit = 10s) {
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

}  // namespace corvid
