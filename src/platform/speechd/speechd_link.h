// SPDX-License-Identifier: GPL-3.0-or-later
// Connections to the speech service, one for each channel, so that a stop drops the words of its own channel only.
#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <mutex>
#include <string>

namespace corvid {

inline constexpr std::size_t ReaderChannels = 6;  // numbered from 1

// All calls may take as long as the service likes and belong on one thread; Break alone may come from another.
class SpeechdLink {
 public:
  SpeechdLink();
  ~SpeechdLink();
  SpeechdLink(const SpeechdLink&) = delete;
  SpeechdLink& operator=(const SpeechdLink&) = delete;

  // Each gives an empty text, or what went wrong, for the player. A connection is made when a channel first needs it
  // and made anew, once, when the service has closed it (it may have been started again).
  std::string Connect(std::size_t channel);
  std::string Say(std::size_t channel, const std::string& utf8);
  std::string Stop(std::size_t channel);  // nothing to do for a channel that never spoke
  // Cuts all connections for good, so that a call that waits for an answer fails.
  void Break();

 private:
  struct Connections;
  bool TrySay(std::size_t channel, const std::string& utf8);
  void Close(std::size_t channel);
  bool Broken();

  std::unique_ptr<Connections> connections_;
};

}  // namespace corvid
