// SPDX-License-Identifier: GPL-3.0-or-later
// Game connections whose far end is the test.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "platform/memory/effects.h"
#include "platform/memory/memory_loop.h"
#include "platform/sockets.h"

namespace corvid {

class MemorySockets : public Sockets {
 public:
  MemorySockets(MemoryLoop& loop, EffectLog& effects) : loop_(loop), effects_(effects) {}

  void SetEvents(SocketEvents* events) override { events_ = events; }
  void Create(int16 Index) override;
  bool Connected(int16 Index) const override { return Made(Index) && At(Index).connected; }
  bool Connecting(int16 Index) const override { return Made(Index) && At(Index).connecting; }
  bool PortKnown(const std::string& port) const override;
  int Connect(int16 Index, const std::string& host, const std::string& port, int timeoutMilliseconds) override;
  int Disconnect(int16 Index) override;
  int Read(int16 Index, char* buffer, int length) override;
  int Write(int16 Index, std::string_view bytes) override;
  int LastError(int16 Index) const override { return Made(Index) ? At(Index).lastError : 0; }

  // --- the far end ---
  enum class Answer { Accept, Refuse, Never };
  Answer OnConnectAnswer = Answer::Accept;  // what Connect brings about, at the next pump
  int ConnectDelay = 0;                     // milliseconds until then
  int ConnectError = 0;                     // non-zero: Connect itself fails with this number
  bool FailWrites = false;
  bool HalfOpen = false;                      // what is written is taken and arrives nowhere
  std::size_t WriteRoom = std::string::npos;  // bytes that a server that reads nothing still lets through
  int DisconnectError = 0;
  bool FailCreate = false;  // Create is a Fault of kind Internal
  // From now on the network takes only so many bytes of what is written to this slot; the rest waits, in its order,
  // until Drain lets more of it pass. It is lost with the connection.
  void Congest(int16 Index, std::size_t room);
  void Drain(int16 Index, std::size_t bytes = std::string::npos);
  // Bytes from the server; the client's handler is called at once, as often as 4,096-byte reads are needed. One that
  // leaves them unread is asked again RetryMilliseconds later. Without a connection they go nowhere.
  void Receive(int16 Index, std::string_view bytes);
  static constexpr int RetryMilliseconds = 10;
  void CloseByPeer(int16 Index);
  // The connection breaks, for the reason that LastError then tells; 0: the server reset it.
  void Reset(int16 Index, int error = 0);
  // All that was written to the slot's server since the last call.
  std::string TakeWritten(int16 Index);
  const std::string& Host(int16 Index) const { return At(Index).host; }
  const std::string& Port(int16 Index) const { return At(Index).port; }

 private:
  struct Slot {
    bool created = false, connected = false, connecting = false;
    bool peerGone = false;  // connected only until all that came is read
    std::string host, port, incoming, written, waiting;
    std::size_t room = std::string::npos;  // bytes that the network still takes
    int lastError = 0;
    unsigned attempt = 0;  // a delayed answer counts only for the attempt it belongs to
  };
  // The far end is the test's: a slot number that cannot be is its mistake, and throws.
  Slot& At(int16 Index) { return slots_.at(static_cast<std::size_t>(Index)); }
  const Slot& At(int16 Index) const { return slots_.at(static_cast<std::size_t>(Index)); }
  static bool Possible(int16 Index) { return Index >= 0 && Index <= MaxConnections; }
  bool Made(int16 Index) const { return Possible(Index) && At(Index).created; }
  void Complete(int16 Index, unsigned attempt);
  void Deliver(int16 Index);
  void Flow(int16 Index);

  MemoryLoop& loop_;
  EffectLog& effects_;
  SocketEvents* events_ = nullptr;
  std::array<Slot, MaxConnections + 1> slots_;
  std::vector<std::unique_ptr<Timer>> delays_;
  std::array<std::unique_ptr<Timer>, MaxConnections + 1> retries_;
};

}  // namespace corvid
