// SPDX-License-Identifier: GPL-3.0-or-later
// The game connections, by session number. Any other number than 0 to MaxConnections is a slot that was never made.
#pragma once

#include <string>
#include <string_view>

#include "core/types.h"

namespace corvid {

// Called from the event loop. A handler may pump events and may call any operation below for any session.
class SocketEvents {
 public:
  virtual ~SocketEvents() = default;
  virtual void OnConnect(int16 Index) = 0;
  virtual void OnDisconnect(int16 Index) = 0;  // the peer closed it; not called for our own Disconnect
  virtual void OnRead(int16 Index) = 0;        // data wait; called again as long as some is left
  virtual void OnError(int16 Index) = 0;       // the connection could not be made
};

class Sockets {
 public:
  virtual ~Sockets() = default;
  virtual void SetEvents(SocketEvents* events) = 0;  // not owned
  virtual void Create(int16 Index) = 0;              // makes the slot's socket, once; without it the slot does nothing
  virtual bool Connected(int16 Index) const = 0;
  // True from Connect until the connection stands, failed or was closed.
  virtual bool Connecting(int16 Index) const = 0;
  // False when port is neither a number 1 to 65535 nor a known service name.
  virtual bool PortKnown(const std::string& port) const = 0;
  // Starts to connect and returns 0, or an error number. The result comes as OnConnect or OnError, at the latest after
  // timeoutMilliseconds. A socket still connected or connecting is reset first, without an event.
  virtual int Connect(int16 Index, const std::string& host, const std::string& port, int timeoutMilliseconds) = 0;
  virtual int Disconnect(int16 Index) = 0;  // 0, or an error number; nothing to do is no error
  // Copies at most length waiting bytes and returns their count, -1 when none wait or the socket is closed. Bytes that
  // came before the peer closed can still be read.
  virtual int Read(int16 Index, char* buffer, int length) = 0;
  // Hands all bytes to the connection and returns their count, -1 on failure; it fails once the peer has gone.
  virtual int Write(int16 Index, std::string_view bytes) = 0;
  virtual int LastError(int16 Index) const = 0;  // the system's number of the last failure; 0: none, or the peer went
};

}  // namespace corvid
