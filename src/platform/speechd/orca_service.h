// SPDX-License-Identifier: GPL-3.0-or-later
// The service of a newer Orca (49 and later), which speaks with the player's own voice settings and shows the text in
// braille too. Older ones have none; asking costs nothing then.
#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <memory>
#include <string>

namespace corvid {

// Belongs to one thread. Each call waits half a second at most, and none starts Orca.
class OrcaService {
 public:
  OrcaService();
  ~OrcaService();
  OrcaService(const OrcaService&) = delete;
  OrcaService& operator=(const OrcaService&) = delete;

  // Looks for the service, every few seconds at most while there is none.
  bool Present();
  // Hands the text over behind what Orca still says. False when there is no service, or it refuses.
  bool Say(std::size_t channel, const std::string& utf8);
  // Orca can only be silenced as a whole. So a channel that stops waits for the others: Orca is silenced when no
  // channel has words left that are not stopped. How long words last is estimated, on the long side.
  void Stop(std::size_t channel);

 private:
  using Clock = std::chrono::steady_clock;
  struct Bus;

  bool FindDialect();
  std::unique_ptr<Bus> bus_;
  Clock::time_point nextLook_;
  std::array<Clock::time_point, 7> saidUntil_{};  // by channel; the past when it has nothing left to say
};

}  // namespace corvid
