// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/speechd/speechd_link.h"

#include <libspeechd.h>
#include <sys/socket.h>

#include <cstdlib>
#include <utility>

#include "core/utf8.h"

namespace corvid {

namespace {

constexpr std::array<const char*, ReaderChannels + 1> ChannelNames{"",     "incoming", "entry", "output",
                                                                   "edit", "system",   "user"};

}  // namespace

struct SpeechdLink::Connections {
  std::mutex mutex;  // held while a connection comes or goes, so that Break never cuts a stranger's socket
  bool broken = false;
  std::array<SPDConnection*, ReaderChannels + 1> open{};
};

SpeechdLink::SpeechdLink() : connections_(std::make_unique<Connections>()) {}

SpeechdLink::~SpeechdLink() {
  for (std::size_t channel = 1; channel <= ReaderChannels; ++channel) Close(channel);
}

void SpeechdLink::Close(std::size_t channel) {
  SPDConnection* connection = nullptr;
  {
    const std::lock_guard lock(connections_->mutex);
    connection = std::exchange(connections_->open[channel], nullptr);
  }
  if (connection != nullptr) spd_close(connection);
}

void SpeechdLink::Break() {
  const std::lock_guard lock(connections_->mutex);
  connections_->broken = true;
  for (SPDConnection* connection : connections_->open) {
    if (connection != nullptr) shutdown(connection->socket, SHUT_RDWR);
  }
}

std::string SpeechdLink::Connect(std::size_t channel) {
  if (connections_->open[channel] != nullptr) return {};
  char* reason = nullptr;
  // Without a thread of the library's own: we only send, and wait for the answers on this thread.
  SPDConnection* connection = spd_open2("corvid", ChannelNames[channel], nullptr, SPD_MODE_SINGLE, nullptr, 1, &reason);
  if (connection == nullptr) {
    std::string problem = "The speech service (speech-dispatcher) cannot be reached.";
    if (reason != nullptr) problem += " It says: " + std::string(reason);
    std::free(reason);
    return problem.substr(0, problem.find_last_not_of(" \n") + 1);
  }
  const std::lock_guard lock(connections_->mutex);
  connections_->open[channel] = connection;
  if (connections_->broken) shutdown(connection->socket, SHUT_RDWR);
  return {};
}

bool SpeechdLink::TrySay(std::size_t channel, const std::string& utf8) {
  SPDConnection* connection = connections_->open[channel];
  // A character alone is an answer to a key and is named even where running text would pass over it.
  const bool character = utf8 != " " && CharLength(utf8, 0) == utf8.size();
  if (character) return spd_char(connection, SPD_MESSAGE, utf8.c_str()) >= 0;
  return spd_say(connection, SPD_MESSAGE, utf8.c_str()) >= 0;
}

bool SpeechdLink::Broken() {
  const std::lock_guard lock(connections_->mutex);
  return connections_->broken;
}

std::string SpeechdLink::Say(std::size_t channel, const std::string& utf8) {
  const bool used = connections_->open[channel] != nullptr;
  std::string problem = Connect(channel);
  if (!problem.empty()) return problem;
  if (TrySay(channel, utf8)) return {};
  Close(channel);
  if (used && !Broken()) {
    problem = Connect(channel);
    if (!problem.empty()) return problem;
    if (TrySay(channel, utf8)) return {};
    Close(channel);
  }
  return "The speech service (speech-dispatcher) refuses to speak.";
}

std::string SpeechdLink::Stop(std::size_t channel) {
  SPDConnection* connection = connections_->open[channel];
  if (connection == nullptr) return {};
  if (spd_cancel(connection) < 0) Close(channel);  // a service that is gone says nothing any more
  return {};
}

}  // namespace corvid
