// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <memory>

#include "platform/sockets.h"

namespace corvid {

// TCP connections on Qt. Every event comes from the event loop, never from inside one of the operations, and comes too
// while a handler of the same session waits in a nested loop. A session gets at most ReadsPerTurn calls of OnRead in
// one turn of the loop, so that a flood leaves room for keys, timers and the other sessions.
// Wire: construct it after QtEventLoop, then SetEvents with the object that receives.
class QtSockets : public Sockets {
 public:
  static constexpr int ReadsPerTurn = 16;
  // Bytes kept for a session that is not read; beyond it the server has to wait.
  static constexpr int ReadBufferSize = 256 * 1024;
  // Bytes kept for a server that does not take them; beyond it Write fails.
  static constexpr int WriteBufferLimit = 4 * 1024 * 1024;

  QtSockets();
  ~QtSockets() override;

  void SetEvents(SocketEvents* events) override { events_ = events; }
  void Create(int16 Index) override;
  bool Connected(int16 Index) const override;
  bool Connecting(int16 Index) const override;
  bool PortKnown(const std::string& port) const override;
  int Connect(int16 Index, const std::string& host, const std::string& port, int timeoutMilliseconds) override;
  int Disconnect(int16 Index) override;
  int Read(int16 Index, char* buffer, int length) override;
  int Write(int16 Index, std::string_view bytes) override;
  int LastError(int16 Index) const override;

 private:
  struct Slot;
  Slot* Find(int16 Index) const;
  void Listen(Slot& slot);
  void Reset(Slot& slot);
  void Stands(Slot& slot);
  void Failed(Slot& slot, int error);
  void Schedule(Slot& slot);
  void Wake(Slot& slot);
  void Pump(Slot& slot);
  void FinishClose(Slot& slot);

  std::array<std::unique_ptr<Slot>, MaxConnections + 1> slots_;
  SocketEvents* events_ = nullptr;
};

}  // namespace corvid
