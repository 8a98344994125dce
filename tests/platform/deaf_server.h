// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

#include <string>

namespace corvid {

// A listener whose short queue is full answers no further caller.
class DeafServer {
 public:
  DeafServer() {
    listener_ = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    address_.sin_family = AF_INET;
    address_.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    bind(listener_, Address(), sizeof address_);
    listen(listener_, 0);
    socklen_t length = sizeof address_;
    getsockname(listener_, Address(), &length);
    for (int& caller : callers_) {
      caller = socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
      connect(caller, Address(), sizeof address_);
    }
  }
  DeafServer(const DeafServer&) = delete;
  DeafServer& operator=(const DeafServer&) = delete;
  ~DeafServer() {
    for (const int caller : callers_) close(caller);
    close(listener_);
  }
  std::string Port() const { return std::to_string(ntohs(address_.sin_port)); }

 private:
  sockaddr* Address() { return reinterpret_cast<sockaddr*>(&address_); }
  sockaddr_in address_{};
  int listener_ = -1;
  int callers_[3] = {-1, -1, -1};
};

}  // namespace corvid
